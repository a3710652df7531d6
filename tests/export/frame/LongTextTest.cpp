// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/LongText.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZEP::Overmarks;

TEST (LongText, piecesStandBehindWhatWasThere)
{
    juce::String text ("first ");
    LongText pieces (text, 100);
    pieces.add ("se");
    EXPECT_EQ (text, "first se");
    pieces.add ("");
    pieces.add (std::string_view ("cond|", 4));
    EXPECT_EQ (text, "first second");
}

TEST (LongText, anEmptyTextIsLengthenedToo)
{
    juce::String text;
    LongText (text, 0).add ("ä");
    EXPECT_EQ (text, juce::CharPointer_UTF8 ("ä"));
    EXPECT_EQ (juce::String(), "") << "the empty text of all others";
}

TEST (LongText, anotherTextOfTheSameCharactersStays)
{
    juce::String text ("first");
    const auto other = text;
    LongText (text, 100).add ("+");
    EXPECT_EQ (text, "first+");
    EXPECT_EQ (other, "first");
}

TEST (LongText, whatIsMoreThanWasExpectedHasRoom)
{
    juce::String text ("a");
    std::string expected ("a");
    LongText pieces (text, 3);

    for (int i = 0; i < 2000; ++i)
    {
        const auto piece = std::to_string (i);
        pieces.add (piece);
        expected += piece;
    }

    EXPECT_EQ (text.toStdString(), expected);
}
