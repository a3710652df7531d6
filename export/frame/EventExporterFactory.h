// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** A kind of document that can be exported, for programs that list what there is. */
struct ExportFormat
{
    EventExportType type;   ///< for EventExportSettingsSet::exportType
    juce::String name;      ///< for a person
    juce::String extension; ///< with its dot, in small letters
    bool available;         ///< whether this library writes it
    bool madeByFactory;     ///< false for the fixed-width text files, whose exporters are called directly
};

/** Chooses the exporter of a settings set. */
class OVERMARKS_API EventExporterFactory final
{
public:
    EventExporterFactory() = delete;

    /** A new exporter of the kind that the settings ask for, which shares them.
        @returns an empty pointer for a kind that the factory doesn't make, and for empty settings */
    static std::shared_ptr<EventExporter> eventExporter (std::shared_ptr<EventExportSettingsSet> settings);

    /** All kinds, in the order of their numbers. */
    static const std::vector<ExportFormat>& formats();
};

} // namespace ZEP::Overmarks
