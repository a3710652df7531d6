// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

#include <string>

namespace ZEP::Overmarks
{

class EventPDFExporter;

/** Prints one page of HTML to a file. An application whose framework can print brings its own; ZEP_EventPDFExporter is the
    usual one.

    Both operations block until they are done, and neither throws for what goes wrong: failure() tells. One object serves one
    document, on one thread. */
class OVERMARKS_API PDFPrintAdapter
{
public:
    PDFPrintAdapter() = default;
    PDFPrintAdapter (const PDFPrintAdapter&) = delete;
    PDFPrintAdapter& operator= (const PDFPrintAdapter&) = delete;
    virtual ~PDFPrintAdapter();

    /** Makes ready to print. @param exporter  whose document it is; outlives this object */
    virtual void initWithCallerObject (EventPDFExporter* exporter) = 0;

    /** Prints. @param html  UTF-8  @param toFilePath  UTF-8; an existing file is replaced */
    virtual void exportHTMLString (const std::string& html, const std::string& toFilePath) = 0;

    /** Why there is no file, in words for a person; empty as long as all went well. */
    [[nodiscard]] virtual juce::String failure() const;

    /** Whether it failed since what prints has kept it waiting in vain. */
    [[nodiscard]] virtual bool hasWaitedInVain() const;

    /** Is called first of all after two documents of an export were waited for in vain: each of the others is tried, but may keep
        the studio waiting only as long as one that prints at all. */
    virtual void expectLittle();
};

} // namespace ZEP::Overmarks
