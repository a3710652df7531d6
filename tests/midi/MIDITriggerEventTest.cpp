// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEvent.h"

#include "proto/midi.pb.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>

#include <google/protobuf/descriptor.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using tessera1::ProtoMIDITriggerEvent;

class MIDITriggerEventTest : public OvermarksTest
{
};

MIDITriggerEvent storedAndRead (MIDITriggerEvent& trigger)
{
    ProtoMIDITriggerEvent record;
    trigger.fillProtoObject (&record);
    MIDITriggerEvent read;
    EXPECT_TRUE (read.initWithProtoObject (&record));
    return read;
}

TEST_F (MIDITriggerEventTest, aNewOneIsEmpty)
{
    const MIDITriggerEvent trigger;
    EXPECT_EQ (trigger.triggerMessage, "");
    EXPECT_EQ (trigger.label, "");
    EXPECT_EQ (trigger.lastTriggerTimestamp, -1.0);
    EXPECT_EQ (trigger.event, nullptr);
    EXPECT_EQ (trigger.colour, juce::Colours::transparentBlack);
    EXPECT_EQ (trigger.actionIndex, -1);
}

TEST_F (MIDITriggerEventTest, everythingButTheTimeOfItsLastArrivalIsStored)
{
    MIDITriggerEvent trigger;
    trigger.triggerMessage = "CC 3 64";
    trigger.label = "Pedal – links";
    trigger.lastTriggerTimestamp = 8.5;
    trigger.event = makeEvent (EventType::EventTypeStreamer, 250);
    trigger.colour = juce::Colour (0x8012FEFF);
    trigger.actionIndex = 12;

    const auto read = storedAndRead (trigger);
    EXPECT_EQ (read.triggerMessage, "CC 3 64");
    EXPECT_EQ (read.label, "Pedal – links");
    EXPECT_EQ (read.lastTriggerTimestamp, -1.0);
    ASSERT_NE (read.event, nullptr);
    EXPECT_EQ (read.event->getUuid(), trigger.event->getUuid());
    EXPECT_EQ (read.event->getType(), EventType::EventTypeStreamer);
    EXPECT_EQ (read.event->getInPointFrameIndex(), 250);
    EXPECT_EQ (read.colour.getARGB(), 0x8012FEFFu);
    EXPECT_EQ (read.actionIndex, 12);
}

TEST_F (MIDITriggerEventTest, theStoredEventHasNoTimeReference)
{
    MIDITriggerEvent trigger;
    trigger.event = makeEvent (EventType::EventTypeStreamer);
    EXPECT_EQ (storedAndRead (trigger).event->getTimeInfo(), nullptr);
}

TEST_F (MIDITriggerEventTest, aRecordWithoutAnEventGivesTheDefaultOne)
{
    ProtoMIDITriggerEvent record;
    MIDITriggerEvent read;
    EXPECT_TRUE (read.initWithProtoObject (&record));
    ASSERT_NE (read.event, nullptr);
    EXPECT_EQ (read.event->getInPointFrameIndex(), 0);
    EXPECT_FALSE (read.event->getUuid().isEmpty());
    EXPECT_FALSE (record.has_event());
    EXPECT_EQ (read.actionIndex, 0);
}

TEST_F (MIDITriggerEventTest, loadingReplacesWhatWasThereButNotTheTimeOfItsLastArrival)
{
    MIDITriggerEvent trigger;
    trigger.triggerMessage = "NoteOn 1 60";
    trigger.label = "old";
    trigger.lastTriggerTimestamp = 3.0;
    const auto former = trigger.event = makeEvent (EventType::EventTypeADRCue);
    ProtoMIDITriggerEvent record;
    record.set_triggermessage ("PC 1 5");
    EXPECT_TRUE (trigger.initWithProtoObject (&record));
    EXPECT_EQ (trigger.triggerMessage, "PC 1 5");
    EXPECT_EQ (trigger.label, "");
    EXPECT_NE (trigger.event, former);
    EXPECT_EQ (trigger.lastTriggerTimestamp, 3.0);
}

TEST_F (MIDITriggerEventTest, aTriggerWithoutAnEventIsStoredWithADefaultOne)
{
    MIDITriggerEvent trigger;
    ProtoMIDITriggerEvent record;
    trigger.fillProtoObject (&record);
    EXPECT_TRUE (record.has_event());
    EXPECT_EQ (record.event().ByteSizeLong(), 0u);
}

TEST_F (MIDITriggerEventTest, anEventThatIsThereInTheRecordIsFilledAgain)
{
    ProtoMIDITriggerEvent record;
    record.mutable_event()->set_uuid ("old");
    MIDITriggerEvent trigger;
    trigger.event = makeEvent (EventType::EventTypeADRCue);
    trigger.fillProtoObject (&record);
    EXPECT_EQ (record.event().uuid(), trigger.event->getUuid().toStdString());
}

TEST_F (MIDITriggerEventTest, aTextThatIsNoUTF8DoesntMakeTheListUnreadable)
{
    MIDITriggerEvent trigger;
    trigger.triggerMessage = "NoteOn 1 60";
    trigger.label = "T\xFCr";
    ProtoMIDITriggerEvent record;
    trigger.fillProtoObject (&record);
    ProtoMIDITriggerEvent read;
    ASSERT_TRUE (read.ParseFromString (record.SerializeAsString()));
    EXPECT_EQ (read.label(), "T\xEF\xBF\xBDr");
}

TEST_F (MIDITriggerEventTest, fieldsStayWhereOlderFilesHaveThem)
{
    const auto* trigger = ProtoMIDITriggerEvent::descriptor();
    int number = 0;

    for (const auto* name : { "triggerMessage", "label", "event", "colour", "actionIndex" })
        EXPECT_EQ (trigger->FindFieldByName (name)->number(), ++number) << name;

    EXPECT_EQ (trigger->field_count(), number);
    EXPECT_EQ (tessera1::ProtoMIDITriggerEventList::descriptor()->FindFieldByName ("events")->number(), 1);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
