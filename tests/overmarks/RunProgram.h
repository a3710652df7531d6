// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

/** What the program has written and how it ended. */
struct ProgramResult
{
    std::string output; ///< standard output
    std::string errors; ///< standard error
    int status = -1;

    nlohmann::ordered_json json() const { return nlohmann::ordered_json::parse (output); }
};

/** What is unusual about a run. */
struct ProgramSurroundings
{
    long largestFile =
        0; ///< bytes that a file may grow to, as if the disk were full behind them; 0 for no limit
    bool errorsOnTerminal = false;      ///< standard error is a terminal
    int terminalWidth = 0;              ///< standard output is a terminal with so many columns; 0 for none
    std::string terminalType = "xterm"; ///< what TERM says
    std::string outputTo;               ///< path that standard output goes to
    std::string answer;           ///< what somebody types: standard input is a terminal unless it is empty
    bool permissionsHold = false; ///< also for the system's administrator, who may do everything otherwise
    int killedAfter = -1;         ///< microseconds until the program is killed; -1: it is not
    std::vector<int> signals; ///< sent to the program a third of a second apart, once `signalsWhen` is there
    std::string signalsWhen;  ///< path of a file
    std::string temporaryFolder; ///< what TMPDIR says; empty: as it is here
};

/** Runs the command-line program, as it was built, in a folder. No shell is involved.
    @param standardInput  given to the program */
ProgramResult runProgram (const juce::File& folder, const std::vector<std::string>& arguments,
                          const std::string& standardInput = {},
                          const ProgramSurroundings& surroundings = {});
