// SPDX-License-Identifier: GPL-3.0-only
// The law of undo, over all setters of an event.
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <functional>
#include <limits>
#include <memory>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Fields = std::map<std::string, std::string>;

enum class News
{
    attribute,
    timing
};

/** A row: one way to change an event, and what the user, the undo history and the observers see of it. */
struct Setter
{
    const char* name;
    EventType type;
    std::function<void (Event&)> set;
    Fields changes;
    const char* undoName;
    News news = News::attribute;
    bool sameValueMakesStep = false;
};

void PrintTo (const Setter& setter, std::ostream* out) { *out << setter.name; }

ZEP::Core::RichTextString loud()
{
    ZEP::Core::RichTextString text ("Go away!");
    text.setColour ({ 0, 2 }, juce::Colours::red);
    return text;
}

std::vector<Setter> settersOfContent()
{
    return {
        { "setRecTrackIndex",
          EventTypeADRCue,
          [] (Event& event) { event.setRecTrackIndex (3); },
          { { "recTrackIndex", "3" } },
          "Changing Rec Track Index" },
        { "setText",
          EventTypeADRCue,
          [] (Event& event) { event.setText (loud()); },
          { { "text", inWords (loud()) } },
          "Changing Text" },
        { "setNotes",
          EventTypeADRCue,
          [] (Event& event) { event.setNotes (loud()); },
          { { "notes", inWords (loud()) } },
          "Changing Notes" },
        { "setEngineeringNotes",
          EventTypeADRCue,
          [] (Event& event) { event.setEngineeringNotes (loud()); },
          { { "engineeringNotes", inWords (loud()) } },
          "Changing Engineering Notes" },
        { "setCharacterID",
          EventTypeADRCue,
          [] (Event& event) { event.setCharacterID ("ADAM"); },
          { { "characterID", "ADAM" } },
          "Changing Character" },
        { "setCueNumber",
          EventTypeADRCue,
          [] (Event& event) { event.setCueNumber ("12A"); },
          { { "cueNumber", "12A" } },
          "Changing Cue Number" },
        { "setReason",
          EventTypeADRCue,
          [] (Event& event) { event.setReason (4); },
          { { "reason", "4" } },
          "Changing Reason" },
        { "setDone",
          EventTypeADRCue,
          [] (Event& event) { event.setDone (true); },
          { { "done", "true" } },
          "Changing Event Done State" },
        { "setEnabled",
          EventTypeADRCue,
          [] (Event& event) { event.setEnabled (false); },
          { { "enabled", "false" } },
          "Changing Event Done State" },
        { "setNumRecordedTakes",
          EventTypeADRCue,
          [] (Event& event) { event.setNumRecordedTakes (5); },
          { { "numRecordedTakes", "5" } },
          "Changing Number of recorded Takes" },
        { "setSelectedTake",
          EventTypeADRCue,
          [] (Event& event) { event.setSelectedTake (2); },
          { { "selectedTake", "2" } },
          "Changing Selected Take" },
        { "setAltTake",
          EventTypeADRCue,
          [] (Event& event) { event.setAltTake (1); },
          { { "altTake", "1" } },
          "Changing Selected Take" },
        { "setIsForcedNarrative",
          EventTypeADRCue,
          [] (Event& event) { event.setIsForcedNarrative (true); },
          { { "isForcedNarrative", "true" } },
          "Changing Forced Narrative" },
        { "setForcedNarrativeRegion",
          EventTypeADRCue,
          [] (Event& event) { event.setForcedNarrativeRegion (ForcedNarrativeRegionLeft); },
          { { "forcedNarrativeRegion", "2" } },
          "Changing Forced Narrative Region" },
        { "setTypeKeepingTheContent",
          EventTypeADRCue,
          [] (Event& event) { event.setType (EventTypeMarker, false); },
          { { "type", "2" } },
          "Changing Event Type" },
        // A cue of three seconds after three seconds of streamer becomes a marker of two seconds.
        { "setTypeResettingTheContent",
          EventTypeADRCue,
          [] (Event& event) { event.setType (EventTypeMarker, true); },
          { { "type", "2" },
            { "text", "" },
            { "characterID", "" },
            { "streamerDuration", "-1" },
            { "startFrameIndex", "100" },
            { "endFrameIndex", "150" } },
          "Changing Event Type" },
    };
}

std::vector<Setter> settersOfTiming()
{
    return {
        { "setStreamerDuration",
          EventTypeADRCue,
          [] (Event& event) { event.setStreamerDuration (1, true); },
          { { "streamerDuration", "1" }, { "startFrameIndex", "75" } },
          "Changing Streamer Duration",
          News::timing },
        { "setStreamerDurationOfAFlutter",
          EventTypeFlutter,
          [] (Event& event) { event.setStreamerDuration (12, true); },
          { { "streamerDuration", "12" }, { "endFrameIndex", "112" } },
          "Changing Streamer Duration",
          News::timing },
        { "setStartTCString",
          EventTypeADRCue,
          [] (Event& event) { event.setStartTCString ("00:00:10:00"); },
          { { "startFrameIndex", "175" }, { "inPointFrameIndex", "250" }, { "endFrameIndex", "325" } },
          "Changing Event Timecode",
          News::timing,
          true },
        { "setEndTCString",
          EventTypeADRCue,
          [] (Event& event) { event.setEndTCString ("00:00:10:00"); },
          { { "endFrameIndex", "250" } },
          "Set Event Timecode",
          News::timing,
          true },
        { "setEndTCStringToNoTimecode",
          EventTypeADRCue,
          [] (Event& event) { event.setEndTCString ("--:--:--:--"); },
          { { "startFrameIndex", "-1" }, { "inPointFrameIndex", "-1" }, { "endFrameIndex", "-1" } },
          "Set Event Timecode",
          News::timing,
          true },
        // Four beats at 60 BPM are four seconds.
        { "setBeatsPerMinuteString",
          EventTypeStreamer,
          [] (Event& event) { event.setBeatsPerMinuteString ("60"); },
          { { "beatsPerMinute", "60" }, { "startFrameIndex", "0" } },
          "Changing Event BPM",
          News::attribute,
          true },
    };
}

std::vector<Setter> setters()
{
    auto all = settersOfContent();
    const auto timing = settersOfTiming();
    all.insert (all.end(), timing.begin(), timing.end());
    return all;
}

class EventSetter : public OvermarksTest, public ::testing::WithParamInterface<Setter>
{
protected:
    EventSetter()
    {
        prefer ("StreamerReferenceUnit", GetParam().type == EventTypeStreamer ? 0 : 1);
        event = makeEvent (GetParam().type, 100, -1, GetParam().type == EventTypeStreamer ? 1 : -1);
        withoutUndo (*event,
                     [] (Event& fresh)
                     {
                         fresh.setText (ZEP::Core::RichTextString ("Hello"));
                         fresh.setCharacterID ("EVE");
                     });
        before = fieldsOf (*event);
        after = before;
        for (const auto& [name, value] : GetParam().changes)
            after[name] = value;
        news.reset();
    }

    void expectNews (int count, const char* when) const
    {
        const bool isTiming = GetParam().news == News::timing;
        EXPECT_EQ (news.timings.count(), isTiming ? count : 0) << when;
        EXPECT_EQ (news.attributes.count(), isTiming ? 0 : count) << when;
    }

    EventNews news;
    std::shared_ptr<Event> event;
    Fields before;
    Fields after;
};

TEST_P (EventSetter, changesItsFieldsAndNoOthers)
{
    GetParam().set (*event);

    EXPECT_EQ (fieldsOf (*event), after);
}

TEST_P (EventSetter, makesOneStepUnderItsName)
{
    GetParam().set (*event);

    EXPECT_EQ (undoNames(), std::vector<std::string> { GetParam().undoName });
    EXPECT_FALSE (undoManager().canRedo());
}

TEST_P (EventSetter, isUndoneAndRedoneAnyNumberOfTimes)
{
    GetParam().set (*event);

    for (int round = 1; round <= 3; ++round)
    {
        ASSERT_TRUE (undoManager().undo());
        EXPECT_EQ (fieldsOf (*event), before) << "undo " << round;
        ASSERT_TRUE (undoManager().redo());
        EXPECT_EQ (fieldsOf (*event), after) << "redo " << round;
    }
}

TEST_P (EventSetter, tellsOnceAtTheChangeAtUndoAndAtRedo)
{
    GetParam().set (*event);
    expectNews (1, "change");
    undoManager().undo();
    expectNews (2, "undo");
    undoManager().redo();
    expectNews (3, "redo");
}

TEST_P (EventSetter, namesTheEventInItsNotification)
{
    GetParam().set (*event);

    const ZEP::Core::Notification& told =
        GetParam().news == News::timing ? static_cast<const ZEP::Core::Notification&> (news.timings.last())
                                        : news.attributes.last();
    EXPECT_EQ (eventsOf (told), std::vector<Event*> { event.get() });
    EXPECT_EQ (told.userInfo.size(), 1u);
}

TEST_P (EventSetter, makesNoStepForTheSameValue)
{
    GetParam().set (*event);
    news.reset();

    GetParam().set (*event);

    EXPECT_EQ (fieldsOf (*event), after);
    EXPECT_EQ (undoSteps(), GetParam().sameValueMakesStep ? 2u : 1u);
    expectNews (GetParam().sameValueMakesStep ? 1 : 0, "same value");
}

TEST_P (EventSetter, writesAndTellsWithoutAStepUnderBypass)
{
    event->setUndoBypass (true);
    after["undoBypass"] = "true";

    GetParam().set (*event);

    EXPECT_EQ (fieldsOf (*event), after);
    EXPECT_EQ (undoSteps(), 0u);
    expectNews (1, "under bypass");
}

TEST_P (EventSetter, isQuietForTheSameValueUnderBypass)
{
    event->setUndoBypass (true);
    GetParam().set (*event);
    news.reset();

    GetParam().set (*event);

    expectNews (GetParam().sameValueMakesStep ? 1 : 0, "same value under bypass");
}

TEST_P (EventSetter, makesItsStepInSilenceWhileSuppressed)
{
    event->setNotificationsSuppressed (true);

    GetParam().set (*event);
    undoManager().undo();
    undoManager().redo();

    after["notificationsSuppressed"] = "true";
    EXPECT_EQ (fieldsOf (*event), after);
    EXPECT_EQ (undoNames(), std::vector<std::string> { GetParam().undoName });
    EXPECT_EQ (news.count(), 0);
}

TEST_P (EventSetter, isSilentUnderBypassWhileSuppressed)
{
    event->setUndoBypass (true);
    event->setNotificationsSuppressed (true);

    GetParam().set (*event);

    after["undoBypass"] = after["notificationsSuppressed"] = "true";
    EXPECT_EQ (fieldsOf (*event), after);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
}

TEST_P (EventSetter, keepsTheEventAliveInTheHistory)
{
    const std::weak_ptr<Event> watched = event;
    GetParam().set (*event);

    event.reset();
    ASSERT_FALSE (watched.expired());
    undoManager().undo();
    EXPECT_EQ (fieldsOf (*watched.lock()), before);

    undoManager().clearUndoHistory();
    EXPECT_TRUE (watched.expired());
}

TEST_P (EventSetter, refusesAnEventThatNobodyShares)
{
    Event alone (*event);
    const auto untouched = fieldsOf (alone);

    EXPECT_THROW (GetParam().set (alone), std::bad_weak_ptr);
    EXPECT_EQ (fieldsOf (alone), untouched);
    EXPECT_EQ (undoSteps(), 0u);
}

INSTANTIATE_TEST_SUITE_P (All, EventSetter, ::testing::ValuesIn (setters()),
                          [] (const auto& row) { return std::string (row.param.name); });

// ---- single setters ------------------------------------------------------------------------------------------------

class EventSetters : public OvermarksTest
{
protected:
    static int uses (int code)
    {
        return ZEP::Core::ADRCueReasonsManager::sharedManager()->reasonCount (code);
    }

    std::shared_ptr<Event> event = makeEvent (EventTypeADRCue);
    EventNews news;
};

TEST_F (EventSetters, aDoneCueStaysDoneWithoutAStep)
{
    withoutUndo (*event, [] (Event& cue) { cue.setDone (true); });
    news.reset();

    event->setDone (true);

    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (EventSetters, undoBringsBackTheLookOfTheEarlierText)
{
    event->setText (loud());
    event->setText (ZEP::Core::RichTextString ("Come in!"));
    news.reset();

    undoManager().undo();

    EXPECT_EQ (event->getText(), loud());
    EXPECT_EQ (event->getText().formattedRuns().size(), 1u);
    EXPECT_EQ (news.attributes.count(), 1);
}

TEST_F (EventSetters, aTextThatDiffersInItsLookAloneIsAChange)
{
    event->setText (ZEP::Core::RichTextString (loud().getText()));
    event->setText (loud());

    EXPECT_EQ (event->getText(), loud());
    EXPECT_EQ (undoSteps(), 2u);
}

TEST_F (EventSetters, textsLoseWhatPlainTextFormatsCannotCarry)
{
    const juce::String curly =
        juce::CharPointer_UTF8 ("\xe2\x80\x9cNo\xe2\x80\x9d \xe2\x80\x94 he said\xe2\x80\xa6");
    event->setText (curly);
    event->setNotes (curly);
    event->setEngineeringNotes (curly);
    event->setCueNumber (curly);

    const juce::String plain ("\"No\" - he said...");
    EXPECT_EQ (event->getText().getText(), plain);
    EXPECT_EQ (event->getNotes().getText(), plain);
    EXPECT_EQ (event->getEngineeringNotes().getText(), plain);
    EXPECT_EQ (event->getCueNumber(), plain);
}

TEST_F (EventSetters, aCueNumberWithAnIllegalCharacterIsCleanedAndStillMakesAStep)
{
    event->setCueNumber ("12-A");
    event->setCueNumber (juce::CharPointer_UTF8 ("12\xe2\x80\x93"
                                                 "A"));

    EXPECT_EQ (event->getCueNumber(), juce::String ("12-A"));
    EXPECT_EQ (undoSteps(), 2u);
    EXPECT_EQ (news.attributes.count(), 2);
}

TEST_F (EventSetters, aTextWithAnIllegalCharacterMakesAStepEachTime)
{
    const ZEP::Core::RichTextString curly (juce::String (juce::CharPointer_UTF8 ("It\xe2\x80\x99s me")));

    event->setText (curly);
    event->setText (curly);

    EXPECT_EQ (event->getText().getText(), juce::String ("It's me"));
    EXPECT_EQ (undoSteps(), 2u);
}

TEST_F (EventSetters, lettersOfAnyLanguageStay)
{
    const juce::String text (juce::CharPointer_UTF8 (
        "Gr\xc3\xbc\xc3\x9f dich, \xd0\x98\xd0\xb2\xd0\xb0\xd0\xbd \xe2\x99\xaa \xf0\x9f\x98\x80"));

    event->setText (text);

    EXPECT_EQ (event->getText().getText(), text);
}

TEST_F (EventSetters, noReasonIsNotCounted)
{
    event->setReason (2);
    event->setReason (0);
    event->setReason (-1);

    EXPECT_EQ (uses (0), 0);
    EXPECT_EQ (uses (1), 0);
    EXPECT_EQ (event->getReason(), -1);
}

TEST_F (EventSetters, aReasonIsCountedOnceAndNotAgainByUndoAndRedo)
{
    event->setReason (1);
    EXPECT_EQ (uses (2), 1);

    undoManager().undo();
    undoManager().redo();
    event->setReason (1);

    EXPECT_EQ (uses (2), 1);
    EXPECT_EQ (uses (1), 0);
}

TEST_F (EventSetters, aReasonIsCountedUnderBypassToo)
{
    event->setUndoBypass (true);
    event->setReason (7);

    EXPECT_EQ (uses (8), 1);
}

TEST_F (EventSetters, anyNumberIsTakenAsItStands)
{
    for (const int number : { 99, -2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min() })
    {
        event->setReason (number);
        event->setRecTrackIndex (number);
        event->setNumRecordedTakes (number);
        event->setSelectedTake (number);
        event->setAltTake (number);
        event->setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (number));

        EXPECT_EQ (event->getReason(), number);
        EXPECT_EQ (event->getRecTrackIndex(), number);
        EXPECT_EQ (event->getNumRecordedTakes(), number);
        EXPECT_EQ (event->getSelectedTake(), number);
        EXPECT_EQ (event->getAltTake(), number);
        EXPECT_EQ (static_cast<int> (event->getForcedNarrativeRegion()), number);
    }
}

TEST_F (EventSetters, takesAreNotKeptConsistent)
{
    event->setNumRecordedTakes (4);
    event->setSelectedTake (3);
    event->setNumRecordedTakes (1);

    EXPECT_EQ (event->getSelectedTake(), 3);
}

TEST_F (EventSetters, everySetterIsAStepOfItsOwn)
{
    event->setDone (true);
    event->setCueNumber ("7");
    event->setAltTake (1);

    EXPECT_EQ (undoNames(), (std::vector<std::string> { "Changing Selected Take", "Changing Cue Number",
                                                        "Changing Event Done State" }));
}

TEST_F (EventSetters, aChangeIsVisibleToTheObserver)
{
    bool doneWhenTold = false;
    struct Observer
    {
        Event& event;
        bool& seen;
        void tell (const Poco::AutoPtr<EventAttributeDidChangeNotification>&) { seen = event.isDone(); }
    } observer { *event, doneWhenTold };
    const Poco::NObserver<Observer, EventAttributeDidChangeNotification> registration (observer,
                                                                                       &Observer::tell);

    Poco::NotificationCenter::defaultCenter().addObserver (registration);
    event->setDone (true);
    Poco::NotificationCenter::defaultCenter().removeObserver (registration);

    EXPECT_TRUE (doneWhenTold);
}

TEST_F (EventSetters, notifyChangeIfEnabledTellsUnlessSuppressed)
{
    event->notifyChangeIfEnabled();
    ASSERT_EQ (news.attributes.count(), 1);
    EXPECT_EQ (news.timings.count(), 0);
    EXPECT_EQ (eventsOf (news.attributes.last()), std::vector<Event*> { event.get() });

    event->setNotificationsSuppressed (true);
    event->notifyChangeIfEnabled();
    EXPECT_EQ (news.attributes.count(), 1);
}

TEST (EventNotificationKeys, haveTheirTexts)
{
    EXPECT_EQ (EventChangedNotification_EventsKey, "events");
    EXPECT_EQ (EventChangedNotification_RequiresListReloadKey, "requiresListReload");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
