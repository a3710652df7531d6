// SPDX-License-Identifier: GPL-3.0-only
#include "export/TTALActionTime.h"

#include "event/EventFields.h"

#include <algorithm>
#include <string_view>
#include <type_traits>

namespace ZEP::Overmarks
{
namespace
{

/** @param frames  wraps around at the ends of the range, so that the way back always leads home */
void move (Event& event, unsigned frames)
{
    EventFields::visit (event,
                        [frames] (std::string_view name, auto& field)
                        {
                            if constexpr (std::is_same_v<std::decay_t<decltype (field)>, int>)
                                if (name == "startFrameIndex" || name == "inPointFrameIndex"
                                    || name == "endFrameIndex")
                                    field = static_cast<int> (static_cast<unsigned> (field) + frames);
                        });

    event.setNotificationsSuppressed (false);
    event.setUndoBypass (false);
}

} // namespace

TTALActionTime::TTALActionTime (const std::vector<std::shared_ptr<Event>>& events, int offset)
    : moved (events),
      frames (static_cast<unsigned> (offset))
{
    std::sort (moved.begin(), moved.end());
    moved.erase (std::unique (moved.begin(), moved.end()), moved.end());

    for (const auto& event : moved)
        move (*event, 0U - frames);
}

TTALActionTime::~TTALActionTime()
{
    for (const auto& event : moved)
        move (*event, frames);
}

} // namespace ZEP::Overmarks
