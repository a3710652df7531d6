// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/UserDefaults.h"
#include "event/Event.h"
#include "preferences/PreferenceKeys.h"
#include "support/PrintEvents.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** What an event should be: a record of its own for each attribute, written by the test alone, with the rules of timing as one
    would draw them. Frame indices count from the time origin; -1 is unset. */
struct PlainEvent
{
    juce::String uuid, cueNumber, characterID;
    ZEP::Core::RichTextString text, notes, engineeringNotes;
    EventType type = eventTypeUnset;
    int start = -1, inPoint = -1, end = -1;
    int duration = -1;  ///< of the streamer, coded
    int reference = -1; ///< 1: streamers count seconds, 0: bars
    float tempo = -1.0f;
    bool enabled = true, done = false, storedFlag = false, forced = false;
    ForcedNarrativeRegion region = ForcedNarrativeRegionBottom;
    int track = -1, takes = 0, selectedTake = -1, altTake = -1, reason = -1;
    int framesPerSecond = 25; ///< of the project

    /** As an event stands there when it comes into the list. */
    static PlainEvent of (const Event& event, int framesPerSecond)
    {
        PlainEvent made;
        made.framesPerSecond = framesPerSecond;
        made.walk (event, [] (const char*, auto& mine, const auto& its) { mine = its; });
        return made;
    }

    /** The attributes in which the event is another than this says, in words. */
    std::string difference (const Event& event) const
    {
        std::string words;
        walk (event,
              [&words] (const char* name, const auto& mine, const auto& its)
              {
                  if (! (mine == its))
                      words += std::string (name) + " is " + inWords (its) + " and should be "
                               + inWords (mine) + "\n";
              });
        return words;
    }

    // ---- timing ----------------------------------------------------------------------------------------------------

    bool hasNoTime() const { return start == -1 && inPoint == -1 && end == -1; }

    /** Whether some of the times are set and others not. */
    bool isOddlyTimed() const { return ! hasNoTime() && (start == -1 || inPoint == -1 || end == -1); }

    void takeTimeAway() { start = inPoint = end = -1; }

    /** Frames of the streamer, or of the flutter. An unset duration is filled in for good. */
    int streamerFrames()
    {
        const auto fill = [this] (const std::string& preference)
        {
            if (duration == -1)
                duration = ZEP::Core::UserDefaults::getIntForKey (preference);
        };
        if (type == EventTypeADRCue)
            return fill (ADRCueDefaultPrimaryPrerollDurationPrefKey), framesOfSeconds();
        if (type == EventTypeFlutter)
            return fill (FlutterDefaultDurationPrefKey), duration;
        if (type == EventTypeStreamer)
            return fill (StreamerDefaultDurationPrefKey), reference == 1 ? framesOfSeconds() : framesOfBars();
        return 0;
    }

    void moveInPoint (int to)
    {
        const int length = streamerFrames();
        switch (type)
        {
            case EventTypeADRCue:
                end = end > to ? end : end + to - inPoint, start = std::max (to - length, 0);
                break;
            case EventTypeFlutter: start = to, end = to + length; break;
            case EventTypeStreamer:
            case EventTypeFadeIn:
            case EventTypeFadeOut: start = to - length, end = to; break;
            case EventTypeMarker: end = end > to ? end : end + to - start, start = to; break;
        }
        if (type == eventTypeUnset)
            end = end > to ? end : end + to - start, start = to;
        inPoint = to;
    }

    /** What follows from the in point and the type, where there is a time at all. */
    void fillTimes()
    {
        if (hasNoTime())
            return;
        switch (type)
        {
            case EventTypeStreamer: fillStreamer(); break;
            case EventTypeMarker:
                start = inPoint;
                if (end == -1)
                    end = start + framesPerSecond * preferred (MarkerDefaultDurationPrefKey);
                break;
            case EventTypeFlutter:
                start = inPoint;
                if (end == -1)
                    end = inPoint + preferred (FlutterDefaultDurationPrefKey);
                if (duration == -1)
                    duration = preferred (FlutterDefaultDurationPrefKey);
                break;
            case EventTypeADRCue:
                start = inPoint - streamerFrames();
                if (end == -1)
                    end = inPoint + secondsOfCue() * framesPerSecond;
                break;
            case EventTypeFadeIn:
            case EventTypeFadeOut: break;
        }
    }

    void fillTempo()
    {
        if (type != EventTypeStreamer || reference != 0)
            tempo = -1.0f;
        else if (tempo == -1.0f)
            tempo = std::trunc (ZEP::Core::UserDefaults::getFloatForKey (StreamerDefaultTempoPrefKey));
    }

private:
    static int preferred (const std::string& key) { return ZEP::Core::UserDefaults::getIntForKey (key); }

    void fillStreamer()
    {
        const int length = streamerFrames();
        if (inPoint < 0)
            inPoint = 0;
        start = inPoint - length;
        end = inPoint;
    }

    int framesOfSeconds() const
    {
        if (duration == 267 || duration == 333)
            return static_cast<int> (static_cast<float> (framesPerSecond)
                                     * (duration == 267 ? 2.67f : 3.33f));
        return framesPerSecond * (duration == 1 || duration == 3 || duration == 5 ? duration : 2);
    }

    int framesOfBars() const
    {
        const float bars = duration == 4 || duration == 2 ? static_cast<float> (duration) : 1.0f;
        const float frames = (1.0f / (tempo / 60.0f)) * 4.0f * bars * static_cast<float> (framesPerSecond);
        return std::isfinite (frames) ? static_cast<int> (frames) : 0;
    }

    static int secondsOfCue()
    {
        const int code = preferred (ADRCueDefaultDurationPrefKey);
        return code >= 1 && code <= 5
                   ? std::vector<int> { 1, 3, 5, 10, 30 }[static_cast<std::size_t> (code - 1)]
                   : 0;
    }

    template <typename Visitor>
    void walk (const Event& event, Visitor visit)
    {
        walk (*this, event, visit);
    }
    template <typename Visitor>
    void walk (const Event& event, Visitor visit) const
    {
        walk (*this, event, visit);
    }

    /** Each attribute beside the getter that tells it. */
    template <typename Self, typename Visitor>
    static void walk (Self& self, const Event& event, Visitor& visit)
    {
        visit ("uuid", self.uuid, event.getUuid());
        visit ("cueNumber", self.cueNumber, event.getCueNumber());
        visit ("characterID", self.characterID, event.getCharacterID());
        visit ("text", self.text, event.getText());
        visit ("notes", self.notes, event.getNotes());
        visit ("engineeringNotes", self.engineeringNotes, event.getEngineeringNotes());
        visit ("type", self.type, event.getType());
        visit ("start", self.start, event.getStartFrameIndex());
        visit ("inPoint", self.inPoint, event.getInPointFrameIndex());
        visit ("end", self.end, event.getEndFrameIndex());
        visit ("duration", self.duration, event.getStreamerDuration());
        visit ("reference", self.reference, event.getTimeReference());
        visit ("tempo", self.tempo, event.getBeatsPerMinute());
        visit ("enabled", self.enabled, event.isEnabled());
        visit ("done", self.done, event.isDone());
        visit ("storedFlag", self.storedFlag, event.getStoredFlag());
        visit ("forced", self.forced, event.isForcedNarrative());
        visit ("region", self.region, event.getForcedNarrativeRegion());
        visit ("track", self.track, event.getRecTrackIndex());
        visit ("takes", self.takes, event.getNumRecordedTakes());
        visit ("selectedTake", self.selectedTake, event.getSelectedTake());
        visit ("altTake", self.altTake, event.getAltTake());
        visit ("reason", self.reason, event.getReason());
    }
};

/** One edit of a record, and what undoing it brings back; what an edit fills in besides stays. */
struct PlainEdit
{
    std::function<void (PlainEvent&)> make;
    std::function<void (PlainEvent& now, const PlainEvent& before)> takeBack;

    template <typename... Values>
    static PlainEdit of (std::function<void (PlainEvent&)> make, Values PlainEvent::*... restored)
    {
        return { std::move (make), [restored...] (PlainEvent& now, const PlainEvent& before)
                 { ((now.*restored = before.*restored), ...); } };
    }
};

} // namespace ZEP::Overmarks::Testing
