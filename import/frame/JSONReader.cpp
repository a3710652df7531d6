// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/JSONReader.h"

#include "core/system/CappedNumbers.h"
#include "core/system/Logger.h"
#include "core/text/StringUtil.h"
#include "core/text/TextDecoding.h"
#include "import/frame/ImportLimits.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

namespace ZEP::Overmarks
{

namespace
{

constexpr std::size_t mostDigitsOfWholeNumber = 18; // that many always fit 64 bits
constexpr std::size_t bytesPerContainer = 16;       // an event of a cue list takes more than a hundred

constexpr unsigned firstHighHalf = 0xd800;
constexpr unsigned firstLowHalf = 0xdc00;
constexpr unsigned lastLowHalf = 0xdfff;
constexpr unsigned replacementCharacter = 0xfffd;

bool isSpace (char byte) { return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t'; }

bool isDigit (char byte) { return byte >= '0' && byte <= '9'; }

void appendUTF8 (std::string& bytes, unsigned code)
{
    const auto text = juce::String::charToString (static_cast<juce::juce_wchar> (code));
    bytes += text.toRawUTF8();
}

/** Whether a number that fits no double is too large, and not too close to zero: where its first digit other than 0 stands. */
bool isTooLarge (std::string_view number)
{
    const auto behindMantissa = std::min (number.find_first_of ("eE"), number.size());
    const auto mantissa = number.substr (0, behindMantissa);
    const auto point = std::min (mantissa.find ('.'), mantissa.size());
    const auto firstDigit = std::min (mantissa.find_first_of ("123456789"), mantissa.size());

    auto power = number.substr (std::min (behindMantissa + 1, number.size()));
    const bool isNegative = power.starts_with ('-');
    power.remove_prefix (std::min (power.find_first_not_of ("+-0"), power.size()));

    constexpr std::size_t mostDigits = 15; // a text is shorter than such a power
    if (power.size() > mostDigits)
        return ! isNegative;

    std::int64_t exponent = 0;
    std::from_chars (power.data(), power.data() + power.size(), exponent);
    const auto place = static_cast<std::int64_t> (point) - static_cast<std::int64_t> (firstDigit);
    return place + (isNegative ? -exponent : exponent) > 0;
}

juce::var numberOf (std::string_view text, bool isWhole)
{
    if (isWhole && text.size() - (text.front() == '-' ? 1 : 0) <= mostDigitsOfWholeNumber)
    {
        juce::int64 number = 0;
        std::from_chars (text.data(), text.data() + text.size(), number);
        const bool isSmall =
            number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
        return isSmall ? juce::var (static_cast<int> (number)) : juce::var (number);
    }

    double number = 0.0;
    const auto [end, error] = std::from_chars (text.data(), text.data() + text.size(), number);

    if (error == std::errc::result_out_of_range && isTooLarge (text))
        number = std::numeric_limits<double>::infinity() * (text.front() == '-' ? -1.0 : 1.0);

    return number;
}

template <typename Number>
void noteTooMany (const char* things, Number most)
{
    Core::Logger::error ("A JSON text has more than " + juce::String (most) + " " + things
                         + "; it is not read");
}

} // namespace

juce::String JSONReader::textOf (const juce::var& value)
{
    return value.isObject() && ! value.isArray() ? juce::String ("[Object]") : value.toString();
}

std::optional<juce::var> JSONReader::read (const juce::String& text)
{
    const std::string_view bytes (text.toRawUTF8());

    if (! Core::ByteSurvey (bytes).isUTF8) // the framework's strings may hold half an emoji
        return read (Core::StringUtil::fromUTF8 (bytes));

    JSONReader reader (bytes);

    if (! reader.readRoot())
        return std::nullopt;

    return std::move (reader.root);
}

/** Each object and each list takes some hundred bytes of memory, and a hostile text asks for one with two. */
std::size_t JSONReader::mostContainers (std::size_t bytes)
{
    return Core::cappedSum (ImportLimits::limits().sparePartsOfJSON, bytes / bytesPerContainer);
}

bool JSONReader::readRoot()
{
    skipSpace();

    if (rest.empty())
        return true;

    if (! (take ('{') ? enter ('}') : take ('[') && enter (']')))
        return false;

    while (! open.empty())
        if (! readElement())
            return false;

    return true;
}

/** Reads the next element of the innermost object or list, or its end. */
bool JSONReader::readElement()
{
    skipSpace();

    if (take (open.back().end))
    {
        auto finished = std::move (open.back().value);
        open.pop_back();
        return accept (std::move (finished));
    }

    return (open.back().object == nullptr || readName()) && readValue();
}

bool JSONReader::readName()
{
    const auto name = rest.starts_with ('"') ? readString() : std::nullopt;

    if (! name.has_value() || name->empty())
        return false;

    auto& object = open.back();
    object.pooledName = pooledNames.find (*name);

    if (object.pooledName == nullptr)
        object.nameApart = recentTexts.textOf (*name);

    skipSpace();

    if (! take (':'))
        return false;

    skipSpace();
    return true;
}

bool JSONReader::readValue()
{
    if (rest.empty())
        return false;

    switch (rest.front())
    {
        case '{': return take ('{') && enter ('}');
        case '[': return take ('[') && enter (']');
        case 't': return readWord ("true", true);
        case 'f': return readWord ("false", false);
        case 'n': return readWord ("null", {});
        case '"':
        case '\'':
        {
            const auto text = readString();
            return text.has_value() && accept (recentTexts.textOf (*text));
        }
        default: return readNumber();
    }
}

bool JSONReader::enter (char end)
{
    if (const auto deepest = ImportLimits::limits().nestingOfJSON;
        std::cmp_greater_equal (open.size(), deepest))
    {
        noteTooMany ("objects and lists within each other", deepest);
        return false;
    }

    if (containersLeft == 0)
    {
        noteTooMany ("objects and lists", containersAllowed);
        return false;
    }

    --containersLeft;
    Open container;
    container.end = end;

    if (end == '}')
    {
        container.object = new Core::WideObject();
        container.value = container.object.get();
    }
    else
    {
        container.value = juce::Array<juce::var>();
    }

    open.push_back (std::move (container));
    return true;
}

/** Puts a value where it belongs, and goes on behind it. */
bool JSONReader::accept (juce::var value)
{
    add (std::move (value));
    return readBehindValue();
}

/** Into the innermost object or list; without one the value is the root. */
void JSONReader::add (juce::var value)
{
    if (open.empty())
        root = std::move (value);
    else if (auto& container = open.back(); container.object == nullptr)
        container.value.getArray()->add (std::move (value));
    else if (container.pooledName != nullptr)
        container.object->setProperty (*container.pooledName, value);
    else
        container.object->setMemberApart (container.nameApart, value);
}

const juce::Identifier* JSONReader::PooledNames::find (std::string_view name)
{
    auto& known = recent[std::hash<std::string_view>() (name) % recent.size()];

    if (known == nullptr || known->first != name)
    {
        auto place = names.find (name);

        if (place == names.end() && names.size() < mostPooledNames)
            place = names.emplace (name, Core::StringUtil::fromUTF8 (name)).first;
        if (place == names.end())
            return nullptr;

        known = &*place;
    }

    return &known->second;
}

/** Reads up to the next element: a comma, or the end of one or several containers. */
bool JSONReader::readBehindValue()
{
    while (! open.empty())
    {
        skipSpace();

        if (take (','))
            return true;

        if (! take (open.back().end))
            return false;

        auto finished = std::move (open.back().value);
        open.pop_back();
        add (std::move (finished));
    }

    return true;
}

bool JSONReader::readWord (std::string_view word, const juce::var& value)
{
    if (! rest.starts_with (word))
        return false;

    rest.remove_prefix (word.size());
    return accept (value);
}

std::size_t JSONReader::digitsAt (std::size_t place) const
{
    auto end = place;

    while (end < rest.size() && isDigit (rest[end]))
        ++end;

    return end - place;
}

bool JSONReader::readNumber()
{
    std::size_t length = rest.starts_with ('-') ? 1 : 0;
    const auto wholeDigits = digitsAt (length);

    if (wholeDigits == 0)
        return false;

    length += wholeDigits;
    bool isWhole = true;

    if (rest.substr (length).starts_with ('.'))
    {
        isWhole = false;
        length += 1 + digitsAt (length + 1);
    }

    if (length < rest.size() && (rest[length] == 'e' || rest[length] == 'E'))
    {
        isWhole = false;
        const bool hasSign = length + 1 < rest.size() && (rest[length + 1] == '-' || rest[length + 1] == '+');
        const auto start = length + (hasSign ? 2 : 1);
        length = start + digitsAt (start);

        if (length == start)
            return false;
    }

    const auto number = numberOf (rest.substr (0, length), isWhole);
    rest.remove_prefix (length);
    return accept (number);
}

/** Reads a text with the quotes around it. What it returns lasts until the next one is read. */
std::optional<std::string_view> JSONReader::readString()
{
    const char quote = rest.front();
    rest.remove_prefix (1);
    unescaped.clear();

    for (;;)
    {
        std::size_t length = 0;

        while (length < rest.size() && rest[length] != quote && rest[length] != '\\')
            ++length;

        if (length == rest.size())
            return std::nullopt;

        const auto piece = rest.substr (0, length);
        rest.remove_prefix (length);
        const bool isEnd = take (quote);

        if (isEnd && unescaped.empty())
            return piece;

        unescaped += piece;

        if (isEnd)
            return unescaped;
        if (! readEscape (unescaped))
            return std::nullopt;
    }
}

bool JSONReader::readEscape (std::string& bytes)
{
    static constexpr std::string_view letters = "abfnrt";
    static constexpr std::string_view meanings = "\a\b\f\n\r\t";

    rest.remove_prefix (1);

    if (take ('u'))
        return readUnicodeEscape (bytes);

    if (rest.empty())
        return false;

    const auto letter = letters.find (rest.front());
    bytes += letter != std::string_view::npos ? meanings[letter] : rest.front();
    rest.remove_prefix (1);
    return true;
}

bool JSONReader::readUnicodeEscape (std::string& bytes)
{
    auto code = takeFourHexDigits();

    if (! code.has_value() || *code == 0)
        return false;

    if (*code >= firstHighHalf && *code < firstLowHalf && rest.starts_with ("\\u"))
    {
        const auto behindHighHalf = rest;
        rest.remove_prefix (2);
        const auto low = takeFourHexDigits();

        if (low.has_value() && *low >= firstLowHalf && *low <= lastLowHalf)
            code = 0x10000 + ((*code - firstHighHalf) << 10) + (*low - firstLowHalf);
        else
            rest = behindHighHalf;
    }

    const bool isHalf = *code >= firstHighHalf && *code <= lastLowHalf;
    appendUTF8 (bytes, isHalf ? replacementCharacter : *code);
    return true;
}

std::optional<unsigned> JSONReader::takeFourHexDigits()
{
    unsigned code = 0;
    const auto four = rest.substr (0, 4);
    const auto [end, error] = std::from_chars (four.data(), four.data() + four.size(), code, 16);

    if (error != std::errc() || end != rest.data() + 4)
        return std::nullopt;

    rest.remove_prefix (4);
    return code;
}

bool JSONReader::take (char expected)
{
    if (! rest.starts_with (expected))
        return false;

    rest.remove_prefix (1);
    return true;
}

void JSONReader::skipSpace()
{
    while (! rest.empty() && isSpace (rest.front()))
        rest.remove_prefix (1);
}

} // namespace ZEP::Overmarks
