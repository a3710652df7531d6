// SPDX-License-Identifier: GPL-3.0-only
#include "export/TTALActionTime.h"

#include "export/ExportSupport.h"

#include <array>
#include <limits>

using namespace ExportSupport;

namespace
{

using Indices = std::array<int, 3>;

Indices indicesOf (const Event& event)
{
    return { event.getStartFrameIndex(), event.getInPointFrameIndex(), event.getEndFrameIndex() };
}

using TTALActionTimeTest = ExportTest;

} // namespace

TEST_F (TTALActionTimeTest, eventsCountFromTheFirstFrameOfActionWhileItLasts)
{
    const auto cue = event ({ "1", 1000, 1050 });
    const auto before = indicesOf (*cue);
    {
        const TTALActionTime scope ({ cue }, 300);
        EXPECT_EQ (indicesOf (*cue), (Indices { before[0] - 300, 700, 750 }));
    }
    EXPECT_EQ (indicesOf (*cue), before);
}

TEST_F (TTALActionTimeTest, anEventThatIsListedTwiceIsMovedOnce)
{
    const auto cue = event ({ "1", 1000, 1050 });
    {
        const TTALActionTime scope ({ cue, cue }, 300);
        EXPECT_EQ (cue->getInPointFrameIndex(), 700);
    }
    EXPECT_EQ (cue->getInPointFrameIndex(), 1000);
}

TEST_F (TTALActionTimeTest, anyIndexFindsItsWayBack)
{
    const auto untimed = Event::create (EventTypeADRCue, timeInfo, -1, -1, -1.0f, 3);
    const auto before = indicesOf (*untimed);

    for (const int offset : { 0, -300, std::numeric_limits<int>::max(), std::numeric_limits<int>::min() })
    {
        {
            const TTALActionTime scope ({ untimed }, offset);
        }
        EXPECT_EQ (indicesOf (*untimed), before) << offset;
    }
}

TEST_F (TTALActionTimeTest, undoAndNotificationsAreOnAfterwards)
{
    const auto cue = event ({ "1" });
    cue->setUndoBypass (true);
    cue->setNotificationsSuppressed (true);
    {
        const TTALActionTime scope ({ cue }, 10);
        EXPECT_FALSE (cue->isUndoBypassed());
        EXPECT_FALSE (cue->areNotificationsSuppressed());
        cue->setUndoBypass (true);
        cue->setNotificationsSuppressed (true);
    }
    EXPECT_FALSE (cue->isUndoBypassed());
    EXPECT_FALSE (cue->areNotificationsSuppressed());
}
