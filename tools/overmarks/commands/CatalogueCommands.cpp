// SPDX-License-Identifier: GPL-3.0-only
// overmarks formats, keys and reasons: what there is.
#include "DocumentFormats.h"
#include "FormatLosses.h"
#include "ListOptions.h"
#include "Suggestion.h"
#include "TextTable.h"
#include "commands/Catalogue.h"
#include "commands/Commands.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "event/EventAttribute.h"
#include "import/frame/EventFileImporterFactory.h"

#include <memory>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

// ---- formats -------------------------------------------------------------------------------------------------------------

void showFormats (Session& session)
{
    auto formats = json::array();

    // What an imported list carries is up to its columns.
    for (const auto& format : EventFileImporterFactory::formats())
        if (format.available)
            formats.push_back ({ { "name", format.name.toStdString() },
                                 { "extensions", format.extensions.joinIntoString (" ").toStdString() },
                                 { "reads", true },
                                 { "writes", false },
                                 { "columnMapping", format.userMapping } });

    for (const auto& format : documentFormats())
        formats.push_back ({ { "name", format.description },
                             { "extensions", format.extension },
                             { "reads", false },
                             { "writes", true },
                             { "columnMapping", false },
                             { "format", format.name },
                             { "carries", joined (namesOf (format.carries)) },
                             { "loses", joined (possibleLosses (format)) } });

    formats.push_back ({ { "name", "Project" },
                         { "extensions", ".overmarks" },
                         { "reads", true },
                         { "writes", true },
                         { "columnMapping", false },
                         { "format", "overmarks" },
                         { "carries", "everything" },
                         { "loses", "nothing" } });
    formats.push_back ({ { "name", "Project in JSON, whole" },
                         { "extensions", ".json" },
                         { "reads", true },
                         { "writes", true },
                         { "columnMapping", false },
                         { "format", "json" },
                         { "carries", "everything" },
                         { "loses", "nothing" } });
    showCatalogue (
        session, "formats",
        { "Name", "Extensions", "Reads", "Writes", "Maps columns", "--format", "Carries", "Loses" }, formats);
}

// ---- keys ----------------------------------------------------------------------------------------------------------------

const char* nameOf (CellType type)
{
    switch (type)
    {
        case CellType::flag: return "yes/no";
        case CellType::integer: return "number";
        case CellType::string: return "text";
        case CellType::richText: return "rich text";
        case CellType::none: break;
    }

    return "none";
}

void showKeys (Session& session)
{
    auto keys = json::array();

    for (const auto& attribute : EventAttribute::all())
        keys.push_back ({ { "key", attribute.key.toStdString() },
                          { "title", attribute.columnTitle.toStdString() },
                          { "value", nameOf (attribute.cellType) },
                          { "settable", attribute.isSettable() },
                          { "explanation", attribute.explanation.toStdString() } });

    showCatalogue (session, "keys", { "Key", "Column", "Value", "Can be set", "What it is" }, keys);
}

// ---- reasons -------------------------------------------------------------------------------------------------------------

void showReasons (const ListOptions& options, Session& session)
{
    options.applyToProcess();
    auto* manager = ADRCueReasonsManager::sharedManager();
    manager->setUserReasonNames (options.reasons());
    auto reasons = json::array();

    for (const auto& reason : manager->allReasons())
        reasons.push_back ({ { "code", reason.code },
                             { "short", reason.codeText.toStdString() },
                             { "name", reason.name.toStdString() } });

    showCatalogue (session, "reasons", { "Code", "Short", "Name" }, reasons);
}

} // namespace

void showCatalogue (Session& session, const std::string& name, const std::vector<juce::String>& titles,
                    const json& objects)
{
    if (session.wantsJSON)
    {
        session.data (json { { name, objects } });
        return;
    }

    TextTable table (titles);

    for (const auto& object : objects)
    {
        std::vector<juce::String> cells;

        for (const auto& value : object)
            cells.push_back (value.is_boolean()  ? juce::String (value.get<bool>() ? "yes" : "no")
                             : value.is_string() ? juce::String (value.get<std::string>())
                                                 : juce::String (value.dump()));

        table.addRow (cells);
    }

    session.data (table.textForStandardOutput());
}

void addFormatsCommand (CLI::App& program, Session& session)
{
    auto* command = program.add_subcommand ("formats", "List the formats that can be read and written");
    command->footer ("Example:\n  overmarks formats --json");
    session.addOutputOptions (*command);
    command->callback ([&session] { showFormats (session); });
}

void addKeysCommand (CLI::App& program, Session& session)
{
    auto* command = program.add_subcommand ("keys", "List the attributes of an event");
    command->footer ("Example:\n  overmarks keys");
    session.addOutputOptions (*command);
    command->callback ([&session] { showKeys (session); });
}

void addReasonsCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ListOptions>();
    auto* command = program.add_subcommand ("reasons", "List the cue reasons with their codes");
    command->footer ("Example:\n  overmarks reasons --reasons \"Director's wish,Legal\"");
    options->addProcessOptionsTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showReasons (*options, session); });
}

} // namespace overmarks
