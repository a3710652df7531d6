// SPDX-License-Identifier: GPL-3.0-only
// overmarks stats: how much there is to speak, who speaks it, and how much of it is recorded.
#include "FilterOptions.h"
#include "ListSource.h"
#include "OptionValues.h"
#include "ProjectForm.h"
#include "ReportFiles.h"
#include "Suggestion.h"
#include "commands/Commands.h"
#include "statistics/StatisticsForms.h"
#include "statistics/StatisticsPage.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

struct StatsOptions
{
    std::string list;
    std::string reels = "hour";
    ReportFiles files;
    ListOptions listOptions;
    FilterOptions filter;
};

const std::vector<std::pair<std::string, ReelRule>>& reelRules()
{
    static const std::vector<std::pair<std::string, ReelRule>> rules { { "hour", ReelRule::hour },
                                                                       { "cue", ReelRule::cueNumber },
                                                                       { "none", ReelRule::none } };
    return rules;
}

ReelRule reelRuleNamed (const std::string& wanted)
{
    for (const auto& [name, rule] : reelRules())
        if (name == wanted)
            return rule;

    refuseValue ("--reels", wanted, namesOfTable (reelRules()));
}

void tell (const StatsOptions& options, const Statistics& statistics, const json& messages,
           const Session& session)
{
    if (! session.wantsJSON)
    {
        session.data (statisticsTables (statistics));
        return;
    }

    auto document = statisticsAsJSON (statistics);
    document["files"] = options.files.pathsAsJSON();
    document["messages"] = messages;
    document["problems"] = session.problemsAsJSON();

    if (options.files.isDryRun())
        document["dryRun"] = true;

    session.data (document);
}

void showStatistics (const StatsOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    const auto reels = reelRuleNamed (options.reels);
    options.files.check ({ options.list });
    const auto project = loadList (options.list, options.listOptions, session);
    options.filter.applyTo (project, session);
    const Statistics statistics (project, { reels, ! options.filter.hasFilter(), options.filter.hasOrder() });

    for (const auto& note : notesOn (statistics))
        session.say (note);

    const auto messages = session.messagesAsJSON();
    options.files.write (
        session, [&] { return statisticsPage (statistics, nameOfList (options.list)); },
        [&] { return statisticsAsCSV (statistics); });
    tell (options, statistics, messages, session);
}

} // namespace

void addStatsCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<StatsOptions>();
    auto* command = program.add_subcommand (
        "stats", "Count lines, cues, words and seconds of each character, actor and reel");
    command->footer ("Example:\n  overmarks stats film.overmarks --html film.html");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    options->files.addTo (*command, "the numbers");
    takesOneOf (command->add_option ("--reels", options->reels,
                                     "What tells the reel of a line: the hour of its timecode, the beginning "
                                     "of its cue number, or nothing (hour)"),
                namesOfTable (reelRules()));
    options->filter.addTo (*command);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showStatistics (*options, session); });
}

} // namespace overmarks
