// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/EventExporterFactory.h"

#include "export/EventCSVExporter.h"
#include "export/EventExcelExporter.h"
#include "export/EventPDFExporter.h"
#include "export/EventTTALExporter.h"
#include "export/word/EventWordExporter.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

using Maker = std::shared_ptr<EventExporter> (*) (std::shared_ptr<EventExportSettingsSet>);

template <typename Exporter>
std::shared_ptr<EventExporter> make (std::shared_ptr<EventExportSettingsSet> settings)
{
    return std::make_shared<Exporter> (std::move (settings));
}

struct Entry
{
    EventExportType type;
    const char* name;
    const char* extension;
    Maker maker;
};

/** What the factory makes. */
constexpr Entry entries[] = {
    { EventExportTypePDF, "PDF document", ".pdf", make<EventPDFExporter> },
    { EventExportTypeWord, "Word document", ".docx", make<EventWordExporter> },
    { EventExportTypeCSV, "Delimited text", ".csv", make<EventCSVExporter> },
    { EventExportTypeTTAL, "TTAL cue list", ".ttal", make<EventTTALExporter> },
    { EventExportTypeExcel, "Excel workbook", ".xlsx", make<EventExcelExporter> },
};

/** What programs call without the factory. */
const ExportFormat directFormats[] = {
    { EventExportTypeASC, "ASC cue list", ".asc", true, false },
    { EventExportTypeArendis, "Arendis cue list", ".txt", true, false },
};

std::vector<ExportFormat> makeFormats()
{
    std::vector<ExportFormat> formats (std::begin (directFormats), std::end (directFormats));

    for (const auto& entry : entries)
        formats.push_back ({ entry.type, entry.name, entry.extension, entry.maker != nullptr, true });

    std::sort (formats.begin(), formats.end(), [] (const auto& a, const auto& b) { return a.type < b.type; });
    return formats;
}

} // namespace

std::shared_ptr<EventExporter> EventExporterFactory::eventExporter (
    std::shared_ptr<EventExportSettingsSet> settings)
{
    if (settings == nullptr)
        return {};

    for (const auto& entry : entries)
        if (entry.type == settings->exportType && entry.maker != nullptr)
            return entry.maker (std::move (settings));

    return {};
}

const std::vector<ExportFormat>& EventExporterFactory::formats()
{
    static const auto formats = makeFormats();
    return formats;
}

} // namespace ZEP::Overmarks
