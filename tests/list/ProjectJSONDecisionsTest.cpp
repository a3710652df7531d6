// SPDX-License-Identifier: GPL-3.0-only
// What a project in JSON may say although nothing of this program says it, and what becomes of it.
#include "core/cast/ADRCueReasonsManager.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"
#include "list/ProjectJSON.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::TCToolbox;
using json = nlohmann::ordered_json;

class ProjectJSONDecisionsTest : public OvermarksTest
{
protected:
    static Project load (const std::string& members)
    {
        auto project = Project::createEmpty (timeInfoAt ("25"));
        EXPECT_EQ (ProjectJSON::fromText (R"({"overmarks": 1, )" + members + "}", project), juce::String());
        return project;
    }

    static std::shared_ptr<Event> eventOf (const std::string& members)
    {
        return load (R"("events": [{)" + members + "}]").list->events.front();
    }

    static json eventAgain (const std::string& members)
    {
        return json::parse (ProjectJSON::toText (load (R"("events": [{)" + members + "}]")))["events"][0];
    }
};

TEST_F (ProjectJSONDecisionsTest, aTypeThatNobodyKnowsStaysAsItStands)
{
    for (const int type : { -1, 0, 3, 64, 1000000 })
        EXPECT_EQ (eventAgain (R"("type": )" + std::to_string (type))["type"], type);
}

TEST_F (ProjectJSONDecisionsTest, aRegionThatNobodyKnowsStaysAsItStands)
{
    for (const int region : { -1, 4, 99 })
        EXPECT_EQ (
            eventAgain (R"("forcedNarrativeRegion": )" + std::to_string (region))["forcedNarrativeRegion"],
            region);
}

TEST_F (ProjectJSONDecisionsTest, frameIndicesStayAsTheyStand)
{
    const auto event = eventAgain (R"("startFrameIndex": 500, "inPointFrameIndex": 7, "endFrameIndex": -90)");
    EXPECT_EQ (event["startFrameIndex"], 500);
    EXPECT_EQ (event["inPointFrameIndex"], 7);
    EXPECT_EQ (event["endFrameIndex"], -90);
}

TEST_F (ProjectJSONDecisionsTest, aReasonThatWasNeverSetStaysAndReadsNone)
{
    const auto event = eventOf (R"("reason": -1)");
    EXPECT_EQ (event->getReason(), -1);
    const auto cell =
        Poco::AnyCast<int> (EventKeyValueEditor (event).getValueForKey (EventKeyValueEditor::KV_Reason));
    EXPECT_EQ (ADRCueReasonsManager::sharedManager()->getReasonFromInteger (cell), juce::String ("None"));
}

TEST_F (ProjectJSONDecisionsTest, aFirstFrameOfActionThatWasNotSetFollowsTheOriginAfterwardsToo)
{
    const auto unset = Project::createEmpty (timeInfoAt ("25", "01:00:00:00"));
    auto back = Project::createEmpty (timeInfoAt ("25"));
    ASSERT_EQ (ProjectJSON::fromText (ProjectJSON::toText (unset), back), juce::String());
    back.timeInfo->timeOrigin = TCToolbox::tcTimeFromString ("02:00:00:00");
    EXPECT_EQ (back.timeInfo->getFirstFrameOfAction(), TCToolbox::tcTimeFromString ("02:00:00:00"));
}

TEST_F (ProjectJSONDecisionsTest, aFirstFrameOfActionThatWasSetStays)
{
    const auto project = load (R"("timeInfo": {"firstFrameOfAction": "00:00:08:00"})");
    project.timeInfo->timeOrigin = TCToolbox::tcTimeFromString ("02:00:00:00");
    EXPECT_EQ (project.timeInfo->getFirstFrameOfAction(), TCToolbox::tcTimeFromString ("00:00:08:00"));
}

TEST_F (ProjectJSONDecisionsTest, halfOfARateTellsTheRest)
{
    const auto whole = load (R"("timeInfo": {"framesPerSecond": 24})").timeInfo->tcDef;
    EXPECT_EQ (TCToolbox::rateNameForTCDef (whole), juce::String ("24"));
    const auto fraction =
        load (R"("timeInfo": {"frameRateNumerator": 24000, "frameRateDenominator": 1001})").timeInfo->tcDef;
    EXPECT_EQ (TCToolbox::rateNameForTCDef (fraction), juce::String ("23.976"));
}

TEST_F (ProjectJSONDecisionsTest, aRateWithoutANameIsTakenWhereItsTimecodeIsClear)
{
    const auto def =
        load (R"("timeInfo": {"frameRateNumerator": 15, "framesPerSecond": 15})").timeInfo->tcDef;
    EXPECT_EQ (def.framesPerSecond, 15);
    EXPECT_EQ (def.frameRateNumerator, 15u);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
