// SPDX-License-Identifier: GPL-3.0-only
#include "import/CueSheetText.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::string_view timecodeForm = "00:00:00:00";
constexpr std::string_view lineSeparator = "\xE2\x80\xA8";
constexpr std::size_t pairLength = 2 * timecodeForm.size() + lineSeparator.size(); // bytes

constexpr int numberOfBoxes = 50;
constexpr std::size_t mostLettersOfBox = 3;

std::string_view bytesOf (const juce::String& text) { return { text.toRawUTF8(), text.getNumBytesAsUTF8() }; }

bool isDigit (char c) { return c >= '0' && c <= '9'; }
bool isLetterOrDigit (char c) { return isDigit (c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool beginsCharacter (char byte) { return (static_cast<unsigned char> (byte) & 0xc0) != 0x80; }

bool isTimecode (std::string_view bytes)
{
    for (std::size_t i = 0; i < timecodeForm.size(); ++i)
        if (timecodeForm[i] == '0' ? ! isDigit (bytes[i]) : bytes[i] != timecodeForm[i])
            return false;

    return true;
}

bool isPair (std::string_view bytes)
{
    return bytes.size() == pairLength && bytes.substr (timecodeForm.size()).starts_with (lineSeparator)
           && isTimecode (bytes) && isTimecode (bytes.substr (timecodeForm.size() + lineSeparator.size()));
}

/** The letters and digits that a text begins with, counted up to one more than a box has. */
std::size_t lettersAtStart (std::string_view text)
{
    std::size_t length = 0;

    while (length < text.size() && length <= mostLettersOfBox && isLetterOrDigit (text[length]))
        ++length;

    return length;
}

} // namespace

std::vector<int> cueStarts (const juce::String& text)
{
    const auto bytes = bytesOf (text);
    std::unordered_map<std::string_view, int> firstPlaces; // of all pairs, also of those that overlap another
    std::vector<int> starts;
    std::size_t behindLast = 0;
    int character = 0;

    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        if (! beginsCharacter (bytes[i]))
            continue;

        if (const auto pair = bytes.substr (i, pairLength); isDigit (bytes[i]) && isPair (pair))
        {
            const auto place = firstPlaces.try_emplace (pair, character).first->second;

            if (i >= behindLast)
            {
                starts.push_back (place);
                behindLast = i + pairLength;
            }
        }

        ++character;
    }

    return starts;
}

std::optional<int> takeBoxesStart (const juce::String& text)
{
    const auto bytes = bytesOf (text);
    int boxes = 0; // whole lines in a row before this one that are boxes
    int start = 0;
    int character = 0;

    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        if (bytes[i] == '\n')
        {
            const auto line = bytes.substr (i + 1);
            const auto letters = lettersAtStart (line);
            start = boxes == 0 ? character : start;

            if (boxes == numberOfBoxes - 1 && letters > 0)
                return start;

            const bool isBox =
                letters > 0 && letters <= mostLettersOfBox && line.substr (letters).starts_with ('\n');
            boxes = isBox ? boxes + 1 : 0;
        }

        character += beginsCharacter (bytes[i]) ? 1 : 0;
    }

    return std::nullopt;
}

} // namespace ZEP::Overmarks
