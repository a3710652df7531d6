// SPDX-License-Identifier: GPL-3.0-only
#include "statistics/WordCount.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <iterator>
#include <string_view>

namespace overmarks
{

namespace
{

enum class Kind
{
    letter,
    digit,
    wholeWord,   ///< a character of a script without blanks
    mark,        ///< on or within a word, and nothing by itself
    wordPoint,   ///< belongs to a word between two of its letters or digits
    numberPoint, ///< belongs to a number between two of its digits
    separator
};

struct CharacterRange
{
    juce::juce_wchar first;
    juce::juce_wchar last;
};

// Chinese characters with the signs that repeat and count them, kana with the sign of a long vowel, bopomofo.
constexpr CharacterRange wholeWords[] = {
    { 0x3005, 0x3007 }, { 0x3031, 0x3035 }, { 0x3041, 0x3096 }, { 0x309d, 0x309f },   { 0x30a1, 0x30fa },
    { 0x30fc, 0x30ff }, { 0x3105, 0x312f }, { 0x31a0, 0x31bf }, { 0x31f0, 0x31ff },   { 0x3400, 0x4dbf },
    { 0x4e00, 0x9fff }, { 0xf900, 0xfaff }, { 0xff66, 0xff9d }, { 0x1b000, 0x1b16f }, { 0x20000, 0x3fffd },
};

// Soft hyphen, the two joiners, the marks of half-width kana, the byte order mark.
constexpr std::wstring_view marks { L"\u00ad\u200c\u200d\u2060\uff9e\uff9f\ufeff" };

// Zero-width space, which divides words in scripts without blanks, and the separators of lines and paragraphs.
constexpr std::wstring_view separatorsWithoutWidth { L"\u200b\u2028\u2029" };

// Apostrophes, hyphens, full stop, low line, the dot of Catalan and the marks within Hebrew and Arabic words and numbers.
constexpr std::wstring_view wordPoints {
    L"'\u2018\u2019\uff07-\u2010\u2011._\u00b7\u05be\u05f3\u05f4\u066b\u066c"
};

constexpr std::wstring_view numberPoints { L",:" };

bool isIn (std::wstring_view set, juce::juce_wchar character)
{
    return set.find (static_cast<wchar_t> (character)) != std::wstring_view::npos;
}

bool isWholeWord (juce::juce_wchar character)
{
    return character >= wholeWords[0].first
           && std::any_of (std::begin (wholeWords), std::end (wholeWords),
                           [character] (const CharacterRange& range)
                           { return character >= range.first && character <= range.last; });
}

Kind kindOf (juce::juce_wchar character)
{
    if (character >= '0' && character <= '9')
        return Kind::digit;
    if (isIn (wordPoints, character))
        return Kind::wordPoint;
    if (isIn (numberPoints, character))
        return Kind::numberPoint;
    if (isWholeWord (character))
        return Kind::wholeWord;
    if (isIn (separatorsWithoutWidth, character))
        return Kind::separator;
    if (isIn (marks, character) || wcwidth (static_cast<wchar_t> (character)) == 0)
        return Kind::mark;

    return std::iswalnum (static_cast<wint_t> (character)) != 0 ? Kind::letter : Kind::separator;
}

/** Goes through a text from left to right. */
class WordCounter final
{
public:
    void take (juce::juce_wchar character)
    {
        const auto kind = kindOf (character);

        switch (kind)
        {
            case Kind::letter:
            case Kind::digit: takePartOfWord (kind); break;
            case Kind::wordPoint:
            case Kind::numberPoint: takePoint (kind); break;
            case Kind::wholeWord: ++words; [[fallthrough]];
            case Kind::separator: isInWord = false; break;
            case Kind::mark: break;
        }
    }

    int words = 0;

private:
    void takePartOfWord (Kind kind)
    {
        if (! isInWord || ! joins (kind))
            ++words;

        isInWord = true;
        last = kind;
        point = Kind::separator;
    }

    /** Whether what the last point divides is one word. */
    bool joins (Kind next) const
    {
        return point != Kind::numberPoint || (last == Kind::digit && next == Kind::digit);
    }

    void takePoint (Kind kind)
    {
        isInWord = isInWord && point == Kind::separator;
        point = isInWord ? kind : Kind::separator;
    }

    bool isInWord = false;
    Kind last = Kind::separator;
    Kind point = Kind::separator; ///< behind the word; separator for none
};

} // namespace

int numberOfWords (const juce::String& text)
{
    WordCounter counter;

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
        counter.take (p.getAndAdvance());

    return counter.words;
}

} // namespace overmarks
