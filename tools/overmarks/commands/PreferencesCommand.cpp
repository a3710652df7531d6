// SPDX-License-Identifier: GPL-3.0-only
// overmarks preferences: the preferences with their defaults, and storing them.
#include "ListOptions.h"
#include "OptionValues.h"
#include "PreferenceText.h"
#include "SettingsStore.h"
#include "TextTable.h"
#include "columns/ColumnMappings.h"
#include "commands/Catalogue.h"
#include "commands/Commands.h"

#include "core/system/UserDefaults.h"

#include <map>
#include <memory>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

struct PreferencesOptions
{
    std::vector<std::string> assignments;
    std::string mappingToForget;
    bool isDryRun = false;
    ListOptions list;
};

using Values = std::vector<std::pair<std::string, Poco::Any>>;

/** All of them, understood, before the first is stored. */
Values valuesOf (const std::vector<std::string>& assignments)
{
    Values values;

    for (const auto& assignment : assignments)
    {
        const auto sign = assignment.find ('=');

        if (sign == std::string::npos)
            throw WrongUsage ("--set: \"" + assignment + "\" is not of the form KEY=VALUE");

        const auto& entry = preferenceWithKey (assignment.substr (0, sign));
        values.emplace_back (entry.key, preferenceValue (entry, assignment.substr (sign + 1)));
    }

    return values;
}

json preferenceObject (const PreferenceEntry& entry)
{
    const juce::String key (entry.key);
    const auto stored = UserDefaults::hasStoredValue (key) ? preferenceText (UserDefaults::valueForKey (key))
                                                           : juce::String();
    return { { "group", entry.group },
             { "key", entry.key },
             { "default", preferenceText (entry.defaultValue).toStdString() },
             { "stored", stored.toStdString() } };
}

json mappingsAsJSON (const std::map<std::string, ColumnMapping>& mappings)
{
    auto list = json::array();

    for (const auto& [name, mapping] : mappings)
    {
        auto& columns = list.emplace_back (json { { "name", name } })["columns"] = json::object();

        for (const auto& [title, header] : mapping)
            columns[title] = header;
    }

    return list;
}

std::string tableOf (const std::map<std::string, ColumnMapping>& mappings)
{
    TextTable table (std::vector<juce::String> { "Mapping", "Columns" });

    for (const auto& [name, mapping] : mappings)
        table.addRow ({ juce::String (name), inWords (mapping) });

    return table.textForStandardOutput();
}

/** Whether there is anything to write. */
bool changes (const PreferencesOptions& options)
{
    return ! options.assignments.empty() || ! options.mappingToForget.empty();
}

void write (const PreferencesOptions& options, const Values& values)
{
    if (! options.mappingToForget.empty())
        forgetMapping (options.mappingToForget, options.list.getSettingsFile());
    if (! values.empty())
        storeSettings (values, options.list.getSettingsFile());
}

/** What would be refused is refused here too. */
void tellWhatWouldBeWritten (const PreferencesOptions& options, const Session& session)
{
    if (! options.mappingToForget.empty())
        static_cast<void> (keptMapping (options.mappingToForget, options.list.getSettingsFile()));

    session.say ("Would write " + options.list.getSettingsFile().getFullPathName());
}

void change (const PreferencesOptions& options, const Session& session)
{
    const auto values = valuesOf (options.assignments);

    if (! values.empty() && ! options.list.hasSettingsFile())
        throw WrongUsage ("--set needs the preferences file that it writes: --settings FILE");
    if (! options.mappingToForget.empty() && ! options.list.hasSettingsFile())
        throw WrongUsage ("--forget-mapping needs the preferences file that it writes: --settings FILE");

    options.list.applyToProcess (session, changes (options) ? SettingsUse::edited : SettingsUse::read);

    if (! changes (options))
        return;
    if (options.isDryRun)
        tellWhatWouldBeWritten (options, session);
    else
        write (options, values);
}

/** What can't be read of them is no hindrance to the preferences. */
std::map<std::string, ColumnMapping> mappingsToShow (const ListOptions& options, Session& session)
{
    try
    {
        if (options.hasSettingsFile())
            return keptMappings (options.getSettingsFile());
    }
    catch (const CommandFailure& failure)
    {
        session.report ({ {}, 0, {}, failure.what() });
    }

    return {};
}

void showPreferences (const PreferencesOptions& options, Session& session)
{
    change (options, session);

    if (options.isDryRun && ! changes (options))
        session.say ("--dry-run makes no difference without --set or --forget-mapping");

    const auto mappings = mappingsToShow (options.list, session);
    auto preferences = json::array();

    for (const auto& entry : preferenceTable())
        preferences.push_back (preferenceObject (entry));

    if (session.wantsJSON)
    {
        json document { { "preferences", preferences }, { "mappings", mappingsAsJSON (mappings) } };

        if (options.isDryRun)
            document["dryRun"] = true;

        session.data (document);
        return;
    }

    showCatalogue (session, "preferences", { "Group", "Key", "Default", "Stored" }, preferences);

    if (! mappings.empty())
        session.data ("\n" + tableOf (mappings));
}

std::vector<std::string> preferenceKeys()
{
    std::vector<std::string> keys;

    for (const auto& entry : preferenceTable())
        keys.push_back (entry.key);

    return keys;
}

} // namespace

void addPreferencesCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<PreferencesOptions>();
    auto* command = program.add_subcommand (
        "preferences", "List the preferences and the mappings of columns, or store some");
    command->footer (
        "The preferences file is edited where it lies: it needs no --force, and what isn't named stays.\n"
        "Example:\n  overmarks preferences --set ADRCueDefaultDuration=3 --settings studio.settings");
    takesOneOf (command->add_option ("--set", options->assignments, "KEY=VALUE to store; repeatable")
                    ->allow_extra_args (false),
                withEqualsSign (preferenceKeys()))
        ->type_name ("KEY=VALUE");
    command
        ->add_option ("--forget-mapping", options->mappingToForget,
                      "Take a mapping out of --settings that --save-mapping has kept there")
        ->type_name ("NAME");
    command->add_flag ("--dry-run", options->isDryRun, "Only say what would be written");
    options->list.addProcessOptionsTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showPreferences (*options, session); });
}

} // namespace overmarks
