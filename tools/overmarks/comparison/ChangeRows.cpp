// SPDX-License-Identifier: GPL-3.0-only
#include "comparison/ChangeRows.h"

#include "Session.h"

#include "core/timecode/TCToolbox.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

using Frames = std::optional<std::int64_t> ListChange::*;

juce::String spanText (std::int64_t frames, const _TCDef& def)
{
    return TCToolbox::stringFromTCTime (
        TCToolbox::addFramesAndTCTimes (static_cast<long> (std::abs (frames)), {}, def), def.dropFrame);
}

juce::String moveText (std::int64_t frames, const _TCDef& def)
{
    return "moved by " + shiftText (frames, def);
}

juce::String lengthText (std::int64_t frames, const _TCDef& def)
{
    return spanText (frames, def) + (frames > 0 ? " longer" : " shorter");
}

TextPieces plain (const juce::String& text) { return { { TextPiece::Kind::kept, text.toStdString() } }; }

const ComparedEvent& shownEvent (const ListChange& change)
{
    return change.now != nullptr ? *change.now : *change.old;
}

bool isCue (const ComparedEvent& event) { return event.event->getType() == EventTypeADRCue; }

/** Finds the runs of cues that share a shift, or a change of their length: events between them that have stayed, or have moved
    otherwise, end a run; new ones and those without a time don't. */
class Runs final
{
public:
    Runs (const ListChanges& changes, Frames what)
    {
        std::map<const ComparedEvent*, const ListChange*> retimed;

        for (const auto& change : changes.all())
            if (change.kind == ChangeKind::retimed && change.shift.has_value())
                retimed.emplace (change.now, &change);

        std::vector<const ListChange*> run;
        const auto endRun = [&]
        {
            const Run whole { run.empty() ? nullptr : run.front(), run.size(),
                              run.empty() ? nullptr : run.back(), areCues (run) };

            if (run.size() > 1)
                for (const auto* member : run)
                    runs[member] = whole;

            run.clear();
        };

        for (std::size_t i = 0; i < changes.now.events.size(); ++i)
        {
            const auto& event = changes.now.events[i];

            if (changes.pairing.ofNew[i] == Pairing::none || ! event.start.has_value())
                continue;

            const auto found = retimed.find (&event);
            const auto* change = found != retimed.end() ? found->second : nullptr;

            if (! run.empty() && (change == nullptr || change->*what != run.front()->*what))
                endRun();
            if (change != nullptr && (change->*what).value_or (0) != 0)
                run.push_back (change);
        }

        endRun();
    }

    struct Run
    {
        const ListChange* first;
        std::size_t length;
        const ListChange* last;
        bool areCues;
    };

    /** The run that a change belongs to, or null. */
    const Run* of (const ListChange& change) const
    {
        const auto found = runs.find (&change);
        return found != runs.end() ? &found->second : nullptr;
    }

private:
    static bool areCues (const std::vector<const ListChange*>& run)
    {
        return std::all_of (run.begin(), run.end(),
                            [] (const ListChange* change) { return isCue (*change->now); });
    }

    std::map<const ListChange*, Run> runs;
};

/** Which characters have another name, or another actor, in all their lines. */
class Recasting final
{
public:
    explicit Recasting (const ListChanges& changes)
    {
        for (std::size_t i = 0; i < changes.old.events.size(); ++i)
            if (const int partner = changes.pairing.ofOld[i]; partner != Pairing::none)
            {
                const auto& one = changes.old.events[i];
                const auto& other = changes.now.events[static_cast<std::size_t> (partner)];
                auto& role = roles[one.character];
                ++role.lines;
                ++role.names[other.character];
                ++role.actors[one.actor + "\n" + other.actor];
            }
    }

    std::size_t linesRenamed (const ListChange& change) const
    {
        return allLines (change, &Role::names, change.now->character);
    }

    std::size_t linesRecast (const ListChange& change) const
    {
        return allLines (change, &Role::actors, change.old->actor + "\n" + change.now->actor);
    }

private:
    struct Role
    {
        std::size_t lines = 0;
        std::map<juce::String, std::size_t> names, actors;
    };

    /** The number of the character's lines if this has become of all of them, and they are more than one; else 0. */
    std::size_t allLines (const ListChange& change, std::map<juce::String, std::size_t> Role::*what,
                          const juce::String& now) const
    {
        const auto role = roles.find (change.old->character);

        if (change.old->character.isEmpty() || role == roles.end() || role->second.lines < 2)
            return 0;

        const auto& counts = role->second.*what;
        const auto count = counts.find (now);
        return count != counts.end() && count->second == role->second.lines ? role->second.lines : 0;
    }

    std::map<juce::String, Role> roles;
};

// ---- words ---------------------------------------------------------------------------------------------------------------

juce::String orNone (const juce::String& text) { return text.isEmpty() ? juce::String ("(none)") : text; }

bool isText (const ComparedField& field)
{
    const juce::String name (field.name);
    return name == "text" || name == "notes" || name == "engineeringNotes";
}

/** The difference of two texts, with words for one that can't be seen. */
TextPieces textChange (const juce::String& old, const juce::String& now)
{
    auto pieces = wordDifference (old, now);

    if (withSingleBlanks (old) == withSingleBlanks (now))
        return plain ("only blanks or line breaks differ: " + now);

    return pieces;
}

void append (TextPieces& pieces, TextPieces more) { pieces.insert (pieces.end(), more.begin(), more.end()); }

TextPieces fieldChange (const ListChange& change, const ComparedField& field)
{
    const auto old = field.value (*change.old), now = field.value (*change.now);

    if (isText (field))
        return textChange (old, now);
    if (juce::String (field.name) == "text.runs")
        return plain ("same words, marked otherwise");

    return plain (orNone (old) + " -> " + orNone (now));
}

class RowMaker final
{
public:
    explicit RowMaker (const ListChanges& changesToShow)
        : changes (changesToShow),
          def (changes.now.project.timeInfo->tcDef),
          moves (changes, &ListChange::shift),
          lengths (changes, &ListChange::longer),
          recasting (changes)
    {
    }

    std::vector<ChangeRow> rows()
    {
        for (const auto& change : changes.all())
            add (change);

        return std::move (made);
    }

private:
    void add (const ListChange& change)
    {
        switch (change.kind)
        {
            case ChangeKind::added:
            case ChangeKind::removed: addRow (change, plain (shownText (shownEvent (change)))); return;
            case ChangeKind::retimed: addTiming (change); return;
            case ChangeKind::text: addRow (change, fieldChange (change, *change.fields.front())); return;
            case ChangeKind::character: addCharacter (change); return;
            case ChangeKind::other: addOther (change); return;
        }
    }

    static juce::String shownText (const ComparedEvent& event)
    {
        return event.words.empty() ? event.event->typeString() : event.event->getText().getText();
    }

    void addRow (const ListChange& change, TextPieces pieces)
    {
        const auto& event = shownEvent (change);
        made.push_back ({ juce::String (nameOf (change.kind)),
                          juce::String (juce::CharPointer_UTF8 (event.number.c_str())),
                          event.event->getStartTCString(), event.character, std::move (pieces) });
    }

    void addTiming (const ListChange& change)
    {
        const auto* move = moves.of (change);
        const auto* length = lengths.of (change);

        if (move == nullptr && length == nullptr)
        {
            addRow (change, plain (timingText (change, def)));
            return;
        }

        addTimingPart (change, move, change.shift, moveText);
        addTimingPart (change, length, change.longer, lengthText);
    }

    void addTimingPart (const ListChange& change, const Runs::Run* run, std::optional<std::int64_t> frames,
                        juce::String (*inWords) (std::int64_t, const _TCDef&))
    {
        if (frames.value_or (0) == 0 || (run != nullptr && run->first != &change))
            return;

        if (run == nullptr)
        {
            addRow (change, plain (inWords (*frames, def)));
            return;
        }

        const bool isLength = inWords == lengthText;
        addRow (change, plain (counted (run->length, run->areCues ? "cue" : "event")
                               + (isLength ? " are " : " ") + inWords (*frames, def)));
        nameAll (*run->last->now);
        made.back().character.clear();
    }

    /** The row stands for all cues up to this one. */
    void nameAll (const ComparedEvent& last)
    {
        if (const juce::String number (juce::CharPointer_UTF8 (last.number.c_str()));
            number.isNotEmpty() && number != made.back().cue && made.back().cue.isNotEmpty())
            made.back().cue << " - " << number;
    }

    void addCharacter (const ListChange& change)
    {
        const auto words = orNone (change.old->character) + " -> " + orNone (change.now->character);

        if (const auto lines = recasting.linesRenamed (change); lines > 0)
            addOnce (change, "all " + juce::String (lines) + " lines: " + words);
        else
            addRow (change, plain (words));
    }

    void addOther (const ListChange& change)
    {
        TextPieces pieces;

        for (const auto* field : change.fields)
        {
            if (juce::String (field->name) == "actor")
                if (const auto lines = recasting.linesRecast (change); lines > 0)
                {
                    addOnce (change, "all " + juce::String (lines) + " lines: Actor: "
                                         + orNone (change.old->actor) + " -> " + orNone (change.now->actor));
                    continue;
                }

            append (pieces, plain (juce::String (pieces.empty() ? "" : "; ") + field->words + ": "));
            append (pieces, fieldChange (change, *field));
        }

        if (! pieces.empty())
            addRow (change, std::move (pieces));
    }

    void addOnce (const ListChange& change, const juce::String& words)
    {
        auto& isTold = told[change.old->character + "\n" + words];

        if (std::exchange (isTold, true))
            return;

        addRow (change, plain (words));
        made.back().cue.clear();
    }

    const ListChanges& changes;
    const _TCDef& def;
    Runs moves;
    Runs lengths;
    Recasting recasting;
    std::map<juce::String, bool> told;
    std::vector<ChangeRow> made;
};

} // namespace

juce::String shiftText (std::int64_t frames, const _TCDef& def)
{
    return (frames < 0 ? "-" : "+") + spanText (frames, def);
}

juce::String timingText (const ListChange& change, const _TCDef& def)
{
    if (! change.shift.has_value())
        return change.now->start.has_value() ? "has a time now" : "has no time any more";

    juce::StringArray parts;

    if (*change.shift != 0)
        parts.add (moveText (*change.shift, def));
    if (change.longer.value_or (0) != 0)
        parts.add (lengthText (*change.longer, def));

    return parts.joinIntoString (", ");
}

juce::String summaryText (const ListChanges& changes)
{
    juce::StringArray parts;

    for (const auto kind : everyChangeKind)
        if (const auto number = changes.numberOf (kind); number > 0)
            parts.add (juce::String (number) + " " + juce::String (nameOf (kind)));

    return parts.joinIntoString (", ") + (parts.isEmpty() ? "no differences; " : "; ")
           + juce::String (changes.numberOfUnchanged()) + " unchanged";
}

std::vector<ChangeRow> changeRows (const ListChanges& changes) { return RowMaker (changes).rows(); }

} // namespace overmarks
