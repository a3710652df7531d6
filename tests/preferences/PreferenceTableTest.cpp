// SPDX-License-Identifier: GPL-3.0-only
#include "preferences/PreferenceTable.h"

#include <gtest/gtest.h>
#include <juce_graphics/juce_graphics.h>

#include <set>

namespace
{
using namespace ZEP::Overmarks;

// Asked for while the globals of the program are still being made.
const std::size_t sizeBeforeMain = preferenceTable().size();
const std::string firstKeyBeforeMain = preferenceTable().front().key;
} // namespace

TEST (PreferenceTable, isWholeBeforeMain)
{
    EXPECT_EQ (sizeBeforeMain, 83u);
    EXPECT_EQ (firstKeyBeforeMain, "StreamerReferenceUnit");
}

TEST (PreferenceTable, hasEachKeyOnce)
{
    std::set<std::string> keys;
    for (const auto& entry : preferenceTable())
        EXPECT_TRUE (keys.insert (entry.key).second) << entry.key;
}

TEST (PreferenceTable, holdsDefaultsOfTheTypeItTells)
{
    for (const auto& entry : preferenceTable())
    {
        const auto& type = entry.defaultValue.type();
        switch (entry.type)
        {
            case PreferenceType::boolean: EXPECT_TRUE (type == typeid (bool)) << entry.key; break;
            case PreferenceType::integer: EXPECT_TRUE (type == typeid (int)) << entry.key; break;
            case PreferenceType::real: EXPECT_TRUE (type == typeid (float)) << entry.key; break;
            case PreferenceType::text: EXPECT_TRUE (type == typeid (juce::String)) << entry.key; break;
            case PreferenceType::colour: EXPECT_TRUE (type == typeid (juce::Colour)) << entry.key; break;
        }
    }
}

TEST (PreferenceTable, keepsEachGroupTogether)
{
    std::vector<std::string> groups;
    for (const auto& entry : preferenceTable())
        if (groups.empty() || groups.back() != entry.group)
            groups.push_back (entry.group);

    EXPECT_EQ (groups, (std::vector<std::string> {
                           "Timing", "Playback and display of events", "Plain streamers", "Punch and flutter",
                           "Audio beeps", "ADR cue overlay", "ADR cue streamers", "Markers",
                           "Character overlay", "Cue number overlay", "Fades", "Mode overlay" }));
}
