// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** A line of a subtitle file in text, in UTF-8. */
struct TextSTLSubtitle
{
    std::string start; ///< eleven characters, perhaps a timecode
    std::string end;   ///< eleven characters, perhaps a timecode
    std::string text;
};

/** Whether a line says nothing about a subtitle: a directive ("$FontName = Arial"), a comment ("//", "\") or nothing at all. */
[[nodiscard]] bool isTextSTLRemark (std::string_view line);

/** Reads a line of the form

        00:00:01:00 , 00:00:02:12 , Hello|there

    where ^I, ^B and ^U switch italics, bold and underlining, which is dropped, and | is a line break. The text may hold
    commas.

    The rule that is easily missed: the text begins three characters behind the first place in the line where the end time
    stands. Without the blanks around the comma it loses two characters, and in a line whose times are the same it begins
    with the end time.
    @param line  in UTF-8, without its line end
    @returns nothing for a line that has fewer than two commas, or whose times without their blanks aren't eleven characters long */
[[nodiscard]] std::optional<TextSTLSubtitle> subtitleOfTextSTLLine (std::string line);

} // namespace ZEP::Overmarks
