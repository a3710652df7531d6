// SPDX-License-Identifier: GPL-3.0-only
#include "export/ADROverviewPDFExporter.h"
#include "support/CueLists.h"
#include "support/OvermarksTest.h"

#include <random>

namespace
{

using namespace ZEP::Overmarks;
using namespace ZEP::Overmarks::Testing;
using ZEP::Orvelle::adrOverviewDataSets;

class ADROverviewDataSets : public OvermarksTest
{
protected:
    static std::shared_ptr<Event> lineOf (const juce::String& characterID, const juce::String& number,
                                          bool done = false)
    {
        auto made = cue (number, 100);
        setField (*made, "characterID", characterID);
        setField (*made, "done", done);
        return made;
    }
};

TEST_F (ADROverviewDataSets, theCastHasARowEachInItsOrder)
{
    const auto tom = addCharacter ("TOM", "C. Berg", "T"), anna = addCharacter ("ANNA", "B. Miller", "A");
    const auto list = listOf ({ lineOf (anna, "1"), lineOf (anna, "1", true), lineOf (anna, "2") });
    const auto sets = adrOverviewDataSets (*list, *Event::getADRCharacterMap());
    ASSERT_EQ (sets.size(), 2u);
    EXPECT_EQ (sets[0].character, "TOM");
    EXPECT_EQ (sets[0].numberOfLines, 0);
    EXPECT_EQ (sets[0].doneRatio, 0.0f);
    EXPECT_EQ (sets[1].character, "ANNA");
    EXPECT_EQ (sets[1].actor, "B. Miller");
    EXPECT_EQ (sets[1].prefix, "A");
    EXPECT_EQ (sets[1].numberOfLines, 3);
    EXPECT_EQ (sets[1].numberOfCues, 2);
    EXPECT_EQ (sets[1].doneRatio, 1.0f / 3.0f);
}

TEST_F (ADROverviewDataSets, whatNobodySpeaksStandsAtTheEnd)
{
    addCharacter ("ANNA");
    const auto sets = adrOverviewDataSets (*listOf ({ lineOf ({}, "1"), lineOf ("lost", "2", true) }),
                                           *Event::getADRCharacterMap());
    ASSERT_EQ (sets.size(), 2u);
    EXPECT_EQ (sets[1].character, "<no char>");
    EXPECT_EQ (sets[1].numberOfLines, 2);
    EXPECT_EQ (sets[1].doneRatio, 0.5f);
}

TEST_F (ADROverviewDataSets, onlyLinesOfDialogueCount)
{
    const auto anna = addCharacter ("ANNA");
    auto marker = event (EventTypeMarker, "m", 1, 1, 5);
    setField (*marker, "characterID", anna);
    const auto sets = adrOverviewDataSets (*listOf ({ marker }), *Event::getADRCharacterMap());
    ASSERT_EQ (sets.size(), 1u);
    EXPECT_EQ (sets[0].numberOfLines, 0);
}

TEST_F (ADROverviewDataSets, theNumbersAreThoseOfTheList)
{
    std::mt19937 random (7);
    std::vector<juce::String> ids { {}, "lost" };

    for (int i = 0; i < 6; ++i)
        ids.push_back (addCharacter (i < 2 ? "TWIN" : "C" + juce::String (i)));

    EventArray::Events events;

    for (int i = 0; i < 300; ++i)
        events.push_back (lineOf (ids[random() % ids.size()], juce::String (static_cast<int> (random() % 40)),
                                  random() % 3 == 0));

    const auto list = listOf (events);
    const auto& cast = *Event::getADRCharacterMap();
    const auto sets = adrOverviewDataSets (*list, cast);
    auto characters = cast.characters();
    characters.push_back (nullptr);
    ASSERT_EQ (sets.size(), characters.size());

    for (std::size_t i = 0; i < sets.size(); ++i)
    {
        int lines = -1, cues = -1;
        float ratio = -1;
        list->adrOverviewDataForCharacter (characters[i], lines, cues, ratio);
        EXPECT_EQ (sets[i].numberOfLines, lines);
        EXPECT_EQ (sets[i].numberOfCues, cues);
        EXPECT_EQ (sets[i].doneRatio, ratio);
    }
}

} // namespace
