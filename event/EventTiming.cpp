// SPDX-License-Identifier: GPL-3.0-only
// How an event's frame indices, its coded duration, its tempo and its type hang together.
#include "core/system/Saturated.h"
#include "core/system/UserDefaults.h"
#include "core/timecode/TCToolbox.h"
#include "event/Event.h"
#include "event/EventChange.h"
#include "event/EventNotifications.h"
#include "preferences/PreferenceKeys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{

using ZEP::Core::RichTextString;
using ZEP::Core::saturated;
using ZEP::Core::TCToolbox;
using ZEP::Core::UserDefaults;

/** The three times of an event, in frames from the time origin. */
struct Event::FrameIndices
{
    int start = -1;
    int inPoint = -1;
    int end = -1;
};

namespace
{

/** The tempo of everything that is no streamer in bars. */
constexpr float unsetTempo = -1.0f;

/** Frames never leave the range of a frame index, whatever a damaged file says. */
int toFrameIndex (std::int64_t frames) { return saturated<int> (frames); }

/** A number of frames from floating point, cut towards zero. */
int toFrameIndex (float frames)
{
    return std::isfinite (frames)
               ? toFrameIndex (static_cast<std::int64_t> (std::clamp (frames, -1.0e15f, 1.0e15f)))
               : 0;
}

/** The default length of a cue in seconds, by the code of its preference. */
int cueLengthInSeconds (int code)
{
    constexpr std::array seconds { 0, 1, 3, 5, 10, 30 };
    return code >= 1 && code < static_cast<int> (seconds.size()) ? seconds[static_cast<std::size_t> (code)]
                                                                 : 0;
}

} // namespace

// ---- timecode texts ------------------------------------------------------------------------------------------------------

std::size_t Event::writeTimecode (int frameIndex, char* destination) const
{
    const bool dropFrame = timeInfo != nullptr && timeInfo->tcDef.dropFrame;

    if (timeInfo == nullptr || (startFrameIndex == -1 && inPointFrameIndex == -1 && endFrameIndex == -1))
    {
        const std::string_view dashes = dropFrame ? "--:--:--;--" : "--:--:--:--";
        return dashes.copy (destination, dashes.size());
    }

    const auto time = TCToolbox::addFramesAndTCTimes (frameIndex, timeInfo->timeOrigin, timeInfo->tcDef);
    return TCToolbox::writeTCTime (destination, time, dropFrame);
}

std::size_t Event::writeStartTC (char* destination) const
{
    return writeTimecode (inPointFrameIndex, destination);
}

std::size_t Event::writeEndTC (char* destination) const { return writeTimecode (endFrameIndex, destination); }

juce::String Event::getStartTCString() const
{
    std::array<char, TCToolbox::longestTimecode> characters;
    return { characters.data(), writeStartTC (characters.data()) };
}

juce::String Event::getEndTCString() const
{
    std::array<char, TCToolbox::longestTimecode> characters;
    return { characters.data(), writeEndTC (characters.data()) };
}

// ---- the length of the streamer ------------------------------------------------------------------------------------------

int Event::framesPerSecond() const noexcept
{
    return timeInfo != nullptr ? timeInfo->tcDef.framesPerSecond : 0;
}

int Event::getStreamerDurationInFrames()
{
    const auto fillFrom = [this] (const std::string& preference)
    {
        if (streamerDuration == -1)
            streamerDuration = UserDefaults::getIntForKey (preference);
    };

    switch (type)
    {
        case EventTypeADRCue:
            fillFrom (ADRCueDefaultPrimaryPrerollDurationPrefKey);
            return streamerFramesInSeconds();

        case EventTypeFlutter: fillFrom (FlutterDefaultDurationPrefKey); return streamerDuration;

        case EventTypeStreamer:
            fillFrom (StreamerDefaultDurationPrefKey);
            return timeReference == 1 ? streamerFramesInSeconds() : streamerFramesInBars();

        case EventTypeMarker:
        case EventTypeFadeIn:
        case EventTypeFadeOut: break;
    }

    return 0;
}

int Event::streamerFramesInBars() const
{
    // A bar has four beats. The order of the operations decides the frame: one bar at 64 BPM and 24 frames is 89 frames.
    const float factor = streamerDuration == 4 ? 4.0f : streamerDuration == 2 ? 2.0f : 1.0f;
    return toFrameIndex ((1.0f / (beatsPerMinute / 60.0f)) * 4.0f * factor
                         * static_cast<float> (framesPerSecond()));
}

int Event::streamerFramesInSeconds() const
{
    const int fps = framesPerSecond();

    switch (streamerDuration)
    {
        case 1: return fps;
        case 3: return 3 * fps;
        case 5: return 5 * fps;
        case 267: return toFrameIndex (static_cast<float> (fps) * 2.67f);
        case 333: return toFrameIndex (static_cast<float> (fps) * 3.33f);
    }

    return 2 * fps; // also code 4: there is no streamer of four seconds
}

// ---- filling what is missing ---------------------------------------------------------------------------------------------

void Event::fillMissingVariableTimeReference()
{
    if (timeReference == -1)
        timeReference = UserDefaults::getIntForKey (StreamerReferenceUnitPrefKey);
}

void Event::fillMissingVariableBPM()
{
    if (type != EventTypeStreamer || timeReference != 0)
        beatsPerMinute = unsetTempo;
    else if (beatsPerMinute == unsetTempo)
        beatsPerMinute = std::trunc (UserDefaults::getFloatForKey (StreamerDefaultTempoPrefKey));
}

void Event::fillMissingVariableStartEndFrameIndex()
{
    if (startFrameIndex == -1 && inPointFrameIndex == -1 && endFrameIndex == -1)
        return;

    switch (type)
    {
        case EventTypeStreamer: deriveStreamer(); break;
        case EventTypeMarker: deriveMarker(); break;
        case EventTypeFlutter: deriveFlutter(); break;
        case EventTypeADRCue: deriveADRCue(); break;
        case EventTypeFadeIn:
        case EventTypeFadeOut: break;
    }
}

void Event::deriveStreamer()
{
    const std::int64_t length = getStreamerDurationInFrames();
    startFrameIndex = toFrameIndex (inPointFrameIndex - length);
    endFrameIndex = inPointFrameIndex;

    if (inPointFrameIndex < 0)
    {
        startFrameIndex = toFrameIndex (-length);
        inPointFrameIndex = endFrameIndex = 0;
    }
}

void Event::deriveMarker()
{
    startFrameIndex = inPointFrameIndex;

    if (endFrameIndex == -1)
    {
        const std::int64_t seconds = UserDefaults::getIntForKey (MarkerDefaultDurationPrefKey);
        endFrameIndex = toFrameIndex (startFrameIndex + framesPerSecond() * seconds);
    }
}

void Event::deriveFlutter()
{
    startFrameIndex = inPointFrameIndex;
    const int frames = UserDefaults::getIntForKey (FlutterDefaultDurationPrefKey);

    if (endFrameIndex == -1)
        endFrameIndex = toFrameIndex (std::int64_t { inPointFrameIndex } + frames);

    if (streamerDuration == -1)
        streamerDuration = frames;
}

void Event::deriveADRCue()
{
    startFrameIndex = toFrameIndex (std::int64_t { inPointFrameIndex } - getStreamerDurationInFrames());

    if (endFrameIndex == -1)
    {
        const auto length = cueLengthInSeconds (UserDefaults::getIntForKey (ADRCueDefaultDurationPrefKey))
                            * framesPerSecond();
        endFrameIndex = toFrameIndex (std::int64_t { inPointFrameIndex } + length);
    }
}

void Event::fillMissingVariablesAndSendChangedNotification (bool send)
{
    fillMissingVariableTimeReference();
    fillMissingVariableBPM();
    fillMissingVariableStartEndFrameIndex();

    if (send)
        sendTimingNews();
}

// ---- moving the event ----------------------------------------------------------------------------------------------------

void Event::setTimeInfo (std::shared_ptr<ZEP::Core::TimeInfo> newTimeInfo)
{
    timeInfo = std::move (newTimeInfo);
}

void Event::changeIndices (const char* undoName, const FrameIndices& newIndices)
{
    change (
        undoName, News::timing,
        [newIndices] (Event& event)
        {
            event.startFrameIndex = newIndices.start;
            event.inPointFrameIndex = newIndices.inPoint;
            event.endFrameIndex = newIndices.end;
        },
        &Event::startFrameIndex, &Event::inPointFrameIndex, &Event::endFrameIndex);
}

Event::FrameIndices Event::indicesForInPoint (int newInPoint)
{
    // A new in point past the old end carries the end along, so that the length measured from `oldReference` stays.
    const auto endKeptBehind = [this, newInPoint] (int oldReference)
    {
        return endFrameIndex > newInPoint
                   ? endFrameIndex
                   : toFrameIndex (std::int64_t { endFrameIndex } + newInPoint - oldReference);
    };
    const int streamer = getStreamerDurationInFrames();
    const int streamerStart = toFrameIndex (std::int64_t { newInPoint } - streamer);

    switch (type)
    {
        case EventTypeADRCue:
            return { std::max (streamerStart, 0), newInPoint, endKeptBehind (inPointFrameIndex) };
        case EventTypeFlutter:
            return { newInPoint, newInPoint, toFrameIndex (std::int64_t { newInPoint } + streamer) };
        case EventTypeStreamer:
        case EventTypeFadeIn:
        case EventTypeFadeOut: return { streamerStart, newInPoint, newInPoint };
        case EventTypeMarker: break;
    }

    return { newInPoint, newInPoint, endKeptBehind (startFrameIndex) };
}

void Event::setStartTCString (const juce::String& timecode)
{
    const auto time = TCToolbox::tcTimeFromString (timecode);

    if (! time.invalid && timeInfo == nullptr) // a frame can't be told, and the old time is no mistake
        return;

    if (! time.invalid)
    {
        changeIndices ("Changing Event Timecode",
                       indicesForInPoint (TCToolbox::frameIndexForTCTime (time, timeInfo)));
        return;
    }

    if (! undoBypass)
        changeIndices ("Set Event Timecode", {});

    changeIndices ("Changing Event Timecode", {});
}

void Event::setEndTCString (const juce::String& timecode)
{
    const auto time = TCToolbox::tcTimeFromString (timecode);

    if (! time.invalid && timeInfo == nullptr)
        return;

    if (time.invalid)
    {
        changeIndices ("Set Event Timecode", {});
        return;
    }

    const int newEnd = std::max (TCToolbox::frameIndexForTCTime (time, timeInfo), inPointFrameIndex);
    change (
        "Set Event Timecode", News::timing, [newEnd] (Event& event) { event.endFrameIndex = newEnd; },
        &Event::endFrameIndex);
}

// ---- duration, tempo and type --------------------------------------------------------------------------------------------

void Event::setStreamerDuration (int duration, bool updateTiming)
{
    if (streamerDuration == duration || (! undoBypass && ! updateTiming))
        return;

    const bool hasStreamer = type == EventTypeStreamer || type == EventTypeADRCue;
    const bool isFlutterLength = duration == 1 || duration == 4 || duration == 8 || duration == 12;
    const int newStart = hasStreamer ? -1 : startFrameIndex;
    const int newEnd = type == EventTypeFlutter && isFlutterLength
                           ? toFrameIndex (std::int64_t { startFrameIndex } + duration)
                           : endFrameIndex;

    change (
        "Changing Streamer Duration", News::timing,
        [duration, updateTiming, hasStreamer, newStart, newEnd] (Event& event)
        {
            event.streamerDuration = duration;

            if (! updateTiming)
                return;

            event.startFrameIndex = newStart;
            event.endFrameIndex = newEnd;

            if (hasStreamer || event.type == EventTypeFlutter)
                event.fillMissingVariablesAndSendChangedNotification (false);
        },
        &Event::streamerDuration, &Event::startFrameIndex, &Event::endFrameIndex);
}

juce::String Event::beatsPerMinuteString() const
{
    return beatsPerMinute == unsetTempo ? juce::String ("--") : juce::String (toFrameIndex (beatsPerMinute));
}

void Event::setBeatsPerMinuteString (const juce::String& tempo)
{
    constexpr int slowest = 21, fastest = 299;
    const int value = tempo.getIntValue();

    if (value < slowest || value > fastest)
        return;

    change (
        "Changing Event BPM", News::attribute,
        [value] (Event& event)
        {
            event.beatsPerMinute = static_cast<float> (value);
            event.startFrameIndex = -1;
            event.fillMissingVariableStartEndFrameIndex();
        },
        &Event::beatsPerMinute, &Event::startFrameIndex, &Event::inPointFrameIndex, &Event::endFrameIndex);
}

void Event::setType (EventType newType, bool resetContent)
{
    if (type == newType)
        return;

    if (! resetContent)
    {
        changeField (&Event::type, newType, "Changing Event Type");
        return;
    }

    change (
        "Changing Event Type", News::attribute,
        [newType] (Event& event)
        {
            event.type = newType;
            event.streamerDuration = event.endFrameIndex = -1;
            event.characterID.clear();
            event.text = RichTextString();
            event.fillMissingVariablesAndSendChangedNotification (false);
        },
        &Event::type, &Event::streamerDuration, &Event::endFrameIndex, &Event::startFrameIndex,
        &Event::inPointFrameIndex, &Event::characterID, &Event::text);
}

// ---- checking ------------------------------------------------------------------------------------------------------------

bool Event::validate (juce::String& errorMessage) const
{
    const bool isMarker = type == EventTypeMarker;
    const auto firstFault = [&]() -> const char*
    {
        if (startFrameIndex == -1 || endFrameIndex == -1)
            return "Both the start and end frame index must be set";
        if (timeInfo == nullptr)
            return "A movie info must be set";
        if (timeInfo->tcDef.undefined)
            return "The TC def must be set";
        if (startFrameIndex >= endFrameIndex || inPointFrameIndex > endFrameIndex)
            return "The start frame index must be before the end frame index";
        if (isMarker && endFrameIndex <= inPointFrameIndex)
            return "Invalid marker length";
        if (isMarker && startFrameIndex != inPointFrameIndex)
            return "Marker - start and in point frame index not equal";

        return nullptr;
    };

    const auto* fault = firstFault();

    if (fault != nullptr)
        errorMessage = fault;

    return fault == nullptr;
}

} // namespace ZEP::Overmarks
