// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "overmarks/ProgramFixture.h"

#include <string>
#include <vector>

/** Lists of known lines, and what stats says of them. */
class StatsTest : public ProgramTest
{
protected:
    using Json = nlohmann::ordered_json;

    static constexpr int streamer = 1, marker = 2, flutter = 4, adrCue = 8;

    struct Role
    {
        std::string id;
        std::string name;
        std::string actor {};
        std::string prefix {};
    };

    /** An event from `in` to `end`, in frames. */
    struct Line
    {
        std::string id;
        std::string number;
        int in = 0;
        int end = 25;
        std::string text {};
        bool done = false;
        bool enabled = true;
        int type = adrCue;
    };

    /** Writes the list as x.json, with 25 frames a second from zero unless `timeInfo` says otherwise. */
    void writeList (const std::vector<Role>& cast, const std::vector<Line>& lines,
                    const Json& timeInfo = Json::object()) const
    {
        Json project { { "overmarks", 1 },
                       { "timeInfo", timeInfo },
                       { "characters", Json::array() },
                       { "events", Json::array() } };

        for (const auto& role : cast)
            project["characters"].push_back ({ { "id", role.id },
                                               { "name", role.name },
                                               { "actor", role.actor },
                                               { "prefix", role.prefix } });

        for (const auto& line : lines)
            project["events"].push_back ({ { "type", line.type },
                                           { "cueNumber", line.number },
                                           { "characterID", line.id },
                                           { "startFrameIndex", line.in },
                                           { "inPointFrameIndex", line.in },
                                           { "endFrameIndex", line.end },
                                           { "text", line.text },
                                           { "enabled", line.enabled },
                                           { "done", line.done } });

        write ("x.json", project.dump());
    }

    /** What stats --json says of x.json. */
    Json stats (std::vector<std::string> options = {}) const
    {
        options.insert (options.begin(), { "stats", "x.json", "--json", "--quiet" });
        const auto result = run (options);
        EXPECT_EQ (result.status, 0) << result.errors << result.output;
        return Json::parse (result.output, nullptr, false);
    }

    /** One member of each, in their order. */
    static Json each (const Json& list, const std::string& member)
    {
        auto values = Json::array();

        for (const auto& entry : list)
            values.push_back (entry.at (member));

        return values;
    }

    static constexpr int hour = 3600 * 25;
};
