// SPDX-License-Identifier: GPL-3.0-only
// Every setter of an event makes a step of the Edit menu and tells whoever listens.

#include "Reel.h"
#include "core/undo/UndoRedoHelpers.h"
#include "event/EventNotifications.h"
#include "list/EventArrayNotifications.h"

#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>

#include <iostream>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

/** Hears of changes, on the thread of the change and before the setter returns. It changes nothing itself. */
class Listener final
{
public:
    Listener() { forEachObserver (&Poco::NotificationCenter::addObserver); }
    ~Listener() { forEachObserver (&Poco::NotificationCenter::removeObserver); }

private:
    using Attribute = EventAttributeDidChangeNotification;
    using Timing = EventTimingDidChangeNotification;
    using Number = EventArrayNumberChangedNotification;

    void forEachObserver (void (Poco::NotificationCenter::*addOrRemove) (const Poco::AbstractObserver&))
    {
        auto& centre = Poco::NotificationCenter::defaultCenter();
        (centre.*addOrRemove) (Poco::NObserver<Listener, Attribute> (*this, &Listener::attributeChanged));
        (centre.*addOrRemove) (Poco::NObserver<Listener, Timing> (*this, &Listener::timingChanged));
        (centre.*addOrRemove) (Poco::NObserver<Listener, Number> (*this, &Listener::numberChanged));
    }

    void attributeChanged (const Poco::AutoPtr<Attribute>& news) { tell ("changed", *news); }
    void timingChanged (const Poco::AutoPtr<Timing>& news) { tell ("moved", *news); }
    void numberChanged (const Poco::AutoPtr<Number>&) { std::cout << "    the list has another length\n"; }

    static void tell (const char* what, const Notification& news)
    {
        const auto& events = news.userInfo.at (EventChangedNotification_EventsKey);
        for (const auto* event : Poco::AnyCast<std::vector<Event*>> (events))
            std::cout << "    " << event->getCueNumber() << " has " << what << "\n";
    }
};

void print (const char* done, Event& cue)
{
    const auto& history = *UndoRedoHelpers::sharedUndoManager();
    std::cout << done << ": " << cue.oneLineDescription() << "; can undo \"" << history.getUndoDescription()
              << "\", redo \"" << history.getRedoDescription() << "\"\n";
}

} // namespace

int main (int, char** argv)
{
    const auto project = example::openReel (example::fileFromArgument (argv[1]));
    auto& history = *UndoRedoHelpers::sharedUndoManager();
    const auto cue = project.list->filteredEvents.at (2);
    const Listener listener;
    print ("as it came", *cue);

    cue->setText (juce::String ("Nine, he says."));
    print ("edited", *cue);
    {
        const UndoRedoHelpers::CompoundStep step ("Move Scene"); // one command of the user is one step
        for (const auto& each : { cue, project.list->filteredEvents.at (3) })
            each->setStartTCString ("02:01:00:00");
    }
    project.list->sortContentAndUpdateFilteredEvents(); // the list doesn't listen to its events
    print ("moved", *cue);

    history.undo();
    project.list->sortContentAndUpdateFilteredEvents();
    print ("undone", *cue);
    history.redo();
    project.list->sortContentAndUpdateFilteredEvents();
    print ("redone", *cue);

    project.list->removeEvents ({ cue }, true); // bulk operations sort by themselves
    print ("removed", *cue);
    history.undo();
    print ("back again", *cue);
}
