// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCToolbox.h"
#include "event/EventFields.h"
#include "list/Project.h"
#include "support/PrintEvents.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** The names of the stored fields in which two events differ, with both values. Empty if they are the same to the last bit. */
inline std::string differenceOf (const Event& a, const Event& b)
{
    std::string difference;
    const auto compare = [&] (std::string_view name, const auto& first)
    {
        EventFields::visit (b,
                            [&] (std::string_view otherName, const auto& second)
                            {
                                if constexpr (std::is_same_v<decltype (first), decltype (second)>)
                                    if (name == otherName && ! (first == second))
                                        difference += std::string (name) + ": " + inWords (first) + " / "
                                                      + inWords (second) + "\n";
                            });
    };
    EventFields::visit (a, compare);
    return difference;
}

/** Everything of a project but its events, in words. */
inline std::string frameOf (const Project& project)
{
    const auto& info = *project.timeInfo;
    const auto time = [&info] (ZEP::Core::_TCTime value)
    { return inWords (ZEP::Core::TCToolbox::stringFromTCTime (value, info.tcDef.dropFrame)); };
    std::string words =
        "name " + inWords (project.name) + "\norigin " + time (info.timeOrigin) + "\naction "
        + time (info.getFirstFrameOfAction()) + "\nrate " + inWords (info.tcDef.frameRateNumerator) + "/"
        + inWords (info.tcDef.frameRateDenominator) + " "
        + inWords (static_cast<int> (info.tcDef.framesPerSecond)) + (info.tcDef.dropFrame ? " drop" : "")
        + "\nsort " + inWords (project.list->sortKey) + (project.list->sortDescending ? " down" : " up");
    DocumentSettings::visit (project.documents,
                             [&words] (const char* field, const auto& value)
                             {
                                 if (value != std::decay_t<decltype (value)>())
                                     words += std::string ("\n") + field + " " + inWords (value);
                             });
    for (const auto& reason : project.userReasons)
        words += "\nreason " + inWords (reason);
    for (const auto& id : project.characters->characterIDs())
    {
        const auto character = project.characters->characterForID (id);
        words += "\ncharacter " + inWords (id) + "|" + inWords (character->name) + "|"
                 + inWords (character->prefix) + "|" + inWords (character->actor);
    }
    return words;
}

/** Where two projects differ, in words. Empty if everything that a project stores is the same. */
inline std::string differenceOf (const Project& a, const Project& b)
{
    if (frameOf (a) != frameOf (b))
        return frameOf (a) + "\n--- but\n" + frameOf (b);
    const auto& first = a.list->events;
    const auto& second = b.list->events;
    if (first.size() != second.size())
        return inWords (first.size()) + " events / " + inWords (second.size()) + " events";
    for (std::size_t i = 0; i < first.size(); ++i)
        if (const auto difference = differenceOf (*first[i], *second[i]); ! difference.empty())
            return "event " + inWords (i) + ": " + difference;
    return {};
}

} // namespace ZEP::Overmarks::Testing
