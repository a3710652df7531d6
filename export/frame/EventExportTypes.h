// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** The kind of document that an export writes. An application may hand in any number; only some have an exporter. */
enum EventExportType : int
{
    EventExportTypeNone = 0,
    EventExportTypePDF = 1,
    EventExportTypeWord = 2,
    EventExportTypeCSV = 3,
    EventExportTypeASC = 4,
    EventExportTypeArendis = 5,
    EventExportTypeTTAL = 6,
    EventExportTypeExcel = 7
};

/** For whom a PDF or Word document is laid out. Every other number counts as the engineer's. */
enum EventExportLayout : int
{
    EventExportLayoutDirector = 1,
    EventExportLayoutActor = 2,
    EventExportLayoutEngineer = 3
};

/** The kind's short name for a log line; "None" for a number that is no kind. */
[[nodiscard]] OVERMARKS_API juce::String exportTypeName (EventExportType type);

/** What the footer of a document says about its layout: "Director Layout", "Actor Layout", else "Engineer Layout". */
[[nodiscard]] OVERMARKS_API juce::String exportLayoutName (EventExportLayout layout);

} // namespace ZEP::Overmarks
