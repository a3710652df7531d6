// SPDX-License-Identifier: GPL-3.0-only
// A full disk, a terminal and a pipe: what the program does to the world around it.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace
{

class ProgramDiskTest : public ProgramTest
{
protected:
    ProgramDiskTest()
    {
        std::string list = "Start TC,Text\n";

        for (int second = 10; second < 60; ++second)
            list += "00:00:" + std::to_string (second) + ":00,A line that is neither long nor short\n";

        write ("x.csv", list);
    }

    /** A run for which the disk is full behind the first bytes of each file. */
    ProgramResult runOnFullDisk (const std::vector<std::string>& arguments, long room = 1024) const
    {
        ProgramSurroundings full;
        full.largestFile = room;
        return run (arguments, {}, full);
    }
};

TEST_F (ProgramDiskTest, aFullDiskLeavesTheOldDocument)
{
    write ("new.csv", "precious");
    const auto exported = runOnFullDisk (
        { "export", "x.csv", "-o", ".", "--name", "new", "--format", "csv", "--force", "--json" });
    EXPECT_EQ (exported.status, 1);
    EXPECT_EQ (exported.json()["error"], "Error writing file to " + path ("new.csv"));
    EXPECT_EQ (read ("new.csv"), "precious");

    const auto converted = runOnFullDisk ({ "convert", "x.csv", "new.csv", "--force", "--json" });
    EXPECT_EQ (converted.status, 1);
    EXPECT_EQ (converted.json()["error"], "Error writing file to " + path ("new.csv"));
    EXPECT_EQ (read ("new.csv"), "precious");
    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "new.csv", "x.csv" }));
}

TEST_F (ProgramDiskTest, aFullDiskLeavesTheOldProject)
{
    write ("new.json", "precious");

    for (const auto* command : { "import", "convert" })
    {
        std::vector<std::string> arguments { command, "x.csv", "new.json", "--force", "--json" };

        if (arguments[0] == "import")
            arguments.insert (arguments.begin() + 2, "-o");

        const auto result = runOnFullDisk (arguments);
        EXPECT_EQ (result.status, 1);
        EXPECT_EQ (result.json()["error"], "Can't write " + path ("new.json") + ": File too large");
        EXPECT_EQ (read ("new.json"), "precious");
    }

    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "new.json", "x.csv" }));
}

TEST_F (ProgramDiskTest, aFullDiskLeavesTheProjectThatIsEdited)
{
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto before = read ("film.json");
    EXPECT_EQ (runOnFullDisk ({ "set", "film.json", "-o", "film.json", "Done=yes" }).status, 1);
    EXPECT_EQ (read ("film.json"), before);
    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "film.json", "x.csv" }));
}

TEST_F (ProgramDiskTest, aFullDiskLeavesThePreferences)
{
    ASSERT_EQ (
        run ({ "preferences", "--set", "ADRCueDefaultDuration=1", "--settings", "studio.settings" }).status,
        0);
    const auto before = read ("studio.settings");
    const auto result = runOnFullDisk (
        { "preferences", "--set", "ADRCueDefaultDuration=2", "--settings", "studio.settings", "--json" }, 40);
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (read ("studio.settings"), before);
    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "studio.settings", "x.csv" }));
}

TEST_F (ProgramDiskTest, aDumpIntoAFullDiskIsAFailure)
{
    ProgramSurroundings full;
    full.outputTo = "/dev/full";
    const auto result = run ({ "dump", "x.csv", "--quiet" }, {}, full);
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.errors, "overmarks: Standard output can't be written; it is not whole\n");
}

TEST_F (ProgramDiskTest, nothingFollowsThePartOfALongDocumentThatFoundNoRoom)
{
    std::string list = "Start TC,Text\n";

    for (int i = 0; i < 4000; ++i)
        list += "00:00:10:00,Line " + std::to_string (i) + " is neither long nor short\n";

    write ("long.csv", list);
    ASSERT_EQ (run ({ "import", "long.csv", "-o", "long.json" }).status, 0);
    ProgramSurroundings full;
    full.largestFile = 100000;
    full.outputTo = path ("out.json");

    for (const auto& command : std::vector<std::vector<std::string>> {
             { "rows", "long.csv", "--json" }, { "list", "long.json", "--json" }, { "dump", "long.json" } })
    {
        const auto whole = run (command).output;
        const auto result = run (command, {}, full);
        EXPECT_EQ (result.status, 1) << command[0];
        EXPECT_THAT (result.errors,
                     EndsWith ("overmarks: Standard output can't be written; it is not whole\n"));
        EXPECT_EQ (read ("out.json").size(), 100000u) << command[0];
        EXPECT_EQ (read ("out.json"), whole.substr (0, 100000)) << command[0];
    }
}

TEST_F (ProgramDiskTest, aFullDeviceIsTold)
{
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "/dev/full", "--format", "csv" }, 1),
               "Can't write /dev/full: No space left on device");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "/dev/full", "--format", "json" }, 1),
               "Can't write /dev/full: No space left on device");
}

TEST_F (ProgramDiskTest, aBarIsDrawnOnATerminalAndTakenAwayAgain)
{
    ProgramSurroundings terminal;
    terminal.errorsOnTerminal = true;
    const auto result = run ({ "convert", "x.csv", "new.csv" }, {}, terminal);
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("\rReading [##############################] 100%\r\033[K"));
    EXPECT_THAT (result.errors, HasSubstr ("x.csv: read as ascii\r\n\rReading [###############..."))
        << "the bar comes back for the events";
    EXPECT_THAT (result.errors, HasSubstr ("\rWriting [##############################] 100%\r\033[K"));
    EXPECT_THAT (result.errors, EndsWith ("\033[KWrote " + path ("new.csv") + "\r\n"));
}

TEST_F (ProgramDiskTest, noBarIsDrawnWhereItIsNotWanted)
{
    ProgramSurroundings terminal;
    terminal.errorsOnTerminal = true;
    EXPECT_EQ (run ({ "convert", "x.csv", "new.csv", "--quiet" }, {}, terminal).errors, "");
    EXPECT_THAT (run ({ "convert", "x.csv", "new.csv", "--force" }).errors, Not (HasSubstr ("[")));
}

} // namespace
