// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/ZEP_EventPDFExporter.h"

#include "core/system/SystemUtility.h"
#include "core/system/WholeFile.h"
#include "export/CueSheetCue.h"
#include "export/EventPDFExporter.h"
#include "export/frame/PaperOfSettings.h"
#include "export/print/BrowserPage.h"
#include "export/print/BrowserProgram.h"
#include "export/print/PrintError.h"
#include "export/print/PrintFooter.h"

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

/** A cue that is torn apart between two pages can't be read out, and one word without an end must not make the whole sheet
    small. */
constexpr std::string_view rulesForPaper =
    "<style>.oneCueOuterContainer { break-inside: avoid; } p { overflow-wrap: anywhere; }</style>";

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

/** A printed document on its way from the browser to its place. It waits on the disk, not in the memory. */
class PrintedDocument final
{
public:
    explicit PrintedDocument (const std::filesystem::path& folder)
        : path (folder / "printed.pdf"),
          stream (path, std::ios::binary)
    {
    }

    void write (std::string_view bytes)
    {
        if (! stream.write (bytes.data(), static_cast<std::streamsize> (bytes.size())))
            throw PrintError ("the disk takes no more temporary files in " + path.parent_path().string());
    }

    void moveTo (const juce::File& file)
    {
        write ({});
        stream.close();
        const juce::MemoryMappedFile mapped (juce::File (fromUTF8 (path.string())),
                                             juce::MemoryMappedFile::readOnly);

        if (mapped.getData() == nullptr || ! stream.good())
            throw PrintError ("the disk takes no more temporary files in " + path.parent_path().string());

        const std::string_view bytes (static_cast<const char*> (mapped.getData()), mapped.getSize());

        if (! bytes.starts_with ("%PDF-"))
            throw PrintError ("the browser has printed no PDF document");

        if (const auto result = ZEP::Core::WholeFile::write (file, bytes); result.failed())
            throw PrintError (result.getErrorMessage()
                                  .fromFirstOccurrenceOf (file.getFullPathName() + ": ", false, false)
                                  .toStdString());
    }

private:
    std::filesystem::path path;
    std::ofstream stream;
};

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
        [this] {
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
    page->load (html, rulesForPaper, icons());
    PrintedDocument document (page->folder());
    page->print (layoutFor (*caller->settings),
                 [&document] (std::string_view piece) { document.write (piece); });
    ownTime = page->browsersOwnTime();
    document.moveTo (file);
}

} // namespace ZEP::Overmarks
