// SPDX-License-Identifier: GPL-3.0-only
// Whole lives of lists: adding, removing, editing, undoing, filtering, selecting, sorting, saving in any order, each step
// compared with the same said slowly, and each attribute of each event with a record of its own. OVERMARKS_TEST_STEPS sets how
// many steps are taken.
#include "list/EventArray.h"

#include "list/ProjectFile.h"
#include "preferences/PreferenceKeys.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"
#include "support/PlainEvent.h"
#include "support/PrintEvents.h"
#include "support/RandomEdits.h"
#include "support/RandomEvents.h"
#include "support/SlowList.h"
#include "support/TemporaryFolder.h"
#include "support/UndoHistory.h"

#include <cstdlib>
#include <functional>
#include <gmock/gmock.h>
#include <iostream>
#include <map>
#include <optional>
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
    explicit Life (unsigned int seed) : random (seed), applicationType (seed % 4 == 0 ? 0 : 1)
    {
        random.castCharacters();
        timeInfo =
            timeInfoAt (random.oneOf<std::string> ({ "25", "24", "29.97df", "30", "23.976", "59.94df" }),
                        random.oneOf<std::string> ({ "00:00:00:00", "01:00:00:00" }));
        list->setTimeInfoForAllEvents (timeInfo);
        for (const auto& fade : list->events)
            take (fade);
        model.applicationType = seed % 4 == 0 ? 0 : 1;
        model.events = list->events;
        fadeIn = list->events[0];
        fadeOut = list->events[1];
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
            { 1, "add one that is there", &Life::addTwice },
            { 1, "remove one that is not there", &Life::removeAbsent },
            { 8, "edit", &Life::edit },
            { 7, "undo", &Life::undo },
            { 5, "redo", &Life::redo },
            { 5, "refresh", &Life::refresh },
            { 4, "sort", &Life::sort },
            { 7, "filter", &Life::filter },
            { 8, "select", &Life::select },
            { 1, "clear selection", &Life::clearSelection },
            { 20, "step", &Life::stepThroughList },
            { 4, "save and load", &Life::saveAndLoad },
            { 1, "go on with the loaded list", &Life::goOnWithLoadedList },
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
        for (const auto& each : model.events)
            if (const auto faults = records.at (each).difference (*each); ! faults.empty())
                words += lineOf (*each) + ": " + faults;
        if (list->fadeInEvent != fadeIn || list->fadeOutEvent != fadeOut)
            words += "other fades\n";
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
            setField (*made.back(), "reason", random.below (41)); // an unset one comes back as none
            made.back()->setTimeInfo (timeInfo);
            take (made.back());
        }
        return made;
    }

    /** From now on the event has to be what its record says. */
    void take (const std::shared_ptr<Event>& event)
    {
        records[event] = PlainEvent::of (*event, timeInfo->tcDef.framesPerSecond);
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

    void addOne() { addOne (random.oneIn (2)); }

    void addOne (bool withUndo)
    {
        const auto added = newEvents (1);
        list->addEvent (added[0], withUndo);
        model.append (added);
        if (withUndo)
            enter ({ [this, added] { model.erase (added); }, [this, added] { model.append (added); } });
    }

    /** Undoing it takes both away, since an event is taken out wherever it stands. A further step follows: to do it once more
        beside another step could leave an event in the list twice. */
    void addTwice()
    {
        auto chosen = someEvents (1);
        std::erase_if (chosen, [&] (const auto& each) { return ! isInList (each); });
        keepFades (chosen);
        if (chosen.empty())
            return;
        list->addEvents (chosen, true);
        model.add (chosen);
        enter ({ [this, chosen] { model.undoAdd (chosen); }, [] {} });
        if (std::count (list->events.begin(), list->events.end(), chosen[0]) != 2)
            complaint += "an event that was added twice is not there twice\n";
        undo();
        addOne (true);
    }

    /** Undoing it adds the event. */
    void removeAbsent()
    {
        const auto absent = newEvents (1);
        if (random.oneIn (2))
        {
            list->removeEvents (absent, true);
            model.remove (absent);
            enter (
                { [this, absent] { model.undoRemove (absent); }, [this, absent] { model.remove (absent); } });
        }
        else
        {
            list->removeEvent (absent[0], true);
            model.erase (absent);
            enter ({ [this, absent] { model.append (absent); }, [this, absent] { model.erase (absent); } });
        }
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
        std::erase_if (removed,
                       [this] (const auto& each)
                       {
                           const auto type = records.at (each).type;
                           return type == EventTypeFadeIn || type == EventTypeFadeOut;
                       });
    }

    // ---- editing and undoing -------------------------------------------------------------------------------------

    /** Several edits of several events, as one step. */
    void edit()
    {
        struct Made
        {
            std::shared_ptr<Event> event;
            PlainEdit edit;
            PlainEvent before;
        };
        const auto made = std::make_shared<std::vector<Made>>();
        {
            const ZEP::Core::UndoRedoHelpers::CompoundStep one ("Edit");
            for (const auto& event : someEvents (3))
            {
                auto& record = records.at (event);
                const auto note = [&] (const auto& makeEdit)
                {
                    const auto before = record;
                    if (const std::optional<PlainEdit> edit = makeEdit())
                        made->push_back ({ event, *edit, before });
                };
                for (int i = random.between (1, 3); i > 0; --i)
                    note ([&] { return edits.edit (*event, record); });
                // The orders of the table know no event of which only one time is set.
                if (record.isOddlyTimed())
                    note ([&] { return edits.takeTimeAway (*event, record); });
            }
        }
        if (made->empty())
            return;
        enter ({ [this, made]
                 {
                     for (auto each = made->rbegin(); each != made->rend(); ++each)
                         each->edit.takeBack (records.at (each->event), each->before);
                 },
                 [this, made]
                 {
                     for (auto& each : *made)
                     {
                         each.before = records.at (each.event);
                         each.edit.make (records.at (each.event));
                     }
                 } });
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

    /** Through a file; the list itself stays as it is. */
    std::shared_ptr<EventArray> saved()
    {
        auto project = Project::createEmpty (timeInfo);
        project.list = list;
        project.characters = Event::getADRCharacterMap();
        Project loaded;
        std::string bytes;
        if (random.oneIn (30))
            complaint += ProjectFile::save (project, file).toStdString();
        else // as well, without waiting for the disk
            complaint += ProjectFile::toBytes (project, bytes).toStdString(),
                folder.write ("life.overmarks", bytes);
        complaint += ProjectFile::load (file, loaded).toStdString();
        if (! complaint.empty())
            return nullptr;
        if (loaded.characters->characterIDs() != project.characters->characterIDs())
            complaint += "the loaded project has another cast\n";
        if (loaded.list->sortKey != (list->sortKey.isEmpty() ? juce::String ("StartTCString") : list->sortKey)
            || loaded.list->sortDescending != list->sortDescending)
            complaint += "the loaded list has another sort column\n";
        return loaded.list;
    }

    void saveAndLoad()
    {
        const auto loaded = saved();
        if (loaded == nullptr || loaded->events.size() != model.events.size())
        {
            complaint += "the loaded list has another number of events\n";
            return;
        }
        for (std::size_t i = 0; i < model.events.size(); ++i)
            complaint += records.at (model.events[i]).difference (*loaded->events[i]);
        if (loaded->fadeInEvent != firstOfType (loaded->events, EventTypeFadeIn)
            || loaded->fadeOutEvent != firstOfType (loaded->events, EventTypeFadeOut))
            complaint += "the loaded list has other fades\n";
    }

    /** The first event with that bit in its type, as it should be; one of no type has all bits. */
    std::shared_ptr<Event> firstOfType (const Events& loaded, int bit) const
    {
        for (std::size_t i = 0; i < loaded.size(); ++i)
            if ((static_cast<int> (records.at (model.events[i]).type) & bit) != 0)
                return loaded[i];
        return nullptr;
    }

    /** Without selection and history. */
    void goOnWithLoadedList()
    {
        const auto loaded = saved();
        if (loaded == nullptr || loaded->events.size() != model.events.size())
        {
            complaint += "the loaded list has another number of events\n";
            return;
        }
        fadeIn = firstOfType (loaded->events, EventTypeFadeIn);
        fadeOut = firstOfType (loaded->events, EventTypeFadeOut);
        std::map<std::shared_ptr<Event>, PlainEvent> loadedRecords;
        for (std::size_t i = 0; i < model.events.size(); ++i)
            loadedRecords[loaded->events[i]] = records.at (model.events[i]);
        records = std::move (loadedRecords);
        timeInfo = loaded->events[0]->getTimeInfo();

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
    RandomEdits edits { random };
    const ApplicationType applicationType;
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo;
    std::shared_ptr<EventArray> list = listWithFades();
    std::map<std::shared_ptr<Event>, PlainEvent> records; ///< what each event should be
    std::shared_ptr<Event> fadeIn, fadeOut;
    TemporaryFolder folder;
    const juce::File file = folder.file ("life.overmarks");
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
        prefer (StreamerReferenceUnitPrefKey, seed % 2);
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
