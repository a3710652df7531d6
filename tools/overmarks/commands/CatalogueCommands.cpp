// SPDX-License-Identifier: GPL-3.0-only
// overmarks formats, keys, reasons and preferences: what there is.
#include "DocumentFormats.h"
#include "ListOptions.h"
#include "Suggestion.h"
#include "TextTable.h"
#include "commands/Commands.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/UserDefaults.h"
#include "event/EventAttribute.h"
#include "import/frame/EventFileImporterFactory.h"
#include "preferences/PreferenceTable.h"

#include <memory>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

/** A table and the same as JSON, under one name. */
void show (Session& session, const std::string& name, const std::vector<juce::String>& titles,
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

// ---- formats -------------------------------------------------------------------------------------------------------------

void showFormats (Session& session)
{
    auto formats = json::array();

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
                             { "format", format.name } });

    formats.push_back ({ { "name", "Project in JSON, whole" },
                         { "extensions", ".json" },
                         { "reads", true },
                         { "writes", true },
                         { "columnMapping", false },
                         { "format", "json" } });
    show (session, "formats", { "Name", "Extensions", "Reads", "Writes", "Maps columns", "--format" },
          formats);
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

    show (session, "keys", { "Key", "Column", "Value", "Can be set", "What it is" }, keys);
}

// ---- reasons -------------------------------------------------------------------------------------------------------------

void showReasons (const ListOptions& options, Session& session)
{
    auto* manager = ADRCueReasonsManager::sharedManager();
    manager->setUserReasonNames (options.reasons());
    auto reasons = json::array();

    for (const auto& reason : manager->allReasons())
        reasons.push_back ({ { "code", reason.code },
                             { "short", reason.codeText.toStdString() },
                             { "name", reason.name.toStdString() } });

    show (session, "reasons", { "Code", "Short", "Name" }, reasons);
}

// ---- preferences ---------------------------------------------------------------------------------------------------------

juce::String preferenceText (const Poco::Any& value)
{
    if (const auto* flag = Poco::AnyCast<bool> (&value))
        return *flag ? "true" : "false";
    if (const auto* integer = Poco::AnyCast<int> (&value))
        return juce::String (*integer);
    if (const auto* real = Poco::AnyCast<float> (&value))
        return juce::String (*real);
    if (const auto* text = Poco::AnyCast<juce::String> (&value))
        return *text;
    if (const auto* colour = Poco::AnyCast<juce::Colour> (&value))
        return colour->toDisplayString (true).toLowerCase();

    return {};
}

Poco::Any preferenceValue (const PreferenceEntry& entry, const juce::String& text)
{
    const auto refuse = [&] (const char* expected)
    { throw WrongUsage (juce::String (entry.key) + ": \"" + text + "\" is not " + expected); };

    switch (entry.type)
    {
        case PreferenceType::boolean:
            if (text != "true" && text != "false")
                refuse ("true or false");
            return text == "true";

        case PreferenceType::integer:
            if (text.isEmpty() || ! text.containsOnly ("-0123456789") || text.length() > 9)
                refuse ("a whole number");
            return text.getIntValue();

        case PreferenceType::real:
            if (text.isEmpty() || ! text.containsOnly ("-0123456789."))
                refuse ("a number");
            return text.getFloatValue();

        case PreferenceType::colour:
            if (text.length() != 8 || ! text.containsOnly ("0123456789abcdefABCDEF"))
                refuse ("a colour of eight hexadecimal digits, alpha first");
            return juce::Colour::fromString (text);

        case PreferenceType::text: break;
    }

    return text;
}

const PreferenceEntry& preferenceWithKey (const std::string& key)
{
    std::vector<std::string> known;

    for (const auto& entry : preferenceTable())
    {
        if (entry.key == key)
            return entry;

        known.push_back (entry.key);
    }

    throw WrongUsage ("There is no preference \"" + juce::String (key) + "\"." + didYouMean (key, known));
}

struct PreferencesOptions
{
    std::vector<std::string> assignments;
    ListOptions list;
};

void storePreference (const std::string& assignment)
{
    const auto sign = assignment.find ('=');

    if (sign == std::string::npos)
        throw WrongUsage ("--set: \"" + assignment + "\" is not of the form KEY=VALUE");

    const auto& entry = preferenceWithKey (assignment.substr (0, sign));
    const auto result = UserDefaults::setValueForKey (
        juce::String (entry.key), preferenceValue (entry, juce::String (assignment.substr (sign + 1))));

    if (result.failed())
        throw CommandFailure (result.getErrorMessage());
}

void showPreferences (const PreferencesOptions& options, Session& session)
{
    options.list.applyToProcess();

    if (! options.assignments.empty() && ! options.list.hasSettingsFile())
        throw WrongUsage ("--set needs the preferences file that it writes: --settings FILE");

    for (const auto& assignment : options.assignments)
        storePreference (assignment);

    auto preferences = json::array();

    for (const auto& entry : preferenceTable())
    {
        const juce::String key (entry.key);
        const auto stored = UserDefaults::hasStoredValue (key)
                                ? preferenceText (UserDefaults::valueForKey (key))
                                : juce::String();
        preferences.push_back ({ { "group", entry.group },
                                 { "key", entry.key },
                                 { "default", preferenceText (entry.defaultValue).toStdString() },
                                 { "stored", stored.toStdString() } });
    }

    show (session, "preferences", { "Group", "Key", "Default", "Stored" }, preferences);
}

} // namespace

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
    options->addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showReasons (*options, session); });
}

void addPreferencesCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<PreferencesOptions>();
    auto* command = program.add_subcommand ("preferences", "List the preferences, or store one");
    command->footer (
        "Example:\n  overmarks preferences --set ADRCueDefaultDuration=3 --settings studio.settings");
    command->add_option ("--set", options->assignments, "KEY=VALUE to store; repeatable")
        ->allow_extra_args (false);
    options->list.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showPreferences (*options, session); });
}

} // namespace overmarks
