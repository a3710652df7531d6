// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/CellReading.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <initializer_list>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

// White space that isn't ASCII and that word processors and spreadsheets leave around a word.
constexpr std::string_view noBreakSpace = "\xC2\xA0";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::array wideSpaces { noBreakSpace, byteOrderMark };

bool isBlank (char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

char lowerCase (char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<char> (byte - 'A' + 'a') : byte;
}

std::size_t spaceAtStart (std::string_view text)
{
    if (text.empty() || isBlank (text.front()))
        return text.empty() ? 0 : 1;

    for (const auto& space : wideSpaces)
        if (text.starts_with (space))
            return space.size();

    return 0;
}

std::size_t spaceAtEnd (std::string_view text)
{
    if (text.empty() || isBlank (text.back()))
        return text.empty() ? 0 : 1;

    for (const auto& space : wideSpaces)
        if (text.ends_with (space))
            return space.size();

    return 0;
}

/** Characters that a message must not carry: control codes, line and paragraph separators, and what turns the
    direction of the text around. */
bool disturbsMessage (juce::juce_wchar character)
{
    const auto within = [character] (juce::juce_wchar first, juce::juce_wchar last)
    { return character >= first && character <= last; };
    return within (0, 0x1F) || within (0x7F, 0x9F) || within (0x200E, 0x200F) || within (0x2028, 0x202E)
           || within (0x2066, 0x2069);
}

juce::juce_wchar forMessage (juce::juce_wchar character)
{
    if (character == '\n' || character == '\r' || character == '\t')
        return ' ';

    return disturbsMessage (character) ? '?' : character;
}

/** A decimal number at the start of a cell, taken apart. */
struct Number
{
    int whole = 0;
    std::string_view fraction; ///< digits behind the decimal sign, without the zeros at the end
    std::string_view rest;     ///< what follows the number, blanks included
    bool maybeThousands =
        false; ///< "1,000", which is a thousand to one half of the world and one to the other

    [[nodiscard]] bool isWhole() const { return fraction.empty() && ! maybeThousands; }
};

constexpr std::size_t signAndThreeDigits = 4;

std::optional<Number> numberAtStart (std::string_view cell)
{
    Number number;
    const auto* const end = cell.data() + cell.size();
    const auto [next, error] = std::from_chars (cell.data(), end, number.whole);

    if (error != std::errc())
        return std::nullopt;

    number.rest = { next, static_cast<std::size_t> (end - next) };

    if (number.rest.starts_with ('.') || number.rest.starts_with (','))
    {
        const auto digits = std::min (number.rest.find_first_not_of ("0123456789", 1), number.rest.size());
        number.maybeThousands = digits == signAndThreeDigits;
        number.fraction = number.rest.substr (1, digits - 1);
        number.fraction = number.fraction.substr (0, number.fraction.find_last_not_of ('0') + 1);
        number.rest.remove_prefix (digits);
    }

    return number;
}

bool isOneOf (int number, std::initializer_list<int> numbers)
{
    return std::find (numbers.begin(), numbers.end(), number) != numbers.end();
}

bool isOneOf (std::string_view cell, std::initializer_list<std::string_view> words)
{
    return std::any_of (words.begin(), words.end(),
                        [cell] (std::string_view word) { return isSameWord (cell, word); });
}

/** The value of the first row whose word or number the cell holds. */
template <typename Value, std::size_t Rows>
std::optional<Value> valueInTable (std::string_view cell,
                                   const std::array<std::pair<std::string_view, Value>, Rows>& table)
{
    for (const auto& [word, value] : table)
        if (isSameWord (cell, word))
            return value;

    const auto number = wholeNumberInCell (cell);

    for (const auto& [word, value] : table)
        if (number == static_cast<int> (value))
            return value;

    return std::nullopt;
}

std::optional<int> codeOfSeconds (const Number& number, bool unitWritten)
{
    if (number.whole == 2 && number.fraction == "67")
        return 267;
    if (number.whole == 3 && number.fraction == "33")
        return 333;

    const bool known =
        isOneOf (number.whole, { 1, 2, 3, 5 }) || (! unitWritten && isOneOf (number.whole, { 4, 267, 333 }));
    return known && number.isWhole() ? std::optional (number.whole) : std::nullopt;
}

std::optional<int> codeAmong (const Number& number, std::initializer_list<int> codes)
{
    return number.isWhole() && isOneOf (number.whole, codes) ? std::optional (number.whole) : std::nullopt;
}

} // namespace

std::string_view trimmedCell (const juce::String& text)
{
    std::string_view cell = text.toRawUTF8();

    while (const auto bytes = spaceAtStart (cell))
        cell.remove_prefix (bytes);
    while (const auto bytes = spaceAtEnd (cell))
        cell.remove_suffix (bytes);

    return cell;
}

juce::String trimmedText (const juce::String& text)
{
    const auto cell = trimmedCell (text);

    if (cell.size() == text.getNumBytesAsUTF8())
        return text;

    return juce::String::fromUTF8 (cell.data(), static_cast<int> (cell.size()));
}

bool isSameWord (std::string_view one, std::string_view other)
{
    std::size_t inOne = 0;
    std::size_t inOther = 0;
    const auto skipBlanks = [] (std::string_view text, std::size_t& place)
    {
        while (place < text.size() && isBlank (text[place]))
            ++place;
    };

    for (;; ++inOne, ++inOther)
    {
        skipBlanks (one, inOne);
        skipBlanks (other, inOther);

        if (inOne == one.size() || inOther == other.size())
            return inOne == one.size() && inOther == other.size();
        if (lowerCase (one[inOne]) != lowerCase (other[inOther]))
            return false;
    }
}

juce::String quotedCell (const juce::String& text)
{
    constexpr int longestWhole = 40;
    static const juce::String cutMark ("...");
    const auto cell = trimmedCell (text);
    const juce::CharPointer_UTF8 begin (cell.data());
    const juce::CharPointer_UTF8 end (cell.data() + cell.size());
    juce::String shown;
    int length = 0;

    for (auto character = begin; character < end; ++length)
    {
        if (length == longestWhole)
        {
            shown = shown.dropLastCharacters (cutMark.length()) + cutMark;
            break;
        }

        shown << juce::String::charToString (forMessage (character.getAndAdvance()));
    }

    return "\"" + shown + "\"";
}

std::optional<int> wholeNumberInCell (std::string_view cell)
{
    const auto number = numberAtStart (cell);
    return number && number->isWhole() && number->rest.empty() ? std::optional (number->whole) : std::nullopt;
}

std::optional<bool> flagInCell (std::string_view cell)
{
    if (isOneOf (cell, { "yes", "true", "1", "x", "ja", "fn" }))
        return true;
    if (isOneOf (cell, { "no", "false", "0", "nein" }))
        return false;

    return std::nullopt;
}

std::optional<EventType> eventTypeInCell (std::string_view cell)
{
    using Row = std::pair<std::string_view, EventType>;
    static constexpr std::array types {
        Row { "ADR Cue", EventTypeADRCue }, Row { "Streamer", EventTypeStreamer },
        Row { "Marker", EventTypeMarker },  Row { "Flutter", EventTypeFlutter },
        Row { "Fade In", EventTypeFadeIn }, Row { "Fade Out", EventTypeFadeOut },
    };
    return valueInTable (cell, types);
}

std::optional<ForcedNarrativeRegion> regionInCell (std::string_view cell)
{
    using Row = std::pair<std::string_view, ForcedNarrativeRegion>;
    static constexpr std::array regions {
        Row { "Bottom", ForcedNarrativeRegionBottom },
        Row { "Top", ForcedNarrativeRegionTop },
        Row { "Left", ForcedNarrativeRegionLeft },
        Row { "Right", ForcedNarrativeRegionRight },
    };
    return valueInTable (cell, regions);
}

std::optional<int> tempoInCell (std::string_view cell)
{
    constexpr int slowest = 21;
    constexpr int fastest = 299;
    constexpr int noTempo = -1;

    if (cell.empty() || cell == "--" || wholeNumberInCell (cell) == noTempo)
        return noTempo;

    const auto number = numberAtStart (cell);
    const bool known = number && number->whole >= slowest && number->whole <= fastest
                       && isOneOf (number->rest, { "", "BPM" });
    return known ? std::optional (number->whole) : std::nullopt;
}

DurationUnit durationUnitOf (EventType type, bool inBars)
{
    switch (type)
    {
        case EventTypeStreamer: return inBars ? DurationUnit::bars : DurationUnit::seconds;
        case EventTypeADRCue: return DurationUnit::seconds;
        case EventTypeFlutter: return DurationUnit::frames;
        case EventTypeMarker:
        case EventTypeFadeIn:
        case EventTypeFadeOut: break;
    }

    return DurationUnit::none;
}

std::optional<int> durationInCell (std::string_view cell, DurationUnit unit)
{
    constexpr int noDuration = -1;

    if (wholeNumberInCell (cell) == noDuration || isOneOf (cell, { "", "No streamer duration" }))
        return noDuration;

    const auto number = numberAtStart (cell);
    const auto hasUnit = [&number] (std::string_view singular, std::string_view plural) {
        return isOneOf (number->rest, { "", singular, plural });
    };

    if (! number)
        return std::nullopt;

    switch (unit)
    {
        case DurationUnit::seconds:
            if (hasUnit ("second", "seconds"))
                return codeOfSeconds (*number, ! number->rest.empty());
            break;
        case DurationUnit::bars:
            if (hasUnit ("bar", "bars"))
                return codeAmong (*number, { 1, 2, 4 });
            break;
        case DurationUnit::frames:
            if (hasUnit ("frame", "frames"))
                return codeAmong (*number, { 1, 4, 8, 12 });
            break;
        case DurationUnit::none:
            if (number->rest.empty())
                return codeAmong (*number, { 1, 2, 3, 4, 5, 8, 12, 267, 333 });
            break;
    }

    return std::nullopt;
}

} // namespace ZEP::Overmarks
