// SPDX-License-Identifier: GPL-3.0-only
// The MIDI commands: what is bound, binding, and watching what comes in.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

/** A user whose settings lie in the folder of the test. */
class ProgramMIDITest : public ProgramTest
{
protected:
    ProgramMIDITest() { setenv ("XDG_DATA_HOME", path ("data").c_str(), 1); }
    ~ProgramMIDITest() override { unsetenv ("XDG_DATA_HOME"); }

    std::string identityOf (std::size_t event) const
    {
        return run ({ "list", "film.json", "--json" }).json()["events"][event]["uuid"].get<std::string>();
    }

    void hasFilm() const
    {
        write ("x.csv", threeCues);
        ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    }

    ProgramResult bind (const std::string& message, const std::string& uuid) const
    {
        return run ({ "midi", "bind", "film.json", "--message", message, "--uuid", uuid });
    }

    ordered_json bindings() const { return run ({ "midi", "list", "--json" }).json()["bindings"]; }

    const std::string triggerFile = "data/overmarks/midiEventsV3.bin";
};

TEST_F (ProgramMIDITest, nothingIsBoundAtFirst)
{
    const auto shown = run ({ "midi", "list", "--json" });
    EXPECT_EQ (shown.status, 0) << shown.errors;
    EXPECT_EQ (shown.json()["file"], path (triggerFile));
    EXPECT_TRUE (shown.json()["bindings"].empty());
    EXPECT_TRUE (shown.json()["inputs"].is_array());
    EXPECT_THAT (shown.errors, StartsWith ("0 bindings, "));
    EXPECT_FALSE (file (triggerFile).exists());
}

TEST_F (ProgramMIDITest, aBoundEventIsListed)
{
    hasFilm();
    const auto uuid = identityOf (1);
    const auto bound = run ({ "midi", "bind", "film.json", "--message", "NoteOn 1 60", "--uuid", uuid,
                              "--label", "Pedal", "--json" });
    ASSERT_EQ (bound.status, 0) << bound.errors;
    EXPECT_EQ (bound.json()["replaced"], 0);
    ASSERT_EQ (bindings().size(), 1u);
    EXPECT_EQ (bindings()[0], ordered_json::parse (R"({"message": "NoteOn 1 60", "label": "Pedal",
        "colour": "00000000", "actionIndex": -1,
        "event": {"uuid": ")" + uuid + R"(", "type": 8, "cueNumber": "T1", "text": "Who's \"there\"?"}})"));
    const auto table = run ({ "midi", "list" }).output;
    EXPECT_THAT (table, HasSubstr ("NoteOn 1 60"));
    EXPECT_THAT (table, HasSubstr ("Pedal"));
    EXPECT_THAT (table, HasSubstr (uuid));
}

TEST_F (ProgramMIDITest, bindingAMessageAgainReplacesWhatItFired)
{
    hasFilm();
    ASSERT_EQ (bind ("NoteOn 1 60", identityOf (0)).status, 0);
    ASSERT_EQ (bind ("PC 1 5", identityOf (0)).status, 0);
    const auto again = bind ("NoteOn 1 60", identityOf (1));
    EXPECT_EQ (again.status, 0);
    EXPECT_THAT (again.errors, HasSubstr ("and no longer what it fired before"));
    ASSERT_EQ (bindings().size(), 2u);
    EXPECT_EQ (bindings()[0]["message"], "PC 1 5");
    EXPECT_EQ (bindings()[1]["event"]["uuid"], identityOf (1));
}

TEST_F (ProgramMIDITest, aDryRunBindsNothing)
{
    hasFilm();
    const auto bound =
        run ({ "midi", "bind", "film.json", "--message", "PC 1 5", "--uuid", identityOf (0), "--dry-run" });
    EXPECT_EQ (bound.status, 0);
    EXPECT_EQ (bound.errors, "PC 1 5 would fire A1 | ANNA | Hello? | 01:00:02:00\n");
    EXPECT_FALSE (file (triggerFile).exists());
}

TEST_F (ProgramMIDITest, whatIsNoMessageIsWrongUsage)
{
    hasFilm();

    for (const auto* message : { "NoteOn 1 128", "NoteOn 0 60", "noteon 1 60", "60", "", "MMC 2" })
    {
        const auto bound = bind (message, identityOf (0));
        EXPECT_EQ (bound.status, 2) << message;
        EXPECT_EQ (bound.errors,
                   std::string ("overmarks: --message: \"") + message
                       + "\" is no MIDI message. Write it as \"NoteOn 1 60\", \"NoteOff 1 60\", "
                         "\"CC 1 64\", \"PC 1 5\" or \"MMC 02\": channels count from 1, the rest "
                         "from 0\n");
    }

    EXPECT_FALSE (file (triggerFile).exists());
    EXPECT_EQ (run ({ "midi", "bind", "film.json", "--uuid", "x" }).status, 2);
    EXPECT_EQ (run ({ "midi", "bind", "film.json", "--message", "PC 1 5" }).status, 2);
}

TEST_F (ProgramMIDITest, anUnknownEventIsAFailure)
{
    hasFilm();
    EXPECT_EQ (errorOf ({ "midi", "bind", "film.json", "--message", "PC 1 5", "--uuid", "nobody" }, 1),
               "No event of the list has the identity nobody; nothing was bound");
    EXPECT_EQ (run ({ "midi", "bind", "no.json", "--message", "PC 1 5", "--uuid", "x" }).status, 1);
    EXPECT_FALSE (file (triggerFile).exists());
}

TEST_F (ProgramMIDITest, aFolderThatCantBeWrittenIsAFailure)
{
    hasFilm();
    write ("data", "in the way");
    EXPECT_THAT (
        errorOf ({ "midi", "bind", "film.json", "--message", "PC 1 5", "--uuid", identityOf (0) }, 1),
        StartsWith ("Can't write " + path (triggerFile) + ": "));
}

TEST_F (ProgramMIDITest, aDamagedFileIsSaidAndKept)
{
    hasFilm();
    file (triggerFile).create();
    write (triggerFile, "\xFF\xFF");
    EXPECT_THAT (run ({ "midi", "list" }).errors, HasSubstr (path (triggerFile) + " is damaged"));
    EXPECT_EQ (bind ("PC 1 5", identityOf (0)).status, 0);
    EXPECT_EQ (bindings().size(), 1u);
    EXPECT_EQ (read ("data/overmarks/midiEventsV3.damaged.bin"), "\xFF\xFF");
}

TEST_F (ProgramMIDITest, unbindingForgetsAMessage)
{
    hasFilm();
    ASSERT_EQ (bind ("NoteOn 1 60", identityOf (0)).status, 0);
    EXPECT_EQ (run ({ "midi", "unbind", "--message", "NoteOn 1 60", "--json" }).json()["removed"], 1);
    EXPECT_TRUE (bindings().empty());
    EXPECT_EQ (errorOf ({ "midi", "unbind", "--message", "NoteOn 1 60" }, 1),
               "Nothing is bound to \"NoteOn 1 60\"");
}

TEST_F (ProgramMIDITest, mistypedWordsGetASuggestion)
{
    EXPECT_EQ (
        run ({ "midi", "lst" }).errors,
        "overmarks: There is no command \"midi lst\". Did you mean \"list\"? See overmarks midi --help\n");
    const auto option = run ({ "midi", "bind", "film.json", "--mesage", "PC 1 5" });
    EXPECT_EQ (option.status, 2);
    EXPECT_EQ (option.errors, "overmarks: There is no option \"--mesage\". Did you mean \"--message\"? "
                              "See overmarks midi bind --help\n");
    EXPECT_EQ (run ({ "midi" }).status, 2);
    EXPECT_EQ (run ({ "midi", "--help" }).status, 0);
    EXPECT_EQ (run ({ "midi", "bind", "--help" }).status, 0);
}

// ---- monitor --------------------------------------------------------------------------------------------------------

TEST_F (ProgramMIDITest, theMonitorShowsMessagesAndPanLines)
{
    const auto shown = run ({ "midi", "monitor", "-" },
                            "90 3C 64\n\nF0 7D 53 50 00 00 00 01 02 05 00 7F 7F 00 00 F7\n"
                            "F0 7D 53 50 00 00 00 01 02 05 02 00 F7\nF0 7D 53 50 00 00 00 01 02 05 01 F7\n"
                            "E0 00 40\nb0 40 7f 41 7f");
    EXPECT_EQ (shown.status, 0);
    EXPECT_EQ (shown.errors, "");
    EXPECT_EQ (shown.output, "NoteOn 1 60\n"
                             "Pan 130 created, group 5, position 1.000, colour ff0000\n"
                             "Pan 130 moved, group 5, position 0.000\n"
                             "Pan lines removed\n"
                             "CC 1 64\n"
                             "CC 1 65\n");
}

TEST_F (ProgramMIDITest, theMonitorTellsWhatAMessageFires)
{
    hasFilm();
    ASSERT_EQ (bind ("NoteOn 1 60", identityOf (0)).status, 0);
    EXPECT_EQ (run ({ "midi", "monitor", "-" }, "90 3C 64").output, "NoteOn 1 60  fires ADR Cue A1\n");
}

TEST_F (ProgramMIDITest, theMonitorWritesOneJSONDocument)
{
    const auto messages =
        run ({ "midi", "monitor", "-", "--json" }, "90 3C 64\nF0 7D 53 50 00 00 00 01 02 05 02 7F F7\n")
            .json()["messages"];
    ASSERT_EQ (messages.size(), 2u);
    EXPECT_EQ (messages[0]["message"], "NoteOn 1 60");
    EXPECT_EQ (messages[0]["uuid"], "");
    EXPECT_EQ (messages[1]["pan"], "update");
    EXPECT_EQ (messages[1]["lineID"], 130);
    EXPECT_EQ (messages[1]["position"], 1.0);
    EXPECT_TRUE (run ({ "midi", "monitor", "-", "--json" }).json()["messages"].empty());
}

TEST_F (ProgramMIDITest, theMonitorReportsWhatIsNoByteAndGoesOn)
{
    const auto shown =
        run ({ "midi", "monitor", "-" }, "90 3C 64\n90 XX 64\n100\n-1\n80 3C\n\xFF\xFE\n90 3D 64\n");
    EXPECT_EQ (shown.status, 1);
    EXPECT_EQ (shown.output, "NoteOn 1 60\nNoteOn 1 61\n");
    EXPECT_THAT (shown.errors, StartsWith ("-: row 2: \"XX\" is no byte in hexadecimal\n"
                                           "-: row 3: \"100\" is no byte in hexadecimal\n"
                                           "-: row 4: \"-1\" is no byte in hexadecimal\n-: row 6: "));
}

TEST_F (ProgramMIDITest, theMonitorReadsNoFile)
{
    EXPECT_EQ (errorOf ({ "midi", "monitor", "notes.txt" }, 2),
               "midi monitor reads the MIDI inputs, or - for standard input, not \"notes.txt\"");
}

/** The program, running in the background until it is told to stop. */
class RunningMonitor final
{
public:
    RunningMonitor (const std::string& output, std::vector<std::string> words)
    {
        std::vector<char*> argv;
        words.insert (words.begin(), OVERMARKS_PROGRAM);

        for (auto& word : words)
            argv.push_back (word.data());

        argv.push_back (nullptr);
        int ends[2];
        EXPECT_EQ (pipe2 (ends, O_CLOEXEC), 0);
        child = fork();

        if (child == 0)
        {
            dup2 (ends[0], STDIN_FILENO);
            dup2 (open (output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
            dup2 (open ((output + ".errors").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            execv (OVERMARKS_PROGRAM, argv.data());
            _exit (127);
        }

        close (ends[0]);
        input = ends[1];
    }

    ~RunningMonitor()
    {
        close (input);

        if (child > 0)
        {
            kill (child, SIGKILL);
            waitpid (child, nullptr, 0);
        }
    }

    RunningMonitor (const RunningMonitor&) = delete;
    RunningMonitor& operator= (const RunningMonitor&) = delete;

    void send (const std::string& text) const
    {
        EXPECT_EQ (::write (input, text.data(), text.size()), static_cast<ssize_t> (text.size()));
    }

    /** How it ends after a signal, -1 if it doesn't within ten seconds. */
    int stopWith (int signal)
    {
        kill (child, signal);

        for (int tries = 0; tries < 1000; ++tries)
        {
            int status = 0;

            if (waitpid (child, &status, WNOHANG) == child)
            {
                child = -1;
                return WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status);
            }

            std::this_thread::sleep_for (std::chrono::milliseconds (10));
        }

        return -1;
    }

private:
    pid_t child = -1;
    int input = -1;
};

class ProgramMonitorSignalTest : public ProgramMIDITest, public testing::WithParamInterface<int>
{
protected:
    /** Waits up to ten seconds for a text in a file. */
    std::string whenItHolds (const juce::String& name, const std::string& text) const
    {
        for (int tries = 0; tries < 1000 && read (name).find (text) == std::string::npos; ++tries)
            std::this_thread::sleep_for (std::chrono::milliseconds (10));

        return read (name);
    }
};

TEST_P (ProgramMonitorSignalTest, linesComeAtOnceAndAnInterruptionIsACleanEnd)
{
    RunningMonitor monitor (path ("out"), { "midi", "monitor", "-", "--json" });
    monitor.send ("90 3C 64\n");
    EXPECT_THAT (whenItHolds ("out", "NoteOn"), HasSubstr ("NoteOn 1 60"));
    EXPECT_EQ (monitor.stopWith (GetParam()), 0);
    EXPECT_EQ (ordered_json::parse (read ("out"))["messages"].size(), 1u);
}

TEST_P (ProgramMonitorSignalTest, withoutAnyInputItWaitsForOneUntilItIsInterrupted)
{
    RunningMonitor monitor (path ("out"), { "midi", "monitor" });
    EXPECT_THAT (whenItHolds ("out.errors", "\n"), testing::Not (testing::IsEmpty()));
    EXPECT_EQ (monitor.stopWith (GetParam()), 0);
}

INSTANTIATE_TEST_SUITE_P (MIDI, ProgramMonitorSignalTest, testing::Values (SIGINT, SIGTERM),
                          [] (const auto& signal)
                          { return std::string (signal.param == SIGINT ? "interrupt" : "terminate"); });

} // namespace
