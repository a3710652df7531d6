// SPDX-License-Identifier: GPL-3.0-only
// What becomes of a list that is put in order while the memory is full.
#include "list/ProjectFileSupport.h"
#include "memory/MemoryBudget.h"

#include <algorithm>
#include <new>

namespace ZEP::Overmarks::Testing
{
namespace
{

class EventArrayMemoryTest : public ProjectFileTest
{
protected:
    static bool holdsNoNull (const EventArray::Events& events)
    {
        return std::find (events.begin(), events.end(), nullptr) == events.end();
    }

    /** @returns whether the memory sufficed */
    static bool sortWithin (std::size_t bytes, EventArray& list)
    {
        const MemoryBudget budget (bytes);

        try
        {
            list.sortContentAndUpdateFilteredEvents();
            return true;
        }
        catch (const std::bad_alloc&)
        {
            return false;
        }
    }

    /** A list of 1 000 cues, not sorted yet, whose texts have an order of their own. */
    static Project unsortedProject()
    {
        auto project = Project::createEmpty (timeInfoAt ("25", "01:00:00:00"));
        project.makeCurrent();
        project.list->sortContentAndUpdateFilteredEvents();

        for (int i = 0; i < 1000; ++i)
        {
            const auto cue = makeEvent (EventTypeADRCue, 5000 - i, 6000 - i);
            cue->setUndoBypass (true);
            cue->setText (juce::String (i * 619 % 1000));
            project.list->events.push_back (cue);
        }

        return project;
    }
};

TEST_F (EventArrayMemoryTest, noListLosesAnEventWhereverTheMemoryRunsOut)
{
    for (const auto* const key : { "", "Text" })
    {
        const auto project = unsortedProject();
        auto& list = *project.list;
        list.sortKey = key;
        const auto unsorted = list.events;
        auto all = unsorted;
        std::sort (all.begin(), all.end());
        int failures = 0;

        for (std::size_t bytes = 0;; bytes += 256)
        {
            list.events = unsorted;

            if (sortWithin (bytes, list))
                break;

            ++failures;
            ASSERT_EQ (list.filteredEvents.size(), list.sortedFilteredEvents.size()) << bytes;
            ASSERT_TRUE (holdsNoNull (list.filteredEvents)) << bytes;
            ASSERT_TRUE (holdsNoNull (list.sortedFilteredEvents)) << bytes;
            auto left = list.events;
            std::sort (left.begin(), left.end());
            ASSERT_TRUE (left == all) << bytes;
        }

        EXPECT_GT (failures, 10);
        EXPECT_EQ (list.filteredEvents.size(), 1000U) << "the two fades aren't listed";
        EXPECT_EQ (list.sortedFilteredEvents.size(), 1000U);
        EXPECT_TRUE (holdsNoNull (list.filteredEvents) && holdsNoNull (list.sortedFilteredEvents));
    }
}

TEST_F (EventArrayMemoryTest, afterAnEditTheListIsRightAsSoonAsTheMemorySuffices)
{
    const auto project = unsortedProject();
    auto& list = *project.list;
    list.sortKey = "Text";
    int failures = 0;

    for (std::size_t bytes = 0;; bytes += 256)
    {
        list.sortContentAndUpdateFilteredEvents(); // an order to follow
        list.filteredEvents[100]->setText (juce::String (bytes));
        list.filteredEvents[200]->setStartTCString ("01:00:00:01");
        list.removeEvent (list.filteredEvents[300], false);

        if (sortWithin (bytes, list))
            break;

        ++failures;
        ASSERT_TRUE (holdsNoNull (list.filteredEvents)) << bytes;
        ASSERT_TRUE (holdsNoNull (list.sortedFilteredEvents)) << bytes;
        ASSERT_GT (list.events.size(), 500U) << bytes << " aren't enough for a list like this";
    }

    EXPECT_GT (failures, 10);
    const auto fresh = list.deepCopy();
    fresh->sortContentAndUpdateFilteredEvents();
    ASSERT_EQ (list.sortedFilteredEvents.size(), fresh->sortedFilteredEvents.size());

    for (std::size_t i = 0; i < list.sortedFilteredEvents.size(); ++i)
        EXPECT_EQ (list.sortedFilteredEvents[i]->getText(), fresh->sortedFilteredEvents[i]->getText()) << i;
}

} // namespace
} // namespace ZEP::Overmarks::Testing
