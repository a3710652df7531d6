// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/PrivateFolder.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** How the library talks to docxHandler, the program in the resource folder that writes and reads Word documents.

    It is started with one command line for the system's shell and waited for. Each part stands in double quotes:

        TOOL export json=A.txt,B.txt output=A.docx,B.docx com=P2C,C2P
        TOOL import input=A.docx json=J.txt com=P2C,C2P

    No path in the lists of json, output and com may hold a comma, and nothing here looks for one in the names of folders: that
    is for the application to see to. The other files lie in the temporary folder:

        file                            written by   content
        P2CcomWordExporter.txt          the tool     first line "completionLevel=" and a percentage; when it reads a document,
                                                     any line "Error message = " and a text
        C2PcomWordExporter.txt          the library  "cancel", a line feed and a zero byte: the tool is to stop
        WordDocumentJSON_SUFFIX.txt     the library  a document in JSON, on one line
        WordDocumentJSONImport.txt      the tool     the cues of a document in JSON, on one line

    The names are always the same, so two runs that share a temporary folder disturb each other, and everybody on the machine
    knows them beforehand. So what another user has put under one of them into a folder of everybody's (SharedFolder.h) is neither
    read nor written into, and no link of his is followed; what is written goes through no link at all and can be read by this user
    alone. He could still hold up an export or an import, and so it is wise to have a PrivateFolder instead. Any thread. */
namespace ZEP::Overmarks::DocxHandlerProtocol
{

/** The full path of the tool, whether it is there or not. */
[[nodiscard]] OVERMARKS_API juce::String toolPath();

/** Where the files of the talk lie: the temporary folder, unless another one was named. */
[[nodiscard]] OVERMARKS_API juce::File folder();

/** Names the folder of the files, for exporters that are made afterwards and imports that begin afterwards; no file stands for the
    temporary folder, which is the default since other programs that know the tool look for the files there. A comma in its path
    would break the lists of paths. */
OVERMARKS_API void setFolder (const juce::File& newFolder);

/** A folder that only this user can look into, for the files of the talk as long as this object lives. It lies in the temporary folder,
    and is gone with everything in it at the end; then the folder is again what it was before. Made before the exporter or importer,
    and one at a time. */
class OVERMARKS_API PrivateFolder final
{
public:
    PrivateFolder();
    ~PrivateFolder();

    PrivateFolder (const PrivateFolder&) = delete;
    PrivateFolder& operator= (const PrivateFolder&) = delete;

    /** Fails if there is no place for temporary files; the files lie then where they did before. */
    [[nodiscard]] const juce::Result& result() const noexcept { return outcome; }

private:
    juce::Result outcome = juce::Result::ok();
    juce::File before;
    std::optional<Core::PrivateFolder> made;
};

/** Where the tool tells how far it is and what went wrong. */
[[nodiscard]] OVERMARKS_API juce::String progressFilePath();

/** Where the tool is told to stop. */
[[nodiscard]] OVERMARKS_API juce::String cancelFilePath();

/** The file of one document.
    @param suffix  "timecode", "singlefile", or a character's identifier. Since that comes from a stranger's list, "/", "," and
                   "%" in it are written as "%2F", "%2C" and "%25", and one that is too long for a file's name ends in a
                   checksum. Different identifiers never share a file. */
[[nodiscard]] OVERMARKS_API juce::String exportJSONFilePath (const juce::String& suffix);

/** Where the tool puts the cues that it has read. */
[[nodiscard]] OVERMARKS_API juce::String importJSONFilePath();

/** The command line that writes documents, as many as JSON files and in their order. Without any, two empty parts stand in the
    place of both lists.
    @param comFiles  the files for progress and for cancelling */
[[nodiscard]] OVERMARKS_API juce::String exportCommandLine (const juce::StringArray& jsonFiles,
                                                            const juce::StringArray& outputFiles,
                                                            const juce::StringArray& comFiles);

/** The command line that reads a document. */
[[nodiscard]] OVERMARKS_API juce::String importCommandLine (const juce::String& inputFile,
                                                            const juce::String& jsonFile,
                                                            const juce::StringArray& comFiles);

/** The longest command line that the system's shell can be given, in bytes. */
inline constexpr int longestCommandLine = 128 * 1024 - 1;

/** Starts the tool and waits until it has ended, however it ends. */
OVERMARKS_API void run (const juce::String& commandLine);

/** Tells a running tool to stop.
    @returns whether the file has taken the message; not if it is another user's, a link, or has further names */
OVERMARKS_API bool writeCancel (const juce::String& cancelFile);

/** The percentage that a line of the progress file tells; nothing for a line that isn't whole or is another. */
[[nodiscard]] OVERMARKS_API std::optional<int> levelOfLine (const juce::String& line);

/** Puts a file of this user's, which nobody else can read, in the place of whatever stands there. Where the disk takes no more its
    end is missing, and never anything before that.
    @returns what the system says if that can't be, because it belongs to somebody else for example */
[[nodiscard]] OVERMARKS_API juce::Result replaceFile (const juce::File& file, std::string_view bytes);

/** Whether something stands there, in a folder of everybody's, that belongs to another user. */
[[nodiscard]] OVERMARKS_API bool isAStrangers (const juce::File& file);

/** The bytes of a file; nothing if it can't be opened, is another user's, as above, or no ordinary file, or is larger than `most`
    bytes, 1 GiB unless the caller says. A link of this user's is followed, as the tool does when it writes. */
[[nodiscard]] OVERMARKS_API std::optional<std::string> contentOf (const juce::File& file,
                                                                  std::uint64_t most = std::uint64_t { 1 }
                                                                                       << 30);

/** The first line of a small text file; nothing if the file can't be opened or is another user's. The text is empty if the file is. */
[[nodiscard]] OVERMARKS_API std::optional<juce::String> firstLineOf (const juce::File& file);

/** What the first line of a progress file that tells of an error says; nothing if none does. */
[[nodiscard]] OVERMARKS_API std::optional<juce::String> errorIn (const juce::File& progressFile);

} // namespace ZEP::Overmarks::DocxHandlerProtocol
