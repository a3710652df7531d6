// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZEP::Core
{

/** How the text of a cell stands in a workbook.

    XML has no place for control codes, lone halves of a surrogate pair and U+FFFE and U+FFFF, and turns a carriage return into a
    line feed. A workbook therefore writes them as _xHHHH_, and a text that holds such a word itself gets its first
    underscore written that way: "_x000D_" stands there as "_x005F_x000D_". */
class WorkbookText final
{
public:
    WorkbookText() = delete;

    /** Whether a text stands there in other characters than its own. */
    [[nodiscard]] static bool needsEscapes (std::string_view text) noexcept;

    /** A text with its escapes, as an XML reader gives it back.
        @param following  the text that comes right behind it in the same cell: an escape may begin in one run and end in the next */
    [[nodiscard]] static std::string escaped (std::string_view text, std::string_view following = {});

    /** A text that has its escapes as the content of an XML element. */
    [[nodiscard]] static std::string asXML (std::string_view escapedText);

    /** The length of a text as workbooks count it, in units of UTF-16. */
    [[nodiscard]] static std::size_t length (std::string_view text) noexcept;

    /** The width of the longest line of a text, in digits; letters of East Asia are two of them wide. */
    [[nodiscard]] static std::size_t width (std::string_view text) noexcept;

    /** The lines that a text takes where one has room for so many digits, rather too many than too few. At least 1. */
    [[nodiscard]] static std::size_t lines (std::string_view text, std::size_t room) noexcept;
};

} // namespace ZEP::Core
