// SPDX-License-Identifier: GPL-3.0-only
#include "CharacterText.h"
#include "StopWatch.h"
#include "Version.h"
#include "Work.h"

#include <cstdio>
#include <exception>
#include <new>

namespace
{

using namespace DocxHandler;

constexpr int doneStatus = 0;
constexpr int failedStatus = 1;
constexpr int usageStatus = 2;

/* Names of files are quoted, and nothing in them may command a terminal. */
void complain (const std::string& message)
{
    std::fprintf (stderr, "docxHandler: %s\n", withoutOrders (message).c_str());
}

int work (const Arguments& arguments)
{
    StopWatch stopWatch;
    const auto imports = arguments.mode == Mode::importDocument;
    stopWatch.watch (arguments.cancelFile,
                     imports ? StopWatch::EarlierWord::isStale : StopWatch::EarlierWord::counts);
    const auto errors = imports ? importDocument (arguments) : exportDocuments (arguments);

    for (const auto& error : errors)
        complain (error);

    return errors.empty() ? doneStatus : failedStatus;
}

int run (const std::vector<std::string>& words)
{
    const auto arguments = parseArguments (words);

    switch (arguments.mode)
    {
        case Mode::help: std::fputs (helpText().c_str(), stdout); return doneStatus;
        case Mode::version: std::printf ("docxHandler %s\n", version()); return doneStatus;
        case Mode::exportDocuments:
        case Mode::importDocument: break;
    }

    return work (arguments);
}

} // namespace

int main (int count, char** words)
{
    try
    {
        return run ({ words + 1, words + count });
    }
    catch (const UsageError& error)
    {
        complain (error.what());
        std::fputs ("docxHandler --help tells how it is called.\n", stderr);
        return usageStatus;
    }
    catch (const std::bad_alloc&)
    {
        complain ("Not enough memory");
    }
    catch (const std::exception& error)
    {
        complain (error.what());
    }

    return failedStatus;
}
