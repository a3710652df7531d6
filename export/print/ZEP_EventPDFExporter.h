// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/print/PDFPrintAdapter.h"

#include <juce_core/juce_core.h>

#include <chrono>
#include <memory>
#include <string>

namespace ZEP::Overmarks
{

class BrowserPage;

/** Prints a cue sheet with a browser of the Chromium family, which is started for the one document and gone with it: upright on
    the paper of the place, with margins of 30 points (20 at the bottom), and a band of 24 points at the foot of each page.

    A cue list comes from a stranger, and its texts reach the page as they stand. So the browser runs no script, reaches no
    network, and shows nothing but the page and the three icons; it keeps its files in a private folder that is removed. Nothing in
    the document can be clicked, and no text of a list changes its paper, margins, footer and title.

    The rule that is easily missed: both operations block, for minutes with a list of thousands of cues. They need no display
    and no message loop, any thread will do, the main thread included, and they always return: a browser that is missing,
    dies or says nothing for too long is told by failure().

    The options EventExportPaperKey and EventExportBrowserKey of the exporter's settings choose paper and browser. */
class OVERMARKS_API ZEP_EventPDFExporter final : public PDFPrintAdapter
{
public:
    ZEP_EventPDFExporter();
    ~ZEP_EventPDFExporter() override;

    /** Starts the browser and waits until it is ready. */
    void initWithCallerObject (EventPDFExporter* exporter) override;

    /** Prints beside the file and moves the finished document into its place. The browser ends. */
    void exportHTMLString (const std::string& html, const std::string& toFilePath) override;

    [[nodiscard]] juce::String failure() const override { return reason; }
    [[nodiscard]] bool hasWaitedInVain() const override { return waitedInVain; }

    /** Leaves a twelfth of the patience. */
    void expectLittle() override { patience /= 12; }

    /** What the browser itself needed to load and print the page. */
    [[nodiscard]] std::chrono::duration<double> browsersOwnTime() const noexcept { return ownTime; }

    /** A browser counts as dead when it says nothing for so long, and a second more for each 30 000 bytes of the page. */
    std::chrono::milliseconds patience { 60'000 };

private:
    template <typename Work>
    void attempt (Work work);
    void print (const std::string& html, const juce::File& file);

    EventPDFExporter* caller = nullptr;
    std::unique_ptr<BrowserPage> page;
    juce::String reason;
    bool waitedInVain = false;
    std::chrono::duration<double> ownTime {};
};

} // namespace ZEP::Overmarks
