// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "list/EventPlace.h"
#include "list/NearlyOrdered.h"
#include "list/ScratchMemory.h"
#include "list/TimecodeKey.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** What an event is sorted by under a column: two events that say the same are equal in its order. */
struct SortCell
{
    const juce::String* text = nullptr; ///< Null is as good as an empty one.
    TimecodeKey timecode;
    std::uint32_t number = 0; ///< In the order of the column's numbers.
    bool hasInPoint = false;
    bool hasTime = false; ///< The time of the column is set.
    bool hasCharacter = false;
};

/** The order in which a list was shown last, and what it was found from.

    After an edit nearly all events say what they said, and these stand between each other as they stood: nobody has to compare them. That a
    text is the same is seen without reading it: the one of then is held here, and whoever changes a text that somebody else holds makes
    another one. One thread. */
class FormerOrder final
{
public:
    // ---- an order that was found anew --------------------------------------------------------------------------------

    /** Forgets all there was. @param number  of the events that will be added */
    void begin (const juce::String& sortKey, bool descending, std::size_t number);

    void add (const SortCell& cell); ///< What the next event of the list says.

    void end (const RankedPlaces& order); ///< In which order they go; nothing if as they stand.

    // ---- an order after an edit --------------------------------------------------------------------------------------

    /** Whether it is of this column and direction, and of the process's locale. */
    [[nodiscard]] bool isOf (const juce::String& sortKey, bool descending) const;

    /** Finds where the events stand in the list now. After it come update() for each of them, hasTooManyStrays(), takeStraysOut() and
        putStrays().
        @param before  the list as it stood. Any other does no harm: what isn't as it was is found out
        @returns false, and has changed nothing, where so many have come, gone or moved that it doesn't pay */
    [[nodiscard]] bool follow (const std::vector<std::shared_ptr<Event>>& before, const EventPlaces& listed);

    /** Notes what the event at this place of the list says now; no more, once there are too many strays. */
    void update (std::size_t place, const SortCell& cell);

    /** Whether so many have come or say something else that it doesn't pay to look where each of them belongs. */
    [[nodiscard]] bool hasTooManyStrays() const noexcept { return strays.size() > mostStrays (noted.size()); }

    /** @returns the places in the list, from its beginning, of those that have come, have moved or say something else; until putStrays() */
    [[nodiscard]] std::span<const std::uint32_t> takeStraysOut();

    /** Puts these where they belong.
        @param goesFirst  whether the event at one place of the list goes before that at another one; never of equal places */
    template <typename GoesFirst>
    void putStrays (GoesFirst goesFirst)
    {
        auto places = strays;
        const auto kept = std::ssize (shown);
        shown.resize (noted.size());
        putAmong (shown.begin(), shown.begin() + kept, shown.end(), places.begin(), places.end(), goesFirst);
        strays.clear();
    }

    /** The places of all events in the list, in their order. */
    [[nodiscard]] const std::vector<std::uint32_t>& places() const noexcept { return shown; }

private:
    /** A cell that holds its text. */
    struct Noted
    {
        Noted() = default;
        explicit Noted (const SortCell& cell);
        [[nodiscard]] bool isSame (const SortCell& cell) const noexcept;

        juce::String text;
        TimecodeKey timecode;
        std::uint32_t number = 0;
        bool hasInPoint = false;
        bool hasTime = false;
        bool hasCharacter = false;
    };

    static constexpr std::size_t mostStrays (std::size_t number) { return number / 128 + 16; }

    void moveTo (std::span<const std::uint32_t> newPlaces, std::size_t number);

    juce::String columnKey;
    bool isDescending = false;
    std::optional<std::string> locale; ///< which tells what letters are one in the order of cue numbers
    ScratchVector<Noted> noted;        ///< of each event, in the order of the list
    std::vector<std::uint32_t> shown;  ///< their places in the list, in the order of the column
    std::vector<std::uint32_t> strays;
};

} // namespace ZEP::Overmarks
