// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookText.h"

#include <algorithm>
#include <array>

namespace ZEP::Core
{

namespace
{

using Byte = unsigned char;

constexpr std::size_t lengthOfEscape = 7;      // _xHHHH_
constexpr std::size_t lengthOfEscapeStart = 6; // _xHHHH

constexpr bool isForbiddenControl (Byte byte) { return byte < 0x20 && byte != '\t' && byte != '\n'; }

/** Bytes behind which there may be something that has to be escaped. */
constexpr auto suspicious = []
{
    std::array<bool, 256> table {};

    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = isForbiddenControl (static_cast<Byte> (i)) || i == '_' || i == 0xed || i == 0xef;

    return table;
}();

/** A text of two parts, read as one. */
class JoinedText final
{
public:
    JoinedText (std::string_view firstPart, std::string_view secondPart)
        : first (firstPart),
          second (secondPart)
    {
    }

    /** 0 behind the end. */
    [[nodiscard]] Byte operator[] (std::size_t place) const noexcept
    {
        if (place < first.size())
            return static_cast<Byte> (first[place]);

        place -= first.size();
        return place < second.size() ? static_cast<Byte> (second[place]) : Byte { 0 };
    }

private:
    std::string_view first;
    std::string_view second;
};

/** The code of three bytes of UTF-8. */
unsigned int codeOfThree (const JoinedText& text, std::size_t place)
{
    return (text[place] & 0x0fU) << 12U | (text[place + 1] & 0x3fU) << 6U | (text[place + 2] & 0x3fU);
}

/** A character that XML can't hold. */
struct Forbidden
{
    unsigned int code;
    std::size_t bytes; ///< 0 if there is none
};

Forbidden forbiddenAt (const JoinedText& text, std::size_t place)
{
    const auto byte = text[place];

    if (byte != 0 && isForbiddenControl (byte))
        return { byte, 1 };

    const bool isHalfPair = byte == 0xed && text[place + 1] >= 0xa0;
    const bool isNoCharacter = byte == 0xef && text[place + 1] == 0xbf && text[place + 2] >= 0xbe;
    return isHalfPair || isNoCharacter ? Forbidden { codeOfThree (text, place), 3 } : Forbidden { 0, 0 };
}

bool isHexDigit (Byte byte)
{
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

/** Whether what a reader finds there would look like an escape. Its last underscore may be the first one of a true escape. */
bool looksLikeEscape (const JoinedText& text, std::size_t place)
{
    if (text[place] != '_' || text[place + 1] != 'x')
        return false;

    for (std::size_t i = 2; i < lengthOfEscapeStart; ++i)
        if (! isHexDigit (text[place + i]))
            return false;

    const auto end = place + lengthOfEscapeStart;
    return text[end] == '_' || forbiddenAt (text, end).bytes > 0;
}

void appendEscape (std::string& out, unsigned int code)
{
    constexpr auto digits = "0123456789ABCDEF";
    out += "_x";

    for (int shift = 12; shift >= 0; shift -= 4)
        out += digits[code >> static_cast<unsigned int> (shift) & 0xfU];

    out += '_';
}

std::size_t nextSuspicious (std::string_view text, std::size_t place)
{
    const auto* const found = std::find_if (text.begin() + place, text.end(),
                                            [] (char c) { return suspicious[static_cast<Byte> (c)]; });
    return static_cast<std::size_t> (found - text.begin());
}

bool isInsideCharacter (char c) { return (static_cast<Byte> (c) & 0xc0U) == 0x80U; }

/** Han, Hangul, Kana, their full-width relatives and emoji, as the first byte of a character tells them. */
bool isWide (char c)
{
    const auto byte = static_cast<Byte> (c);
    return (byte >= 0xe3 && byte <= 0xed) || byte >= 0xf0;
}

/** 0 for the further bytes of a character. */
std::size_t widthOf (char c) { return isInsideCharacter (c) ? 0U : isWide (c) ? 2U : 1U; }

} // namespace

bool WorkbookText::needsEscapes (std::string_view text) noexcept
{
    const JoinedText joined (text, {});

    for (auto place = nextSuspicious (text, 0); place < text.size(); place = nextSuspicious (text, place + 1))
        if (looksLikeEscape (joined, place) || forbiddenAt (joined, place).bytes > 0)
            return true;

    return false;
}

std::string WorkbookText::escaped (std::string_view text, std::string_view following)
{
    const JoinedText joined (text, following);
    std::string out;
    out.reserve (text.size() + lengthOfEscape);

    for (std::size_t place = 0; place < text.size();)
    {
        const auto next = nextSuspicious (text, place);
        out += text.substr (place, next - place);
        place = next;

        if (place == text.size())
            break;

        if (const auto forbidden = forbiddenAt (joined, place); forbidden.bytes > 0)
        {
            appendEscape (out, forbidden.code);
            place += forbidden.bytes;
        }
        else if (looksLikeEscape (joined, place))
        {
            appendEscape (out, '_');
            ++place;
        }
        else
            out += text[place++];
    }

    return out;
}

std::string WorkbookText::asXML (std::string_view escapedText)
{
    std::string out;
    out.reserve (escapedText.size() + escapedText.size() / 8);

    for (const char c : escapedText)
        switch (c)
        {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            default: out += c; break;
        }

    return out;
}

std::size_t WorkbookText::length (std::string_view text) noexcept
{
    std::size_t units = 0;

    for (const char c : text)
        units += (isInsideCharacter (c) ? 0U : 1U) + (static_cast<Byte> (c) >= 0xf0 ? 1U : 0U);

    return units;
}

std::size_t WorkbookText::width (std::string_view text) noexcept
{
    std::size_t longest = 0;
    std::size_t line = 0;

    for (const char c : text)
    {
        line = c == '\n' ? 0 : line + widthOf (c);
        longest = std::max (longest, line);
    }

    return longest;
}

std::size_t WorkbookText::lines (std::string_view text, std::size_t room) noexcept
{
    if (text.size() <= room) // in bytes, which are never fewer than digits
        return 1 + static_cast<std::size_t> (std::count (text.begin(), text.end(), '\n'));

    std::size_t lines = 1;
    std::size_t line = 0;

    for (const char c : text)
    {
        line += widthOf (c);

        if (c == '\n' || line > room)
        {
            ++lines;
            line = c == '\n' ? 0 : widthOf (c);
        }
    }

    return lines;
}

} // namespace ZEP::Core
