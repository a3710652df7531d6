// SPDX-License-Identifier: GPL-3.0-only
// The overview sheet, read back; its numbers are in ADROverviewDataSetsTest.cpp.
#include "export/ADROverviewPDFExporter.h"

#include "core/system/SystemUtility.h"
#include "support/CollectedLog.h"
#include "support/ReadPDF.h"
#include "support/TemporaryFolder.h"

#include <cmath>
#include <cstdlib>
#include <gmock/gmock.h>
#include <limits>
#include <regex>
#include <thread>

namespace
{

using namespace ZEP::Overmarks::Testing;
using testing::HasSubstr;
using ZEP::Core::PaperSize;
using ZEP::Core::PDFDocument;
using ZEP::Orvelle::ADROverviewPDFExporter;

using DataSets = std::vector<ADROverviewDataSet>;

const juce::Colour black { 0xff000000 };
const juce::Colour white { 0xffffffff };

juce::Colour grey (float brightness)
{
    return juce::Colour::fromFloatRGBA (brightness, brightness, brightness, 1);
}

const juce::Colour lineGrey = grey (0.59f);
const juce::Colour barBlue = juce::Colour::fromFloatRGBA (0, 0.58f, 1, 1);

constexpr float pageWidth = 595, pageHeight = 842, margin = 40, tableWidth = 515;

/** Characters "C1", "C2", ... with as many lines as their number tells. */
DataSets characters (int count)
{
    DataSets sets;

    for (int i = 1; i <= count; ++i)
        sets.push_back (
            { "C" + juce::String (i), "Actor" + juce::String (i), "P" + juce::String (i), i, 1, 0.5f });

    return sets;
}

class ADROverviewTest : public testing::Test
{
protected:
    ADROverviewTest()
    {
        exporter.openFile = [this] (const juce::File& file) { opened.push_back (file); };
    }

    ReadPDF exported (const DataSets& sets)
    {
        exporter.exportPDF (sets, "Harbour", "/films/harbour.overmarks", "Reel3", "Doe", "Studio7");
        return ReadPDF (folder.file ("sheet.pdf"));
    }

    float baselineOf (const PDFPage::Word& word, PDFDocument::FontType font, float size) const
    {
        exporter.document->setFont (font, size);
        return word.bottom + exporter.document->getCurrentFontDescent();
    }

    void expectText (const PDFPage& page, const std::string& word, float x, float baseline,
                     PDFDocument::FontType font, float size) const
    {
        EXPECT_NEAR (page.word (word).x, x, 0.5) << word;
        EXPECT_NEAR (baselineOf (page.word (word), font, size), baseline, 0.5) << word;
    }

    /** On the left of a cell, in the middle of its height. */
    static void expectCell (const PDFPage& page, const std::string& word, float x, float y, float height)
    {
        const auto found = page.word (word);
        EXPECT_NEAR (found.x, x + 5, 0.3) << word;
        EXPECT_NEAR ((found.bottom + found.top) / 2, y + height / 2, 0.3) << word;
    }

    static int rowsOn (const PDFPage& page)
    {
        static const std::regex character ("C\\d+");
        return static_cast<int> (std::count_if (page.words.begin(), page.words.end(),
                                                [] (const auto& word)
                                                { return std::regex_match (word.text, character); }));
    }

    TemporaryFolder folder;
    ADROverviewPDFExporter exporter { folder.file ("sheet.pdf").getFullPathName(), PaperSize::a4() };
    std::vector<juce::File> opened;
};

// ---- fields --------------------------------------------------------------------------------------------------------------

TEST_F (ADROverviewTest, theFieldsOfANewOne)
{
    EXPECT_EQ (exporter.filePath, folder.file ("sheet.pdf").getFullPathName());
    EXPECT_NE (exporter.document, nullptr);
    EXPECT_EQ (exporter.appVersion, ZEP::Core::SystemUtility::executableVersion());
    EXPECT_EQ (exporter.currentPage, 0);
    EXPECT_EQ (exporter.numPages, 0);
    EXPECT_EQ (exporter.lineColour, lineGrey);
    EXPECT_EQ (exporter.headerColour, grey (0.47f));
    EXPECT_TRUE (exporter.appIcon.isNull());
    EXPECT_EQ (exporter.firstPageHeaderHeight, 160);
    EXPECT_EQ (exporter.smallPageHeaderHeight, 40);
    EXPECT_EQ (exporter.footerHeight, 50);
    EXPECT_EQ (exporter.pageMargin, 40);
    EXPECT_EQ (exporter.tableHeaderHeight, 24);
    EXPECT_EQ (exporter.tableFooterHeight, 24);
    EXPECT_EQ (exporter.rowHeight, 21);
    EXPECT_EQ (exporter.headerSpacing, 20);
    EXPECT_THAT (exporter.columnWidths, testing::ElementsAre (0.25f, 0.25f, 0.1f, 0.08f, 0.08f, 0.24f));
    EXPECT_EQ (exporter.appIconIdentifier, "AppIconID");
}

TEST_F (ADROverviewTest, theTextsOfTheExportAreKept)
{
    exported (characters (2));
    EXPECT_EQ (exporter.title, "Harbour");
    EXPECT_EQ (exporter.projectFile, "/films/harbour.overmarks");
    EXPECT_EQ (exporter.timeline, "Reel3");
    EXPECT_EQ (exporter.soundSupervisor, "Doe");
    EXPECT_EQ (exporter.studio, "Studio7");
    EXPECT_EQ (exporter.dataSets.size(), 2u);
}

// ---- the head of the first page ------------------------------------------------------------------------------------------

TEST_F (ADROverviewTest, theFirstPageTellsTitleProjectAndPeople)
{
    const auto page = exported (characters (1)).page();
    constexpr auto bold = PDFDocument::FontTypeBold, regular = PDFDocument::FontTypeRegular;
    EXPECT_NEAR (page.word ("Harbour").x, margin, 0.5);
    EXPECT_NEAR (page.word ("Harbour").bottom, pageHeight - 60, 0.5);
    EXPECT_NEAR (page.word ("Harbour").top - page.word ("Harbour").bottom, 32 * 1.1, 2);
    expectText (page, "Project", margin, pageHeight - 90, bold, 12);
    expectText (page, "Timeline", margin, pageHeight - 117, bold, 12);
    expectText (page, "Sound", margin, pageHeight - 142, bold, 12);
    expectText (page, "Studio", 340, pageHeight - 142, bold, 12);
    exporter.document->setFont (regular, 12);

    for (const auto& [word, x, bottom] :
         std::vector<std::tuple<std::string, float, float>> { { "/films/harbour.overmarks", 168, 90 },
                                                              { "Reel3", 168, 117 },
                                                              { "Doe", 168, 142 },
                                                              { "Studio7", 394, 142 } })
    {
        EXPECT_NEAR (page.word (word).x, x, 0.5) << word;
        EXPECT_NEAR (page.word (word).bottom, pageHeight - bottom, 0.5) << word;
    }
}

TEST_F (ADROverviewTest, theTextsOfTheHeadStandOnBlue)
{
    const auto page = exported (characters (1)).page();
    const auto blue = juce::Colour::fromFloatRGBA (0.925f, 0.957f, 1, 1);
    exporter.document->setFont (PDFDocument::FontTypeBold, 12);
    const auto d = exporter.document->getCurrentFontDescent();
    EXPECT_TRUE (page.hasFill ({ 162, pageHeight - 94 - d, pageWidth - 162 - margin, 22 }, blue));
    EXPECT_TRUE (page.hasFill ({ 162, pageHeight - 120 - d, pageWidth - 162 - margin, 22 }, blue));
    EXPECT_TRUE (page.hasFill ({ 162, pageHeight - 146 - d, 170, 22 }, blue));
    EXPECT_TRUE (page.hasFill ({ 388, pageHeight - 146 - d, pageWidth - 388 - margin, 22 }, blue));
}

TEST_F (ADROverviewTest, everyTextOfTheHeadEndsAtTheMargin)
{
    const auto longText = juce::String::repeatedString ("l", 300);
    exporter.exportPDF ({}, {}, longText, longText, longText, {});
    const auto page = ReadPDF (folder.file ("sheet.pdf")).page();
    int count = 0;

    for (const auto& word : page.words)
    {
        if (word.text.front() != 'l')
            continue;

        ++count;
        EXPECT_NEAR (word.x, 168, 0.5);
        EXPECT_LE (word.right, pageWidth - margin + 0.5f);
        EXPECT_GT (word.right, pageWidth - margin - 12);
    }

    EXPECT_EQ (count, 3);
}

TEST_F (ADROverviewTest, aLongStudioAndTheTitleOfALaterPageEndAtTheMarginToo)
{
    const auto longText = juce::String::repeatedString ("l", 300);
    exporter.exportPDF (characters (60), longText, {}, {}, {}, longText);
    const ReadPDF pdf (folder.file ("sheet.pdf"));
    const auto longTexts = [&pdf] (std::size_t page)
    {
        auto words = pdf.page (page).words;
        std::erase_if (words, [] (const auto& word) { return ! word.text.starts_with ("lll"); });
        return words;
    };

    ASSERT_EQ (longTexts (0).size(), 2u); // title and studio
    ASSERT_EQ (longTexts (1).size(), 1u);
    for (const auto& word : { longTexts (0).front(), longTexts (0).back(), longTexts (1).front() })
    {
        EXPECT_LE (word.right, pageWidth - margin + 0.5f);
        EXPECT_GT (word.right, pageWidth - margin - 12);
    }
    EXPECT_NEAR (std::max (longTexts (0).front().x, longTexts (0).back().x), 394, 0.5);
    EXPECT_NEAR (longTexts (1).front().x, margin, 0.5);
}

TEST_F (ADROverviewTest, theTitleIsTheDocumentsOwn) { EXPECT_EQ (exported ({}).title(), "Harbour"); }

// ---- the table -----------------------------------------------------------------------------------------------------------

TEST_F (ADROverviewTest, theTableHasAHeading)
{
    const auto page = exported (characters (1)).page();
    const float y = pageHeight - (20 + 160 + 24);
    EXPECT_TRUE (page.hasFill ({ margin, y, tableWidth, 24 }, grey (0.47f)));
    EXPECT_TRUE (page.hasOutline ({ margin, y, tableWidth, 24 }, 1, lineGrey));
    EXPECT_THAT (page.textColours, testing::Contains (white).Times (testing::Ge (1)));
    float x = margin;
    const std::vector<std::pair<std::string, float>> columns {
        { "Character", 0.25f }, { "Actor", 0.25f }, { "Prefix", 0.1f },
        { "Lines", 0.08f },     { "Cues", 0.08f },  { "Progress", 0.24f }
    };

    for (const auto& [title, share] : columns)
    {
        expectCell (page, title, x, y, 24);
        EXPECT_EQ (page.hasLine (x, y, x, y + 24, 1, lineGrey), x > margin) << title;
        x += share * tableWidth;
    }
}

TEST_F (ADROverviewTest, aRowTellsTheNumbersOfACharacter)
{
    const auto page = exported ({ { "ANNA", "Miller", "AN", 17, 12, 0.25f } }).page();
    const float y = pageHeight - (20 + 160 + 24 + 21);
    const float columns[] = { margin,       margin + 128.75f, margin + 257.5f,
                              margin + 309, margin + 350.2f,  margin + 391.4f };
    expectCell (page, "ANNA", columns[0], y, 21);
    expectCell (page, "Miller", columns[1], y, 21);
    expectCell (page, "AN", columns[2], y, 21);
    expectCell (page, "17", columns[3], y, 21);
    expectCell (page, "12", columns[4], y, 21);

    for (const auto x : columns)
        EXPECT_TRUE (page.hasLine (x, y, x, y + 21, 1, x < columns[5] ? lineGrey : white)) << x;
}

TEST_F (ADROverviewTest, whatFollowsTheBarOfARowIsDrawnInItsWhite)
{
    const auto page = exported ({ { "ANNA", "Miller", "AN", 17, 12, 0.25f } }).page();
    const float y = pageHeight - (20 + 160 + 24 + 21);
    EXPECT_TRUE (page.hasLine (margin + 391.4f, y, margin + 391.4f, y + 21, 1, white));
    EXPECT_TRUE (page.hasLine (pageWidth - margin, y, pageWidth - margin, y + 21, 1, white));
    EXPECT_TRUE (page.hasLine (margin, y, pageWidth - margin, y, 1, white));
}

/** The bar of a progress that begins at x. */
struct Bar
{
    Bar (float x, float y, float width)
        : start (x + 7 + 3.5f),
          end (x + 7 - 3.5f + width * 0.75f - 14),
          middle (y + 7 + 3.5f)
    {
    }
    float start, end, middle;
};

TEST_F (ADROverviewTest, theBarOfARowShowsWholePercents)
{
    const auto page = exported ({ { "ANNA", "Miller", "AN", 3, 2, 0.666f } }).page();
    const float y = pageHeight - 225, x = margin + 0.76f * tableWidth, width = 0.24f * tableWidth;
    const Bar bar (x, y, width);
    EXPECT_TRUE (page.hasLine (bar.start, bar.middle, bar.end, bar.middle, 7, grey (0.93f)));
    EXPECT_TRUE (page.hasLine (bar.start, bar.middle, bar.start + (bar.end - bar.start) * 0.66f, bar.middle,
                               7, barBlue));

    for (const auto& line : page.lines)
    {
        EXPECT_EQ (line.isRound, line.width > 5);
    }

    expectCell (page, "66", x + width * 0.75f - 5, y, 21);
    EXPECT_EQ (page.count ("%"), 2);
}

TEST_F (ADROverviewTest, theMeanOfTheTotalIsNotCutFirst)
{
    const auto page = exported ({ { "ANNA", {}, {}, 3, 2, 0.666f }, { "TOM", {}, {}, 3, 2, 0.666f } }).page();
    const float y = pageHeight - 225 - 21 - 24, x = margin + 0.76f * tableWidth, width = 0.24f * tableWidth;
    const Bar bar (x, y, width);
    EXPECT_TRUE (page.hasLine (bar.start, bar.middle, bar.start + (bar.end - bar.start) * 0.666f, bar.middle,
                               7, barBlue));
    expectCell (page, "67", x + width * 0.75f - 5, y, 24);
    EXPECT_EQ (page.count ("66"), 2);
}

TEST_F (ADROverviewTest, theTotalStandsRightUnderTheLastRow)
{
    const auto page = exported (characters (3)).page();
    const float lastRow = pageHeight - 225 - 42, y = lastRow - 24;
    EXPECT_TRUE (page.hasFill ({ margin, y, tableWidth, 24 }, grey (0.81f)));
    EXPECT_TRUE (page.hasOutline ({ margin, y, tableWidth, 24 }, 1, lineGrey));
    expectCell (page, "Total", margin, y, 24);
    const float x1 = margin + 309, x2 = x1 + 41.2f, x3 = x2 + 41.2f;
    expectCell (page, "6", x1, y, 24);

    for (const auto x : { x1, x2, x3 })
        EXPECT_TRUE (page.hasLine (x, y, x, y + 24, 1, lineGrey)) << x;
}

TEST_F (ADROverviewTest, theTotalTakesTheWidthsOfItsNumbersCrosswise)
{
    exporter.columnWidths[3] = 0.05f;
    exporter.columnWidths[4] = 0.11f;
    const auto page = exported (characters (3)).page();
    const float y = pageHeight - 225 - 42 - 24;
    const float x1 = margin + 0.6f * tableWidth, x2 = x1 + 0.11f * tableWidth, x3 = x2 + 0.05f * tableWidth;
    expectCell (page, "6", x1, y, 24);

    for (const auto x : { x1, x2, x3 })
        EXPECT_TRUE (page.hasLine (x, y, x, y + 24, 1, lineGrey)) << x;
}

TEST_F (ADROverviewTest, withoutCharactersThereIsATotalOfNothing)
{
    const auto pdf = exported ({});
    ASSERT_EQ (pdf.pages.size(), 1u);
    const auto& page = pdf.page();
    const float y = pageHeight - 204 - 24;
    EXPECT_EQ (page.count ("Character"), 1);
    EXPECT_EQ (page.count ("0"), 2);
    expectCell (page, "Total", margin, y, 24);
    EXPECT_TRUE (page.hasFill ({ margin, y, tableWidth, 24 }, grey (0.81f)));
    EXPECT_THAT (page.text, HasSubstr ("nan %"));
    EXPECT_TRUE (std::none_of (page.lines.begin(), page.lines.end(),
                               [] (const PDFPage::Line& line) { return line.colour == barBlue; }));
    EXPECT_THAT (page.text, HasSubstr ("Page 1 of 1"));
}

TEST_F (ADROverviewTest, sharesThatCannotBeHarmNothing)
{
    DataSets sets;

    for (const auto ratio : { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                              -3.0e38f, 1.0e30f })
        sets.push_back ({ "ODD", {}, {}, 1, 1, ratio });

    EXPECT_EQ (exported (sets).page().count ("ODD"), 4);
}

TEST_F (ADROverviewTest, numbersThatTogetherAreTooManyForAnIntAreAdded)
{
    const auto most = std::numeric_limits<int>::max();
    const auto page = exported ({ { "A", {}, {}, most, 1, 1 }, { "B", {}, {}, most, 1, 1 } }).page();
    EXPECT_THAT (page.text, HasSubstr ("429496")); // the cell is narrow
}

// ---- pages ---------------------------------------------------------------------------------------------------------------

TEST_F (ADROverviewTest, sixtyCharactersAreTwoPagesAndOneTooFew)
{
    const auto pdf = exported (characters (60));
    ASSERT_EQ (pdf.pages.size(), 2u);
    EXPECT_EQ (rowsOn (pdf.page (0)), 27);
    EXPECT_EQ (rowsOn (pdf.page (1)), 32);
    EXPECT_EQ (pdf.page (1).count ("C59"), 1);
    EXPECT_EQ (pdf.page (1).count ("C60"), 0);
    EXPECT_EQ (exporter.rowsLeftOut(), 1);
    EXPECT_EQ (exporter.numPages, 2);
    EXPECT_EQ (exporter.currentPage, 1);
    EXPECT_THAT (pdf.page (1).text, HasSubstr ("1830")); // all lines, those of the sixtieth too
}

TEST_F (ADROverviewTest, thirtyTwoRowsEndRightAboveTheTotal)
{
    const auto pdf = exported (characters (59));
    EXPECT_EQ (exporter.rowsLeftOut(), 0);
    const float lastRow = pageHeight - (20 + 40 + 24 + 21) - 31 * 21;
    expectCell (pdf.page (1), "C59", margin, lastRow, 21);
    expectCell (pdf.page (1), "Total", margin, lastRow - 24, 24);
}

struct Count
{
    int characters;
    int pages;
};

class PagesOfOverview : public ADROverviewTest, public testing::WithParamInterface<Count>
{
};

TEST_P (PagesOfOverview, areFoundFromTheHeightOfAllRows)
{
    EXPECT_EQ (exported (characters (GetParam().characters)).pages.size(),
               static_cast<std::size_t> (GetParam().pages));
}

// 592 points for the first page's table with its total, 736 more for each further one.
INSTANTIATE_TEST_SUITE_P (ADROverview, PagesOfOverview,
                          testing::Values (Count { 0, 1 }, Count { 25, 1 }, Count { 26, 2 }, Count { 60, 2 },
                                           Count { 61, 3 }, Count { 96, 3 }, Count { 97, 4 }));

class TotalOfOverview : public ADROverviewTest, public testing::WithParamInterface<int>
{
};

TEST_P (TotalOfOverview, standsAloneOnASecondPageWhereItFindsNoRoom)
{
    const auto pdf = exported (characters (GetParam()));
    ASSERT_EQ (pdf.pages.size(), 2u);
    EXPECT_EQ (rowsOn (pdf.page (0)), GetParam());
    EXPECT_EQ (pdf.page (0).count ("Total"), 0);
    EXPECT_EQ (rowsOn (pdf.page (1)), 0);
    expectCell (pdf.page (1), "Character", margin, pageHeight - 84, 24);
    expectCell (pdf.page (1), "Total", margin, pageHeight - 84 - 24, 24);
    EXPECT_EQ (exporter.rowsLeftOut(), 0);
}

INSTANTIATE_TEST_SUITE_P (ADROverview, TotalOfOverview, testing::Values (26, 27));

TEST_F (ADROverviewTest, aListJustTooLongGoesOnOnASecondPage)
{
    const auto pdf = exported (characters (28));
    ASSERT_EQ (pdf.pages.size(), 2u);
    const auto& page = pdf.page (1);
    EXPECT_NEAR (page.word ("Harbour").x, margin, 0.5);
    EXPECT_NEAR (page.word ("Harbour").bottom, pageHeight - 40, 0.5);
    EXPECT_NEAR (page.word ("Harbour").top - page.word ("Harbour").bottom, 16 * 1.1, 1);
    EXPECT_EQ (page.count ("Timeline"), 0);
    EXPECT_TRUE (page.hasFill ({ margin, pageHeight - 84, tableWidth, 24 }, grey (0.47f)));
    expectCell (page, "Character", margin, pageHeight - 84, 24);
    expectCell (page, "C28", margin, pageHeight - 105, 21);
    EXPECT_THAT (pdf.page (0).text, HasSubstr ("Page 1 of 2"));
    EXPECT_THAT (page.text, HasSubstr ("Page 2 of 2"));
    EXPECT_EQ (pdf.page (0).count ("Total"), 0);
    EXPECT_EQ (page.count ("Total"), 1);
}

TEST_F (ADROverviewTest, twoThousandCharactersAreMostlyThere)
{
    const auto pdf = exported (characters (2000));
    EXPECT_EQ (pdf.pages.size(), 58u);
    EXPECT_EQ (exporter.numPages, 58);
    EXPECT_EQ (exporter.rowsLeftOut(), 149);
    EXPECT_EQ (pdf.page (57).count ("C1851"), 1);
}

// ---- the footer ----------------------------------------------------------------------------------------------------------

TEST_F (ADROverviewTest, theFooterTellsVersionTimeAndPage)
{
    exporter.appIcon = juce::Image (juce::Image::ARGB, 20, 20, true);
    const auto page = exported (characters (1)).page();
    EXPECT_TRUE (page.hasLine (margin, 50, pageWidth - margin, 50, 0.25f, black));
    EXPECT_TRUE (page.hasPicture ({ margin - 2, 24, 20, 20 }));
    expectText (page, exporter.appVersion.toStdString(), margin + 25, 30, PDFDocument::FontTypeRegular, 10);
    EXPECT_NEAR (page.word ("Page").bottom, 30, 0.5);
    const auto last = page.word ("of").bottom;
    EXPECT_NEAR (last, 30, 0.5);
    float right = 0;

    for (const auto& word : page.words)
        if (word.bottom < 40)
            right = std::max (right, word.right);

    EXPECT_NEAR (right, pageWidth - margin, 0.5);
}

TEST_F (ADROverviewTest, theDateStandsInTheMiddleOfTheFooter)
{
    const auto now = juce::Time::getCurrentTime();
    const auto page = exported ({}).page();
    const auto year = page.word (std::to_string (now.getYear()));
    const auto day = page.word (std::to_string (now.getDayOfMonth()));
    const auto time = page.words[static_cast<std::size_t> (
        std::find_if (page.words.begin(), page.words.end(),
                      [] (const auto& word) { return word.text.find (':') != std::string::npos; })
        - page.words.begin())];
    EXPECT_NEAR (year.bottom, 30, 0.5);
    EXPECT_NEAR ((day.x + time.right) / 2, (margin + 25 + pageWidth - margin) / 2, 0.5);
    EXPECT_EQ (std::count (time.text.begin(), time.text.end(), ':'), 1) << "no seconds";
}

TEST_F (ADROverviewTest, withoutAnIconThereIsNone) { EXPECT_TRUE (exported ({}).page().pictures.empty()); }

// ---- the finished sheet --------------------------------------------------------------------------------------------------

TEST_F (ADROverviewTest, theFinishedSheetIsOpened)
{
    exporter.openFile = [this] (const juce::File& file)
    {
        EXPECT_TRUE (file.existsAsFile());
        opened.push_back (file);
    };
    exported ({});
    EXPECT_EQ (opened, std::vector<juce::File> { folder.file ("sheet.pdf") });
}

TEST_F (ADROverviewTest, aSheetThatCouldNotBeSavedIsOpenedNevertheless)
{
    const CollectedLog log;
    const auto path = folder.directory() + "/nowhere/sheet.pdf";
    ADROverviewPDFExporter lost (path);
    lost.openFile = [this] (const juce::File& file) { opened.push_back (file); };
    lost.exportPDF ({}, {}, {}, {}, {}, {});
    EXPECT_EQ (lost.document->saveResult().getErrorMessage(),
               "Can't write " + path + ": No such file or directory");
    EXPECT_EQ (opened, std::vector<juce::File> { juce::File (path) });
    EXPECT_TRUE (log.lines().empty());
}

TEST_F (ADROverviewTest, nobodyNeedsToOpenIt)
{
    exporter.openFile = nullptr;
    exported ({});
    EXPECT_TRUE (folder.file ("sheet.pdf").existsAsFile());
}

/** The viewer of the system, played by a script that notes what it is given. */
class ViewerOfSystem : public ADROverviewTest
{
protected:
    ViewerOfSystem()
    {
        folder.write ("xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" > '" + (folder.path / "given.tmp").string()
                                      + "' && mv '" + (folder.path / "given.tmp").string() + "' '"
                                      + (folder.path / "given").string() + "'\n");
        folder.file ("xdg-open").setExecutePermission (true);
        ::setenv ("PATH", (folder.path.string() + ":" + path).c_str(), 1);
    }

    ~ViewerOfSystem() override { ::setenv ("PATH", path.c_str(), 1); }

    std::string givenFor (const std::string& name) const
    {
        folder.write (name, "%PDF-");
        ADROverviewPDFExporter::openInViewer (folder.file (name));

        for (int i = 0; i < 500 && ! folder.file ("given").existsAsFile(); ++i)
            std::this_thread::sleep_for (std::chrono::milliseconds (10));

        return folder.bytes ("given");
    }

    const std::string path = std::getenv ("PATH");
};

TEST_F (ViewerOfSystem, isGivenThePath)
{
    EXPECT_EQ (givenFor ("The Harbour; reel 3.pdf"), (folder.path / "The Harbour; reel 3.pdf").string());
}

TEST_F (ViewerOfSystem, runsNothingThatAPathSays)
{
    const auto given = givenFor ("$(touch hacked)`touch hacked`\"; touch hacked; \".pdf");
    EXPECT_THAT (given, HasSubstr ("file:///"));
    EXPECT_THAT (given, HasSubstr ("%24(touch%20hacked)%60touch%20hacked%60%22"));
    EXPECT_FALSE (juce::File::getCurrentWorkingDirectory().getChildFile ("hacked").exists());
}

TEST_F (ViewerOfSystem, isGivenASheetThatIsMarkedAsAProgram)
{
    folder.write ("sheet.pdf", "#!/bin/sh\ntouch " + (folder.path / "hacked").string() + "\n");
    folder.file ("sheet.pdf").setExecutePermission (true);
    EXPECT_THAT (givenFor ("sheet.pdf"), HasSubstr ("sheet.pdf"));
    EXPECT_FALSE (folder.file ("hacked").exists());
}

} // namespace
