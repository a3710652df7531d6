// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/ZEP_EventPDFExporter.h"

#include "core/system/SystemUtility.h"
#include "export/CueSheetCue.h"
#include "export/EventPDFExporter.h"
#include "export/frame/PaperOfSettings.h"
#include "export/print/BrowserPage.h"
#include "export/print/BrowserProgram.h"
#include "export/print/PrintError.h"
#include "export/print/PrintFooter.h"
#include "export/print/PrintedDocument.h"
#include "export/print/SheetFrame.h"

#include <nlohmann/json.hpp>

#include <ctime>
#include <exception>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::SystemUtility;

namespace
{

/** So many pages can no cue list fill: a line of its own needs six bytes of HTML, and more than fifty of them stand on a page. */
std::size_t mostPagesOf (std::string_view html)
{
    constexpr std::size_t pagesOfAnyList = 100;
    constexpr std::size_t leastBytesOfAPage = 200;
    return pagesOfAnyList + html.size() / leastBytesOfAPage;
}

juce::String fromUTF8 (std::string_view bytes)
{
    return juce::String::fromUTF8 (bytes.data(), static_cast<int> (bytes.size()));
}

std::string bytesOfResource (const char* name)
{
    std::ifstream stream (SystemUtility::bundleResourcePath().toStdString() + "/" + name, std::ios::binary);
    return { std::istreambuf_iterator<char> (stream), {} };
}

PageRequests::Icons icons()
{
    PageRequests::Icons found;

    for (const auto* name : { CueSheetIcons::character, CueSheetIcons::inPoint, CueSheetIcons::outPoint })
        if (auto bytes = bytesOfResource (name); ! bytes.empty())
            found.emplace (name, std::move (bytes));

    return found;
}

PrintLayout layoutFor (const EventExportSettingsSet& settings)
{
    const auto paper = paperOf (settings);
    PrintLayout layout;
    layout.paperWidth = juce::roundToInt (paper.width);
    layout.paperHeight = juce::roundToInt (paper.height);
    layout.top = 30;
    layout.bottom = 20 + PrintFooter::height;
    layout.left = 30;
    layout.right = 30;
    layout.footer = PrintFooter { SystemUtility::executableVersion(), shortDateAndTime (std::time (nullptr)),
                                  exportLayoutName (settings.layout), bytesOfResource ("dbln-app-icon.png") }
                        .html (layout);
    return layout;
}

std::string browserAskedFor (const EventExportSettingsSet& settings)
{
    const auto found = settings.options.find (EventExportBrowserKey);
    return found != settings.options.end() ? found->second.toString().toStdString() : std::string();
}

} // namespace

ZEP_EventPDFExporter::ZEP_EventPDFExporter() = default;
ZEP_EventPDFExporter::~ZEP_EventPDFExporter() = default;

/** Does a part of the work unless an earlier one has failed, and keeps the reason where it fails. */
template <typename Work>
void ZEP_EventPDFExporter::attempt (Work work)
{
    if (reason.isNotEmpty())
        return;

    try
    {
        work();
    }
    catch (const nlohmann::json::exception&)
    {
        reason = "the browser's answer can't be understood";
    }
    catch (const BrowserHangs& error)
    {
        reason = fromUTF8 (error.what());
        waitedInVain = true;
    }
    catch (const std::exception& error) // a PrintError, or what the system has to say
    {
        reason = fromUTF8 (error.what());
    }

    if (reason.isNotEmpty())
        page.reset();
}

void ZEP_EventPDFExporter::initWithCallerObject (EventPDFExporter* exporter)
{
    caller = exporter;
    attempt (
        [this]
        {
            if (caller == nullptr)
                throw PrintError ("nobody has asked for the document");

            page =
                std::make_unique<BrowserPage> (findBrowser (browserAskedFor (*caller->settings)), patience);
        });
}

void ZEP_EventPDFExporter::exportHTMLString (const std::string& html, const std::string& toFilePath)
{
    attempt ([&] { print (html, juce::File (fromUTF8 (toFilePath))); });
    page.reset();
}

void ZEP_EventPDFExporter::print (const std::string& html, const juce::File& file)
{
    if (page == nullptr)
        throw PrintError ("no browser was started for the document");

    const auto layout = layoutFor (*caller->settings);
    page->load (frameOfSheet (layout), html, icons());

    PrintedDocument document (page->folder(), { .pages = mostPagesOf (html) });
    page->print (layout, document.limits().pages + 1,
                 [&document] (std::string_view piece) { document.write (piece); });
    ownTime = page->browsersOwnTime();
    document.moveTo (file);
}

} // namespace ZEP::Overmarks
