// SPDX-License-Identifier: GPL-3.0-only
// How much room each text of the overview sheet has, and each page: all of its own, and none of its neighbour's.
#include "export/ADROverviewPDFExporter.h"

#include "export/FittingWords.h"
#include "support/TemporaryFolder.h"

#include <cmath>

namespace
{

using namespace ExportSupport;
using ZEP::Core::PaperSize;
using ZEP::Core::PDFDocument;
using ZEP::Orvelle::ADROverviewPDFExporter;
using ZEP::Overmarks::Testing::PDFPage;
using ZEP::Overmarks::Testing::ReadPDF;

constexpr auto regular = PDFDocument::FontTypeRegular;
constexpr auto bold = PDFDocument::FontTypeBold;
constexpr float pageWidth = 595, margin = 40, tableWidth = 515;

struct Heading
{
    juce::String title = {};
    juce::String file = {};
    juce::String timeline = {};
    juce::String supervisor = {};
    juce::String studio = {};
};

class ADROverviewWidthsTest : public testing::Test
{
protected:
    std::vector<PDFPage> pages (const std::vector<ADROverviewDataSet>& sets, const Heading& heading = {},
                                PaperSize paper = PaperSize::a4()) const
    {
        ADROverviewPDFExporter exporter (folder.file ("sheet.pdf").getFullPathName(), paper);
        exporter.openFile = nullptr;
        exporter.exportPDF (sets, heading.title, heading.file, heading.timeline, heading.supervisor,
                            heading.studio);
        return ReadPDF (folder.file ("sheet.pdf")).pages;
    }

    FittingWords words (PDFDocument::FontType font, float size, float width)
    {
        document.setFont (font, size);
        return { document, width };
    }

    ZEP::Overmarks::Testing::TemporaryFolder folder;
    PDFDocument document { folder.file ("measure.pdf").getFullPathName(), PaperSize::a4() };
};

TEST_F (ADROverviewWidthsTest, theTitleHasTheWidthBetweenTheMargins)
{
    words (bold, 32, tableWidth)
        .expectTheWidth ([this] (const juce::String& word) { return pages ({}, { .title = word }).front(); });
}

TEST_F (ADROverviewWidthsTest, theTitleOfALaterPageHasTheWidthBetweenTheMargins)
{
    const std::vector<ADROverviewDataSet> many (40);
    words (bold, 16, tableWidth)
        .expectTheWidth ([this, &many] (const juce::String& word)
                         { return pages (many, { .title = word }).at (1); });
}

TEST_F (ADROverviewWidthsTest, theTextsOfTheHeadEndAtTheMargin)
{
    const auto wide = words (regular, 12, pageWidth - margin - 168);
    wide.expectTheWidth ([this] (const juce::String& word) { return pages ({}, { .file = word }).front(); });
    wide.expectTheWidth ([this] (const juce::String& word)
                         { return pages ({}, { .timeline = word }).front(); });
    wide.expectTheWidth ([this] (const juce::String& word)
                         { return pages ({}, { .supervisor = word }).front(); });
    words (regular, 12, pageWidth - margin - 394)
        .expectTheWidth ([this] (const juce::String& word)
                         { return pages ({}, { .studio = word }).front(); });
}

TEST_F (ADROverviewWidthsTest, theTextsOfARowEndWithTheirCells)
{
    const auto quarter = words (regular, 10, 0.25f * tableWidth - 5);
    quarter.expectTheWidth (
        [this] (const juce::String& word) {
            return pages ({ { word, {}, {}, 1, 1, 0 } }).front();
        });
    quarter.expectTheWidth (
        [this] (const juce::String& word) {
            return pages ({ { {}, word, {}, 1, 1, 0 } }).front();
        });
    words (regular, 10, 0.1f * tableWidth - 5)
        .expectTheWidth (
            [this] (const juce::String& word) {
                return pages ({ { {}, {}, word, 1, 1, 0 } }).front();
            });
}

TEST_F (ADROverviewWidthsTest, theSumsEndWithTheirCells)
{
    document.setFont (bold, 10);
    const auto width = 0.08f * tableWidth - 5;
    const auto figures = static_cast<int> (width / document.widthOfLine ("8"));
    const auto sum = [] (int length) { return juce::String::repeatedString ("8", length).getIntValue(); };
    const auto drawnWidth = [] (const PDFPage& page, int number)
    {
        const auto found = page.word (std::to_string (number));
        EXPECT_GT (found.right, found.x) << number;
        return found.right - found.x;
    };
    const int whole = sum (figures), tooWide = sum (figures + 1);
    const auto wholeWidth = document.widthOfLine (juce::String (whole));
    EXPECT_NEAR (drawnWidth (pages ({ { {}, {}, {}, whole, 1, 0 } }).front(), whole), wholeWidth, 0.3);
    EXPECT_NEAR (drawnWidth (pages ({ { {}, {}, {}, 1, whole, 0 } }).front(), whole), wholeWidth, 0.3);
    EXPECT_LT (drawnWidth (pages ({ { {}, {}, {}, tooWide, 1, 0 } }).front(), tooWide), width + 0.3f);
    EXPECT_LT (drawnWidth (pages ({ { {}, {}, {}, 1, tooWide, 0 } }).front(), tooWide), width + 0.3f);
}

TEST_F (ADROverviewWidthsTest, lettersAreAsLargeAsTheirPlacesAreMadeFor)
{
    const auto page = pages ({ { "ANNA", "Miller", "AN", 17, 12, 0.25f } },
                             { "Harbour", "harbour.overmarks", "Reel3", "Doe", "Studio7" })
                          .front();
    const auto expectWidth = [&] (const char* word, PDFDocument::FontType font, float size)
    {
        document.setFont (font, size);
        EXPECT_NEAR (page.word (word).right - page.word (word).x, document.widthOfLine (word), 0.3) << word;
    };

    expectWidth ("Harbour", bold, 32);
    expectWidth ("Supervisor", bold, 12);
    expectWidth ("harbour.overmarks", regular, 12);
    expectWidth ("Character", bold, 10);
    expectWidth ("Miller", regular, 10);
    expectWidth ("25", regular, 10);
    expectWidth ("Total", bold, 10);
    expectWidth ("Page", regular, 10);
}

TEST_F (ADROverviewWidthsTest, onlyTheTitlesOfTheColumnsAreWhite)
{
    const auto page = pages ({ { "ANNA", "Miller", "AN", 17, 12, 0.25f } },
                             { "Harbour", "harbour.overmarks", "Reel3", "Doe", "Studio7" })
                          .front();
    auto colours = page.textColours;
    EXPECT_GE (std::erase (colours, juce::Colours::white), 1u);
    std::erase (colours, juce::Colours::black);
    EXPECT_TRUE (colours.empty());
}

TEST_F (ADROverviewWidthsTest, theTitleOfALaterPageIsBlackEvenBehindAPageWithoutRows)
{
    const auto low = pages (std::vector<ADROverviewDataSet> (2), { .title = "Harbour" }, { pageWidth, 200 });
    ASSERT_GE (low.size(), 2u);
    EXPECT_EQ (low[1].count ("Harbour"), 1);
    EXPECT_EQ (low[1].textColours.at (0), juce::Colours::black);
}

TEST_F (ADROverviewWidthsTest, theLineOfTheFooterIsBlackOnEachPage)
{
    for (const auto& page : pages (std::vector<ADROverviewDataSet> (40)))
        EXPECT_TRUE (page.hasLine (margin, 50, pageWidth - margin, 50, 0.25f, juce::Colours::black));
}

TEST_F (ADROverviewWidthsTest, thePartsOfTheSheetStandApart)
{
    const auto page = pages ({ { "ANNA", "Miller", "AN", 17, 12, 0.25f }, { "TOM", {}, {}, 1, 1, 1 } },
                             { "Harbour", "harbour.overmarks", "Reel3", "Doe", "Studio7" })
                          .front();

    for (std::size_t i = 0; i < page.words.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
        {
            const auto &a = page.words[i], &b = page.words[j];
            const bool touch =
                a.x < b.right && b.x < a.right && a.bottom + 0.5f < b.top && b.bottom + 0.5f < a.top;
            EXPECT_FALSE (touch) << a.text << " and " << b.text;
        }
}

TEST_F (ADROverviewWidthsTest, aTableThatJustFitsNeedsNoSecondPage)
{
    // 26 rows, head and total are 594 points high, and 250 are taken by what stands above and below.
    const std::vector<ADROverviewDataSet> rows (26);
    EXPECT_EQ (pages (rows, {}, { pageWidth, 844 }).size(), 1u);
    EXPECT_EQ (pages (rows, {}, { pageWidth, 843 }).size(), 2u);
}

TEST_F (ADROverviewWidthsTest, paperWithoutRoomForARowHasNoPagesWithoutEnd)
{
    for (const float height : { 20.0f, 105.0f, 106.0f })
        EXPECT_EQ (pages ({}, {}, { pageWidth, height }).size(), 1u) << height;

    EXPECT_GT (pages ({}, {}, { pageWidth, 107 }).size(), 1u);
}

TEST_F (ADROverviewWidthsTest, aShareThatIsNoNumberIsNoProgress)
{
    const auto page = pages ({ { "ANNA", {}, {}, 1, 1, std::nanf ("") } }).front();
    EXPECT_EQ (page.count ("0"), 1) << "percent";
}

TEST_F (ADROverviewWidthsTest, aSheetWithoutATitleIsCalledAsItsFile)
{
    pages ({});
    EXPECT_EQ (ReadPDF (folder.file ("sheet.pdf")).title(), "sheet");
}

} // namespace
