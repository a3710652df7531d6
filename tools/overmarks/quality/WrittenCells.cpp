// SPDX-License-Identifier: GPL-3.0-only
#include "quality/WrittenCells.h"

#include "core/text/StringUtil.h"
#include "import/CSVParser.h"

#include <string>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

constexpr int comma = 1;
constexpr char separator = ',';

std::shared_ptr<EventExportSettingsSet> settingsFor (int templateNumber)
{
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->options[EventExportCSVTemplateKey] = templateNumber;
    return settings;
}

/** The cells as they are read again. What goes on from the line before within quotes is no cell that begins. */
juce::StringArray cellsIn (const juce::String& text)
{
    juce::StringArray cells;
    CSVParser parser;

    for (const auto& line : juce::StringArray::fromLines (text))
    {
        const bool goesOn = ! parser.outsideQuotes;
        auto bytes = line.toStdString();
        const auto row = parser.parseRow (bytes, separator);

        for (std::size_t cell = goesOn ? 1 : 0; cell < row.size(); ++cell)
            cells.add (ZEP::Core::StringUtil::fromUTF8 (row[cell]));
    }

    return cells;
}

} // namespace

WrittenCells::WrittenCells (int templateNumber) : exporter (settingsFor (templateNumber))
{
    exporter.delimiter = comma;
    exporter.askToContinue = [] (const juce::String&, const juce::String&) { return true; };
    juce::ignoreUnused (exporter.csvHeaderString()); // which also chooses the columns
}

juce::StringArray WrittenCells::of (const std::shared_ptr<Event>& event, const juce::String& key)
{
    return cellsIn (exporter.csvCellValue (event, key, -1));
}

juce::StringArray WrittenCells::ofCue (const EventCSVExporter::Events& events)
{
    exporter.csvString.clear();
    exporter.createCSVLinesForTemplateDSTaker (events);
    return cellsIn (exporter.csvString);
}

} // namespace overmarks
