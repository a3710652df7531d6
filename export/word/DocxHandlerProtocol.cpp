// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/DocxHandlerProtocol.h"

#include "core/system/CappedNumbers.h"
#include "core/system/Descriptor.h"
#include "core/system/Logger.h"
#include "core/system/SharedFolder.h"
#include "core/system/SystemUtility.h"
#include "core/text/StringUtil.h"

#include <Poco/SHA2Engine.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>

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

constexpr mode_t rightsOfFile = 0600;
constexpr int longestName = 255;          // bytes of a file's name
constexpr std::size_t longestLine = 4096; // a level is told in twenty bytes
constexpr std::size_t mostBytesWithErrors = 1 << 20;

/** The folder that the application has named, and the lock on it. */
std::mutex folderLock;
juce::String& namedFolder()
{
    static juce::String path;
    return path;
}

juce::String inFolder (const juce::String& name)
{
    return folder().getFullPathName() + juce::File::getSeparatorString() + name;
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

std::filesystem::path pathOf (const juce::File& file) { return file.getFullPathName().toStdString(); }

/** The start of a file, at most so many bytes; nothing if it can't be opened or isn't to be trusted. */
std::optional<std::string> startOfFile (const juce::File& file, std::size_t most)
{
    return Core::SharedFolder::openTrusted (pathOf (file)).read (most);
}

std::string_view firstLine (std::string_view bytes) { return bytes.substr (0, bytes.find_first_of ("\r\n")); }

} // namespace

juce::String toolPath()
{
    return Core::SystemUtility::bundleResourcePath() + juce::File::getSeparatorString() + "docxHandler";
}

juce::File folder()
{
    const std::scoped_lock lock (folderLock);
    return namedFolder().isEmpty() ? juce::File::getSpecialLocation (juce::File::tempDirectory)
                                   : juce::File (namedFolder());
}

void setFolder (const juce::File& newFolder)
{
    const std::scoped_lock lock (folderLock);
    namedFolder() = newFolder.getFullPathName();
}

PrivateFolder::PrivateFolder()
{
    {
        const std::scoped_lock lock (folderLock);
        before =
            juce::File (namedFolder()); // none as long as it is the temporary folder, wherever that will be
    }

    try
    {
        made.emplace ("overmarks-word-");
        setFolder (juce::File (Core::StringUtil::fromUTF8 (made->path().native())));
    }
    catch (const std::runtime_error& error)
    {
        outcome = juce::Result::fail ("There is " + Core::StringUtil::fromUTF8 (error.what()));
    }
}

PrivateFolder::~PrivateFolder()
{
    if (made.has_value())
        setFolder (before);
}

juce::String progressFilePath() { return inFolder (progressFileName); }

juce::String cancelFilePath() { return inFolder (cancelFileName); }

juce::String exportJSONFilePath (const juce::String& suffix)
{
    return inFolder (exportFileStart + harmless (suffix) + exportFileEnd);
}

juce::String importJSONFilePath() { return inFolder (importFileName); }

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
    constexpr std::string_view words ("cancel\n\0", 8);
    const std::filesystem::path path = cancelFile.toStdString();
    const Core::Descriptor opened (path, O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK,
                                   rightsOfFile);

    // Under another name it may be a file that has nothing to do with all this.
    return Core::SharedFolder::isTrusted (opened, path) && opened.status()->st_nlink == 1
           && opened.write (words);
}

juce::Result replaceFile (const juce::File& file, std::string_view bytes)
{
    const auto path = pathOf (file);

    if (std::remove (path.c_str()) == 0 || errno == ENOENT)
        if (const Core::Descriptor made (path, O_WRONLY | O_CREAT | O_EXCL, rightsOfFile); made.isOpen())
        {
            std::ignore = made.write (bytes); // what is cut off is seen by whoever reads it
            return juce::Result::ok();
        }

    return juce::Result::fail (Core::StringUtil::fromUTF8 (std::generic_category().message (errno)));
}

bool isAStrangers (const juce::File& file) { return Core::SharedFolder::holdsAStrangers (pathOf (file)); }

std::optional<std::string> contentOf (const juce::File& file, std::uint64_t most)
{
    auto bytes = startOfFile (file, Core::cappedSum (most, 1));
    return bytes.has_value() && bytes->size() <= most ? bytes : std::nullopt;
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
