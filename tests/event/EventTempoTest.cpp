// SPDX-License-Identifier: GPL-3.0-only
// The tempo of a streamer that is counted in bars.
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

namespace ZEP::Overmarks::Testing
{
namespace
{

class EventTempo : public OvermarksTest
{
protected:
    EventTempo()
    {
        prefer (StreamerReferenceUnitPrefKey, 0);
        streamer = makeEvent (EventTypeStreamer, 1000, -1, 1);
    }

    EventNews news;
    std::shared_ptr<Event> streamer;
};

TEST_F (EventTempo, isTakenFrom21To299)
{
    for (const auto* text : { "21", "22", "120", "298", "299", " 60 ", "60 BPM", "60.9" })
    {
        streamer->setBeatsPerMinuteString (text);
        EXPECT_EQ (streamer->getBeatsPerMinute(), static_cast<float> (juce::String (text).getIntValue()))
            << text;
    }
}

TEST_F (EventTempo, isIgnoredOutsideOfThat)
{
    const auto before = fieldsOf (*streamer);
    for (const auto* text : { "20", "300", "0", "-60", "", "fast", "99999999999999999999" })
    {
        streamer->setBeatsPerMinuteString (text);
        EXPECT_EQ (fieldsOf (*streamer), before) << text;
    }
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (EventTempo, movesTheStartAndIsUndone)
{
    ASSERT_EQ (timesOf (*streamer), "950|1000..1000");

    streamer->setBeatsPerMinuteString ("60");
    EXPECT_EQ (timesOf (*streamer), "900|1000..1000");
    EXPECT_EQ (streamer->getBeatsPerMinute(), 60.0f);

    undoManager().undo();
    EXPECT_EQ (timesOf (*streamer), "950|1000..1000");
    EXPECT_EQ (streamer->getBeatsPerMinute(), 120.0f);
    EXPECT_EQ (news.attributes.count(), 2);
    EXPECT_EQ (news.timings.count(), 0);
}

TEST_F (EventTempo, undoBringsBackAnInPointBeforeThePicture)
{
    const auto info = timeInfoAt ("25", "01:00:00:00");
    streamer->setTimeInfo (info);
    withoutUndo (*streamer, [] (Event& event) { event.setStartTCString ("00:59:59:00"); });
    ASSERT_EQ (timesOf (*streamer), "-75|-25..-25");

    streamer->setBeatsPerMinuteString ("60");
    EXPECT_EQ (timesOf (*streamer), "-100|0..0");

    undoManager().undo();
    EXPECT_EQ (timesOf (*streamer), "-75|-25..-25");
}

TEST_F (EventTempo, isWrittenWhateverTheTypeAndTheStartFollows)
{
    const auto cue = makeEvent (EventTypeADRCue, 1000, 1500, 1);
    cue->setBeatsPerMinuteString ("60");
    EXPECT_EQ (cue->getBeatsPerMinute(), 60.0f);
    EXPECT_EQ (timesOf (*cue), "975|1000..1500");

    const auto fade = makeEvent (EventTypeFadeIn, 1000, 1500, 1);
    withoutUndo (*fade, [] (Event& event) { event.setStartTCString ("00:00:40:00"); });
    fade->setBeatsPerMinuteString ("60");
    EXPECT_EQ (timesOf (*fade), "-1|1000..1000");
}

TEST_F (EventTempo, readsAsAWholeNumber)
{
    EXPECT_EQ (streamer->beatsPerMinuteString(), juce::String ("120"));
    EXPECT_EQ (makeEvent (EventTypeStreamer, 1000, -1, 1, 89.9f)->beatsPerMinuteString(),
               juce::String ("89"));
    EXPECT_EQ (makeEvent (EventTypeStreamer, 1000, -1, 1, 0.0f)->beatsPerMinuteString(), juce::String ("0"));
    EXPECT_EQ (makeEvent (EventTypeADRCue)->beatsPerMinuteString(), juce::String ("--"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
