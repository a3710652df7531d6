// SPDX-License-Identifier: GPL-3.0-only
// overmarks diff: lists that are empty, huge, odd or not there.
#include "overmarks/ProgramDiffFixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ProgramDiffHostileTest : public ProgramDiffFixture
{
protected:
    /** What a comparison of each line with each would need hours for. */
    static constexpr int many = 30000;

    static std::string timecode (int frame)
    {
        constexpr int fps = 25, minute = 60 * fps, hour = 60 * minute;
        return juce::String::formatted ("%02d:%02d:%02d:%02d", frame / hour, frame / minute % 60,
                                        frame / fps % 60, frame % fps)
            .toStdString();
    }

    /** Lines of one character, one every so many frames. */
    static std::string lines (int number, int distance, const std::string& (*text) (int), int firstFrame = 0)
    {
        std::string list;

        for (int i = 0; i < number; ++i)
            list += timecode (firstFrame + i * distance) + "," + timecode (firstFrame + i * distance + 10)
                    + ",ANNA," + text (i) + ",\n";

        return list;
    }

    static const std::string& yes (int)
    {
        static const std::string text ("Ja.");
        return text;
    }

    static const std::string& own (int i)
    {
        static std::string text;
        return text = "Line " + std::to_string (i);
    }
};

TEST_F (ProgramDiffHostileTest, aListIsEqualToItself)
{
    write ("x.csv", threeCues);
    const auto result = diff ({}, "x.csv", "x.csv");
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("no differences; 3 unchanged\n"));
}

TEST_F (ProgramDiffHostileTest, twoEmptyListsAreEqual)
{
    writeLists ("", "");
    const auto result = diff();
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.output, "");
    EXPECT_THAT (result.errors, HasSubstr ("no differences; 0 unchanged\n"));
    EXPECT_THAT (changes(), IsEmpty());
}

TEST_F (ProgramDiffHostileTest, eitherListMayComeOnStandardInput)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "diff", "-", "x.csv", "--format", "csv" }, threeCues).status, 0);
    EXPECT_EQ (run ({ "diff", "x.csv", "-", "--format", "csv" }, threeCues).status, 0);
    EXPECT_THAT (run ({ "diff", "-", "x.csv", "--format", "csv" }, threeCues).errors,
                 Not (HasSubstr ("makes no difference")));
    const auto project = run ({ "dump", "x.csv" }).output;
    EXPECT_EQ (run ({ "diff", "-", "x.csv", "--format", "json" }, project).status, 0);
    EXPECT_EQ (errorOf ({ "diff", "-", "x.csv" }, 2),
               "A list on standard input needs its format, such as --format csv");
    EXPECT_EQ (errorOf ({ "diff", "-", "-" }, 2), "Standard input can be read only once");
}

TEST_F (ProgramDiffHostileTest, aListThatIsNotThereIsNamed)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (errorOf ({ "diff", "x.csv", "missing.csv" }, 1), "There is no file " + path ("missing.csv"));
    EXPECT_EQ (errorOf ({ "diff", "missing.csv", "x.csv" }, 1), "There is no file " + path ("missing.csv"));
}

TEST_F (ProgramDiffHostileTest, optionsForTheOldListAreItsOwn)
{
    write ("old.csv", "Time,Words\n01:00:02:00,Hello\n");
    write ("new.csv", "Start TC,Text\n01:00:02:00,Hello\n");
    const auto result = diff ({ "--old-map", "Words=Text", "--old-map", "Time=Start TC" });
    EXPECT_EQ (result.status, 0) << result.output << result.errors;
}

TEST_F (ProgramDiffHostileTest, optionsForACueListAreNotSaidToMissTheProject)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    EXPECT_THAT (diff ({ "--encoding", "utf-8" }, "film.json", "x.csv").errors,
                 Not (HasSubstr ("makes no difference")));
    EXPECT_THAT (diff ({ "--encoding", "utf-8" }, "film.json", "film.json").errors,
                 HasSubstr ("makes no difference"));
}

TEST_F (ProgramDiffHostileTest, identitiesThatOccurTwiceStillPairOneToOne)
{
    writeProject ("old.json", { R"("uuid": "u", "cueNumber": "1", "text": "One")",
                                R"("uuid": "u", "cueNumber": "2", "text": "Two")" });
    writeProject ("new.json", { R"("uuid": "u", "cueNumber": "1", "text": "One")" });
    EXPECT_EQ (changes ({}, "old.json", "new.json").size(), 1u);
}

TEST_F (ProgramDiffHostileTest, indicesAtTheEndOfTheirRangeAreCompared)
{
    writeProject (
        "old.json",
        { R"("cueNumber": "1", "startFrameIndex": -2147483648, "inPointFrameIndex": -2147483648, "endFrameIndex": 2147483647)" });
    writeProject (
        "new.json",
        { R"("cueNumber": "1", "startFrameIndex": 0, "inPointFrameIndex": 2147483647, "endFrameIndex": -2147483648)" });
    const auto found = changes ({}, "old.json", "new.json");
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["shiftFrames"], 4294967295);
    EXPECT_EQ (diff ({ "--old-fps", "24", "--fps", "29.97df" }, "old.json", "new.json").status, 1);
}

TEST_F (ProgramDiffHostileTest, hugeTextsAreCompared)
{
    std::string text;

    for (int i = 0; i < 200000; ++i)
        text += "word" + std::to_string (i) + " ";

    auto other = text;
    std::reverse (other.begin() + 500000, other.begin() + 900000);
    writeLists ("01:00:02:00,01:00:04:00,ANNA," + text + "end,A1\n",
                "01:00:02:00,01:00:04:00,ANNA," + other + "END,A1\n");
    const auto result = diff ({});
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.output.substr (0, 200), HasSubstr ("word0 word1"));
}

TEST_F (ProgramDiffHostileTest, aSeasonThatHasMovedIsOneRow)
{
    writeLists (lines (many, 50, own), lines (many, 50, own, 60));
    const auto result = diff ({});
    EXPECT_THAT (result.output, HasSubstr ("30000 cues moved by +00:00:02:10\n"));
}

TEST_F (ProgramDiffHostileTest, oneLineMoreAmongTensOfThousandsOfEqualOnesIsOneChange)
{
    auto news = lines (many, 50, yes);
    news += timecode (25 * 1000 + 7) + "," + timecode (25 * 1000 + 17) + ",ANNA,Ja.,\n";
    writeLists (lines (many, 50, yes), news);
    const auto result = diff ({ "--json" });
    ASSERT_EQ (result.json()["changes"].size(), 1u);
    EXPECT_EQ (result.json()["changes"][0]["kind"], "added");
}

TEST_F (ProgramDiffHostileTest, tensOfThousandsOfLinesAtOnePlaceAreCompared)
{
    writeLists (lines (many, 0, own), lines (many, 0, yes));
    const auto result = diff ({ "--csv", "changes.csv" });
    EXPECT_EQ (result.status, 1);
}

TEST_F (ProgramDiffHostileTest, tensOfThousandsOfChangesAreWritten)
{
    writeLists (lines (many, 50, own), "");
    const auto result = diff ({ "--json", "--csv", "changes.csv", "--html", "changes.html" });
    EXPECT_EQ (result.json()["changes"].size(), 30000u);
}

} // namespace
