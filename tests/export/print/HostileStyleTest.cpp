// SPDX-License-Identifier: GPL-3.0-only
// A cue's own styles, titles and links: what stands in a cue belongs to that cue, and the sheet is the studio's.
#include "export/print/PrintSupport.h"

#include "core/system/SystemUtility.h"

#include <ostream>

using namespace ExportSupport;
using testing::HasSubstr;
using testing::Not;
using ZEP::Core::SystemUtility;

namespace
{

constexpr double tolerance = 1.0, x = 30;

struct Words
{
    const char* name;
    const char* text;
};

void PrintTo (const Words& words, std::ostream* stream) { *stream << words.name; }

class HostileStyleTest : public PrintTest, public testing::WithParamInterface<Words>
{
};

class HostileSheetTest : public PrintTest
{
};

const auto nameOfWords = [] (const auto& words) { return std::string (words.param.name); };

/** The paper and the footer: as of any sheet. */
void expectUsualPaper (const PrintedPDF& sheet)
{
    constexpr double textTop = 842 - 35;
    ASSERT_TRUE (sheet.isValid());

    for (int page = 0; page < sheet.pages(); ++page)
    {
        EXPECT_NEAR (sheet.width (page), 595, tolerance);
        EXPECT_NEAR (sheet.height (page), 842, tolerance);
        const auto version = sheet.word (page, SystemUtility::executableVersion().toStdString());
        EXPECT_NEAR (version.left, x + 28, tolerance);
        EXPECT_NEAR (version.top, textTop, tolerance);
        const auto number = std::to_string (page + 1) + "/" + std::to_string (sheet.pages());
        EXPECT_NEAR (sheet.word (page, number).right, 595 - 30 - 4, tolerance);
    }
}

/** And where the first page begins, in letters of the usual size. */
void expectUsualSheet (const PrintedPDF& sheet)
{
    expectUsualPaper (sheet);

    // The body's own margin is six points, and the title's letters are 16.5.
    const auto title = sheet.word (0, "Film");
    EXPECT_NEAR (title.left, x + 6, tolerance);
    EXPECT_NEAR (title.top, 35, 3);
    EXPECT_NEAR (title.bottom - title.top, 18, 3);
    EXPECT_THAT (sheet.text(), Not (HasSubstr ("spoof")));
}

std::string bytesAt (const std::string& path)
{
    std::ifstream stream (path, std::ios::binary);
    return { std::istreambuf_iterator<char> (stream), {} };
}

} // namespace

TEST_P (HostileStyleTest, leavesPaperMarginsAndFooterAlone)
{
    settings->events = events ({ { .cueNumber = "A1", .words = "Before" },
                                 { .cueNumber = "A2", .words = GetParam().text },
                                 { .cueNumber = "A3", .words = "After" } });
    ASSERT_EQ (print(), "");
    const PrintedPDF sheet (path());
    expectUsualSheet (sheet);
    EXPECT_THAT (sheet.text(), HasSubstr ("Before"));
    EXPECT_THAT (sheet.text(), HasSubstr ("After"));
}

INSTANTIATE_TEST_SUITE_P (
    Styles, HostileStyleTest,
    testing::Values (
        Words { "none", "" }, Words { "noMargin", "<style>@page{margin:0}</style>" },
        Words { "importantMargin", "<style>@page{margin:0!important;margin-top:200pt!important}</style>" },
        Words { "turnedPages", "<style>@page{page-orientation:rotate-left}</style>" },
        Words { "turnedPagesAsImportant", "<style>@page{page-orientation:rotate-left!important}</style>" },
        Words { "paper", "<style>@page{size:100mm 100mm}</style>" },
        Words { "importantPaper", "<style>@page{size:A3 landscape!important}</style>" },
        Words { "wordsInTheMargin", "<style>@page{@bottom-center{content:\"spoof\"}}</style>" },
        Words {
            "importantWordsInTheMargin",
            "<style>@page{@bottom-right-corner{content:\"spoof\"!important}@top-left{content:\"spoof\"!important}}</style>" },
        Words {
            "namedPages",
            "<style>@page x{size:100mm 100mm!important;margin:0!important;page-orientation:rotate-left!important;"
            "@top-left{content:\"spoof\"!important}} html,body,div,p{page:x!important}</style>" },
        Words { "firstPage", "<style>@page :first{margin:0!important;size:A5!important}</style>" },
        Words { "leftAndRightPages",
                "<style>@page :left{margin:0!important}@page :right{margin:0!important}</style>" },
        Words { "framesAndSizesOfPages",
                "<style>@page{padding:100pt!important;border:20pt solid red!important;width:100pt!important;"
                "height:200pt!important;background:yellow!important;zoom:3!important}</style>" },
        Words {
            "layersOfTheirOwn",
            "<style>@layer a,sheet;@layer a{@page{margin:0!important}}"
            "@layer sheet{@page{size:A5!important;@bottom-center{content:\"spoof\"!important}}}</style>" },
        Words { "forPrintOnly", "<style media=print>@media print{@page{margin:0!important}}</style>" },
        Words { "closedThingsFirst",
                "</p></div></style></textarea>--><style>@page{margin:0!important}</style>" }),
    nameOfWords);

TEST_F (HostileSheetTest, wordsThatAreNeverClosedTakeTheRestOfTheCuesAndNothingElse)
{
    for (const std::string unclosed :
         { "<!--", "<style>@page{margin:0;", "<textarea>", "<title>", "<xmp>",
           "<style>@page{margin:0!important}@layer sheet{", "<plaintext>", "<select>" })
    {
        settings->events = events (
            { { .cueNumber = "A1", .words = "Before" }, { .words = unclosed }, { .words = "After" } });
        EXPECT_EQ (print(), "") << unclosed;
        const PrintedPDF sheet (path());
        expectUsualPaper (sheet);
        EXPECT_THAT (sheet.text(), HasSubstr ("Before")) << unclosed;
    }
}

TEST_F (HostileSheetTest, aStyleTearsNoCueApartAndLeavesEndlessWordsBroken)
{
    settings->events.push_back (
        event ({ .words = "<style>p{overflow-wrap:normal!important}"
                          ".oneCueOuterContainer{break-inside:auto!important}</style>" }));

    for (int i = 0; i < 30; ++i)
        settings->events.push_back (event (
            { .cueNumber = "N" + std::to_string (i), .in = oneHour, .end = oneHour + 50, .words = "Hello" }));

    settings->events.push_back (event ({ .words = std::string (400, 'W') }));
    ASSERT_EQ (print(), "");
    const PrintedPDF sheet (path());
    expectUsualSheet (sheet);
    expectWholeCues (sheet);
}

TEST_F (HostileSheetTest, theTitleIsTheSheetsWhateverACueSays)
{
    for (const std::string words : { "Hello", "<title>stolen</title>", "</body></html><title>stolen</title>",
                                     "<svg><title>stolen</title></svg>", "<!--" })
    {
        EXPECT_EQ (printText (words), "") << words;
        const auto document = std::unique_ptr<poppler::document> (poppler::document::load_from_file (path()));
        ASSERT_NE (document, nullptr);
        const auto title = document->get_title().to_utf8();
        EXPECT_EQ (std::string (title.begin(), title.end()), "Dublane - Event List") << words;
    }
}

class HostileLinkTest : public PrintTest, public testing::WithParamInterface<Words>
{
};

TEST_P (HostileLinkTest, isWordsAndNothingToClick)
{
    ASSERT_EQ (printText (GetParam().text), "");
    const PrintedPDF sheet (path());
    expectUsualSheet (sheet);
    EXPECT_THAT (sheet.text(), HasSubstr ("here"));
    const auto bytes = bytesAt (path());
    EXPECT_THAT (bytes, HasSubstr ("/Type /Page\n")) << "else links hide in what is compressed";
    EXPECT_THAT (bytes, Not (HasSubstr ("/ObjStm")));

    for (const auto* part : { "/Annots", "evil", "passwd", "alert", "overmarks-print" })
        EXPECT_THAT (bytes, Not (HasSubstr (part)));
}

INSTANTIATE_TEST_SUITE_P (
    Links, HostileLinkTest,
    testing::Values (
        Words { "address", "<a href='http://evil.example/'>here</a>" },
        Words { "addressWithParentheses", "<a href='http://evil.example/a(b)c\\)evil'>here</a>" },
        Words { "file", "<a href='file:///etc/passwd'>here</a>" },
        Words { "script", "<a href='javascript:alert(1)'>here</a>" },
        Words { "neighbourOfThePage", "<a href='x.html'>here</a>" },
        Words { "placeOnThePage", "<a href='#there'>here</a><p id=there>there</p>" },
        Words { "drawing", "<svg width=90 height=90><a href='http://evil.example/'><text y=20>here</text></a>"
                           "<a xlink:href='http://evil.example/'><text y=60>there</text></a></svg>" },
        Words { "picture",
                "here<a href='http://evil.example/'><img src='file:///pdf-export-in-point-icon.png'></a>" },
        Words {
            "shadow",
            "<div><template shadowrootmode=open><a href='http://evil.example/'>here</a></template></div>" },
        Words { "frame", "here<iframe srcdoc=\"<a hr&#101;f='http://evil.example/'>there</a>\"></iframe>" }),
    nameOfWords);

TEST_F (HostileSheetTest, pagesWithoutEndAreNoSheet)
{
    EXPECT_THAT (printText ("<div style='height:1000000px'></div>"),
                 testing::MatchesRegex ("the sheet has more than 1[0-9][0-9] pages"));
    EXPECT_FALSE (wasPrinted());
}
