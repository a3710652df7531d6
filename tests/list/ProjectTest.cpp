// SPDX-License-Identifier: GPL-3.0-only
#include "list/Project.h"

#include "support/CueLists.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <gmock/gmock.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ZEP::Core::ADRCharacter;
using ZEP::Core::ADRCueReasonsManager;

class ProjectTest : public OvermarksTest
{
};

TEST_F (ProjectTest, anEmptyProjectHasItsTwoFadesAndNothingElse)
{
    const auto info = timeInfoAt ("24", "01:00:00:00");
    const auto project = Project::createEmpty (info);

    EXPECT_EQ (project.name, juce::String());
    EXPECT_EQ (project.timeInfo, info);
    EXPECT_TRUE (project.characters->characters().empty());
    EXPECT_TRUE (project.userReasons.empty());
    ASSERT_EQ (project.list->events.size(), 2u);
    EXPECT_EQ (project.list->events[0]->getType(), EventTypeFadeIn);
    EXPECT_EQ (project.list->events[1]->getType(), EventTypeFadeOut);
    EXPECT_EQ (project.list->fadeInEvent, project.list->events[0]);
    EXPECT_EQ (project.list->fadeOutEvent, project.list->events[1]);
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (ProjectTest, theFadesOfAnEmptyProjectHaveNoTimesYet)
{
    const auto info = timeInfoAt ("24", "01:00:00:00");
    const auto project = Project::createEmpty (info);
    for (const auto& fade : project.list->events)
    {
        EXPECT_EQ (timesOf (*fade), "-1|-1..-1");
        EXPECT_EQ (fade->getTimeInfo(), info);
        EXPECT_FALSE (fade->getUuid().isEmpty());
    }
}

TEST_F (ProjectTest, theCurrentProjectsCharactersAndReasonsAreTheProcessesOwn)
{
    auto project = Project::createEmpty (timeInfoAt ("25"));
    const auto id = project.characters->addCharacter (std::make_shared<ADRCharacter> ("ANNA"), false, {});
    project.userReasons = { "Dentist", "Aeroplane" };
    auto spoken = cue ("A1", 100);
    setField (*spoken, "characterID", id);
    EXPECT_EQ (spoken->character(), nullptr);

    project.makeCurrent();
    ASSERT_NE (spoken->character(), nullptr);
    EXPECT_EQ (spoken->character()->name, juce::String ("ANNA"));
    const auto names = ADRCueReasonsManager::sharedManager()->userReasonNames();
    EXPECT_EQ (names[0], juce::String ("Dentist"));
    EXPECT_EQ (names[1], juce::String ("Aeroplane"));
    EXPECT_EQ (names[2], juce::String());

    Project::createEmpty (timeInfoAt ("25")).makeCurrent();
    EXPECT_EQ (spoken->character(), nullptr);
    EXPECT_EQ (ADRCueReasonsManager::sharedManager()->userReasonNames()[0], juce::String());
}

} // namespace
} // namespace ZEP::Overmarks::Testing
