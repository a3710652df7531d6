// SPDX-License-Identifier: GPL-3.0-only
// Cues that no page holds.
#include "export/print/DrawnSheetSupport.h"
#include "support/CollectedLog.h"

#include <gmock/gmock.h>

#include <numeric>
#include <poppler-page-renderer.h>

using namespace ExportSupport;
using testing::HasSubstr;
using testing::Not;
using ZEP::Overmarks::Testing::CollectedLog;

namespace
{

class DrawnTallCueTest : public DrawnSheetTest
{
};

TEST_F (DrawnTallCueTest, aCueThatIsTallerThanAPageGoesOnFromLineToLine)
{
    std::string words;

    for (int i = 0; i < 150; ++i)
        words += "line" + std::to_string (i) + "\n";

    auto tall = cue (2, "c1", words + "end");
    tall->setNotes (text ("softly"));
    const auto pdf = byTimecode ({ cue (1), tall, cue (3) });
    ASSERT_EQ (pdf.pages.size(), 5u);
    EXPECT_EQ (pdf.page (0).count ("A2"), 0) << "it begins on a fresh page";
    EXPECT_EQ (pdf.page (1).count ("A2"), 1);
    int next = 0;

    for (std::size_t i = 1; i < pdf.pages.size(); ++i)
        for (const auto& word : pdf.page (i).words)
            if (word.text.rfind ("line", 0) == 0)
            {
                EXPECT_EQ (word.text, "line" + std::to_string (next++));
                EXPECT_GE (word.bottom, 44.0f);
                EXPECT_LE (word.top, 842 - 30 - 17.0f);
            }

    EXPECT_EQ (next, 150);
    EXPECT_THAT (pdf.page (2).text, HasSubstr ("A2 (continued)"));
    EXPECT_THAT (pdf.page (1).text, Not (HasSubstr ("(continued)")));
    EXPECT_EQ (pdf.page (4).count ("softly"), 1);
    EXPECT_EQ (pdf.page (4).count ("A3"), 1);
}

TEST_F (DrawnTallCueTest, aTallCueIsCutBetweenItsLinesHoweverHighTheirLettersReach)
{
    std::string words;

    for (int i = 0; i < 150; ++i)
        words += (i > 0 ? "\n" : "") + ("ÉMILE" + std::to_string (i));

    const auto expectOnce = [&words] (const ReadPDF& pdf)
    {
        ASSERT_GE (pdf.pages.size(), 2u);

        for (int i = 0; i < 150; ++i)
        {
            const auto word = "ÉMILE" + std::to_string (i);
            EXPECT_EQ (std::accumulate (pdf.pages.begin(), pdf.pages.end(), 0,
                                        [&word] (int sum, const PDFPage& page)
                                        { return sum + page.count (word); }),
                       1)
                << word;
        }
    };

    expectOnce (byTimecode ({ cue (1, "c1", words) })); // 14 points
    settings->layout = EventExportLayoutDirector;
    expectOnce (byTimecode ({ cue (1, "c1", words) })); // 11
    auto noted = cue (1, "c1", "Hello?");
    noted->setNotes (text (words));
    expectOnce (byTimecode ({ noted })); // 8
}

TEST_F (DrawnTallCueTest, theBoxOfATallCueHasItsLowerEdge)
{
    const auto pdf =
        byTimecode ({ cue (1, "c1", juce::String::repeatedString ("more words\n", 70).toStdString()) });
    ASSERT_EQ (pdf.pages.size(), 3u) << "a heading, and two of the cue";
    const auto end = boxesOn (pdf.page (2)).front().second;
    EXPECT_GT (end, 400.0f);
    const std::unique_ptr<poppler::document> document (
        poppler::document::load_from_file (folder.file ("Reel 2.pdf").getFullPathName().toStdString()));
    const std::unique_ptr<poppler::page> last (document->create_page (2));
    constexpr double dots = 288; // an inch
    auto picture = poppler::page_renderer().render_page (last.get(), dots, dots);
    int grey = 0;

    // The line is one point wide, and its lower half is outside the box.
    for (int x = 0; x < 1200; ++x)
        grey += static_cast<unsigned char> (
                    picture.data()[static_cast<int> ((842 - end + 0.25f) * 4) * picture.bytes_per_row()
                                   + (200 + x) * picture.bytes_per_row() / picture.width()])
                        < 200
                    ? 1
                    : 0;

    EXPECT_EQ (grey, 1200);
}

TEST_F (DrawnTallCueTest, aCueOfNothingButLineBreaksEnds)
{
    const CollectedLog log;
    const auto words = juce::String::repeatedString ("Hello?\n", 25000) + "Bye.";
    const auto pdf = byTimecode ({ cue (1, "c1", words.toStdString()), cue (2) });
    EXPECT_LT (pdf.pages.size(), 90u);
    EXPECT_GT (pdf.pages.size(), 60u);
    EXPECT_GT (pdf.page (40).count ("Hello?"), 30);
    EXPECT_EQ (pdf.pages.back().count ("A2"), 1);
    ASSERT_EQ (log.lines().size(), 1u);
    EXPECT_THAT (log.lines().front(), HasSubstr ("A text of 25001 lines is too tall for paper; "));
}

TEST_F (DrawnTallCueTest, aTallCueOfOneEndlessParagraphHasAnEndToo)
{
    settings->showTakeNumbers = true;
    auto tall = cue (1, "c1", juce::String::repeatedString ("more words ", 1500).toStdString());
    tall->setNotes (juce::String::repeatedString ("many notes ", 1500));
    const auto pdf = byTimecode ({ tall, cue (2) });
    EXPECT_GT (pdf.pages.size(), 4u);
    EXPECT_EQ (pdf.pages.back().count ("A2"), 1);
    int words = 0, notes = 0;

    for (const auto& page : pdf.pages)
    {
        words += page.count ("words");
        notes += page.count ("notes");
    }

    EXPECT_EQ (words, 1500);
    EXPECT_EQ (notes, 1500);
}

} // namespace
