// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Application.h"

#include "import/frame/EventFileImporter.h"
#include "import/frame/EventRowReader.h"

#include <memory>

/** Every cell is sound text as long as its runs say, and rows become cues or problems. */
inline void checkTable (ZEP::Overmarks::EventFileImporter& importer)
{
    for (const auto& row : importer.rows)
        for (const auto& cell : row)
            checkText (cell);

    const auto result =
        ZEP::Overmarks::EventRowReader (std::make_shared<ZEP::Core::TimeInfo>(), {}).read (importer);
    law (result.events.size() <= importer.rows.size(), "a row is one event at most");
    law (result.events.size() == result.eventRows.size(), "every event has its row");

    for (const auto& problem : result.problems)
    {
        law (problem.row >= 0 && static_cast<std::size_t> (problem.row) < importer.rows.size(),
             "a problem names a row of the table");
        checkText (problem.message);
    }
}
