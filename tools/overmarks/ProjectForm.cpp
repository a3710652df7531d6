// SPDX-License-Identifier: GPL-3.0-only
#include "ProjectForm.h"

#include "OutputFile.h"
#include "Session.h"

#include "list/ProjectFile.h"
#include "list/ProjectJSON.h"

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

std::string wholeText (const juce::File& file)
{
    juce::MemoryBlock block;
    juce::FileInputStream stream (file);

    if (stream.failedToOpen())
        throw CommandFailure (file.getFullPathName() + ": " + stream.getStatus().getErrorMessage());

    stream.readIntoMemoryBlock (block);
    return { block.begin(), block.end() };
}

} // namespace

std::optional<ProjectForm> projectFormNamed (const juce::String& name)
{
    if (name.equalsIgnoreCase ("overmarks"))
        return ProjectForm::binary;
    if (name.equalsIgnoreCase ("json"))
        return ProjectForm::text;

    return std::nullopt;
}

const std::vector<std::string>& projectFormNames()
{
    static const std::vector<std::string> names { "overmarks", "json" };
    return names;
}

Project readProject (const juce::File& file, const juce::String& shownPath, ProjectForm form)
{
    Project project;
    juce::String error;

    switch (form)
    {
        case ProjectForm::binary:
            error = shownPath == "-" ? ProjectFile::fromBytes (wholeText (file), "on standard input", project)
                                     : ProjectFile::load (file, project);
            break;
        case ProjectForm::text:
            error = ProjectJSON::fromText (wholeText (file), project);

            if (error.isNotEmpty())
                error = shownPath + ": " + error;

            break;
    }

    if (error.isNotEmpty())
        throw CommandFailure (error);

    return project;
}

void writeProject (const Project& project, const juce::File& file, ProjectForm form)
{
    switch (form)
    {
        case ProjectForm::binary:
            if (const auto error = ProjectFile::save (project, file); error.isNotEmpty())
                throw CommandFailure (error);

            break;
        case ProjectForm::text: writeWholeFile (file, ProjectJSON::toText (project)); break;
    }
}

} // namespace overmarks
