// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/frame/EventExportSettingsSet.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <vector>

namespace overmarks
{

/** One document of an order: where it is finished, and what the user knows it as. */
struct WordFile
{
    juce::File finished;
    juce::File target;
};

/** Writes Word documents with the help of docxHandler, of which the library itself tells nothing: every document is looked at
    before it counts.

    Names and folders with commas, and more characters than one command line holds, are no obstacle: the documents are made under
    plain names in several runs of the tool if need be. */
class WordExport final
{
public:
    /** @param orderSettings  of the documents; their folder and name play no part
        @param files          in the order in which the exporter makes them */
    WordExport (const ZEP::Overmarks::EventExportSettingsSet& orderSettings, bool isByCharacter,
                std::vector<WordFile> files);

    /** @param filesDone  is told from any thread how many are done so far
        Throws CommandFailure, with nothing of the user's touched. */
    void write (const std::function<void (int)>& filesDone) const;

private:
    using Settings = ZEP::Overmarks::EventExportSettingsSet;

    std::vector<Settings> runsIn (const juce::File& folder) const;

    Settings settings;
    bool byCharacter;
    std::vector<WordFile> files;
};

/** Whether a file is a whole ZIP archive, by its beginning and the directory at its end. */
bool isWholeArchive (const juce::File& file);

} // namespace overmarks
