// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/cast/ADRCharacter.h"
#include "export/frame/EventExporter.h"
#include "export/frame/OutputFileNames.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** An export by character, as every exporter goes through it: the cast by name, each with its events and its file.

    Every key of `eventsByCharacter` is a block, also one that names no character: those come first, and their files say
    "<no char>". Upper case comes before lower case. Characters of equal name follow each other in the order of their identifiers.

    It copies what it needs of the settings and the process-wide cast when it is made. The thread of the export. */
class OVERMARKS_API ByCharacterWalk final
{
public:
    using Events = EventExportSettingsSet::Events; ///< in the order of the settings

    /** The part of one character. */
    struct Block
    {
        juce::String characterID;                           ///< key of `eventsByCharacter`
        std::shared_ptr<ZEP::Core::ADRCharacter> character; ///< null for a key that names none
        Events events;                                      ///< as the settings list them
        juce::File file; ///< its own file in an export that makes one for each character
    };

    /** What an error of one file means for the others. */
    enum class AfterFailure
    {
        stop, ///< the first error ends the walk and is its result
        goOn  ///< errors are dropped, the result is always success
    };

    /** Writes one block's file and returns the text of the error, or the empty string. */
    using WriteFile = std::function<juce::String (const Block&)>;

    /** @param extension          of the files, with its dot
        @param charactersToBlank  these characters of a name become blanks in its file's name
        @throws std::out_of_range without the option that says whether there is one file for all */
    ByCharacterWalk (const EventExportSettingsSet& settings, const juce::String& extension,
                     const juce::String& charactersToBlank = {});

    /** Whether all characters go into singleFile(). */
    [[nodiscard]] bool isCombined() const noexcept { return combined; }

    /** Of an export into one file. */
    [[nodiscard]] const juce::File& singleFile() const noexcept { return combinedFile; }

    /** In the order of the names. */
    [[nodiscard]] const std::vector<Block>& blocks() const noexcept { return sortedBlocks; }

    /** The events of all blocks in the order of blocks(). */
    [[nodiscard]] Events joinedEvents() const;

    /** Writes a file for each block, and tells the exporter's delegate after each one, also one that failed.
        @param isCancelled  asked before each file; true ends the walk with success */
    juce::String writeFiles (EventExporter& exporter, AfterFailure afterFailure, const WriteFile& writeFile,
                             const std::function<bool()>& isCancelled = {}) const;

private:
    std::vector<Block> sortedBlocks;
    juce::File combinedFile;
    bool combined;
};

} // namespace ZEP::Overmarks
