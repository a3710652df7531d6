// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/DocumentOperations.h"

#include "core/documents/DrawnPages.h"

namespace ZEP::Core
{

const DocumentOperations* overmarksDocuments()
{
    static constexpr DocumentOperations operations { OVERMARKS_VERSION_STRING,
                                                     readWorkbook,
                                                     readSheetOfWorkbook,
                                                     readSheetsOfWorkbook,
                                                     writeWorkbook,
                                                     [] (PaperSize paper) -> std::unique_ptr<DocumentPages>
                                                     { return std::make_unique<DrawnPages> (paper); } };

    return &operations;
}

} // namespace ZEP::Core
