// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/SingleByteText.h"

#include <Poco/Windows1252Encoding.h>
#include <gtest/gtest.h>

using namespace ZEP::Overmarks;

TEST (SingleByteText, lettersOfTheEncodingAreOneByte)
{
    EXPECT_EQ (latin1Text ("Größe"), "Gr\xf6\xdf"
                                     "e");
    EXPECT_EQ (singleByteText ("Größe €", Poco::Windows1252Encoding()), "Gr\xf6\xdf"
                                                                        "e \x80");
}

TEST (SingleByteText, eachCharacterThatItLacksIsAQuestionMark)
{
    EXPECT_EQ (latin1Text ("…少女🎬€ok"), "?????ok");
}

TEST (SingleByteText, plainTextStaysAsItIs)
{
    EXPECT_EQ (latin1Text (""), "");
    EXPECT_EQ (latin1Text ("a\tb\r\n"), "a\tb\r\n");
}
