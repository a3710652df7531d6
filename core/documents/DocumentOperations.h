// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/DocumentPages.h"
#include "core/documents/PaperSize.h"
#include "core/documents/WorkbookReader.h"
#include "core/documents/WorkbookWriter.h"

#include <memory>

namespace ZEP::Core
{

/** All that the rest of the house asks of libZEP_Documents. */
struct DocumentOperations
{
    const char*
        version; ///< of the library; the rest means the same in its own version alone. A package may be replaced while a program runs
    decltype (&readWorkbook) readSheetInFront;
    decltype (&readSheetOfWorkbook) readSheet;
    decltype (&readSheetsOfWorkbook) readSheets;
    decltype (&writeWorkbook) write;
    std::unique_ptr<DocumentPages> (*draw) (PaperSize paper);
};

/** What the library shows to this one, by the name that DocumentsLibrary looks up. It lives as long as the library is loaded. */
extern "C" __attribute__ ((visibility ("default"))) const DocumentOperations* overmarksDocuments();

} // namespace ZEP::Core
