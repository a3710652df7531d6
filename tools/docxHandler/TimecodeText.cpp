// SPDX-License-Identifier: GPL-3.0-only
#include "TimecodeText.h"

#include "CharacterText.h"

#include <algorithm>
#include <set>

namespace DocxHandler
{

namespace
{

bool isDigit (std::string_view text, std::size_t place)
{
    return place < text.size() && text[place] >= '0' && text[place] <= '9';
}

bool isOneOf (std::string_view text, std::size_t place, std::string_view signs)
{
    return place < text.size() && signs.find (text[place]) != std::string_view::npos;
}

/* Two digits, or up to four where the last place counts milliseconds. */
std::size_t digitsAt (std::string_view text, std::size_t place)
{
    std::size_t count = 0;

    while (isDigit (text, place + count))
        ++count;

    return count;
}

/* Behind the timecode that begins here; 0 if none does. */
std::size_t endOfTimecode (std::string_view text, std::size_t place)
{
    const auto hours = digitsAt (text, place);

    if (hours != 1 && hours != 2)
        return 0;

    place += hours;

    for (int i = 0; i < 2; ++i)
    {
        if (! isOneOf (text, place, ":") || digitsAt (text, place + 1) != 2)
            return 0;

        place += 3;
    }

    const auto frames = digitsAt (text, place + 1);
    return isOneOf (text, place, ":;.,") && (frames == 2 || frames == 3) ? place + 1 + frames : 0;
}

/* Whether the words between timecodes only join or name them. */
bool joinsTimecodes (std::string_view between)
{
    static const std::set<std::string, std::less<>> joiners { "in",
                                                              "out",
                                                              "tc",
                                                              "timecode",
                                                              "start",
                                                              "end",
                                                              "von",
                                                              "beginn",
                                                              "ende",
                                                              "d\xc3\xa9"
                                                              "but",
                                                              "entr\xc3\xa9"
                                                              "e",
                                                              "\xd0\xa2\xd0\x9a", // Russian: timecode,
                                                              "\xd1\x82\xd0\xba",
                                                              "\xd1\x81", // from
                                                              "\xd0\xbe\xd1\x82" };

    for (std::size_t start = 0; start <= between.size();)
    {
        const auto end = std::min (between.find_first_of (" \t\n:-", start), between.size());
        const auto word = between.substr (start, end - start);

        if (! meansUntil (word) && ! joiners.contains (wordsAlone (word)))
            return false;

        start = end + 1;
    }

    return true;
}

} // namespace

bool meansUntil (std::string_view between)
{
    static const std::set<std::string, std::less<>> words {
        "",
        "to",
        "bis",
        "\xc3\xa0", // French
        "\xc3\x80",
        "\xd0\xb4\xd0\xbe", // Russian
        "\xd0\xbf\xd0\xbe",
        "\xe3\x81\x8b\xe3\x82\x89" // Japanese
    };

    return words.contains (wordsAlone (between));
}

std::vector<std::string> timecodesAlone (std::string_view text)
{
    std::vector<std::string> timecodes;
    std::size_t place = 0;

    for (const auto& found : findTimecodes (text))
    {
        if (! joinsTimecodes (text.substr (place, found.start - place)))
            return {};

        timecodes.emplace_back (text.substr (found.start, found.end - found.start));
        place = found.end;
    }

    return joinsTimecodes (text.substr (place)) ? timecodes : std::vector<std::string>();
}

std::string timecodeOfSeconds (std::string_view text)
{
    auto timecode = std::string (trimmed (text)) + ":00";
    return isTimecode (timecode) && findTimecodes (trimmed (text)).empty() ? timecode : std::string();
}

std::vector<FoundTimecode> findTimecodes (std::string_view text)
{
    std::vector<FoundTimecode> found;

    for (std::size_t place = 0; place < text.size();)
    {
        if (! isDigit (text, place))
        {
            ++place;
            continue;
        }

        const auto end = endOfTimecode (text, place);

        if (end > 0)
            found.push_back ({ place, end });

        place = end > 0 ? end : place + digitsAt (text, place);
    }

    return found;
}

bool isTimecode (std::string_view text)
{
    const auto core = trimmed (text);

    if (core == "--:--:--:--" || core == "--:--:--;--")
        return true;

    const auto found = findTimecodes (core);
    return found.size() == 1 && found.front().start == 0 && found.front().end == core.size();
}

} // namespace DocxHandler
