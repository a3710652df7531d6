// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "DocumentFormats.h"
#include "OutputFile.h"
#include "Session.h"

#include "export/frame/EventExportSettingsSet.h"
#include "list/Project.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace overmarks
{

/** What a document looks like and says, as told by the options of every command that writes documents. */
class DocumentOptions final
{
public:
    void addTo (CLI::App& command);

    /** Those that the overview sheet has. */
    void addToOverview (CLI::App& command);

    /** Throws WrongUsage for a value that no document knows. */
    void check() const;

    /** Says which of the given options none of the formats uses: a document without the studio's name is noticed too late.
        @param names  of the formats that are written, for the message */
    void sayWhatIsUnused (const std::vector<const DocumentFormat*>& formats, const std::string& names,
                          const Session& session) const;

    /** The format itself, or what it is with the engine that --engine names. */
    [[nodiscard]] const DocumentFormat& madeAs (const DocumentFormat& format) const;

    /** Whether the document is made as a file for each character. */
    [[nodiscard]] bool hasFileForEachCharacter (const DocumentFormat& format) const;

    /** The settings of one document of the events that the list shows; its folder and its name are still missing. Texts, layout and
        delimiter that aren't given are those that the project keeps; flags count only when they are given.
        @param source  the path of the list */
    std::shared_ptr<ZEP::Overmarks::EventExportSettingsSet> settingsFor (
        const ZEP::Overmarks::Project& project, const std::string& source,
        const DocumentFormat& format) const;

    OutputPolicy policy;
    bool byCharacter = false;
    bool yes = false;

private:
    template <typename Value>
    CLI::Option* add (CLI::App& command, const std::string& name, Value& value,
                      const std::string& explanation);

    void addSheetTo (CLI::App& command);
    void addPolicyTo (CLI::App& command);

    bool combine = false;
    bool takeNumbers = false;
    std::string layout;    ///< empty: not given
    std::string delimiter; ///< empty: not given
    std::string title;
    std::string studio;
    std::string supervisor;
    std::string company;
    std::string timeline;
    std::string reel;
    std::string pictureVersion;
    std::string language;
    std::string paper;                        ///< "a4", "letter" or empty for the usual paper of the place
    std::string engine;                       ///< empty: not given
    std::string browser;                      ///< empty: not given
    std::vector<const CLI::Option*> declared; ///< owned by their command
};

} // namespace overmarks
