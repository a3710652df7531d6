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

using EventPointer = std::shared_ptr<Event>;
using CellMaker = RichTextString (*) (const EventPointer&);

RichTextString start (const EventPointer& event) { return event->getStartTCString(); }
RichTextString end (const EventPointer& event) { return event->getEndTCString(); }
RichTextString duration (const EventPointer& event) { return CellTexts::duration (event); }
RichTextString cueNumber (const EventPointer& event) { return event->getCueNumber(); }
RichTextString text (const EventPointer& event) { return event->getText().replaceIllegalASCIICharacters(); }
RichTextString reason (const EventPointer& event) { return CellTexts::reason (event); }
RichTextString notes (const EventPointer& event) { return event->getNotes(); }
RichTextString engineeringNotes (const EventPointer& event) { return event->getEngineeringNotes(); }
RichTextString done (const EventPointer& event)
{
    return juce::String (CellTexts::yesOrNo (event->isDone()));
}
RichTextString takes (const EventPointer& event) { return juce::String (event->getNumRecordedTakes()); }
RichTextString type (const EventPointer& event) { return event->typeString(); }
RichTextString enabled (const EventPointer& event)
{
    return juce::String (CellTexts::yesOrNo (event->isEnabled()));
}

RichTextString forcedNarrative (const EventPointer& event)
{
    return juce::String (CellTexts::yesOrNo (event->isForcedNarrative()));
}

RichTextString region (const EventPointer& event)
{
    return juce::String (CellTexts::region (event->getForcedNarrativeRegion()));
}

/** The quotes are doubled as in delimited text: lists that went through either are the same to a reader. */
template <auto Member>
RichTextString ofCharacter (const EventPointer& event)
{
    const auto character = event->character();
    return character != nullptr ? ((*character).*Member).replace ("\"", "\"\"") : juce::String();
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
        { "Done", KV::KV_Done, done },
        { "Number of Takes", KV::KV_NumRecordedTakes, takes },
        { "Forced Narrative", KV::KV_IsForcedNarrative, forcedNarrative },
        { "FN Region", KV::KV_ForcedNarrativeRegion, region },
    };
    return table;
}

std::unordered_map<juce::String, CellMaker> makeCellMakers()
{
    std::unordered_map<juce::String, CellMaker> makers {
        // Keys that have no column.
        { KV::KV_Type, type },
        { KV::KV_Enabled, enabled },
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

    std::vector<CellMaker> makers;

    for (const auto& key : columnKeys)
        makers.push_back (cellMakerFor (key));

    for (const auto& event : events)
    {
        auto& row = rows.emplace_back();
        row.reserve (makers.size());

        for (const auto maker : makers)
            row.push_back (maker (event));
    }

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
    const auto maker = cellMakerFor (key);
    return maker != nullptr ? maker (event) : RichTextString();
}

juce::String EventExcelExporter::writeFile (const Events& events, const juce::File& file)
{
    auto rows = buildFileContent (events);
    juce::String error;
    ExcelFileHandler().writeFileContent (file.getFullPathName(), rows, error);
    return error;
}

} // namespace ZEP::Overmarks
