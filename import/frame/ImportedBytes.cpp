// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ImportedBytes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

namespace ZEP::Overmarks
{

bool isOrdinaryFile (const juce::String& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file (path.toStdString(), error);
}

std::optional<std::string> contentOfFile (const juce::String& path)
{
    if (! isOrdinaryFile (path))
        return std::nullopt;

    std::ifstream stream (path.toStdString(), std::ios::in | std::ios::binary);

    if (! stream.is_open())
        return std::nullopt;

    stream.seekg (0, std::ios::end);
    const auto end = static_cast<std::streamoff> (stream.tellg());
    stream.seekg (0);
    if (end > kMostBytesOfAFile)
        return std::nullopt;

    std::string bytes (static_cast<std::size_t> (std::max (end, std::streamoff { 0 })), '\0');
    stream.read (bytes.data(), static_cast<std::streamsize> (bytes.size()));
    bytes.resize (static_cast<std::size_t> (stream.gcount()));
    return bytes;
}

std::string bytesOfFile (const juce::String& path) { return contentOfFile (path).value_or (std::string()); }

void replaceEach (std::string& bytes, std::string_view sought, std::string_view replacement)
{
    if (sought.empty())
        return;

    std::string result;
    std::size_t read = 0;

    for (auto hit = bytes.find (sought); hit != std::string::npos; hit = bytes.find (sought, read))
    {
        if (read == 0)
            result.reserve (bytes.size());
        result.append (bytes, read, hit - read).append (replacement);
        read = hit + sought.size();
    }

    if (read > 0)
        bytes = std::move (result.append (bytes, read));
}

bool TextLines::next (std::string_view& line)
{
    if (at > text.size())
        return false;

    const auto end = std::min (text.find ('\n', at), text.size());
    line = text.substr (at, end - at);
    at = end + 1;
    ++number;
    return true;
}

} // namespace ZEP::Overmarks
