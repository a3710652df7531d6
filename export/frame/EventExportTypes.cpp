// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/EventExportTypes.h"

namespace ZEP::Overmarks
{

juce::String exportTypeName (EventExportType type)
{
    switch (type)
    {
        case EventExportTypePDF: return "PDF";
        case EventExportTypeWord: return "Word";
        case EventExportTypeCSV: return "CSV";
        case EventExportTypeASC: return "ASC";
        case EventExportTypeArendis: return "Arendis";
        case EventExportTypeTTAL: return "TTAL";
        case EventExportTypeExcel: return "Excel";
        case EventExportTypeNone: break;
    }

    return "None";
}

juce::String exportLayoutName (EventExportLayout layout)
{
    switch (layout)
    {
        case EventExportLayoutDirector: return "Director Layout";
        case EventExportLayoutActor: return "Actor Layout";
        case EventExportLayoutEngineer: break;
    }

    return "Engineer Layout";
}

} // namespace ZEP::Overmarks
