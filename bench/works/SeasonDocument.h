// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "SeasonLists.h"
#include "Works.h"

#include "export/frame/EventExportSettingsSet.h"

#include <memory>
#include <string_view>

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

/** Times the exporter that the factory makes.
    @param rowsOf  looks how many there are in the file */
WorkDone exportWithFactory (const SeasonDocument& document, const char* extension,
                            long long (*rowsOf) (const juce::File&));

/** How often a piece of text stands in a stream. Takes little memory: its height is told afterwards. */
long long numberOf (std::string_view piece, juce::InputStream& stream);

/** The same in a part of an archive; ends the program when it isn't there. */
long long numberOf (std::string_view piece, const juce::File& archive, const char* part);

/** The length of what was written; ends the program when there is nothing. */
long long sizeOf (const juce::File& file);

} // namespace bench
