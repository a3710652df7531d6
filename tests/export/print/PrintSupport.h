// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/EventPDFExporter.h"
#include "export/ExportSupport.h"
#include "export/print/ZEP_EventPDFExporter.h"
#include "support/PrintedPDF.h"

#include <stdlib.h>

#include <string>

/** What tests of printing share: a temporary folder of the test's own, in which nothing may stay behind. */
namespace ExportSupport
{

using ZEP::Overmarks::Testing::PrintedPDF;

class PrintTest : public ExportTest
{
protected:
    PrintTest()
    {
        settings->exportType = EventExportTypePDF;
        settings->projectSettings.projectName = "Film";
        settings->options[EventExportPaperKey] = "a4";
    }
};

} // namespace ExportSupport
