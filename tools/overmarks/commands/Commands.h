// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include <CLI/CLI.hpp>

namespace overmarks
{

// Each adds one command, with its options, to the program.

void addRowsCommand (CLI::App& program, Session& session);
void addImportCommand (CLI::App& program, Session& session);
void addDumpCommand (CLI::App& program, Session& session);
void addLoadCommand (CLI::App& program, Session& session);
void addListCommand (CLI::App& program, Session& session);
void addSearchCommand (CLI::App& program, Session& session);
void addDiffCommand (CLI::App& program, Session& session);
void addSetCommand (CLI::App& program, Session& session);
void addConvertCommand (CLI::App& program, Session& session);
void addExportCommand (CLI::App& program, Session& session);
void addOverviewCommand (CLI::App& program, Session& session);
void addCheckCommand (CLI::App& program, Session& session);
void addStatsCommand (CLI::App& program, Session& session);
void addMIDICommand (CLI::App& program, Session& session);
void addFormatsCommand (CLI::App& program, Session& session);
void addKeysCommand (CLI::App& program, Session& session);
void addReasonsCommand (CLI::App& program, Session& session);
void addPreferencesCommand (CLI::App& program, Session& session);
void addCompletionCommand (CLI::App& program, Session& session);

/** --man, an option of the program itself. To be added behind --json, which it follows. */
void addManualOption (CLI::App& program, Session& session);

/** midi monitor, which addMIDICommand() adds as well. @param midi  the command that it belongs to */
void addMIDIMonitorCommand (CLI::App& midi, Session& session);

} // namespace overmarks
