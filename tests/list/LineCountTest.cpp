// SPDX-License-Identifier: GPL-3.0-only
#include "list/LineCount.h"
#include "support/CueLists.h"
#include "support/OvermarksTest.h"

namespace ZEP::Overmarks::Testing
{
namespace
{

class LineCountTest : public OvermarksTest
{
protected:
    void add (EventType type, const juce::String& number, bool isDone = false)
    {
        const auto added = event (type, number, 1, 1, 2);
        setField (*added, "done", isDone);
        count.add (*added);
    }

    LineCount count;
};

TEST_F (LineCountTest, nothingIsCountedYet)
{
    EXPECT_EQ (count.lines(), 0);
    EXPECT_EQ (count.cues(), 0);
    EXPECT_EQ (count.done(), 0);
    EXPECT_EQ (count.doneRatio(), 0.0f);
}

TEST_F (LineCountTest, linesOfOneNumberAreOneCue)
{
    add (EventTypeADRCue, "1");
    add (EventTypeADRCue, "2", true);
    add (EventTypeADRCue, "1");
    EXPECT_EQ (count.lines(), 3);
    EXPECT_EQ (count.cues(), 2);
    EXPECT_EQ (count.done(), 1);
    EXPECT_EQ (count.doneRatio(), 1.0f / 3.0f);
}

TEST_F (LineCountTest, noNumberIsANumber)
{
    add (EventTypeADRCue, {});
    add (EventTypeADRCue, {});
    add (EventTypeADRCue, "1");
    EXPECT_EQ (count.cues(), 2);
}

TEST_F (LineCountTest, onlyADRCuesAreLines)
{
    for (const auto type : { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeFadeIn,
                             EventTypeFadeOut, eventTypeUnset })
        add (type, "1", true);

    EXPECT_EQ (count.lines(), 0);
    EXPECT_EQ (count.cues(), 0);
    EXPECT_EQ (count.done(), 0);
}

TEST_F (LineCountTest, aDisabledLineIsALine)
{
    const auto disabled = event (EventTypeADRCue, "1", 1, 1, 2);
    setField (*disabled, "enabled", false);
    count.add (*disabled);
    EXPECT_EQ (count.lines(), 1);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
