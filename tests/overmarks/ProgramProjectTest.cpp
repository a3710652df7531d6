// SPDX-License-Identifier: GPL-3.0-only
// Project files on the command line: wherever a list is read or a project is written.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class ProgramProjectTest : public ProgramTest
{
protected:
    /** film.overmarks, made of three cues. */
    void importFilm() const
    {
        write ("x.csv", threeCues);
        const auto result = run (
            { "import", "x.csv", "-o", "film.overmarks", "--origin", "01:00:00:00", "--reasons", "Dentist" });
        ASSERT_EQ (result.status, 0) << result.errors;
    }

    std::string dump (const std::string& list) const
    {
        const auto result = run ({ "dump", list });
        EXPECT_EQ (result.status, 0) << result.errors;
        return result.output;
    }
};

TEST_F (ProgramProjectTest, aCueListBecomesAProjectFile)
{
    importFilm();
    EXPECT_THAT (read ("film.overmarks"), StartsWith ("\x89OVM\r\n\x1a\n"));
    const auto project = nlohmann::ordered_json::parse (dump ("film.overmarks"));
    EXPECT_EQ (project["name"], "film");
    EXPECT_EQ (project["timeInfo"]["timeOrigin"], "01:00:00:00");
    EXPECT_EQ (project["userReasons"][0], "Dentist");
    EXPECT_EQ (project["characters"].size(), 2u);
    ASSERT_EQ (project["events"].size(), 5u);
    EXPECT_EQ (project["events"][2]["text"]["text"], "Hello?");
}

TEST_F (ProgramProjectTest, dumpAndLoadLoseNothing)
{
    importFilm();
    const auto text = dump ("film.overmarks");
    write ("film.json", text);
    EXPECT_EQ (run ({ "load", "film.json", "-o", "copy.overmarks" }).status, 0);
    EXPECT_EQ (dump ("copy.overmarks"), text);
    EXPECT_EQ (read ("copy.overmarks"), read ("film.overmarks"));
}

TEST_F (ProgramProjectTest, convertGoesToAndFro)
{
    importFilm();
    EXPECT_EQ (run ({ "convert", "film.overmarks", "film.json" }).status, 0);
    EXPECT_EQ (read ("film.json"), dump ("film.overmarks"));
    EXPECT_EQ (run ({ "convert", "film.json", "again.OVERMARKS" }).status, 0);
    EXPECT_EQ (read ("again.OVERMARKS"), read ("film.overmarks"));
    EXPECT_EQ (run ({ "convert", "x.csv", "other", "--format", "overmarks" }).status, 0);
    EXPECT_THAT (read ("other"), StartsWith ("\x89OVM"));
}

TEST_F (ProgramProjectTest, settingWritesBackIntoTheProject)
{
    importFilm();
    const auto result =
        run ({ "set", "film.overmarks", "-o", "film.overmarks", "--where", "CueNumber=A1", "Done=yes" });
    EXPECT_EQ (result.status, 0) << result.errors;
    const auto events = nlohmann::ordered_json::parse (dump ("film.overmarks"))["events"];
    for (const auto& event : events)
        EXPECT_EQ (event["done"], event["cueNumber"] == "A1");
    EXPECT_THAT (filesInFolder(), ElementsAre ("film.overmarks", "x.csv"));
}

TEST_F (ProgramProjectTest, listAndExportTakeAProject)
{
    importFilm();
    const auto listed = run ({ "list", "film.overmarks", "--json", "--character", "ANNA" });
    EXPECT_EQ (listed.json()["events"].size(), 2u);
    EXPECT_EQ (run ({ "export", "film.overmarks", "-o", ".", "--format", "csv" }).status, 0);
    EXPECT_THAT (read ("film.csv"), HasSubstr ("Hello?"));
}

TEST_F (ProgramProjectTest, documentsFollowTheSettingsThatTheProjectKeeps)
{
    importFilm();
    auto project = nlohmann::ordered_json::parse (dump ("film.overmarks"));
    project["documents"] = { { "delimiter", 2 } };
    write ("film.json", project.dump());
    ASSERT_EQ (run ({ "load", "film.json", "-o", "kept.overmarks" }).status, 0);
    ASSERT_EQ (run ({ "convert", "kept.overmarks", "kept.csv" }).status, 0);
    EXPECT_THAT (read ("kept.csv"), HasSubstr (";\"Hello?\";"));
    ASSERT_EQ (run ({ "convert", "kept.overmarks", "given.csv", "--delimiter", "comma" }).status, 0);
    EXPECT_THAT (read ("given.csv"), HasSubstr (",\"Hello?\","));

    project["documents"] = { { "delimiter", 4711 } };
    write ("film.json", project.dump());
    ASSERT_EQ (run ({ "convert", "film.json", "odd.csv" }).status, 0);
    EXPECT_EQ (read ("odd.csv"), read ("given.csv")) << "a number that means nothing";
}

TEST_F (ProgramProjectTest, theOptionsOfTimeAndReasonsWinOverTheProject)
{
    importFilm();
    const auto result = run ({ "dump", "film.overmarks", "--fps", "24", "--reasons", "Cold" });
    EXPECT_EQ (result.json()["timeInfo"]["framesPerSecond"], 24);
    EXPECT_EQ (result.json()["userReasons"][0], "Cold");
}

TEST_F (ProgramProjectTest, standardInputIsTakenUnderItsFormat)
{
    importFilm();
    const auto result = run ({ "dump", "-", "--format", "overmarks" }, read ("film.overmarks"));
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.output, dump ("film.overmarks"));

    const auto cut = run ({ "dump", "-", "--format", "overmarks" }, read ("film.overmarks").substr (0, 10));
    EXPECT_EQ (cut.status, 1);
    EXPECT_THAT (cut.errors, HasSubstr ("The project file on standard input is cut off"));
}

TEST_F (ProgramProjectTest, anExistingProjectIsReplacedOnlyByForce)
{
    importFilm();
    const auto before = read ("film.overmarks");
    EXPECT_EQ (errorOf ({ "import", "x.csv", "-o", "film.overmarks" }, 1),
               path ("film.overmarks") + " exists already; --force replaces it");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "film.overmarks" }, 1),
               path ("film.overmarks") + " exists already; --force replaces it");
    EXPECT_EQ (read ("film.overmarks"), before);
    EXPECT_EQ (run ({ "import", "x.csv", "-o", "film.overmarks", "--force" }).status, 0);
    EXPECT_NE (read ("film.overmarks"), before);
}

TEST_F (ProgramProjectTest, aDryRunWritesNoProject)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "import", "x.csv", "-o", "film.overmarks", "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("Would write " + path ("film.overmarks") + ": 3 events"));
    EXPECT_THAT (filesInFolder(), ElementsAre ("x.csv"));
}

TEST_F (ProgramProjectTest, aFileThatIsNoProjectIsSaid)
{
    write ("film.overmarks", "Start TC,End TC\n");
    EXPECT_EQ (errorOf ({ "dump", "film.overmarks" }, 1),
               "The project file " + path ("film.overmarks") + " is no Overmarks project");
    write ("film.overmarks", "");
    EXPECT_EQ (errorOf ({ "dump", "film.overmarks" }, 1),
               "The project file " + path ("film.overmarks") + " is empty");
}

TEST_F (ProgramProjectTest, aDamagedProjectIsNotEdited)
{
    importFilm();
    auto damaged = read ("film.overmarks");
    damaged.back() = static_cast<char> (damaged.back() ^ 1);
    write ("film.overmarks", damaged);
    EXPECT_EQ (errorOf ({ "set", "film.overmarks", "-o", "film.overmarks", "Done=yes" }, 1),
               "The project file " + path ("film.overmarks")
                   + " is damaged: its content is not what was saved");
    EXPECT_EQ (read ("film.overmarks"), damaged);
}

TEST_F (ProgramProjectTest, aFullDiskLeavesTheOldProject)
{
    importFilm();
    const auto before = read ("film.overmarks");
    ProgramSurroundings fullDisk;
    fullDisk.largestFile = 100;
    const auto result = run ({ "set", "film.overmarks", "-o", "film.overmarks", "Done=yes" }, {}, fullDisk);
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("Can't write " + path ("film.overmarks") + ": File too large"));
    EXPECT_EQ (read ("film.overmarks"), before);
    EXPECT_THAT (filesInFolder(), ElementsAre ("film.overmarks", "x.csv"));
}

TEST_F (ProgramProjectTest, aProjectHasOneOfTwoExtensions)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (errorOf ({ "import", "x.csv", "-o", "film.csv" }, 2),
               "film.csv: a project has the extension .overmarks, or .json for its JSON form");
}

TEST_F (ProgramProjectTest, theCatalogueNamesTheProject)
{
    const auto formats = run ({ "formats", "--json" }).json()["formats"];
    int found = 0;
    for (const auto& format : formats)
        if (format.value ("format", "") == "overmarks")
        {
            EXPECT_EQ (format["extensions"], ".overmarks");
            EXPECT_EQ (format["reads"], true);
            EXPECT_EQ (format["writes"], true);
            ++found;
        }
    EXPECT_EQ (found, 1);
}

} // namespace
