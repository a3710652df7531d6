// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventTableReader.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/UserDefaults.h"
#include "import/frame/EventFileImporter.h"
#include "preferences/PreferenceKeys.h"

#include <algorithm>
#include <utility>

namespace ZEP::Overmarks
{

using Core::ADRCueReasonsManager;
using Core::RichTextString;

enum class EventTableReader::Column : std::size_t
{
    startTC,
    endTC,
    text,
    character,
    charPrefix,
    actor,
    cueNumber,
    notes,
    engineeringNotes,
    done,
    eventType,
    streamerDuration,
    enabled,
    numberOfTakes,
    tempo,
    reason,
    forcedNarrative,
    region
};

namespace
{

/** Lets an import write to an event without undo steps and without telling anybody. */
class QuietEdit final
{
public:
    explicit QuietEdit (Event& eventToEdit) : event (eventToEdit)
    {
        event.setUndoBypass (true);
        event.setNotificationsSuppressed (true);
    }

    ~QuietEdit()
    {
        event.setUndoBypass (false);
        event.setNotificationsSuppressed (false);
    }

    QuietEdit (const QuietEdit&) = delete;
    QuietEdit& operator= (const QuietEdit&) = delete;

private:
    Event& event;
};

/** Whether an event of this type is a single point in time, which creation can't place exactly. */
bool isPoint (EventType type)
{
    switch (type)
    {
        case EventTypeStreamer:
        case EventTypeFadeIn:
        case EventTypeFadeOut: return true;
        case EventTypeADRCue:
        case EventTypeMarker:
        case EventTypeFlutter: break;
    }

    return false;
}

const char* complaintAboutDuration (DurationUnit unit)
{
    switch (unit)
    {
        case DurationUnit::seconds: return " is not a streamer duration (1, 2, 2.67, 3, 3.33 or 5 seconds)";
        case DurationUnit::bars: return " is not a streamer duration (1, 2 or 4 bars)";
        case DurationUnit::frames: return " is not a flutter duration (1, 4, 8 or 12 frames)";
        case DurationUnit::none: break;
    }

    return " is not a streamer duration";
}

} // namespace

EventTableReader::EventTableReader (std::shared_ptr<Core::TimeInfo> projectTime,
                                    Core::ADRCharacterMap& projectCast, const Core::ADRCharacterMap* fileCast,
                                    EventRowReaderOptions chosen)
    : timeInfo (std::move (projectTime)),
      options (chosen),
      times (timeInfo, options.timesOfWholeSeconds),
      cast (projectCast, fileCast),
      streamersInBars (Core::UserDefaults::getIntForKey (StreamerReferenceUnitPrefKey) == 0)
{
}

EventRowResult EventTableReader::read (const Rows& table, const std::map<juce::String, int>& columnMap,
                                       int firstRow)
{
    return readRows (table, columnMap, firstRow, [] (const Row&) {});
}

EventRowResult EventTableReader::readAndEmpty (Rows& table, const std::map<juce::String, int>& columnMap,
                                               int firstRow)
{
    return readRows (table, columnMap, firstRow, [] (Row& read) { Row().swap (read); });
}

/** @param done  is given each row once it has been read */
template <typename Table, typename Done>
EventRowResult EventTableReader::readRows (Table& table, const std::map<juce::String, int>& columnMap,
                                           int firstRow, Done done)
{
    assignColumns (columnMap);
    const auto first = std::min (static_cast<std::size_t> (std::max (firstRow, 0)), table.size());
    result.events.reserve (table.size() - first);
    result.eventRows.reserve (table.size() - first);

    for (auto index = first; index < table.size(); ++index)
    {
        row = &table[index];
        rowIndex = static_cast<int> (index);

        if (! isBlankRow())
            readRow();

        done (table[index]);
    }

    return std::move (result);
}

// ---- cells ------------------------------------------------------------------------------------------------

// The enumeration has the order of the titles, whose first one stands for a column that isn't used.
const juce::String& EventTableReader::titleOf (Column column)
{
    return EventFileImporter::columnTitles()[static_cast<std::size_t> (column) + 1];
}

void EventTableReader::assignColumns (const std::map<juce::String, int>& columnMap)
{
    for (std::size_t column = 0; column < numberOfColumns; ++column)
    {
        const auto assigned = columnMap.find (titleOf (static_cast<Column> (column)));
        cellIndices[column] = assigned != columnMap.end() ? assigned->second : -1;
    }
}

const RichTextString* EventTableReader::cellOf (Column column) const
{
    const auto index = cellIndices[static_cast<std::size_t> (column)];
    return index >= 0 && static_cast<std::size_t> (index) < row->size()
               ? &(*row)[static_cast<std::size_t> (index)]
               : nullptr;
}

const juce::String& EventTableReader::textOf (Column column) const
{
    static const juce::String absent;
    const auto* const cell = cellOf (column);
    return cell != nullptr ? cell->getText() : absent;
}

bool EventTableReader::isBlankRow() const
{
    for (std::size_t column = 0; column < numberOfColumns; ++column)
        if (! trimmedCell (textOf (static_cast<Column> (column))).empty())
            return false;

    return true;
}

void EventTableReader::report (Column column, const juce::String& message, EventRowProblemKind kind)
{
    if (message.isNotEmpty())
        result.problems.push_back ({ rowIndex, titleOf (column), message, kind });
}

/** The value of a cell; that of an empty cell also where the cell can't be understood, which is reported. */
template <typename Value, typename Reading>
Value EventTableReader::valueOf (Column column, Value ofEmptyCell, Reading&& reading, const char* complaint)
{
    const auto& text = textOf (column);
    const auto cell = trimmedCell (text);

    if (cell.empty())
        return ofEmptyCell;

    const std::optional<Value> value = reading (cell);

    if (! value)
        report (column, quotedCell (text) + complaint);

    return value.value_or (ofEmptyCell);
}

// ---- what an event is and when it is ----------------------------------------------------------------------

void EventTableReader::readRow()
{
    const auto event = createEvent (readType());

    {
        const QuietEdit quiet (*event);
        readTexts (*event);
        readFlags (*event);
        readNumbers (*event);
        readCharacter (*event);
    }

    result.events.push_back (event);
    result.eventRows.push_back (rowIndex);
}

EventType EventTableReader::readType()
{
    return valueOf (Column::eventType, EventTypeADRCue, eventTypeInCell,
                    " is not an event type (Streamer, Marker, Flutter, ADR Cue, Fade In, Fade Out)");
}

std::optional<int> EventTableReader::readTime (Column column, bool& unreadable)
{
    const auto time = times.read (textOf (column));
    report (column, time.problem, time.kind);
    unreadable = time.problem.isNotEmpty();
    return time.frameIndex;
}

EventTableReader::Place EventTableReader::readPlace()
{
    bool startUnreadable = false;
    bool endUnreadable = false;
    const auto inPoint = readTime (Column::startTC, startUnreadable);
    auto end = readTime (Column::endTC, endUnreadable);

    if (! inPoint)
    {
        if (end && ! startUnreadable)
            report (Column::endTC,
                    quotedCell (textOf (Column::endTC)) + " is not used, because the event has no start",
                    EventRowProblemKind::endWithoutStart);

        return {};
    }

    if (end && *end < *inPoint)
    {
        report (Column::endTC, quotedCell (textOf (Column::endTC)) + " is before the start of the event",
                EventRowProblemKind::endBeforeStart);
        end.reset();
    }

    return { inPoint, end };
}

int EventTableReader::readDuration (EventType type)
{
    const auto unit = durationUnitOf (type, streamersInBars);
    const auto reading = [unit] (std::string_view cell) { return durationInCell (cell, unit); };
    return valueOf (Column::streamerDuration, -1, reading, complaintAboutDuration (unit));
}

std::optional<int> EventTableReader::endOfFlutter (int inPoint, int duration)
{
    constexpr int noTime = -1;

    if (inPoint + duration != noTime)
        return inPoint + duration;

    report (
        Column::streamerDuration,
        quotedCell (textOf (Column::streamerDuration))
            + " would end the flutter on the frame before the picture starts, which a cue list can't hold");
    return std::nullopt;
}

std::shared_ptr<Event> EventTableReader::createEvent (EventType type)
{
    auto place = readPlace();
    const auto duration = readDuration (type);
    const auto tempo =
        valueOf (Column::tempo, -1, tempoInCell, " is not a tempo from 21 to 299 beats per minute");

    // A flutter left to itself gets the preferred length, whatever its own duration says.
    if (type == EventTypeFlutter && place.inPoint && ! place.end && duration > 0)
        place.end = endOfFlutter (*place.inPoint, duration);

    return createPlaced (type, place, static_cast<float> (tempo), duration);
}

/** An event with a streamer's or a fade's single point gets it as a timecode: creation moves a streamer that
    lies before the picture, and knows no start of a fade. */
std::shared_ptr<Event> EventTableReader::createPlaced (EventType type, const Place& place, float tempo,
                                                       int duration) const
{
    if (! place.inPoint || ! isPoint (type))
        return Event::create (type, timeInfo, place.inPoint.value_or (-1), place.end.value_or (-1), tempo,
                              duration);

    auto event = Event::create (type, timeInfo, -1, -1, tempo, duration);
    const QuietEdit quiet (*event);
    event->setStartTCString (times.timecode (*place.inPoint));

    if (place.end && place.end != place.inPoint)
        event->setEndTCString (times.timecode (*place.end));

    return event;
}

// ---- what it says -----------------------------------------------------------------------------------------

void EventTableReader::readTexts (Event& event) const
{
    if (const auto* const text = cellOf (Column::text); text != nullptr)
    {
        if (options.starsToLineBreaks && text->getText().contains ("**"))
            event.setText (text->replace ("**", "\n"));
        else
            event.setText (*text);
    }

    if (const auto* const notes = cellOf (Column::notes); notes != nullptr)
        event.setNotes (*notes);
    if (const auto* const notes = cellOf (Column::engineeringNotes); notes != nullptr)
        event.setEngineeringNotes (*notes);

    event.setCueNumber (textOf (Column::cueNumber));
}

void EventTableReader::readFlags (Event& event)
{
    const auto read = [this] (Column column, bool ofEmptyCell)
    { return valueOf (column, ofEmptyCell, flagInCell, " is neither yes nor no"); };

    event.setDone (read (Column::done, false));
    event.setEnabled (read (Column::enabled, true));
    event.setIsForcedNarrative (read (Column::forcedNarrative, false));
}

void EventTableReader::readNumbers (Event& event)
{
    const auto takesInCell = [] (std::string_view cell)
    {
        const auto number = wholeNumberInCell (cell);
        return number && *number >= 0 ? number : std::nullopt;
    };
    const auto reasonInCell = [this] (std::string_view) { return reasons.read (textOf (Column::reason)); };
    const auto reason =
        valueOf (Column::reason, ADRCueReasonsManager::noneCode, reasonInCell, " is not a cue reason");

    event.setNumRecordedTakes (valueOf (Column::numberOfTakes, 0, takesInCell, " is not a number of takes"));
    event.setReason (reason - 1); // events store the code minus one
    event.setForcedNarrativeRegion (valueOf (Column::region, ForcedNarrativeRegionBottom, regionInCell,
                                             " is not a forced narrative region (Bottom, Top, Left, Right)"));
}

void EventTableReader::readCharacter (Event& event)
{
    const auto role =
        cast.role (textOf (Column::character), textOf (Column::charPrefix), textOf (Column::actor));
    report (Column::charPrefix, role.prefixProblem);
    report (Column::actor, role.actorProblem);
    event.setCharacterID (role.id);
}

} // namespace ZEP::Overmarks
