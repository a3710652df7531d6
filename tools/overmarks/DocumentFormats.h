// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "FormatContent.h"

#include "export/frame/EventExportTypes.h"

#include <string>
#include <vector>

namespace overmarks
{

/** Something to be known of a document before somebody works with it. */
enum class Remark
{
    rate,      ///< the rate has no name in the format
    dropFrame, ///< drop-frame isn't told apart
    action,    ///< times count from the first frame of action
    untimed    ///< an event without a time gets one
};

/** A document that the program writes, by the name that --format takes. */
struct DocumentFormat
{
    std::string name;
    ZEP::Overmarks::EventExportType type;
    int csvTemplate;       ///< which of the CSV tables; -1 for other documents
    std::string extension; ///< with its dot
    std::string description;
    std::vector<std::string> options; ///< those of DocumentOptions that make a difference to this document
    std::vector<Content> carries;     ///< what of an event the document has a place for
    std::vector<Detail> loses;        ///< what is lost of that nevertheless
    std::vector<Remark> remarks;      ///< what else may be to be known of it
    bool (*writes) (const ZEP::Overmarks::Event&); ///< false for an event that is left out as a whole
    bool needsEvents;                              ///< whether a list without events is no document

    /** Whether it can be one file for each character. */
    [[nodiscard]] bool canBeByCharacter() const;
};

/** All documents that can be written now. */
const std::vector<DocumentFormat>& documentFormats();

/** Their names. */
std::vector<std::string> documentFormatNames();

/** What `pdf` is with --engine drawn. */
const DocumentFormat& drawnCueSheet();

/** Throws WrongUsage, with all names and a suggestion, for a name that stands for no document.
    @param furtherNames  what the command can write besides documents, to be named as well */
const DocumentFormat& documentFormat (const std::string& name,
                                      const std::vector<std::string>& furtherNames = {});

} // namespace overmarks
