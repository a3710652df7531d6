// SPDX-License-Identifier: GPL-3.0-only
#include "event/Event.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/ProcessLifetime.h"
#include "core/system/RandomIdentity.h"
#include "core/system/UserDefaults.h"
#include "core/text/StringUtil.h"
#include "event/EventChange.h"
#include "event/EventNotifications.h"
#include "preferences/PreferenceKeys.h"

#include <Poco/Format.h>
#include <Poco/NotificationCenter.h>

#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{

using ZEP::Core::ADRCharacter;
using ZEP::Core::ADRCharacterMap;
using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::randomIdentity;
using ZEP::Core::RichTextString;
using ZEP::Core::StringUtil;
using ZEP::Core::TimeInfo;
using ZEP::Core::UserDefaults;

namespace
{

std::shared_ptr<ADRCharacterMap>& sharedCharacterMap()
{
    static std::shared_ptr<ADRCharacterMap> map;
    return map;
}

/** The words for a coded streamer duration in seconds; nothing for a code that has none. */
const char* secondsInWords (int code)
{
    static constexpr std::pair<int, const char*> words[] = {
        { -1, "No streamer duration" },
        { 1, "1 second" },
        { 2, "2 seconds" },
        { 3, "3 seconds" },
        { 5, "5 seconds" },
        { 267, "2.67 seconds" },
        { 333, "3.33 seconds" },
    };

    for (const auto& [known, text] : words)
        if (known == code)
            return text;

    return "";
}

/** A flutter of 1, 4, 8 or 12 frames is shown as 1, 3, 5 or 7 flashes. */
const char* flashesInWords (int frames)
{
    switch (frames)
    {
        case 1: return "1";
        case 4: return "3";
        case 8: return "5";
        case 12: return "7";
    }

    return "";
}

} // namespace

// ---- construction and copying -------------------------------------------------------------------------------------------

Event::Event() = default;

Event::Event (const Event& other)
    : ZEP::Core::IProtobufSerializable(),
      std::enable_shared_from_this<Event>(),
      ZEP::Core::IDescribable()
{
    copyAllButCueNumber (other);
    cueNumber = other.cueNumber;
}

Event& Event::operator= (const Event& other)
{
    if (this != &other)
        copyAllButCueNumber (other);

    return *this;
}

Event::~Event() = default;

void Event::copyAllButCueNumber (const Event& other)
{
    startFrameIndex = other.startFrameIndex;
    inPointFrameIndex = other.inPointFrameIndex;
    endFrameIndex = other.endFrameIndex;
    text = other.text;
    notes = other.notes;
    engineeringNotes = other.engineeringNotes;
    streamerDuration = other.streamerDuration;
    type = other.type;
    beatsPerMinute = other.beatsPerMinute;
    timeInfo = other.timeInfo;
    characterID = other.characterID;
    numRecordedTakes = other.numRecordedTakes;
    enabled = other.enabled;
    timeReference = other.timeReference;
    done = other.done;
    recTrackIndex = other.recTrackIndex;
    storedFlag = other.storedFlag;
    reason = other.reason;
    uuid = randomIdentity();
}

std::shared_ptr<Event> Event::create (EventType type, std::shared_ptr<TimeInfo> timeInfo,
                                      int inPointFrameIndex, int endFrameIndex, float beatsPerMinute,
                                      int streamerDuration)
{
    auto event = std::make_shared<Event>();
    event->type = type;
    event->timeInfo = std::move (timeInfo);
    event->inPointFrameIndex = inPointFrameIndex;
    event->endFrameIndex = endFrameIndex;
    event->beatsPerMinute = beatsPerMinute;
    event->streamerDuration = streamerDuration;
    event->timeReference = UserDefaults::getIntForKey (StreamerReferenceUnitPrefKey);
    event->reason = 0;
    event->fillMissingVariablesAndSendChangedNotification (false);
    event->uuid = randomIdentity();
    return event;
}

void Event::resetAllVariables()
{
    timeInfo = nullptr;
    streamerDuration = startFrameIndex = endFrameIndex = inPointFrameIndex = recTrackIndex = -1;
    type = eventTypeUnset;
    beatsPerMinute = -1.0f;
    storedFlag = done = false;
    cueNumber.clear();
    characterID.clear();
    text = notes = engineeringNotes = RichTextString();
    applicationFlagA = applicationFlagB = true;
}

// ---- texts ---------------------------------------------------------------------------------------------------------------

juce::String Event::typeString() const
{
    // Made once: a long list asks for a name at each row.
    struct Names
    {
        juce::String streamer { "Streamer" }, marker { "Marker" }, flutter { "Flutter" }, cue { "ADR Cue" },
            fadeIn { "Fade In" }, fadeOut { "Fade Out" };
    };
    static const ZEP::Core::ProcessLifetime<Names> names;

    switch (type)
    {
        case EventTypeStreamer: return names.get().streamer;
        case EventTypeMarker: return names.get().marker;
        case EventTypeFlutter: return names.get().flutter;
        case EventTypeADRCue: return names.get().cue;
        case EventTypeFadeIn: return names.get().fadeIn;
        case EventTypeFadeOut: break;
    }

    return names.get().fadeOut;
}

juce::String Event::durationText() const
{
    if (type == EventTypeFlutter)
        return flashesInWords (streamerDuration);

    if (type != EventTypeADRCue && type != EventTypeStreamer)
        return {};

    const bool inSeconds = UserDefaults::getIntForKey (StreamerReferenceUnitPrefKey) == 1;

    if (type == EventTypeADRCue || inSeconds)
        return secondsInWords (streamerDuration);

    return Poco::format ("%i bars  %.1f BPM", streamerDuration, static_cast<double> (beatsPerMinute));
}

juce::String Event::description() { return typeString() + ", " + durationText(); }

juce::String Event::oneLineDescription()
{
    constexpr int longestWhole = 20, charactersOfCut = 17;
    const auto who = character();
    auto line = text.getText();

    if (line.length() > longestWhole)
        line = line.substring (0, charactersOfCut) + "...";

    return juce::StringArray { cueNumber, who != nullptr ? who->name : juce::String(), line,
                               getStartTCString() }
        .joinIntoString (" | ");
}

std::shared_ptr<ADRCharacter> Event::character() const
{
    if (characterID.isEmpty())
        return nullptr;

    const auto& map = sharedCharacterMap();
    return map != nullptr ? map->characterForID (characterID) : nullptr;
}

std::shared_ptr<ADRCharacterMap> Event::getADRCharacterMap() { return sharedCharacterMap(); }

void Event::setADRCharacterMap (std::shared_ptr<ADRCharacterMap> map)
{
    sharedCharacterMap() = std::move (map);
}

// ---- notifications -------------------------------------------------------------------------------------------------------

template <typename NotificationClass>
void Event::post()
{
    const std::map<std::string, Poco::Any> userInfo { { EventChangedNotification_EventsKey,
                                                        std::vector<Event*> { this } } };
    Poco::NotificationCenter::defaultCenter().postNotification (new NotificationClass (userInfo));
}

void Event::sendTimingNews() { post<EventTimingDidChangeNotification>(); }

void Event::announce (News news)
{
    if (notificationsSuppressed)
        return;

    switch (news)
    {
        case News::attribute: post<EventAttributeDidChangeNotification>(); break;
        case News::timing: sendTimingNews(); break;
    }
}

void Event::notifyChangeIfEnabled() { announce (News::attribute); }

// ---- plain setters -------------------------------------------------------------------------------------------------------

void Event::setRichText (RichTextString Event::*field, const RichTextString& newText, const char* undoName)
{
    if (! (this->*field == newText))
        changeField (field, newText.replaceIllegalASCIICharacters(), undoName);
}

void Event::setText (const RichTextString& newText) { setRichText (&Event::text, newText, "Changing Text"); }

void Event::setNotes (const RichTextString& newNotes)
{
    setRichText (&Event::notes, newNotes, "Changing Notes");
}

void Event::setEngineeringNotes (const RichTextString& newNotes)
{
    setRichText (&Event::engineeringNotes, newNotes, "Changing Engineering Notes");
}

void Event::setCharacterID (const juce::String& newID)
{
    if (characterID != newID)
        changeField (&Event::characterID, newID, "Changing Character");
}

void Event::setCueNumber (const juce::String& newNumber)
{
    if (cueNumber != newNumber)
        changeField (&Event::cueNumber, StringUtil::replaceIllegalASCIICharacters (newNumber),
                     "Changing Cue Number");
}

void Event::setReason (int newReason)
{
    if (reason == newReason)
        return;

    if (newReason > 0 && newReason < std::numeric_limits<int>::max())
        ADRCueReasonsManager::sharedManager()->incrementReasonCounter (newReason + 1);

    changeField (&Event::reason, newReason, "Changing Reason");
}

void Event::setDone (bool isNowDone)
{
    if (done != isNowDone)
        changeField (&Event::done, isNowDone, "Changing Event Done State");
}

void Event::setEnabled (bool isNowEnabled)
{
    if (enabled != isNowEnabled)
        changeField (&Event::enabled, isNowEnabled, "Changing Event Done State");
}

void Event::setRecTrackIndex (int newIndex)
{
    if (recTrackIndex != newIndex)
        changeField (&Event::recTrackIndex, newIndex, "Changing Rec Track Index");
}

void Event::setNumRecordedTakes (int newNumber)
{
    if (numRecordedTakes != newNumber)
        changeField (&Event::numRecordedTakes, newNumber, "Changing Number of recorded Takes");
}

void Event::setSelectedTake (int newTake)
{
    if (selectedTake != newTake)
        changeField (&Event::selectedTake, newTake, "Changing Selected Take");
}

void Event::setAltTake (int newTake)
{
    if (altTake != newTake)
        changeField (&Event::altTake, newTake, "Changing Selected Take");
}

void Event::setIsForcedNarrative (bool isNowForcedNarrative)
{
    if (forcedNarrative != isNowForcedNarrative)
        changeField (&Event::forcedNarrative, isNowForcedNarrative, "Changing Forced Narrative");
}

void Event::setForcedNarrativeRegion (ForcedNarrativeRegion newRegion)
{
    if (forcedNarrativeRegion != newRegion)
        changeField (&Event::forcedNarrativeRegion, newRegion, "Changing Forced Narrative Region");
}

} // namespace ZEP::Overmarks
