// SPDX-License-Identifier: GPL-3.0-only
// overmarks export and convert: documents of a list, and what must not happen to files.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace
{

TEST_F (ProgramTest, convertWritesTheTableAndReadsItBackWhole)
{
    write (
        "x.csv",
        "Start TC,End TC,Text,Event Type,Streamer Duration,Reason\n00:00:10:00,00:00:12:00,Hello,ADR Cue,5,Clarity (AR4)\n");
    ASSERT_EQ (run ({ "convert", "x.csv", "out.csv" }).status, 0);
    const auto events = run ({ "list", "out.csv", "--json" }).json()["events"];
    ASSERT_EQ (events.size(), 1u);
    EXPECT_EQ (events[0]["streamerDuration"], 5);
    EXPECT_EQ (events[0]["startFrameIndex"], 125);
    EXPECT_EQ (events[0]["reason"], 4);
}

TEST_F (ProgramTest, convertNeverReplacesItsSource)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "convert", "x.csv", "x.csv", "--force" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, exportNeverReplacesItsSourceThroughALink)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("x.csv").createSymbolicLink (file ("y.csv"), true));
    EXPECT_EQ (run ({ "export", "x.csv", "-o", ".", "--name", "y", "--format", "csv", "--force" }).status, 1);
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, exportByCharacterWritesAFileForEachCharacter)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());
    const auto result =
        run ({ "export", "x.csv", "-o", "out", "--format", "csv", "--by-character", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"],
               (std::vector<std::string> { path ("out/x_ANNA.csv"), path ("out/x_TOM.csv") }));
    EXPECT_TRUE (file ("out/x_ANNA.csv").existsAsFile());
    EXPECT_TRUE (file ("out/x_TOM.csv").existsAsFile());
}

TEST_F (ProgramTest, aMissingOutputFolderIsRefusedBeforeAnything)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "export", "x.csv", "-o", "nowhere", "--format", "csv", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "There is no folder " + path ("nowhere"));
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, aFullDeviceBehindALinkIsTold)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (juce::File ("/dev/full").createSymbolicLink (file ("full.csv"), true));
    const auto result =
        run ({ "export", "x.csv", "-o", ".", "--name", "full", "--format", "csv", "--force" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("Can't write " + path ("full.csv") + ": No space left on device"));
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, aFullDiskLosesNoProject)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "import", "x.csv", "-o", "/dev/full" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("Can't write /dev/full: No space left on device"));
}

TEST_F (ProgramTest, aBellInAListLosesNoDocument)
{
    write ("x.csv", "Start TC,Text,Character,Notes\n00:00:01:00,Hi\ayou,An\ana,n\ab\n");

    for (const auto* const name : { "x.docx", "x.ttal" })
    {
        const auto result = run ({ "convert", "x.csv", name });
        EXPECT_EQ (result.status, 0) << name << result.errors;
    }

    EXPECT_TRUE (nlohmann::json::accept (read ("x.ttal")));
    EXPECT_EQ (run ({ "rows", "x.docx" }).status, 0);
    EXPECT_EQ (run ({ "rows", "x.csv", "--json", "--rich" }).json()["rows"][1][2]["text"], "An\ana");
}

TEST_F (ProgramTest, withoutAnybodyToAskALossyTakerListIsNotWritten)
{
    std::string list = "Start TC,Cue Number,Text\n";

    for (int second = 10; second < 17; ++second)
        list += "00:00:" + std::to_string (second) + ":00,7,line\n";

    write ("x.csv", list);
    const auto refused = run ({ "export", "x.csv", "-o", ".", "--name", "taker", "--format", "ds-taker" });
    EXPECT_EQ (refused.status, 1);
    EXPECT_FALSE (file ("taker.csv").exists());
    EXPECT_EQ (
        run ({ "export", "x.csv", "-o", ".", "--name", "taker", "--format", "ds-taker", "--yes" }).status, 0);
    EXPECT_TRUE (file ("taker.csv").exists());
}

TEST_F (ProgramTest, convertWritesExactlyTheFileThatIsNamed)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "convert", "x.csv", "UP.CSV" }).status, 0);
    EXPECT_EQ (run ({ "convert", "x.csv", "out.txt", "--format", "csv" }).status, 0);
    EXPECT_EQ (run ({ "convert", "x.csv", "plain", "--format", "csv" }).status, 0);
    EXPECT_EQ (run ({ "convert", "x.csv", "~tilde", "--format", "json" }).status, 0);
    EXPECT_EQ (filesInFolder(),
               (std::vector<std::string> { "UP.CSV", "out.txt", "plain", "x.csv", "~tilde" }));
    EXPECT_EQ (read ("out.txt"), read ("UP.CSV"));
    EXPECT_EQ (read ("plain"), read ("UP.CSV"));
    EXPECT_THAT (read ("./~tilde"), HasSubstr ("\"overmarks\": 1"));
}

TEST_F (ProgramTest, convertByCharacterKeepsTheExtensionThatIsNamed)
{
    write ("x.csv", threeCues);
    const auto result =
        run ({ "convert", "x.csv", "out.txt", "--format", "csv", "--by-character", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"],
               (std::vector<std::string> { path ("out_ANNA.txt"), path ("out_TOM.txt") }));
    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "out_ANNA.txt", "out_TOM.txt", "x.csv" }));
}

TEST_F (ProgramTest, convertThroughALinkKeepsTheLink)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("folder").createDirectory().wasOk());
    write ("folder/real.csv", "old");
    ASSERT_TRUE (file ("folder/real.csv").createSymbolicLink (file ("link.csv"), true));
    EXPECT_EQ (run ({ "convert", "x.csv", "link.csv", "--force" }).status, 0);
    EXPECT_TRUE (file ("link.csv").isSymbolicLink());
    EXPECT_THAT (read ("folder/real.csv"), HasSubstr ("ANNA"));
    EXPECT_EQ (filesInFolder(),
               (std::vector<std::string> { "folder", "folder/real.csv", "link.csv", "x.csv" }));
}

TEST_F (ProgramTest, anUnknownExtensionNamesAllFormats)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (
        errorOf ({ "convert", "x.csv", "out.foo" }, 2),
        "\"foo\" is no format that can be written; there are csv, ds-taker, euro-taker, ttal, xlsx, docx, asc, arendis, pdf, html, overmarks, json.");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "out" }, 2),
               "out has no extension that tells its format; --format does");
    EXPECT_EQ (
        errorOf ({ "export", "x.csv", "-o", ".", "--format", "cvs" }, 2),
        "\"cvs\" is no format that can be written; there are csv, ds-taker, euro-taker, ttal, xlsx, docx, asc, arendis, pdf, html. "
        "Did you mean \"csv\"?");
}

TEST_F (ProgramTest, allDocumentsOfAnExportAreCheckedBeforeTheFirstIsWritten)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());
    write ("out/x - ds-taker.csv", "precious");
    EXPECT_EQ (errorOf ({ "export", "x.csv", "-o", "out", "--format", "csv,ds-taker" }, 1),
               path ("out/x - ds-taker.csv") + " exists already; --force replaces it");
    EXPECT_EQ (run ({ "export", "x.csv", "-o", "out", "--format", "csv,unknown" }).status, 2);
    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "out", "out/x - ds-taker.csv", "x.csv" }));
    EXPECT_EQ (read ("out/x - ds-taker.csv"), "precious");
    EXPECT_EQ (run ({ "export", "x.csv", "-o", "out", "--format", "csv,ds-taker", "--force" }).status, 0);
    EXPECT_EQ (filesInFolder(),
               (std::vector<std::string> { "out", "out/x - csv.csv", "out/x - ds-taker.csv", "x.csv" }));
}

TEST_F (ProgramTest, aDryRunFindsTheFolderThatIsMissing)
{
    write ("x.csv", threeCues);
    write ("file", "");
    EXPECT_EQ (errorOf ({ "export", "x.csv", "-o", "nowhere", "--format", "csv", "--dry-run" }, 1),
               "There is no folder " + path ("nowhere"));
    EXPECT_EQ (errorOf ({ "export", "x.csv", "-o", "file", "--format", "csv", "--dry-run" }, 1),
               path ("file") + " is no folder");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "nowhere/x.json", "--dry-run" }, 1),
               "There is no folder " + path ("nowhere"));
    EXPECT_EQ (errorOf ({ "import", "x.csv", "-o", "nowhere/x.json", "--dry-run" }, 1),
               "There is no folder " + path ("nowhere"));
}

TEST_F (ProgramTest, aFolderThatNobodyMayWriteToIsRefused)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("closed").createDirectory().wasOk());
    ASSERT_EQ (chmod (path ("closed").c_str(), 0555), 0);
    ProgramSurroundings surroundings;
    surroundings.permissionsHold = true;

    for (const auto* format : { "csv", "xlsx" })
    {
        const auto result =
            run ({ "export", "x.csv", "-o", "closed", "--format", format, "--dry-run", "--json" }, {},
                 surroundings);
        EXPECT_EQ (result.status, 1);
        EXPECT_EQ (result.json()["error"], "Can't write into " + path ("closed") + ": Permission denied");
    }

    chmod (path ("closed").c_str(), 0755);
}

TEST_F (ProgramTest, whatReplacesAPrivateFileIsAsPrivate)
{
    write ("x.csv", threeCues);

    for (const auto* name : { "old.csv", "old.xlsx", "old.json", "old.overmarks" })
    {
        write (name, "old");
        ASSERT_EQ (chmod (path (name).c_str(), 0600), 0);
        EXPECT_EQ (run ({ "convert", "x.csv", name, "--force" }).status, 0) << name;
        EXPECT_GT (file (name).getSize(), 3) << name;
        EXPECT_EQ (std::filesystem::status (path (name)).permissions(), std::filesystem::perms (0600))
            << name;
    }
}

TEST_F (ProgramTest, aDocumentBehindALinkToAnotherDiskIsWrittenThere)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());
    const auto elsewhere = juce::File ("/dev/shm").getNonexistentChildFile ("overmarks-test", ".ttal", false);
    std::filesystem::create_symlink (elsewhere.getFullPathName().toStdString(), path ("out/x.ttal"));
    const auto result = run ({ "export", "x.csv", "-o", "out", "--format", "csv,ttal" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_GT (elsewhere.getSize(), 0);
    EXPECT_TRUE (elsewhere.deleteFile());
}

TEST_F (ProgramTest, whatIsBroughtBackOnAnotherDiskIsAsPrivateAsBefore)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());
    const auto elsewhere = juce::File ("/dev/shm").getNonexistentChildFile ("overmarks-test", ".ttal", false);
    ASSERT_TRUE (elsewhere.replaceWithText ("secret"));
    ASSERT_EQ (chmod (elsewhere.getFullPathName().toRawUTF8(), 0600), 0);
    std::filesystem::create_symlink (elsewhere.getFullPathName().toStdString(), path ("out/x.ttal"));
    std::filesystem::create_symlink ("/proc/x.xlsx", path ("out/x.xlsx"));
    EXPECT_EQ (run ({ "export", "x.csv", "-o", "out", "--force", "--format", "ttal,xlsx" }).status, 1);
    EXPECT_EQ (elsewhere.loadFileAsString(), "secret");
    EXPECT_EQ (std::filesystem::status (elsewhere.getFullPathName().toStdString()).permissions(),
               std::filesystem::perms (0600));
    EXPECT_TRUE (elsewhere.deleteFile());
}

TEST_F (ProgramTest, aNameCannotLeaveTheFolder)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());

    for (const auto* name : { "../stolen", "a/b", "..", "/tmp/stolen" })
        EXPECT_EQ (
            errorOf ({ "export", "x.csv", "-o", "out", "--format", "csv", "--name", name }, 2),
            "--name: \"" + std::string (name)
                + "\" would leave the folder; a name holds no \"/\" and no \"..\", -o names the folder");

    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "out", "x.csv" }));
}

TEST_F (ProgramTest, aDryRunSaysSoInItsDocument)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const std::vector<std::vector<std::string>> runs {
        { "export", "x.csv", "-o", ".", "--name", "new", "--format", "csv" },
        { "convert", "x.csv", "new.csv" },
        { "convert", "x.csv", "new.json" },
        { "import", "x.csv", "-o", "new.json" },
        { "load", "film.json", "-o", "new.json" },
        { "set", "film.json", "-o", "film.json", "Done=yes" },
    };
    const auto film = read ("film.json");

    for (auto arguments : runs)
    {
        arguments.insert (arguments.end(), { "--json", "--dry-run" });
        const auto result = run (arguments);
        EXPECT_EQ (result.status, 0) << arguments.front();
        EXPECT_EQ (result.json().value ("dryRun", false), true) << arguments.front();
    }

    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "film.json", "x.csv" }));
    EXPECT_EQ (read ("film.json"), film);
    EXPECT_FALSE (run ({ "convert", "x.csv", "new.csv", "--json" }).json().contains ("dryRun"));
}

TEST_F (ProgramTest, anOptionThatADocumentDoesNotUseIsSaid)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "convert", "x.csv", "new.csv", "--studio", "North", "--paper", "a4",
                               "--layout", "actor", "--delimiter", "tab", "--combine" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("--studio makes no difference to csv\n"));
    EXPECT_THAT (result.errors, HasSubstr ("--paper makes no difference to csv\n"));
    EXPECT_THAT (result.errors, HasSubstr ("--layout makes no difference to csv\n"));
    EXPECT_THAT (result.errors, HasSubstr ("--combine makes no difference without --by-character\n"));
    EXPECT_THAT (result.errors, Not (HasSubstr ("--delimiter")));
    EXPECT_THAT (run ({ "convert", "x.csv", "new.json", "--by-character" }).errors,
                 HasSubstr ("--by-character makes no difference to json\n"));
}

TEST_F (ProgramTest, valuesThatNoDocumentKnowsAreWrongUsage)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "new.json", "--layout", "directr" }, 2),
               "--layout: \"directr\" is none of director, actor, engineer. Did you mean \"director\"?");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "new.json", "--paper", "a5" }, 2),
               "--paper: \"a5\" is none of a4, letter. Did you mean \"a4\"?");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "new.json", "--delimiter", "blank" }, 2),
               "--delimiter: \"blank\" is none of comma, semicolon, tab.");
    EXPECT_FALSE (file ("new.json").exists());
}

TEST_F (ProgramTest, anExportWithoutEventsWritesNothingByCharacter)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "export", "x.csv", "-o", ".", "--name", "new", "--format", "csv",
                               "--by-character", "--character", "NOBODY" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors,
                 HasSubstr ("Nothing to write: without an event there is no document for csv\n"));
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });
}

} // namespace
