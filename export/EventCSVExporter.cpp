// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventCSVExporter.h"

#include "core/text/MacOSRomanEncoding.h"
#include "event/EventKeyValueEditor.h"
#include "export/EventCSVCells.h"
#include "export/TakerTemplate.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/EventsAhead.h"
#include "export/frame/LongText.h"
#include "export/frame/OutputFile.h"
#include "export/frame/OutputFileNames.h"
#include "export/frame/SingleByteText.h"

#include <Poco/Latin1Encoding.h>
#include <Poco/Windows1252Encoding.h>

#include <string>
#include <utility>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;
using ZEP::Core::TextEncodingLatin1;
using ZEP::Core::TextEncodingMacOSRoman;
using ZEP::Core::TextEncodingUTF8;
using ZEP::Core::TextEncodingWindows1252;

namespace
{

constexpr int delimiterComma = 1;
constexpr int delimiterSemicolon = 2;
constexpr int delimiterTab = 3;

const juce::String extension { ".csv" };

/** The own table: what each column holds, under the titles that the importer offers. */
const std::vector<std::pair<juce::String, juce::String>>& ownColumns()
{
    static const std::vector<std::pair<juce::String, juce::String>> columns {
        { "Start TC", KV::KV_StartTCString },
        { "End TC", KV::KV_EndTCString },
        { "Text", KV::KV_Text },
        { "Character", KV::KV_CharacterID },
        { "Char Prefix", KV::KV_CharPrefix },
        { "Actor", KV::KV_Actor },
        { "Cue Number", KV::KV_CueNumber },
        { "Done", KV::KV_Done },
        { "Notes", KV::KV_Notes },
        { "Engineering Notes", KV::KV_EngineeringNotes },
        { "Event Type", KV::KV_Type },
        { "Duration", KV::KV_StreamerDuration },
        { "Enabled", KV::KV_Enabled },
        { "Number of Takes", KV::KV_NumRecordedTakes },
        { "Reason", KV::KV_Reason },
        { "BPM", KV::KV_BeatsPerMinute },
        { "Forced Narrative", KV::KV_IsForcedNarrative },
        { "FN Region", KV::KV_ForcedNarrativeRegion },
    };
    return columns;
}

/** Writes a text in an encoding of one byte a character. */
void writeConverted (OutputFile& file, const juce::String& text, const Poco::TextEncoding& target)
{
    const auto bytes = singleByteText (text.toStdString(), target);
    file.write (bytes.data(), bytes.size());
}

/** False for an encoding that no such file has. */
bool writeText (OutputFile& file, const juce::String& text, ZEP::Core::TextEncoding encoding)
{
    switch (encoding)
    {
        case TextEncodingUTF8:
            file.write ("\xef\xbb\xbf", 3);
            file.writeString (text);
            return true;
        case TextEncodingMacOSRoman:
            writeConverted (file, text, ZEP::Core::macOSRomanEncoding());
            return true;
        case TextEncodingWindows1252: writeConverted (file, text, Poco::Windows1252Encoding()); return true;
        case TextEncodingLatin1: writeConverted (file, text, Poco::Latin1Encoding()); return true;
        case ZEP::Core::TextEncodingUnknown:
        case ZEP::Core::TextEncodingASCII:
        case ZEP::Core::TextEncodingUTF16: break;
    }

    return false;
}

} // namespace

EventCSVExporter::EventCSVExporter (std::shared_ptr<EventExportSettingsSet> settingsSet)
    : EventExporter (std::move (settingsSet))
{
}

EventCSVExporter::~EventCSVExporter() = default;

EventExportType EventCSVExporter::type() const { return EventExportTypeCSV; }

juce::String EventCSVExporter::exportEventsByTimecode()
{
    return writeCSVFileWithEvents (
        settings->events,
        OutputFileNames (settings->outputDirectory, settings->fileName, extension).single());
}

juce::String EventCSVExporter::exportEventsByCharacter()
{
    const ByCharacterWalk walk (*settings, extension);

    if (walk.isCombined())
        return writeCSVFileWithEvents (walk.joinedEvents(), walk.singleFile());

    return walk.writeFiles (*this, ByCharacterWalk::AfterFailure::stop,
                            [this] (const auto& block)
                            { return writeCSVFileWithEvents (block.events, block.file); });
}

juce::String EventCSVExporter::writeCSVFileWithEvents (const Events& events, const juce::File& file)
{
    csvString.clear();
    delimiter = static_cast<int> (settings->options.at (EventExportCSVDelimiterKey));
    csvString += csvHeaderString();

    switch (templateNumber())
    {
        case csvTemplateDublane: createCSVLinesForTemplateDublane (events); break;

        case csvTemplateDSTaker:
            delimiter = delimiterComma;
            textEncoding = TextEncodingLatin1;

            if (! createCSVLinesForTemplateDSTaker (events))
                return {};

            break;

        default: delimiter = delimiterSemicolon; break; // a header without rows
    }

    return writeCSVStringToFile (file);
}

juce::String EventCSVExporter::csvHeaderString()
{
    columnKeys.clear();

    switch (templateNumber())
    {
        case csvTemplateDublane: break;
        case csvTemplateDSTaker: columnKeys = dsTakerColumnKeys(); return dsTakerHeader();
        case csvTemplateEuroTaker: columnKeys = euroTakerColumnKeys(); return euroTakerHeader();
        default: return {};
    }

    juce::StringArray titles;

    for (const auto& [title, key] : ownColumns())
    {
        titles.add (title);
        columnKeys.push_back (key);
    }

    // Rows may be separated by semicolons; the header never is.
    return titles.joinIntoString (delimiter == delimiterTab ? "\t" : ",") + "\n";
}

bool EventCSVExporter::createCSVLinesForTemplateDublane (const Events& events)
{
    const auto separator = delimiterText();
    const auto writers = csvCellWritersForKeys (columnKeys);
    const bool forDSTaker = templateNumber() == csvTemplateDSTaker;

    constexpr std::size_t usualRow = 256;   // bytes, with some to spare
    constexpr std::size_t someRows = 65536; // bytes that stay near while they are written
    LongText text (csvString, events.size() * usualRow);
    std::string rows;
    CSVCells cells (rows, utf8 (separator));

    visitRows (events,
               [&] (const std::shared_ptr<Event>& event)
               {
                   const CSVCellSource source (event, forDSTaker, -1);

                   for (const auto writer : writers)
                       writer (cells, source);

                   if (rows.size() >= someRows)
                   {
                       text.add (rows);
                       rows.clear();
                   }

                   rows += '\n';
               });

    if (! rows.empty()) // the last row has no line break behind it
        rows.pop_back();

    text.add (rows);
    return true;
}

bool EventCSVExporter::createCSVLinesForTemplateEuroTaker (const Events&)
{
    return true; // no rows are defined for it
}

juce::String EventCSVExporter::csvCellValue (std::shared_ptr<Event> event, const juce::String& key,
                                             int trackNumber)
{
    const auto separator = delimiterText();
    std::string cell;
    CSVCells cells (cell, utf8 (separator));
    csvCellWriterForKey (key) (cells,
                               CSVCellSource (event, templateNumber() == csvTemplateDSTaker, trackNumber));
    return juce::String::fromUTF8 (cell.data(), static_cast<int> (cell.size()));
}

juce::String EventCSVExporter::writeCSVStringToFile (const juce::File& file)
{
    OutputFile output (file);

    if (writeText (output, csvString, textEncoding) && output.finish())
        return {};

    return "Error writing file to " + file.getFullPathName();
}

juce::String EventCSVExporter::delimiterText() const
{
    switch (delimiter)
    {
        case delimiterComma: return ",";
        case delimiterSemicolon: return ";";
        case delimiterTab: return "\t";
        default: return {};
    }
}

int EventCSVExporter::templateNumber() const
{
    return static_cast<int> (settings->options.at (EventExportCSVTemplateKey));
}

} // namespace ZEP::Overmarks
