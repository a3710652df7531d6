// SPDX-License-Identifier: GPL-3.0-only
#include "import/EBUTextField.h"

#include <Poco/Latin1Encoding.h>
#include <Poco/TextConverter.h>
#include <Poco/UTF8Encoding.h>
#include <Poco/Windows1252Encoding.h>
#include <gtest/gtest.h>

#include <string>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;

namespace
{

std::string decoded (std::string_view field, int encoding)
{
    return decodedEBUText (field, static_cast<TextEncoding> (encoding)).toStdString();
}

/** Every byte that can stand in a text. */
std::string allBytes()
{
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != 0x8f)
            bytes += static_cast<char> (byte);
    return bytes;
}

template <typename Encoding>
std::string convertedByPoco (const std::string& bytes)
{
    const Encoding from;
    const Poco::UTF8Encoding utf8;
    std::string text;
    Poco::TextConverter (from, utf8, '?').convert (bytes, text);
    return text;
}

} // namespace

TEST (EBUTextField, unusedSpaceEndsTheText)
{
    for (int encoding : { 1, 2, 5, 6 })
    {
        EXPECT_EQ (decoded ("Hello\x8f\x8f\x8f", encoding), "Hello") << encoding;
        EXPECT_EQ (decoded ("Hello\x8fthere", encoding), "Hello") << encoding;
        EXPECT_EQ (decoded ("\x8f\x8f", encoding), "") << encoding;
        EXPECT_EQ (decoded ("Hello", encoding), "Hello") << encoding;
        EXPECT_EQ (decoded ("", encoding), "") << encoding;
    }
}

TEST (EBUTextField, aZeroEndsTheTextToo)
{
    for (int encoding : { 1, 2, 5, 6 })
        EXPECT_EQ (decoded (std::string_view ("Hello\0there\x8f", 12), encoding), "Hello") << encoding;
}

TEST (EBUTextField, controlCodesStayWhatTheyAre)
{
    EXPECT_EQ (decoded ("\x0d\x07one\x8atwo\x80\x82", 1), "\x0d\x07one\xc2\x8atwo\xc2\x80\xc2\x82");
}

TEST (EBUTextField, asciiTakesEveryByteForACharacter)
{
    EXPECT_EQ (decoded ("Sch\xf6n\x93", 1), "Schön\xc2\x93");
    EXPECT_EQ (decoded (allBytes(), 1), decoded (allBytes(), 6));
}

TEST (EBUTextField, utf8IsDecodedAndBadBytesAreReplaced)
{
    EXPECT_EQ (decoded ("Schön …\x8f", 2), "Schön …");
    EXPECT_EQ (decoded ("Sch\xf6n\xc0", 2), "Sch\xef\xbf\xbdn\xef\xbf\xbd");
}

TEST (EBUTextField, aCharacterOfUTF8ThatHoldsAnUnusedByteIsCutThere)
{
    EXPECT_EQ (decoded ("a\xc3\x8f"
                        "b",
                        2),
               "a\xef\xbf\xbd");
}

TEST (EBUTextField, utf16EndsAtAZeroUnit)
{
    EXPECT_EQ (decoded (std::string_view ("H\0i\0\0\0x\0", 8), 3), "Hi");
    EXPECT_EQ (decoded (std::string_view ("H\0i\0\x8f\x8f\x8f\x8f", 8), 3), "Hi");
    EXPECT_EQ (decoded (std::string_view ("\0H\0i\0\0", 6), 3), "Hi");
    EXPECT_EQ (decoded ("\x8f\x8f\x8f\x8f", 3), "");
}

TEST (EBUTextField, windowsAndLatinTextAgreeWithTheStandardConverters)
{
    EXPECT_EQ (decoded (allBytes(), 5), convertedByPoco<Poco::Windows1252Encoding> (allBytes()));
    EXPECT_EQ (decoded (allBytes(), 6), convertedByPoco<Poco::Latin1Encoding> (allBytes()));
}

TEST (EBUTextField, thereIsNoTextInAnyOtherEncoding)
{
    for (int encoding : { -1, 0, 4, 7, 99 })
    {
        EXPECT_EQ (decoded ("Hello", encoding), "") << encoding;
        EXPECT_FALSE (canDecodeEBUText (static_cast<TextEncoding> (encoding))) << encoding;
    }
    for (int encoding : { 1, 2, 3, 5, 6 })
        EXPECT_TRUE (canDecodeEBUText (static_cast<TextEncoding> (encoding))) << encoding;
}
