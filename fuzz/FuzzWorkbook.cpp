// SPDX-License-Identifier: GPL-3.0-only
// A workbook from a stranger, with any bytes in its parts: what the archive's checksums keep from a fuzzer that changes whole files.
// An input is the sheet, the shared texts, the styles, the theme and the workbook, with a zero byte between two.
#include "Application.h"
#include "ScratchFolder.h"

#include "core/documents/ExcelFileHandler.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using namespace ZEP::Core;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

constexpr std::array<const char*, 5> names { "xl/worksheets/sheet1.xml", "xl/sharedStrings.xml",
                                             "xl/styles.xml", "xl/theme/theme1.xml", "xl/workbook.xml" };

constexpr std::string_view usualWorkbook =
    R"(<workbook><sheets><sheet name="Cues" r:id="a" xmlns:r="r"/></sheets></workbook>)";

constexpr std::string_view relations =
    R"(<Relationships><Relationship Id="a" Type="/worksheet" Target="worksheets/sheet1.xml"/>)"
    R"(<Relationship Id="b" Type="/sharedStrings" Target="sharedStrings.xml"/>)"
    R"(<Relationship Id="c" Type="/styles" Target="styles.xml"/><Relationship Id="d" Type="/theme" Target="theme/theme1.xml"/></Relationships>)";

juce::String pathOfWorkbook() { return pathText (scratchFolder() / "parts.xlsx"); }

void add (zip_t* archive, const char* name, std::string_view content)
{
    auto* source = zip_source_buffer (archive, content.data(), content.size(), 0);
    const auto index = zip_file_add (archive, name, source, ZIP_FL_OVERWRITE);

    law (index >= 0
             && zip_set_file_compression (archive, static_cast<zip_uint64_t> (index), ZIP_CM_STORE, 0) == 0,
         "a part can be added");
}

void writeWorkbook (std::string_view input)
{
    auto* archive = zip_open (pathOfWorkbook().toRawUTF8(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);

    law (archive != nullptr, "a workbook can be made");
    add (archive, names.back(), usualWorkbook);
    add (archive, "xl/_rels/workbook.xml.rels", relations);

    for (const auto* name : names)
    {
        const auto end = std::min (input.find ('\0'), input.size());
        add (archive, name, input.substr (0, end));
        input.remove_prefix (std::min (end + 1, input.size()));

        if (input.empty())
            break;
    }

    law (zip_close (archive) == 0, "a workbook can be written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    writeWorkbook (bytesOfInput (data, size));

    std::vector<std::vector<RichTextString>> rows;
    juce::String error;
    ExcelFileHandler().readFileContent (pathOfWorkbook(), rows, error);
    checkText (error);

    for (const auto& row : rows)
        for (const auto& cell : row)
            checkText (cell);

    return 0;
}
