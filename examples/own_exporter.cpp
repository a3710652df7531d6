// SPDX-License-Identifier: GPL-3.0-only
// A document that the library doesn't know: the lines for a teleprompter, one file for all or one for each character.

#include "Reel.h"

#include "export/frame/BatchEventExportSession.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/OutputFile.h"

#include <iostream>

using namespace ZEP::Overmarks;

namespace
{

class PrompterExporter final : public EventExporter
{
public:
    using EventExporter::EventExporter;

    juce::String exportEventsByTimecode() override
    {
        const auto folder = juce::File (settings->outputDirectory);
        return write (settings->events, folder.getChildFile (settings->fileName + ".prompt"));
    }

    /** The walk sorts the characters, names their files and tells the delegate. */
    juce::String exportEventsByCharacter() override
    {
        const ByCharacterWalk walk (*settings, ".prompt");
        if (walk.isCombined())
            return write (walk.joinedEvents(), walk.singleFile());
        return walk.writeFiles (*this, ByCharacterWalk::AfterFailure::stop,
                                [] (const ByCharacterWalk::Block& block)
                                { return write (block.events, block.file); });
    }

    /** None of the library's own kinds. */
    EventExportType type() const override { return EventExportTypeNone; }

private:
    /** @returns the text of the error; empty for success */
    static juce::String write (const std::vector<std::shared_ptr<Event>>& events, const juce::File& target)
    {
        OutputFile file (target); // there as a whole or not at all
        for (const auto& event : events)
        {
            const auto line = event->getStartTCString() + "\n    " + event->getText().getText() + "\n";
            file.write (line.toRawUTF8(), line.getNumBytesAsUTF8());
        }
        return file.finish() ? juce::String() : "Can't write " + target.getFullPathName();
    }
};

} // namespace

int main (int, char** argv)
{
    const auto project = example::openReel (example::fileFromArgument (argv[1]));
    const auto settings = std::make_shared<EventExportSettingsSet>();
    settings->outputDirectory = example::fileFromArgument (argv[2]).getFullPathName();
    settings->fileName = "Reel 2";
    settings->options[EventExportCombineIntoSingleFileKey] = false;

    for (const auto& cue : project.list->eventsWithTypeMask (EventTypeADRCue))
        if (! cue->isDone())
            settings->eventsByCharacter[cue->getCharacterID()].push_back (cue);

    // A batch asks for the exporter of each document, so ours may stand among the library's.
    BatchEventExportSession batch ({ settings });
    batch.makeExporter = [] (auto set) { return std::make_shared<PrompterExporter> (std::move (set)); };
    batch.exportEnded = [] (EventExporter&, const juce::String& error)
    { std::cout << (error.isEmpty() ? "written" : error) << "\n"; };
    batch.start();
    batch.waitForThreadToExit (-1);

    const juce::File folder (settings->outputDirectory);
    std::cout << folder.getChildFile ("Reel 2_OLD TAMM.prompt").loadFileAsString();
}
