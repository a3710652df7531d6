// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/ByCharacterWalk.h"

#include "core/cast/ADRCharacterMap.h"

#include <algorithm>

namespace ZEP::Overmarks
{
namespace
{

juce::String nameOf (const ByCharacterWalk::Block& block)
{
    return block.character != nullptr ? block.character->name : juce::String();
}

} // namespace

ByCharacterWalk::ByCharacterWalk (const EventExportSettingsSet& settings, const juce::String& extension,
                                  const juce::String& charactersToBlank)
    : combined (static_cast<bool> (settings.options.at (EventExportCombineIntoSingleFileKey)))
{
    const auto cast = Event::getADRCharacterMap();
    sortedBlocks.reserve (settings.eventsByCharacter.size());

    for (const auto& [id, events] : settings.eventsByCharacter)
        sortedBlocks.push_back ({ id, cast != nullptr ? cast->characterForID (id) : nullptr, events, {} });

    std::stable_sort (sortedBlocks.begin(), sortedBlocks.end(),
                      [] (const Block& a, const Block& b) { return nameOf (a) < nameOf (b); });

    OutputFileNames names (settings.outputDirectory, settings.fileName, extension, charactersToBlank);
    combinedFile = names.single();

    for (auto& block : sortedBlocks)
        block.file =
            names.nextFor (block.character != nullptr ? block.character->name : OutputFileNames::noCharacter);
}

ByCharacterWalk::Events ByCharacterWalk::joinedEvents() const
{
    Events joined;

    for (const auto& block : sortedBlocks)
        joined.insert (joined.end(), block.events.begin(), block.events.end());

    return joined;
}

juce::String ByCharacterWalk::writeFiles (EventExporter& exporter, AfterFailure afterFailure,
                                          const WriteFile& writeFile,
                                          const std::function<bool()>& isCancelled) const
{
    const auto total = static_cast<int> (sortedBlocks.size());
    int current = 0;

    for (const auto& block : sortedBlocks)
    {
        if (isCancelled && isCancelled())
            break;

        const auto error = writeFile (block);
        ++current;

        if (exporter.delegate != nullptr)
            exporter.delegate->progressChanged (&exporter, current, total);

        if (error.isNotEmpty() && afterFailure == AfterFailure::stop)
            return error;
    }

    return {};
}

} // namespace ZEP::Overmarks
