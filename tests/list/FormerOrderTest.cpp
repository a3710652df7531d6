// SPDX-License-Identifier: GPL-3.0-only
#include "list/FormerOrder.h"

#include "support/CueLists.h"
#include "support/OvermarksTest.h"

#include <algorithm>
#include <clocale>
#include <functional>
#include <gmock/gmock.h>
#include <locale.h>
#include <numeric>
#include <random>

namespace ZEP::Overmarks::Testing
{
namespace
{

using List = std::vector<std::shared_ptr<Event>>;
using ::testing::ElementsAre;
using Places = std::vector<std::uint32_t>;

/** Cues of a list that is sorted by its cue numbers as texts. */
class FormerOrderTest : public OvermarksTest
{
protected:
    static std::shared_ptr<Event> numbered (const juce::String& number)
    {
        auto made = std::make_shared<Event>();
        setNumber (*made, number);
        return made;
    }

    static void setNumber (Event& event, const juce::String& number)
    {
        setField (event, "cueNumber", number);
    }

    static List listOf (std::initializer_list<const char*> numbers)
    {
        List list;
        for (const auto* const number : numbers)
            list.push_back (numbered (number));
        return list;
    }

    static SortCell cellOf (const Event& event)
    {
        SortCell cell;
        cell.text = &event.getCueNumber();
        return cell;
    }

    static EventPlaces placesIn (const List& list)
    {
        EventPlaces places;
        for (const auto& each : list)
            places.push_back (&each);
        return places;
    }

    static Places orderFoundAnew (const List& list)
    {
        Places places (list.size());
        std::iota (places.begin(), places.end(), 0u);
        std::stable_sort (places.begin(), places.end(),
                          [&list] (auto a, auto b)
                          { return list[a]->getCueNumber() < list[b]->getCueNumber(); });
        return places;
    }

    void note (const List& list)
    {
        before = list;
        order.begin ("CueNumber", false, list.size());
        for (const auto& each : list)
            order.add (cellOf (*each));

        RankedPlaces ranked;
        for (const auto place : orderFoundAnew (list))
            ranked.push_back ({ 0, place });
        order.end (ranked);
    }

    bool follow (const List& list)
    {
        if (! order.follow (before, placesIn (list)))
            return false;

        for (std::size_t i = 0; i < list.size(); ++i)
            order.update (i, cellOf (*list[i]));

        if (order.hasTooManyStrays())
            return false;

        strays.clear();
        for (const auto place : order.takeStraysOut())
            strays.push_back (place);
        order.putStrays (goingFirst (
            [&list] (std::size_t place) -> const juce::String& { return list[place]->getCueNumber(); },
            [this] (const juce::String& a, const juce::String& b) { return ++comparisons, a < b; }));
        before = list;
        return true;
    }

    FormerOrder order;
    List before;   ///< the list of which this is the order
    Places strays; ///< that were found the last time
    std::size_t comparisons = 0;
};

TEST_F (FormerOrderTest, whoSaysTheSameIsComparedWithNobody)
{
    const auto list = listOf ({ "3", "1", "2", "1" });
    note (list);
    EXPECT_THAT (order.places(), ElementsAre (1, 3, 2, 0));
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre (1, 3, 2, 0));
    EXPECT_EQ (comparisons, 0u);
}

TEST_F (FormerOrderTest, anOrderInWhichAllStandNeedsNoRanks)
{
    const auto list = listOf ({ "1", "2" });
    note (list);
    order.end ({});
    EXPECT_THAT (order.places(), ElementsAre (0, 1));
}

TEST_F (FormerOrderTest, nothingIsKnownAtFirst)
{
    EXPECT_FALSE (order.follow ({}, {}));
    EXPECT_FALSE (order.follow (listOf ({ "1" }), {}));
}

TEST_F (FormerOrderTest, anOrderIsThatOfItsColumnAndDirection)
{
    note (listOf ({ "1" }));
    EXPECT_TRUE (order.isOf ("CueNumber", false));
    EXPECT_FALSE (order.isOf ("CueNumber", true));
    EXPECT_FALSE (order.isOf ("Text", false));
    order.begin ("Text", true, 0);
    EXPECT_TRUE (order.isOf ("Text", true));
}

TEST_F (FormerOrderTest, anEditIsSeenThoughTheTextIsChangedInPlace)
{
    auto list = listOf ({ "2", "30", "25" });
    note (list);
    EventFields::visit (*list[0],
                        [] (std::string_view name, auto& field)
                        {
                            if constexpr (std::is_same_v<std::decay_t<decltype (field)>, juce::String>)
                                if (name == "cueNumber")
                                    field += "9"; // "29", for which there is room in the same piece
                        });
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre (2, 0, 1));
}

TEST_F (FormerOrderTest, eventsThatComeGoAndMoveAreFound)
{
    auto list = listOf ({ "5", "3", "4", "1", "2" });
    note (list);

    list.insert (list.begin() + 1, numbered ("0"));
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre (1, 4, 5, 2, 3, 0));

    list.erase (list.begin() + 3);
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre (1, 3, 4, 2, 0));

    std::rotate (list.begin(), list.begin() + 1, list.end()); // "5" goes to the end
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre (0, 2, 3, 1, 4));

    list[2] = numbered ("4"); // one instead of another
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre (0, 3, 1, 2, 4));
}

TEST_F (FormerOrderTest, ofEqualOnesTheFirstInTheListGoesFirst)
{
    auto list = listOf ({ "1", "2", "1", "2", "1" });
    note (list);
    setNumber (*list[1], "1");
    std::swap (list[2], list[4]);
    list.push_back (numbered ("1"));
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre (0, 1, 2, 4, 5, 3));
}

TEST_F (FormerOrderTest, anEmptyListHasAnEmptyOrder)
{
    auto list = listOf ({ "1", "2" });
    note (list);
    list.clear();
    ASSERT_TRUE (follow (list));
    EXPECT_THAT (order.places(), ElementsAre());
    list = listOf ({ "1" });
    EXPECT_FALSE (follow (list)) << "there is nothing to go by";
}

TEST_F (FormerOrderTest, listsByChanceHaveTheOrderThatIsFoundAnew)
{
    std::mt19937 random (17);
    const auto anyNumber = [&random] { return juce::String (static_cast<int> (random() % 40)); };

    for (const std::size_t length : { 1u, 2u, 20u, 300u, 3000u })
    {
        List list;
        for (std::size_t i = 0; i < length; ++i)
            list.push_back (numbered (anyNumber()));
        note (list);
        std::size_t followed = 0;

        for (int round = 0; round < 100; ++round)
        {
            for (auto edits = random() % 6; edits > 0; --edits)
            {
                const auto at = [&]
                { return list.begin() + static_cast<std::ptrdiff_t> (random() % list.size()); };
                switch (list.empty() ? 1 : random() % 6)
                {
                    case 0: setNumber (**at(), anyNumber()); break;
                    case 1: list.insert (list.empty() ? list.begin() : at(), numbered (anyNumber())); break;
                    case 2: list.erase (at()); break;
                    case 3: std::iter_swap (at(), at()); break;
                    case 4: std::rotate (list.begin(), at(), list.end()); break; // too much for a long list
                    case 5: list.insert (at(), *at()); break;                    // once more
                }
            }

            if (follow (list))
                ++followed;
            else
                note (list);
            ASSERT_EQ (order.places(), orderFoundAnew (list)) << length << ", round " << round;
        }

        EXPECT_GT (followed, 20u) << length;
    }
}

TEST_F (FormerOrderTest, aListThatWasAnotherOneDoesNoHarm)
{
    std::mt19937 random (19);
    auto list = listOf ({ "4", "2", "3", "1", "3", "2" });

    for (int round = 0; round < 200; ++round)
    {
        note (list);
        std::shuffle (before.begin(), before.end(), random);
        if (round % 3 == 0)
            before[random() % before.size()] = before[random() % before.size()];
        setNumber (*list[random() % list.size()], juce::String (round % 7));
        ASSERT_TRUE (follow (list));
        ASSERT_EQ (order.places(), orderFoundAnew (list)) << round;
    }

    before.pop_back();
    EXPECT_FALSE (follow (list)) << "a list of another length has another order";
}

/** Each thing that a cell says, said otherwise. */
TEST_F (FormerOrderTest, whoeverSaysAnythingElseIsCompared)
{
    const auto list = listOf ({ "1", "2" });
    const auto timed = cue ("3", 100);
    TimecodeKeys keys;
    const std::function<void (SortCell&)> changes[] = {
        [] (SortCell& cell) { cell.text = nullptr; },
        [&] (SortCell& cell) { cell.timecode = keys.startOf (*timed); },
        [] (SortCell& cell) { cell.number = 1; },
        [] (SortCell& cell) { cell.hasInPoint = true; },
        [] (SortCell& cell) { cell.hasTime = true; },
        [] (SortCell& cell) { cell.hasCharacter = true; },
    };

    for (const auto& change : changes)
    {
        note (list);
        ASSERT_TRUE (order.follow (list, placesIn (list)));
        order.update (0, cellOf (*list[0]));
        auto cell = cellOf (*list[1]);
        change (cell);
        order.update (1, cell);
        EXPECT_THAT (order.takeStraysOut(), ElementsAre (1)) << &change - changes;
    }
}

TEST_F (FormerOrderTest, manyChangesDontPay)
{
    List list;
    for (int i = 0; i < 1024; ++i)
        list.push_back (numbered (juce::String (i)));
    note (list);
    const auto expected = order.places();

    auto other = list;
    std::reverse (other.begin(), other.end());
    EXPECT_FALSE (order.follow (list, placesIn (other)));
    other.assign (list.begin(), list.begin() + 900);
    EXPECT_FALSE (order.follow (list, placesIn (other)));
    EXPECT_EQ (order.places(), expected);

    constexpr std::size_t most = 1024 / 128 + 16;
    for (std::size_t i = 0; i < most; ++i)
        setNumber (*list[i * 40], "x");
    EXPECT_TRUE (follow (list));
    EXPECT_EQ (strays.size(), most);
    for (std::size_t i = 0; i < most + 1; ++i)
        setNumber (*list[i * 40], "y");
    EXPECT_FALSE (follow (list));
}

TEST_F (FormerOrderTest, neighboursThatGoOrComeTogetherAreNoReasonToCompareTheOthers)
{
    List list;
    for (int i = 0; i < 10'000; ++i)
        list.push_back (numbered (juce::String (i % 777)));
    note (list);

    const List some (list.begin() + 4000, list.begin() + 4032);
    list.erase (list.begin() + 4000, list.begin() + 4032);
    ASSERT_TRUE (follow (list));
    EXPECT_EQ (strays.size(), 0u);
    EXPECT_EQ (order.places(), orderFoundAnew (list));

    list.insert (list.begin() + 100, some.begin(), some.end());
    ASSERT_TRUE (follow (list));
    EXPECT_EQ (strays.size(), 32u);
    EXPECT_EQ (order.places(), orderFoundAnew (list));

    list.erase (list.begin() + 4000, list.begin() + 4033);
    EXPECT_FALSE (follow (list)) << "so many aren't looked for";
}

TEST_F (FormerOrderTest, anOrderOfAnotherLocaleIsOfNoUse)
{
    const std::string present = std::setlocale (LC_CTYPE, nullptr);
    const juce::ScopeGuard restore { [&present] { std::setlocale (LC_CTYPE, present.c_str()); } };
    note (listOf ({ "1" }));
    ASSERT_NE (std::setlocale (LC_CTYPE, present == "C.UTF-8" ? "C" : "C.UTF-8"), nullptr);
    EXPECT_FALSE (order.isOf ("CueNumber", false));
    std::setlocale (LC_CTYPE, present.c_str());
    EXPECT_TRUE (order.isOf ("CueNumber", false));

    const auto own = ::newlocale (LC_CTYPE_MASK, "C", nullptr);
    const auto former = ::uselocale (own);
    EXPECT_FALSE (order.isOf ("CueNumber", false));
    note (listOf ({ "1" }));
    EXPECT_FALSE (order.isOf ("CueNumber", false)) << "nobody knows whether it is the same one";
    ::uselocale (former);
    ::freelocale (own);
}

/** How often cues are compared after one has got another number, and one has gone to another place. */
TEST_F (FormerOrderTest, comparisonsHardlyGrowWithTheList)
{
    for (const std::size_t length : { 1'000u, 10'000u, 100'000u })
    {
        std::mt19937 random (23);
        List list;
        for (std::size_t i = 0; i < length; ++i)
            list.push_back (numbered (juce::String (static_cast<int> (random() % 5000))));
        note (list);
        setNumber (*list[length / 2], "2500");
        std::rotate (list.begin(), list.begin() + 1, list.end());
        comparisons = 0;
        ASSERT_TRUE (follow (list));
        EXPECT_LE (comparisons, 2 * 17 + 1) << length;
        EXPECT_EQ (order.places(), orderFoundAnew (list));
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
