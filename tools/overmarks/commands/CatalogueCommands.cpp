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
#include <sstream>
#include <string>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

// ---- formats -------------------------------------------------------------------------------------------------------------

constexpr std::size_t kLineOfText = 100;

/** "Carries: a, b, c" in lines of a readable length, indented. */
std::string paragraph (const std::string& title, const std::string& text)
{
    std::istringstream words (title + ": " + (text.empty() ? "nothing" : text));
    std::string lines;
    std::string line = " ";

    for (std::string word; words >> word;)
    {
        if (line.size() + 1 + word.size() > kLineOfText)
        {
            lines += line + "\n";
            line = "   ";
        }
        line += " " + word;
    }

    return lines + line + "\n";
}

/** The table, and below it what each document carries and loses: too much for cells. */
void showFormatsAsText (Session& session, const json& formats)
{
    TextTable table ({ "Name", "Extensions", "Reads", "Writes", "Maps columns", "--format" });
    std::string details;

    const auto text = [] (const json& format, const char* key) { return format.value (key, std::string()); };
    const auto yesOrNo = [] (const json& format, const char* key)
    { return juce::String (format.value (key, false) ? "yes" : "no"); };

    for (const auto& format : formats)
    {
        table.addRow ({ text (format, "name"), text (format, "extensions"), yesOrNo (format, "reads"),
                        yesOrNo (format, "writes"), yesOrNo (format, "columnMapping"),
                        text (format, "format") });

        if (format.contains ("carries"))
            details += "\n" + text (format, "format") + "\n" + paragraph ("Carries", text (format, "carries"))
                       + paragraph ("Loses", text (format, "loses"));
    }

    session.data (table.textForStandardOutput() + details);
}

json asJSON (const DocumentFormat& format)
{
    return { { "name", format.description },
             { "extensions", format.extension },
             { "reads", false },
             { "writes", true },
             { "columnMapping", false },
             { "format", format.name },
             { "carries", joined (namesOf (format.carries)) },
             { "loses", joined (possibleLosses (format)) } };
}

void showFormats (Session& session)
{
    auto formats = json::array();

    // What an imported list carries is up to its columns.
    for (const auto& format : EventFileImporterFactory::formats())
        formats.push_back ({ { "name", format.name.toStdString() },
                             { "extensions", format.extensions.joinIntoString (" ").toStdString() },
                             { "reads", true },
                             { "writes", false },
                             { "columnMapping", format.userMapping } });

    for (const auto& format : documentFormats())
    {
        formats.push_back (asJSON (format));

        if (format.name == drawnCueSheet().name)
            formats.push_back (asJSON (drawnCueSheet()));
    }

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

    if (session.wantsJSON)
        session.data (json { { "formats", formats } });
    else
        showFormatsAsText (session, formats);
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
    options.applyToProcess (session);
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
