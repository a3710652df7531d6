// SPDX-License-Identifier: GPL-3.0-only
// A cue list from a stranger: any bytes may stand in a file, and its reader makes sound text of them or has words for it.
#include "CheckTable.h"
#include "ScratchFolder.h"

#include "core/text/TextEncoding.h"
#include "core/timecode/TimeInfo.h"
#include "import/PTSessionInfoFileImporter.h"
#include "import/frame/EventFileImporter.h"
#include "import/frame/EventFileImporterFactory.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

std::shared_ptr<EventFileImporter> read (const std::filesystem::path& file)
{
    juce::String message;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
        pathText (file), message, {}, timeInfoAt ("25", "00:00:00:00"));
    law (importer != nullptr, "the extension has a reader");
    checkText (message);
    return importer;
}

} // namespace

/** Reads the bytes as they are and, as after a choice of the user, in an encoding. */
extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t encodings = 6, shortEnoughToReadTwice = 4096;
    startApplication();
    const auto file = writeScratchFile ("list" OVERMARKS_FUZZ_EXTENSION, bytesOfInput (data, size));

    // Nobody is asked: all tracks of a session text are read.
    PTSessionInfoFileImporter::chooseTracks = [] (const auto& tracks) { return tracks; };

    const auto importer = read (file);
    checkTable (*importer);

    if (size <= shortEnoughToReadTwice)
    {
        const auto again = read (file);
        law (again->rows == importer->rows && again->columnMap == importer->columnMap,
             "the same file gives the same table");
    }

    juce::String message;
    importer->rows.clear();
    importer->parse (message, static_cast<TextEncoding> (1 + size % encodings));
    checkText (message);
    checkTable (*importer);
    return 0;
}
