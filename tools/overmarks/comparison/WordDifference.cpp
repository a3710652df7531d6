// SPDX-License-Identifier: GPL-3.0-only
#include "comparison/WordDifference.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <iterator>
#include <utility>

namespace overmarks
{

namespace
{

using Words = std::vector<std::string_view>;
using Kind = TextPiece::Kind;

// A table of so many cells is filled in no time; passages of more than 200 words each are told as a whole.
constexpr std::size_t mostCells = 40000;

enum class Sort
{
    word,
    blank,
    single
};

Sort sortOf (juce::juce_wchar character)
{
    constexpr juce::juce_wchar firstOfScriptsWithoutBlanks = 0x2e80, lastOfThem = 0x9fff;

    if (juce::CharacterFunctions::isWhitespace (character) || character == 0xa0)
        return Sort::blank;
    if (character >= firstOfScriptsWithoutBlanks && character <= lastOfThem)
        return Sort::single;

    // An apostrophe belongs to its word, and so do all letters that the C library may not know.
    const bool isOfAWord =
        juce::CharacterFunctions::isLetterOrDigit (character) || character >= 0xc0 || character == '\'';
    const bool isPunctuation = character >= 0x2010 && character <= 0x206f && character != 0x2019;
    return isOfAWord && ! isPunctuation ? Sort::word : Sort::single;
}

bool isBlank (std::string_view word)
{
    juce::CharPointer_UTF8 p (word.data());
    return ! word.empty() && sortOf (*p) == Sort::blank;
}

/** How much it says that two texts share this word: little for blanks and full stops, which are everywhere. */
std::uint16_t weightOf (std::string_view word)
{
    constexpr std::uint16_t light = 1, heavy = 4;
    const auto first = static_cast<unsigned char> (word.front());
    return isBlank (word) || (first < 0x80 && std::isalnum (first) == 0) ? light : heavy;
}

/** Collects pieces, neighbours of one kind as one. A blank between two replaced words belongs to what was replaced. */
class PieceList final
{
public:
    void add (Kind kind, std::string_view text)
    {
        if (kind == Kind::kept)
        {
            keep (text);
            return;
        }

        removed += blank;
        added += blank;
        blank.clear();
        (kind == Kind::removed ? removed : added) += text;
    }

    TextPieces take()
    {
        endChange();
        return std::move (pieces);
    }

private:
    void keep (std::string_view text)
    {
        if (isBlank (text) && ! removed.empty() && ! added.empty() && blank.empty())
        {
            blank = text;
            return;
        }

        endChange();
        append (Kind::kept, text);
    }

    void endChange()
    {
        while (! removed.empty() && ! added.empty() && removed.back() == ' ' && added.back() == ' ')
        {
            removed.pop_back();
            added.pop_back();
            blank += ' ';
        }

        append (Kind::removed, std::exchange (removed, {}));
        append (Kind::added, std::exchange (added, {}));
        append (Kind::kept, std::exchange (blank, {}));
    }

    void append (Kind kind, std::string_view text)
    {
        if (text.empty())
            return;

        if (! pieces.empty() && pieces.back().kind == kind)
            pieces.back().text += text;
        else
            pieces.push_back ({ kind, std::string (text) });
    }

    TextPieces pieces;
    std::string removed;
    std::string added;
    std::string blank; ///< kept, behind a replacement, until it is known what follows
};

/** For each pair of places the weight of what both texts have in common behind them. */
class CommonTable final
{
public:
    CommonTable (const Words& old, const Words& now)
        : width (now.size() + 1),
          cells ((old.size() + 1) * width)
    {
        for (auto i = old.size(); i-- > 0;)
            for (auto j = now.size(); j-- > 0;)
                cells[i * width + j] =
                    old[i] == now[j] ? static_cast<std::uint16_t> (at (i + 1, j + 1) + weightOf (old[i]))
                                     : std::max (at (i + 1, j), at (i, j + 1));
    }

    std::uint16_t at (std::size_t i, std::size_t j) const { return cells[i * width + j]; }

private:
    std::size_t width;
    std::vector<std::uint16_t> cells;
};

void addAll (PieceList& pieces, Kind kind, const Words& words)
{
    for (const auto word : words)
        pieces.add (kind, word);
}

void addMiddle (PieceList& pieces, const Words& old, const Words& now)
{
    std::size_t i = 0, j = 0;

    if ((old.size() + 1) * (now.size() + 1) <= mostCells)
    {
        const CommonTable common (old, now);

        while (i < old.size() && j < now.size())
        {
            if (old[i] == now[j])
            {
                pieces.add (Kind::kept, old[i++]);
                ++j;
            }
            else if (common.at (i + 1, j) >= common.at (i, j + 1))
                pieces.add (Kind::removed, old[i++]);
            else
                pieces.add (Kind::added, now[j++]);
        }
    }

    addAll (pieces, Kind::removed, { old.begin() + static_cast<std::ptrdiff_t> (i), old.end() });
    addAll (pieces, Kind::added, { now.begin() + static_cast<std::ptrdiff_t> (j), now.end() });
}

Words sortedWords (const std::string& text)
{
    auto words = wordsIn (text);
    std::erase_if (words,
                   [] (std::string_view word) { return word.find_first_not_of (" \t\r\n") == word.npos; });
    std::sort (words.begin(), words.end());
    return words;
}

} // namespace

std::vector<std::string_view> wordsIn (const std::string& text)
{
    Words words;
    const char* const begin = text.c_str();
    const char* first = begin;
    auto sortOfWord = Sort::single;

    const auto end = [&] (const char* place)
    {
        if (place != first)
            words.emplace_back (first, static_cast<std::size_t> (place - first));

        first = place;
    };

    for (juce::CharPointer_UTF8 p (begin); ! p.isEmpty();)
    {
        const auto* const place = p.getAddress();
        const auto sort = sortOf (p.getAndAdvance());

        if (sort != sortOfWord || sort == Sort::single)
            end (place);

        sortOfWord = sort;
    }

    end (begin + text.size());
    return words;
}

TextPieces wordDifference (const juce::String& old, const juce::String& now)
{
    const auto oldText = old.toStdString(), newText = now.toStdString();
    const auto oldWords = wordsIn (oldText), newWords = wordsIn (newText);
    PieceList pieces;
    const auto shorter = std::min (oldWords.size(), newWords.size());
    std::size_t atStart = 0, atEnd = 0;

    while (atStart < shorter && oldWords[atStart] == newWords[atStart])
        pieces.add (Kind::kept, oldWords[atStart++]);

    while (atEnd < shorter - atStart
           && oldWords[oldWords.size() - 1 - atEnd] == newWords[newWords.size() - 1 - atEnd])
        ++atEnd;

    const auto middle = [&] (const Words& words)
    {
        return Words (words.begin() + static_cast<std::ptrdiff_t> (atStart),
                      words.end() - static_cast<std::ptrdiff_t> (atEnd));
    };
    addMiddle (pieces, middle (oldWords), middle (newWords));
    addAll (pieces, Kind::kept, { oldWords.end() - static_cast<std::ptrdiff_t> (atEnd), oldWords.end() });
    return pieces.take();
}

std::string withSingleBlanks (const juce::String& text)
{
    std::string result;

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
    {
        const auto* const first = p.getAddress();

        if (sortOf (p.getAndAdvance()) != Sort::blank)
            result.append (first, static_cast<std::size_t> (p.getAddress() - first));
        else if (! result.empty() && result.back() != ' ')
            result += ' ';
    }

    if (! result.empty() && result.back() == ' ')
        result.pop_back();

    return result;
}

double likeness (const std::string& one, const std::string& other)
{
    const auto first = sortedWords (one), second = sortedWords (other);
    const auto most = std::max (first.size(), second.size());

    if (most == 0)
        return 1.0;

    Words common;
    std::set_intersection (first.begin(), first.end(), second.begin(), second.end(),
                           std::back_inserter (common));
    return static_cast<double> (common.size()) / static_cast<double> (most);
}

} // namespace overmarks
