// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/EventExportSettingsSet.h"

namespace ZEP::Overmarks
{

const juce::String EventExportCSVDelimiterKey { "EventExportCSVDelimiter" };
const juce::String EventExportCSVTemplateKey { "EventExportCSVTemplate" };
const juce::String EventExportCombineIntoSingleFileKey { "EventExportCombineIntoSingleFile" };
const juce::String EventExportAppVersionKey { "EventExportAppVersion" };
const juce::String EventExportAppIconKey { "EventExportAppIcon" };
const juce::String EventExportADRCueDefaultReasonsKey { "EventExportADRCueDefaultReasons" };
const juce::String EventExportADRCueUserReasonsKey { "EventExportADRCueUserReasons" };
const juce::String EventExportPaperKey { "EventExportPaper" };
const juce::String EventExportBrowserKey { "EventExportBrowser" };

const juce::String kExportedEventsPDFFileName { "Dublane - Event List.pdf" };
const juce::String kExportedADROverviewPDFFilename { "Dublane - ADR Overview Sheet.pdf" };

} // namespace ZEP::Overmarks
