// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/WholeFile.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace ZEP::Overmarks
{

std::optional<std::string> contentOfFile (const juce::String& path)
{
    const std::filesystem::path file (path.toStdString());
    std::error_code error;

    if (! std::filesystem::is_regular_file (file, error))
        return std::nullopt;

    std::ifstream stream (file, std::ios::binary);

    if (! stream.is_open())
        return std::nullopt;

    const auto size = std::filesystem::file_size (file, error);
    std::string bytes (error ? 0 : size, '\0');
    stream.read (bytes.data(), static_cast<std::streamsize> (bytes.size()));
    bytes.resize (static_cast<std::size_t> (stream.gcount()));
    return bytes;
}

} // namespace ZEP::Overmarks
