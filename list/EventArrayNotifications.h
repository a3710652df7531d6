// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/Notification.h"

namespace ZEP::Overmarks
{

// All three hold an EventArray* under "object" in their userInfo and are delivered on the thread of the change, before the
// operation returns.

/** A bulk operation has changed the number of events. */
class OVERMARKS_API EventArrayNumberChangedNotification : public ZEP::Core::Notification
{
public:
    using Notification::Notification;
    ~EventArrayNumberChangedNotification() override;
};

/** The filter has changed. */
class OVERMARKS_API EventArrayFilteredEventsChangedNotification : public ZEP::Core::Notification
{
public:
    using Notification::Notification;
    ~EventArrayFilteredEventsChangedNotification() override;
};

/** The selection has changed; a bool under "skipLocateToEvent" may say that nobody is to locate to it. */
class OVERMARKS_API EventArraySelectedEventsChangedNotification : public ZEP::Core::Notification
{
public:
    using Notification::Notification;
    ~EventArraySelectedEventsChangedNotification() override;
};

} // namespace ZEP::Overmarks
