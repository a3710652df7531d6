// SPDX-License-Identifier: GPL-3.0-only
//   code             meaning
//   0 # ?            a digit; "0" always, "?" as a blank where the number has none
//   .  ,             point; comma between thousands, or a thousandth where it stands behind the last digit
//   %  E+00          hundredfold; power of ten
//   "x"  \x          literal text
//   _x  *x           room for an x; filled up with x: nothing here
//   y m d h s        parts of a date or a time; m is the minutes behind h and before s
//   .0 .00 .000      behind s: a fraction of the second
//   [h] [m] [s]      hours, minutes or seconds in all
//   AM/PM A/P        half days
//   [$€-407]         a currency; [Red] and the like: nothing here
//   [>=100]          which numbers a section is for
//   ;                ends a section: of numbers from 0, below 0, 0, and of texts; a last one with @ is that of texts
//   # ?/?  # ?/8     a fraction
#include "core/documents/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <utility>

namespace ZEP::Core
{
namespace
{

constexpr std::size_t mostCharacters = 255; // of a code, in any spreadsheet

char lower (char letter) { return static_cast<char> (std::tolower (static_cast<unsigned char> (letter))); }

bool startsWithWord (std::string_view text, std::string_view word)
{
    return text.size() >= word.size()
           && std::equal (word.begin(), word.end(), text.begin(),
                          [] (char a, char b) { return lower (a) == lower (b); });
}

std::size_t numberOfCharacters (std::string_view text)
{
    return static_cast<std::size_t> (
        std::count_if (text.begin(), text.end(),
                       [] (char byte) { return (static_cast<unsigned char> (byte) & 0xC0) != 0x80; }));
}

/** Bytes of the character in UTF-8 at the front of a text that isn't empty. */
std::size_t bytesOfCharacter (std::string_view text)
{
    std::size_t length = 1;

    while (length < text.size() && (static_cast<unsigned char> (text[length]) & 0xC0) == 0x80)
        ++length;

    return length;
}

} // namespace

/** Cuts a code into sections and tokens. */
class NumberFormat::Reader final
{
public:
    explicit Reader (std::string_view code) : rest (code) {}

    std::vector<Section> read()
    {
        sections.emplace_back();

        while (! rest.empty())
            takeNext();

        return std::move (sections);
    }

private:
    void takeNext()
    {
        switch (rest.front())
        {
            case ';':
                sections.emplace_back();
                rest.remove_prefix (1);
                return;
            case '"': return takeQuoted();
            case '\\': rest.remove_prefix (1); return takeLiteral();
            case '_':
            case '*': rest.remove_prefix (1); return skipCharacter();
            case '[': return takeBracket();
            default:
                if (! takeWord() && ! takeSign())
                    takeLiteral();
        }
    }

    void add (Kind kind, std::string_view text)
    {
        sections.back().tokens.push_back ({ kind, std::string (text) });
    }

    void addAndSkip (Kind kind, std::size_t length)
    {
        add (kind, rest.substr (0, length));
        rest.remove_prefix (length);
    }

    void takeQuoted()
    {
        rest.remove_prefix (1);
        const auto end = std::min (rest.find ('"'), rest.size());
        add (Kind::literal, rest.substr (0, end));
        rest.remove_prefix (std::min (end + 1, rest.size()));
    }

    void takeLiteral()
    {
        if (! rest.empty())
            addAndSkip (Kind::literal, bytesOfCharacter (rest));
    }

    void skipCharacter()
    {
        if (! rest.empty())
            rest.remove_prefix (bytesOfCharacter (rest));
    }

    void takeBracket()
    {
        const auto end = std::min (rest.find (']'), rest.size());
        const auto content = rest.substr (1, end - 1);
        rest.remove_prefix (std::min (end + 1, rest.size()));

        if (content.empty())
            return;

        const auto first = lower (content.front());
        const bool isOneLetter =
            std::all_of (content.begin(), content.end(), [first] (char c) { return lower (c) == first; });

        if (first == '$')
            add (Kind::literal, content.substr (1, std::min (content.find ('-'), content.size()) - 1));
        else if (isOneLetter && (first == 'h' || first == 'm' || first == 's'))
            add (Kind::elapsed, std::string (1, first));
        else if (first == '<' || first == '>' || first == '=')
            takeCondition (content);
    }

    void takeCondition (std::string_view content)
    {
        const auto second = content.size() > 1 ? content[1] : ' ';
        const bool hasTwo = second == '=' || second == '>';
        auto& section = sections.back();
        section.comparison = ! hasTwo                             ? content[0]
                             : content[0] == '<' && second == '>' ? 'n'
                             : content[0] == '<'                  ? 'l'
                                                                  : 'g';

        const auto bound = content.substr (hasTwo ? 2 : 1);

        if (std::from_chars (bound.data(), bound.data() + bound.size(), section.bound).ec != std::errc())
            section.comparison = 0;
    }

    bool takeWord()
    {
        for (const std::string_view halfDays : { "AM/PM", "A/P" })
            if (startsWithWord (rest, halfDays))
            {
                add (Kind::number, "A");
                rest.remove_prefix (halfDays.size());
                return true;
            }

        constexpr std::string_view general = "General";

        if (! startsWithWord (rest, general))
            return false;

        addAndSkip (Kind::general, general.size());
        return true;
    }

    bool takeSign()
    {
        const auto sign = lower (rest.front());
        const bool isPower = sign == 'e' && rest.size() > 1 && (rest[1] == '+' || rest[1] == '-');

        if (sign == '0' || sign == '#' || sign == '?')
            addAndSkip (Kind::digit, 1);
        else if (sign == '.')
            addAndSkip (Kind::point, 1);
        else if (sign == ',')
            addAndSkip (Kind::comma, 1);
        else if (sign == '%')
            addAndSkip (Kind::percent, 1);
        else if (sign == '/')
            addAndSkip (Kind::slash, 1);
        else if (sign == '@')
        {
            addAndSkip (Kind::general, 1);
            sections.back().isOfText = true;
        }
        else if (isPower)
            addAndSkip (Kind::exponent, 2);
        else if (const auto part = std::string_view ("ymdhsfegba").find (sign);
                 part != std::string_view::npos)
            takePartOfTime (sign, "ymdhsfyyyd"[part]);
        else
            return false;

        return true;
    }

    /** Years of eras and names of days count as years and days. */
    void takePartOfTime (char sign, char part)
    {
        add (Kind::number, std::string (1, part));

        while (! rest.empty() && lower (rest.front()) == sign)
            rest.remove_prefix (1);
    }

    std::string_view rest;
    std::vector<Section> sections;
};

NumberFormat::NumberFormat (std::string_view code)
{
    constexpr std::size_t mostBytesOfCharacter = 4;

    if (code.size() <= mostCharacters * mostBytesOfCharacter && numberOfCharacters (code) <= mostCharacters)
        sections = Reader (code).read();
}

std::string NumberFormat::usualCode (int number)
{
    static constexpr std::array<std::string_view, 59> codes { "General",
                                                              "0",
                                                              "0.00",
                                                              "#,##0",
                                                              "#,##0.00",
                                                              "General",
                                                              "General",
                                                              "General",
                                                              "General",
                                                              "0%",
                                                              "0.00%",
                                                              "0.00E+00",
                                                              "# ?/?",
                                                              "# ?"
                                                              "?/??",
                                                              "mm-dd-yy",
                                                              "d-mmm-yy",
                                                              "d-mmm",
                                                              "mmm-yy",
                                                              "h:mm AM/PM",
                                                              "h:mm:ss AM/PM",
                                                              "h:mm",
                                                              "h:mm:ss",
                                                              "m/d/yy h:mm",
                                                              "General",
                                                              "General",
                                                              "General",
                                                              "General",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "h:mm",
                                                              "h:mm:ss",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "#,##0 ;(#,##0)",
                                                              "#,##0 ;[Red](#,##0)",
                                                              "#,##0.00;(#,##0.00)",
                                                              "#,##0.00;[Red](#,##0.00)",
                                                              "#,##0;(#,##0);\"-\"",
                                                              "#,##0;(#,##0);\"-\"",
                                                              "#,##0.00;(#,##0.00);\"-\"",
                                                              "#,##0.00;(#,##0.00);\"-\"",
                                                              "mm:ss",
                                                              "[h]:mm:ss",
                                                              "mm:ss.0",
                                                              "##0.0E+0",
                                                              "@",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd",
                                                              "yyyy-mm-dd" };
    const bool isKnown = number >= 0 && static_cast<std::size_t> (number) < codes.size();
    return std::string (isKnown ? codes[static_cast<std::size_t> (number)] : codes[0]);
}

std::string NumberFormat::shown (double value, bool countsFrom1904) const
{
    bool showsMinus = false;
    const auto* section = sectionFor (value, showsMinus);

    if (section == nullptr || ! std::isfinite (value))
        return generalNumber (value);
    if (isOfTime (*section))
        return asTime (*section, value, showsMinus, countsFrom1904);

    const auto fraction = asFraction (*section, std::abs (value));
    const auto text = fraction.empty() ? asNumber (*section, std::abs (value)) : fraction;
    const bool isZero = text.find_first_of ("123456789") == std::string::npos;
    return showsMinus && ! isZero ? "-" + text : text;
}

std::size_t NumberFormat::sectionsOfNumbers() const
{
    constexpr std::size_t most = 3;
    const bool lastIsOfText = sections.size() > 1 && sections.size() <= most && sections.back().isOfText;
    return lastIsOfText ? sections.size() - 1 : std::min (sections.size(), most);
}

/** Which numbers a section is for; 0 as the comparison for all that are left over. */
std::pair<char, double> NumberFormat::conditionOf (std::size_t place) const
{
    const auto count = sectionsOfNumbers();

    if (sections[place].comparison != 0)
        return { sections[place].comparison, sections[place].bound };
    if (place + 1 == count)
        return { 0, 0.0 };

    return { place == 1 ? '<' : count == 2 ? 'g' : '>', 0.0 };
}

const NumberFormat::Section* NumberFormat::sectionFor (double value, bool& showsMinus) const
{
    const auto fits = [value] (char comparison, double bound)
    {
        switch (comparison)
        {
            case '<': return value < bound;
            case '>': return value > bound;
            case '=': return value == bound;
            case 'l': return value <= bound;
            case 'g': return value >= bound;
            case 'n': return value != bound;
            default: return true;
        }
    };

    showsMinus = value < 0.0;
    bool isAbove = false; // whether the numbers above zero have a section

    for (std::size_t place = 0; place < sectionsOfNumbers(); ++place)
    {
        const auto [comparison, bound] = conditionOf (place);

        if (fits (comparison, bound))
        {
            const bool isBelow =
                bound <= 0.0 && (comparison == '<' || comparison == 'l' || comparison == '=');
            showsMinus = showsMinus && ! isBelow && ! isAbove;
            return &sections[place];
        }

        isAbove = isAbove || (bound == 0.0 && (comparison == '>' || comparison == 'g'));
    }

    return nullptr;
}

bool NumberFormat::showsTime() const { return ! sections.empty() && isOfTime (sections.front()); }

bool NumberFormat::isOfTime (const Section& section)
{
    return std::any_of (section.tokens.begin(), section.tokens.end(),
                        [] (const Token& token) {
                            return token.kind == Kind::elapsed
                                   || (token.kind == Kind::number && token.text != "f");
                        });
}

} // namespace ZEP::Core
