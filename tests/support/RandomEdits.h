// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCToolbox.h"
#include "support/PlainEvent.h"
#include "support/RandomEvents.h"

#include <optional>
#include <string>

namespace ZEP::Overmarks::Testing
{

/** Makes an edit by chance twice: through a setter of an event, and in the record that stands beside it. */
class RandomEdits final
{
public:
    explicit RandomEdits (RandomEvents& chance) : random (chance) {}

    /** @returns the edit that the record has got, nothing where the setter makes none */
    std::optional<PlainEdit> edit (Event& event, PlainEvent& record)
    {
        if (random.oneIn (2))
            return editAttribute (event, record);
        return editTiming (event, record);
    }

    using Made = std::optional<PlainEdit>;

    Made takeTimeAway (Event& event, PlainEvent& record)
    {
        if (random.oneIn (2))
            event.setStartTCString ("no timecode");
        else
            event.setEndTCString ("--:--:--:--");
        return make (record, PlainEdit::of ([] (PlainEvent& to) { to.takeTimeAway(); }, &PlainEvent::start,
                                            &PlainEvent::inPoint, &PlainEvent::end));
    }

private:
    /** A setter that changes one attribute, and nothing where it has the value already. */
    template <typename Value, typename Setter>
    Made set (PlainEvent& record, Value PlainEvent::*field, const Value& value, Setter setter)
    {
        setter (value);
        if (record.*field == value)
            return {};
        return make (record, PlainEdit::of ([field, value] (PlainEvent& to) { to.*field = value; }, field));
    }

    Made make (PlainEvent& record, PlainEdit edit) { return edit.make (record), edit; }

    Made editAttribute (Event& event, PlainEvent& record)
    {
        const auto other = random.untimed();
        switch (random.below (14))
        {
            case 0:
                return set (record, &PlainEvent::cueNumber, other->getCueNumber(),
                            [&] (const auto& value) { event.setCueNumber (value); });
            case 1:
                return set (record, &PlainEvent::characterID, other->getCharacterID(),
                            [&] (const auto& value) { event.setCharacterID (value); });
            case 2:
                return set (record, &PlainEvent::text, richText(),
                            [&] (const auto& value) { event.setText (value); });
            case 3:
                return set (record, &PlainEvent::notes, richText(),
                            [&] (const auto& value) { event.setNotes (value); });
            case 4:
                return set (record, &PlainEvent::engineeringNotes, richText(),
                            [&] (const auto& value) { event.setEngineeringNotes (value); });
            case 5:
                return set (record, &PlainEvent::done, random.oneIn (2),
                            [&] (bool value) { event.setDone (value); });
            case 6:
                return set (record, &PlainEvent::enabled, random.oneIn (2),
                            [&] (bool value) { event.setEnabled (value); });
            case 7:
                return set (record, &PlainEvent::forced, random.oneIn (2),
                            [&] (bool value) { event.setIsForcedNarrative (value); });
            case 8:
                return set (record, &PlainEvent::region,
                            static_cast<ForcedNarrativeRegion> (random.below (4)),
                            [&] (auto value) { event.setForcedNarrativeRegion (value); });
            default: return editNumber (event, record);
        }
    }

    Made editNumber (Event& event, PlainEvent& record)
    {
        const int number = random.between (-1, 5);
        switch (random.below (6))
        {
            case 0:
                return set (record, &PlainEvent::track, number,
                            [&] (int value) { event.setRecTrackIndex (value); });
            case 1:
                return set (record, &PlainEvent::takes, number,
                            [&] (int value) { event.setNumRecordedTakes (value); });
            case 2:
                return set (record, &PlainEvent::selectedTake, number,
                            [&] (int value) { event.setSelectedTake (value); });
            case 3:
                return set (record, &PlainEvent::altTake, number,
                            [&] (int value) { event.setAltTake (value); });
            case 4:
                return set (record, &PlainEvent::reason, random.below (41),
                            [&] (int value) { event.setReason (value); });
            default: break;
        }
        event.setStoredFlag (number > 2); // no step of the history
        record.storedFlag = number > 2;
        return {};
    }

    Made editTiming (Event& event, PlainEvent& record)
    {
        const bool isFade = record.type == EventTypeFadeIn || record.type == EventTypeFadeOut;
        switch (random.below (isFade ? 5 : 8))
        {
            case 0: return takeTimeAway (event, record);
            case 1:
            case 2: return moveInPoint (event, record);
            case 3: return moveEnd (event, record);
            case 4: return changeDuration (event, record);
            case 5: return changeTempo (event, record);
            default: return changeType (event, record);
        }
    }

    static juce::String timecodeAt (int frame, const Event& event)
    {
        const auto& info = *event.getTimeInfo();
        return ZEP::Core::TCToolbox::stringFromTCTime (
            ZEP::Core::TCToolbox::addFramesAndTCTimes (frame, info.timeOrigin, info.tcDef),
            info.tcDef.dropFrame);
    }

    /** A frame of the picture; before its first one, where the time origin leaves room for that. */
    int anyFrame (const Event& event)
    {
        return random.between (event.getTimeInfo()->timeOrigin.hours > 0 && random.oneIn (4) ? -60 : 0, 90)
               * 5;
    }

    Made moveInPoint (Event& event, PlainEvent& record)
    {
        const int frame = anyFrame (event);
        event.setStartTCString (timecodeAt (frame, event));
        auto moved = record;
        moved.moveInPoint (frame);
        record.duration = moved.duration; // filled in beside the step
        const auto put = [moved] (PlainEvent& to)
        {
            to.start = moved.start;
            to.inPoint = moved.inPoint;
            to.end = moved.end;
        };
        return make (record, PlainEdit::of (put, &PlainEvent::start, &PlainEvent::inPoint, &PlainEvent::end));
    }

    Made moveEnd (Event& event, PlainEvent& record)
    {
        const int frame = anyFrame (event);
        event.setEndTCString (timecodeAt (frame, event));
        const int end = std::max (frame, record.inPoint);
        return make (record, PlainEdit::of ([end] (PlainEvent& to) { to.end = end; }, &PlainEvent::end));
    }

    Made changeDuration (Event& event, PlainEvent& record)
    {
        const int duration = random.oneOf<int> ({ 1, 2, 3, 4, 5, 8, 12, 267, 333 });
        const bool updates = ! random.oneIn (5);
        event.setStreamerDuration (duration, updates);
        if (duration == record.duration || ! updates)
            return {};
        const bool hasStreamer = record.type == EventTypeStreamer || record.type == EventTypeADRCue;
        const bool isFlutter = record.type == EventTypeFlutter;
        const bool hasFlashes = duration == 1 || duration == 4 || duration == 8 || duration == 12;
        const int start = hasStreamer ? -1 : record.start;
        const int end = isFlutter && hasFlashes ? record.start + duration : record.end;
        const auto put = [=] (PlainEvent& to)
        {
            to.duration = duration;
            to.start = start;
            to.end = end;
            if (hasStreamer || isFlutter)
                to.fillTempo(), to.fillTimes();
        };
        return make (record,
                     PlainEdit::of (put, &PlainEvent::duration, &PlainEvent::start, &PlainEvent::end));
    }

    Made changeTempo (Event& event, PlainEvent& record)
    {
        const int tempo = random.oneOf<int> ({ 20, 21, 64, 120, 299, 300 });
        event.setBeatsPerMinuteString (juce::String (tempo));
        if (tempo < 21 || tempo > 299)
            return {};
        const auto put = [tempo] (PlainEvent& to)
        {
            to.tempo = static_cast<float> (tempo);
            to.start = -1;
            to.fillTimes();
        };
        return make (record, PlainEdit::of (put, &PlainEvent::tempo, &PlainEvent::start, &PlainEvent::inPoint,
                                            &PlainEvent::end));
    }

    Made changeType (Event& event, PlainEvent& record)
    {
        const auto type = random.oneOf<EventType> ({ EventTypeADRCue, EventTypeADRCue, EventTypeStreamer,
                                                     EventTypeMarker, EventTypeFlutter, eventTypeUnset });
        const bool resets = random.oneIn (2);
        event.setType (type, resets);
        if (type == record.type)
            return {};
        if (! resets)
            return make (record,
                         PlainEdit::of ([type] (PlainEvent& to) { to.type = type; }, &PlainEvent::type));
        const auto put = [type] (PlainEvent& to)
        {
            to.type = type;
            to.duration = to.end = -1;
            to.characterID.clear();
            to.text = ZEP::Core::RichTextString();
            to.fillTempo();
            to.fillTimes();
        };
        return make (record, PlainEdit::of (put, &PlainEvent::type, &PlainEvent::duration, &PlainEvent::end,
                                            &PlainEvent::start, &PlainEvent::inPoint,
                                            &PlainEvent::characterID, &PlainEvent::text));
    }

    ZEP::Core::RichTextString richText()
    {
        auto made = random.untimed()->getText();
        for (int i = random.below (3); i > 0 && made.length() > 0; --i)
        {
            const int start = random.below (made.length());
            const juce::Range<int> range (start, random.between (start + 1, made.length()));
            if (random.oneIn (2))
                made.setFont (range, juce::Font (random.oneOf<float> ({ 12.0f, 18.5f }), juce::Font::bold));
            else
                made.setColour (range, juce::Colour (0xffff0000));
        }
        return made;
    }

    RandomEvents& random;
};

} // namespace ZEP::Overmarks::Testing
