// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventExcelExporter.h"

#include "core/cast/ADRCharacter.h"
#include "core/documents/ExcelFileHandler.h"
#include "event/EventKeyValueEditor.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/CellTexts.h"
#include "export/frame/OutputFileNames.h"

#include <unordered_map>
#include <utility>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;
using ZEP::Core::ADRCharacter;
using ZEP::Core::ExcelFileHandler;
using ZEP::Core::RichTextString;

namespace
{

const juce::String extension { ".xlsx" };

/** Whose row is made. */
struct Source
{
    explicit Source (const std::shared_ptr<Event>& eventOfRow)
        : event (eventOfRow),
          character (eventOfRow->character())
    {
    }

    const std::shared_ptr<Event>& event;
    const std::shared_ptr<ADRCharacter> character; ///< null if the cast doesn't know it
};

/** Writes a cell of that event over the one of the row before. */
using CellMaker = void (*) (RichTextString& cell, const Source&);

/** Of a column without looks. The cell keeps its run, else a season's list makes a million of them. */
void setPlain (RichTextString& cell, const juce::String& text)
{
    if (cell.length() == 0)
        cell = text;
    else
        cell.setText (text);
}

void start (RichTextString& cell, const Source& of) { setPlain (cell, of.event->getStartTCString()); }
void end (RichTextString& cell, const Source& of) { setPlain (cell, of.event->getEndTCString()); }
void duration (RichTextString& cell, const Source& of) { setPlain (cell, CellTexts::duration (of.event)); }
void cueNumber (RichTextString& cell, const Source& of) { setPlain (cell, of.event->getCueNumber()); }
void reason (RichTextString& cell, const Source& of) { setPlain (cell, CellTexts::reason (of.event)); }
void type (RichTextString& cell, const Source& of) { setPlain (cell, of.event->typeString()); }

void text (RichTextString& cell, const Source& of)
{
    cell = of.event->getText().replaceIllegalASCIICharacters();
}

void notes (RichTextString& cell, const Source& of) { cell = of.event->getNotes(); }
void engineeringNotes (RichTextString& cell, const Source& of) { cell = of.event->getEngineeringNotes(); }

void takes (RichTextString& cell, const Source& of)
{
    setPlain (cell, juce::String (of.event->getNumRecordedTakes()));
}

void region (RichTextString& cell, const Source& of)
{
    setPlain (cell, CellTexts::region (of.event->getForcedNarrativeRegion()));
}

template <auto Flag>
void yesOrNo (RichTextString& cell, const Source& of)
{
    setPlain (cell, CellTexts::yesOrNo (((*of.event).*Flag)()));
}

/** The quotes are doubled as in delimited text: lists that went through either are the same to a reader. */
template <auto Member>
void ofCharacter (RichTextString& cell, const Source& of)
{
    setPlain (cell,
              of.character != nullptr ? ((*of.character).*Member).replace ("\"", "\"\"") : juce::String());
}

struct Column
{
    const char* title;
    const juce::String& key;
    CellMaker cell;
};

const std::vector<Column>& columns()
{
    static const std::vector<Column> table {
        { "Start TC", KV::KV_StartTCString, start },
        { "End TC", KV::KV_EndTCString, end },
        { "Duration", KV::KV_DurationTCString, duration },
        { "Cue Number", KV::KV_CueNumber, cueNumber },
        { "Character", KV::KV_CharacterID, ofCharacter<&ADRCharacter::name> },
        { "Char Prefix", KV::KV_CharPrefix, ofCharacter<&ADRCharacter::prefix> },
        { "Actor", KV::KV_Actor, ofCharacter<&ADRCharacter::actor> },
        { "Text", KV::KV_Text, text },
        { "Reason", KV::KV_Reason, reason },
        { "Notes", KV::KV_Notes, notes },
        { "Engineering Notes", KV::KV_EngineeringNotes, engineeringNotes },
        { "Done", KV::KV_Done, yesOrNo<&Event::isDone> },
        { "Number of Takes", KV::KV_NumRecordedTakes, takes },
        { "Forced Narrative", KV::KV_IsForcedNarrative, yesOrNo<&Event::isForcedNarrative> },
        { "FN Region", KV::KV_ForcedNarrativeRegion, region },
    };
    return table;
}

std::unordered_map<juce::String, CellMaker> makeCellMakers()
{
    std::unordered_map<juce::String, CellMaker> makers {
        // Keys that have no column.
        { KV::KV_Type, type },
        { KV::KV_Enabled, yesOrNo<&Event::isEnabled> },
    };

    for (const auto& column : columns())
        makers.emplace (column.key, column.cell);

    return makers;
}

/** Null for a key that has no cell. */
CellMaker cellMakerFor (const juce::String& key)
{
    static const auto makers = makeCellMakers();
    const auto found = makers.find (key);
    return found != makers.end() ? found->second : nullptr;
}

std::vector<CellMaker> makersFor (const std::vector<juce::String>& keys)
{
    std::vector<CellMaker> makers;

    for (const auto& key : keys)
        makers.push_back (cellMakerFor (key));

    return makers;
}

/** @param row  empty, or filled by the same makers before */
void fill (EventExcelExporter::Row& row, const std::vector<CellMaker>& makers,
           const std::shared_ptr<Event>& event)
{
    const Source source (event);
    row.resize (makers.size());

    for (std::size_t i = 0; i < makers.size(); ++i)
        makers[i](row[i], source);
}

} // namespace

EventExcelExporter::EventExcelExporter (std::shared_ptr<EventExportSettingsSet> settingsSet)
    : EventExporter (std::move (settingsSet))
{
}

EventExcelExporter::~EventExcelExporter() = default;

EventExportType EventExcelExporter::type() const { return EventExportTypeExcel; }

juce::String EventExcelExporter::exportEventsByTimecode()
{
    const auto events = settings->events;
    const auto error = writeFile (
        events, OutputFileNames (settings->outputDirectory, settings->fileName, extension).single());

    if (delegate != nullptr)
        delegate->progressChanged (this, 1, 1);

    return error;
}

juce::String EventExcelExporter::exportEventsByCharacter()
{
    const ByCharacterWalk walk (*settings, extension);

    if (walk.isCombined())
        return writeFile (walk.joinedEvents(), walk.singleFile());

    return walk.writeFiles (*this, ByCharacterWalk::AfterFailure::goOn,
                            [this] (const auto& block) { return writeFile (block.events, block.file); });
}

std::vector<EventExcelExporter::Row> EventExcelExporter::buildFileContent (
    const std::vector<std::shared_ptr<Event>>& events)
{
    std::vector<Row> rows;
    rows.reserve (events.size() + 1);
    rows.push_back (firstLineValues());
    const auto makers = makersFor (columnKeys);

    for (const auto& event : events)
        fill (rows.emplace_back(), makers, event);

    return rows;
}

EventExcelExporter::Row EventExcelExporter::firstLineValues()
{
    Row titles;
    columnKeys.clear();

    for (const auto& column : columns())
    {
        titles.emplace_back (column.title);
        columnKeys.push_back (column.key);
    }

    return titles;
}

RichTextString EventExcelExporter::richTextStringForEventAndColumnKey (std::shared_ptr<Event> event,
                                                                       const juce::String& key)
{
    RichTextString cell;

    if (const auto maker = cellMakerFor (key); maker != nullptr)
        maker (cell, Source (event));

    return cell;
}

juce::String EventExcelExporter::writeFile (const Events& events, const juce::File& file)
{
    const auto heading = firstLineValues();
    const auto makers = makersFor (columnKeys);
    juce::String error;
    Row cells;
    ExcelFileHandler().writeRows (
        file.getFullPathName(), events.size() + 1,
        [&] (std::size_t row) -> const Row&
        {
            if (row == 0)
                return heading;

            fill (cells, makers, events[row - 1]);
            return cells;
        },
        error);
    return error;
}

} // namespace ZEP::Overmarks
