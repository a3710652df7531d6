// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/EventKeyValueEditor.h"
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"

#include <memory>

namespace ZEP::Overmarks::Testing
{

/** One event of each kind, and the editor of a table's cells. */
class KeyValueEditor : public OvermarksTest
{
protected:
    template <typename Value>
    static Value get (const std::shared_ptr<Event>& event, const juce::String& key)
    {
        return Poco::AnyCast<Value> (EventKeyValueEditor (event).getValueForKey (key));
    }

    template <typename Value>
    static bool set (const std::shared_ptr<Event>& event, const juce::String& key, const Value& value)
    {
        return EventKeyValueEditor (event).setValueForKey (Poco::Any (value), key, true);
    }

    static juce::String text (const std::shared_ptr<Event>& event, const juce::String& key)
    {
        return get<juce::String> (event, key);
    }

    static bool isNobody (const Poco::Any& value)
    {
        return ! value.empty() && value.type() == typeid (nullptr);
    }

    std::shared_ptr<Event> cue = makeEvent (EventTypeADRCue, 1000, 1500, 1);
    std::shared_ptr<Event> marker = makeEvent (EventTypeMarker, 1000, 1500);
    std::shared_ptr<Event> streamer = makeEvent (EventTypeStreamer, 1000, -1, 2);
    std::shared_ptr<Event> flutter = makeEvent (EventTypeFlutter, 1000, 1008, 4);
    std::shared_ptr<Event> fade = makeEvent (EventTypeFadeIn, 1000, 1010);
    EventNews news;
};

} // namespace ZEP::Overmarks::Testing
