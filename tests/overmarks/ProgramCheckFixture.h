// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "overmarks/ProgramFixture.h"

#include <string>
#include <vector>

/** Lists that are checked. */
class ProgramCheckTest : public ProgramTest
{
protected:
    using Lines = std::vector<std::string>;

    static constexpr auto titles = "Start TC,End TC,Character,Text,Cue Number,Notes,Enabled\n";

    /** A table of these rows below the titles. Cells at the end of a row may be missing. */
    static std::string table (const std::string& rows)
    {
        constexpr int commas = 6;
        std::string text (titles);
        int found = 0;
        bool isQuoted = false;

        for (const char c : rows)
        {
            isQuoted = isQuoted != (c == '"');
            found += c == ',' && ! isQuoted ? 1 : 0;

            if (c == '\n')
            {
                text.append (static_cast<std::size_t> (std::max (0, commas - found)), ',');
                found = 0;
            }

            text += c;
        }

        return text;
    }

    void writeRows (const std::string& rows) const { write ("x.csv", table (rows)); }

    /** A project of 25 frames a second from 01:00:00:00 with ANNA (c1) and TOM (c2), as x.json. */
    void writeProject (const std::string& events) const
    {
        write ("x.json", R"({"overmarks": 1, "timeInfo": {"timeOrigin": "01:00:00:00",
            "firstFrameOfAction": "01:00:00:00", "frameRateNumerator": 25, "frameRateDenominator": 1,
            "framesPerSecond": 25, "dropFrame": false},
            "characters": [{"id": "c1", "name": "ANNA"}, {"id": "c2", "name": "TOM"}],
            "events": [)" + events
                             + "]}");
    }

    /** A line of ANNA that has nothing wrong, but for the members that are given; in a project. */
    static std::string cue (const std::string& number, int start, int end, const std::string& members = {},
                            const std::string& character = "c1")
    {
        return R"({"type": 8, "characterID": ")" + character + R"(", "cueNumber": ")" + number
               + R"(", "startFrameIndex": )" + std::to_string (start - 50) + R"(, "inPointFrameIndex": )"
               + std::to_string (start) + R"(, "endFrameIndex": )" + std::to_string (end) + ", "
               + (members.empty() ? R"("text": "Hello")" : members) + "}";
    }

    ProgramResult check (std::vector<std::string> arguments) const
    {
        arguments.insert (arguments.begin(), { "check", "--json", "--quiet" });
        return run (arguments);
    }

    /** "CUE: MESSAGE" of each finding of one rule. The exit status has to say the same. */
    Lines found (const std::string& rule, std::vector<std::string> arguments) const
    {
        arguments.insert (arguments.end(), { "--rule", rule });
        const auto result = check (arguments);
        const auto document = nlohmann::ordered_json::parse (result.output, nullptr, false);
        EXPECT_TRUE (document.is_object() && document.contains ("findings"))
            << result.output << result.errors;
        Lines lines;

        for (const auto& finding : document.value ("findings", nlohmann::ordered_json::array()))
        {
            EXPECT_EQ (finding["rule"], rule);
            lines.push_back (finding["cueNumber"].get<std::string>() + ": "
                             + finding["message"].get<std::string>());
        }

        EXPECT_EQ (result.status, lines.empty() ? 0 : 1) << result.errors;
        return lines;
    }

    Lines foundInRows (const std::string& rule, const std::string& rows,
                       std::vector<std::string> arguments = {}) const
    {
        writeRows (rows);
        arguments.insert (arguments.begin(), "x.csv");
        return found (rule, arguments);
    }

    Lines foundInProject (const std::string& rule, const std::string& events,
                          std::vector<std::string> arguments = {}) const
    {
        writeProject (events);
        arguments.insert (arguments.begin(), "x.json");
        return found (rule, arguments);
    }

    /** The rules of all findings in x.csv, in their order. */
    Lines rulesIn (const std::string& rows, std::vector<std::string> arguments = {}) const
    {
        writeRows (rows);
        arguments.insert (arguments.begin(), "x.csv");
        Lines rules;
        const auto document = check (arguments).json();

        for (const auto& finding : document["findings"])
            rules.push_back (finding["cueNumber"].get<std::string>() + " "
                             + finding["rule"].get<std::string>());

        return rules;
    }
};
