// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"
#include "columns/ColumnMappings.h"

#include "core/text/TextEncoding.h"
#include "core/timecode/TimeInfo.h"
#include "import/frame/EventFileImporter.h"

#include <CLI/CLI.hpp>
#include <juce_core/juce_core.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace overmarks
{

/** What becomes of the preferences file: a command that edits it makes the one that isn't there. */
enum class SettingsUse
{
    read,
    edited
};

/** The options of every command that takes a list: its time reference, and how a foreign cue list is read.

    The questions below throw WrongUsage for an option that makes no sense. */
class ListOptions final
{
public:
    /** @param inputFormatOption  "--format", or "--input-format" where that name tells what is written */
    void addTo (CLI::App& command, const std::string& nameOfInputFormat = "--format");

    /** The options that one of two lists may have for itself, under names such as --old-fps. @param list  "old" */
    void addForOneOfTwoTo (CLI::App& command, const std::string& list);

    /** These options for one list, and what isn't given as the other ones have it. */
    ListOptions over (const ListOptions& common) const;

    /** For a list that these options were not meant for: nothing is said of those that make no difference to it. */
    void forgetImportOptions();
    void forgetInputFormat() { inputFormat.clear(); }

    /** For the first of two lists: the assignments are kept when the second one has been read. */
    void forgetMappingToKeep() { keepsMapping = false; }

    /** A list that has no time reference of its own gets this one, where no option tells otherwise. */
    void assumeTimeInfo (const ZEP::Core::TimeInfo& info)
    {
        assumed = std::make_shared<ZEP::Core::TimeInfo> (info);
    }

    /** Whether an option tells the rate or the origin. */
    bool tellsTime() const { return ! rate.empty() || ! origin.empty(); }

    /** --reasons, --application, --settings and --resources alone, for commands without a list. */
    void addProcessOptionsTo (CLI::App& command);

    /** Puts in place what is process-wide: the preferences, the application type, the resource folder. What no list could
        make good in the other options is found here too. A preferences file that is missing where it is only read is said. */
    void applyToProcess (const Session& session, SettingsUse use = SettingsUse::read) const;

    /** Throws WrongUsage for what no list could make good. */
    void check() const;

    /** The name that the user has given an option by: "--old-map" for "map" where that list has its own. */
    std::string optionName (const std::string& name) const;

    /** The given time reference; what isn't given comes from `project`, or is 25 frames a second from 00:00:00:00. A time of
        the project that doesn't exist at the given rate is wrong usage. */
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo (const ZEP::Core::TimeInfo* project) const;

    /** The encoding to read text in; unknown where it is to be detected. */
    ZEP::Core::TextEncoding encoding() const;

    /** The names of the user's reasons; at most eight. */
    std::vector<juce::String> reasons() const;

    /** Assigns the columns that --mapping and --map name, where --map has the last word.
        @returns what there is to say of columns of --mapping that the list doesn't have */
    std::vector<juce::String> mapColumns (ZEP::Overmarks::EventFileImporter& importer) const;

    /** Keeps the assignments under the name that --save-mapping gives, and says so; not in a dry run. To be called when the
        lists have been read, so that nothing is kept that led nowhere. */
    void saveMapping (const Session& session) const;

    /** The tracks of a Pro Tools text that are read: empty for all, else their names; nothing for the cue tracks. */
    std::optional<std::vector<juce::String>> tracks() const;

    /** The sheet of a workbook that is read; empty for the one in front. */
    const std::string& sheet() const { return sheetName; }

    /** The given ones of the options that only the import of a foreign cue list follows. */
    std::vector<std::string> givenImportOptions() const;

    /** Whether standard input's format was given, which a list in a file doesn't need. */
    bool hasInputFormat() const { return ! inputFormat.empty(); }
    const std::string& nameOfInputFormatOption() const { return inputFormatOption; }

    /** Extension, with its dot, that stands for the list on standard input. */
    juce::String extensionOfStandardInput() const;

    bool turnsStarsIntoLineBreaks() const { return lineBreaks; }
    bool hasSettingsFile() const { return ! settingsFile.empty(); }
    juce::File getSettingsFile() const; ///< only if there is one
    bool hasTracks() const { return ! trackNames.empty(); }
    bool hasMapping() const { return ! mappings.empty() || ! mappingName.empty(); }

private:
    void addTimeOptions (CLI::App& command);
    void addImportOptions (CLI::App& command);
    void addMappingOptions (CLI::App& command);
    void sayWhetherSettingsAreMissing (const Session& session, SettingsUse use) const;
    void checkMappings() const;
    juce::String plainInputFormat() const;
    ColumnMapping assignments() const;
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfoOfProject (const ZEP::Core::TimeInfo& project) const;

    std::string whose;                ///< "old-" for the options of one of two lists, else empty
    std::set<std::string> ownOptions; ///< which of them that list has for itself, by their common names
    std::string rate;
    std::string origin;
    std::string firstFrameOfAction;
    std::string encodingName;
    std::vector<std::string> mappings;
    std::string mappingName;
    std::string newMappingName;
    std::vector<std::string> reasonNames;
    std::string application = "dublane";
    std::string settingsFile;
    std::string resourceFolder;
    std::string inputFormatOption;
    std::string inputFormat;
    std::vector<std::string> trackNames;
    std::string sheetName;
    bool lineBreaks = false;
    bool keepsMapping = true;
    std::shared_ptr<ZEP::Core::TimeInfo> assumed;
    std::vector<const CLI::Option*> importOptions; ///< owned by their command
    const CLI::App* owner = nullptr;
};

/** The name of an encoding as --encoding takes it; empty for one that isn't known. */
std::string encodingName (ZEP::Core::TextEncoding encoding);

} // namespace overmarks
