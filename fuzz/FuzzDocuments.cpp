// SPDX-License-Identifier: GPL-3.0-only
// A stranger's list all the way: read, made events of, and written in every form. What it begins with tells which reader gets it.
// Everything that is written lies in the folder that was chosen and is what the form promises.
#include "Application.h"
#include "DocumentLaws.h"
#include "ScratchFolder.h"

#include "import/PTSessionInfoFileImporter.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

bool isDBase (std::string_view bytes)
{
    constexpr std::string_view versions { "\x03\x30\x31\x83\x8b\x04", 6 };
    return ! bytes.empty() && versions.find (bytes.front()) != std::string_view::npos;
}

std::string nameOfList (std::string_view bytes)
{
    constexpr std::size_t placeOfEBUMark = 3;
    const auto holds = [bytes] (std::string_view words)
    { return bytes.find (words) != std::string_view::npos; };

    if (bytes.starts_with ("PK"))
        return "list.xlsx";
    if (bytes.size() > placeOfEBUMark && bytes.substr (placeOfEBUMark).starts_with ("STL"))
        return "list.stl";
    if (isDBase (bytes))
        return "list.dbf";
    if (bytes.starts_with ("<"))
        return "list.xml";
    if (bytes.starts_with ("{"))
        return "list.ttal";
    if (holds ("SESSION NAME"))
        return "list.txt";
    if (holds (" --> "))
        return "list.srt";
    if (holds ("$FontName") || holds (" , "))
        return "list.stl";

    return "list.csv";
}

/** The events of a list; of a long one only the first, since every one of them is written a dozen times. */
Events eventsOf (std::string_view bytes, const std::shared_ptr<TimeInfo>& info)
{
    constexpr std::size_t mostEvents = 50;
    PTSessionInfoFileImporter::chooseTracks = [] (const auto& tracks) { return tracks; };
    juce::String message;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
        pathText (writeScratchFile (nameOfList (bytes), bytes)), message, {}, info);
    law (importer != nullptr, "the extension has a reader");
    EventRowReader::adoptOwnTableColumns (importer->rows, importer->columnMap);
    const EventRowReader reader (info, Event::getADRCharacterMap(), { true, true });
    auto events = reader.read (*importer).events;
    events.resize (std::min (events.size(), mostEvents));
    return events;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    const auto info = timeInfoAt ("25", "01:00:00:00");
    const auto events = eventsOf (bytesOfInput (data, size), info);

    if (events.empty())
        return 0;

    const auto folder = scratchFolder() / "outer" / "chosen";
    std::filesystem::remove_all (folder.parent_path());
    std::filesystem::create_directories (folder);
    DocumentLaws (events, info, folder).checkAll();

    for (const auto& entry : std::filesystem::recursive_directory_iterator (folder.parent_path()))
        law (entry.path() == folder || (entry.is_regular_file() && entry.path().parent_path() == folder),
             "nothing is written outside of the folder");

    return 0;
}
