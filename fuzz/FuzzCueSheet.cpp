// SPDX-License-Identifier: GPL-3.0-only
// A Word cue sheet from a stranger, as the library sees it: the list of cues that docxHandler has made of it, and its plain text.
#include "CheckTable.h"

#include "core/text/StringUtil.h"
#include "export/word/DocxHandlerProtocol.h"
#include "import/DublaneDocxEventFileImporter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

/** A temporary folder of each process, so that several can run. */
void ensureTemporaryFolder()
{
    static const auto made = []
    {
        const auto folder =
            std::filesystem::temp_directory_path() / ("overmarks-fuzz-" + std::to_string (::getpid()));
        std::filesystem::create_directories (folder);
        return ::setenv ("TMPDIR", folder.c_str(), 1) == 0;
    }();

    if (! made)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    ensureTemporaryFolder();
    const std::string_view bytes (static_cast<const char*> (static_cast<const void*> (data)), size);

    // A list that lies there already is read in the place of a document.
    std::ofstream (DocxHandlerProtocol::importJSONFilePath().toStdString(), std::ios::binary) << bytes;
    juce::String message;
    DublaneDocxEventFileImporter importer ("none.docx", message);
    checkTable (importer);

    importer.rows.clear();
    RichTextString content (StringUtil::fromUTF8 (bytes));
    importer.parseFileContent (content);
    checkTable (importer);
    return 0;
}
