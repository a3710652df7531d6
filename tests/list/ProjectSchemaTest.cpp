// SPDX-License-Identifier: GPL-3.0-only
// docs/project.schema.json says what a project in JSON may hold: what is written keeps to it, and what it refuses is refused
// when it is read.
#include "list/ProjectJSON.h"

#include "support/CueLists.h"
#include "support/OvermarksTest.h"
#include "support/RandomProjects.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace ZEP::Overmarks::Testing
{
namespace
{

class ProjectSchemaTest : public OvermarksTest
{
protected:
    ProjectSchemaTest()
    {
        std::ifstream stream (OVERMARKS_SOURCES "/docs/project.schema.json");
        text = { std::istreambuf_iterator<char> (stream), {} };
        parsed.Parse (text.c_str());
        EXPECT_FALSE (parsed.HasParseError());
        schema = std::make_unique<rapidjson::SchemaDocument> (parsed);
    }

    /** @returns the place where a text breaks the rules; "" where it keeps them */
    std::string placeOfMistake (const std::string& project) const
    {
        rapidjson::Document document;
        document.Parse<rapidjson::kParseFullPrecisionFlag> (project.c_str(), project.size());

        if (document.HasParseError())
            return "no JSON";

        rapidjson::SchemaValidator validator (*schema);

        if (document.Accept (validator))
            return {};

        rapidjson::StringBuffer place;
        validator.GetInvalidDocumentPointer().StringifyUriFragment (place);
        return std::string (place.GetString()) + " " + validator.GetInvalidSchemaKeyword();
    }

    static bool isRead (const std::string& project)
    {
        auto read = Project::createEmpty (timeInfoAt ("25"));
        return ProjectJSON::fromText (project, read).isEmpty();
    }

    std::set<std::string> membersOf (const nlohmann::json& properties) const
    {
        std::set<std::string> names;

        for (const auto& [name, rules] : properties.items())
            names.insert (name);

        return names;
    }

    std::string text;
    rapidjson::Document parsed;
    std::unique_ptr<rapidjson::SchemaDocument> schema;
};

TEST_F (ProjectSchemaTest, whateverIsWrittenKeepsToIt)
{
    for (unsigned int seed = 0; seed < 300; ++seed)
    {
        const auto project = ProjectJSON::toText (RandomProjects (seed).make());
        ASSERT_EQ (placeOfMistake (project), "") << seed << "\n" << project;
    }
}

TEST_F (ProjectSchemaTest, everyMemberThatIsWrittenIsDescribedAndNoOther)
{
    const auto rules = nlohmann::json::parse (text);
    const auto described = membersOf (rules["definitions"]["event"]["properties"]);
    auto project = Project::createEmpty (timeInfoAt ("25"));
    DocumentSettings::visit (project.documents,
                             [] (const char*, auto& field)
                             {
                                 if constexpr (std::is_same_v<std::decay_t<decltype (field)>, juce::String>)
                                     field = "x";
                                 else
                                     field = 1;
                             });
    const auto written = nlohmann::json::parse (ProjectJSON::toText (project));
    EXPECT_EQ (described, membersOf (written["events"][0]));
    EXPECT_EQ (membersOf (rules["properties"]), membersOf (written));
    EXPECT_EQ (membersOf (rules["properties"]["timeInfo"]["properties"]), membersOf (written["timeInfo"]));
    EXPECT_EQ (membersOf (rules["properties"]["documents"]["properties"]), membersOf (written["documents"]));
}

TEST_F (ProjectSchemaTest, whatItRefusesIsRefused)
{
    for (const auto* project :
         { "[]",
           "{}",
           R"({"overmarks": 2})",
           R"({"overmarks": 1, "nane": ""})",
           R"({"overmarks": 1, "name": 7})",
           R"({"overmarks": 1, "timeInfo": {"framesPerSecond": 0}})",
           R"({"overmarks": 1, "timeInfo": {"framesPerSecond": 101}})",
           R"({"overmarks": 1, "timeInfo": {"timeOrigin": "one o'clock"}})",
           R"({"overmarks": 1, "timeInfo": {"rate": 25}})",
           R"({"overmarks": 1, "sortDescending": 1})",
           R"({"overmarks": 1, "userReasons": ["1", "2", "3", "4", "5", "6", "7", "8", "9"]})",
           R"({"overmarks": 1, "characters": {"id": "c1"}})",
           R"({"overmarks": 1, "characters": [{"age": 7}]})",
           R"({"overmarks": 1, "documents": {"tittle": ""}})",
           R"({"overmarks": 1, "events": [{"color": "red"}]})",
           R"({"overmarks": 1, "events": [{"inPointFrameIndex": 1.5}]})",
           R"({"overmarks": 1, "events": [{"inPointFrameIndex": 2147483648}]})",
           R"({"overmarks": 1, "events": [{"reason": 41}]})",
           R"({"overmarks": 1, "events": [{"reason": -2}]})",
           R"({"overmarks": 1, "events": [{"done": "yes"}]})",
           R"({"overmarks": 1, "events": [{"text": 7}]})",
           R"({"overmarks": 1, "events": [{"text": {"text": "Go", "runs": [{"colour": "red"}]}}]})",
           R"({"overmarks": 1, "events": [{"text": {"text": "Go", "runs": [{"height": 0}]}}]})",
           R"({"overmarks": 1, "events": [{"text": {"text": "Go", "runs": [{"start": -1}]}}]})",
           R"({"overmarks": 1, "events": [{"text": {"text": "Go", "runs": [{"big": true}]}}]})" })
    {
        EXPECT_NE (placeOfMistake (project), "") << project;
        EXPECT_FALSE (isRead (project)) << project;
    }
}

TEST_F (ProjectSchemaTest, whatItAllowsIsRead)
{
    for (
        const auto* project :
        { R"({"overmarks": 1})", R"({"overmarks": 1, "events": []})",
          R"({"overmarks": 1, "events": [{"reason": -1}, {"reason": 40}]})",
          R"({"overmarks": 1, "timeInfo": {"framesPerSecond": 30, "dropFrame": true}, "events": [{}]})",
          R"({"overmarks": 1, "timeInfo": {"timeOrigin": "01:00:00;00", "frameRateNumerator": 30000, "frameRateDenominator": 1001, "dropFrame": true}})",
          R"({"overmarks": 1, "characters": [{"id": "c1", "name": "ANNA"}], "events": [{"characterID": "c1", "text": "Go"}]})",
          R"({"overmarks": 1, "events": [{"text": {"text": "Go", "runs": [{"bold": true, "colour": "ffFF0000"}]}}]})" })
    {
        EXPECT_EQ (placeOfMistake (project), "") << project;
        EXPECT_TRUE (isRead (project)) << project;
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
