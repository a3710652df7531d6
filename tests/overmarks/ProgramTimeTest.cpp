// SPDX-License-Identifier: GPL-3.0-only
// The time reference of a project: what its own times and the given rate have to do with each other.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::Not;

namespace
{

class ProgramTimeTest : public ProgramTest
{
protected:
    void writeProject (const std::string& rate, const std::string& origin,
                       const std::string& first = {}) const
    {
        std::vector<std::string> arguments { "import", "x.csv", "-o",       "film.json",
                                             "--fps",  rate,    "--origin", origin };

        if (! first.empty())
            arguments.insert (arguments.end(), { "--first-frame-of-action", first });

        write ("x.csv", "Start TC,Text\n02:00:00:00,Hello\n");
        const auto result = run (arguments);
        ASSERT_EQ (result.status, 0) << result.errors;
    }
};

TEST_F (ProgramTimeTest, aRateUnderWhichTheProjectsOriginDoesNotExistIsRefused)
{
    writeProject ("30", "01:00:00:29");
    EXPECT_EQ (errorOf ({ "list", "film.json", "--fps", "25" }, 2),
               "--fps: the project's time origin 01:00:00:29 doesn't exist at 25 frames per second; "
               "--origin names another");
    EXPECT_EQ (run ({ "list", "film.json", "--fps", "25", "--origin", "01:00:00:00" }).status, 0);
    EXPECT_EQ (run ({ "list", "film.json", "--fps", "60" }).status, 0);
}

TEST_F (ProgramTimeTest, aRateThatDropsTheProjectsOriginIsRefused)
{
    writeProject ("29.97", "01:01:00:00");
    EXPECT_EQ (errorOf ({ "dump", "film.json", "--fps", "29.97df" }, 2),
               "--fps: the project's time origin 01:01:00:00 doesn't exist at 29.97df frames per second; "
               "--origin names another");
}

TEST_F (ProgramTimeTest, aRateUnderWhichTheFirstFrameOfActionDoesNotExistIsRefused)
{
    writeProject ("30", "01:00:00:00", "01:00:08:29");
    EXPECT_EQ (
        errorOf ({ "list", "film.json", "--fps", "24" }, 2),
        "--fps: the project's first frame of action 01:00:08:29 doesn't exist at 24 frames per second; "
        "--first-frame-of-action names another");
    EXPECT_EQ (run ({ "list", "film.json", "--fps", "24", "--first-frame-of-action", "01:00:08:00" }).status,
               0);
}

TEST_F (ProgramTimeTest, aProjectWithTimesThatDoNotExistIsRefused)
{
    write ("x.json", R"({"overmarks":1,"timeInfo":{"timeOrigin":"01:00:00:25"}})");
    EXPECT_EQ (errorOf ({ "list", "x.json" }, 1),
               "x.json: timeInfo: the timeOrigin 01:00:00:25 doesn't exist at this frame rate");
}

TEST_F (ProgramTimeTest, whatHasNoUseForAProjectIsSaid)
{
    writeProject ("25", "01:00:00:00");
    const auto result = run ({ "list", "film.json", "--encoding", "utf-8", "--line-breaks", "--map", "a=Text",
                               "--tracks", "all", "--format", "csv" });
    EXPECT_EQ (result.status, 0);

    for (const auto* option : { "--encoding", "--line-breaks", "--map", "--tracks" })
        EXPECT_THAT (result.errors, HasSubstr ("film.json: " + std::string (option)
                                               + " makes no difference to this list\n"));

    EXPECT_THAT (result.errors, HasSubstr ("film.json: --format makes no difference to this list\n"));
    EXPECT_THAT (run ({ "list", "x.csv", "--encoding", "utf-8", "--line-breaks" }).errors,
                 Not (HasSubstr ("makes no difference")));
    EXPECT_THAT (run ({ "list", "x.csv", "--tracks", "all" }).errors,
                 HasSubstr ("x.csv: --tracks makes no difference to this list\n"));
}

TEST_F (ProgramTimeTest, mistypedImportOptionsAreFoundEvenWhereTheyMakeNoDifference)
{
    writeProject ("25", "01:00:00:00");
    EXPECT_EQ (run ({ "list", "film.json", "--encoding", "klingon" }).status, 2);
    EXPECT_EQ (run ({ "list", "film.json", "--map", "a=Texd" }).status, 2);
    EXPECT_EQ (run ({ "list", "film.json", "--map", "Text" }).status, 2);
    EXPECT_EQ (errorOf ({ "list", "film.json", "--tracks", "all,Dialogue" }, 2),
               "--tracks: it is either all or cue, or the names of tracks");
}

TEST_F (ProgramTimeTest, standardInputIsReadOnlyOnce)
{
    EXPECT_EQ (errorOf ({ "import", "-", "-", "--format", "csv", "-o", "y.json" }, 2),
               "Standard input can be read only once");
    EXPECT_EQ (errorOf ({ "export", "-", "-o", ".", "--format", "csv" }, 2),
               "A list on standard input needs its format, such as --input-format csv");
}

} // namespace
