// SPDX-License-Identifier: GPL-3.0-only
#include "TerminalQuestion.h"

#include "Session.h"

#include <poll.h>
#include <unistd.h>

#include <iostream>
#include <string>

namespace overmarks
{

namespace
{

/** Whether somebody types a line before the program is stopped. */
bool hasAnswer (const StopSignals& signals)
{
    constexpr int look = 50; // milliseconds
    pollfd terminal { STDIN_FILENO, POLLIN, 0 };

    while (! signals.haveCome())
        if (poll (&terminal, 1, look) > 0)
            return true;

    return false;
}

} // namespace

bool askOnTerminal (const juce::String& question, const StopSignals& signals)
{
    if (signals.haveCome())
        return false;

    for (const auto& line : juce::StringArray::fromTokens (question, "\n", {}))
        std::cerr << printable (line) << "\n";

    std::cerr << "[y/N] " << std::flush;

    if (isatty (STDIN_FILENO) == 0)
    {
        std::cerr << "no (--yes agrees)\n";
        return false;
    }

    std::string answer;

    if (hasAnswer (signals))
        std::getline (std::cin, answer);

    std::cin.clear(); // the end of one answer isn't that of the next

    return answer == "y" || answer == "Y" || answer == "yes";
}

} // namespace overmarks
