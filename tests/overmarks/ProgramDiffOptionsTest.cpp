// SPDX-License-Identifier: GPL-3.0-only
// overmarks diff: a complaint names the option that was given, that of both lists or that of the old one.
#include "overmarks/ProgramDiffFixture.h"

#include <gmock/gmock.h>

#include <iterator>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class ProgramDiffOptionsTest : public ProgramDiffFixture
{
protected:
    ProgramDiffOptionsTest()
    {
        writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n", "01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n");
    }

    std::string refused (std::vector<std::string> options, const std::string& old = "old.csv",
                         const std::string& now = "new.csv") const
    {
        options.insert (options.begin(), { "diff", old, now });
        return errorOf (options, 2);
    }
};

/** An option with a value that can't be, and how the complaint goes on behind the option's name. */
struct Refusal
{
    const char* name;
    const char* value;
    const char* complaint;
};

class RefusedOption : public ProgramDiffOptionsTest, public testing::WithParamInterface<Refusal>
{
};

TEST_P (RefusedOption, isNamedAsItWasGiven)
{
    for (const std::string option : { "--old-", "--" })
        EXPECT_THAT (refused ({ option + GetParam().name, GetParam().value }),
                     StartsWith (option + GetParam().name + ": " + GetParam().complaint));
}

constexpr Refusal refusals[] {
    { "fps", "3", "\"3\" is none of 23.976, " },
    { "origin", "soon", "\"soon\" is no timecode" },
    { "origin", "01:00:00:25", "there is no 01:00:00:25 at 25 frames per second" },
    { "first-frame-of-action", "soon", "\"soon\" is no timecode" },
    { "encoding", "klingon", "\"klingon\" is none of ascii, " },
    { "map", "Line", "\"Line\" is not of the form HEADER=TITLE" },
    { "map", "Line=Words", "\"Words\" is none of " },
    { "map", "Nowhere=Text", "the file has no column \"Nowhere\"" },
    { "map", "#9=Text", "there is no column #9; the file has 5" },
    { "tracks", "all,ANNA", "it is either all or cue" },
};

INSTANTIATE_TEST_SUITE_P (Options, RefusedOption, testing::ValuesIn (refusals),
                          [] (const auto& row)
                          {
                              std::string name = row.param.name + std::to_string (row.index);
                              std::erase (name, '-');
                              return name;
                          });

TEST_F (ProgramDiffOptionsTest, theOldListsOwnOptionIsRefusedThoughTheNewListIsReadFirst)
{
    ASSERT_EQ (run ({ "import", "new.csv", "-o", "new.json" }).status, 0);
    EXPECT_THAT (refused ({ "--old-fps", "3" }, "old.csv", "new.json"), StartsWith ("--old-fps: \"3\""));
    EXPECT_THAT (refused ({ "--old-fps", "3" }, "old.csv", "missing.csv"), StartsWith ("--old-fps: \"3\""));
}

TEST_F (ProgramDiffOptionsTest, anOptionOfBothIsNamedThoughTheOldListHasItsOwn)
{
    EXPECT_THAT (refused ({ "--fps", "3", "--old-fps", "25" }), StartsWith ("--fps: \"3\""));
    EXPECT_THAT (refused ({ "--fps", "25", "--old-origin", "01:00:00:25" }),
                 StartsWith ("--old-origin: there is no 01:00:00:25 at 25"));
}

TEST_F (ProgramDiffOptionsTest, aRateThatTheOldProjectCantHaveNamesTheOldListsOptions)
{
    ASSERT_EQ (run ({ "import", "old.csv", "-o", "old.json", "--origin", "01:00:00:24" }).status, 0);
    EXPECT_EQ (refused ({ "--old-fps", "24" }, "old.json"),
               "--old-fps: the project's time origin 01:00:00:24 doesn't exist at 24 frames per second; "
               "--old-origin names another");
    ASSERT_EQ (run ({ "import", "new.csv", "-o", "new.json", "--origin", "01:00:00:24" }).status, 0);
    EXPECT_THAT (refused ({ "--fps", "24" }, "old.csv", "new.json"),
                 HasSubstr ("24 frames per second; --origin names another"));
}

} // namespace
