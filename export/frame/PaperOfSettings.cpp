// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/PaperOfSettings.h"

namespace ZEP::Overmarks
{

using Core::PaperSize;

PaperSize paperOf (const EventExportSettingsSet& settings)
{
    const auto found = settings.options.find (EventExportPaperKey);
    const auto name = found != settings.options.end() ? found->second.toString() : juce::String();

    if (name == "a4")
        return PaperSize::a4();

    return name == "letter" ? PaperSize::letter() : PaperSize::ofLocale();
}

} // namespace ZEP::Overmarks
