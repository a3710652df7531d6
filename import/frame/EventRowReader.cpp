// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventRowReader.h"

#include "import/frame/EventTableReader.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{

namespace
{

// Stored numbers of the formats (EventFileImporter::type()) whose table begins with the titles of the file.
constexpr int typeOfWorkbooks = 6;
constexpr std::array typesWithTitleRow { 1 /* dBase */, 2 /* delimited text */, typeOfWorkbooks };

// The heading of the library's own table.
constexpr std::array<std::string_view, 18> ownTitles {
    "Start TC",   "End TC",           "Text",     "Character",       "Char Prefix",
    "Actor",      "Cue Number",       "Done",     "Notes",           "Engineering Notes",
    "Event Type", "Duration",         "Enabled",  "Number of Takes", "Reason",
    "BPM",        "Forced Narrative", "FN Region"
};

constexpr std::string_view ownDurationTitle = "Duration";
constexpr auto streamerDurationTitle = "Streamer Duration";

EventRowReaderOptions optionsFor (EventFileImporter& importer, EventRowReaderOptions chosen)
{
    chosen.timesOfWholeSeconds = chosen.timesOfWholeSeconds || importer.type() == typeOfWorkbooks;
    return chosen;
}

} // namespace

EventRowReader::EventRowReader (std::shared_ptr<Core::TimeInfo> projectTime,
                                std::shared_ptr<Core::ADRCharacterMap> projectCast, Options chosen)
    : timeInfo (std::move (projectTime)),
      cast (projectCast != nullptr ? std::move (projectCast) : std::make_shared<Core::ADRCharacterMap>()),
      options (chosen)
{
}

EventRowResult EventRowReader::read (EventFileImporter& importer) const
{
    EventTableReader table (timeInfo, *cast, importer.characterMap.get(), optionsFor (importer, options));
    return table.read (importer.rows, importer.columnMap, firstDataRow (importer));
}

EventRowResult EventRowReader::readAndEmpty (EventFileImporter& importer) const
{
    EventTableReader table (timeInfo, *cast, importer.characterMap.get(), optionsFor (importer, options));
    return table.readAndEmpty (importer.rows, importer.columnMap, firstDataRow (importer));
}

EventRowResult EventRowReader::read (const std::vector<std::vector<Core::RichTextString>>& rows,
                                     const std::map<juce::String, int>& columnMap, int firstRow) const
{
    EventTableReader table (timeInfo, *cast, nullptr, options);
    return table.read (rows, columnMap, firstRow);
}

int EventRowReader::firstDataRow (EventFileImporter& importer)
{
    const auto& types = typesWithTitleRow;
    return std::find (types.begin(), types.end(), importer.type()) != types.end() ? 1 : 0;
}

bool EventRowReader::adoptOwnTableColumns (const std::vector<std::vector<Core::RichTextString>>& rows,
                                           std::map<juce::String, int>& columnMap)
{
    const auto isTitle = [] (const Core::RichTextString& cell, std::string_view title)
    { return cell.getText().toRawUTF8() == title; };

    if (rows.empty()
        || ! std::equal (rows[0].begin(), rows[0].end(), ownTitles.begin(), ownTitles.end(), isTitle))
        return false;

    const auto assigned = columnMap.find (streamerDurationTitle);

    if (assigned != columnMap.end() && assigned->second != -1)
        return false;

    const auto place = std::find (ownTitles.begin(), ownTitles.end(), ownDurationTitle) - ownTitles.begin();
    columnMap[streamerDurationTitle] = static_cast<int> (place);
    return true;
}

} // namespace ZEP::Overmarks
