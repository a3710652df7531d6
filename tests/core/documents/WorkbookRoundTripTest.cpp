// SPDX-License-Identifier: GPL-3.0-only
// What is written into a workbook is read again as it was.
#include "core/documents/ExcelFileHandler.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace ZEP::Core;
using ZEP::Overmarks::Testing::TemporaryFolder;

namespace
{

using Rows = std::vector<std::vector<RichTextString>>;

juce::String utf8 (const std::string& text)
{
    return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
}

class WorkbookRoundTrip : public testing::Test
{
protected:
    Rows writtenAndRead (Rows rows) const
    {
        const auto path = folder.directory() + "/list.xlsx";
        juce::String error;
        ExcelFileHandler().writeFileContent (path, rows, error);
        EXPECT_EQ (error, "");
        Rows read;
        ExcelFileHandler().readFileContent (path, read, error);
        EXPECT_EQ (error, "");
        return read;
    }

    /** A cell below a heading comes back as it was. */
    void expectTheSame (const RichTextString& cell) const
    {
        const auto read = writtenAndRead ({ { juce::String ("Text") }, { cell } });
        ASSERT_EQ (read.size(), 2u);
        ASSERT_EQ (read[1].size(), 1u);
        EXPECT_EQ (read[1][0].getText(), cell.getText());
        EXPECT_TRUE (read[1][0] == cell)
            << juce::JSON::toString (read[1][0].toJSONDynamicObject().get()) << " instead of "
            << juce::JSON::toString (RichTextString (cell).toJSONDynamicObject().get());
    }

    TemporaryFolder folder;
};

class TextRoundTrip : public WorkbookRoundTrip, public testing::WithParamInterface<std::string>
{
};

TEST_P (TextRoundTrip, asItWas) { expectTheSame (utf8 (GetParam())); }

INSTANTIATE_TEST_SUITE_P (, TextRoundTrip,
                          testing::Values ("=1+1", "00123", "1e5", "TRUE", "http://example.org", "'a", " a ",
                                           "  ", "\n", "a\nb\n", "a\r\nb", "\r", "\x01\x1f", "_x000D_",
                                           "_x005F_x000D_", "_x0041_x0042_", "_x0041\r", "x0041_", "\rx0041_",
                                           "Größe 少女 🎬", "\xef\xbf\xbe", "\xef\xbf\xbf", "<&>\"']]>",
                                           "01:02:03:04", std::string (32767, 'a'),
                                           std::string (32767, '\r')));

TEST_F (WorkbookRoundTrip, looksComeBack)
{
    const juce::Font plain;
    RichTextString text (utf8 ("plain bold italic under struck big red 🎬 Courier"));
    const auto mark =
        [&text] (const char* word, const juce::Font& font, juce::Colour colour = juce::Colour (0xff000000))
    {
        const auto start = text.getText().indexOf (word);
        text.applyAttributes (
            { { { start, start + juce::String::fromUTF8 (word).length() }, font, colour } });
    };
    mark ("bold", plain.boldened());
    mark ("italic", plain.italicised());
    auto underlined = plain;
    underlined.setUnderline (true);
    mark ("under", underlined);
    mark ("struck", RichTextString::withStrikethrough (plain.boldened(), true));
    mark ("big", plain.withHeight (20.5f));
    mark ("red", plain, juce::Colour (0xffff0000));
    expectTheSame (text);
}

TEST_F (WorkbookRoundTrip, aTextOfOneLookComesBack)
{
    RichTextString text (utf8 ("all red and bold"));
    text.applyAttributes ({ { { 0, 16 }, juce::Font().boldened(), juce::Colour (0xffff0000) } });
    expectTheSame (text);
}

TEST_F (WorkbookRoundTrip, emptyCellsKeepTheOthersInTheirPlaces)
{
    const auto read = writtenAndRead ({ { juce::String ("a"), juce::String ("b"), juce::String ("c") },
                                        {},
                                        { {}, {}, juce::String ("d") } });
    ASSERT_EQ (read.size(), 3u);
    ASSERT_EQ (read[2].size(), 3u);
    EXPECT_EQ (read[2][0].getText(), "");
    EXPECT_EQ (read[2][2].getText(), "d");
}

/** Letters, escapes that are none and characters that have to be escaped, side by side. */
RichTextString randomText (std::mt19937& random)
{
    const std::vector<std::string> pieces { "_",  "x",    "00", "0D",   "_x", "000D", "_x000D_",
                                            "\r", "\x01", "\n", " ",    "é",  "🎬",    "\xef\xbf\xbf",
                                            "A",  "<",    "&",  "005F", "少", "\t",   "_x0041" };
    std::string text;

    for (auto count = random() % 12; count-- > 0;)
        text += pieces[random() % pieces.size()];

    RichTextString made (utf8 (text + "."));

    for (auto count = random() % 4; count-- > 0;)
    {
        const auto start = static_cast<int> (random() % static_cast<unsigned> (made.length()));
        const auto end = start + 1 + static_cast<int> (random() % 3);
        made.applyAttributes (
            { { { start, std::min (end, made.length()) },
                random() % 2 == 0 ? juce::Font().boldened() : juce::Font().withHeight (20.0f),
                random() % 2 == 0 ? juce::Colour (0xff0000ff) : juce::Colour (0xff000000) } });
    }

    return made;
}

TEST_F (WorkbookRoundTrip, oddTextsComeBack)
{
    std::mt19937 random (5);
    Rows rows { { juce::String ("Text") } };

    for (int i = 0; i < 2000; ++i)
        rows.push_back ({ randomText (random) });

    const auto read = writtenAndRead (rows);
    ASSERT_EQ (read.size(), rows.size());

    for (std::size_t i = 1; i < rows.size(); ++i)
    {
        EXPECT_EQ (read[i].at (0).getText(), rows[i][0].getText()) << i;
        EXPECT_TRUE (read[i].at (0) == rows[i][0])
            << i << juce::JSON::toString (read[i][0].toJSONDynamicObject().get()) << " instead of "
            << juce::JSON::toString (rows[i][0].toJSONDynamicObject().get());
    }
}

} // namespace
