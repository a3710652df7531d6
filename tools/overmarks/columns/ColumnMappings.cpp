// SPDX-License-Identifier: GPL-3.0-only
#include "columns/ColumnMappings.h"

#include "Session.h"
#include "SettingsStore.h"
#include "Suggestion.h"
#include "columns/ColumnHeaders.h"

#include "core/system/UserDefaults.h"

#include <algorithm>
#include <vector>

namespace overmarks
{

using ZEP::Core::UserDefaults;

namespace
{

// {"studio": {"Cue Number": "Loop #"}}
const juce::String keyOfMappings { "ColumnMappings" };

bool isMapping (const json& mapping)
{
    const auto titles = usableColumnTitles();

    if (! mapping.is_object())
        return false;

    for (const auto& [title, header] : mapping.items())
        if (! header.is_string() || std::find (titles.begin(), titles.end(), title) == titles.end())
            return false;

    return true;
}

std::map<std::string, ColumnMapping> mappingsIn (const juce::String& text, const juce::File& settings)
{
    std::map<std::string, ColumnMapping> mappings;

    if (text.isEmpty())
        return mappings;

    const auto document = json::parse (text.toStdString(), nullptr, false);
    bool isSound = document.is_object();

    if (isSound)
        for (const auto& [name, mapping] : document.items())
        {
            isSound = isSound && isMapping (mapping);

            if (isSound)
                mappings[name] = mapping.get<ColumnMapping>();
        }

    if (! isSound)
        throw CommandFailure ("The mappings of columns in " + settings.getFullPathName()
                              + " are damaged; nothing was read or written");

    return mappings;
}

[[noreturn]] void refuseName (const std::string& name, const std::map<std::string, ColumnMapping>& mappings,
                              const juce::File& settings)
{
    std::vector<std::string> names;

    for (const auto& [known, mapping] : mappings)
        names.push_back (known);

    const auto beginning =
        "There is no mapping \"" + name + "\" in " + settings.getFullPathName().toStdString();

    if (names.empty())
        throw WrongUsage (beginning + "; --save-mapping keeps one");

    throw WrongUsage (beginning + ", only " + joined (names) + "." + didYouMean (name, names));
}

void storeMappings (const std::map<std::string, ColumnMapping>& mappings, const juce::File& settings)
{
    storeSettings ({ { keyOfMappings.toStdString(), juce::String (json (mappings).dump()) } }, settings);
}

} // namespace

juce::String inWords (const ColumnMapping& mapping)
{
    juce::String words;

    for (const auto& [title, header] : mapping)
        words << (words.isEmpty() ? "" : ", ") << juce::String (header) << "=" << juce::String (title);

    return words;
}

std::map<std::string, ColumnMapping> keptMappings (const juce::File& settings)
{
    return mappingsIn (UserDefaults::getStringForKey (keyOfMappings), settings);
}

ColumnMapping keptMapping (const std::string& name, const juce::File& settings)
{
    const auto mappings = keptMappings (settings);
    const auto found = mappings.find (name);

    if (found == mappings.end())
        refuseName (name, mappings, settings);

    return found->second;
}

void keepMapping (const std::string& name, const ColumnMapping& mapping, const juce::File& settings)
{
    auto mappings = keptMappings (settings);
    mappings[name] = mapping;
    storeMappings (mappings, settings);
}

void forgetMapping (const std::string& name, const juce::File& settings)
{
    auto mappings = keptMappings (settings);

    if (mappings.erase (name) == 0)
        refuseName (name, mappings, settings);

    storeMappings (mappings, settings);
}

} // namespace overmarks
