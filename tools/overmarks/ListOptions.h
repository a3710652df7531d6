// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/TextEncoding.h"
#include "core/timecode/TimeInfo.h"
#include "import/frame/EventFileImporter.h"

#include <CLI/CLI.hpp>
#include <juce_core/juce_core.h>

#include <memory>
#include <string>
#include <vector>

namespace overmarks
{

/** The options of every command that takes a list: its time reference, and how a foreign cue list is read.

    The questions below throw WrongUsage for an option that makes no sense. */
class ListOptions final
{
public:
    /** @param inputFormatOption  "--format", or "--input-format" where that name tells what is written */
    void addTo (CLI::App& command, const std::string& inputFormatOption = "--format");

    /** Puts in place what is process-wide: the preferences, the application type, the resource folder. */
    void applyToProcess() const;

    /** The given time reference; what isn't given comes from `project`, or is 25 frames a second from 00:00:00:00. */
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo (const ZEP::Core::TimeInfo* project) const;

    /** The encoding to read text in; unknown where it is to be detected. */
    ZEP::Core::TextEncoding encoding() const;

    /** The names of the user's reasons; at most eight. */
    std::vector<juce::String> reasons() const;

    /** Assigns the columns that --map names. */
    void mapColumns (ZEP::Overmarks::EventFileImporter& importer) const;

    /** Extension, with its dot, that stands for the list on standard input. */
    juce::String extensionOfStandardInput() const;

    bool turnsStarsIntoLineBreaks() const { return lineBreaks; }
    bool hasSettingsFile() const { return ! settingsFile.empty(); }
    bool hasMapping() const { return ! mappings.empty(); }

private:
    void addTimeOptions (CLI::App& command);

    std::string rate;
    std::string origin;
    std::string firstFrameOfAction;
    std::string encodingName;
    std::vector<std::string> mappings;
    std::vector<std::string> reasonNames;
    std::string application = "dublane";
    std::string settingsFile;
    std::string resourceFolder;
    std::string inputFormat;
    bool lineBreaks = false;
};

/** The name of an encoding as --encoding takes it; empty for one that isn't known. */
std::string encodingName (ZEP::Core::TextEncoding encoding);

} // namespace overmarks
