// SPDX-License-Identifier: GPL-3.0-only
// Several documents in one go, with one progress bar over all of them and a button that ends it.

#include "Reel.h"
#include "export/frame/BatchEventExportSession.h"

#include <future>
#include <iostream>

using namespace ZEP::Overmarks;

namespace
{

/** What stands behind the bar. The batch calls it on its own thread; an application hands over to its windows. */
class ProgressBar final : public BatchEventExportSession::Delegate
{
public:
    void batchProgressChanged (int current, int total) override
    {
        if (current != std::exchange (shown, current)) // the exporter tells of a step, and then the batch
            std::cout << "  " << current << " of " << total << "\n";
        if (current == cancelAt)
            batch->cancel();
    }

    void batchFinished() override { end ("finished"); }
    void batchCancelled() override { end ("cancelled; what is written stays"); }
    void wait() { ended.get_future().wait(); }

    BatchEventExportSession* batch = nullptr;
    int cancelAt = -1; ///< step at which somebody presses the button

private:
    void end (const char* how)
    {
        std::cout << "  " << how << "\n";
        ended.set_value();
    }

    std::promise<void> ended;
    int shown = 0;
};

std::shared_ptr<EventExportSettingsSet> workbook (const juce::String& name, const juce::File& folder)
{
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = EventExportTypeExcel;
    settings->fileName = name;
    settings->outputDirectory = folder.getFullPathName();
    settings->options[EventExportCombineIntoSingleFileKey] = false;
    return settings;
}

/** @param cancelAt  step after which the batch is to end; -1 for never */
void run (const BatchEventExportSession::SettingsSets& documents, int cancelAt)
{
    ProgressBar bar;
    BatchEventExportSession batch (documents); // for one run
    batch.delegate = &bar;
    batch.exportEnded = [] (EventExporter& exporter, const juce::String& error)
    {
        std::cout << "  " << exporter.settings->fileName << (error.isEmpty() ? " is written" : ": " + error)
                  << "\n";
    };
    bar.batch = &batch;
    bar.cancelAt = cancelAt;
    batch.start();
    bar.wait(); // an application goes on working instead
}

} // namespace

int main (int, char** argv)
{
    const auto project = example::openReel (example::fileFromArgument (argv[1]));
    const auto folder = example::fileFromArgument (argv[2]);

    // A set with events is one document; without them it is one for each character.
    const auto everything = workbook ("Everything", folder);
    const auto parts = workbook ("Part", folder);
    everything->events = project.list->sortedFilteredEvents;
    for (const auto& cue : project.list->eventsWithTypeMask (EventTypeADRCue))
        parts->eventsByCharacter[cue->getCharacterID()].push_back (cue);

    std::cout << "All of it\n";
    run ({ everything, parts }, -1);
    std::cout << "With second thoughts\n";
    run ({ everything, parts }, 1);
}
