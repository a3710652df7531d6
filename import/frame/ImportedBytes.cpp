// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ImportedBytes.h"

#include "core/system/FileInput.h"
#include "core/system/Logger.h"
#include "import/frame/ImportLimits.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
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
    std::string bytes;
    const auto result = Core::FileInput::readWhole (path, bytes, ImportLimits::limits().bytesOfFile);

    if (result.wasOk())
        return bytes;

    std::error_code error;

    if (std::filesystem::exists (path.toStdString(),
                                 error)) // of a missing file the importer's words tell enough
        Core::Logger::error (path + " can't be read: " + result.getErrorMessage());

    return std::nullopt;
}

std::string bytesOfFile (const juce::String& path) { return contentOfFile (path).value_or (std::string()); }

namespace
{

/** Closes the gaps that a shorter replacement leaves, without a second text. */
void replaceInPlace (std::string& bytes, std::string_view sought, std::string_view replacement)
{
    auto hit = bytes.find (sought);
    auto written = hit;

    while (hit != std::string::npos)
    {
        const auto kept = hit + sought.size();
        hit = bytes.find (sought, kept);
        written += replacement.copy (&bytes[written], replacement.size());
        const auto length = std::min (hit, bytes.size()) - kept;
        std::memmove (&bytes[written], &bytes[kept], length);
        written += length;
    }

    bytes.resize (std::min (written, bytes.size()));
}

} // namespace

void replaceEach (std::string& bytes, std::string_view sought, std::string_view replacement)
{
    if (sought.empty())
        return;
    if (replacement.size() <= sought.size())
        return replaceInPlace (bytes, sought, replacement);

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
