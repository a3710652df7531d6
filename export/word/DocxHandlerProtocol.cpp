// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/DocxHandlerProtocol.h"

#include "core/system/Logger.h"
#include "core/system/SystemUtility.h"
#include "core/text/StringUtil.h"

#include <Poco/SHA2Engine.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace ZEP::Overmarks::DocxHandlerProtocol
{
namespace
{

constexpr auto progressFileName = "P2CcomWordExporter.txt";
constexpr auto cancelFileName = "C2PcomWordExporter.txt";
constexpr auto importFileName = "WordDocumentJSONImport.txt";
constexpr auto exportFileStart = "WordDocumentJSON_";
constexpr auto exportFileEnd = ".txt";
constexpr auto levelName = "completionLevel";
constexpr std::string_view errorMarker = "Error message = ";

constexpr int longestName = 255;          // bytes of a file's name
constexpr std::size_t longestLine = 4096; // a level is told in twenty bytes
constexpr std::size_t mostBytesWithErrors = 1 << 20;

juce::String inTemporaryFolder (const juce::String& name)
{
    return juce::File::getSpecialLocation (juce::File::tempDirectory).getFullPathName()
           + juce::File::getSeparatorString() + name;
}

/** The start of a text, at most so many bytes, that ends with a whole character. */
std::string startOf (const std::string& text, std::size_t bytes)
{
    auto end = std::min (bytes, text.size());

    while (end > 0 && end < text.size() && (static_cast<unsigned char> (text[end]) & 0xc0) == 0x80)
        --end;

    return text.substr (0, end);
}

std::string checksumOf (const std::string& text)
{
    Poco::SHA2Engine engine;
    engine.update (text);
    return Poco::DigestEngine::digestToHex (engine.digest());
}

/** A suffix that neither leaves the folder nor breaks a list of paths, and fits into a file's name. */
juce::String harmless (const juce::String& suffix)
{
    const auto room = static_cast<std::size_t> (longestName) - std::string_view (exportFileStart).size()
                      - std::string_view (exportFileEnd).size();
    const auto whole = suffix.replace ("%", "%25").replace ("/", "%2F").replace (",", "%2C").toStdString();

    if (whole.size() <= room)
        return juce::String (whole);

    const auto end = "%long" + checksumOf (whole);
    return juce::String (startOf (whole, room - end.size()) + end);
}

/** A part of a command line in double quotes. The shell takes four characters between them for more than themselves. */
juce::String quoted (const juce::String& part)
{
    std::string words = "\"";

    for (const auto byte : part.toStdString())
    {
        if (byte == '\\' || byte == '"' || byte == '$' || byte == '`')
            words += '\\';

        words += byte;
    }

    return juce::String (words + "\"");
}

juce::String commandLine (const juce::StringArray& parts)
{
    juce::StringArray words;

    for (const auto& part : parts)
        words.add (quoted (part));

    return words.joinIntoString (" ");
}

juce::String listPart (const juce::String& name, const juce::StringArray& paths)
{
    return paths.isEmpty() ? juce::String() : name + paths.joinIntoString (",");
}

/** An ordinary file: opening anything else could mean to wait for ever. */
std::ifstream streamOf (const juce::File& file)
{
    std::error_code error;
    const std::filesystem::path path (file.getFullPathName().toStdString());
    return std::filesystem::is_regular_file (path, error) ? std::ifstream (path, std::ios::binary)
                                                          : std::ifstream();
}

/** The start of a file, at most so many bytes; nothing if it can't be opened. */
std::optional<std::string> startOfFile (const juce::File& file, std::size_t most)
{
    auto stream = streamOf (file);

    if (! stream.is_open())
        return std::nullopt;

    std::string bytes (most, '\0');
    stream.read (bytes.data(), static_cast<std::streamsize> (bytes.size()));
    bytes.resize (static_cast<std::size_t> (stream.gcount()));
    return bytes;
}

std::string_view firstLine (std::string_view bytes) { return bytes.substr (0, bytes.find_first_of ("\r\n")); }

} // namespace

juce::String toolPath()
{
    return Core::SystemUtility::bundleResourcePath() + juce::File::getSeparatorString() + "docxHandler";
}

juce::String progressFilePath() { return inTemporaryFolder (progressFileName); }

juce::String cancelFilePath() { return inTemporaryFolder (cancelFileName); }

juce::String exportJSONFilePath (const juce::String& suffix)
{
    return inTemporaryFolder (exportFileStart + harmless (suffix) + exportFileEnd);
}

juce::String importJSONFilePath() { return inTemporaryFolder (importFileName); }

juce::String exportCommandLine (const juce::StringArray& jsonFiles, const juce::StringArray& outputFiles,
                                const juce::StringArray& comFiles)
{
    return commandLine ({ toolPath(), "export", listPart ("json=", jsonFiles),
                          listPart ("output=", outputFiles), listPart ("com=", comFiles) });
}

juce::String importCommandLine (const juce::String& inputFile, const juce::String& jsonFile,
                                const juce::StringArray& comFiles)
{
    return commandLine (
        { toolPath(), "import", "input=" + inputFile, "json=" + jsonFile, listPart ("com=", comFiles) });
}

void run (const juce::String& line)
{
    if (line.getNumBytesAsUTF8() > static_cast<std::size_t> (longestCommandLine))
        Core::Logger::error (
            "docxHandler can't be started for so many documents at once: the command line of "
            + juce::String (line.getNumBytesAsUTF8()) + " bytes is too long");

    // How the tool ended shows in its files.
    [[maybe_unused]] const auto status = std::system (line.toRawUTF8());
}

bool writeCancel (const juce::String& cancelFile)
{
    constexpr std::size_t bufferSize = 16384;
    juce::FileOutputStream stream (juce::File (cancelFile), bufferSize);
    const bool written = stream.writeString ("cancel\n");
    stream.flush();
    return written && stream.getStatus().wasOk();
}

std::optional<int> levelOfLine (const juce::String& line)
{
    const auto parts = juce::StringArray::fromTokens (line, "=", {});

    if (parts.size() != 2 || parts[0] != levelName)
        return std::nullopt;

    constexpr int mostFigures = 9; // more are no percentage, and no number of the framework either
    return parts[1].trimStart().substring (0, mostFigures).getIntValue();
}

std::optional<juce::String> firstLineOf (const juce::File& file)
{
    const auto bytes = startOfFile (file, longestLine);
    return bytes.has_value() ? std::optional (Core::StringUtil::fromUTF8 (firstLine (*bytes))) : std::nullopt;
}

std::optional<juce::String> errorIn (const juce::File& progressFile)
{
    const auto bytes = startOfFile (progressFile, mostBytesWithErrors).value_or (std::string());

    for (std::string_view rest = bytes; ! rest.empty();)
    {
        const auto line = firstLine (rest);
        const auto marker = line.find (errorMarker);

        if (marker != std::string_view::npos && line.size() > errorMarker.size())
            return Core::StringUtil::fromUTF8 (line.substr (0, marker))
                   + Core::StringUtil::fromUTF8 (line.substr (marker + errorMarker.size()));

        rest.remove_prefix (std::min (line.size() + 1, rest.size()));
    }

    return std::nullopt;
}

} // namespace ZEP::Overmarks::DocxHandlerProtocol
