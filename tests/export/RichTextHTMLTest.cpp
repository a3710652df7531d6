// SPDX-License-Identifier: GPL-3.0-only
#include "export/RichTextHTML.h"

#include "export/ExportSupport.h"

using ExportSupport::text;
using namespace ZEP::Core;
using ZEP::Overmarks::htmlOfRichText;

namespace
{

const juce::Colour black { 0xff000000 };

juce::Font plain() { return RichTextString::defaultFont(); }
juce::Font bold() { return plain().boldened(); }

juce::Font underlined (juce::Font font)
{
    font.setUnderline (true);
    return font;
}

/** Pieces of text, each with its look. */
RichTextString pieces (const std::vector<std::tuple<std::string, juce::Font, juce::Colour>>& textsWithLooks)
{
    juce::AttributedString joined;

    for (const auto& [words, font, colour] : textsWithLooks)
        joined.append (text (words), font, colour);

    return RichTextString (joined);
}

std::string htmlOf (const juce::Font& font, juce::Colour colour = black)
{
    return htmlOfRichText (pieces ({ { "x", font, colour } }));
}

} // namespace

TEST (RichTextHTML, anEmptyTextIsEmpty) { EXPECT_EQ (htmlOfRichText ({}), ""); }

TEST (RichTextHTML, aPlainTextHasNoSpan)
{
    EXPECT_EQ (htmlOfRichText (text ("Wer ist da? Ж")), "Wer ist da? Ж");
}

TEST (RichTextHTML, aRunAtTheStartOpensASpanAsTheVeryFirstOutput)
{
    EXPECT_EQ (htmlOfRichText (pieces ({ { "Stop", bold(), black }, { " it", plain(), black } })),
               "<span style=\"font-weight: bold;color: rgb(0,0,0);\">Stop</span> it");
}

TEST (RichTextHTML, whatStandsBetweenAndBehindRunsIsPlain)
{
    const juce::Colour red { 0xffff8001 };
    EXPECT_EQ (htmlOfRichText (pieces ({ { "Ä", plain(), black },
                                         { "b", plain(), red },
                                         { "ж", plain(), black },
                                         { "d", bold(), black },
                                         { "e", plain(), black } })),
               "Ä<span style=\"color: rgb(255,128,1);\">b</span>ж"
               "<span style=\"font-weight: bold;color: rgb(0,0,0);\">d</span>e");
}

TEST (RichTextHTML, runsThatTouchEachHaveTheirSpan)
{
    EXPECT_EQ (htmlOfRichText (pieces ({ { "a", bold(), black }, { "b", plain().italicised(), black } })),
               "<span style=\"font-weight: bold;color: rgb(0,0,0);\">a</span>"
               "<span style=\"font-style: italic;color: rgb(0,0,0);\">b</span>");
}

TEST (RichTextHTML, aFontBoldItalicUnderlinedAndStruckThroughSaysAllFourInOrder)
{
    EXPECT_EQ (htmlOf (RichTextString::withStrikethrough (underlined (bold().italicised()), true)),
               "<span style=\"font-weight: bold;font-style: italic;text-decoration: underline line-through;"
               "color: rgb(0,0,0);\">x</span>");
}

TEST (RichTextHTML, underlinedAloneAndStruckThroughAlone)
{
    EXPECT_EQ (htmlOf (underlined (plain())),
               "<span style=\"text-decoration: underline;color: rgb(0,0,0);\">x</span>");
    EXPECT_EQ (htmlOf (RichTextString::withStrikethrough (plain(), true)),
               "<span style=\"text-decoration: line-through;color: rgb(0,0,0);\">x</span>");
}

TEST (RichTextHTML, lineFeedsAreBreaksInsideAndOutsideOfRuns)
{
    EXPECT_EQ (htmlOfRichText (text ("a\n\nb\n")), "a<br /><br />b<br />");
    EXPECT_EQ (htmlOfRichText (pieces ({ { "a\nb", bold(), black } })),
               "<span style=\"font-weight: bold;color: rgb(0,0,0);\">a<br />b</span>");
}

TEST (RichTextHTML, carriageReturnsAndTheMarksOfHTMLStandAsTheyAre)
{
    EXPECT_EQ (htmlOfRichText (text ("a\r\nb <b>&amp; \"c\"")), "a\r<br />b <b>&amp; \"c\"");
}

TEST (RichTextHTML, aTextOfAHundredThousandRunsIsWritten)
{
    std::vector<RichTextString::Attribute> looks;
    constexpr int length = 200'000;

    for (int i = 0; i < length; i += 2)
        looks.push_back ({ { i, i + 1 }, bold(), black });

    RichTextString long_ (juce::String::repeatedString (text ("ж"), length));
    long_.applyAttributes (looks);
    const auto html = htmlOfRichText (long_);
    EXPECT_EQ (html.size(), length * 2 + length / 2 * (html.find ("ж") + std::string ("</span>").size()));
}
