// SPDX-License-Identifier: GPL-3.0-only
// overmarks overview: the sheet that tells how far the work has come.
#include "DocumentOptions.h"
#include "ListSource.h"
#include "ProjectForm.h"
#include "StagingFolder.h"
#include "WrittenFiles.h"
#include "commands/Commands.h"

#include "core/system/SystemUtility.h"
#include "export/ADROverviewPDFExporter.h"
#include "export/frame/PaperOfSettings.h"

#include <memory>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Orvelle::ADROverviewPDFExporter;

namespace
{

struct OverviewOptions
{
    std::string list;
    std::string out;
    bool open = false;
    ListOptions listOptions;
    DocumentOptions documents;
};

void refuse (const OverviewOptions& options, const juce::File& out)
{
    if (options.out == "-")
        throw WrongUsage ("overview writes a file; -o names it");

    if (isTheList (out, options.list))
        throw CommandFailure (options.out + " is the list itself");

    if (! out.hasFileExtension ("pdf") && ! isDeviceOrPipe (out))
        throw WrongUsage ("-o: the sheet is a PDF, and the name \"" + out.getFileName()
                          + "\" doesn't end in .pdf");

    refuseFolderOf (out);
    refuseToReplace (out, options.documents.policy);
}

void writeSheet (const OverviewOptions& options, const Project& project, const juce::File& out,
                 Session& session)
{
    const auto texts = options.documents.settingsFor (project, options.list, {});
    const auto path = out.getFullPathName();
    ADROverviewPDFExporter exporter (path, paperOf (*texts));
    exporter.openFile = nullptr; // not before it's known to be there
    const auto reader = waitForReader (out);
    exporter.appIcon = juce::ImageFileFormat::loadFrom (
        juce::File (ZEP::Core::SystemUtility::bundleResourcePath()).getChildFile ("dbln-app-icon.png"));
    exporter.exportPDF (ZEP::Orvelle::adrOverviewDataSets (*project.list, *project.characters),
                        texts->projectSettings.projectName, texts->projectSettings.projectFilePath,
                        texts->timelineSettings.timelineName, texts->projectSettings.soundSupervisor,
                        texts->projectSettings.studioName);

    if (const auto& result = exporter.document->saveResult(); result.failed())
        throw CommandFailure (result.getErrorMessage());

    if (const auto leftOut = exporter.rowsLeftOut(); leftOut > 0)
        session.report ({ path,
                          0,
                          {},
                          counted (static_cast<std::size_t> (leftOut), "character")
                              + " at the end of the cast found no place on the sheet" });

    if (options.open)
        ADROverviewPDFExporter::openInViewer (out);
}

void makeOverview (const OverviewOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    options.documents.check();
    const auto out = fileFromPath (options.out);
    const bool isDryRun = options.documents.policy.dryRun;
    refuse (options, out);
    const auto project = loadList (options.list, options.listOptions, session);

    if (! isDryRun)
        writeSheet (options, project, out, session);

    tellOfFiles ({ out }, isDryRun, session);
}

} // namespace

void addOverviewCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<OverviewOptions>();
    auto* command = program.add_subcommand (
        "overview", "Write a sheet that tells how many lines each character has, and how many are done");
    command->footer ("Example:\n  overmarks overview film.overmarks -o overview.pdf");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    command->add_option ("-o,--output", options->out, "The sheet, a PDF")->required()->type_name ("FILE");
    command->add_flag ("--open", options->open, "Show the finished sheet");
    options->documents.addToOverview (*command);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { makeOverview (*options, session); });
}

} // namespace overmarks
