// SPDX-License-Identifier: GPL-3.0-only
// overmarks import, dump and load: cue lists into a project, and a project to JSON and back.
#include "ListSource.h"
#include "OutputFile.h"
#include "ProjectForm.h"
#include "commands/Commands.h"
#include "commands/ProjectOutput.h"

#include "list/ProjectJSON.h"

#include <memory>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

struct ImportOptions
{
    std::vector<std::string> files;
    ListOptions list;
    ProjectOutput output;
};

struct DumpOptions
{
    std::string list;
    ListOptions listOptions;
};

void importLists (const ImportOptions& options, Session& session)
{
    options.list.applyToProcess (session);
    options.output.check (options.files);
    std::vector<Problem> problems;
    auto project = loadCueLists (options.files, options.list, session, problems);
    project.name = nameOfList (options.output.path);
    options.output.write (project, session);

    for (const auto& problem : problems)
        session.report (problem);

    options.output.tell (session, { { "events", project.list->filteredEvents.size() } });
}

void loadProject (const ImportOptions& options, Session& session)
{
    options.list.applyToProcess (session);
    options.output.check (options.files);
    const auto project = loadList (options.files.front(), options.list, session);
    options.output.write (project, session);

    options.output.tell (session, { { "events", project.list->filteredEvents.size() } });
}

} // namespace

void addImportCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ImportOptions>();
    auto* command = program.add_subcommand (
        "import", "Read cue lists into a project; several are merged in the order of time");
    command->footer (
        "Example:\n  overmarks import reel-1.csv reel-2.csv --fps 24 --origin 01:00:00:00 -o film.overmarks");
    command->add_option ("FILE", options->files, "Cue lists")->required();
    options->output.addTo (*command);
    options->list.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { importLists (*options, session); });
}

void addDumpCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<DumpOptions>();
    auto* command = program.add_subcommand ("dump", "Write the whole list as JSON to standard output");
    command->footer ("Example:\n  overmarks dump reel-2.csv > reel-2.json");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback (
        [options, &session]
        {
            options->listOptions.applyToProcess (session);
            ProjectJSON::write (loadList (options->list, options->listOptions, session),
                                [&session] (const std::string& part) { session.partOfJSON (part); });
        });
}

void addLoadCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ImportOptions>();
    auto* command = program.add_subcommand ("load", "Read what dump has written into a project");
    command->footer ("Example:\n  overmarks load reel-2.json -o film.overmarks");
    command->add_option ("FILE", options->files, "Project in JSON")->required()->expected (1);
    options->output.addTo (*command);
    options->list.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { loadProject (*options, session); });
}

} // namespace overmarks
