// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

#include <map>
#include <set>

namespace ZEP::Overmarks
{

/** Names the files of one export: "Reel 2.csv", or one for each character, "Reel 2_Ann.csv".

    Characters come from strangers' cue lists, so a name can't choose its folder: "/" becomes "_", and one that is too long for a
    file system loses its end. Nothing else is touched, not even what steers a terminal. Nor can two characters share a file: the
    second of two equal names is written to "Reel 2_Ann (2).csv".

    One object names each file of an export once. The base name is the user's own choice and is taken as it stands. */
class OVERMARKS_API OutputFileNames final
{
public:
    /** The longest name of a file, in bytes of UTF-8. */
    static constexpr int longestName = 255;

    /** @param folder              full path of the output folder
        @param fileExtension       with its dot
        @param charactersToBlank   these characters of a character's name become blanks */
    OutputFileNames (const juce::String& folder, const juce::String& baseName,
                     const juce::String& fileExtension, const juce::String& charactersToBlank = {});

    /** The one file of an export by timecode, or of one by character into a single file. */
    [[nodiscard]] juce::File single() const;

    /** The next character's file; never one that it returned before. */
    [[nodiscard]] juce::File nextFor (const juce::String& characterName);

    /** What stands in a file name for a character that the cast doesn't know. */
    static const juce::String noCharacter;

private:
    juce::String fitted (const juce::String& characterPart, const juce::String& number) const;
    juce::File inFolder (const juce::String& name) const;
    bool take (const juce::String& name);

    juce::File folder;
    juce::String base;
    juce::String extension;
    juce::String blanked;
    std::set<juce::String> taken;
    std::map<juce::String, int> lastNumbers;
};

} // namespace ZEP::Overmarks
