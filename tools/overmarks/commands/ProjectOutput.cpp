// SPDX-License-Identifier: GPL-3.0-only
#include "commands/ProjectOutput.h"

#include "OutputFile.h"
#include "ProjectForm.h"
#include "StagingFolder.h"

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

std::optional<ProjectForm> projectFormOf (const juce::File& file)
{
    return projectFormNamed (file.getFileExtension().substring (1));
}

} // namespace

void ProjectOutput::addTo (CLI::App& command)
{
    command.add_option ("-o,--output", path, "The project to write (.overmarks or .json)")
        ->required()
        ->type_name ("PROJECT");
    command.add_flag ("--force", policy.force, "Replace an existing file");
    command.add_flag ("--dry-run", policy.dryRun, "Only say what would be written");
}

void ProjectOutput::addTo (CLI::App& command, const CLI::Option& forceOption, const CLI::Option& dryRunOption)
{
    force = &forceOption;
    dryRun = &dryRunOption;
    command.add_option ("-o,--output", path, "The project to write (.overmarks or .json)")
        ->type_name ("PROJECT");
}

OutputPolicy ProjectOutput::getPolicy() const
{
    return force == nullptr ? policy : OutputPolicy { force->count() > 0, dryRun->count() > 0 };
}

void ProjectOutput::check (const std::vector<std::string>& sources, bool isBeingEdited) const
{
    const auto file = fileFromPath (path);

    if (path == "-")
        throw WrongUsage ("-o: a project is a file; overmarks dump writes its JSON form to standard output");
    if (! projectFormOf (file).has_value() && ! isDeviceOrPipe (file))
        throw WrongUsage (path + ": a project has the extension .overmarks, or .json for its JSON form");
    if (file.getFileName().isEmpty())
        throw WrongUsage ("-o: there is no name of a project");

    refuseFolderOf (file);

    for (const auto& source : sources)
    {
        if (! isTheList (file, source))
            continue;

        if (isBeingEdited)
            return;

        throw CommandFailure (path + ": the project would replace the list that it is made from");
    }

    refuseToReplace (file, getPolicy());
}

void ProjectOutput::write (const Project& project, const Session& session) const
{
    messagesBefore = session.messagesAsJSON(); // the project has a member of its own
    const auto file = fileFromPath (path);
    const auto count = counted (project.list->filteredEvents.size(), "event");

    if (getPolicy().dryRun)
    {
        session.say ("Would write " + file.getFullPathName() + ": " + count);
        return;
    }

    writeProject (project, file, projectFormOf (file).value_or (ProjectForm::text));
    session.say ("Wrote " + file.getFullPathName() + ": " + count);
}

void ProjectOutput::tell (const Session& session, const json& members) const
{
    if (! session.wantsJSON)
        return;

    json document { { "project", path }, { "messages", messagesBefore } };
    document.update (members);
    document["problems"] = session.problemsAsJSON();

    if (getPolicy().dryRun)
        document["dryRun"] = true;

    session.data (document);
}

} // namespace overmarks
