// SPDX-License-Identifier: GPL-3.0-only
// The overview and drawn cue sheets through the program.
#include "overmarks/ProgramFixture.h"
#include "support/ReadPDF.h"

#include <gmock/gmock.h>

#include <thread>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace
{

using Names = std::vector<std::string>;
using ZEP::Overmarks::Testing::ReadPDF;

class OverviewTest : public ProgramTest
{
protected:
    OverviewTest() { write ("x.csv", threeCues); }
};

TEST_F (OverviewTest, theCastHasARowEach)
{
    const auto result = run ({ "overview", "x.csv", "-o", "sheet.pdf", "--paper", "a4", "--title", "Harbour",
                               "--studio", "Studio7", "--supervisor", "Doe", "--timeline", "Reel3" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.output, "");
    EXPECT_THAT (result.errors, EndsWith ("Wrote " + path ("sheet.pdf") + "\n"));
    const ReadPDF pdf (file ("sheet.pdf"));
    ASSERT_EQ (pdf.pages.size(), 1u);
    EXPECT_EQ (pdf.page().height, 842.0f);

    for (const auto* words :
         { "Harbour", "Studio7", "Doe", "Reel3", "x.csv", "ANNA", "TOM", "Total", "Page 1 of 1" })
        EXPECT_THAT (pdf.page().text, HasSubstr (words));

    EXPECT_NEAR (pdf.page().word ("2").bottom, pdf.page().word ("ANNA").bottom, 0.5) << "two lines of hers";
    EXPECT_EQ (filesInFolder(), (Names { "sheet.pdf", "x.csv" }));
}

TEST_F (OverviewTest, thePaperCanBeLetter)
{
    EXPECT_EQ (run ({ "overview", "x.csv", "-o", "sheet.pdf", "--paper", "letter" }).status, 0);
    EXPECT_EQ (ReadPDF (file ("sheet.pdf")).page().height, 792.0f);
    EXPECT_THAT (errorOf ({ "overview", "x.csv", "-o", "y.pdf", "--paper", "a5" }, 2),
                 HasSubstr ("a4, letter"));
}

TEST_F (OverviewTest, theResultIsOneDocumentOfJSON)
{
    const auto json = run ({ "overview", "x.csv", "-o", "sheet.pdf", "--json" }).json();
    EXPECT_EQ (json["files"], Names { path ("sheet.pdf") });
    EXPECT_TRUE (json["problems"].empty());
    const auto dry =
        run ({ "overview", "x.csv", "-o", "sheet.pdf", "--json", "--force", "--dry-run" }).json();
    EXPECT_EQ (dry["dryRun"], true);
}

TEST_F (OverviewTest, nothingIsReplacedUnasked)
{
    write ("sheet.pdf", "precious");
    EXPECT_THAT (errorOf ({ "overview", "x.csv", "-o", "sheet.pdf" }, 1), HasSubstr ("--force"));
    EXPECT_EQ (read ("sheet.pdf"), "precious");
    EXPECT_EQ (errorOf ({ "overview", "x.csv", "-o", "x.csv", "--force" }, 1), "x.csv is the list itself");
    EXPECT_EQ (read ("x.csv"), threeCues);
    EXPECT_EQ (run ({ "overview", "x.csv", "-o", "sheet.pdf", "--force" }).status, 0);
    EXPECT_EQ (read ("sheet.pdf").substr (0, 5), "%PDF-");
}

TEST_F (OverviewTest, aDryRunWritesNothing)
{
    const auto result = run ({ "overview", "x.csv", "-o", "sheet.pdf", "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, EndsWith ("Would write " + path ("sheet.pdf") + "\n"));
    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
}

TEST_F (OverviewTest, standardOutputIsNoSheet)
{
    EXPECT_EQ (errorOf ({ "overview", "x.csv", "-o", "-" }, 2), "overview writes a file; -o names it");
}

TEST_F (OverviewTest, aFullDiskIsTold)
{
    ProgramSurroundings full;
    full.largestFile = 1024;
    const auto result = run ({ "overview", "x.csv", "-o", "sheet.pdf", "--json" }, {}, full);
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "Can't write " + path ("sheet.pdf") + ": File too large");
    EXPECT_THAT (run ({ "overview", "x.csv", "-o", "sheet.pdf" }, {}, full).errors,
                 EndsWith ("overmarks: Can't write " + path ("sheet.pdf") + ": File too large\n"));
    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
}

TEST_F (OverviewTest, aMissingFolderIsTold)
{
    EXPECT_EQ (run ({ "overview", "x.csv", "-o", "nowhere/sheet.pdf" }).status, 1);
}

TEST_F (OverviewTest, charactersThatFindNoPlaceAreAProblem)
{
    std::string list = "Start TC,Character,Text\n";

    for (int i = 10; i < 70; ++i)
        list += "00:00:" + std::to_string (10 + i % 50) + ":00,C" + std::to_string (i) + ",x\n";

    write ("many.csv", list);
    const auto result = run ({ "overview", "many.csv", "-o", "sheet.pdf", "--paper", "a4", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["problems"][0]["message"],
               "1 character at the end of the cast found no place on the sheet");
    EXPECT_EQ (ReadPDF (file ("sheet.pdf")).pages.size(), 2u);
}

/** The system's viewer is a script that notes that it was called. */
class ViewerTest : public OverviewTest
{
protected:
    ViewerTest()
    {
        file ("bin").createDirectory();
        write ("bin/xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" > " + path ("tmp") + " && mv " + path ("tmp")
                                   + " " + path ("shown") + "\n");
        file ("bin/xdg-open").setExecutePermission (true);
        ::setenv ("PATH", (path ("bin") + ":" + before).c_str(), 1);
    }

    ~ViewerTest() override { ::setenv ("PATH", before.c_str(), 1); }

    const std::string before = std::getenv ("PATH");
};

TEST_F (ViewerTest, theSheetIsShownWhenAsked)
{
    EXPECT_EQ (run ({ "overview", "x.csv", "-o", "sheet.pdf", "--open" }).status, 0);

    for (int i = 0; i < 500 && ! file ("shown").existsAsFile(); ++i)
        std::this_thread::sleep_for (std::chrono::milliseconds (10));

    EXPECT_EQ (read ("shown"), path ("sheet.pdf"));
}

TEST_F (ViewerTest, theSheetIsNotShownUnasked)
{
    EXPECT_EQ (run ({ "overview", "x.csv", "-o", "sheet.pdf" }).status, 0);
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    EXPECT_FALSE (file ("shown").exists());
}

// ---- drawn cue sheets ----------------------------------------------------------------------------------------------------

TEST_F (OverviewTest, aCueSheetIsDrawnWithoutABrowser)
{
    const auto result =
        run ({ "export", "x.csv", "-o", ".", "--format", "pdf", "--engine", "drawn", "--layout", "actor",
               "--paper", "letter", "--take-numbers", "--title", "Harbour", "--json" });
    EXPECT_EQ (result.status, 0) << result.output;
    EXPECT_EQ (result.json()["files"], Names { path ("x.pdf") });
    const ReadPDF pdf (file ("x.pdf"));
    EXPECT_EQ (pdf.page().height, 792.0f);
    EXPECT_THAT (pdf.page().text, HasSubstr ("Actor Layout"));
    EXPECT_THAT (pdf.page().text, HasSubstr ("Hello?"));
    EXPECT_EQ (pdf.page().count ("24"), 3);
}

TEST_F (OverviewTest, drawnSheetsByCharacterAreAFileEachOrOne)
{
    const std::vector<std::string> drawn { "export",   "x.csv",    "-o",
                                           ".",        "--format", "pdf",
                                           "--engine", "drawn",    "--by-character" };
    EXPECT_EQ (run (drawn).status, 0);
    EXPECT_EQ (filesInFolder(), (Names { "x.csv", "x_ANNA.pdf", "x_TOM.pdf" }));
    auto combined = drawn;
    combined.emplace_back ("--combine");
    EXPECT_EQ (run (combined).status, 0);
    EXPECT_EQ (ReadPDF (file ("x.pdf")).pages.size(), 2u);
}

TEST_F (OverviewTest, convertDrawsToo)
{
    EXPECT_EQ (run ({ "convert", "x.csv", "y.pdf", "--engine", "drawn" }).status, 0);
    EXPECT_EQ (ReadPDF (file ("y.pdf")).pages.size(), 1u);
}

TEST_F (OverviewTest, anUnknownEngineIsWrongUsage)
{
    EXPECT_THAT (errorOf ({ "export", "x.csv", "-o", ".", "--format", "pdf", "--engine", "steam" }, 2),
                 HasSubstr ("browser, drawn"));
}

TEST_F (OverviewTest, aDrawnSheetThatDoesNotFitTheDiskLeavesTheOldOne)
{
    write ("x.pdf", "precious");
    ProgramSurroundings full;
    full.largestFile = 1024;
    const auto result =
        run ({ "export", "x.csv", "-o", ".", "--format", "pdf", "--engine", "drawn", "--force", "--json" },
             {}, full);
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "Error writing file to " + path ("x.pdf") + ": File too large");
    EXPECT_THAT (result.errors, Not (HasSubstr (".overmarks."))) << "a folder that the user knows nothing of";
    EXPECT_EQ (read ("x.pdf"), "precious");
}

TEST_F (OverviewTest, timesAreWholeOnAMachineWithWideLetters)
{
    const std::string wide = "/usr/share/fonts/truetype/dejavu";
    ASSERT_TRUE (juce::File (wide + "/DejaVuSans-Bold.ttf").existsAsFile()) << "fonts-dejavu-core is missing";
    write ("fonts.conf", "<?xml version=\"1.0\"?><fontconfig><dir>" + wide + "</dir></fontconfig>");
    ::setenv ("FONTCONFIG_FILE", path ("fonts.conf").c_str(), 1);
    const auto status = run ({ "convert", "x.csv", "y.pdf", "--engine", "drawn", "--paper", "a4" }).status;
    ::unsetenv ("FONTCONFIG_FILE");
    ASSERT_EQ (status, 0);
    const auto page = ReadPDF (file ("y.pdf")).page();

    for (const auto* time : { "01:00:02:00", "01:00:04:00", "01:00:05:12" })
    {
        const auto word = page.word (time);
        EXPECT_NEAR (word.x, 30 + 420 + 23, 0.5) << time;
        EXPECT_LE (word.right, 30 + 420 + 23 + 55.5f) << time;
        EXPECT_GT (word.right, 30 + 420 + 23 + 50) << time;
        EXPECT_LT (word.top - word.bottom, 10) << "letters of ten points would end in a sign";
    }
}

TEST_F (OverviewTest, aSheetOfAnotherExtensionIsWrongUsage)
{
    for (const auto* name : { "o.txt", "o", "o.pdf.html" })
        EXPECT_EQ (errorOf ({ "overview", "x.csv", "-o", name }, 2),
                   "-o: the sheet is a PDF, and the name \"" + std::string (name) + "\" doesn't end in .pdf");

    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
    EXPECT_EQ (run ({ "overview", "x.csv", "-o", "O.PDF" }).status, 0);
}

} // namespace
