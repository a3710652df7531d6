// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/cast/ADRCharacterMap.h"
#include "core/text/RichTextString.h"
#include "core/timecode/TimeInfo.h"
#include "event/Event.h"
#include "import/frame/EventFileImporter.h"
#include "import/frame/EventRowProblem.h"

#include <juce_core/juce_core.h>

#include <map>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** What became of a table. */
struct EventRowResult
{
    std::vector<std::shared_ptr<Event>> events; ///< in the order of the rows
    std::vector<int> eventRows;                 ///< for each event the index of its row
    std::vector<EventRowProblem> problems;      ///< in the order of the rows
};

/** What a user may choose when a cue list becomes events. */
struct EventRowReaderOptions
{
    /** "**" in a cue's text is a line break, as subtitle and taker lists write it. */
    bool starsToLineBreaks = false;

    /** "01:02:03" is a time, the first frame of its second, as the time cells of spreadsheets have it. */
    bool timesOfWholeSeconds = false;
};

/** Makes events of the table that an importer has read: the last step of an import.

    The rule that is easily missed: nothing is guessed. A cell that can't be understood is reported with its
    row and column and leaves its attribute at the default of a new event, and an event whose start can't be
    read has no time at all, since a cue that is off by a frame costs the studio an hour with the actor. So a
    result is to be used together with its problems.

        Start TC, End TC   see TimeCellReader. An end before the start is a problem and gives way to the
                           default length; an end is kept as told for every type, also one at the start
        Event Type         see eventTypeInCell(); an ADR cue where there is none
        Streamer Duration  see durationInCell(); it also gives a flutter without End TC its length
        BPM                see tempoInCell(). Only a streamer in bars has a tempo: that of any other event is
                           dropped without a word, because tables carry the column for all rows
        Done, Enabled, Forced Narrative
                           see flagInCell(); an empty cell says no, but for Enabled, where it says nothing
        Number of Takes    a whole number from 0
        FN Region          see regionInCell()
        Reason             see ReasonCellReader; counts as a use of the reason
        Character, Char Prefix, Actor
                           see CastCollector
        all others         the text as it stands, with its attributes

    Rows that are blank in all columns that are read are skipped. The events are finished: their setters make
    undo steps and tell of changes again, while reading did neither. Whoever adds them to a list decides about
    its fades.

    The time reference and the cast are shared with the events and the caller. One thread at a time. */
class OVERMARKS_API EventRowReader final
{
public:
    using Options = EventRowReaderOptions; ///< short for those who read rows

    /** @param projectTime  time reference of the new events; with null no event gets a time
        @param projectCast  gets the characters that are new to it; null makes one, see characterMap() */
    EventRowReader (std::shared_ptr<Core::TimeInfo> projectTime,
                    std::shared_ptr<Core::ADRCharacterMap> projectCast, Options chosen = {});

    /** Reads all rows of an importer that has succeeded. Characters of the file keep their identifiers where
        they are new to the cast. The times of workbooks may be of whole seconds, whatever the options say. The
        importer is not changed. */
    [[nodiscard]] EventRowResult read (EventFileImporter& importer) const;

    /** The same for whoever is done with the table: each row of data loses its cells once it has been read, so that a long table and its events
        aren't in memory together. The rows themselves stay, empty. */
    [[nodiscard]] EventRowResult readAndEmpty (EventFileImporter& importer) const;

    /** Reads a table from a row on.
        @param columnMap  column title to index of a cell; titles that are missing or -1 are not read, nor are
                          cells that a row doesn't have
        @param firstRow   index of the first row of data */
    [[nodiscard]] EventRowResult read (const std::vector<std::vector<Core::RichTextString>>& rows,
                                       const std::map<juce::String, int>& columnMap, int firstRow) const;

    /** 1 for the formats that keep the file's titles as their first row, 0 where every row is data. */
    [[nodiscard]] static int firstDataRow (EventFileImporter& importer);

    /** Completes the column map of the table that this library exports, whose streamer durations stand under
        "Duration": a header that in other lists means the length of the cue, and so is not guessed at.
        @returns whether the first row is that table's heading and the column was not assigned yet; else
                 nothing changes */
    static bool adoptOwnTableColumns (const std::vector<std::vector<Core::RichTextString>>& rows,
                                      std::map<juce::String, int>& columnMap);

    /** The cast that gets the characters. Never null. */
    [[nodiscard]] const std::shared_ptr<Core::ADRCharacterMap>& characterMap() const noexcept { return cast; }

private:
    std::shared_ptr<Core::TimeInfo> timeInfo;
    std::shared_ptr<Core::ADRCharacterMap> cast;
    Options options;
};

} // namespace ZEP::Overmarks
