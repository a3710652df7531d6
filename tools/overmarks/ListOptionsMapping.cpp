// SPDX-License-Identifier: GPL-3.0-only
// Which columns are used for what: --map, --mapping and --save-mapping.
#include "ListOptions.h"

#include "Session.h"
#include "Suggestion.h"
#include "columns/ColumnHeaders.h"

#include <utility>

namespace overmarks
{

using ZEP::Overmarks::EventFileImporter;

namespace
{

juce::String columnTitle (const std::string& option, const std::string& title)
{
    const auto known = usableColumnTitles();

    for (const auto& candidate : known)
        if (juce::String (candidate).equalsIgnoreCase (juce::String (title).trim()))
            return candidate;

    refuseValue (option, title, known);
}

/** Header and title of "HEADER=TITLE". */
std::pair<std::string, juce::String> assignment (const std::string& option, const std::string& mapping)
{
    // A header may hold the sign itself, a title never does.
    const auto sign = mapping.rfind ('=');

    if (sign == std::string::npos || sign == 0)
        throw WrongUsage (option + ": \"" + mapping + "\" is not of the form HEADER=TITLE");

    return { mapping.substr (0, sign), columnTitle (option, mapping.substr (sign + 1)) };
}

} // namespace

void ListOptions::checkMappings() const
{
    for (const auto& mapping : mappings)
        assignment (optionName ("map"), mapping);

    for (const auto& [option, name] :
         { std::pair ("--mapping", &mappingName), std::pair ("--save-mapping", &newMappingName) })
    {
        const auto* const declared = owner == nullptr ? nullptr : owner->get_option_no_throw (option);

        if (declared == nullptr || declared->count() == 0)
            continue;
        if (! juce::String (*name).containsNonWhitespaceChars())
            throw WrongUsage (std::string (option) + ": a mapping has a name");
        if (! hasSettingsFile())
            throw WrongUsage (std::string (option)
                              + " needs the preferences file that holds the mappings: --settings FILE");
    }

    if (! newMappingName.empty() && ! hasMapping())
        throw WrongUsage ("--save-mapping keeps what --map assigns; there is no --map");
}

ColumnMapping ListOptions::assignments() const
{
    auto all = mappingName.empty() ? ColumnMapping() : keptMapping (mappingName, getSettingsFile());

    for (const auto& mapping : mappings)
    {
        const auto [header, title] = assignment (optionName ("map"), mapping);
        all[title.toStdString()] = header;
    }

    return all;
}

std::vector<juce::String> ListOptions::mapColumns (EventFileImporter& importer) const
{
    if (! hasMapping())
        return {};

    if (! importer.userMappingEnabled())
    {
        if (! mappings.empty())
            throw WrongUsage (optionName ("map") + ": the columns of this format are fixed");

        return { "--mapping makes no difference to this list" };
    }

    std::vector<juce::String> missing;

    if (! mappingName.empty())
        for (const auto& [title, header] : keptMapping (mappingName, getSettingsFile()))
        {
            if (const auto column = columnWithHeader (importer, header); column.has_value())
                importer.columnMap[juce::String (title)] = *column;
            else
                missing.push_back ("--mapping: there is no column \"" + juce::String (header)
                                   + "\" in it for " + juce::String (title));
        }

    for (const auto& mapping : mappings)
    {
        const auto [header, title] = assignment (optionName ("map"), mapping);
        const auto column = columnWithHeader (importer, header);

        if (! column.has_value())
            refuseHeader (optionName ("map"), importer, header);

        importer.columnMap[title] = *column;
    }

    return missing;
}

void ListOptions::saveMapping (const Session& session) const
{
    if (newMappingName.empty() || ! keepsMapping)
        return;

    const auto* const dryRun = owner->get_option_no_throw ("--dry-run");
    const bool isDryRun = dryRun != nullptr && dryRun->count() > 0;
    const auto mapping = assignments();
    const auto file = getSettingsFile();
    const auto kept = keptMappings (file);
    const auto old = kept.find (newMappingName);

    if (old != kept.end() && old->second == mapping)
        return;

    if (! isDryRun)
        keepMapping (newMappingName, mapping, file);

    session.say ((isDryRun ? "Would keep the mapping \"" : "Kept the mapping \"")
                 + juce::String (newMappingName) + "\" in " + file.getFullPathName() + ": "
                 + inWords (mapping) + (old != kept.end() ? "; it replaces one of this name" : ""));
}

} // namespace overmarks
