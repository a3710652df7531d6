// SPDX-License-Identifier: GPL-3.0-only
// Three events of a reel that starts at 02:00:00:00, put in out of order, listed in the order of the picture.

#include "core/cast/ADRCharacter.h"
#include "core/timecode/TCToolbox.h"
#include "list/Project.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <iostream>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

std::shared_ptr<TimeInfo> reelTwo()
{
    _TCDef pal;
    pal.undefined = false;
    return std::make_shared<TimeInfo> (pal, TCToolbox::tcTimeFromString ("02:00:00:00"));
}

std::shared_ptr<Event> makeEvent (const Project& project, EventType type, const char* start,
                                  const juce::String& text)
{
    auto event = Event::create (type, project.timeInfo, 0, -1, -1.0f, -1);
    event->setUndoBypass (true); // a new event's first values are no steps of the user
    event->setStartTCString (start);
    event->setText (text);
    event->setUndoBypass (false);
    return event;
}

void print (const EventArray& list)
{
    for (const auto& event : list.sortedFilteredEvents)
    {
        const auto character = event->character();
        std::cout << event->getStartTCString() << "  " << event->getEndTCString() << "  "
                  << event->typeString() << "  "
                  << (character != nullptr ? character->name + ": " : juce::String())
                  << event->getText().getText() << "\n";
    }
}

} // namespace

int main()
{
    UserDefaultsRegistrar::registerUserDefaults();

    const auto project = Project::createEmpty (reelTwo());
    project.makeCurrent();
    const auto martha =
        project.characters->addCharacter (std::make_shared<ADRCharacter> ("MARTHA"), false, {});

    const auto answer =
        makeEvent (project, EventTypeADRCue, "02:00:31:10", "They told me she sailed at six.");
    const auto call = makeEvent (project, EventTypeADRCue, "02:00:24:18", "Tamm! Is the Brigid in?");
    const auto scene = makeEvent (project, EventTypeMarker, "02:00:08:00", "Sc. 21 EXT. HARBOUR - NIGHT");
    project.list->addEvents ({ answer, call, scene }, true);

    answer->setCharacterID (martha);
    call->setCharacterID (martha);
    project.list->sortContentAndUpdateFilteredEvents(); // the list does not listen to its events

    print (*project.list);
}
