// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCToolbox.h"
#include "event/Event.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace ZEP::Overmarks::Testing
{

/** The time reference of a project: "25", "29.97df" and the like, and the timecode of its first frame. */
inline std::shared_ptr<ZEP::Core::TimeInfo> timeInfoAt (const std::string& rate,
                                                        const std::string& origin = "00:00:00:00")
{
    const auto definition = ZEP::Core::TCToolbox::tcDefForRateName (rate);
    const auto time = ZEP::Core::TCToolbox::tcTimeFromString (origin);
    if (! definition.has_value() || time.invalid)
        throw std::invalid_argument ("no time reference: " + rate + ", " + origin);
    return std::make_shared<ZEP::Core::TimeInfo> (*definition, time);
}

/** An event as the application makes it, with the defaults of the preferences for everything not given. */
inline std::shared_ptr<Event> makeEvent (EventType type, int inPoint = 100, int end = -1, int duration = -1,
                                         float beatsPerMinute = -1.0f,
                                         const std::shared_ptr<ZEP::Core::TimeInfo>& info = timeInfoAt ("25"))
{
    return Event::create (type, info, inPoint, end, beatsPerMinute, duration);
}

/** An event that has nothing but a type and a time reference: no time yet. */
inline std::shared_ptr<Event> makeUntimedEvent (
    EventType type, const std::shared_ptr<ZEP::Core::TimeInfo>& info = timeInfoAt ("25"))
{
    return Event::create (type, info, -1, -1, -1.0f, -1);
}

/** A role in the process-wide map; returns its identifier. */
inline juce::String addCharacter (const juce::String& name, const juce::String& actor = {},
                                  const juce::String& prefix = {})
{
    auto character = std::make_shared<ZEP::Core::ADRCharacter> (name);
    character->actor = actor;
    character->prefix = prefix;
    return Event::getADRCharacterMap()->addCharacter (character, false, {});
}

/** Makes changes that are no undo steps. */
template <typename Change>
void withoutUndo (Event& event, Change change)
{
    event.setUndoBypass (true);
    change (event);
    event.setUndoBypass (false);
}

} // namespace ZEP::Overmarks::Testing
