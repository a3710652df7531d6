// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "overmarks/ProgramFixture.h"

#include <string>
#include <vector>

/** Two versions of a list, old and new, and what overmarks diff makes of them. */
class ProgramDiffFixture : public ProgramTest
{
protected:
    static constexpr auto titles = "Start TC,End TC,Character,Text,Cue Number\n";

    void writeLists (const std::string& oldRows, const std::string& newRows) const
    {
        write ("old.csv", titles + oldRows);
        write ("new.csv", titles + newRows);
    }

    ProgramResult diff (std::vector<std::string> options = {}, const std::string& old = "old.csv",
                        const std::string& now = "new.csv") const
    {
        options.insert (options.begin(), { "diff", old, now });
        return run (options);
    }

    /** The changes in short: "retimed A1", "added T1", in their order. */
    std::vector<std::string> kinds (const std::vector<std::string>& options = {},
                                    const std::string& old = "old.csv",
                                    const std::string& now = "new.csv") const
    {
        std::vector<std::string> result;

        for (const auto& change : changes (options, old, now))
        {
            const auto& event = change["new"].is_null() ? change["old"] : change["new"];
            const auto number = event["cueNumber"].get<std::string>();
            const auto text = event["text"]["text"].get<std::string>();
            result.push_back (change["kind"].get<std::string>() + " " + (number.empty() ? text : number));
        }

        return result;
    }

    nlohmann::ordered_json changes (std::vector<std::string> options = {}, const std::string& old = "old.csv",
                                    const std::string& now = "new.csv") const
    {
        options.emplace_back ("--json");
        const auto result = diff (options, old, now);
        EXPECT_EQ (result.status, result.json()["changes"].empty() ? 0 : 1) << result.errors;
        return result.json()["changes"];
    }

    /** A project whose events are given as members of JSON objects. */
    void writeProject (const juce::String& name, const std::vector<std::string>& events,
                       const std::string& otherMembers = {}) const
    {
        std::string text =
            "{\"overmarks\": 1, " + otherMembers
            + R"("characters": [{"id": "a", "name": "ANNA", "prefix": "A", "actor": "B. Miller"},
                                               {"id": "t", "name": "TOM"}], "events": [)";

        for (const auto& event : events)
            text += (text.ends_with ("[") ? "{\"type\": 8, " : ",\n{\"type\": 8, ") + event + "}";

        write (name, text + "]}");
    }
};
