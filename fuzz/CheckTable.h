// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TimeInfo.h"
#include "import/frame/EventFileImporter.h"
#include "import/frame/EventRowReader.h"

#include <cstdlib>
#include <memory>

/** Every cell is sound text as long as its runs say, and rows become cues or problems. */
inline void checkTable (ZEP::Overmarks::EventFileImporter& importer)
{
    for (const auto& row : importer.rows)
        for (const auto& cell : row)
        {
            const auto text = cell.getText();
            if (cell.length() != text.length()
                || ! juce::CharPointer_UTF8::isValidString (text.toRawUTF8(),
                                                            static_cast<int> (text.getNumBytesAsUTF8())))
                std::abort();
        }

    const auto result =
        ZEP::Overmarks::EventRowReader (std::make_shared<ZEP::Core::TimeInfo>(), {}).read (importer);
    if (result.events.size() > importer.rows.size())
        std::abort();
}
