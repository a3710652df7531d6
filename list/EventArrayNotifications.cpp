// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventArrayNotifications.h"

namespace ZEP::Overmarks
{

EventArrayNumberChangedNotification::~EventArrayNumberChangedNotification() = default;
EventArrayFilteredEventsChangedNotification::~EventArrayFilteredEventsChangedNotification() = default;
EventArraySelectedEventsChangedNotification::~EventArraySelectedEventsChangedNotification() = default;

} // namespace ZEP::Overmarks
