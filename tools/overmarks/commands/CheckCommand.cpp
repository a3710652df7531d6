// SPDX-License-Identifier: GPL-3.0-only
// overmarks check: what is wrong with a list, before the studio finds out.
#include "FilterOptions.h"
#include "ListSource.h"
#include "OptionValues.h"
#include "ProjectForm.h"
#include "ReportFiles.h"
#include "commands/Commands.h"
#include "quality/CheckReport.h"

#include <memory>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

struct CheckOptions
{
    std::string list;
    std::vector<std::string> rules;
    std::vector<std::string> skippedRules;
    CheckOrder order;
    FilterOptions filter;
    ListOptions listOptions;
    ReportFiles files;

    CLI::Option* maxCharactersPerSecond = nullptr; ///< each is the command's
    CLI::Option* minSeconds = nullptr;
    CLI::Option* maxSeconds = nullptr;
    CLI::Option* maxLines = nullptr;
};

void refuseOddLimits (const CheckLimits& limits)
{
    // Not a number is no number above zero either.
    if (! (limits.maxCharactersPerSecond > 0))
        throw WrongUsage ("--max-cps: it has to be more than 0");
    if (! (limits.minSeconds >= 0))
        throw WrongUsage ("--min-seconds: it can't be less than 0");
    if (! (limits.maxSeconds > limits.minSeconds))
        throw WrongUsage ("--max-seconds: it has to be more than --min-seconds");
    if (limits.maxLines < 1)
        throw WrongUsage ("--max-lines: it has to be 1 at least");
}

/** A limit of a rule that isn't looked for. */
void sayWhatIsUnused (const CheckOptions& options, const Session& session)
{
    const auto say = [&] (const CLI::Option* option, CheckRule rule)
    {
        if (option->count() > 0 && options.order.rules.count (rule) == 0)
            session.say (juce::String (option->get_name()) + " makes no difference: " + rowOf (rule).id
                         + " is not looked for");
    };
    say (options.maxCharactersPerSecond, CheckRule::tooFast);
    say (options.minSeconds, CheckRule::tooShort);
    say (options.maxSeconds, CheckRule::tooLong);
    say (options.maxLines, CheckRule::lineCount);
}

void tell (const CheckReport& report, const ReportFiles& files, const Session& session)
{
    if (session.wantsJSON)
    {
        json document;
        document["findings"] = report.findings();
        document["checked"] = report.result.checkedEvents;
        document["problems"] = session.problemsAsJSON();
        document.update (files.asMembers());
        session.data (document);
    }
    else if (! report.result.findings.empty())
    {
        session.data (report.table());
    }

    session.say (report.summary());

    if (report.result.disabledEvents > 0)
        session.say (counted (report.result.disabledEvents, "disabled event")
                     + " left out; --disabled takes them in");
}

void check (CheckOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    options.order.rules = chosenCheckRules (options.rules, options.skippedRules);
    refuseOddLimits (options.order.limits);
    options.files.check ({ options.list });
    sayWhatIsUnused (options, session);

    std::vector<CellProblem> cells;
    const auto project = loadList (options.list, options.listOptions, session, cells);
    options.filter.applyTo (project, session);
    const auto result = checkList (project, options.order, cells);

    for (const auto& problem : result.problems)
        session.report (problem);

    if (! result.findings.empty())
        session.exitStatus = 1;

    const auto name =
        options.list == "-" ? juce::String ("Standard input") : fileFromPath (options.list).getFileName();
    const CheckReport report { name, project, options.order, result, options.filter.inWords() };
    options.files.write (
        session, [&report] { return report.page(); }, [&report] { return report.csv(); });
    tell (report, options.files, session);
}

std::string footer()
{
    std::string text ("Rules:\n");
    constexpr std::size_t width = 24;

    for (const auto& row : checkRules())
    {
        std::string id (row.id);
        id.resize (width, ' ');
        text += "  " + id + row.words + "\n";
    }

    return text + "The exit status is 1 when something was found.\n"
           + "Example:\n  overmarks check film.overmarks --skip non-latin1,ds-taker-overflow --html report.html";
}

void addRuleOptions (CLI::App& command, CheckOptions& options)
{
    takesSomeOf (command
                     .add_option ("--rule", options.rules,
                                  "Look for these rules alone, joined by commas; repeatable (all)")
                     ->allow_extra_args (false),
                 checkRuleIds(), "RULE");
    takesSomeOf (
        command.add_option ("--skip", options.skippedRules, "Don't look for these rules; repeatable")
            ->allow_extra_args (false),
        checkRuleIds(), "RULE");

    auto& limits = options.order.limits;
    options.maxCharactersPerSecond =
        command.add_option ("--max-cps", limits.maxCharactersPerSecond,
                            "too-fast: more characters a second, blanks included ("
                                + shortNumber (limits.maxCharactersPerSecond).toStdString() + ")");
    options.minSeconds = command.add_option ("--min-seconds", limits.minSeconds,
                                             "too-short: fewer seconds ("
                                                 + shortNumber (limits.minSeconds).toStdString() + ")");
    options.maxSeconds =
        command.add_option ("--max-seconds", limits.maxSeconds,
                            "too-long: more seconds (" + shortNumber (limits.maxSeconds).toStdString() + ")");
    options.maxLines =
        command.add_option ("--max-lines", limits.maxLines,
                            "line-count: more lines of text (" + std::to_string (limits.maxLines) + ")");
    command.add_flag ("--disabled", options.order.withDisabled, "Also look at disabled events");
}

} // namespace

void addCheckCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<CheckOptions>();
    auto* command = program.add_subcommand ("check", "Report what is wrong with the list");
    command->footer (footer());
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    addRuleOptions (*command, *options);
    options->files.addTo (*command, "the findings");
    options->filter.addTo (*command);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { check (*options, session); });
}

} // namespace overmarks
