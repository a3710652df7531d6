// SPDX-License-Identifier: GPL-3.0-only
// The MIDI monitor: what it shows of what comes in, and how it ends.
#include "overmarks/MIDIFixture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class ProgramMonitorTest : public ProgramMIDITest
{
};

TEST_F (ProgramMonitorTest, theMonitorShowsMessagesAndPanLines)
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

TEST_F (ProgramMonitorTest, theMonitorTellsWhatAMessageFires)
{
    hasFilm();
    ASSERT_EQ (bind ("NoteOn 1 60", identityOf (0)).status, 0);
    EXPECT_EQ (run ({ "midi", "monitor", "-" }, "90 3C 64").output, "NoteOn 1 60  fires ADR Cue A1\n");
}

TEST_F (ProgramMonitorTest, theMonitorWritesOneJSONDocument)
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

TEST_F (ProgramMonitorTest, theMonitorReportsWhatIsNoByteAndGoesOn)
{
    const auto shown =
        run ({ "midi", "monitor", "-" }, "90 3C 64\n90 XX 64\n100\n-1\n80 3C\n\xFF\xFE\n90 3D 64\n");
    EXPECT_EQ (shown.status, 1);
    EXPECT_EQ (shown.output, "NoteOn 1 60\nNoteOn 1 61\n");
    EXPECT_THAT (shown.errors, StartsWith ("-: row 2: \"XX\" is no byte in hexadecimal\n"
                                           "-: row 3: \"100\" is no byte in hexadecimal\n"
                                           "-: row 4: \"-1\" is no byte in hexadecimal\n-: row 6: "));
}

TEST_F (ProgramMonitorTest, theMonitorReadsNoFile)
{
    EXPECT_EQ (errorOf ({ "midi", "monitor", "notes.txt" }, 2),
               "midi monitor reads the MIDI inputs, or - for standard input, not \"notes.txt\"");
}

TEST_F (ProgramMonitorTest, whatCannotBeReadIsTold)
{
    const auto runOnFolder = [this] (const std::string& options)
    {
        const auto status = std::system ((OVERMARKS_PROGRAM " midi monitor - " + options + " < " + path (".")
                                          + " > " + path ("output") + " 2> " + path ("errors"))
                                             .c_str());
        return WEXITSTATUS (status);
    };
    EXPECT_EQ (runOnFolder (""), 1);
    EXPECT_EQ (read ("output"), "");
    EXPECT_EQ (read ("errors"), "-: Can't read standard input: Is a directory\n");
    EXPECT_EQ (runOnFolder ("--json"), 1);
    EXPECT_EQ (nlohmann::ordered_json::parse (read ("output"))["problems"][0]["message"],
               "Can't read standard input: Is a directory");
}

TEST_F (ProgramMonitorTest, aStreamMayBeCutIntoLinesAnywhere)
{
    const auto shown =
        run ({ "midi", "monitor", "-" }, "90 3C 64\n3C 00\n\n3D\n64\nF0 7F 7F\n06 02 F7\n3E 64\n");
    EXPECT_EQ (shown.status, 0) << shown.errors;
    EXPECT_EQ (shown.output, "NoteOn 1 60\nNoteOff 1 60\nNoteOn 1 61\nMMC 02\n");
}

TEST_F (ProgramMonitorTest, behindALineThatIsRefusedNothingGoesOn)
{
    const auto shown = run ({ "midi", "monitor", "-" }, "90 3C 64\n3C zz\n3D 64\n90 3E 64\n");
    EXPECT_EQ (shown.status, 1);
    EXPECT_EQ (shown.output, "NoteOn 1 60\nNoteOn 1 62\n");
    EXPECT_EQ (shown.errors, "-: row 2: \"zz\" is no byte in hexadecimal\n");
}

TEST_F (ProgramMonitorTest, aVeryLongLineIsCutBetweenItsBytes)
{
    constexpr int messages = 50000; // a line of 300,000 characters
    std::string line = "90";
    std::string expected;

    for (int message = 0; message < messages; ++message)
    {
        line += " 3C 64";
        expected += "NoteOn 1 60\n";
    }

    const auto shown = run ({ "midi", "monitor", "-" }, line + "\nzz\n");
    EXPECT_TRUE (shown.output == expected) << shown.output.size();
    EXPECT_EQ (shown.errors, "-: row 2: \"zz\" is no byte in hexadecimal\n");
}

TEST_F (ProgramMonitorTest, aVeryLongWordIsRefusedOnceAndShownInPart)
{
    const auto shown = run ({ "midi", "monitor", "-" }, std::string (200000, 'a') + "\n90 3C 64\n");
    EXPECT_EQ (shown.status, 1);
    EXPECT_EQ (shown.output, "NoteOn 1 60\n");
    EXPECT_EQ (shown.errors, "-: row 1: \"" + std::string (40, 'a') + "...\" is no byte in hexadecimal\n");
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
            dup2 (open (output.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
            dup2 (open ((output + ".errors").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            execv (OVERMARKS_PROGRAM, argv.data());
            _exit (127);
        }

        close (ends[0]);
        input = ends[1];
    }

    ~RunningMonitor()
    {
        closeInput();

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

    void closeInput()
    {
        if (input >= 0)
            close (std::exchange (input, -1));
    }

    /** How it ends after a signal, -1 if it doesn't within ten seconds. */
    int stopWith (int signal)
    {
        kill (child, signal);
        return waitForEnd();
    }

    /** How it ends, -1 if it doesn't within ten seconds. */
    int waitForEnd()
    {
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

class ProgramMonitorSignalTest : public ProgramMonitorTest, public testing::WithParamInterface<int>
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
    EXPECT_THAT (whenItHolds ("out.errors", "\n"),
                 testing::AnyOf ("There is no MIDI input yet; one that comes is opened\n",
                                 testing::MatchesRegex ("Listening to (1 input|[0-9]+ inputs)\n")));
    EXPECT_EQ (monitor.stopWith (GetParam()), 0);
}

/** An output that takes so much and no more until it is read: a pipe with a name. */
class FullPipe final
{
public:
    explicit FullPipe (const std::string& path)
    {
        EXPECT_EQ (mkfifo (path.c_str(), 0600), 0);
        reader = open (path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
        EXPECT_GE (reader, 0);
    }

    ~FullPipe() { close (reader); }

    FullPipe (const FullPipe&) = delete;
    FullPipe& operator= (const FullPipe&) = delete;

    /** What there is at this moment. */
    std::string read() const
    {
        std::string text (65536, '\0');
        const auto length = ::read (reader, text.data(), text.size());
        text.resize (length > 0 ? static_cast<std::size_t> (length) : 0);
        return text;
    }

private:
    int reader = -1;
};

/** More lines than a pipe takes. */
std::string manyNotes()
{
    std::string notes;

    for (int note = 0; note < 7000; ++note)
        notes += "90 3C 64\n";

    return notes;
}

TEST_P (ProgramMonitorSignalTest, endsAlsoWhileNobodyReadsWhatItShows)
{
    const FullPipe pipe (path ("out"));
    RunningMonitor monitor (path ("out"), { "midi", "monitor", "-" });
    monitor.send (manyNotes());
    std::this_thread::sleep_for (std::chrono::milliseconds (500));
    EXPECT_EQ (monitor.stopWith (GetParam()), 128 + GetParam());
}

TEST_F (ProgramMonitorTest, waitsForAReaderThatTakesItsTime)
{
    const FullPipe pipe (path ("out"));
    RunningMonitor monitor (path ("out"), { "midi", "monitor", "-" });
    monitor.send (manyNotes());
    monitor.closeInput();
    std::this_thread::sleep_for (std::chrono::seconds (6));
    std::string shown;
    const std::size_t expected = 7000 * std::string ("NoteOn 1 60\n").size();

    for (int tries = 0; tries < 1000 && shown.size() < expected; ++tries)
    {
        shown += pipe.read();
        std::this_thread::sleep_for (std::chrono::milliseconds (10));
    }

    EXPECT_EQ (shown.size(), expected);
    EXPECT_EQ (monitor.waitForEnd(), 0);
}

INSTANTIATE_TEST_SUITE_P (MIDI, ProgramMonitorSignalTest, testing::Values (SIGINT, SIGTERM),
                          [] (const auto& signal)
                          { return std::string (signal.param == SIGINT ? "interrupt" : "terminate"); });

} // namespace
