// SPDX-License-Identifier: GPL-3.0-only
// overmarks completion and overmarks --man: what shells and manuals are told of the program.
#include "OptionValues.h"
#include "Suggestion.h"
#include "commands/Commands.h"
#include "manual/Completion.h"
#include "manual/ManPage.h"

#include "core/system/SystemUtility.h"

#include <memory>
#include <utility>

namespace overmarks
{

namespace
{

using Script = std::string (*) (const CommandDescription&);

const std::vector<std::pair<std::string, Script>>& shells()
{
    static const std::vector<std::pair<std::string, Script>> all {
        { "bash", bashCompletion },
        { "zsh", zshCompletion },
        { "fish", fishCompletion },
    };
    return all;
}

void writeCompletion (CLI::App& program, const std::string& shell, const Session& session)
{
    for (const auto& [name, script] : shells())
    {
        if (name != shell)
            continue;

        const auto text = script (describe (program));

        if (session.wantsJSON)
            session.data (json { { "shell", shell }, { "script", text } });
        else
            session.data (text);

        return;
    }

    refuseValue ("SHELL", shell, namesOfTable (shells()));
}

void writeManual (CLI::App& program, const Session& session)
{
    if (! program.remaining (true).empty()) // of which the program's end will tell
        throw CLI::Success();

    const auto page =
        manPage (describe (program), ZEP::Core::SystemUtility::executableVersion().toStdString());

    if (session.wantsJSON)
        session.data (json { { "man", page } });
    else
        session.data (page);

    throw CLI::Success(); // no command has to follow
}

} // namespace

void addCompletionCommand (CLI::App& program, Session& session)
{
    auto shell = std::make_shared<std::string>();
    auto* command =
        program.add_subcommand ("completion", "Write a script that completes commands, options and values");
    command->footer (
        "Example:\n  overmarks completion bash > ~/.local/share/bash-completion/completions/overmarks");
    takesOneOf (command->add_option ("SHELL", *shell, "The shell that reads the script"),
                namesOfTable (shells()))
        ->required();
    session.addOutputOptions (*command);
    command->callback ([&program, shell, &session] { writeCompletion (program, *shell, session); });
}

void addManualOption (CLI::App& program, Session& session)
{
    program.add_flag_callback (
        "--man", [&program, &session] { writeManual (program, session); },
        "Write the manual page; overmarks --man | man -l - shows it");
}

} // namespace overmarks
