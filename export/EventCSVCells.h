// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/cast/ADRCharacter.h"
#include "event/Event.h"
#include "export/frame/CSVCells.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** Whose cells are to be written. */
struct CSVCellSource
{
    CSVCellSource (const std::shared_ptr<Event>& cellEvent, bool isForDSTaker, int rowNumber);

    const std::shared_ptr<Event>& event;                ///< the caller's, who keeps it meanwhile
    std::shared_ptr<ZEP::Core::ADRCharacter> character; ///< null if the cast doesn't know it
    bool forDSTaker;
    int trackNumber; ///< number of the row, which alternates between the two tracks of DS Taker
};

/** Writes one cell with its delimiter. */
using CSVCellWriter = void (*) (CSVCells&, const CSVCellSource&);

/** How the column of this key is written; an empty cell for a key that has no cell of its own. */
[[nodiscard]] CSVCellWriter csvCellWriterForKey (const juce::String& key);

/** The same for each column of a table. */
[[nodiscard]] std::vector<CSVCellWriter> csvCellWritersForKeys (const std::vector<juce::String>& keys);

/** "1" for an odd row, "2" for an even one. */
[[nodiscard]] const char* dsTakerTrack (int rowNumber) noexcept;

} // namespace ZEP::Overmarks
