// SPDX-License-Identifier: GPL-3.0-only
// The command-line program: finds the command, runs it, and turns every failure into words and an exit status.
#include "JSONRequest.h"
#include "Session.h"
#include "UsageAdvice.h"
#include "commands/Commands.h"

#include "core/system/SystemUtility.h"

#include <CLI/CLI.hpp>
#include <Poco/UTF8Encoding.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace
{

using namespace overmarks;

constexpr int failed = 1, wrongUsage = 2;

void addCommands (CLI::App& program, Session& session)
{
    program.require_subcommand (1);
    program.set_version_flag ("--version",
                              "overmarks " + ZEP::Core::SystemUtility::executableVersion().toStdString());
    session.addOutputOptions (program);
    addManualOption (program, session);
    program.footer ("overmarks COMMAND --help tells the options of a command, with an example.\n"
                    "Example:\n  overmarks convert reel-2.csv reel-2.pdf --origin 02:00:00:00");

    for (auto* add :
         { addRowsCommand, addImportCommand, addDumpCommand, addLoadCommand, addListCommand, addSearchCommand,
           addDiffCommand, addCheckCommand, addSetCommand, addConvertCommand, addExportCommand,
           addOverviewCommand, addStatsCommand, addMIDICommand, addFormatsCommand, addKeysCommand,
           addReasonsCommand, addPreferencesCommand, addCompletionCommand })
        add (program, session);
}

class Failure final
{
public:
    Failure (const Session& sessionOfRun, bool asJSON) : session (sessionOfRun), inJSON (asJSON) {}

    int tell (const std::string& message, int status) const
    {
        if (inJSON)
            session.data (json { { "error", message } });
        else
            std::cerr << "overmarks: " << printable (juce::String (message)) << "\n";

        return status;
    }

private:
    const Session& session;
    bool inJSON;
};

/** The framework's own check lets overlong forms pass, which end a text early. */
bool isStrictUTF8 (const std::string& text)
{
    Poco::UTF8Encoding utf8;
    const auto* const bytes = reinterpret_cast<const unsigned char*> (text.data());
    for (std::size_t place = 0; place < text.size();)
    {
        const auto length = utf8.sequenceLength (bytes + place, static_cast<int> (text.size() - place));
        if (length < 1 || place + static_cast<std::size_t> (length) > text.size()
            || ! Poco::UTF8Encoding::isLegal (bytes + place, length))
            return false;
        place += static_cast<std::size_t> (length);
    }
    return true;
}

int run (int argc, char** argv)
{
    const std::vector<std::string> arguments (argv + 1, argv + argc);
    Session session;
    CLI::App program ("Cue lists for dialogue replacement and dubbing: read, edit, convert, write documents",
                      "overmarks");
    addCommands (program, session);
    const Failure failure (session, asksForJSON (program, arguments));

    for (const auto& argument : arguments)
        if (! isStrictUTF8 (argument))
            return failure.tell ("An argument is not valid UTF-8", wrongUsage);

    try
    {
        program.parse (argc, argv);
        return session.exitStatus;
    }
    catch (const CLI::Success& asked) // --help, --version and --man
    {
        if (const auto advice = adviceOnUnknownCommand (program, arguments); ! advice.empty())
            return failure.tell (advice, wrongUsage);

        return program.exit (asked);
    }
    catch (const CLI::ParseError& error)
    {
        return failure.tell (usageAdvice (program, error, arguments), wrongUsage);
    }
    catch (const WrongUsage& error)
    {
        return failure.tell (error.what(), wrongUsage);
    }
    catch (const CommandFailure& error)
    {
        return failure.tell (error.what(), failed);
    }
    catch (const std::exception& error)
    {
        return failure.tell (std::string ("The command broke off: ") + error.what(), failed);
    }
}

} // namespace

int main (int argc, char** argv)
{
#if defined(__GLIBC__)
    // Small pieces of memory join their neighbours as they are freed. Put by, as is usual, they are gone through all over again
    // whenever a table of some hundred thousand cells gives back a large one.
    mallopt (M_MXFAST, 0);
#endif

    // Upper and lower case of all letters, not of the English ones alone.
    std::setlocale (LC_CTYPE, "C.UTF-8");
    const int status = run (argc, argv);

    // A full disk shows when the last of the output is on its way.
    if (std::fflush (stdout) != 0 || std::ferror (stdout) != 0)
    {
        std::cerr << "overmarks: Standard output can't be written; it is not whole\n";
        return std::max (status, failed);
    }

    return status;
}
