// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "SeasonLists.h"
#include "Works.h"

#include "export/frame/EventExportSettingsSet.h"

#include <memory>

namespace bench
{

/** A list as it is shown, and the order for a document of it, "ours" in the folder of what is written. */
struct SeasonDocument
{
    ZEP::Overmarks::Project project;
    std::shared_ptr<ZEP::Overmarks::EventExportSettingsSet> settings;

    SeasonDocument (const WorkOrder& order, ZEP::Overmarks::EventExportType type);

    /** Its file. */
    juce::File file (const char* extension) const;
};

/** Times the exporter that the factory makes. */
WorkDone exportWithFactory (const WorkOrder& order, const SeasonDocument& document, const char* extension);

/** The length of what was written; ends the program when there is nothing. */
long long sizeOf (const juce::File& file);

} // namespace bench
