// SPDX-License-Identifier: GPL-3.0-only
#include "quality/SpreadsheetFormula.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace overmarks
{

namespace
{

bool isDigit (char c) { return c >= '0' && c <= '9'; }
bool isLetter (char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isInAName (char c) { return isLetter (c) || isDigit (c); }
bool isOneOf (char c, std::string_view signs) { return signs.find (c) != std::string_view::npos; }

/** One sign for each character: wide forms become the usual ones, letters of other scripts an "x". */
std::string simplified (const juce::String& cell)
{
    constexpr juce::juce_wchar firstWide = 0xff01, lastWide = 0xff5e, distance = 0xfee0, lastASCII = 0x7f;
    std::string signs;

    for (auto p = cell.getCharPointer(); ! p.isEmpty();)
    {
        auto character = p.getAndAdvance();

        if (character >= firstWide && character <= lastWide)
            character -= distance;

        signs += character <= lastASCII ? static_cast<char> (character) : 'x';
    }

    return signs;
}

/** Two words with nothing but blanks between them, which stand in a sentence and in no formula. */
bool isASentence (std::string_view text)
{
    bool isBehindAWord = false, isBehindABlank = false;

    for (const char c : text)
    {
        if (isInAName (c) && isBehindAWord && isBehindABlank)
            return true;

        isBehindABlank = c == ' ';
        isBehindAWord = isInAName (c) || (isBehindAWord && c == ' ');
    }

    return false;
}

/** A name with a parenthesis right behind it, and no sentence before it. */
bool callsAFunction (std::string_view text)
{
    for (auto place = text.find ('('); place != std::string_view::npos; place = text.find ('(', place + 1))
        if (place > 0 && isInAName (text[place - 1]))
            return ! isASentence (text.substr (0, place));

    return false;
}

/** Begins with a name in quotes and something of it: 'FILE'!CELL. */
bool isFileAndCell (std::string_view text)
{
    const auto end = text.find ("'!");
    return text.starts_with ('\'') && end != std::string_view::npos && end > 1 && end + 2 < text.size();
}

/** Another program, PROGRAM|'FILE'!ITEM, or another file. */
bool reachesOutside (std::string_view text)
{
    const auto bar = text.find ('|');
    const auto namesAProgram = bar != std::string_view::npos && bar > 0 && isInAName (text[bar - 1]);
    return (namesAProgram && text.find ('!', bar) != std::string_view::npos) || isFileAndCell (text);
}

/** Numbers and cells with signs between them, read from left to right. */
class Arithmetic final
{
public:
    explicit Arithmetic (std::string_view textToRead) : text (textToRead) {}

    /** A lone number is a value, which looks as it did. */
    bool isThere()
    {
        for (;;)
        {
            passAll (" \t\r\n+-@(");

            if (! passCell() && ! passNumber())
                return false;

            passAll (" \t\r\n)%");

            if (place == text.size())
                return cells + signs > 0;

            if (passAll ("+-*/^&<>=:") == 0)
                return false;

            ++signs;
        }
    }

private:
    char at (std::size_t where) const { return where < text.size() ? text[where] : '\0'; }

    std::size_t passAll (std::string_view wanted)
    {
        const auto before = place;

        while (place < text.size() && isOneOf (text[place], wanted))
            ++place;

        return place - before;
    }

    bool passNumber()
    {
        const auto begins = isDigit (at (place)) || (isOneOf (at (place), ".,") && isDigit (at (place + 1)));
        return begins && passAll ("0123456789.,") > 0;
    }

    /** "B12", "$AB$3": at most three letters and seven digits, and no name goes on behind them. */
    bool passCell()
    {
        constexpr std::size_t mostLetters = 3, mostDigits = 7;
        auto end = place + (at (place) == '$' ? 1 : 0);
        const auto firstLetter = end;

        while (isLetter (at (end)))
            ++end;

        const auto letters = end - firstLetter;
        end += at (end) == '$' ? 1 : 0;
        const auto firstDigit = end;

        while (isDigit (at (end)))
            ++end;

        const auto digits = end - firstDigit;

        if (letters == 0 || letters > mostLetters || digits == 0 || digits > mostDigits
            || isLetter (at (end)))
            return false;

        place = end;
        ++cells;
        return true;
    }

    std::string_view text;
    std::size_t place = 0;
    int cells = 0;
    int signs = 0;
};

} // namespace

bool isSpreadsheetFormula (const juce::String& cell)
{
    const auto signs = simplified (cell);
    const auto begin = std::min (signs.find_first_not_of ("\t\r\n"), signs.size());
    const auto text = std::string_view (signs).substr (begin);

    if (text.empty() || ! isOneOf (text.front(), "=+-@"))
        return false;

    const auto rest = text.substr (1);

    if (text.front() == '=')
        return ! rest.starts_with ('=')
               && std::any_of (rest.begin(), rest.end(), [] (char c) { return isInAName (c) || c == '"'; });

    return callsAFunction (rest) || reachesOutside (rest) || Arithmetic (rest).isThere();
}

} // namespace overmarks
