// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentBatch.h"

#include "DocumentRun.h"
#include "ExportedFiles.h"
#include "HTMLFileAdapter.h"
#include "PlacedFiles.h"
#include "Progress.h"
#include "StagingFolder.h"
#include "TemporaryPlace.h"
#include "TerminalQuestion.h"
#include "WordExport.h"
#include "WordSize.h"

#include "export/EventASCExporter.h"
#include "export/EventArendisTXTExporter.h"
#include "export/EventCSVExporter.h"
#include "export/EventPDFExporter.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/EventExporterFactory.h"
#include "export/frame/PaperOfSettings.h"
#include "export/print/DrawnCueSheetExporter.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

void refuseToReplaceSource (const juce::File& file, const std::string& source)
{
    if (isTheList (file, source))
        throw CommandFailure (file.getFullPathName()
                              + ": the document would replace the list that it is made from");
}

constexpr auto nothingWritten = "nothing was written";
constexpr auto tooLargeToImport =
    " is too large to be imported again; what is changed in it has to be brought back by hand";

/** With a place of the browser's own its files are gone with the rest when the program is stopped the hard way. Where there is no
    place for one, each sheet's failure tells. */
std::unique_ptr<TemporaryPlace> placeOfBrowserFor (const BatchEventExportSession::SettingsSets& sets)
{
    if (std::none_of (sets.begin(), sets.end(),
                      [] (const auto& settings) { return settings->exportType == EventExportTypePDF; }))
        return nullptr;

    try
    {
        return std::make_unique<TemporaryPlace>();
    }
    catch (const CommandFailure&)
    {
        return nullptr;
    }
}

juce::File inside (const juce::File& folder, const juce::String& name)
{
    return folder.getChildFile ("./" + name);
}

/** Writes a document whose exporter isn't made by the factory. @returns false for any other document */
bool writeWithoutFactory (const EventExportSettingsSet& settings, const juce::File& file)
{
    if (settings.exportType == EventExportTypeASC)
        EventASCExporter().exportEvents (settings.events, file.getFullPathName());
    else if (settings.exportType == EventExportTypeArendis)
        EventArendisTXTExporter().exportEvents (settings.events, file.getFullPathName(),
                                                settings.projectSettings.projectName);
    else
        return false;

    return true;
}

/** Whether a file of a character that can't be written goes unnoticed by the exporter. */
bool dropsFailures (const EventExportSettingsSet& settings)
{
    return settings.exportType == EventExportTypeExcel;
}

/** Writes the files of characters that are missing once more, each on its own, which tells why they are.
    @returns the first failure */
juce::String writeMissing (const EventExportSettingsSet& settings, const juce::String& extension,
                           const juce::File& stage)
{
    const ByCharacterWalk walk (settings, extension);

    if (walk.isCombined())
        return {};

    for (const auto& block : walk.blocks())
    {
        const auto name = block.file.getFileName();

        if (inside (stage, name).exists())
            continue;

        auto own = std::make_shared<EventExportSettingsSet> (settings);
        own->events = block.events;
        own->fileName = name.dropLastCharacters (extension.length());

        if (const auto error = EventExporterFactory::eventExporter (own)->exportEventsByTimecode();
            error.isNotEmpty())
            return error;
    }

    return {};
}

} // namespace

/** A document with its settings, the names that its exporter uses and the files that it becomes. */
struct DocumentBatch::Work
{
    const DocumentFormat* format;
    std::shared_ptr<EventExportSettingsSet> settings;
    std::vector<juce::String> names;
    std::vector<juce::File> targets;
    juce::String error;                                    ///< of the export as a whole
    std::map<juce::String, juce::String> printFailures {}; ///< reasons, by the names of files

    /** Why a file isn't there, as far as anybody knows. */
    juce::String reasonFor (const juce::String& name) const
    {
        const auto failure = printFailures.find (name);
        return failure != printFailures.end() ? failure->second : error;
    }

    void nameNoFolderThatGoes (const TemporaryPlace& place)
    {
        error = place.withoutItself (error);

        for (auto& [name, reason] : printFailures)
            reason = place.withoutItself (reason);
    }
};

DocumentBatch::DocumentBatch (const DocumentOptions& documentOptions, const juce::File& folderOfDocuments,
                              std::string pathOfSource)
    : options (documentOptions),
      folder (folderOfDocuments),
      source (std::move (pathOfSource))
{
}

void DocumentBatch::add (const DocumentFormat& format, const juce::String& baseName,
                         const juce::String& extension)
{
    orders.push_back ({ &format, baseName, extension });
}

void DocumentBatch::add (const DocumentFormat& format, const juce::String& baseName)
{
    add (format, baseName, format.extension);
}

DocumentBatch::Work DocumentBatch::workFor (const Order& order, const Project& project) const
{
    Work work { order.format, options.settingsFor (project, source, *order.format), {}, {}, {} };
    work.settings->outputDirectory = folder.getFullPathName();
    work.settings->fileName = order.baseName;

    // The library makes no Word document of all characters if there are none.
    const bool needsEvents = order.format->needsEvents
                             || (order.format->type == EventExportTypeWord && isByCharacter (*order.format));

    if (! needsEvents || ! work.settings->events.empty())
        for (const auto& file :
             filesOfExport (*work.settings, order.format->extension, isByCharacter (*order.format)))
            work.names.push_back (file.getFileName());

    for (const auto& name : work.names)
        work.targets.push_back (
            inside (folder, name.dropLastCharacters (juce::String (order.format->extension).length())
                                + order.extension));

    return work;
}

bool DocumentBatch::isByCharacter (const DocumentFormat& format) const
{
    return options.byCharacter && format.canBeByCharacter();
}

void DocumentBatch::refuse (const std::vector<Work>& works) const
{
    std::set<juce::String> taken;

    for (const auto& work : works)
        for (const auto& target : work.targets)
        {
            refuseFolderOf (target);
            refuseToReplaceSource (target, source);
            refuseToReplace (target, options.policy);

            if (! taken.insert (target.getFullPathName()).second)
                throw CommandFailure ("Two documents would be written to " + target.getFullPathName());
        }
}

/** The questions of DS Taker's tables, whose rows are made for that and go nowhere. */
void DocumentBatch::sayWhatWouldBeAsked (const std::vector<Work>& works, const Session& session) const
{
    for (const auto& work : works)
    {
        if (options.yes || work.names.empty() || work.format->name != "ds-taker")
            continue;

        std::size_t place = 0;
        const auto exporter =
            exporterFor (work,
                         [&] (const juce::String& question)
                         {
                             session.say ("Would ask before writing " + work.targets[place].getFullPathName()
                                          + ", and --yes agrees: " + question);
                             return false;
                         });
        auto* const table = dynamic_cast<EventCSVExporter*> (exporter.get());

        if (table == nullptr)
            continue;

        for (const auto& events : eventsOfFiles (*work.settings, isByCharacter (*work.format)))
        {
            static_cast<void> (table->csvHeaderString()); // which also chooses the columns
            table->createCSVLinesForTemplateDSTaker (events);
            ++place;
        }
    }
}

/** Whether a document has an exporter of the factory that tells all there is to know. One by timecode of a list without events
    isn't part of it either: the batch would take it for one by character. */
bool DocumentBatch::isPartOfBatch (const Work& work) const
{
    const auto type = work.settings->exportType;
    const bool isSpecial =
        type == EventExportTypeASC || type == EventExportTypeArendis || type == EventExportTypeWord;
    return ! work.names.empty() && ! isSpecial
           && (isByCharacter (*work.format) || ! work.settings->events.empty());
}

void DocumentBatch::writeBeforeBatch (Work& work, Progress& progress, const StagingFolder& stage,
                                      int stepsBefore) const
{
    if (work.names.empty())
        return;

    if (const auto file = inside (stage.getFolder(), work.names.front());
        writeWithoutFactory (*work.settings, file))
    {
        // Such an exporter doesn't tell of a failure: that shows in the missing file.
        if (! file.exists())
            throw CommandFailure ("Error writing file to " + work.targets.front().getFullPathName());
    }
    else if (work.settings->exportType == EventExportTypeWord)
    {
        writeWordDocuments (work, progress, stage.getFolder(), stepsBefore);
    }
    else
    {
        const auto exporter = exporterFor (work,
                                           [&] (const juce::String& question)
                                           {
                                               progress.hide();
                                               return askOnTerminal (question, stage.getSignals());
                                           });
        takeResult (work, *exporter, exporter->exportEventsByTimecode(), stage.getFolder());
    }
}

/** @param ask  whether a document shall be written nevertheless */
std::shared_ptr<EventExporter> DocumentBatch::exporterFor (
    const Work& work, const std::function<bool (const juce::String&)>& ask) const
{
    if (work.format == &drawnCueSheet())
        return std::make_shared<DrawnCueSheetExporter> (work.settings, paperOf (*work.settings));

    auto exporter = EventExporterFactory::eventExporter (work.settings);

    if (auto* csv = dynamic_cast<EventCSVExporter*> (exporter.get()))
        csv->askToContinue = [this, ask] (const juce::String&, const juce::String& question)
        { return options.yes || ask (question); };

    auto* sheet = dynamic_cast<EventPDFExporter*> (exporter.get());

    // What can't be printed is told in the end, by the name that the file would have had.
    if (sheet != nullptr)
        sheet->printFailed = {};

    if (sheet != nullptr && work.format->name == "html")
    {
        sheet->fileExtension = juce::String (work.format->extension);
        sheet->makePrintAdapter = [] { return std::make_unique<HTMLFileAdapter>(); };
    }

    return exporter;
}

void DocumentBatch::takeResult (Work& work, EventExporter& exporter, juce::String error,
                                const juce::File& stage) const
{
    if (isByCharacter (*work.format) && error.isEmpty() && dropsFailures (*work.settings))
        error = writeMissing (*work.settings, work.format->extension, stage);

    // The user knows nothing of the place where documents are made.
    for (std::size_t i = 0; i < work.names.size(); ++i)
        error = error.replace (inside (stage, work.names[i]).getFullPathName(),
                               work.targets[i].getFullPathName());

    work.error = error;

    if (const auto* sheet = dynamic_cast<EventPDFExporter*> (&exporter))
        for (const auto& failure : sheet->printFailures)
            work.printFailures[failure.file.getFileName()] = failure.reason;
}

/** Makes all documents in the staging folder. Throws CommandFailure for the first that couldn't be written, WorkStopped
    when the user has stopped the work; what couldn't be printed, or wasn't reached, is just missing. */
void DocumentBatch::makeDocuments (std::vector<Work>& works, const StagingFolder& stage,
                                   Session& session) const
{
    std::vector<Work*> batched, before;
    int stepsBefore = 0, stepsOfBatch = 0;

    for (auto& work : works)
    {
        work.settings->outputDirectory = stage.getFolder().getFullPathName();

        if (! isPartOfBatch (work))
        {
            before.push_back (&work);
            stepsBefore += static_cast<int> (work.names.size());
            continue;
        }

        // The batch goes by which of the two is filled.
        if (isByCharacter (*work.format))
            work.settings->events.clear();
        else
            work.settings->eventsByCharacter.clear();

        batched.push_back (&work);
        stepsOfBatch += DocumentRun::stepsOf ({ work.settings });
    }

    Progress progress (session, "Writing", stepsBefore + stepsOfBatch);
    int steps = 0;

    for (auto* work : before)
    {
        stage.getSignals().throwIfStopped (nothingWritten);
        writeBeforeBatch (*work, progress, stage, steps);
        progress.reached (steps += static_cast<int> (work->names.size()));
    }

    writeBatch (batched, progress, stepsBefore, stage);

    for (const auto& work : works)
        if (work.error.isNotEmpty())
            throw CommandFailure (work.error);
}

void DocumentBatch::writeBatch (const std::vector<Work*>& works, Progress& progress, int stepsBefore,
                                const StagingFolder& stage) const
{
    std::map<const EventExportSettingsSet*, Work*> workOf;
    BatchEventExportSession::SettingsSets sets;

    for (auto* work : works)
    {
        workOf[work->settings.get()] = work;
        sets.push_back (work->settings);
    }

    const auto place = placeOfBrowserFor (sets);
    DocumentRun run (progress, stepsBefore, sets);
    run.batch().makeExporter = [&] (const auto& settings)
    {
        return exporterFor (*workOf.at (settings.get()),
                            [&] (const juce::String& question)
                            {
                                run.hideBar();
                                return askOnTerminal (question, stage.getSignals());
                            });
    };
    run.batch().exportEnded = [&] (EventExporter& exporter, const juce::String& error)
    { takeResult (*workOf.at (exporter.settings.get()), exporter, error, stage.getFolder()); };

    run.run (stage.getSignals());

    for (auto* work : works)
        if (place != nullptr)
            work->nameNoFolderThatGoes (*place);

    stage.getSignals().throwIfStopped (nothingWritten);
}

void DocumentBatch::writeWordDocuments (const Work& work, Progress& progress, const juce::File& stage,
                                        int filesBefore) const
{
    std::vector<WordFile> files;

    for (std::size_t i = 0; i < work.names.size(); ++i)
        files.push_back ({ inside (stage, work.names[i]), work.targets[i] });

    WordExport (*work.settings, isByCharacter (*work.format), std::move (files))
        .write ([&progress, filesBefore] (int done) { progress.reached (filesBefore + done); });
}

std::vector<juce::File> DocumentBatch::write (const Project& project, Session& session) const
{
    std::vector<Work> works;
    std::vector<juce::File> files;

    for (const auto& order : orders)
    {
        works.push_back (workFor (order, project));

        if (works.back().names.empty())
            session.say ("Nothing to write: without an event there is no document for "
                         + juce::String (order.format->name));

        files.insert (files.end(), works.back().targets.begin(), works.back().targets.end());
    }

    refuse (works);

    if (options.policy.dryRun)
        sayWhatWouldBeAsked (works, session);

    if (options.policy.dryRun || files.empty())
        return files;

    const auto inFolder = std::find_if_not (files.begin(), files.end(), isDeviceOrPipe);
    const StagingFolder stage (inFolder == files.end() ? files.front() : *inFolder);
    std::optional<StopSignals::Patience> untilAllAreInPlace (std::in_place, stage.getSignals());
    std::optional<WorkStopped> stop;
    const auto unlessStopped = [&stop] (const auto& work)
    {
        try
        {
            if (! stop.has_value())
                work();
        }
        catch (const WorkStopped& stopped)
        {
            stop = stopped;
        }
    };

    unlessStopped ([&] { makeDocuments (works, stage, session); });
    auto finished = finishedOf (works, stage, session);
    unlessStopped ([&] { writeIntoPipes (finished, stage, untilAllAreInPlace); });
    auto written = moveIntoPlace (finished, stage, session);

    if (stop.has_value())
        throw written.empty() ? *stop : WorkStopped ("Stopped; what was finished is kept");

    return written;
}

std::vector<DocumentBatch::Finished> DocumentBatch::finishedOf (const std::vector<Work>& works,
                                                                const StagingFolder& stage, Session& session)
{
    std::vector<Finished> finished;

    for (const auto& work : works)
        for (std::size_t i = 0; i < work.names.size(); ++i)
        {
            const auto made = inside (stage.getFolder(), work.names[i]);

            // An exporter also ends well when a question was answered with no, or when there is nothing to write.
            if (! made.exists())
            {
                const auto reason = work.reasonFor (work.names[i]);
                session.report ({ {},
                                  0,
                                  {},
                                  work.targets[i].getFullPathName() + " was not written"
                                      + (reason.isNotEmpty() ? ": " + reason : reason) });
                continue;
            }

            if (work.settings->exportType == EventExportTypeWord && isTooLargeToImport (made))
                session.say (work.targets[i].getFullPathName() + tooLargeToImport);

            finished.push_back ({ made, work.targets[i], isDeviceOrPipe (work.targets[i]) });
        }

    return finished;
}

void DocumentBatch::writeIntoPipes (std::vector<Finished>& finished, const StagingFolder& stage,
                                    std::optional<StopSignals::Patience>& patience)
{
    const auto& signals = stage.getSignals();

    for (auto& document : finished)
    {
        if (! document.goesIntoPipe)
            continue;

        const auto reader =
            waitForReader (document.target, [&] { signals.throwIfStopped ("nothing was written"); });

        // Whoever reads may stall. Nothing has been replaced yet, so that the program can be ended without loss.
        patience.reset();
        StagingFolder::moveIntoPlace (document.made, document.target);
        patience.emplace (signals);
        document.isWritten = true;
    }
}

std::vector<juce::File> DocumentBatch::moveIntoPlace (const std::vector<Finished>& finished,
                                                      const StagingFolder& stage, Session& session)
{
    std::vector<juce::File> written;
    PlacedFiles places (stage.getFolder());

    for (const auto& document : finished)
    {
        if (! document.goesIntoPipe)
            places.add (document.made, document.target);
        else if (! document.isWritten)
        {
            session.report ({ {}, 0, {}, document.target.getFullPathName() + " was not written" });
            continue;
        }

        written.push_back (document.target);
    }

    places.keep();
    return written;
}

} // namespace overmarks
