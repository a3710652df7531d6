// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/StringUtil.h"

#include "core/text/TextDecoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace ZEP::Core
{

namespace
{

using Row = StringUtil::PlainCounterpart;

/* In the order of the characters, none overlapping.

   Bullets become a dash and not an asterisk, since two asterisks are a line break in some cue sheets. The
   codes 80 to 9F are control codes that no text holds; when they turn up, a text of a Windows machine was
   read as Latin-1, so its quotes and dashes are put right. French guillemets, the Catalan middle dot and
   the letter apostrophe are spelling and stay, and so do the joiners (200C, 200D) that Persian words and
   emoji are built with. */
constexpr std::array rows {
    Row { 0x01, 0x08, "" },         // control codes up to the backspace
    Row { 0x0B, 0x0C, "\n" },       // vertical tab, form feed: a word processor's breaks
    Row { 0x0E, 0x1F, "" },         // the other control codes
    Row { 0x7F, 0x81, "" },         // delete, control codes
    Row { 0x82, 0x82, "'" },        // low quote, misread
    Row { 0x83, 0x83, "" },         // control code
    Row { 0x84, 0x84, "\"" },       // low double quote, misread
    Row { 0x85, 0x85, "..." },      // ellipsis, misread
    Row { 0x86, 0x8A, "" },         // control codes
    Row { 0x8B, 0x8B, "'" },        // pointed quote, misread
    Row { 0x8C, 0x90, "" },         // control codes
    Row { 0x91, 0x92, "'" },        // quotes, misread
    Row { 0x93, 0x94, "\"" },       // double quotes, misread
    Row { 0x95, 0x97, "-" },        // bullet, en and em dash, misread
    Row { 0x98, 0x9A, "" },         // control codes
    Row { 0x9B, 0x9B, "'" },        // pointed quote, misread
    Row { 0x9C, 0x9F, "" },         // control codes
    Row { 0xA0, 0xA0, " " },        // no-break space
    Row { 0xAD, 0xAD, "" },         // soft hyphen
    Row { 0x061C, 0x061C, "" },     // Arabic letter mark
    Row { 0x1680, 0x1680, " " },    // Ogham space
    Row { 0x180E, 0x180E, "" },     // Mongolian vowel separator
    Row { 0x2000, 0x200A, " " },    // spaces of a given width
    Row { 0x200B, 0x200B, "" },     // zero-width space
    Row { 0x200E, 0x200F, "" },     // direction marks
    Row { 0x2010, 0x2015, "-" },    // hyphens, dashes and the horizontal bar
    Row { 0x2018, 0x201B, "'" },    // single quotes
    Row { 0x201C, 0x201F, "\"" },   // double quotes
    Row { 0x2022, 0x2023, "-" },    // bullets
    Row { 0x2024, 0x2024, "." },    // one dot leader
    Row { 0x2025, 0x2025, ".." },   // two dot leader
    Row { 0x2026, 0x2026, "..." },  // ellipsis
    Row { 0x2028, 0x2029, "\n" },   // line and paragraph separator
    Row { 0x202A, 0x202E, "" },     // direction embeddings
    Row { 0x202F, 0x202F, " " },    // narrow no-break space
    Row { 0x2032, 0x2032, "'" },    // prime
    Row { 0x2033, 0x2033, "\"" },   // double prime
    Row { 0x2034, 0x2034, "'''" },  // triple prime
    Row { 0x2035, 0x2035, "'" },    // reversed prime
    Row { 0x2036, 0x2036, "\"" },   // reversed double prime
    Row { 0x2037, 0x2037, "'''" },  // reversed triple prime
    Row { 0x2039, 0x203A, "'" },    // pointed single quotes
    Row { 0x2043, 0x2043, "-" },    // hyphen bullet
    Row { 0x204C, 0x204D, "-" },    // black bullets
    Row { 0x2057, 0x2057, "''''" }, // quadruple prime
    Row { 0x205F, 0x205F, " " },    // mathematical space
    Row { 0x2060, 0x206F, "" },     // word joiner, invisible operators, direction isolates
    Row { 0x2212, 0x2212, "-" },    // minus
    Row { 0x2219, 0x2219, "-" },    // bullet operator
    Row { 0x25E6, 0x25E6, "-" },    // white bullet
    Row { 0x275B, 0x275C, "'" },    // heavy single quotes
    Row { 0x275D, 0x275E, "\"" },   // heavy double quotes
    Row { 0x2E3A, 0x2E3A, "--" },   // two-em dash
    Row { 0x2E3B, 0x2E3B, "---" },  // three-em dash
    Row { 0x3000, 0x3000, " " },    // ideographic space
    Row { 0xFE58, 0xFE58, "-" },    // small em dash
    Row { 0xFE63, 0xFE63, "-" },    // small hyphen
    Row { 0xFEFF, 0xFEFF, "" },     // byte order mark
    Row { 0xFFF9, 0xFFFC, "" },     // anchors of annotations and of pasted objects
};

constexpr unsigned leadByteOf (juce::juce_wchar character)
{
    const auto code = static_cast<unsigned> (character);

    if (code < 0x80)
        return code;
    if (code < 0x800)
        return 0xC0U | code >> 6U;

    return code < 0x10000 ? 0xE0U | code >> 12U : 0xF0U | code >> 18U;
}

constexpr bool tableIsInOrder()
{
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i].first > rows[i].last || (i > 0 && rows[i - 1].last >= rows[i].first))
            return false;

    return true;
}

static_assert (tableIsInOrder());

/* Whether a character of the table begins with the byte. Most bytes of most texts don't, and need no
   decoding. */
constexpr auto beginsRow = []
{
    std::array<bool, 256> result {};

    for (const auto& row : rows)
        for (auto byte = leadByteOf (row.first); byte <= leadByteOf (row.last); ++byte)
            result[byte] = byte < 0x80 || byte > 0xC1; // no character begins with those between

    return result;
}();

/* Behind the last byte; counted as bytes, not as characters as the framework would. */
juce::CharPointer_UTF8 endOf (const juce::String& text)
{
    auto* const bytes = text.getCharPointer().getAddress();
    return juce::CharPointer_UTF8 (bytes + std::strlen (bytes));
}

/* Whether all of eight bytes are ASCII and no control codes, so that no character of the table begins with one. */
bool arePrintableASCII (const char* eight)
{
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t high = ones << 7U;
    std::uint64_t block = 0;
    std::memcpy (&block, eight, sizeof (block));

    // Adding 1 sets the top bit of a delete, taking a blank away that of what lies below the blank.
    return ((block | (block + ones) | (block - ones * ' ')) & high) == 0;
}

/* The first character from `text` up to `end` that has a counterpart, which is set; the end when there is
   none. */
juce::CharPointer_UTF8 nextReplaced (juce::CharPointer_UTF8 text, juce::CharPointer_UTF8 end,
                                     const char*& counterpart)
{
    counterpart = nullptr;
    auto* place = text.getAddress();
    auto* const last = end.getAddress();

    while (place < last)
    {
        if (last - place >= 8 && arePrintableASCII (place))
        {
            place += 8;
            continue;
        }

        if (! beginsRow[static_cast<std::uint8_t> (*place)])
        {
            ++place;
            continue;
        }

        juce::CharPointer_UTF8 next (place);
        counterpart = StringUtil::plainCounterpart (next.getAndAdvance());

        if (counterpart != nullptr)
            break;

        place = next.getAddress();
    }

    return juce::CharPointer_UTF8 (place);
}

/* What the bytes show when nobody has said how they are encoded. ASCII when they show nothing. */
TextEncoding encodingShownBy (std::string_view bytes, const ByteSurvey& survey)
{
    if (bytes.starts_with (markOfUTF8))
        return TextEncodingUTF8;

    if (bytes.starts_with (markOfLittleEndianUTF16) || bytes.starts_with (markOfBigEndianUTF16))
        return TextEncodingUTF16;

    // Database fields are filled up with zeros; only a zero before the last character is a half of one.
    const auto lastCharacter = bytes.find_last_not_of ('\0');
    const auto hasInnerZero =
        survey.hasZero() && lastCharacter != std::string_view::npos && bytes.find ('\0') < lastCharacter;

    if (hasInnerZero && (survey.looksLikeLittleEndianUTF16() || survey.looksLikeBigEndianUTF16()))
        return TextEncodingUTF16;

    if (! survey.hasByteAbove127)
        return TextEncodingASCII;

    return survey.isUTF8 ? TextEncodingUTF8 : TextEncodingWindows1252;
}

juce::String textOfUTF8 (std::string_view bytes, const ByteSurvey& survey)
{
    return survey.isUTF8 && ! survey.hasZero() ? textFromStrictUTF8 (bytes) : decodedUTF8 (bytes);
}

juce::String textOfUTF16 (std::string_view bytes, const ByteSurvey& survey)
{
    if (bytes.starts_with (markOfLittleEndianUTF16) || bytes.starts_with (markOfBigEndianUTF16))
        return decodedUTF16 (bytes.substr (2), bytes.starts_with (markOfBigEndianUTF16));

    return decodedUTF16 (bytes, survey.zerosAtEvenPlaces > survey.zerosAtOddPlaces);
}

juce::String decoded (std::string_view bytes, const ByteSurvey& survey, TextEncoding encoding)
{
    if (encoding == TextEncodingUTF16)
        return textOfUTF16 (bytes, survey);

    if (! survey.hasByteAbove127)
        return textOfUTF8 (bytes, survey);

    if (encoding == TextEncodingUTF8)
        return textOfUTF8 (bytes.starts_with (markOfUTF8) ? bytes.substr (markOfUTF8.size()) : bytes, survey);

    return decodedSingleByteText (bytes, encoding);
}

constexpr bool isNamed (TextEncoding encoding)
{
    return encoding >= TextEncodingASCII && encoding <= TextEncodingLatin1;
}

} // namespace

juce::String StringUtil::replaceIllegalASCIICharacters (juce::String text)
{
    const char* counterpart = nullptr;
    auto kept = text.getCharPointer();
    const auto end = endOf (text);
    auto found = nextReplaced (kept, end, counterpart);

    if (counterpart == nullptr)
        return text;

    std::string plain;
    plain.reserve (static_cast<std::size_t> (end.getAddress() - kept.getAddress()));

    while (counterpart != nullptr)
    {
        plain.append (kept.getAddress(), found.getAddress());
        plain += counterpart;
        kept = ++found;
        found = nextReplaced (kept, end, counterpart);
    }

    plain.append (kept.getAddress(), found.getAddress());
    return textFromStrictUTF8 (plain);
}

bool StringUtil::hasIllegalASCIICharacters (const juce::String& text)
{
    const char* counterpart = nullptr;
    nextReplaced (text.getCharPointer(), endOf (text), counterpart);
    return counterpart != nullptr;
}

const char* StringUtil::plainCounterpart (juce::juce_wchar character) noexcept
{
    const auto* row = std::lower_bound (rows.begin(), rows.end(), character,
                                        [] (const Row& candidate, juce::juce_wchar wanted)
                                        { return candidate.last < wanted; });

    return row != rows.end() && row->first <= character ? row->replacement : nullptr;
}

std::span<const StringUtil::PlainCounterpart> StringUtil::plainCounterparts() noexcept { return rows; }

juce::String StringUtil::stringWithTextEncoding (const char* bytes, unsigned long length,
                                                 TextEncoding& encoding)
{
    if (bytes == nullptr || length == 0)
        return {};

    const std::string_view all (bytes, length);
    const ByteSurvey survey (all);

    if (isNamed (encoding))
        return decoded (all, survey, encoding);

    const auto shown = encodingShownBy (all, survey);

    if (shown != TextEncodingASCII)
        encoding = shown;

    return decoded (all, survey, shown);
}

juce::String StringUtil::fromUTF8 (std::string_view bytes) { return textOfUTF8 (bytes, ByteSurvey (bytes)); }

std::string StringUtil::toUTF8 (const juce::String& text)
{
    return { text.toRawUTF8(), text.getNumBytesAsUTF8() };
}

} // namespace ZEP::Core
