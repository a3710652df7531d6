// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

/** What tests of importers share: files of their own, and tables that can be compared and printed. */
namespace ImportSupport
{

using TextTable = std::vector<std::vector<std::string>>;

/** A folder that exists as long as the test does. */
class TemporaryFolder final
{
public:
    TemporaryFolder()
    {
        auto pattern = (std::filesystem::temp_directory_path() / "overmarks-import-XXXXXX").string();
        path = ::mkdtemp (pattern.data());
    }

    TemporaryFolder (const TemporaryFolder&) = delete;
    TemporaryFolder& operator= (const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all (path); }

    /** Writes a file and tells its path. */
    [[nodiscard]] std::string file (const std::string& name, const std::string& bytes) const
    {
        const auto filePath = (path / name).string();
        std::ofstream (filePath, std::ios::binary) << bytes;
        return filePath;
    }

    std::filesystem::path path;
};

/** A file that comes with the tests: "csv/comma.csv". */
inline std::string dataFile (const std::string& name) { return OVERMARKS_TEST_DATA "/import/" + name; }

inline std::string bytesOfFile (const std::string& path)
{
    std::ifstream stream (path, std::ios::binary);
    return { std::istreambuf_iterator<char> (stream), {} };
}

/** The cells' text as UTF-8. */
inline TextTable textsOf (const std::vector<std::vector<ZEP::Core::RichTextString>>& rows)
{
    TextTable table;
    for (const auto& row : rows)
    {
        auto& texts = table.emplace_back();
        for (const auto& cell : row)
            texts.push_back (cell.getText().toStdString());
    }
    return table;
}

} // namespace ImportSupport
