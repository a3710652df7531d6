// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/frame/EventExportTypes.h"

#include <string>
#include <vector>

namespace overmarks
{

/** A document that the program writes, by the name that --format takes. */
struct DocumentFormat
{
    std::string name;
    ZEP::Overmarks::EventExportType type;
    int csvTemplate;       ///< which of the CSV tables; -1 for other documents
    std::string extension; ///< with its dot
    std::string description;
};

/** All documents that can be written now. */
const std::vector<DocumentFormat>& documentFormats();

/** Throws WrongUsage, with a suggestion, for a name that stands for no document. */
const DocumentFormat& documentFormat (const std::string& name);

} // namespace overmarks
