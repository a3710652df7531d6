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
    static const std::set<std::string, std::less<>> joiners { "to",       "in",     "out", "tc",
                                                              "timecode", "start",  "end", "von",
                                                              "bis",      "beginn", "ende" };

    for (std::size_t start = 0; start <= between.size();)
    {
        const auto end = std::min (between.find_first_of (" \t\n:-", start), between.size());
        const auto word = between.substr (start, end - start);

        if (const auto letters = skeleton (word); ! letters.empty() && ! joiners.contains (letters))
            return false;

        start = end + 1;
    }

    return true;
}

} // namespace

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
