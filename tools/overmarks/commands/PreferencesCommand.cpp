// SPDX-License-Identifier: GPL-3.0-only
// overmarks preferences: the preferences with their defaults, and storing them.
#include "ListOptions.h"
#include "PreferenceText.h"
#include "StagingFolder.h"
#include "commands/Catalogue.h"
#include "commands/Commands.h"

#include "core/system/UserDefaults.h"

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

void throwOnFailure (const juce::Result& result, const juce::File& written, const juce::File& meant)
{
    if (result.failed())
        throw CommandFailure (
            result.getErrorMessage().replace (written.getFullPathName(), meant.getFullPathName()));
}

/** Stores all values or none: each is written to a copy, which then takes the file's place. */
void store (const Values& values, const juce::File& file)
{
    if (const auto made = file.getParentDirectory().createDirectory(); made.failed())
        throw CommandFailure (made.getErrorMessage());

    const StagingFolder stage (file);
    const auto copy = stage.getFolder().getChildFile ("settings");

    if (file.exists() && ! file.copyFileTo (copy))
        throw CommandFailure ("Can't write into " + file.getParentDirectory().getFullPathName());

    throwOnFailure (UserDefaults::setSettingsFile (copy), copy, file);

    for (const auto& [key, value] : values)
        throwOnFailure (UserDefaults::setValueForKey (juce::String (key), value), copy, file);

    StagingFolder::moveIntoPlace (copy, file);
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

void showPreferences (const PreferencesOptions& options, Session& session)
{
    const auto values = valuesOf (options.assignments);

    if (! values.empty() && ! options.list.hasSettingsFile())
        throw WrongUsage ("--set needs the preferences file that it writes: --settings FILE");

    options.list.applyToProcess();

    if (! values.empty())
        store (values, options.list.getSettingsFile());

    auto preferences = json::array();

    for (const auto& entry : preferenceTable())
        preferences.push_back (preferenceObject (entry));

    showCatalogue (session, "preferences", { "Group", "Key", "Default", "Stored" }, preferences);
}

} // namespace

void addPreferencesCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<PreferencesOptions>();
    auto* command = program.add_subcommand ("preferences", "List the preferences, or store some");
    command->footer (
        "Example:\n  overmarks preferences --set ADRCueDefaultDuration=3 --settings studio.settings");
    command->add_option ("--set", options->assignments, "KEY=VALUE to store; repeatable")
        ->allow_extra_args (false);
    options->list.addProcessOptionsTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showPreferences (*options, session); });
}

} // namespace overmarks
