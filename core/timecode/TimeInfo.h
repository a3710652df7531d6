// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCDef.h"
#include "core/timecode/TCTime.h"

#include <optional>

namespace ZEP::Core
{

/** The project's time reference: where the picture starts and how its timecode counts.

    Every event of a project shares one object through a std::shared_ptr and reads it directly; all frame
    indices count from `timeOrigin`. Changing it moves every event's timecode without a notification, so only
    the application writes to it, on the thread of the events.
*/
class TimeInfo
{
public:
    TimeInfo() = default;
    /** Both as given. */
    explicit TimeInfo (_TCDef definition, _TCTime origin = {}) : timeOrigin (origin), tcDef (definition) {}

    /** The first frame of action of the picture, behind leader and slate; `timeOrigin` for as long as none
        is set. */
    [[nodiscard]] _TCTime getFirstFrameOfAction() const { return firstFrameOfAction.value_or (timeOrigin); }

    void setFirstFrameOfAction (_TCTime time) { firstFrameOfAction = time; } ///< Until the next call.

    _TCTime timeOrigin; ///< timecode of frame index 0 of the picture
    _TCDef tcDef;       ///< the timecode definition of the project

private:
    std::optional<_TCTime> firstFrameOfAction;
};

} // namespace ZEP::Core
