// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** A project as a file, "reel 2.overmarks".

    Saving is all or nothing: a crash, a power cut or a full disk at any moment leaves the old file or the new one, whole (see
    ZEP::Core::WholeFile for permissions, links and devices). Loading trusts nothing: whatever the bytes are, the result is a project or a
    message, never a crash, and a small file doesn't fill the memory. What a newer version has stored and this one doesn't know comes
    back with the next save, so that a project can go to and fro between two studios.

    The rule that is easily missed: a loaded project isn't sorted and not the current one, since that takes its characters:

        if (const auto error = ProjectFile::load (file, project); error.isNotEmpty())
            return error;
        project.makeCurrent();
        project.list->sortContentAndUpdateFilteredEvents();

    One thread at a time for a project; loading follows the registered preferences. */
class OVERMARKS_API ProjectFile final
{
public:
    ProjectFile() = delete;

    static constexpr const char* extension = ".overmarks"; ///< of a file's name, with its dot

    /** The version of the file's form; files with a higher one can't be read. */
    static constexpr unsigned int formatVersion = 1;

    /** How large a project may be. No project comes near these numbers; a damaged or hostile file claims them. */
    struct Limits
    {
        /** A file that has or claims more isn't read into memory, and none is written; 1 GB. What lies above 2 GB counts as 2 GB, since a
            record has no more. */
        std::uint64_t bytesOfFile = std::uint64_t { 1 } << 30;

        /** Memory that the events, texts and characters of a file may take however small it is, in bytes, beside twenty for each byte of
            the file; 128 MB. */
        std::uint64_t spareMemory = std::uint64_t { 1 } << 27;
    };

    /** The limits of the process, as they stand above unless the application has changed them. Change them only while no project
        is being loaded or saved. */
    static Limits& limits();

    /** Writes the project. Its list needs both fades; one that it has lost is stored all the same.
        @returns the reason of a failure in words; empty on success */
    [[nodiscard]] static juce::String save (const Project& project, const juce::File& file);

    /** Reads a project. Frame indices, reasons and identities are treated as Event::initWithProtoObject() says.
        @param project  replaced on success, untouched on failure
        @returns the reason of a failure in words; empty on success */
    [[nodiscard]] static juce::String load (const juce::File& file, Project& project);

    /** The same of a stream that knows its length. @param name  what messages call it */
    [[nodiscard]] static juce::String load (juce::InputStream& stream, const juce::String& name,
                                            Project& project);

    /** The bytes of the file of a project. @param bytes  replaced on success, untouched on failure. @returns as save() */
    [[nodiscard]] static juce::String toBytes (const Project& project, std::string& bytes);

    /** The project of the bytes of a file. @param name  what messages call the file. @returns as load() */
    [[nodiscard]] static juce::String fromBytes (std::string_view bytes, const juce::String& name,
                                                 Project& project);
};

} // namespace ZEP::Overmarks
