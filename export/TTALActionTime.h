// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** While it lives, its events count their frames from the first frame of action; then each has exactly the indices it had.

    The rule that is easily missed: it writes to the events of the running project, past undo and notification, so nobody else
    may look at them meanwhile, and two must not share an event. It switches their undo and their notifications on, and leaves
    them so. */
class TTALActionTime final
{
public:
    /** @param events  one that is listed twice is moved once
        @param offset  frames from the time origin to the first frame of action */
    TTALActionTime (const std::vector<std::shared_ptr<Event>>& events, int offset);
    ~TTALActionTime();

    TTALActionTime (const TTALActionTime&) = delete;
    TTALActionTime& operator= (const TTALActionTime&) = delete;

private:
    std::vector<std::shared_ptr<Event>> moved;
    unsigned frames;
};

} // namespace ZEP::Overmarks
