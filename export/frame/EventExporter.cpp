// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/EventExporter.h"

#include <utility>

namespace ZEP::Overmarks
{

EventExporter::EventExporter (std::shared_ptr<EventExportSettingsSet> settingsSet)
    : settings (std::move (settingsSet))
{
}

EventExporter::~EventExporter() = default;

void EventExporter::cancel() {}

} // namespace ZEP::Overmarks
