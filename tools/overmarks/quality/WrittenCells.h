// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "export/EventCSVExporter.h"

#include <juce_core/juce_core.h>

#include <memory>

namespace overmarks
{

/** The cells of delimited tables as they are written. That is not what the list holds: signs are replaced or left out, a cue number is taken
    apart, and where quotes are kept a text may end its cell early and begin others. */
class WrittenCells final
{
public:
    explicit WrittenCells (int templateNumber); ///< Of EventCSVExporter.

    /** What becomes of the attribute of this key in a table of events: one cell, unless its text ends it. */
    juce::StringArray of (const std::shared_ptr<ZEP::Overmarks::Event>& event, const juce::String& key);

    /** DS Taker's row for the events of one cue number. */
    juce::StringArray ofCue (const ZEP::Overmarks::EventCSVExporter::Events& events);

private:
    ZEP::Overmarks::EventCSVExporter exporter;
};

} // namespace overmarks
