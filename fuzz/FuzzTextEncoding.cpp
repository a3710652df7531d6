// SPDX-License-Identifier: GPL-3.0-only
// Text from a stranger in no encoding or in any: whatever is made of it is sound text, and what is text already stays as it is.
#include "Application.h"

#include "core/text/MacOSRomanEncoding.h"
#include "core/text/StringUtil.h"
#include "core/text/TextDecoding.h"
#include "core/text/TextEncoding.h"
#include "core/text/TextEncodingDetector.h"
#include "import/frame/EventFileImporter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

const juce::String replacement { juce::String::charToString (0xFFFD) };

juce::String decoded (std::string_view bytes, TextEncoding encoding)
{
    return StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);
}

/** What the detector answers is so. */
void checkDetector (std::string_view bytes, const ByteSurvey& survey)
{
    const auto* unsignedBytes = static_cast<const unsigned char*> (static_cast<const void*> (bytes.data()));
    const auto answer = TextEncodingDetector().DetectEncoding (unsignedBytes, bytes.size());
    constexpr int highest = 8;
    law (answer >= 0 && answer <= highest, "the detector answers from 0 to 8");
    law ((answer == 3) == bytes.starts_with (markOfUTF8), "3 is the mark of UTF-8");

    if (answer == 2)
        law (! survey.hasByteAbove127 && ! survey.hasZero() && ! bytes.empty(), "2 is ASCII");
    if (answer == 4)
        law (survey.isUTF8 && survey.hasByteAbove127 && ! survey.hasZero(), "4 is UTF-8");
    if (answer == 1)
        law (survey.hasByteAbove127 && ! survey.isUTF8 && ! survey.hasZero(), "1 is 8-bit text");
    if (answer == 6 || answer == 8)
        law (survey.hasZero() && bytes.size() % 2 == 0, "UTF-16 has whole units");
}

void checkUTF8 (std::string_view bytes, const ByteSurvey& survey)
{
    const auto text = StringUtil::fromUTF8 (bytes);
    checkText (text);
    const auto written = StringUtil::toUTF8 (text);
    law (StringUtil::fromUTF8 (written) == text, "text is written and read as the same text");

    if (survey.isUTF8 && ! survey.hasZero())
        law (written == bytes, "UTF-8 stays what it is, byte by byte");
    else if (! survey.isUTF8)
        law (text.contains (replacement), "what isn't UTF-8 shows in the text");
}

/** Each byte of an 8-bit encoding is a character, and none is lost. */
void checkSingleBytes (std::string_view bytes)
{
    const auto zeros = std::count (bytes.begin(), bytes.end(), '\0');
    const auto characters = static_cast<int> (static_cast<std::ptrdiff_t> (bytes.size()) - zeros);

    for (const auto encoding : { TextEncodingMacOSRoman, TextEncodingWindows1252, TextEncodingLatin1 })
        law (decoded (bytes, encoding).length() == characters, "each byte is a character");

    const macOSRomanEncoding roman;

    for (const char byte : bytes)
    {
        const auto unsignedByte = static_cast<unsigned char> (byte);
        const auto character = roman.convert (&unsignedByte);
        unsigned char back = 0;
        law (character >= 0 && roman.convert (character, &back, 1) == 1 && back == unsignedByte,
             "a byte of Mac OS Roman becomes a character and the same byte");
    }
}

/** Every encoding that a file or a user may name, and numbers that name none. */
void checkEncodings (std::string_view bytes)
{
    constexpr int lowest = -1, highest = 7;

    for (int number = lowest; number <= highest; ++number)
    {
        auto encoding = static_cast<TextEncoding> (number);
        const auto text = StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);
        checkText (text);
        law (encoding >= TextEncodingUnknown || number < 0, "what the bytes show is an encoding");

        if (number == TextEncodingUnknown && encoding != TextEncodingUnknown)
            law (decoded (bytes, encoding) == text, "the encoding that was found reads the same text");
    }
}

void checkPlainCounterparts (const juce::String& text)
{
    const auto plain = StringUtil::replaceIllegalASCIICharacters (text);
    checkText (plain);
    law (! StringUtil::hasIllegalASCIICharacters (plain), "nothing is left to be replaced");
    law (StringUtil::hasIllegalASCIICharacters (text) == (plain != text), "it is known before if it changes");
    const auto rich = RichTextString (text).replaceIllegalASCIICharacters();
    checkText (rich);
    law (rich.getText() == plain, "rich text is replaced as plain text is");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    const auto bytes = bytesOfInput (data, size);
    const ByteSurvey survey (bytes);
    law (survey.length == size, "all bytes are looked at");

    checkDetector (bytes, survey);
    checkUTF8 (bytes, survey);
    checkSingleBytes (bytes);
    checkEncodings (bytes);
    checkPlainCounterparts (StringUtil::fromUTF8 (bytes));

    std::string whole (bytes);
    const auto encoding = EventFileImporter::detectEncoding (whole);
    law (bytes.ends_with (whole), "a mark alone is cut off a file");
    checkText (decoded (whole, encoding));
    return 0;
}
