// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/TextEncodingDetector.h"

#include "core/text/TextDecoding.h"

namespace ZEP::Core
{

namespace
{

enum Finding : int
{
    NothingFound = 0,
    EightBitText = 1,
    ASCIIText = 2,
    UTF8WithMark = 3,
    UTF8WithoutMark = 4,
    LittleEndianUTF16WithMark = 5,
    LittleEndianUTF16WithoutMark = 6,
    BigEndianUTF16WithMark = 7,
    BigEndianUTF16WithoutMark = 8
};

Finding findingWithoutMark (const ByteSurvey& survey)
{
    if (survey.looksLikeLittleEndianUTF16())
        return LittleEndianUTF16WithoutMark;

    if (survey.looksLikeBigEndianUTF16())
        return BigEndianUTF16WithoutMark;

    if (survey.hasZero())
        return NothingFound;

    if (! survey.hasByteAbove127)
        return ASCIIText;

    return survey.isUTF8 ? UTF8WithoutMark : EightBitText;
}

} // namespace

TextEncodingDetector::TextEncodingDetector() = default;
TextEncodingDetector::~TextEncodingDetector() = default;

int TextEncodingDetector::DetectEncoding (const unsigned char* bytes, unsigned long length) const
{
    if (bytes == nullptr || length == 0)
        return NothingFound;

    const std::string_view text (reinterpret_cast<const char*> (bytes), length);

    if (text.starts_with (markOfUTF8))
        return UTF8WithMark;

    if (text.starts_with (markOfLittleEndianUTF16))
        return LittleEndianUTF16WithMark;

    if (text.starts_with (markOfBigEndianUTF16))
        return BigEndianUTF16WithMark;

    return findingWithoutMark (ByteSurvey (text));
}

} // namespace ZEP::Core
