// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/print/PDFPrintAdapter.h"

namespace overmarks
{

/** Keeps a cue sheet's page as the file that it would be printed from. */
class HTMLFileAdapter final : public ZEP::Overmarks::PDFPrintAdapter
{
public:
    void initWithCallerObject (ZEP::Overmarks::EventPDFExporter* exporter) override;
    void exportHTMLString (const std::string& html, const std::string& toFilePath) override;
    [[nodiscard]] juce::String failure() const override { return reason; }

private:
    juce::String reason;
};

} // namespace overmarks
