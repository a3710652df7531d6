// SPDX-License-Identifier: GPL-3.0-only
// The MIDI commands: what is bound, and binding. What comes in is for ProgramMonitorTest.cpp.
#include "overmarks/MIDIFixture.h"

#include <gmock/gmock.h>

#include <unistd.h>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

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
    EXPECT_FALSE (bound.json().contains ("dryRun"));
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
    const auto told = run ({ "midi", "bind", "film.json", "--message", "PC 1 5", "--uuid", identityOf (0),
                             "--dry-run", "--json" });
    EXPECT_EQ (told.json()["dryRun"], true);
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
    EXPECT_EQ (errorOf ({ "midi", "bind", "film.json", "--message", "PC 1 5", "--uuid", identityOf (0) }, 1),
               "Can't write " + path (triggerFile) + ": File exists");
}

TEST_F (ProgramMIDITest, aDamagedFileIsSaidAndKept)
{
    hasFilm();
    file (triggerFile).create();
    write (triggerFile, "\xFF\xFF");
    const auto damage = path (triggerFile) + " is damaged; nothing can be read from it";
    const auto bound = bind ("PC 1 5", identityOf (0));
    EXPECT_EQ (bound.status, 0);
    EXPECT_THAT (bound.errors, StartsWith (damage + "\nPC 1 5 fires "));
    EXPECT_EQ (bindings().size(), 1u);
    EXPECT_EQ (read ("data/overmarks/midiEventsV3.damaged.bin"), "\xFF\xFF");
}

TEST_F (ProgramMIDITest, aDamagedFileIsAProblemOfTheList)
{
    file (triggerFile).create();
    write (triggerFile, "\xFF\xFF");
    const auto damage = path (triggerFile) + " is damaged; nothing can be read from it";
    const auto shown = run ({ "midi", "list", "--json", "--quiet" });
    EXPECT_EQ (shown.status, 1);
    EXPECT_EQ (shown.errors, damage + "\n");
    EXPECT_EQ (shown.json()["problems"][0]["message"], damage);
    EXPECT_TRUE (shown.json()["bindings"].empty());
    EXPECT_EQ (read (triggerFile), "\xFF\xFF");

    const auto monitored = run ({ "midi", "monitor", "-", "--json" }, "90 3C 64");
    EXPECT_EQ (monitored.status, 1);
    EXPECT_EQ (monitored.errors, damage + "; what messages fire is not shown\n");
    EXPECT_EQ (monitored.json()["messages"][0]["message"], "NoteOn 1 60");
    EXPECT_EQ (monitored.json()["problems"].size(), 1u);
}

TEST_F (ProgramMIDITest, aFileThatCantBeReadIsNotCalledDamagedAndIsNotReplaced)
{
    hasFilm();
    const auto uuid = identityOf (0);
    file (triggerFile).createDirectory();
    const auto shown = run ({ "midi", "list" });
    EXPECT_EQ (shown.status, 1);
    EXPECT_THAT (shown.errors, StartsWith (path (triggerFile) + " can't be read: it is no file\n"));
    EXPECT_EQ (bind ("PC 1 5", uuid).status, 1);
    EXPECT_TRUE (file (triggerFile).isDirectory());
}

TEST_F (ProgramMIDITest, soMuchThatItCantBeReadIsNotReplacedEither)
{
    hasFilm();
    file (triggerFile).create();
    ASSERT_EQ (truncate (path (triggerFile).c_str(), off_t { 3 } << 30), 0);
    EXPECT_EQ (errorOf ({ "midi", "bind", "film.json", "--message", "PC 1 5", "--uuid", identityOf (0) }, 1),
               path (triggerFile) + " can't be read: it is larger than 16777216 bytes; nothing was changed");
}

TEST_F (ProgramMIDITest, aSmallFileThatFillsTheMemoryIsAProblem)
{
    std::string triggers;

    for (int i = 0; i < 200000; ++i)
        triggers += std::string ("\x0A\x00", 2);

    file (triggerFile).create();
    write (triggerFile, triggers);
    const auto shown = run ({ "midi", "list", "--json", "--quiet" });
    EXPECT_EQ (shown.status, 1);
    EXPECT_EQ (shown.json()["problems"][0]["message"],
               path (triggerFile)
                   + " can't be read: it claims to hold more bindings than its 400000 bytes have room for");
    EXPECT_EQ (run ({ "midi", "unbind", "--message", "PC 1 5" }).status, 1);
    EXPECT_EQ (read (triggerFile), triggers);
}

TEST_F (ProgramMIDITest, oneBindingIsCountedAsOne)
{
    hasFilm();
    ASSERT_EQ (bind ("PC 1 5", identityOf (0)).status, 0);
    EXPECT_THAT (run ({ "midi", "list" }).errors, StartsWith ("1 binding, "));
    const auto gone = run ({ "midi", "unbind", "--message", "PC 1 5" });
    EXPECT_EQ (gone.errors, "PC 1 5 fires nothing any more; 1 binding removed\n");
    EXPECT_EQ (gone.status, 0);
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

} // namespace
