// SPDX-License-Identifier: GPL-3.0-only
#include "list/FormerOrder.h"

#include "list/ScratchMemory.h"

#include <algorithm>
#include <clocale>
#include <locale.h>
#include <numeric>
#include <span>
#include <utility>

namespace ZEP::Overmarks
{

namespace
{

constexpr std::uint32_t nowhere = 0xffffffff;

/** Nothing for a locale of this thread alone, which couldn't be told from another one. */
std::optional<std::string> localeOfLetters()
{
    if (::uselocale (nullptr) != LC_GLOBAL_LOCALE)
        return std::nullopt;

    const auto* const name = std::setlocale (LC_CTYPE, nullptr);
    return name != nullptr ? std::optional (std::string (name)) : std::nullopt;
}

using NewPlaces = ScratchVector<std::uint32_t>;

/** Where the events of a list stand in another one, as far as they stand in the same order there.
    @returns nothing where more than so many of either list aren't found in the other */
std::optional<NewPlaces> placesIn (const EventPlaces& now, const std::vector<std::shared_ptr<Event>>& before,
                                   std::size_t mostUnfound)
{
    constexpr std::size_t reach = 32; // so many neighbours that come or go together are recognised
    std::size_t i = 0, j = 0, unfound = 0;
    NewPlaces places;
    places.reserve (before.size());
    const auto areSame = [&] (std::size_t one, std::size_t other)
    { return one < before.size() && other < now.size() && before[one] == *now[other]; };
    const auto passOver = [&] (std::size_t ofBefore, std::size_t ofNow)
    {
        places.insert (places.end(), ofBefore, nowhere);
        i += ofBefore;
        j += ofNow;
        unfound += std::max (ofBefore, ofNow);
    };

    while (i < before.size() && j < now.size() && unfound <= mostUnfound)
    {
        if (areSame (i, j))
        {
            places.push_back (static_cast<std::uint32_t> (j++));
            ++i;
            continue;
        }

        std::size_t steps = 1;
        while (steps < reach && ! areSame (i + steps, j) && ! areSame (i, j + steps))
            ++steps;

        if (areSame (i + steps, j))
            passOver (steps, 0);
        else if (areSame (i, j + steps))
            passOver (0, steps);
        else
            passOver (1, 1);
    }

    passOver (before.size() - i, now.size() - j);
    return unfound <= mostUnfound ? std::optional (std::move (places)) : std::nullopt;
}

} // namespace

// ---- cells ---------------------------------------------------------------------------------------------------------------

FormerOrder::Noted::Noted (const SortCell& cell)
    : timecode (cell.timecode),
      number (cell.number),
      hasInPoint (cell.hasInPoint),
      hasTime (cell.hasTime),
      hasCharacter (cell.hasCharacter)
{
    if (cell.text != nullptr)
        text = *cell.text;
}

bool FormerOrder::Noted::isSame (const SortCell& cell) const noexcept
{
    const auto areOnePiece = [] (const juce::String& a, const juce::String& b)
    { return a.getCharPointer().getAddress() == b.getCharPointer().getAddress(); };

    return timecode == cell.timecode && number == cell.number && hasInPoint == cell.hasInPoint
           && hasTime == cell.hasTime && hasCharacter == cell.hasCharacter
           && (cell.text != nullptr ? areOnePiece (text, *cell.text) : text.isEmpty());
}

// ---- an order that was found anew ----------------------------------------------------------------------------------------

void FormerOrder::begin (const juce::String& sortKey, bool descending, std::size_t number)
{
    columnKey = sortKey;
    isDescending = descending;
    locale = localeOfLetters();
    noted.clear();
    shown.clear();
    strays.clear();
    noted.reserve (number);
}

void FormerOrder::add (const SortCell& cell) { noted.emplace_back (cell); }

void FormerOrder::end (const RankedPlaces& order)
{
    shown.resize (noted.size());

    if (order.empty())
        std::iota (shown.begin(), shown.end(), 0u);
    else
        std::transform (order.begin(), order.end(), shown.begin(),
                        [] (const RankedPlace& each) { return static_cast<std::uint32_t> (each.place); });
}

// ---- an order after an edit ----------------------------------------------------------------------------------------------

bool FormerOrder::isOf (const juce::String& sortKey, bool descending) const
{
    return columnKey == sortKey && isDescending == descending && locale.has_value()
           && locale == localeOfLetters();
}

bool FormerOrder::follow (const std::vector<std::shared_ptr<Event>>& before, const EventPlaces& listed)
{
    if (shown.empty() || shown.size() != before.size())
        return false;

    const auto areSame = [] (const std::shared_ptr<Event>& event, EventPlace place)
    { return event == *place; };

    if (std::equal (before.begin(), before.end(), listed.begin(), listed.end(), areSame))
        return true; // as mostly

    const auto places = placesIn (listed, before, mostStrays (listed.size()));

    if (places.has_value())
        moveTo (*places, listed.size());

    return places.has_value();
}

void FormerOrder::moveTo (std::span<const std::uint32_t> newPlaces, std::size_t number)
{
    ScratchVector<Noted> moved;
    moved.resize (number);
    ScratchVector<bool> isNoted;
    isNoted.resize (number);

    for (std::size_t i = 0; i < newPlaces.size(); ++i)
        if (newPlaces[i] != nowhere)
        {
            moved[newPlaces[i]] = std::move (noted[i]);
            isNoted[newPlaces[i]] = true;
        }

    for (std::uint32_t place = 0; place < number; ++place)
        if (! isNoted[place])
            strays.push_back (place);

    for (auto& place : shown)
        place = newPlaces[place];

    std::erase (shown, nowhere);
    noted = std::move (moved);
}

void FormerOrder::update (std::size_t place, const SortCell& cell)
{
    if (noted[place].isSame (cell) || hasTooManyStrays())
        return;

    noted[place] = Noted (cell);
    strays.push_back (static_cast<std::uint32_t> (place));
}

std::span<const std::uint32_t> FormerOrder::takeStraysOut()
{
    ScratchVector<bool> isStray;
    isStray.resize (noted.size());
    for (const auto place : strays)
        isStray[place] = true;

    // One that has come and says something is here twice.
    std::sort (strays.begin(), strays.end());
    strays.erase (std::unique (strays.begin(), strays.end()), strays.end());

    std::erase_if (shown, [&isStray] (std::uint32_t place) { return isStray[place]; });
    return strays;
}

} // namespace ZEP::Overmarks
