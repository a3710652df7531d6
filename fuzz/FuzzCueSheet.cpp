// SPDX-License-Identifier: GPL-3.0-only
// A Word cue sheet from a stranger, as the library sees it: the list of cues that docxHandler has made of it, and its plain text.
#include "CheckTable.h"
#include "ScratchFolder.h"

#include "core/text/StringUtil.h"
#include "export/word/DocxHandlerProtocol.h"
#include "import/DublaneDocxEventFileImporter.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t columns = 10;
    startApplication();
    const auto bytes = bytesOfInput (data, size);

    // A list that lies there already is read in the place of a document.
    const auto folder = scratchFolder();
    const std::filesystem::path list (DocxHandlerProtocol::importJSONFilePath().toStdString());
    law (list.parent_path() == folder, "the list of cues lies in the temporary folder");
    writeScratchFile (list.filename().string(), bytes);
    juce::String message;
    DublaneDocxEventFileImporter importer ("none.docx", message);
    checkText (message);
    checkTable (importer);

    for (const auto& row : importer.rows)
        law (row.size() == columns, "every row of a cue sheet has ten cells");

    importer.rows.clear();
    RichTextString content (StringUtil::fromUTF8 (bytes));
    importer.parseFileContent (content);
    checkTable (importer);
    return 0;
}
