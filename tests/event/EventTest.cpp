// SPDX-License-Identifier: GPL-3.0-only
// What an event is when made, copied and put into words.
#include "event/Event.h"

#include "core/system/RandomIdentity.h"
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <Poco/UUID.h>
#include <limits>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Fields = std::map<std::string, std::string>;

const Fields& emptyFields()
{
    static const Fields fields { { "cueNumber", "" },
                                 { "characterID", "" },
                                 { "uuid", "" },
                                 { "text", "" },
                                 { "notes", "" },
                                 { "engineeringNotes", "" },
                                 { "enabled", "true" },
                                 { "done", "false" },
                                 { "notificationsSuppressed", "false" },
                                 { "undoBypass", "false" },
                                 { "applicationFlagA", "true" },
                                 { "applicationFlagB", "true" },
                                 { "timeInfo", "0" },
                                 { "startFrameIndex", "-1" },
                                 { "endFrameIndex", "-1" },
                                 { "inPointFrameIndex", "-1" },
                                 { "numRecordedTakes", "0" },
                                 { "streamerDuration", "-1" },
                                 { "recTrackIndex", "-1" },
                                 { "selectedTake", "-1" },
                                 { "altTake", "-1" },
                                 { "timeReference", "-1" },
                                 { "beatsPerMinute", "-1" },
                                 { "type", "-1" },
                                 { "reason", "-1" },
                                 { "isHiddenByFilter", "false" },
                                 { "isForcedNarrative", "false" },
                                 { "forcedNarrativeRegion", "0" },
                                 { "storedFlag", "false" },
                                 { "displayColour", "0" } };
    return fields;
}

/** An event in which no field has the value of an empty one. */
std::shared_ptr<Event> fullEvent()
{
    auto event = makeEvent (EventTypeStreamer, 100, -1, 3);
    withoutUndo (*event,
                 [] (Event& full)
                 {
                     full.setBeatsPerMinuteString ("90");
                     full.setText (ZEP::Core::RichTextString ("Text"));
                     full.setNotes (ZEP::Core::RichTextString ("Notes"));
                     full.setEngineeringNotes (ZEP::Core::RichTextString ("Engineering notes"));
                     full.setCharacterID ("ID");
                     full.setCueNumber ("12A");
                     full.setReason (5);
                     full.setDone (true);
                     full.setEnabled (false);
                     full.setRecTrackIndex (2);
                     full.setNumRecordedTakes (7);
                     full.setSelectedTake (4);
                     full.setAltTake (3);
                     full.setIsForcedNarrative (true);
                     full.setForcedNarrativeRegion (ForcedNarrativeRegionRight);
                 });
    event->setStoredFlag (true);
    event->setHiddenByFilter (true);
    event->setApplicationFlagA (false);
    event->setApplicationFlagB (false);
    event->setDisplayColour (juce::Colours::red);
    event->setNotificationsSuppressed (true);
    event->setUndoBypass (true);
    return event;
}

Fields without (Fields fields, std::initializer_list<const char*> names)
{
    for (const auto* name : names)
        fields.erase (name);
    return fields;
}

class EventTest : public OvermarksTest
{
};

// ---- making --------------------------------------------------------------------------------------------------------

TEST_F (EventTest, aNewEventIsEmpty) { EXPECT_EQ (fieldsOf (Event()), emptyFields()); }

TEST_F (EventTest, createFillsWhatIsNotGiven)
{
    const auto info = timeInfoAt ("25");
    const auto event = Event::create (EventTypeADRCue, info, 100, -1, -1.0f, -1);

    auto expected = emptyFields();
    expected["type"] = "8";
    expected["timeInfo"] = inWords (info.get());
    expected["startFrameIndex"] = "25";
    expected["inPointFrameIndex"] = "100";
    expected["endFrameIndex"] = "175";
    expected["streamerDuration"] = "3";
    expected["timeReference"] = "1";
    expected["reason"] = "0";
    expected["uuid"] = event->getUuid().toStdString();
    EXPECT_EQ (fieldsOf (*event), expected);
    EXPECT_EQ (event->getTimeInfo(), info);
}

TEST_F (EventTest, createTakesWhatIsGiven)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    const auto event = Event::create (EventTypeStreamer, timeInfoAt ("25"), 500, 10, 60.0f, 2);

    EXPECT_EQ (event->getTimeReference(), 0);
    EXPECT_EQ (event->getBeatsPerMinute(), 60.0f);
    EXPECT_EQ (event->getStreamerDuration(), 2);
    EXPECT_EQ (timesOf (*event), "300|500..500");
}

TEST_F (EventTest, createMakesNoStepAndTellsNobody)
{
    const EventNews news;
    const auto event = makeEvent (EventTypeADRCue);

    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
    EXPECT_FALSE (event->isUndoBypassed());
    EXPECT_FALSE (event->areNotificationsSuppressed());
}

TEST_F (EventTest, everyEventHasAnIdentityOfItsOwn)
{
    const auto one = makeEvent (EventTypeADRCue);
    const auto other = makeEvent (EventTypeADRCue);

    EXPECT_NE (one->getUuid(), other->getUuid());
    for (const auto& id : { one->getUuid(), other->getUuid(), ZEP::Core::randomIdentity() })
    {
        Poco::UUID uuid;
        ASSERT_TRUE (uuid.tryParse (id.toStdString())) << id;
        EXPECT_EQ (uuid.version(), Poco::UUID::UUID_RANDOM);
        EXPECT_EQ (uuid.toString(), id.toStdString());
    }
}

TEST_F (EventTest, resetEmptiesWhatBelongsToTheCueAndLeavesTheRest)
{
    const auto event = fullEvent();
    auto expected = fieldsOf (*event);
    for (const auto* name :
         { "timeInfo", "streamerDuration", "startFrameIndex", "endFrameIndex", "inPointFrameIndex",
           "recTrackIndex", "type", "beatsPerMinute", "storedFlag", "done", "cueNumber", "characterID",
           "text", "notes", "engineeringNotes", "applicationFlagA", "applicationFlagB" })
    {
        EXPECT_NE (expected[name], emptyFields().at (name)) << name << " tells nothing here";
        expected[name] = emptyFields().at (name);
    }

    event->resetAllVariables();

    EXPECT_EQ (fieldsOf (*event), expected);
}

// ---- copying -------------------------------------------------------------------------------------------------------

const std::initializer_list<const char*> copiedFields { "startFrameIndex",
                                                        "inPointFrameIndex",
                                                        "endFrameIndex",
                                                        "text",
                                                        "notes",
                                                        "cueNumber",
                                                        "engineeringNotes",
                                                        "streamerDuration",
                                                        "type",
                                                        "beatsPerMinute",
                                                        "timeInfo",
                                                        "characterID",
                                                        "numRecordedTakes",
                                                        "enabled",
                                                        "timeReference",
                                                        "done",
                                                        "recTrackIndex",
                                                        "storedFlag",
                                                        "reason" };

TEST_F (EventTest, aCopyKeepsTheCueAndForgetsItsTakesAndForcedNarrative)
{
    const auto event = fullEvent();
    auto expected = emptyFields();
    for (const auto* name : copiedFields)
    {
        expected[name] = fieldsOf (*event)[name];
        EXPECT_NE (expected[name], emptyFields().at (name)) << name << " tells nothing here";
    }

    const Event copy (*event);

    EXPECT_EQ (without (fieldsOf (copy), { "uuid" }), without (expected, { "uuid" }));
    EXPECT_EQ (copy.getCueNumber(), juce::String ("12A"));
    EXPECT_EQ (copy.getSelectedTake(), -1);
    EXPECT_EQ (copy.getTimeInfo(), event->getTimeInfo());
}

TEST_F (EventTest, aCopyHasANewIdentity)
{
    const auto event = makeEvent (EventTypeADRCue);
    const Event one (*event);
    const Event other (*event);

    EXPECT_NE (one.getUuid(), event->getUuid());
    EXPECT_NE (one.getUuid(), other.getUuid());
    EXPECT_FALSE (one.getUuid().isEmpty());
}

TEST_F (EventTest, anAssignedEventKeepsItsCueNumberTakesAndForcedNarrative)
{
    const auto source = fullEvent();
    const auto target = makeEvent (EventTypeMarker);
    withoutUndo (*target,
                 [] (Event& event)
                 {
                     event.setCueNumber ("99");
                     event.setSelectedTake (1);
                     event.setAltTake (0);
                     event.setIsForcedNarrative (true);
                     event.setForcedNarrativeRegion (ForcedNarrativeRegionTop);
                 });
    target->setDisplayColour (juce::Colours::green);
    auto expected = fieldsOf (*target);
    for (const auto* name : copiedFields)
        if (std::string (name) != "cueNumber")
            expected[name] = fieldsOf (*source)[name];
    const auto oldIdentity = target->getUuid();

    *target = *source;

    EXPECT_EQ (without (fieldsOf (*target), { "uuid" }), without (expected, { "uuid" }));
    EXPECT_EQ (target->getCueNumber(), juce::String ("99"));
    EXPECT_NE (target->getUuid(), oldIdentity);
    EXPECT_NE (target->getUuid(), source->getUuid());
}

TEST_F (EventTest, assigningAnEventToItselfDoesNothing)
{
    const auto event = fullEvent();
    const auto before = fieldsOf (*event);
    const auto& same = *event;

    *event = same;

    EXPECT_EQ (fieldsOf (*event), before);
}

TEST_F (EventTest, copyingTellsNobody)
{
    const auto event = makeEvent (EventTypeADRCue);
    const auto target = makeEvent (EventTypeMarker);
    const EventNews news;

    const Event copy (*event);
    *target = copy;

    EXPECT_EQ (news.count(), 0);
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventTest, aCopyOfAnEventInAnImportIsAnOrdinaryEvent)
{
    const Event copy (*fullEvent());

    EXPECT_FALSE (copy.isUndoBypassed());
    EXPECT_FALSE (copy.areNotificationsSuppressed());
}

// ---- words ---------------------------------------------------------------------------------------------------------

TEST_F (EventTest, everyTypeHasItsName)
{
    struct Row
    {
        int type;
        const char* name;
    };
    for (const auto& row :
         { Row { 1, "Streamer" }, Row { 2, "Marker" }, Row { 4, "Flutter" }, Row { 8, "ADR Cue" },
           Row { 16, "Fade In" }, Row { 32, "Fade Out" }, Row { -1, "Fade Out" }, Row { 0, "Fade Out" },
           Row { 3, "Fade Out" }, Row { 64, "Fade Out" } })
        EXPECT_EQ (makeUntimedEvent (static_cast<EventType> (row.type))->typeString(),
                   juce::String (row.name));
}

TEST_F (EventTest, descriptionTellsTheSecondsOfAStreamer)
{
    struct Row
    {
        int code;
        const char* detail;
    };
    for (const auto& row :
         { Row { -1, "No streamer duration" }, Row { 1, "1 second" }, Row { 2, "2 seconds" },
           Row { 3, "3 seconds" }, Row { 5, "5 seconds" }, Row { 267, "2.67 seconds" },
           Row { 333, "3.33 seconds" }, Row { 0, "" }, Row { 4, "" }, Row { 6, "" }, Row { -2, "" },
           Row { std::numeric_limits<int>::max(), "" } })
    {
        const auto withDuration = [&] (EventType type)
        { return Event::create (type, timeInfoAt ("25"), -1, -1, -1.0f, row.code)->description(); };

        EXPECT_EQ (withDuration (EventTypeADRCue), "ADR Cue, " + juce::String (row.detail));
        EXPECT_EQ (withDuration (EventTypeStreamer), "Streamer, " + juce::String (row.detail));
        prefer (StreamerReferenceUnitPrefKey, 0);
        EXPECT_EQ (withDuration (EventTypeADRCue), "ADR Cue, " + juce::String (row.detail));
        prefer (StreamerReferenceUnitPrefKey, 1);
    }
}

TEST_F (EventTest, descriptionTellsTheBarsOfAStreamer)
{
    prefer (StreamerReferenceUnitPrefKey, 0);

    EXPECT_EQ (makeEvent (EventTypeStreamer, 100, -1, 2, 120.0f)->description(),
               juce::String ("Streamer, 2 bars  120.0 BPM"));
    EXPECT_EQ (makeEvent (EventTypeStreamer, 100, -1, 267, 71.25f)->description(),
               juce::String ("Streamer, 267 bars  71.2 BPM"));
    EXPECT_EQ (Event::create (EventTypeStreamer, timeInfoAt ("25"), -1, -1, -1.0f, -1)->description(),
               juce::String ("Streamer, -1 bars  120.0 BPM"));
}

TEST_F (EventTest, descriptionFollowsThePreferenceAndNotTheEvent)
{
    const auto inSeconds = makeEvent (EventTypeStreamer, 100, -1, 2);
    prefer (StreamerReferenceUnitPrefKey, 0);
    EXPECT_EQ (inSeconds->description(), juce::String ("Streamer, 2 bars  -1.0 BPM"));

    const auto inBars = makeEvent (EventTypeStreamer, 100, -1, 2);
    prefer (StreamerReferenceUnitPrefKey, 1);
    EXPECT_EQ (inBars->description(), juce::String ("Streamer, 2 seconds"));

    prefer (StreamerReferenceUnitPrefKey, 2);
    EXPECT_EQ (inBars->description(), juce::String ("Streamer, 2 bars  120.0 BPM"));
}

TEST_F (EventTest, descriptionTellsTheFlashesOfAFlutter)
{
    struct Row
    {
        int frames;
        const char* detail;
    };
    for (const auto& row : { Row { 1, "1" }, Row { 4, "3" }, Row { 8, "5" }, Row { 12, "7" }, Row { 2, "" },
                             Row { 0, "" }, Row { 3, "" } })
        EXPECT_EQ (makeEvent (EventTypeFlutter, 100, -1, row.frames)->description(),
                   "Flutter, " + juce::String (row.detail));
    EXPECT_EQ (makeUntimedEvent (EventTypeFlutter)->description(), juce::String ("Flutter, "));
}

TEST_F (EventTest, descriptionOfOtherTypesEndsInACommaAndABlank)
{
    EXPECT_EQ (makeEvent (EventTypeMarker, 100, -1, 2)->description(), juce::String ("Marker, "));
    EXPECT_EQ (makeEvent (EventTypeFadeIn, 100, -1, 2)->description(), juce::String ("Fade In, "));
    EXPECT_EQ (makeEvent (EventTypeFadeOut, 100, -1, 2)->description(), juce::String ("Fade Out, "));
    EXPECT_EQ (makeUntimedEvent (eventTypeUnset)->description(), juce::String ("Fade Out, "));
}

TEST_F (EventTest, oneLineTellsCueNumberCharacterTextAndStart)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 200);
    EXPECT_EQ (event->oneLineDescription(), juce::String (" |  |  | 00:00:04:00"));

    event->setCueNumber ("12A");
    event->setCharacterID (addCharacter ("Eve"));
    event->setText (ZEP::Core::RichTextString ("Hello"));
    EXPECT_EQ (event->oneLineDescription(), juce::String ("12A | Eve | Hello | 00:00:04:00"));

    event->setCharacterID ("nobody");
    event->setStartTCString ("--:--:--:--");
    EXPECT_EQ (event->oneLineDescription(), juce::String ("12A |  | Hello | --:--:--:--"));
}

TEST_F (EventTest, oneLineCutsATextOf21Characters)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 200);

    event->setText (ZEP::Core::RichTextString ("12345678901234567890"));
    EXPECT_EQ (event->oneLineDescription(), juce::String (" |  | 12345678901234567890 | 00:00:04:00"));

    event->setText (ZEP::Core::RichTextString ("123456789012345678901"));
    EXPECT_EQ (event->oneLineDescription(), juce::String (" |  | 12345678901234567... | 00:00:04:00"));
}

TEST_F (EventTest, oneLineCountsCharactersAndNotBytes)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 200);
    const auto umlauts = juce::String::repeatedString (juce::CharPointer_UTF8 ("\xc3\xa4"), 20);

    event->setText (umlauts);
    EXPECT_EQ (event->oneLineDescription(), " |  | " + umlauts + " | 00:00:04:00");

    event->setText (umlauts + "b");
    EXPECT_EQ (event->oneLineDescription(), " |  | " + umlauts.substring (0, 17) + "... | 00:00:04:00");
}

TEST_F (EventTest, bothWordingsAreReachedThroughTheInterface)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 200);
    ZEP::Core::IDescribable& describable = *event;

    EXPECT_EQ (describable.description(), juce::String ("ADR Cue, 3 seconds"));
    EXPECT_EQ (describable.oneLineDescription(), juce::String (" |  |  | 00:00:04:00"));
}

// ---- the character -------------------------------------------------------------------------------------------------

TEST_F (EventTest, theCharacterComesFromTheOneMap)
{
    const auto event = makeEvent (EventTypeADRCue);
    event->setCharacterID (addCharacter ("Eve", "Mary"));

    ASSERT_NE (event->character(), nullptr);
    EXPECT_EQ (event->character(), Event::getADRCharacterMap()->characters().front());

    Event::setADRCharacterMap (std::make_shared<ZEP::Core::ADRCharacterMap>());
    EXPECT_EQ (event->character(), nullptr);
}

TEST_F (EventTest, anEventWithoutCharacterNeedsNoMap)
{
    const auto event = makeEvent (EventTypeADRCue);
    Event::setADRCharacterMap (nullptr);

    EXPECT_EQ (event->character(), nullptr);
    EXPECT_EQ (Event::getADRCharacterMap(), nullptr);
}

TEST_F (EventTest, anEmptyIdentifierIsNoCharacterWhateverTheMapHolds)
{
    addCharacter ("Eve");
    EXPECT_EQ (makeEvent (EventTypeADRCue)->character(), nullptr);
}

TEST_F (EventTest, aMissingMapIsSurvived)
{
    const auto event = makeEvent (EventTypeADRCue);
    event->setCharacterID ("someone");
    Event::setADRCharacterMap (nullptr);

    EXPECT_EQ (event->character(), nullptr);
    EXPECT_EQ (event->oneLineDescription(), juce::String (" |  |  | 00:00:04:00"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
