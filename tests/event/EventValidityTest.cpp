// SPDX-License-Identifier: GPL-3.0-only
// What validate() says of an event, in its own words.
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"

#include <string_view>
#include <type_traits>

namespace ZEP::Overmarks::Testing
{
namespace
{

class EventValidity : public OvermarksTest
{
protected:
    /** The message of validate(), or "valid". */
    static juce::String verdict (const Event& event)
    {
        juce::String message ("untouched");
        if (! event.validate (message))
            return message;
        EXPECT_EQ (message, juce::String ("untouched"));
        return "valid";
    }

    /** An event with these indices just as they stand. */
    static std::shared_ptr<Event> eventWith (EventType type, int start, int inPoint, int end)
    {
        const auto event = makeUntimedEvent (type);
        EventFields::visit (*event,
                            [&] (std::string_view name, auto& field)
                            {
                                if constexpr (std::is_same_v<std::remove_reference_t<decltype (field)>, int>)
                                {
                                    if (name == "startFrameIndex")
                                        field = start;
                                    else if (name == "inPointFrameIndex")
                                        field = inPoint;
                                    else if (name == "endFrameIndex")
                                        field = end;
                                }
                            });
        return event;
    }
};

TEST_F (EventValidity, freshEventsWithALengthAreValid)
{
    for (const auto type : { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeADRCue })
        EXPECT_EQ (verdict (*makeEvent (type, 1000)), juce::String ("valid"));
}

TEST_F (EventValidity, startAndEndMustBeSet)
{
    const juce::String message ("Both the start and end frame index must be set");

    EXPECT_EQ (verdict (*eventWith (EventTypeADRCue, -1, 100, 200)), message);
    EXPECT_EQ (verdict (*eventWith (EventTypeADRCue, 50, 100, -1)), message);
    EXPECT_EQ (verdict (Event()), message);
}

TEST_F (EventValidity, aTimeReferenceMustBeSet)
{
    const auto event = eventWith (EventTypeADRCue, 50, 100, 200);
    event->setTimeInfo (nullptr);

    EXPECT_EQ (verdict (*event), juce::String ("A movie info must be set"));
}

TEST_F (EventValidity, theTimecodeDefinitionMustBeSet)
{
    const auto event = eventWith (EventTypeADRCue, 50, 100, 200);
    event->setTimeInfo (std::make_shared<ZEP::Core::TimeInfo>());

    EXPECT_EQ (verdict (*event), juce::String ("The TC def must be set"));
}

TEST_F (EventValidity, theStartMustLieBeforeTheEnd)
{
    const juce::String message ("The start frame index must be before the end frame index");

    EXPECT_EQ (verdict (*eventWith (EventTypeADRCue, 200, 200, 200)), message);
    EXPECT_EQ (verdict (*eventWith (EventTypeADRCue, 201, 200, 200)), message);
    EXPECT_EQ (verdict (*eventWith (EventTypeADRCue, 50, 201, 200)), message);
    EXPECT_EQ (verdict (*eventWith (EventTypeADRCue, 50, 200, 200)), juce::String ("valid"));
    EXPECT_EQ (verdict (*eventWith (EventTypeADRCue, -50, 200, 200)), juce::String ("valid"));
}

TEST_F (EventValidity, aMarkerMustHaveALength)
{
    EXPECT_EQ (verdict (*eventWith (EventTypeMarker, 50, 200, 200)), juce::String ("Invalid marker length"));
    EXPECT_EQ (verdict (*eventWith (EventTypeMarker, 200, 200, 200)),
               juce::String ("The start frame index must be before the end frame index"));
}

TEST_F (EventValidity, aMarkerMustStartAtItsInPoint)
{
    EXPECT_EQ (verdict (*eventWith (EventTypeMarker, 50, 100, 200)),
               juce::String ("Marker - start and in point frame index not equal"));
    EXPECT_EQ (verdict (*eventWith (EventTypeMarker, 100, 100, 200)), juce::String ("valid"));
}

TEST_F (EventValidity, aFadeIsNeverValid)
{
    const auto event = makeEvent (EventTypeFadeIn, 1000);
    event->setStartTCString ("00:00:10:00");

    EXPECT_EQ (timesOf (*event), "250|250..250");
    EXPECT_EQ (verdict (*event), juce::String ("The start frame index must be before the end frame index"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
