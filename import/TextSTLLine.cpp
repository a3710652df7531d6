// SPDX-License-Identifier: GPL-3.0-only
#include "import/TextSTLLine.h"

#include "import/frame/ImportedBytes.h"

#include <algorithm>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::string_view kRemarks[] = { "$", "//", "\\" };
constexpr std::string_view kStyleSwitches[] = { "^I", "^B", "^U" };
constexpr std::string_view kLineBreak = "|";
constexpr char kSeparator = ',';
constexpr std::string_view kSpacedSeparator = " , ";
constexpr std::ptrdiff_t kLengthOfTime = 11; // characters

bool beginsCharacter (char byte) { return (static_cast<unsigned char> (byte) & 0xC0U) != 0x80U; }

/** A time without its blanks, tabs among them; empty if it isn't as long as a timecode. */
std::string timeOf (std::string_view token)
{
    std::string time (token);
    std::erase_if (time, [] (char byte) { return byte == ' ' || byte == '\t'; });

    const bool fits = std::count_if (time.begin(), time.end(), beginsCharacter) == kLengthOfTime;
    return fits ? time : std::string();
}

/** What is left behind so many characters. */
std::string_view withoutFirst (std::string_view text, std::size_t characters)
{
    std::size_t at = 0;
    for (; characters > 0 && at < text.size(); --characters)
    {
        ++at;
        while (at < text.size() && ! beginsCharacter (text[at]))
            ++at;
    }
    return text.substr (at);
}

} // namespace

bool isTextSTLRemark (std::string_view line)
{
    return line.empty()
           || std::any_of (std::begin (kRemarks), std::end (kRemarks),
                           [line] (std::string_view mark) { return line.starts_with (mark); });
}

std::optional<TextSTLSubtitle> subtitleOfTextSTLLine (std::string line)
{
    for (const auto style : kStyleSwitches)
        replaceEach (line, style, {});
    replaceEach (line, kLineBreak, "\n");

    const std::string_view all = line;
    const auto firstComma = all.find (kSeparator);
    if (firstComma == std::string_view::npos)
        return std::nullopt;

    const auto secondComma = all.find (kSeparator, firstComma + 1);
    if (secondComma == std::string_view::npos)
        return std::nullopt;

    auto start = timeOf (all.substr (0, firstComma));
    auto end = timeOf (all.substr (firstComma + 1, secondComma - firstComma - 1));
    if (start.empty() || end.empty())
        return std::nullopt;

    // An end time with blanks inside stands nowhere in the line; the comma behind it does.
    const auto place = all.find (end);
    const auto behindEnd =
        place != std::string_view::npos ? all.substr (place + end.size()) : all.substr (secondComma - 1);
    return TextSTLSubtitle { std::move (start), std::move (end),
                             std::string (withoutFirst (behindEnd, kSpacedSeparator.size())) };
}

} // namespace ZEP::Overmarks
