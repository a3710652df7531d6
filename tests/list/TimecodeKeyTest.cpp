// SPDX-License-Identifier: GPL-3.0-only
#include "list/TimecodeKey.h"

#include "core/timecode/TCToolbox.h"
#include "support/CueLists.h"
#include "support/OvermarksTest.h"

#include <compare>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

class TimecodeKeyTest : public OvermarksTest
{
protected:
    using Info = std::shared_ptr<ZEP::Core::TimeInfo>;

    static Info infoAt (const char* rate, ZEP::Core::_TCTime origin)
    {
        return std::make_shared<ZEP::Core::TimeInfo> (*ZEP::Core::TCToolbox::tcDefForRateName (rate), origin);
    }

    /** Of every kind of text: with dashes, of two and of more digits, before zero, and of a rate that needs three digits. */
    static std::vector<Info> infos()
    {
        std::vector<Info> all { nullptr,
                                infoAt ("25", {}),
                                infoAt ("25", { .hours = 9, .minutes = 59, .seconds = 50 }),
                                infoAt ("29.97df", { .minutes = 9, .seconds = 59 }),
                                infoAt ("60", { .hours = 99, .minutes = 59, .seconds = 59 }),
                                infoAt ("24", { .hours = -2, .minutes = 30 }),
                                infoAt ("25", { .hours = std::numeric_limits<std::int32_t>::max() }) };
        all.push_back (std::make_shared<ZEP::Core::TimeInfo> (*all[1]));
        all.back()->tcDef.framesPerSecond = 250;
        return all;
    }

    static std::vector<std::shared_ptr<Event>> eventsOf (const std::vector<Info>& timeInfos)
    {
        using Times = std::pair<int, int>;
        std::vector<std::shared_ptr<Event>> events;

        for (const auto& [inPoint, end] :
             { Times { -1, -1 }, Times { -1, 29 }, Times { 0, 1 }, Times { 99, 249 }, Times { 1799, 1800 },
               Times { 17982, 17981 }, Times { 1000000, -1 } })
            for (const auto& info : timeInfos) // no two beside each other have the same
            {
                events.push_back (std::make_shared<Event>());
                events.back()->setTimeInfo (info);
                setTimes (*events.back(), inPoint, inPoint, end);
            }

        return events;
    }
};

TEST_F (TimecodeKeyTest, goesAsTheTextsWhicheverTimeInfoTheEventBeforeHad)
{
    const auto events = eventsOf (infos());
    TimecodeKeys keys;

    for (const auto& a : events)
        for (const auto& b : events)
        {
            EXPECT_EQ (keys.startOf (*a) <=> keys.startOf (*b),
                       a->getStartTCString().compare (b->getStartTCString()) <=> 0)
                << a->getStartTCString() << " " << b->getStartTCString();
            EXPECT_EQ (keys.endOf (*a) <=> keys.endOf (*b),
                       a->getEndTCString().compare (b->getEndTCString()) <=> 0)
                << a->getEndTCString() << " " << b->getEndTCString();
        }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
