// SPDX-License-Identifier: GPL-3.0-only
#include "WordExport.h"

#include "ExportedFiles.h"
#include "Session.h"
#include "ToolRun.h"

#include "export/frame/ByCharacterWalk.h"
#include "export/word/DocxHandlerProtocol.h"
#include "export/word/EventWordExporter.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;
namespace Protocol = DocxHandlerProtocol;

namespace
{

const juce::String extension { ".docx" };
constexpr auto commaToBlank = ",";

/** What a document takes of a command line, in bytes. A sign that the shell has to be told of takes two. */
std::size_t lengthInCommandLine (const ByCharacterWalk::Block& block)
{
    constexpr std::size_t separators = 2;
    return 2
           * (Protocol::exportJSONFilePath (block.characterID).getNumBytesAsUTF8()
              + block.file.getFullPathName().getNumBytesAsUTF8() + separators);
}

std::string endOf (const juce::File& file, std::int64_t length)
{
    std::ifstream stream (file.getFullPathName().toStdString(), std::ios::binary);
    stream.seekg (std::max<std::int64_t> (file.getSize() - length, 0));
    std::string bytes (static_cast<std::size_t> (length), '\0');
    stream.read (bytes.data(), length);
    bytes.resize (static_cast<std::size_t> (stream.gcount()));
    return bytes;
}

/** Whether the library could write all that it had to say. */
bool isWholeJSON (const juce::String& path) { return endOf (juce::File (path), 1) == "}"; }

/** Hears how far an export is. What the tool has left in the temporary folder is looked at here: when the export has
    returned, it is gone. */
class Listener final : public EventExporter::Delegate
{
public:
    Listener (const ToolRun& toolRun, const std::function<void (int)>& filesDoneSoFar, int filesBefore)
        : tool (toolRun),
          filesDone (filesDoneSoFar),
          before (filesBefore)
    {
    }

    void progressChanged (EventExporter* exporter, int current, int total) override
    {
        const std::lock_guard lock (mutex);
        filesDone (before + std::clamp (current, 0, total));

        if (current != total)
            return;

        error = Protocol::errorIn (juce::File (Protocol::progressFilePath())).value_or (juce::String());
        const auto paths = static_cast<EventWordExporter*> (exporter)->getTmpJSONFilePaths();
        const bool isWhole = std::all_of (paths.begin(), paths.end(), isWholeJSON);
        hadRoom = (isWhole && error.isNotEmpty()) || tool.hasRoom();
    }

    /** What the tool says of a failure. */
    juce::String wordsOfTool() const
    {
        const std::lock_guard lock (mutex);
        return error;
    }

    /** Why a document isn't there. */
    juce::String reason() const
    {
        const std::lock_guard lock (mutex);

        if (! hadRoom)
            return "the temporary folder " + tool.getFolder().getParentDirectory().getFullPathName()
                   + " is full";

        return error.isNotEmpty() ? error : "docxHandler broke off";
    }

private:
    const ToolRun& tool;
    const std::function<void (int)>& filesDone;
    int before;
    mutable std::mutex mutex;
    juce::String error;
    bool hadRoom = true;
};

/** A message with the place that the user knows instead of the one where a document was made. A message ends with a path. */
juce::String withTargets (const juce::String& message, const std::vector<juce::File>& made,
                          const WordFile* files, const juce::File& failed)
{
    for (std::size_t i = 0; i < made.size(); ++i)
        if (const auto path = ": " + made[i].getFullPathName(); message.endsWith (path))
            return message.dropLastCharacters (path.length())
                   + (files[i].target == failed ? juce::String() : ": " + files[i].target.getFullPathName());

    return message;
}

juce::String withoutComma (const juce::File& folder, const juce::File& otherwise)
{
    return (folder.getFullPathName().containsChar (',') ? otherwise : folder).getFullPathName();
}

} // namespace

WordExport::WordExport (const EventExportSettingsSet& orderSettings, bool isByCharacter,
                        std::vector<WordFile> filesOfOrder)
    : settings (orderSettings),
      byCharacter (isByCharacter),
      files (std::move (filesOfOrder))
{
}

/** The settings of one run of the tool each, all of them in folders of their own. */
std::vector<WordExport::Settings> WordExport::runsIn (const juce::File& folder) const
{
    auto whole = settings;
    whole.fileName = "document";
    whole.outputDirectory = folder.getChildFile ("documents 1").getFullPathName();
    const ByCharacterWalk walk (whole, extension, commaToBlank);

    if (! byCharacter || walk.isCombined())
        return { whole };

    constexpr auto mostBytes = static_cast<std::size_t> (Protocol::longestCommandLine) - 16384;
    std::vector<Settings> runs;
    auto bytes = mostBytes;

    for (const auto& block : walk.blocks())
    {
        bytes += lengthInCommandLine (block);

        if (bytes > mostBytes)
        {
            runs.push_back (whole);
            runs.back().eventsByCharacter.clear();
            runs.back().outputDirectory =
                folder.getChildFile ("documents " + juce::String (runs.size())).getFullPathName();
            bytes = lengthInCommandLine (block);
        }

        runs.back().eventsByCharacter[block.characterID] = block.events;
    }

    return runs;
}

void WordExport::write (const std::function<void (int)>& filesDone) const
{
    static constexpr auto undone = "no Word document was written";
    ToolRun tool;
    const juce::File folder (withoutComma (files.front().finished.getParentDirectory(), tool.getFolder()));
    std::size_t next = 0;

    for (const auto& run : runsIn (folder))
    {
        tool.throwIfStopped (undone);
        const juce::File runFolder (run.outputDirectory);
        runFolder.createDirectory();
        Listener listener (tool, filesDone, static_cast<int> (next));
        EventWordExporter exporter (std::make_shared<Settings> (run));
        exporter.delegate = &listener;
        tool.whileItWorks ([&exporter] { exporter.cancel(); },
                           [this, &exporter]
                           {
                               [[maybe_unused]] const auto always = byCharacter
                                                                        ? exporter.exportEventsByCharacter()
                                                                        : exporter.exportEventsByTimecode();
                           });
        tool.throwIfStopped (undone);

        tool.leaveOut (listener.wordsOfTool());
        const auto made = filesOfExport (run, extension, byCharacter);

        for (std::size_t i = 0; i < made.size(); ++i)
        {
            const auto& file = files.at (next + i);

            if (! isWholeArchive (made[i]))
                throw CommandFailure ("Error writing file to " + file.target.getFullPathName() + ": "
                                      + tool.withoutOwnFolder (
                                          withTargets (listener.reason(), made, &files[next], file.target)));

            if (! made[i].moveFileTo (file.finished))
                throw CommandFailure ("Error writing file to " + file.target.getFullPathName());
        }

        next += made.size();

        runFolder.deleteRecursively();
    }

    tool.throwIfStopped (undone);
}

bool isWholeArchive (const juce::File& file)
{
    // End of the central directory: signature, ..., length and place of the directory (offsets 12 and 16), length of the comment.
    constexpr std::string_view start = "PK\x03\x04", directory = "PK\x01\x02", end = "PK\x05\x06";
    constexpr std::size_t lengthOfEnd = 22, placeOfLength = 12, placeOfPlace = 16, longestComment = 0xffff;

    if (! file.existsAsFile() || file.getSize() < static_cast<std::int64_t> (lengthOfEnd))
        return false;

    std::ifstream stream (file.getFullPathName().toStdString(), std::ios::binary);
    std::string first (start.size(), '\0');
    stream.read (first.data(), static_cast<std::streamsize> (first.size()));

    const auto tail = endOf (file, lengthOfEnd + longestComment);
    const auto place = tail.rfind (end);

    if (first != start || place == std::string::npos || place + lengthOfEnd > tail.size())
        return false;

    const auto number = [&tail, place] (std::size_t offset)
    { return static_cast<std::int64_t> (juce::ByteOrder::littleEndianInt (tail.data() + place + offset)); };
    const auto startOfEnd = file.getSize() - static_cast<std::int64_t> (tail.size() - place);

    if (number (placeOfPlace) + number (placeOfLength) != startOfEnd)
        return false;

    stream.seekg (number (placeOfPlace));
    stream.read (first.data(), static_cast<std::streamsize> (first.size()));
    return first == directory;
}

} // namespace overmarks
