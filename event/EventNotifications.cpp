// SPDX-License-Identifier: GPL-3.0-only
#include "event/EventNotifications.h"

namespace ZEP::Overmarks
{

const std::string EventChangedNotification_EventsKey = "events";
const std::string EventChangedNotification_RequiresListReloadKey = "requiresListReload";

EventAttributeDidChangeNotification::~EventAttributeDidChangeNotification() = default;
EventTimingDidChangeNotification::~EventTimingDidChangeNotification() = default;

} // namespace ZEP::Overmarks
