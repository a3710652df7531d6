// SPDX-License-Identifier: GPL-3.0-only
// One event as a record of the project file and back.
#include "preferences/PreferenceKeys.h"
#include "proto/overmarks.pb.h"
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <Poco/UUID.h>
#include <limits>
#include <set>
#include <string_view>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ZEP::Core::RichTextString;

RichTextString marked (const juce::String& text)
{
    RichTextString result (text);
    result.setColour ({ 0, 2 }, juce::Colour (0xffff0000));
    result.setFont ({ 3, 5 }, juce::Font (18.0f, juce::Font::bold | juce::Font::underlined));
    return result;
}

/** Gives every stored field a value that no empty event has, a different one for each number. */
struct FillEveryField
{
    int next = 2;

    void operator() (std::string_view name, juce::String& field)
    {
        field = juce::String (name.data(), name.size())
                + juce::String (juce::CharPointer_UTF8 (" \xc3\xa4\xe2\x82\xac"));
    }
    void operator() (std::string_view name, RichTextString& field)
    {
        field = marked (juce::String (name.data(), name.size()));
    }
    void operator() (std::string_view, int& field) { field = ++next; }
    void operator() (std::string_view, float& field) { field = 71.5f; }
    void operator() (std::string_view, bool& field) { field = ! field; }
    void operator() (std::string_view, EventType& field) { field = EventTypeFlutter; }
    void operator() (std::string_view, ForcedNarrativeRegion& field) { field = ForcedNarrativeRegionLeft; }
};

std::shared_ptr<Event> fullEvent()
{
    auto event = std::make_shared<Event>();
    EventFields::visit (*event, FillEveryField());
    return event;
}

class EventPersistence : public OvermarksTest
{
protected:
    static tessera1::ProtoOvermark stored (Event& event)
    {
        tessera1::ProtoOvermark record;
        event.fillProtoObject (&record);
        return record;
    }

    /** Through the bytes of a file, not the record alone. */
    static std::shared_ptr<Event> loaded (const tessera1::ProtoOvermark& record)
    {
        tessera1::ProtoOvermark fromFile;
        EXPECT_TRUE (fromFile.ParseFromString (record.SerializeAsString()));
        auto event = std::make_shared<Event>();
        EXPECT_TRUE (event->initWithProtoObject (&fromFile));
        return event;
    }
};

TEST_F (EventPersistence, everyStoredFieldComesBack)
{
    const auto event = fullEvent();
    const auto empty = storedFieldsOf (Event());
    for (const auto& [name, value] : storedFieldsOf (*event))
        EXPECT_NE (value, empty.at (name)) << name << " tells nothing here";

    EXPECT_EQ (storedFieldsOf (*loaded (stored (*event))), storedFieldsOf (*event));
}

TEST_F (EventPersistence, anEmptyEventComesBackEmpty)
{
    Event event;
    auto expected = storedFieldsOf (event);
    expected.erase ("uuid");
    // An unset reason is no reason that the manager knows.
    expected["reason"] = "0";

    auto fields = storedFieldsOf (*loaded (stored (event)));
    fields.erase ("uuid");
    EXPECT_EQ (fields, expected);
}

TEST_F (EventPersistence, everyFieldHasItsPlaceInTheRecord)
{
    const auto event = fullEvent();
    const auto record = stored (*event);
    const auto expectText = [] (const std::string& in, const juce::String& text)
    { EXPECT_EQ (in, text.toStdString()); };

    expectText (record.text(), event->getText().getText());
    expectText (record.notes(), event->getNotes().getText());
    expectText (record.engineeringnotes(), event->getEngineeringNotes().getText());
    expectText (record.cuenumber(), event->getCueNumber());
    expectText (record.characterid(), event->getCharacterID());
    expectText (record.uuid(), event->getUuid());
    EXPECT_EQ (record.type(), 4);
    EXPECT_EQ (record.startframeindex(), event->getStartFrameIndex());
    EXPECT_EQ (record.inpointframeindex(), event->getInPointFrameIndex());
    EXPECT_EQ (record.endframeindex(), event->getEndFrameIndex());
    EXPECT_EQ (record.streamerduration(), event->getStreamerDuration());
    EXPECT_EQ (record.beatsperminute(), event->getBeatsPerMinute());
    EXPECT_EQ (record.enabled(), event->isEnabled());
    EXPECT_EQ (record.storedflag(), event->getStoredFlag());
    EXPECT_EQ (record.done(), event->isDone());
    EXPECT_EQ (record.isforcednarrative(), event->isForcedNarrative());
    EXPECT_EQ (record.rectrackindex(), event->getRecTrackIndex());
    EXPECT_EQ (record.numrecordedtakes(), event->getNumRecordedTakes());
    EXPECT_EQ (record.reason(), event->getReason());
    EXPECT_EQ (record.selectedtake(), event->getSelectedTake());
    EXPECT_EQ (record.alttake(), event->getAltTake());
    EXPECT_EQ (record.forcednarrativeregion(), 2);
    EXPECT_EQ (record.textattributes_size(), 2);
    EXPECT_EQ (record.notesattributes_size(), 2);
    EXPECT_EQ (record.engineeringnotesattributes_size(), 2);
}

TEST_F (EventPersistence, noFieldOfTheRecordStandsOutsideTheTableOfFields)
{
    std::set<std::string> expected { "textAttributes", "notesAttributes", "engineeringNotesAttributes" };
    for (const auto& [name, value] : storedFieldsOf (Event()))
        expected.insert (name);

    std::set<std::string> inRecord;
    const auto* descriptor = tessera1::ProtoOvermark::descriptor();
    for (int i = 0; i < descriptor->field_count(); ++i)
        inRecord.insert (descriptor->field (i)->name());

    EXPECT_EQ (inRecord, expected);
}

TEST_F (EventPersistence, takesAndForcedNarrativeSurviveStoringThoughNotCopying)
{
    const auto event = makeEvent (EventTypeADRCue);
    event->setSelectedTake (2);
    event->setAltTake (1);
    event->setIsForcedNarrative (true);
    event->setForcedNarrativeRegion (ForcedNarrativeRegionTop);

    const auto back = loaded (stored (*event));

    EXPECT_EQ (back->getSelectedTake(), 2);
    EXPECT_EQ (back->getAltTake(), 1);
    EXPECT_TRUE (back->isForcedNarrative());
    EXPECT_EQ (back->getForcedNarrativeRegion(), ForcedNarrativeRegionTop);
    EXPECT_EQ (Event (*event).getSelectedTake(), -1);
}

// ---- reasons and identities ----------------------------------------------------------------------------------------

TEST_F (EventPersistence, anUnknownReasonBecomesNone)
{
    for (const int reason :
         { 41, 99, -1, -2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min() })
    {
        tessera1::ProtoOvermark record;
        record.set_reason (reason);

        EXPECT_EQ (loaded (record)->getReason(), 0) << reason;
    }
}

TEST_F (EventPersistence, aKnownReasonStaysAlsoThatOfAUserWithoutAName)
{
    for (const int reason : { 0, 1, 32, 33, 40 })
    {
        tessera1::ProtoOvermark record;
        record.set_reason (reason);

        EXPECT_EQ (loaded (record)->getReason(), reason);
    }
}

TEST_F (EventPersistence, loadingCountsNoUseOfAReason)
{
    tessera1::ProtoOvermark record;
    record.set_reason (5);
    EXPECT_EQ (loaded (record)->getReason(), 5);

    EXPECT_EQ (ZEP::Core::ADRCueReasonsManager::sharedManager()->reasonCount (6), 0);
}

TEST_F (EventPersistence, eventsOfAnOldFileGetIdentities)
{
    const tessera1::ProtoOvermark record;
    const auto one = loaded (record);
    const auto other = loaded (record);

    EXPECT_NE (one->getUuid(), other->getUuid());
    Poco::UUID uuid;
    EXPECT_TRUE (uuid.tryParse (one->getUuid().toStdString()));
    EXPECT_TRUE (uuid.tryParse (other->getUuid().toStdString()));
}

TEST_F (EventPersistence, aStoredIdentityStaysWhateverItIs)
{
    tessera1::ProtoOvermark record;
    record.set_uuid ("my own");

    EXPECT_EQ (loaded (record)->getUuid(), juce::String ("my own"));
}

TEST_F (EventPersistence, fieldsThatAnOldFileLacksAreZeroFalseOrEmpty)
{
    auto fields = storedFieldsOf (*loaded (tessera1::ProtoOvermark()));
    fields.erase ("uuid");

    for (const auto& [name, value] : fields)
        EXPECT_TRUE (value == "0" || value == "false" || value.empty()) << name << " is " << value;
}

// ---- rich text -----------------------------------------------------------------------------------------------------

TEST_F (EventPersistence, twoAttributesComeBackInTheirOrder)
{
    const auto event = makeEvent (EventTypeADRCue);
    const auto text = marked ("Red and bold");
    event->setText (text);

    const auto runs = loaded (stored (*event))->getText().formattedRuns();

    ASSERT_EQ (runs.size(), 2u);
    EXPECT_EQ (runs[0].range, juce::Range<int> (0, 2));
    EXPECT_EQ (runs[0].colour, juce::Colour (0xffff0000));
    EXPECT_EQ (runs[1].range, juce::Range<int> (3, 5));
    EXPECT_TRUE (runs[1].font.isBold());
    EXPECT_TRUE (runs[1].font.isUnderlined());
    EXPECT_EQ (runs[1].font.getHeight(), 18.0f);
    EXPECT_EQ (loaded (stored (*event))->getText(), text);
}

TEST_F (EventPersistence, eachTextHasItsOwnAttributes)
{
    const auto event = makeEvent (EventTypeADRCue);
    event->setText (marked ("Text in colours"));
    event->setNotes (RichTextString ("plain notes"));
    event->setEngineeringNotes (marked ("Engineering notes in colours"));

    const auto back = loaded (stored (*event));

    EXPECT_EQ (back->getText(), event->getText());
    EXPECT_EQ (back->getNotes(), event->getNotes());
    EXPECT_TRUE (back->getNotes().isPlain());
    EXPECT_EQ (back->getEngineeringNotes(), event->getEngineeringNotes());
}

TEST_F (EventPersistence, plainTextStoresNoAttribute)
{
    const auto event = makeEvent (EventTypeADRCue);
    event->setText (RichTextString ("Plain"));
    event->setNotes (RichTextString ("Plain"));
    event->setEngineeringNotes (RichTextString ("Plain"));

    const auto record = stored (*event);

    EXPECT_EQ (record.textattributes_size(), 0);
    EXPECT_EQ (record.notesattributes_size(), 0);
    EXPECT_EQ (record.engineeringnotesattributes_size(), 0);
}

TEST_F (EventPersistence, attributesOutsideTheTextAreHarmless)
{
    tessera1::ProtoOvermark record;
    record.set_text ("Hello");
    for (const auto& [start, end] : { std::pair { -5, 2 },
                                      { 3, 9999 },
                                      { 4, 1 },
                                      { std::numeric_limits<int>::min(), std::numeric_limits<int>::max() } })
    {
        auto* attribute = record.add_textattributes();
        attribute->set_rangestart (start);
        attribute->set_rangeend (end);
        attribute->set_height (std::numeric_limits<float>::quiet_NaN());
        attribute->set_colour (0xff00ff00u);
    }

    const auto event = loaded (record);

    EXPECT_EQ (event->getText().getText(), juce::String ("Hello"));
    for (const auto& run : event->getText().formattedRuns())
        EXPECT_TRUE (juce::Range<int> (0, 5).contains (run.range));
}

TEST_F (EventPersistence, loadingIntoAUsedEventReplacesItsTexts)
{
    const auto event = fullEvent();
    tessera1::ProtoOvermark record;
    record.set_text ("new");

    ASSERT_TRUE (event->initWithProtoObject (&record));

    EXPECT_EQ (event->getText(), RichTextString ("new"));
    EXPECT_EQ (event->getNotes(), RichTextString());
    EXPECT_EQ (event->getCueNumber(), juce::String());
    EXPECT_EQ (event->getCharacterID(), juce::String());
}

TEST_F (EventPersistence, textIsTakenAsStoredWithoutCleaning)
{
    const char* curly = "\xe2\x80\x9cNo\xe2\x80\x9d";
    tessera1::ProtoOvermark record;
    record.set_text (curly);
    record.set_cuenumber (curly);

    const auto event = loaded (record);

    EXPECT_EQ (event->getText().getText(), juce::String (juce::CharPointer_UTF8 (curly)));
    EXPECT_EQ (event->getCueNumber(), juce::String (juce::CharPointer_UTF8 (curly)));
}

TEST_F (EventPersistence, brokenTextOfADamagedFileIsSurvived)
{
    const auto event = std::make_shared<Event>();
    for (const auto& bytes : { std::string ("\xff\xfe broken"), std::string ("cut \xe2\x82"),
                               std::string ("\xc0\x80 overlong"), std::string ("with\0nul", 8) })
    {
        tessera1::ProtoOvermark record;
        record.set_text (bytes);
        record.set_notes (bytes);
        record.set_engineeringnotes (bytes);
        record.set_cuenumber (bytes);
        record.set_characterid (bytes);
        record.set_uuid (bytes);

        ASSERT_TRUE (event->initWithProtoObject (&record));

        const auto text = event->getText().getText();
        EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (text.toRawUTF8(),
                                                            static_cast<int> (text.getNumBytesAsUTF8())));
        EXPECT_FALSE (text.isEmpty());
        EXPECT_FALSE (event->getUuid().isEmpty());
    }
}

TEST_F (EventPersistence, whatIsNoUTF8IsStillWrittenAsUTF8)
{
    tessera1::ProtoOvermark record;
    record.set_text ("\xff\xfe broken");
    Event event;
    ASSERT_TRUE (event.initWithProtoObject (&record));

    const auto text = stored (event).text();
    EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (text.data(), static_cast<int> (text.size())));
}

TEST_F (EventPersistence, halfOfASurrogatePairDoesNotMakeTheRecordUnreadable)
{
    const auto half = "a" + juce::String::charToString (0xdc00);
    const auto event = makeEvent (EventTypeADRCue);
    RichTextString text (half);
    text.setFont ({ 0, 1 }, juce::Font (half, half, 12.0f));
    EventFields::visit (*event,
                        [&] (std::string_view name, auto& field)
                        {
                            if constexpr (std::is_same_v<std::decay_t<decltype (field)>, RichTextString>)
                                field = text;
                            else if constexpr (std::is_same_v<std::decay_t<decltype (field)>, juce::String>)
                                field = half;
                            (void)name;
                        });

    const auto back = loaded (stored (*event));

    EXPECT_TRUE (back->getText().getText().startsWith ("a"));
    EXPECT_TRUE (back->getCueNumber().startsWith ("a"));
    EXPECT_EQ (back->getText().formattedRuns().size(), 1u);
}

// ---- fields of newer versions --------------------------------------------------------------------------------------

/** A number and a text under field numbers that no event has yet. */
std::string fieldsOfTheFuture() { return "\xc0\x3e\x07\xca\x3e\x03new"; }

tessera1::ProtoOvermark recordOfTheFuture (Event& event)
{
    tessera1::ProtoOvermark record;
    event.fillProtoObject (&record);
    EXPECT_TRUE (record.ParseFromString (record.SerializeAsString() + fieldsOfTheFuture()));
    return record;
}

TEST_F (EventPersistence, whatANewerVersionHasStoredComesBack)
{
    const auto record = recordOfTheFuture (*fullEvent());
    const auto event = loaded (record);
    event->setTimeInfo (timeInfoAt ("25"));
    event->setDone (! event->isDone());
    event->setDone (! event->isDone());

    EXPECT_EQ (stored (*event).SerializeAsString(), record.SerializeAsString());
}

TEST_F (EventPersistence, aCopyIsNoneOfTheNewerVersions)
{
    const auto event = loaded (recordOfTheFuture (*fullEvent()));
    Event copy (*event);

    EXPECT_TRUE (stored (copy).GetReflection()->GetUnknownFields (stored (copy)).empty());
}

TEST_F (EventPersistence, loadingAnotherRecordForgetsWhatTheNewerVersionStored)
{
    const auto event = loaded (recordOfTheFuture (*fullEvent()));
    tessera1::ProtoOvermark plain;
    event->initWithProtoObject (&plain);
    const auto record = stored (*event);

    EXPECT_TRUE (record.GetReflection()->GetUnknownFields (record).empty());
}

// ---- what is not stored --------------------------------------------------------------------------------------------

TEST_F (EventPersistence, theTimeReferenceIsThatOfTheDayOfLoading)
{
    const auto inSeconds = makeEvent (EventTypeStreamer);
    ASSERT_EQ (inSeconds->getTimeReference(), 1);
    const auto record = stored (*inSeconds);

    prefer (StreamerReferenceUnitPrefKey, 0);
    EXPECT_EQ (loaded (record)->getTimeReference(), 0);
    prefer (StreamerReferenceUnitPrefKey, 1);
    EXPECT_EQ (loaded (record)->getTimeReference(), 1);
}

TEST_F (EventPersistence, loadingMakesNoStepAndTellsNobody)
{
    const auto record = stored (*fullEvent());
    const EventNews news;

    const auto event = loaded (record);

    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
    EXPECT_FALSE (event->isUndoBypassed());
    EXPECT_FALSE (event->areNotificationsSuppressed());
}

TEST_F (EventPersistence, storingChangesNothing)
{
    const auto event = makeUntimedEvent (EventTypeADRCue);
    const auto before = fieldsOf (*event);
    const EventNews news;

    EXPECT_EQ (stored (*event).streamerduration(), -1);

    EXPECT_EQ (fieldsOf (*event), before);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (EventPersistence, theIndicesAreTakenAsTheyStand)
{
    tessera1::ProtoOvermark record;
    record.set_type (EventTypeADRCue);
    record.set_startframeindex (900);
    record.set_inpointframeindex (-50);
    record.set_endframeindex (3);
    record.set_streamerduration (2);
    record.set_beatsperminute (90.0f);

    const auto event = loaded (record);

    EXPECT_EQ (timesOf (*event), "900|-50..3");
    EXPECT_EQ (event->getBeatsPerMinute(), 90.0f);
}

TEST_F (EventPersistence, aStartWithoutAnInPointIsGivenUpWhenTheLengthOfTheStreamerIsSet)
{
    tessera1::ProtoOvermark record;
    record.set_type (EventTypeStreamer);
    record.set_startframeindex (900);
    record.set_inpointframeindex (-1);
    record.set_endframeindex (-1);
    const auto event = loaded (record);
    event->setTimeInfo (timeInfoAt ("25"));

    event->setStreamerDuration (2, true);
    EXPECT_EQ (timesOf (*event), "-1|-1..-1");

    undoManager().undo();
    EXPECT_EQ (timesOf (*event), "900|-1..-1");
}

TEST_F (EventPersistence, aCueKeepsItsFramesUnderAnotherTimeReference)
{
    const auto event = makeEvent (EventTypeMarker, 1000, -1, -1, -1.0f, timeInfoAt ("25"));

    const auto back = loaded (stored (*event));
    EXPECT_EQ (back->getTimeInfo(), nullptr);
    back->setTimeInfo (timeInfoAt ("24", "01:00:00:00"));

    EXPECT_EQ (back->getInPointFrameIndex(), 1000);
    EXPECT_EQ (back->getStartTCString(), juce::String ("01:00:41:16"));
}

TEST_F (EventPersistence, whatTheApplicationKeepsIsNotStored)
{
    const auto event = makeEvent (EventTypeADRCue);
    event->setHiddenByFilter (true);
    event->setApplicationFlagA (false);
    event->setApplicationFlagB (false);
    event->setDisplayColour (juce::Colours::red);
    event->setNotificationsSuppressed (true);

    const auto back = loaded (stored (*event));

    EXPECT_FALSE (back->isHiddenByFilter());
    EXPECT_TRUE (back->getApplicationFlagA());
    EXPECT_TRUE (back->getApplicationFlagB());
    EXPECT_EQ (back->getDisplayColour(), juce::Colours::transparentBlack);
    EXPECT_FALSE (back->areNotificationsSuppressed());
}

TEST_F (EventPersistence, loadingSetsTheApplicationsFlags)
{
    const auto event = fullEvent();
    event->setApplicationFlagA (false);
    event->setApplicationFlagB (false);
    auto record = stored (*event);

    event->initWithProtoObject (&record);

    EXPECT_TRUE (event->getApplicationFlagA());
    EXPECT_TRUE (event->getApplicationFlagB());
}

TEST_F (EventPersistence, aTypeOrRegionThatNobodyKnowsComesBack)
{
    tessera1::ProtoOvermark record;
    record.set_type (64);
    record.set_forcednarrativeregion (std::numeric_limits<int>::max());

    const auto event = loaded (record);

    EXPECT_EQ (static_cast<int> (event->getType()), 64);
    EXPECT_EQ (static_cast<int> (event->getForcedNarrativeRegion()), std::numeric_limits<int>::max());
    EXPECT_EQ (stored (*event).type(), 64);
}

TEST_F (EventPersistence, aLoadedEventIsEditedWithUndo)
{
    const auto event = loaded (stored (*makeEvent (EventTypeADRCue)));
    event->setTimeInfo (timeInfoAt ("25"));

    event->setDone (true);
    undoManager().undo();

    EXPECT_FALSE (event->isDone());
}

} // namespace
} // namespace ZEP::Overmarks::Testing
