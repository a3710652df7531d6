// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentLaws.h"

#include "Application.h"

#include "core/documents/ExcelFileHandler.h"
#include "export/ADROverviewPDFExporter.h"
#include "export/EventASCExporter.h"
#include "export/EventArendisTXTExporter.h"
#include "export/EventCSVExporter.h"
#include "export/EventExcelExporter.h"
#include "export/EventPDFExporter.h"
#include "export/EventTTALExporter.h"
#include "export/frame/EventExporterFactory.h"
#include "export/print/PDFPrintAdapter.h"
#include "export/word/EventWordExporter.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "list/EventArray.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

/** Keeps a page as the file that it would be printed from. */
class PageKeeper final : public PDFPrintAdapter
{
public:
    void initWithCallerObject (EventPDFExporter*) override {}

    void exportHTMLString (const std::string& html, const std::string& toFilePath) override
    {
        std::ofstream (toFilePath, std::ios::binary) << html;
    }
};

void keepPages (EventPDFExporter& exporter)
{
    exporter.makePrintAdapter = [] { return std::make_unique<PageKeeper>(); };
    exporter.fileExtension = ".html";
}

std::string contentOfDocument (const std::filesystem::path& file)
{
    law (std::filesystem::is_regular_file (file), "a document is there");
    return contentOf (file);
}

std::size_t countOf (std::string_view sought, std::string_view text)
{
    std::size_t count = 0;

    for (auto place = text.find (sought); place != std::string_view::npos;
         place = text.find (sought, place + sought.size()))
        ++count;

    return count;
}

/** A text of fixed columns has lines of its own kind alone. */
void checkLineEnds (std::string_view bytes)
{
    law (bytes.empty() || bytes.ends_with ("\r\n"), "a text of fixed columns ends with a line");

    // A carriage return alone may stand in a text; the format keeps it.
    for (auto place = bytes.find ('\n'); place != std::string_view::npos;
         place = bytes.find ('\n', place + 1))
        law (place > 0 && bytes[place - 1] == '\r',
             "each line of a text of fixed columns ends as the others do");

    law (bytes.find ('\0') == std::string_view::npos, "a text of fixed columns has no zero in it");
}

} // namespace

DocumentLaws::DocumentLaws (Events eventsToWrite, std::shared_ptr<TimeInfo> time,
                            std::filesystem::path folder)
    : events (std::move (eventsToWrite)),
      timeInfo (std::move (time)),
      directory (std::move (folder))
{
}

void DocumentLaws::checkAll() const
{
    checkOwnTable();
    checkTakerTables();
    checkTTAL();
    checkWorkbook();
    checkSheets();
    checkWordJSON();
    checkFixedColumns();
    checkByCharacter();
    checkOverview();
}

DocumentLaws::Settings DocumentLaws::settings (int type, const char* fileName) const
{
    auto made = std::make_shared<EventExportSettingsSet>();
    made->exportType = static_cast<EventExportType> (type);
    made->events = events;
    made->outputDirectory = pathText (directory);
    made->fileName = fileName;
    made->showTakeNumbers = true;
    made->options[EventExportCSVDelimiterKey] = 1;
    made->options[EventExportCSVTemplateKey] = 0;
    made->options[EventExportCombineIntoSingleFileKey] = false;
    made->options[EventExportAppVersionKey] = "1";

    for (const auto& event : events)
        made->eventsByCharacter[event->getCharacterID()].push_back (event);

    return made;
}

std::string DocumentLaws::written (const char* fileName) const
{
    return contentOfDocument (directory / fileName);
}

Events DocumentLaws::readBack (const char* fileName) const
{
    juce::String message;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (pathText (directory / fileName),
                                                                              message, {}, timeInfo);

    if (message.isNotEmpty())
        std::cerr << message << std::endl;

    law (importer != nullptr && message.isEmpty(), "a document of ours can be read");
    EventRowReader::adoptOwnTableColumns (importer->rows, importer->columnMap);
    return EventRowReader (timeInfo, std::make_shared<ADRCharacterMap>()).read (*importer).events;
}

/** Cue numbers and names go into a table as they are. One with a line break, which no table has and only a workbook, a property list or
    JSON can bring in, makes a row of several lines, and not every reader takes these for one. */
bool DocumentLaws::hasRowsOfOneLine() const
{
    const auto isOneLine = [] (const juce::String& text) { return ! text.containsAnyOf ("\r\n"); };

    return std::all_of (events.begin(), events.end(),
                        [&] (const auto& event)
                        {
                            const auto who = event->character();
                            return isOneLine (event->getCueNumber())
                                   && (who == nullptr || isOneLine (who->name + who->prefix + who->actor));
                        });
}

/** The own table carries times, types and takes of all events. */
void DocumentLaws::checkOwnTable() const
{
    law (EventCSVExporter (settings (EventExportTypeCSV, "table")).exportEventsByTimecode().isEmpty(),
         "a table can be written");
    const auto bytes = written ("table.csv");
    law (bytes.starts_with (markOfUTF8) && bytes.ends_with ('\0') && isUTF8 (bytes),
         "a table is UTF-8, with a mark and a zero at its end");

    if (! hasRowsOfOneLine())
        return;

    const auto read = readBack ("table.csv");
    law (read.size() == events.size(), "a table brings all events back");

    for (std::size_t i = 0; i < read.size(); ++i)
    {
        law (read[i]->getType() == events[i]->getType(), "a table brings the types back");
        law (read[i]->getStartTCString() == events[i]->getStartTCString(), "a table brings the starts back");
        law (read[i]->getEndTCString() == events[i]->getEndTCString(), "a table brings the ends back");
        law (read[i]->getNumRecordedTakes() == events[i]->getNumRecordedTakes(),
             "a table brings the number of takes back");
    }
}

void DocumentLaws::checkTakerTables() const
{
    for (const int templateNumber : { 1, 2 })
        for (const int delimiter : { 1, 2, 3 })
        {
            const auto order = settings (EventExportTypeCSV, "taker");
            order->options[EventExportCSVTemplateKey] = templateNumber;
            order->options[EventExportCSVDelimiterKey] = delimiter;
            EventCSVExporter exporter (order);
            exporter.askToContinue = [] (const auto&, const auto&) { return true; };
            law (exporter.exportEventsByTimecode().isEmpty(), "a table of a recording tool can be written");
            law (! written ("taker.csv").empty(), "a table of a recording tool has its heading");
        }
}

void DocumentLaws::checkTTAL() const
{
    law (EventTTALExporter (settings (EventExportTypeTTAL, "list")).exportEventsByTimecode().isEmpty(),
         "TTAL can be written");
    const auto bytes = written ("list.ttal");
    law (nlohmann::json::accept (bytes), "TTAL is JSON");
    law (nlohmann::json::parse (bytes).at ("events").size() == events.size(), "TTAL tells all events");
    law (readBack ("list.ttal").size() <= events.size(), "TTAL brings no more events back");
}

/** No text is ever cut: a list with one that is too long for a cell gets no workbook. */
bool DocumentLaws::fitsIntoWorkbook (const std::vector<EventExcelExporter::Row>& table) const
{
    constexpr std::size_t longestCell = 32767;

    for (const auto& row : table)
        for (const auto& cell : row)
            if (juce::CharPointer_UTF16::getBytesRequiredFor (cell.getText().getCharPointer())
                > longestCell * sizeof (juce::CharPointer_UTF16::CharType))
                return false;

    return true;
}

/** A workbook is read as the table that it was written from. */
void DocumentLaws::checkWorkbook() const
{
    EventExcelExporter exporter (settings (EventExportTypeExcel, "book"));
    const auto table = exporter.buildFileContent (events);
    const auto failure = exporter.exportEventsByTimecode();
    law (failure.isEmpty() == fitsIntoWorkbook (table), "a workbook can be written");

    if (failure.isNotEmpty())
        return;

    std::vector<EventExcelExporter::Row> read;
    juce::String error;
    ExcelFileHandler().readFileContent (pathText (directory / "book.xlsx"), read, error);

    if (error.isNotEmpty())
        std::cerr << error << std::endl;

    law (error.isEmpty() && read.size() == table.size(), "a workbook brings all rows back");

    for (std::size_t i = 0; i < table.size(); ++i)
        for (std::size_t j = 0; j < table[i].size(); ++j)
        {
            const auto& cell = table[i][j].getText();
            const auto there = j < read[i].size() ? read[i][j].getText() : juce::String();

            if (there != cell)
                std::cerr << "[" << cell << "] came back as [" << there << "]" << std::endl;

            law (there == cell, "a workbook brings its cells back");
        }
}

void DocumentLaws::checkSheets() const
{
    for (const auto layout : { EventExportLayoutDirector, EventExportLayoutActor, EventExportLayoutEngineer })
    {
        const auto order = settings (EventExportTypePDF, "sheet");
        order->layout = layout;
        EventPDFExporter exporter (order);
        keepPages (exporter);
        law (exporter.exportEventsByTimecode().isEmpty() && exporter.printFailures.empty(),
             "a sheet can be written");
        const auto page = written ("sheet.html");
        law (isUTF8 (page) && page.find ('\0') == std::string::npos, "a sheet is UTF-8");

        for (const auto& event : events)
            law (page.find (exporter.oneCueContent (event).toStdString()) != std::string::npos,
                 "a sheet shows every cue");
    }
}

/** What is handed to the tool that makes Word documents. */
void DocumentLaws::checkWordJSON() const
{
    EventWordExporter exporter (settings (EventExportTypeWord, "sheet"));
    exporter.wordDocument = std::make_unique<WordDocument>();
    exporter.setDocumentFooter();
    exporter.setDocumentFirstPageHeader ("everybody");

    for (const auto& event : events)
        exporter.addOneCueContent (event);

    for (const auto& suffix : { juce::String ("timecode"), events.front()->getCharacterID() })
    {
        const std::filesystem::path file (exporter.writeAndRegisterJSONFile (suffix).toStdString());
        law (file.parent_path() == std::filesystem::temp_directory_path(),
             "a sheet in JSON lies in the temporary folder");
        const auto json = contentOfDocument (file);
        law (json.find ('\n') == std::string::npos, "a sheet in JSON is one line");
        law (nlohmann::json::accept (json), "a sheet in JSON is JSON");
        law (nlohmann::json::parse (json).at ("cueContentList").size() == events.size(),
             "a sheet in JSON has every cue");
    }
}

void DocumentLaws::checkFixedColumns() const
{
    law (EventASCExporter().exportEvents (events, pathText (directory / "cues.asc")).isEmpty(),
         "ASC can be written");
    checkLineEnds (written ("cues.asc"));
    law (EventArendisTXTExporter()
             .exportEvents (events, pathText (directory / "script.txt"), "A title")
             .isEmpty(),
         "an Arendis script can be written");
    const auto script = written ("script.txt");
    checkLineEnds (script);
    law (countOf ("(1. Band)\r\n", script) >= events.size(), "an Arendis script has every event");
}

/** A file for each character, however strange its name is. */
void DocumentLaws::checkByCharacter() const
{
    std::map<std::string, std::size_t> before;
    const auto count = [this] (std::string_view extension)
    {
        const std::filesystem::directory_iterator files (directory);
        return static_cast<std::size_t> (std::count_if (begin (files), end (files),
                                                        [extension] (const auto& entry)
                                                        { return entry.path().extension() == extension; }));
    };

    for (const auto* extension : { ".csv", ".ttal", ".xlsx", ".html" })
        before[extension] = count (extension);

    const auto blocks = settings (EventExportTypeNone, "part")->eventsByCharacter.size();
    const auto isForWorkbooks = fitsIntoWorkbook (
        EventExcelExporter (settings (EventExportTypeExcel, "part")).buildFileContent (events));
    EventPDFExporter sheets (settings (EventExportTypePDF, "part"));
    keepPages (sheets);
    law (sheets.exportEventsByCharacter().isEmpty(), "a sheet for each character can be written");

    for (const auto type : { EventExportTypeCSV, EventExportTypeTTAL, EventExportTypeExcel })
        law (EventExporterFactory::eventExporter (settings (type, "part"))
                 ->exportEventsByCharacter()
                 .isEmpty(),
             "a file for each character can be written");

    for (const auto& [extension, files] : before)
        law (count (extension) == files + blocks || (extension == ".xlsx" && ! isForWorkbooks),
             "each character has a file of its own");
}

void DocumentLaws::checkOverview() const
{
    const auto list = std::make_shared<EventArray>();
    list->addEvents (events, false);
    int lines = 0;

    for (const auto& row : ZEP::Orvelle::adrOverviewDataSets (*list, *Event::getADRCharacterMap()))
    {
        checkText (row.character + row.actor + row.prefix);
        law (row.doneRatio >= 0.0f && row.doneRatio <= 1.0f, "a share lies between 0 and 1");
        law (row.numberOfCues <= row.numberOfLines, "a cue has a line at least");
        lines += row.numberOfLines;
    }

    const auto cues = std::count_if (events.begin(), events.end(),
                                     [] (const auto& event) { return event->getType() == EventTypeADRCue; });
    law (lines == cues, "the overview counts every ADR cue");
}
