// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/SystemUtility.h"
#include "event/EventFields.h"
#include "list/EventArray.h"
#include "support/MakeEvents.h"

#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ZEP::Overmarks::Testing
{

using Names = std::vector<std::string>;

/** Writes one stored field as a damaged or foreign file would, past every rule that the setters keep. */
template <typename Value>
void setField (Event& event, std::string_view name, const Value& value)
{
    bool found = false;
    EventFields::visit (event,
                        [&] (std::string_view fieldName, auto& field)
                        {
                            if constexpr (std::is_same_v<std::decay_t<decltype (field)>, Value>)
                                if (fieldName == name)
                                {
                                    field = value;
                                    found = true;
                                }
                        });
    if (! found)
        throw std::invalid_argument ("no such field of this type: " + std::string (name));
}

inline void setTimes (Event& event, int start, int inPoint, int end)
{
    setField (event, "startFrameIndex", start);
    setField (event, "inPointFrameIndex", inPoint);
    setField (event, "endFrameIndex", end);
}

/** An event with exactly these times; the cue number is its name in the expectations. */
inline std::shared_ptr<Event> event (EventType type, const juce::String& cueNumber, int start, int inPoint,
                                     int end)
{
    auto made = makeUntimedEvent (type);
    setField (*made, "cueNumber", cueNumber);
    setTimes (*made, start, inPoint, end);
    return made;
}

/** A line of dialogue of one second with one second of preroll. */
inline std::shared_ptr<Event> cue (const juce::String& cueNumber, int inPoint)
{
    return event (EventTypeADRCue, cueNumber, inPoint - 25, inPoint, inPoint + 25);
}

/** A line of dialogue that has no time yet. */
inline std::shared_ptr<Event> untimedCue (const juce::String& cueNumber)
{
    return event (EventTypeADRCue, cueNumber, -1, -1, -1);
}

/** The list of a new project; the fades are called "in" and "out" and have no time. */
inline std::shared_ptr<EventArray> listWithFades()
{
    return std::make_shared<EventArray> (event (EventTypeFadeIn, "in", -1, -1, -1),
                                         event (EventTypeFadeOut, "out", -1, -1, -1));
}

/** A list that holds these events besides its fades, brought up to date. */
inline std::shared_ptr<EventArray> listOf (const EventArray::Events& events)
{
    auto list = listWithFades();
    for (const auto& each : events)
        list->addEvent (each, false);
    list->sortContentAndUpdateFilteredEvents();
    return list;
}

/** The cue numbers, in the order of the vector. */
inline Names namesOf (const EventArray::Events& events)
{
    Names names;
    for (const auto& each : events)
        names.push_back (each->getCueNumber().toStdString());
    return names;
}

/** Application type 0 or 1 for as long as this lives. */
class ApplicationType final
{
public:
    explicit ApplicationType (int type) { configure (type); }
    ~ApplicationType() { configure (ZEP::Core::SystemUtility::Configuration().applicationType); }

    ApplicationType (const ApplicationType&) = delete;
    ApplicationType& operator= (const ApplicationType&) = delete;

private:
    static void configure (int type)
    {
        ZEP::Core::SystemUtility::Configuration configuration;
        configuration.applicationType = type;
        ZEP::Core::SystemUtility::configure (configuration);
    }
};

} // namespace ZEP::Overmarks::Testing
