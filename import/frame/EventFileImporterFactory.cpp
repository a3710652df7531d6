// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventFileImporterFactory.h"

#include "import/ADRStudioEventFileImporter.h"
#include "import/CSVEventFileImporter.h"
#include "import/DBFEventFileImporter.h"
#include "import/DublaneDocxEventFileImporter.h"
#include "import/ExcelEventFileImporter.h"
#include "import/PTSessionInfoFileImporter.h"
#include "import/SRTEventFileImporter.h"
#include "import/STLEventFileImporter.h"
#include "import/TTALEventFileImporter.h"

#include <algorithm>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

/** What the factory was given; an importer takes from it what its constructor asks for. */
struct ImportRequest
{
    const juce::String& filePath;
    juce::String& errorMessage;
    std::vector<juce::String> customReasons;
    std::shared_ptr<Core::TimeInfo> timeInfo;
};

using Maker = std::shared_ptr<EventFileImporter> (*) (ImportRequest&);

template <typename Importer>
std::shared_ptr<EventFileImporter> make (ImportRequest& request)
{
    return std::make_shared<Importer> (request.filePath, request.errorMessage);
}

/** The same for an importer that needs to know the project's time. */
template <typename Importer>
std::shared_ptr<EventFileImporter> makeWithTime (ImportRequest& request)
{
    return std::make_shared<Importer> (request.filePath, request.errorMessage, std::move (request.timeInfo));
}

/** The same for an importer that needs the names of the user's reasons. */
template <typename Importer>
std::shared_ptr<EventFileImporter> makeWithReasons (ImportRequest& request)
{
    return std::make_shared<Importer> (request.filePath, request.errorMessage,
                                       std::move (request.customReasons));
}

/** A line of the table of formats. */
struct Entry
{
    int type;
    juce::StringArray extensions;
    juce::String name;
    bool userMapping;
    Maker maker;
};

/** In the order in which the extensions are tried. */
const std::vector<Entry>& entries()
{
    static const std::vector<Entry> table {
        { 2, { ".csv", ".tab" }, "Delimited text", true, make<CSVEventFileImporter> },
        { 0, { ".txt" }, "Pro Tools session info", false, makeWithReasons<PTSessionInfoFileImporter> },
        { 3, { ".srt" }, "SubRip subtitles", false, make<SRTEventFileImporter> },
        { 4, { ".stl" }, "EBU or text STL subtitles", false, make<STLEventFileImporter> },
        { 5, { ".xml" }, "ADR Studio cue list", true, make<ADRStudioEventFileImporter> },
        { 1, { ".dbf" }, "dBase table", true, make<DBFEventFileImporter> },
        { 6, { ".xlsx" }, "Excel workbook", true, make<ExcelEventFileImporter> },
        { 7, { ".ttal" }, "TTAL cue list", false, makeWithTime<TTALEventFileImporter> },
        { 8, { ".docx" }, "Word cue sheet", false, make<DublaneDocxEventFileImporter> },
    };
    return table;
}

/** The extension with its dot; empty if the file's name has none. */
juce::String extensionOf (const juce::String& filePath)
{
    const auto dot = filePath.lastIndexOfChar ('.');
    return dot > filePath.lastIndexOfChar ('/') ? filePath.substring (dot) : juce::String();
}

} // namespace

std::shared_ptr<EventFileImporter> EventFileImporterFactory::fileImporterWithFilepath (
    const juce::String& filePath, juce::String& errorMessage, std::vector<juce::String> customReasons,
    std::shared_ptr<Core::TimeInfo> timeInfo)
{
    const auto extension = extensionOf (filePath);
    const auto& table = entries();
    const auto entry = std::find_if (
        table.begin(), table.end(), [&] (const Entry& e) { return e.extensions.contains (extension, true); });
    if (entry == table.end())
        return {};

    ImportRequest request { filePath, errorMessage, std::move (customReasons), std::move (timeInfo) };
    return entry->maker (request);
}

const std::vector<ImportFormat>& EventFileImporterFactory::formats()
{
    static const auto list = []
    {
        std::vector<ImportFormat> all;
        for (const auto& entry : entries())
            all.push_back ({ entry.type, entry.extensions, entry.name, entry.userMapping });
        return all;
    }();
    return list;
}

} // namespace ZEP::Overmarks
