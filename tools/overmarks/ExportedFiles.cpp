// SPDX-License-Identifier: GPL-3.0-only
#include "ExportedFiles.h"

#include "export/frame/ByCharacterWalk.h"
#include "export/frame/OutputFileNames.h"

namespace overmarks
{

using namespace ZEP::Overmarks;

std::vector<juce::File> filesOfExport (const EventExportSettingsSet& settings, const juce::String& extension,
                                       bool byCharacter)
{
    if (! byCharacter)
        return { OutputFileNames (settings.outputDirectory, settings.fileName, extension).single() };

    // docxHandler's command line divides its files by commas.
    const ByCharacterWalk walk (settings, extension,
                                settings.exportType == EventExportTypeWord ? "," : juce::String());

    if (walk.isCombined())
        return { walk.singleFile() };

    std::vector<juce::File> files;

    for (const auto& block : walk.blocks())
        files.push_back (block.file);

    return files;
}

std::vector<EventExportSettingsSet::Events> eventsOfFiles (const EventExportSettingsSet& settings,
                                                           bool byCharacter)
{
    if (! byCharacter)
        return { settings.events };

    const ByCharacterWalk walk (settings, {});

    if (walk.isCombined())
        return { walk.joinedEvents() };

    std::vector<EventExportSettingsSet::Events> all;

    for (const auto& block : walk.blocks())
        all.push_back (block.events);

    return all;
}

} // namespace overmarks
