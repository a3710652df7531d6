// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/Notification.h"

#include <string>

namespace ZEP::Overmarks
{

/** Key of a notification's userInfo: a std::vector<Event*> with the events that have changed. */
OVERMARKS_API extern const std::string EventChangedNotification_EventsKey;

/** Key of a notification's userInfo for receivers that rebuild whole lists; this library never fills it. */
OVERMARKS_API extern const std::string EventChangedNotification_RequiresListReloadKey;

/** Some field of an event has changed. Delivered on the thread of the change, before the setter returns. */
class OVERMARKS_API EventAttributeDidChangeNotification : public ZEP::Core::Notification
{
public:
    using Notification::Notification;
    ~EventAttributeDidChangeNotification() override;
};

/** A change has moved an event in time. Delivered on the thread of the change, before the setter returns. */
class OVERMARKS_API EventTimingDidChangeNotification : public ZEP::Core::Notification
{
public:
    using Notification::Notification;
    ~EventTimingDidChangeNotification() override;
};

} // namespace ZEP::Overmarks
