// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/FixedWidthText.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using Pieces = std::vector<std::string_view>;

TEST (FixedWidthText, aColumnIsFilledUpWithBlanks)
{
    FixedWidthText text;
    text.column ("Ann", 5, 7);
    text.column ("", 5, 3);
    text.text ("|");
    EXPECT_EQ (text.bytes(), "Ann       |");
}

TEST (FixedWidthText, whatIsTooLongForItsColumnLosesItsEnd)
{
    FixedWidthText text;
    text.column ("Bartholomew", 5, 7);
    text.column ("Cubbins", 4, 4);
    EXPECT_EQ (text.bytes(), "Barth  Cubb");
}

TEST (FixedWidthText, linesEndInCarriageReturnAndLineFeed)
{
    FixedWidthText text;
    text.blanks (2);
    text.endLine();
    text.endLine();
    EXPECT_EQ (text.bytes(), "  \r\n\r\n");
}

TEST (FixedWidthText, piecesHaveOneLengthButForTheLast)
{
    EXPECT_EQ (piecesOf ("", 3), Pieces());
    EXPECT_EQ (piecesOf ("abc", 3), Pieces { "abc" });
    EXPECT_EQ (piecesOf ("abcdefg", 3), (Pieces { "abc", "def", "g" }));
}

TEST (FixedWidthText, removalsGoFromLeftToRightOnce)
{
    EXPECT_EQ (without ("a  b", "  "), "ab");
    EXPECT_EQ (without ("a   b", "  "), "a b");
    EXPECT_EQ (without ("a    b", "  "), "ab");
    EXPECT_EQ (without ("\r\r\f\f", "\r\f"), "\r\f");
    EXPECT_EQ (without ("", "x"), "");
    EXPECT_EQ (without ("x", "x"), "");
}
