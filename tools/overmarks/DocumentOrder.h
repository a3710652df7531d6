// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "DocumentFormats.h"
#include "OutputFile.h"
#include "Session.h"

#include "export/frame/EventExportSettingsSet.h"
#include "list/Project.h"

#include <CLI/CLI.hpp>
#include <juce_core/juce_core.h>

#include <memory>
#include <string>
#include <vector>

namespace overmarks
{

/** The options of every command that writes documents, and the writing itself. */
class DocumentOrder final
{
public:
    void addTo (CLI::App& command);

    /** Writes one document of the events that the list shows, or one for each character.
        @param source  the path of the list, which is never overwritten
        @returns the files; nothing is written in a dry run. Throws CommandFailure */
    std::vector<juce::File> write (const ZEP::Overmarks::Project& project, const std::string& source,
                                   const DocumentFormat& format, const juce::File& folder,
                                   const juce::String& fileName) const;

    bool isDryRun() const { return policy.dryRun; }
    const OutputPolicy& outputPolicy() const { return policy; }

private:
    std::shared_ptr<ZEP::Overmarks::EventExportSettingsSet> settingsFor (
        const ZEP::Overmarks::Project& project, const std::string& source,
        const DocumentFormat& format) const;
    juce::String titleFor (const ZEP::Overmarks::Project& project) const;
    int delimiterNumber() const;

    OutputPolicy policy;
    bool byCharacter = false;
    bool combine = false;
    bool yes = false;
    bool takeNumbers = false;
    std::string delimiter = "comma";
    std::string title;
    std::string studio;
    std::string supervisor;
    std::string company;
    std::string timeline;
    std::string reel;
    std::string pictureVersion;
    std::string language;
};

} // namespace overmarks
