// SPDX-License-Identifier: GPL-3.0-only
// One file under several names: whatever a command is told to write, the list that it reads isn't replaced.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace
{

class ProgramSameFile : public ProgramTest
{
protected:
    ProgramSameFile() { write ("film.csv", threeCues); }

    /** Makes "a" and "b" with this extension: one link leads to the next, and that to the file. */
    void writeChain (const std::string& extension, const std::string& target) const
    {
        ASSERT_EQ (::symlink (target.c_str(), path ("b" + extension).c_str()), 0);
        ASSERT_EQ (::symlink (("b" + extension).c_str(), path ("a" + extension).c_str()), 0);
    }
};

TEST_F (ProgramSameFile, aChainOfLinksIsTheListForConvert)
{
    writeChain (".json", "film.csv");
    EXPECT_EQ (errorOf ({ "convert", "film.csv", "a.json", "--force" }, 1), "a.json is the list itself");
    EXPECT_EQ (read ("film.csv"), threeCues);
}

TEST_F (ProgramSameFile, aChainOfLinksIsTheListForOverview)
{
    writeChain (".pdf", "film.csv");
    EXPECT_EQ (errorOf ({ "overview", "film.csv", "-o", "a.pdf", "--force" }, 1), "a.pdf is the list itself");
    EXPECT_EQ (read ("film.csv"), threeCues);
}

TEST_F (ProgramSameFile, aChainOfLinksIsTheListForExport)
{
    writeChain (".asc", "film.csv");
    EXPECT_EQ (errorOf ({ "export", "film.csv", "-o", ".", "--name", "a", "--format", "asc", "--force" }, 1),
               path ("a.asc") + ": the document would replace the list that it is made from");
    EXPECT_EQ (read ("film.csv"), threeCues);
}

TEST_F (ProgramSameFile, aChainOfLinksIsTheListForReports)
{
    writeChain (".html", "film.csv");
    EXPECT_EQ (errorOf ({ "check", "film.csv", "--html", "a.html", "--force" }, 1),
               "a.html is the list itself");
    EXPECT_EQ (read ("film.csv"), threeCues);
}

TEST_F (ProgramSameFile, aChainOfLinksIsTheListForAProject)
{
    writeChain (".overmarks", "film.csv");
    EXPECT_EQ (errorOf ({ "import", "film.csv", "-o", "a.overmarks", "--force" }, 1),
               "a.overmarks: the project would replace the list that it is made from");
    EXPECT_EQ (read ("film.csv"), threeCues);
}

TEST_F (ProgramSameFile, twoReportsMayNotMeetBehindLinks)
{
    writeChain (".html", "report");
    ASSERT_EQ (::symlink ("report", path ("c.csv").c_str()), 0);
    EXPECT_EQ (errorOf ({ "check", "film.csv", "--html", "a.html", "--csv", "c.csv" }, 2),
               "--html and --csv name the same file");
    EXPECT_FALSE (file ("report").exists());
}

TEST_F (ProgramSameFile, twoReportsMayNotMeetInAFolderOfTwoNames)
{
    ASSERT_EQ (::symlink (".", path ("alias").c_str()), 0);
    EXPECT_EQ (errorOf ({ "check", "film.csv", "--html", "report", "--csv", "alias/report" }, 2),
               "--html and --csv name the same file");
}

TEST_F (ProgramSameFile, aFolderUnderAnotherNameHoldsTheListToo)
{
    ASSERT_EQ (::symlink (".", path ("alias").c_str()), 0);
    EXPECT_EQ (errorOf ({ "export", "film.csv", "-o", "alias", "--format", "csv", "--force" }, 1),
               path ("alias/film.csv") + ": the document would replace the list that it is made from");
    EXPECT_EQ (errorOf ({ "convert", "film.csv", "alias/film.csv", "--force" }, 1),
               "alias/film.csv is the list itself");
    EXPECT_EQ (read ("film.csv"), threeCues);
}

TEST_F (ProgramSameFile, anotherNameOfTheFileItselfIsTheListToo)
{
    ASSERT_EQ (::link (path ("film.csv").c_str(), path ("hard.csv").c_str()), 0);
    EXPECT_EQ (errorOf ({ "convert", "film.csv", "hard.csv", "--force" }, 1), "hard.csv is the list itself");
    EXPECT_EQ (read ("hard.csv"), threeCues);
}

TEST_F (ProgramSameFile, theProjectThatIsEditedIsKnownByItsOtherNames)
{
    ASSERT_EQ (run ({ "import", "film.csv", "-o", "film.json" }).status, 0);
    writeChain (".json", "film.json");
    EXPECT_EQ (run ({ "set", "film.json", "-o", "a.json", "Done=yes" }).status, 0);
    EXPECT_THAT (read ("film.json"), testing::HasSubstr ("\"done\""));
    EXPECT_TRUE (file ("a.json").isSymbolicLink());
}

TEST_F (ProgramSameFile, aCueListThatIsReadIsNoProjectThatIsEdited)
{
    writeChain (".overmarks", "film.csv");
    ASSERT_EQ (::link (path ("film.csv").c_str(), path ("c.overmarks").c_str()), 0);

    for (const std::string project : { "a.overmarks", "c.overmarks" })
        EXPECT_EQ (errorOf ({ "set", "film.csv", "-o", project, "--force", "Done=yes" }, 1),
                   project + ": the project would replace the list that it is made from");

    EXPECT_EQ (read ("film.csv"), threeCues);
    EXPECT_EQ (read ("c.overmarks"), threeCues);
}

TEST_F (ProgramSameFile, anotherListOfTheSameContentIsReplaced)
{
    write ("other.csv", threeCues);
    EXPECT_EQ (run ({ "convert", "film.csv", "other.csv", "--force" }).status, 0);
    EXPECT_NE (read ("other.csv"), threeCues);
    EXPECT_EQ (read ("film.csv"), threeCues);
}

} // namespace
