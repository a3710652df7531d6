// SPDX-License-Identifier: GPL-3.0-only
// Whole lives of lists: adding, removing, editing, undoing, filtering, selecting, sorting, storing in any order, each step
// compared with the same said slowly. OVERMARKS_TEST_STEPS sets how many steps are taken.
#include "list/EventArray.h"

#include "preferences/PreferenceKeys.h"
#include "proto/overmarks.pb.h"
#include "support/CompareProjects.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/RandomEvents.h"
#include "support/SlowList.h"
#include "support/UndoHistory.h"

#include <cstdlib>
#include <functional>
#include <gmock/gmock.h>
#include <iostream>
#include <map>
#include <string>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Events = EventArray::Events;

constexpr int stepsOfALife = 300;
constexpr int stepsEveryDay = 30000;

int numberOfSteps()
{
    const auto* given = std::getenv ("OVERMARKS_TEST_STEPS");
    return given != nullptr ? std::atoi (given) : stepsEveryDay;
}

/** A list and the same said slowly, to which the same is done. */
class Life final
{
public:
    explicit Life (unsigned int seed) : random (seed)
    {
        random.castCharacters();
        model.events = list->events;
        const auto first = newEvents (random.below (40));
        list->addEvents (first, false);
        if (! first.empty())
            model.add (first);
    }

    ~Life() { undoManager().clearUndoHistory(); }

    Life (const Life&) = delete;
    Life& operator= (const Life&) = delete;

    void step()
    {
        struct Deed
        {
            int weight;
            const char* name;
            void (Life::*perform)();
        };
        static constexpr Deed deeds[] = {
            { 3, "add", &Life::add },
            { 2, "add one", &Life::addOne },
            { 3, "remove", &Life::remove },
            { 2, "remove one", &Life::removeOne },
            { 8, "edit", &Life::edit },
            { 7, "undo", &Life::undo },
            { 5, "redo", &Life::redo },
            { 5, "refresh", &Life::refresh },
            { 4, "sort", &Life::sort },
            { 7, "filter", &Life::filter },
            { 8, "select", &Life::select },
            { 1, "clear selection", &Life::clearSelection },
            { 20, "step", &Life::stepThroughList },
            { 1, "save and load", &Life::saveAndLoad },
        };
        int total = 0;
        for (const auto& deed : deeds)
            total += deed.weight;
        int chance = random.below (total);
        for (const auto& deed : deeds)
            if ((chance -= deed.weight) < 0)
            {
                story += std::string (story.empty() ? "" : ", ") + deed.name;
                (this->*deed.perform)();
                return;
            }
    }

    /** Where the list differs from what it should be, in words; empty if nowhere. */
    std::string difference()
    {
        std::string words;
        const auto compare = [&] (const char* name, const Events& actual, const Events& expected)
        {
            if (actual != expected)
                words += std::string (name) + ":\n" + linesOf (actual) + "instead of\n" + linesOf (expected);
        };
        compare ("events", list->events, model.events);
        compare ("filteredEvents", list->filteredEvents, model.listed);
        compare ("sortedFilteredEvents", list->sortedFilteredEvents, model.shown);
        compare ("selectedEvents", list->selectedEvents, model.selected);
        compare ("sortedSelectedEvents", list->sortedSelectedEvents, model.shownSelected);
        for (const auto& each : model.listed)
            if (each->isHiddenByFilter() != model.dimmed.contains (each.get()))
                words += "dimmed or not: " + lineOf (*each) + "\n";
        if (diary.read() != std::exchange (model.told, {}))
            words += "other news\n";
        if (undoSteps() != position)
            words += "other number of undo steps\n";
        return words + complaint;
    }

    std::string story; ///< the deeds so far

private:
    /** A step of the history: how the model undoes and does it once more. */
    struct Step
    {
        std::function<void()> undo, redo;
    };

    void enter (Step step)
    {
        history.resize (position);
        history.push_back (std::move (step));
        ++position;
    }

    // ---- adding and removing -------------------------------------------------------------------------------------

    Events newEvents (int number)
    {
        Events made;
        for (int i = 0; i < number; ++i)
        {
            made.push_back (random.oneIn (4) ? random.untimed() : random.timed());
            // Unset ones don't come back: a reason is stored as none, a duration is filled in by the first edit of a time.
            setField (*made.back(), "reason", random.below (41));
            setField (*made.back(), "streamerDuration", random.oneOf<int> ({ 1, 2, 3, 5 }));
        }
        return made;
    }

    /** Some events of the list, none twice, seldom the fades. */
    Events someEvents (int most)
    {
        auto pool = random.oneIn (2) ? model.shown : model.events;
        if (! random.oneIn (10))
            std::erase_if (pool, [this] (const auto& each)
                           { return each == list->fadeInEvent || each == list->fadeOutEvent; });
        random.shuffle (pool);
        pool.resize (std::min (pool.size(), static_cast<std::size_t> (random.below (most + 1))));
        return pool;
    }

    void add()
    {
        const auto added = newEvents (model.events.size() > 60 ? 0 : random.below (6));
        const bool withUndo = random.oneIn (2);
        list->addEvents (added, withUndo);
        if (added.empty())
            return;
        model.add (added);
        if (withUndo)
            enter ({ [this, added] { model.undoAdd (added); }, [this, added] { model.add (added); } });
    }

    void addOne()
    {
        const auto added = newEvents (1);
        const bool withUndo = random.oneIn (2);
        list->addEvent (added[0], withUndo);
        model.append (added);
        if (withUndo)
            enter ({ [this, added] { model.erase (added); }, [this, added] { model.append (added); } });
    }

    void remove()
    {
        // A step that can be undone takes no event that is gone already: its undo would add that one.
        const bool withUndo = random.oneIn (2);
        auto removed = someEvents (5);
        std::erase_if (removed, [&] (const auto& each) { return withUndo && ! isInList (each); });
        keepFades (removed);
        list->removeEvents (removed, withUndo);
        model.remove (removed);
        if (withUndo)
            enter ({ [this, removed] { model.undoRemove (removed); },
                     [this, removed] { model.remove (removed); } });
    }

    void removeOne()
    {
        const bool withUndo = random.oneIn (2);
        auto removed = someEvents (1);
        std::erase_if (removed, [&] (const auto& each) { return ! isInList (each); });
        keepFades (removed);
        if (removed.empty())
            return;
        list->removeEvent (removed[0], withUndo);
        model.erase (removed);
        if (withUndo)
            enter (
                { [this, removed] { model.append (removed); }, [this, removed] { model.erase (removed); } });
    }

    bool isInList (const std::shared_ptr<Event>& wanted) const
    {
        return std::find (model.events.begin(), model.events.end(), wanted) != model.events.end();
    }

    /** A project can't be stored without its fades. */
    void keepFades (Events& removed) const
    {
        std::erase_if (removed, [this] (const auto& each)
                       { return each == list->fadeInEvent || each == list->fadeOutEvent; });
    }

    // ---- editing and undoing -------------------------------------------------------------------------------------

    void change (Event& event)
    {
        const bool hasPlainTiming = event.getType() == EventTypeADRCue || event.getType() == EventTypeMarker
                                    || event.getType() == EventTypeStreamer;
        const auto other = random.untimed();
        switch (random.below (hasPlainTiming ? 6 : 4))
        {
            case 0: event.setCueNumber (other->getCueNumber()); break;
            case 1: event.setText (other->getText()); break;
            case 2: event.setCharacterID (other->getCharacterID()); break;
            case 3: event.setDone (other->isDone()); break;
            case 4: event.setStartTCString ("no timecode"); break;
            case 5:
                event.setStartTCString ("00:00:" + juce::String (random.between (10, 20)) + ":"
                                        + juce::String (random.oneOf<const char*> ({ "00", "05", "20" })));
                break;
        }
    }

    void edit()
    {
        const auto chosen = someEvents (1);
        if (chosen.empty())
            return;
        const auto before = storedFieldsOf (*chosen[0]);
        {
            const ZEP::Core::UndoRedoHelpers::CompoundStep one ("Edit");
            change (*chosen[0]);
        }
        const auto after = storedFieldsOf (*chosen[0]);
        const auto expect = [this, event = chosen[0]] (const auto& fields)
        {
            if (storedFieldsOf (*event) != fields)
                complaint += "undo or redo of an edit: " + lineOf (*event) + "\n";
        };
        if (undoSteps() > position || after != before)
            enter ({ [expect, before] { expect (before); }, [expect, after] { expect (after); } });
        else if (position < history.size() && undoManager().getRedoDescriptions().isEmpty())
            history.resize (position);
    }

    void undo()
    {
        if (undoManager().undo() != (position > 0))
            complaint += "undo where there is none, or none where there is one\n";
        if (position > 0)
            history[--position].undo();
    }

    void redo()
    {
        if (undoManager().redo() != (position < history.size()))
            complaint += "redo where there is none, or none where there is one\n";
        if (position < history.size())
            history[position++].redo();
    }

    // ---- order, filter and selection -----------------------------------------------------------------------------

    void refresh()
    {
        list->sortContentAndUpdateFilteredEvents();
        model.refresh();
    }

    void sort()
    {
        model.sortKey = list->sortKey = random.oneOf (allSortKeys());
        model.down = list->sortDescending = random.oneIn (2);
        if (! random.oneIn (4))
            refresh();
    }

    static std::map<juce::String, juce::String> parametersFor (const FilterQuestion& question)
    {
        return { { EventCharacterFilterKey, question.character },
                 { EventActorFilterKey, question.actor },
                 { EventTextFilterKey, question.text },
                 { EventCueNumberFilterKey, question.cueNumber },
                 { EventNumAdjacentCuesKey, juce::String (question.neighbours) } };
    }

    void filter()
    {
        FilterQuestion question;
        if (random.oneIn (3))
            question.character = random.oneOf<juce::String> ({ "ANNA", "BEN", "nobody" });
        if (random.oneIn (6))
            question.actor = random.oneOf<juce::String> ({ "B. Miller", "C. Adams" });
        if (random.oneIn (5))
            question.text = random.oneOf<juce::String> ({ "o", "A" });
        if (random.oneIn (5))
            question.cueNumber = random.oneOf<juce::String> ({ "1", "A" });
        question.neighbours = random.between (-1, 3);
        list->setFilterParameters (parametersFor (question));
        model.setFilter (question);
    }

    void select()
    {
        const auto chosen = random.oneIn (8) ? model.selected : someEvents (6);
        list->setSelectedEvents (chosen, random.oneIn (2));
        model.select (chosen);
    }

    void clearSelection()
    {
        list->clearSelectedEvents();
        model.clearSelection();
    }

    void stepThroughList()
    {
        switch (random.below (6))
        {
            case 0: list->selectNextEvent(), model.step (1); break;
            case 1: list->selectPreviousEvent(), model.step (-1); break;
            case 2: list->selectNextEventByCueNumber(), model.stepByCueNumber (1); break;
            case 3: list->selectPreviousEventByCueNumber(), model.stepByCueNumber (-1); break;
            case 4: list->expandSelectionByNextEvent(), model.widenDown(); break;
            case 5: list->expandSelectionByPreviousEvent(), model.widenUp(); break;
        }
    }

    // ---- storing -------------------------------------------------------------------------------------------------

    /** Life goes on with the loaded list, without selection and history. */
    void saveAndLoad()
    {
        tessera1::ProtoOvermarkList stored, read;
        list->fillProtoObject (&stored);
        if (! read.ParseFromString (stored.SerializeAsString()))
            complaint += "the stored list can't be read\n";
        const auto loaded = std::make_shared<EventArray>();
        loaded->initWithProtoObject (&read);
        loaded->setTimeInfoForAllEvents (timeInfoAt ("25"));

        if (loaded->events.size() != list->events.size())
            complaint += "the loaded list has another number of events\n";
        else
            for (std::size_t i = 0; i < loaded->events.size(); ++i)
                complaint += differenceOf (*list->events[i], *loaded->events[i]);

        if (loaded->sortKey != (list->sortKey.isEmpty() ? juce::String ("StartTCString") : list->sortKey)
            || loaded->sortDescending != list->sortDescending)
            complaint += "the loaded list has another sort column\n";

        undoManager().clearUndoHistory();
        history.clear();
        position = 0;
        list = loaded;
        list->filterParameters = parametersFor (model.filter);
        model.events = list->events;
        model.sortKey = list->sortKey;
        model.selected.clear();
        model.shownSelected.clear();
        refresh();
    }

    RandomEvents random;
    std::shared_ptr<EventArray> list = listWithFades();
    SlowList model;
    ListDiary diary;
    std::vector<Step> history;
    std::size_t position = 0; ///< steps of the history that are done
    std::string complaint;
};

class EventArrayLifeTest : public OvermarksTest
{
};

TEST_F (EventArrayLifeTest, whateverIsDoneTheListIsWhatTheRulesSaySlowly)
{
    const int lives = std::max (1, numberOfSteps() / stepsOfALife);
    std::cout << "lists of the seeds 1 to " << lives << ", " << stepsOfALife << " steps each\n";

    for (int seed = 1; seed <= lives; ++seed)
    {
        Life life (static_cast<unsigned int> (seed));
        for (int i = 0; i <= stepsOfALife; ++i)
        {
            ASSERT_EQ (life.difference(), "") << "seed " << seed << " after: " << life.story;
            life.step();
        }
        Event::setADRCharacterMap (std::make_shared<ZEP::Core::ADRCharacterMap>());
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
