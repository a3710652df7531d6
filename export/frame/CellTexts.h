// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"

#include <juce_core/juce_core.h>

#include <memory>

namespace ZEP::Overmarks
{

/** The words for an event's attributes in the cells of a table, whatever the document. */
class OVERMARKS_API CellTexts final
{
public:
    CellTexts() = delete;

    /** "Yes" or "No" */
    [[nodiscard]] static const char* yesOrNo (bool flag) noexcept;

    /** "Bottom", "Top", "Left", or "Right" for any other value, also for an event that is no forced narrative. */
    [[nodiscard]] static const char* region (ForcedNarrativeRegion region) noexcept;

    /** The time from the in point to the end, as timecode. */
    [[nodiscard]] static juce::String duration (const std::shared_ptr<Event>& event);

    /** The name of the reason for recording the cue anew, "None" included. */
    [[nodiscard]] static juce::String reason (const std::shared_ptr<Event>& event);
};

} // namespace ZEP::Overmarks
