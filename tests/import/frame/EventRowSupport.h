// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/frame/EventRowReader.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** A row of a cue list by its column titles. */
using NamedCells = std::map<std::string, std::string>;

/** Rows with their column map, as an importer would hand them on. */
struct CueTable
{
    CueTable() = default;

    explicit CueTable (const std::vector<NamedCells>& named)
    {
        for (const auto& cells : named)
            for (const auto& [title, text] : cells)
                columns.try_emplace (title, static_cast<int> (columns.size()));

        for (const auto& cells : named)
        {
            rows.emplace_back (columns.size());
            for (const auto& [title, text] : cells)
                rows.back()[static_cast<std::size_t> (columns[title])] =
                    Core::RichTextString (juce::String (juce::CharPointer_UTF8 (text.c_str())));
        }
    }

    std::vector<std::vector<Core::RichTextString>> rows;
    std::map<juce::String, int> columns;
};

/** A picture at 25 frames from 01:00:00:00 and an empty cast, and tables that are read into it. */
class EventRowsTest : public OvermarksTest
{
protected:
    EventRowResult read (const CueTable& table, int firstRow = 0)
    {
        return EventRowReader (timeInfo, cast, options).read (table.rows, table.columns, firstRow);
    }

    EventRowResult read (const std::vector<NamedCells>& rows) { return read (CueTable (rows)); }

    /** The event of a row that has no problems. */
    std::shared_ptr<Event> event (const NamedCells& cells)
    {
        const auto result = read ({ cells });
        EXPECT_EQ (problems (result), std::vector<std::string>());
        EXPECT_EQ (result.events.size(), 1u);
        return result.events.empty() ? std::make_shared<Event>() : result.events[0];
    }

    /** "2 BPM: the message", one for each problem. */
    static std::vector<std::string> problems (const EventRowResult& result)
    {
        std::vector<std::string> lines;
        for (const auto& problem : result.problems)
            lines.push_back (std::to_string (problem.row) + " " + problem.column.toStdString() + ": "
                             + problem.message.toStdString());
        return lines;
    }

    /** The problems of a table of this one row, without the number of the row. */
    std::vector<std::string> complaints (const NamedCells& cells)
    {
        std::vector<std::string> lines;
        for (const auto& line : problems (read ({ cells })))
            lines.push_back (line.substr (2));
        return lines;
    }

    using Lines = std::vector<std::string>;

    std::shared_ptr<Core::TimeInfo> timeInfo = timeInfoAt ("25", "01:00:00:00");
    std::shared_ptr<Core::ADRCharacterMap> cast = Event::getADRCharacterMap();
    EventRowReader::Options options;
};

} // namespace ZEP::Overmarks::Testing
