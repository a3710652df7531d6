// SPDX-License-Identifier: GPL-3.0-only
#include "comparison/ListChanges.h"

#include "CellWords.h"

#include "event/EventAttribute.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

juce::String yesOrNoText (bool flag) { return flag ? "yes" : "no"; }

template <auto Getter>
juce::String flagOf (const ComparedEvent& e)
{
    return yesOrNoText (((*e.event).*Getter)());
}

/** Indices count from 0 in the project and from 1 for people. */
template <auto Getter>
juce::String ordinalOf (const ComparedEvent& e)
{
    const int index = ((*e.event).*Getter)();
    return index < 0 ? juce::String ("none") : juce::String (std::int64_t { index } + 1);
}

template <auto Getter>
juce::String richTextOf (const ComparedEvent& e)
{
    return ((*e.event).*Getter)().getText();
}

juce::String streamerOf (const ComparedEvent& e)
{
    const int code = e.event->getStreamerDuration();
    return code < 0 ? juce::String ("none") : juce::String (code);
}

constexpr ComparedField startField { "startTC", "Start", "Start TC", ChangeKind::retimed,
                                     [] (const ComparedEvent& e) { return e.event->getStartTCString(); } };
constexpr ComparedField endField { "endTC", "End", "End TC", ChangeKind::retimed,
                                   [] (const ComparedEvent& e) { return e.event->getEndTCString(); } };
constexpr ComparedField lookField {
    "text.runs", "Look of the text", "", ChangeKind::other,
    [] (const ComparedEvent& e) { return juce::String (e.event->getText().isPlain() ? "plain" : "marked"); }
};

/** The attributes whose words tell whether they are the same. */
constexpr std::array fieldTable {
    ComparedField { "text", "Text", "Text", ChangeKind::text, richTextOf<&Event::getText> },
    ComparedField { "character", "Character", "Character", ChangeKind::character,
                    [] (const ComparedEvent& e) { return e.character; } },
    ComparedField { "actor", "Actor", "Actor", ChangeKind::other,
                    [] (const ComparedEvent& e) { return e.actor; }, true },
    ComparedField { "cueNumber", "Cue number", "Cue Number", ChangeKind::other,
                    [] (const ComparedEvent& e)
                    { return juce::String (juce::CharPointer_UTF8 (e.number.c_str())); } },
    ComparedField { "type", "Type", "Event Type", ChangeKind::other,
                    [] (const ComparedEvent& e) { return nameOfEventType (e.event->getType()); } },
    ComparedField { "notes", "Notes", "Notes", ChangeKind::other, richTextOf<&Event::getNotes> },
    ComparedField { "engineeringNotes", "Engineering notes", "Engineering Notes", ChangeKind::other,
                    richTextOf<&Event::getEngineeringNotes> },
    ComparedField { "reason", "Reason", "Reason", ChangeKind::other,
                    [] (const ComparedEvent& e) { return e.reason; } },
    ComparedField { "enabled", "Enabled", "Enabled", ChangeKind::other, flagOf<&Event::isEnabled> },
    ComparedField { "done", "Done", "Done", ChangeKind::other, flagOf<&Event::isDone> },
    ComparedField { "numRecordedTakes", "Takes", "Number of Takes", ChangeKind::other,
                    [] (const ComparedEvent& e) { return juce::String (e.event->getNumRecordedTakes()); } },
    ComparedField { "selectedTake", "Selected take", "", ChangeKind::other,
                    ordinalOf<&Event::getSelectedTake> },
    ComparedField { "altTake", "Alternative take", "", ChangeKind::other, ordinalOf<&Event::getAltTake> },
    ComparedField { "recTrackIndex", "Recording track", "", ChangeKind::other,
                    ordinalOf<&Event::getRecTrackIndex> },
    ComparedField { "storedFlag", "Flag", "", ChangeKind::other, flagOf<&Event::getStoredFlag> },
    ComparedField { "streamerDuration", "Streamer", "Streamer Duration", ChangeKind::other, streamerOf },
    ComparedField { "beatsPerMinute", "Tempo", "BPM", ChangeKind::other,
                    [] (const ComparedEvent& e) { return e.event->beatsPerMinuteString(); } },
    ComparedField { "isForcedNarrative", "Forced narrative", "Forced Narrative", ChangeKind::other,
                    flagOf<&Event::isForcedNarrative> },
    ComparedField { "forcedNarrativeRegion", "Region", "FN Region", ChangeKind::other,
                    [] (const ComparedEvent& e)
                    { return nameOfRegion (static_cast<int> (e.event->getForcedNarrativeRegion()) + 1); } },
};

} // namespace

std::string nameOf (ChangeKind kind)
{
    switch (kind)
    {
        case ChangeKind::added: return "added";
        case ChangeKind::removed: return "removed";
        case ChangeKind::retimed: return "retimed";
        case ChangeKind::text: return "text";
        case ChangeKind::character: return "character";
        case ChangeKind::other: return "other";
    }

    return {};
}

ListChanges::ListChanges (const ComparedList& oldList, const ComparedList& newList, const Pairing& pairs)
    : old (oldList),
      now (newList),
      pairing (pairs),
      comparesStarts (bothTell (startField)),
      comparesEnds (comparesStarts && bothTell (endField)),
      comparesLooks (old.hasLooks && now.hasLooks)
{
    for (const auto& field : fieldTable)
        if (bothTell (field))
            fields.push_back (&field);

    std::size_t removed = 0; // the old events before this one have been told
    const auto tellRemoved = [&] (const ComparedEvent* until)
    {
        const auto isBefore = [until] (const ComparedEvent& event)
        {
            return until == nullptr || ! until->start.has_value()
                   || (event.start.has_value() && event.start->frames <= until->start->frames);
        };

        for (; removed < old.events.size(); ++removed)
        {
            if (pairing.ofOld[removed] != Pairing::none)
                continue;
            if (! isBefore (old.events[removed]))
                return;

            addUnpaired (ChangeKind::removed, now, old.events[removed]);
        }
    };

    for (std::size_t i = 0; i < now.events.size(); ++i)
    {
        tellRemoved (&now.events[i]);

        if (const int partner = pairing.ofNew[i]; partner != Pairing::none)
            comparePair (old.events[static_cast<std::size_t> (partner)], now.events[i]);
        else
            addUnpaired (ChangeKind::added, old, now.events[i]);
    }

    tellRemoved (nullptr);
}

bool ListChanges::bothTell (const ComparedField& field) const
{
    return old.scope.has (field.column) && now.scope.has (field.column);
}

/** @param list  the one that doesn't have the event. Few cue lists can hold a fade, so that one is missed in a project alone. */
void ListChanges::addUnpaired (ChangeKind kind, const ComparedList& list, const ComparedEvent& event)
{
    if (event.isFade() && ! list.scope.isProject)
        return;

    const bool isOld = kind == ChangeKind::removed;
    changes.push_back ({ kind, isOld ? &event : nullptr, isOld ? nullptr : &event });
}

void ListChanges::comparePair (const ComparedEvent& one, const ComparedEvent& other)
{
    const auto before = changes.size();
    compareTimes (one, other);
    compareRest (one, other);
    unchanged += changes.size() == before ? 1 : 0;
}

void ListChanges::compareTimes (const ComparedEvent& one, const ComparedEvent& other)
{
    if (! comparesStarts || (! one.start.has_value() && ! other.start.has_value()))
        return;

    ListChange change { ChangeKind::retimed, &one, &other };

    if (! one.start.has_value() || ! other.start.has_value())
    {
        change.fields.push_back (&startField);

        if (comparesEnds)
            change.fields.push_back (&endField);

        changes.push_back (std::move (change));
        return;
    }

    const auto difference = [this] (const ShownTime& before, const ShownTime& after)
    { return showSameTime (before, after, old, now) ? std::int64_t { 0 } : after.frames - before.frames; };
    const auto shift = difference (*one.start, *other.start);
    const auto endShift = comparesEnds ? difference (*one.end, *other.end) : shift;
    const bool isRounded = ! countAlike (old.project.timeInfo->tcDef, now.project.timeInfo->tcDef);
    change.shift = shift;
    change.longer = isRounded && std::abs (endShift - shift) <= 1 ? 0 : endShift - shift;

    if (shift != 0)
        change.fields.push_back (&startField);
    if (comparesEnds && (endShift != 0 && (shift != 0 || change.longer != 0)))
        change.fields.push_back (&endField);
    if (! change.fields.empty())
        changes.push_back (std::move (change));
}

void ListChanges::compareRest (const ComparedEvent& one, const ComparedEvent& other)
{
    ListChange text { ChangeKind::text, &one, &other }, character { ChangeKind::character, &one, &other },
        rest { ChangeKind::other, &one, &other };

    const auto isTold = [&] (const ComparedField& field)
    { return ! field.goesWithCharacter || one.character == other.character; };

    for (const auto* field : fields)
        if (isTold (*field) && field->value (one) != field->value (other))
            (field->kind == ChangeKind::text        ? text
             : field->kind == ChangeKind::character ? character
                                                    : rest)
                .fields.push_back (field);

    // Where the words are others, other marks are no news.
    if (comparesLooks && text.fields.empty() && ! (one.event->getText() == other.event->getText()))
        rest.fields.push_back (&lookField);

    for (auto* change : { &text, &character, &rest })
        if (! change->fields.empty())
            changes.push_back (std::move (*change));
}

std::size_t ListChanges::numberOf (ChangeKind kind) const
{
    return static_cast<std::size_t> (std::count_if (
        changes.begin(), changes.end(), [kind] (const ListChange& change) { return change.kind == kind; }));
}

} // namespace overmarks
