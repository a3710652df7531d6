// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/text/TextEncoding.h"

#include <cstddef>
#include <juce_core/juce_core.h>
#include <string_view>

namespace ZEP::Core
{

/** What one pass over the bytes of a text shows about its encoding. */
struct ZEP_CORE_API ByteSurvey
{
    explicit ByteSurvey (std::string_view bytes) noexcept; ///< Looks at each byte once; keeps none.

    /** The byte order of a text in UTF-16 without a mark, told from the zeros that Latin letters, digits
        and blanks have in one half of each unit: every unit of a short text, three in four of one that
        typographic or foreign letters run through, and never a zero in the other half. */
    [[nodiscard]] bool looksLikeLittleEndianUTF16() const noexcept;
    [[nodiscard]] bool looksLikeBigEndianUTF16() const noexcept; ///< The same for the other order of bytes.

    std::size_t length = 0;            ///< in bytes
    std::size_t zerosAtEvenPlaces = 0; ///< counted from 0: the upper halves of big-endian units
    std::size_t zerosAtOddPlaces = 0;  ///< the upper halves of little-endian units
    bool hasByteAbove127 = false;      ///< false: plain ASCII
    bool isUTF8 =
        true; ///< strictly: no overlong form, no surrogate, nothing cut off; a zero byte counts as valid
    /** No 8-bit. */
    [[nodiscard]] bool hasZero() const noexcept { return zerosAtEvenPlaces + zerosAtOddPlaces > 0; }
};

/** Whether all bytes are ASCII and none is a zero: the same text in every encoding but UTF-16. */
[[nodiscard]] ZEP_CORE_API bool isPlainASCII (std::string_view bytes) noexcept;

/** The byte order marks. */
inline constexpr std::string_view markOfUTF8 { "\xEF\xBB\xBF" };
inline constexpr std::string_view markOfLittleEndianUTF16 { "\xFF\xFE" }; ///< see markOfUTF8
inline constexpr std::string_view markOfBigEndianUTF16 { "\xFE\xFF" };    ///< see markOfUTF8

/** The text of bytes that are known to be strict UTF-8 without a zero. Any others corrupt memory. */
[[nodiscard]] ZEP_CORE_API juce::String textFromStrictUTF8 (std::string_view bytes);

/** Each leaves NUL characters out and writes U+FFFD for what it can't decode. */
[[nodiscard]] juce::String decodedUTF8 (std::string_view bytes);
[[nodiscard]] juce::String decodedUTF16 (std::string_view bytes, bool bigEndian); ///< As decodedUTF8().

/** Decodes Mac OS Roman, Windows-1252 or Latin-1. Codes that Windows-1252 leaves open become the control
    code of that number. */
[[nodiscard]] juce::String decodedSingleByteText (std::string_view bytes, TextEncoding encoding);

} // namespace ZEP::Core
