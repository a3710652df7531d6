// SPDX-License-Identifier: GPL-3.0-only
// A cue list from a stranger: any bytes may stand in a file, and its reader makes sound text of them or has words for it.
#include "CheckTable.h"

#include "core/text/TextEncoding.h"
#include "core/timecode/TimeInfo.h"
#include "import/PTSessionInfoFileImporter.h"
#include "import/frame/EventFileImporterFactory.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

/** A file that each process writes again and again, in memory where the system has a place for that. */
const std::string& pathOfList()
{
    static const auto path = []
    {
        const std::filesystem::path memory ("/dev/shm");
        const auto folder =
            std::filesystem::is_directory (memory) ? memory : std::filesystem::temp_directory_path();
        return (folder / ("overmarks-fuzz-" + std::to_string (::getpid()) + OVERMARKS_FUZZ_EXTENSION))
            .string();
    }();
    return path;
}

} // namespace

/** Reads the bytes as they are and, as after a choice of the user, in an encoding. */
extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    std::ofstream (pathOfList(), std::ios::binary)
        .write (static_cast<const char*> (static_cast<const void*> (data)),
                static_cast<std::streamsize> (size));

    // Nobody is asked: all tracks of a session text are read.
    PTSessionInfoFileImporter::chooseTracks = [] (const auto& tracks) { return tracks; };

    juce::String message;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
        juce::String::fromUTF8 (pathOfList().c_str()), message, {}, std::make_shared<TimeInfo>());

    if (importer == nullptr)
        std::abort();

    checkTable (*importer);

    constexpr std::size_t encodings = 6;
    importer->rows.clear();
    importer->parse (message, static_cast<TextEncoding> (1 + size % encodings));
    checkTable (*importer);

    std::filesystem::remove (pathOfList());
    return 0;
}
