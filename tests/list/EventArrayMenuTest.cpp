// SPDX-License-Identifier: GPL-3.0-only
// The Edit menu follows every step of the list and of its events.
#include "list/EventArray.h"

#include "support/CueLists.h"
#include "support/OvermarksTest.h"
#include "support/UndoHistory.h"

#include <cstdlib>
#include <functional>
#include <juce_gui_basics/juce_gui_basics.h>
#include <ostream>

namespace ZEP::Overmarks::Testing
{
namespace
{

struct Edit
{
    const char* name;
    std::function<void (EventArray&)> make;
};

void PrintTo (const Edit& edit, std::ostream* out) { *out << edit.name; }

class Menu final : public juce::ApplicationCommandManagerListener
{
public:
    void applicationCommandInvoked (const juce::ApplicationCommandTarget::InvocationInfo&) override {}
    void applicationCommandListChanged() override { ++changes; }

    int changes = 0;
};

class EventArrayMenuTest : public OvermarksTest, public ::testing::WithParamInterface<Edit>
{
protected:
    /** A display that goes away would take the program with it. */
    EventArrayMenuTest() { ::unsetenv ("DISPLAY"); }
};

TEST_P (EventArrayMenuTest, theMenuFollowsTheStep)
{
    const juce::ScopedJuceInitialiser_GUI messages;
    juce::ApplicationCommandManager commands;
    Menu menu;
    const auto list = listOf ({ cue ("A1", 100) });
    undoManager().setCommandManager (&commands);
    juce::MessageManager::getInstance()->runDispatchLoopUntil (10);
    commands.addListener (&menu);

    GetParam().make (*list);
    for (int i = 0; i < 100 && menu.changes == 0; ++i)
        juce::MessageManager::getInstance()->runDispatchLoopUntil (10);
    EXPECT_EQ (menu.changes, 1);

    commands.removeListener (&menu);
    undoManager().setCommandManager (nullptr);
    undoManager().clearUndoHistory();
}

INSTANTIATE_TEST_SUITE_P (
    Edits, EventArrayMenuTest,
    ::testing::Values (
        Edit { "addEvent", [] (EventArray& list) { list.addEvent (cue ("B1", 200), true); } },
        Edit { "addEvents", [] (EventArray& list) { list.addEvents ({ cue ("B1", 200) }, true); } },
        Edit { "removeEvent", [] (EventArray& list) { list.removeEvent (list.events[2], true); } },
        Edit { "removeEvents", [] (EventArray& list) { list.removeEvents (list.filteredEvents, true); } },
        Edit { "editOfAnEvent", [] (EventArray& list) { list.events[2]->setDone (true); } }),
    [] (const auto& row) { return std::string (row.param.name); });

} // namespace
} // namespace ZEP::Overmarks::Testing
