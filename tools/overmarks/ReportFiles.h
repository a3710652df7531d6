// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "HTMLPage.h"
#include "OutputFile.h"
#include "Session.h"

#include <CLI/CLI.hpp>
#include <juce_core/juce_core.h>

#include <functional>
#include <string>
#include <vector>

namespace overmarks
{

/** The files that a command writes of what it has found: --html for people, --csv for spreadsheets, with --force and --dry-run. */
class ReportFiles final
{
public:
    /** @param contents  what the files hold, for the help: "the findings" */
    void addTo (CLI::App& command, const std::string& contents);

    /** Whether the files can be written, before any work is done. Throws CommandFailure or WrongUsage.
        @param sources  what the command reads: none of it is replaced */
    void check (const std::vector<std::string>& sources) const;

    bool wantsHTML() const { return ! htmlPath.empty(); }
    bool wantsCSV() const { return ! csvPath.empty(); }

    /** Writes the files that are wanted and says so; what isn't wanted isn't made.
        @param makePage  the page of --html
        @param makeCSV   the bytes of --csv, from csvText() */
    void write (const Session& session, const std::function<HTMLPage()>& makePage,
                const std::function<std::string()>& makeCSV) const;

    /** The paths of the files that are wanted, for the "files" of a JSON document. */
    json pathsAsJSON() const;

    bool isDryRun() const { return policy.dryRun; }

    /** For a JSON document: "files" if any are wanted, and "dryRun" in a dry run. */
    json asMembers() const;

private:
    std::vector<std::string> paths() const;

    std::string htmlPath;
    std::string csvPath;
    OutputPolicy policy;
};

/** A table as comma-separated text, quoted as RFC 4180 has it, in UTF-8 with the mark that spreadsheets look for.
    @param columns  the first row */
std::string csvText (const std::vector<juce::String>& columns,
                     const std::vector<std::vector<juce::String>>& rows);

} // namespace overmarks
