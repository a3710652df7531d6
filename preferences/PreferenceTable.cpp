// SPDX-License-Identifier: GPL-3.0-only
#include "preferences/PreferenceTable.h"

#include "core/system/ProcessLifetime.h"
#include "preferences/PreferenceRows.h"

#include <juce_graphics/juce_graphics.h>

namespace ZEP::Overmarks
{
namespace
{
/** The type and the value of a default, as the rows and as the preference store know it. */
struct DefaultMaker
{
    PreferenceEntry entry;

    void operator() (bool value) { take (PreferenceType::boolean, value); }
    void operator() (int value) { take (PreferenceType::integer, value); }
    void operator() (float value) { take (PreferenceType::real, value); }
    void operator() (const char* value) { take (PreferenceType::text, juce::String (value)); }

    void operator() (const Rgba& value)
    {
        take (PreferenceType::colour,
              juce::Colour::fromFloatRGBA (value.red, value.green, value.blue, value.alpha));
    }

private:
    template <typename Value>
    void take (PreferenceType type, const Value& value)
    {
        entry.type = type;
        entry.defaultValue = value;
    }
};

std::vector<PreferenceEntry> entriesFromRows()
{
    std::vector<PreferenceEntry> entries;
    entries.reserve (preferenceRows.size());
    for (const auto& row : preferenceRows)
    {
        DefaultMaker maker { { row.group, row.key, PreferenceType::boolean, {} } };
        std::visit (maker, row.defaultValue);
        entries.push_back (std::move (maker.entry));
    }
    return entries;
}
} // namespace

const std::vector<PreferenceEntry>& preferenceTable()
{
    static const Core::ProcessLifetime<std::vector<PreferenceEntry>> table { entriesFromRows() };
    return table.get();
}
} // namespace ZEP::Overmarks
