// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZEP::Core
{

/** Shows numbers as a spreadsheet does: 1234.5 as "1,234.50", 0.5 as "50%" or, where the format is one of time, as "12:00:00".

    Digits, points, thousands, percentages, powers of ten and the literal texts between them come out as the format has them. So a
    timecode that is kept as the number 1020304 under the format 00":"00":"00":"00 comes out as "01:02:03:04".

    Dates and times don't follow the format's order and abbreviations, which readers of cue lists don't know:

        day                      2024-03-31
        time of day              hh:mm:ss, from 00 to 23 hours
        day and time             2024-03-31 hh:mm:ss
        time with [h], [m], [s]  hh:mm:ss, with as many hours as there are
        seconds with a fraction  hh:mm:ss.mmm, which readers of cue lists place on the nearest frame
        time below zero          -12:00:00 with [h], [m], [s], in a section of its own and where days count from 1904; else the time
                                 of day that it is
        seconds with frames      hh:mm:ss:ff where the format writes them as a literal text; its "ff", of which no program knows how
                                 many there are in a second, becomes a fraction

    A value never changes after its making; it may be used on several threads. */
class NumberFormat final
{
public:
    /** The format "General": a number as it is, of 15 digits at most. */
    NumberFormat() = default;

    /** @param code  as workbooks have it; sections, colours, conditions and currencies included. One that is longer than any
                     spreadsheet takes means "General" */
    explicit NumberFormat (std::string_view code);

    /** The code of a number below 164, which stands for the same format in every workbook; "General" for those without one. */
    [[nodiscard]] static std::string usualCode (int number);

    /** Whether numbers above zero are shown as dates or times. */
    [[nodiscard]] bool showsTime() const;

    /** The number in ASCII, but for the format's own literal texts in UTF-8; nothing where the format hides it.
        @param countsFrom1904  whether day 0 is 1904-01-01, and not 1900-01-00 */
    [[nodiscard]] std::string shown (double value, bool countsFrom1904) const;

private:
    enum class Kind
    {
        literal,
        digit, ///< "0", "#" or "?"
        point, ///< of a decimal number
        comma, ///< between thousands
        percent,
        exponent, ///< "E+" or "E-"
        slash,    ///< of a fraction, or between the parts of a date
        general,
        number, ///< a part of a date or a time: y, m, d, h, s or f, A for half days
        elapsed ///< h, m or s that isn't folded into a day
    };

    struct Token
    {
        Kind kind;
        std::string text;
    };

    struct Section
    {
        std::vector<Token> tokens;
        char comparison = 0; ///< '<', '>', '=', 'l' for <=, 'g' for >=, 'n' for <>; 0 for none
        double bound = 0.0;
        bool isOfText = false; ///< holds "@"
    };

    class Reader;
    struct Layout;
    struct TimeLayout;
    struct Fraction;

    /** @param showsMinus  whether a number below zero has its minus; else the section says in its own way that it is below zero */
    [[nodiscard]] const Section* sectionFor (double value, bool& showsMinus) const;
    [[nodiscard]] std::size_t sectionsOfNumbers() const;
    [[nodiscard]] std::pair<char, double> conditionOf (std::size_t place) const;
    [[nodiscard]] static bool isOfTime (const Section& section);
    [[nodiscard]] static std::string asNumber (const Section& section, double value);
    [[nodiscard]] static std::string asFraction (const Section& section, double value);
    [[nodiscard]] static std::string asTime (const Section& section, double value, bool showsMinus,
                                             bool countsFrom1904);
    [[nodiscard]] static std::string asTimeBelowZero (const Section& section, double value, bool showsMinus,
                                                      bool countsFrom1904);

    std::vector<Section> sections;
};

/** A number as it is: of 15 digits at most, with a power of ten where it is very large or very small. */
[[nodiscard]] std::string generalNumber (double value);

/** A number with so many digits behind the point, rounded as a person does who sees 15 digits of it. */
[[nodiscard]] std::string roundedNumber (double value, int decimals);

/** The day of a workbook's day number, as 2024-03-31. */
[[nodiscard]] std::string isoDate (long long day, bool countsFrom1904);

} // namespace ZEP::Core
