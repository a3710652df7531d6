// SPDX-License-Identifier: GPL-3.0-only
#include "UsageAdvice.h"

#include "DocumentFormats.h"
#include "OutputFile.h"
#include "Suggestion.h"

#include <algorithm>

namespace overmarks
{

namespace
{

bool isOption (const std::string& word) { return word.size() > 1 && word.front() == '-'; }

std::string quoted (const std::string& word) { return "\"" + word + "\""; }

std::vector<const CLI::App*> allCommands (const CLI::App& program)
{
    return program.get_subcommands ([] (const CLI::App*) { return true; });
}

std::vector<std::string> namesOf (const std::vector<const CLI::App*>& commands)
{
    std::vector<std::string> names;

    for (const auto* command : commands)
        names.push_back (command->get_name());

    return names;
}

/** What can stand where a command is expected. */
std::vector<std::string> commandNames (const CLI::App& program)
{
    auto names = namesOf (allCommands (program));
    names.insert (names.end(), { "--help", "--version" });
    return names;
}

/** The command that was given, down to its last word ("midi bind"); null without one. */
const CLI::App* givenCommand (const CLI::App& program)
{
    const CLI::App* command = nullptr;

    for (auto given = program.get_subcommands(); ! given.empty(); given = command->get_subcommands())
        command = given.front();

    return command;
}

/** All words of a command. */
std::string wholeName (const CLI::App& command)
{
    const auto* const parent = command.get_parent();
    return parent == nullptr || parent->get_parent() == nullptr
               ? command.get_name()
               : wholeName (*parent) + " " + command.get_name();
}

std::vector<std::string> optionNames (const CLI::App& command)
{
    std::vector<std::string> names;

    for (const auto* option : command.get_options())
        for (const auto& name : option->get_lnames())
            names.push_back ("--" + name);

    return names;
}

/** "--fps=25" is the option "--fps". */
std::string withoutValue (const std::string& word) { return word.substr (0, word.find ('=')); }

/** The words that nobody takes. CLI11 hands them out in an order of its own; the user's order is the arguments'. */
std::vector<std::string> unknownWords (const CLI::App& program, const std::vector<std::string>& arguments)
{
    const auto remaining = program.remaining (true);
    std::vector<std::string> words;

    for (const auto& argument : arguments)
        if (std::find (remaining.begin(), remaining.end(), argument) != remaining.end()
            || std::find (remaining.begin(), remaining.end(), withoutValue (argument)) != remaining.end())
            words.push_back (argument);

    return words;
}

/** The first option among the words, which explains the value behind it as well; else the first word. */
std::string tellingWord (const std::vector<std::string>& words)
{
    const auto option = std::find_if (words.begin(), words.end(), isOption);
    return option != words.end() ? *option : words.empty() ? std::string() : words.front();
}

/** "-q" may stand for the only option that begins so. */
std::string didYouMeanOption (const std::string& typed, const std::vector<std::string>& known)
{
    if (typed.size() != 2)
        return didYouMean (typed, known);

    std::vector<std::string> beginnings;

    for (const auto& name : known)
        if (name.compare (0, 3, "-" + typed) == 0)
            beginnings.push_back (name);

    return beginnings.size() == 1 ? " Did you mean \"" + beginnings.front() + "\"?" : std::string();
}

/** An option that stands before the command, or without one. */
std::string adviceOnFrontOption (const CLI::App& program, const std::string& option)
{
    for (const auto* command : allCommands (program))
    {
        const auto names = optionNames (*command);

        if (std::find (names.begin(), names.end(), option) != names.end())
        {
            const auto* const given = givenCommand (program);
            const auto name = given == nullptr ? std::string ("COMMAND") : wholeName (*given);
            return "The option " + option + " goes behind the command: overmarks " + name + " " + option;
        }
    }

    return "There is no option " + quoted (option) + "." + didYouMeanOption (option, optionNames (program));
}

std::string adviceOnWord (const CLI::App& program, const std::string& word, bool isBeforeCommand)
{
    const auto* const given = givenCommand (program);

    if (isOption (word) && (given == nullptr || isBeforeCommand))
        return adviceOnFrontOption (program, withoutValue (word));

    if (given == nullptr)
        return "There is no command " + quoted (word) + "." + didYouMean (word, commandNames (program));

    if (isOption (word))
        return "There is no option " + quoted (withoutValue (word)) + "."
               + didYouMeanOption (withoutValue (word), optionNames (*given));

    if (const auto further = allCommands (*given); ! further.empty())
        return "There is no command " + quoted (wholeName (*given) + " " + word) + "."
               + didYouMean (word, namesOf (further));

    return wholeName (*given) + " has no use for " + quoted (word);
}

/** The name of the first argument that has to be there and isn't. */
std::string missingArgument (const CLI::App& command)
{
    for (const auto* option : command.get_options())
        if (option->get_positional() && option->get_required() && option->count() == 0)
            return option->get_name();

    return {};
}

/** Whether a word among an option's values was meant for something else: it is a file, or no such value. */
bool isOutOfPlace (const std::string& word, const CLI::Option& option)
{
    const auto formats = documentFormatNames();
    return fileFromPath (juce::String (word)).existsAsFile()
           || (option.get_name() == "--format"
               && std::find (formats.begin(), formats.end(), word) == formats.end());
}

/** An option of several values has taken the argument behind it for one of them; empty if none has. */
std::string adviceOnSwallowedArgument (const CLI::App& program)
{
    const auto* const given = givenCommand (program);
    const auto missing = given == nullptr ? std::string() : missingArgument (*given);

    if (missing.empty())
        return {};

    for (const auto* option : given->get_options())
    {
        if (option->get_positional() || ! option->get_allow_extra_args() || option->results().size() < 2)
            continue;

        for (const auto& word : option->results())
            if (isOutOfPlace (word, *option))
                return missing + " is missing: " + option->get_name()
                       + " takes everything up to the next option, " + quoted (word) + " too. Put " + missing
                       + " before it";
    }

    return {};
}

/** What is told of an option that is missing while another one is mistyped is the mistyping. */
std::string complaint (const CLI::App& program, const CLI::ParseError& error,
                       const std::vector<std::string>& arguments)
{
    if (arguments.empty())
        return "A command is missing";

    const auto word = tellingWord (unknownWords (program, arguments));

    if (! word.empty())
    {
        const auto given = program.get_subcommands();
        const auto place = std::find (arguments.begin(), arguments.end(), word);
        const bool isBeforeCommand =
            ! given.empty()
            && place < std::find (arguments.begin(), arguments.end(), given.front()->get_name());
        return adviceOnWord (program, word, isBeforeCommand);
    }

    if (program.get_subcommands().empty())
        return "A command is missing";

    const auto advice = adviceOnSwallowedArgument (program);
    return advice.empty() ? error.what() : advice;
}

std::string withPlaceOfHelp (const CLI::App& program, std::string advice)
{
    const auto* const given = givenCommand (program);

    if (advice.back() != '.' && advice.back() != '?')
        advice += ".";

    return advice + " See overmarks " + (given == nullptr ? "" : wholeName (*given) + " ") + "--help";
}

} // namespace

std::string usageAdvice (const CLI::App& program, const CLI::ParseError& error,
                         const std::vector<std::string>& arguments)
{
    return withPlaceOfHelp (program, complaint (program, error, arguments));
}

std::string adviceOnUnknownCommand (const CLI::App& program, const std::vector<std::string>& arguments)
{
    const auto* const given = givenCommand (program);

    if (given != nullptr && allCommands (*given).empty())
        return {};

    for (const auto& word : unknownWords (program, arguments))
        if (! isOption (word))
            return withPlaceOfHelp (program, adviceOnWord (program, word, false));

    return {};
}

} // namespace overmarks
