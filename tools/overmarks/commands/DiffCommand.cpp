// SPDX-License-Identifier: GPL-3.0-only
// overmarks diff: what has changed between two versions of a list, and the work of the one carried over to the other.
#include "ListSource.h"
#include "ReportFiles.h"
#include "TextTable.h"
#include "commands/Commands.h"
#include "commands/ProjectOutput.h"
#include "comparison/ChangeReport.h"
#include "comparison/RecordingTransfer.h"

#include "core/timecode/TCToolbox.h"

#include <memory>
#include <optional>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

struct DiffOptions
{
    std::string oldPath, newPath;
    ListOptions both, forOld;
    ReportFiles reports;
    ProjectOutput merged;
    bool applies = false;
};

enum class Side
{
    old,
    now
};

const std::string& pathOf (Side side, const DiffOptions& options)
{
    return side == Side::old ? options.oldPath : options.newPath;
}

bool isProjectFile (Side side, const DiffOptions& options)
{
    return isProjectFile (pathOf (side, options), options.both);
}

/** The options that one of the two lists is read with. Nothing is said of those that only the other one is read with. */
ListOptions optionsFor (Side side, const DiffOptions& options)
{
    const auto other = side == Side::old ? Side::now : Side::old;
    auto chosen = side == Side::old ? options.forOld.over (options.both) : options.both;

    if (pathOf (side, options) != "-" && pathOf (other, options) == "-")
        chosen.forgetInputFormat();
    if (isProjectFile (side, options) && ! isProjectFile (other, options))
        chosen.forgetImportOptions();
    if (side == Side::old && ! isProjectFile (other, options))
        chosen.forgetMappingToKeep();

    return chosen;
}

ComparedList readList (const std::string& path, const ListOptions& options, Session& session)
{
    ListScope scope;
    const auto project = loadList (path, options, session, &scope);
    return { project, std::move (scope) };
}

juce::String rateInWords (const _TCDef& def)
{
    const auto name = TCToolbox::rateNameForTCDef (def);
    return name.isNotEmpty() ? name : juce::String (framesPerSecond (def));
}

/** Reads the other list. One of another program is taken as if it were at the rate and the origin of the project that it is compared
    with. */
ComparedList readLike (const ComparedList& known, Side side, const DiffOptions& options, Session& session)
{
    auto chosen = optionsFor (side, options);
    const auto& path = pathOf (side, options);
    const auto& pathOfKnown = pathOf (side == Side::old ? Side::now : Side::old, options);

    if (known.scope.isProject && ! isProjectFile (side, options))
    {
        const auto& info = *known.project.timeInfo;

        if (! chosen.tellsTime())
            session.say (juce::String (path) + ": its times are read at " + rateInWords (info.tcDef)
                         + " frames per second from "
                         + TCToolbox::stringFromTCTime (info.timeOrigin, info.tcDef.dropFrame)
                         + ", as those of " + juce::String (pathOfKnown));

        chosen.assumeTimeInfo (info);
    }

    return readList (path, chosen, session);
}

/** Old and new list. A project comes first, since the other one may follow its rate. */
std::pair<ComparedList, ComparedList> readLists (const DiffOptions& options, Session& session)
{
    const auto readFirst = [&] (Side side)
    { return readList (pathOf (side, options), optionsFor (side, options), session); };

    if (isProjectFile (Side::now, options) && ! isProjectFile (Side::old, options))
    {
        auto now = readFirst (Side::now);
        auto old = readLike (now, Side::old, options, session);
        return { std::move (old), std::move (now) };
    }

    auto old = readFirst (Side::old);
    auto now = readLike (old, Side::now, options, session);
    return { std::move (old), std::move (now) };
}

/** What has to be known of the whole comparison. */
std::vector<juce::String> remarksOn (const ComparedList& old, const ComparedList& now, const Pairing& pairing)
{
    std::vector<juce::String> remarks;
    const auto &oldDef = old.project.timeInfo->tcDef, &newDef = now.project.timeInfo->tcDef;

    if (rateInWords (oldDef) != rateInWords (newDef))
        remarks.push_back ("The frame rates differ, " + rateInWords (oldDef) + " and " + rateInWords (newDef)
                           + ": the timecodes are compared as they are shown, not the running times");
    if (pairing.isRenumbered)
        remarks.emplace_back (
            "Most lines have another cue number: lines were found by their texts first, not by their numbers");

    return remarks;
}

void applyWork (const DiffOptions& options, const ComparedList& old, ComparedList& now,
                const Pairing& pairing, Session& session)
{
    now.project.makeCurrent();
    const auto result = carryRecordings (old, now, pairing);
    auto project = now.project;

    if (! now.scope.isProject)
    {
        if (old.scope.isProject)
            project = withOldIdentities (old, now, pairing);

        project.name = nameOfList (options.merged.path);
    }

    options.merged.write (project, session);

    for (const auto& remark : result.remarks)
        session.say (remark);

    session.say ("Carried over to " + counted (result.carried, "event"));

    for (const auto& lost : result.lost)
        session.report ({ juce::String (options.oldPath), 0, {}, lost });

    json members { { "events", project.list->filteredEvents.size() },
                   { "carried", result.carried },
                   { "messages", session.messagesAsJSON() } };
    members.update (options.reports.asMembers());
    options.merged.tell (session, members);
}

void tellChanges (const ListChanges& changes, const ReportFiles& reports, Session& session)
{
    if (session.wantsJSON)
        session.dataAsJSON (changesAsJSON (changes, reports.asMembers()));
    else if (const auto table = changeTable (changes, standardOutputTakesColours()); ! table.empty())
        session.data (table);

    session.say (summaryText (changes));

    if (! changes.all().empty())
        session.exitStatus = 1;
}

void checkOptions (const DiffOptions& options, const Session& session)
{
    if (options.oldPath == "-" && options.newPath == "-")
        throw WrongUsage ("Standard input can be read only once");
    if (options.applies && options.merged.path.empty())
        throw WrongUsage ("--apply needs -o, the project to write");
    if (! options.applies && ! options.merged.path.empty())
        throw WrongUsage ("-o belongs to --apply; --html and --csv write what has changed");

    options.both.applyToProcess (session);
    options.forOld.over (options.both).check();
    options.reports.check ({ options.oldPath, options.newPath });

    if (options.applies)
        options.merged.check ({ options.oldPath, options.newPath });
}

void compareLists (const DiffOptions& options, Session& session)
{
    checkOptions (options, session);
    auto [old, now] = readLists (options, session);
    const auto& counting = now.project.timeInfo->tcDef;
    old.countAs (counting);
    now.countAs (counting);
    const auto pairing = pairEvents (old, now);
    const auto remarks = remarksOn (old, now, pairing);

    for (const auto& remark : remarks)
        session.say (remark);

    {
        const ListChanges changes (old, now, pairing);
        options.reports.write (
            session,
            [&] {
                return changePage (changes, juce::String (options.oldPath), juce::String (options.newPath),
                                   remarks);
            },
            [&] { return changesAsCSV (changes); });

        if (! options.applies)
            tellChanges (changes, options.reports, session);
    }

    if (options.applies)
        applyWork (options, old, now, pairing, session);
}

} // namespace

void addDiffCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<DiffOptions>();
    auto* command = program.add_subcommand ("diff", "Show what has changed between two versions of a list");
    command->footer ("Examples:\n  overmarks diff reel-2-v1.csv reel-2-v2.csv --html changes.html\n"
                     "  overmarks diff --apply film.overmarks new-cut.csv -o new-cut.overmarks");
    command->add_option ("OLD", options->oldPath, "The earlier version: project or cue list")->required();
    command->add_option ("NEW", options->newPath, "The later version: project or cue list")->required();
    command->add_flag ("--apply", options->applies,
                       "Carry takes, done, notes and reasons of OLD over to NEW; -o names the result");
    options->reports.addTo (*command, "the changes");
    options->merged.addTo (*command, *command->get_option ("--force"), *command->get_option ("--dry-run"));
    options->both.addTo (*command);
    options->forOld.addForOneOfTwoTo (*command, "old");
    session.addOutputOptions (*command);
    command->callback ([options, &session] { compareLists (*options, session); });
}

} // namespace overmarks
