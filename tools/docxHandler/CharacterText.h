// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace DocxHandler
{

/** The code point at `place`, which moves behind it. A byte that begins no valid sequence counts as U+FFFD. */
[[nodiscard]] char32_t nextCharacter (std::string_view text, std::size_t& place) noexcept;

void appendCharacter (std::string& text, char32_t character);

[[nodiscard]] std::size_t countCharacters (std::string_view text) noexcept;

/** The same text in valid UTF-8 without what an XML document can't hold; what is no UTF-8 becomes U+FFFD. */
[[nodiscard]] std::string cleaned (std::string_view text);

/** Whether a character may stand in an XML document. */
[[nodiscard]] bool isAllowedInXML (char32_t character) noexcept;

/** Without blanks, tabs, line breaks and no-break spaces at both ends. */
[[nodiscard]] std::string_view trimmed (std::string_view text) noexcept;

/** On one line: every control character is a blank. */
[[nodiscard]] std::string onOneLine (std::string_view text);

/** On one line, with nothing that steers a terminal: control characters of all kinds are blanks, and so are those that turn the
    direction of what follows. What is no UTF-8 becomes U+FFFD. */
[[nodiscard]] std::string withoutOrders (std::string_view text);

/** Letters and digits alone, small, ASCII; for comparing titles and labels that people have typed. */
[[nodiscard]] std::string skeleton (std::string_view text);

/** The same with the letters of all other scripts, as they stand; for telling whether anything is said. Dashes, arrows, blanks,
    quotes and the like are no letters. */
[[nodiscard]] std::string wordsAlone (std::string_view text);

/** Whether the first letter with a direction runs from right to left. */
[[nodiscard]] bool readsRightToLeft (std::string_view text) noexcept;

/** Whether there is a letter that runs from right to left. */
[[nodiscard]] bool holdsRightToLeft (std::string_view text) noexcept;

} // namespace DocxHandler
