// SPDX-License-Identifier: GPL-3.0-only
#include "ProjectForm.h"

#include "OutputFile.h"
#include "Session.h"

#include "core/system/FileInput.h"
#include "list/ProjectFile.h"
#include "list/ProjectJSON.h"

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

/** The bytes of a project's file. @param shownPath  what messages call it */
std::string wholeFile (const juce::File& file, const juce::String& shownPath, std::uint64_t most)
{
    std::string bytes;
    const auto result = ZEP::Core::FileInput::readWhole (file.getFullPathName(), bytes, most);

    if (result.failed())
        throw CommandFailure (
            (shownPath == "-" ? juce::String ("The project on standard input can't be read") : shownPath)
            + ": " + result.getErrorMessage());

    return bytes;
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
            error =
                shownPath == "-"
                    ? ProjectFile::fromBytes (wholeFile (file, shownPath, ProjectFile::limits().bytesOfFile),
                                              "on standard input", project)
                    : ProjectFile::load (file, project);
            break;
        case ProjectForm::text:
            error = ProjectJSON::fromText (wholeFile (file, shownPath, ProjectJSON::limits().bytes), project);

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
        {
            const auto reader = waitForReader (file);

            if (const auto error = ProjectFile::save (project, file); error.isNotEmpty())
                throw CommandFailure (error);

            break;
        }
        case ProjectForm::text: writeWholeFile (file, ProjectJSON::toText (project)); break;
    }
}

} // namespace overmarks
