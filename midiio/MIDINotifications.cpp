// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDINotifications.h"

namespace ZEP::MIDIIO
{

const std::string UserTriggerEventNotificationEventDictKey = "event";
const std::string UserTriggerEventTimestampDictKey = "timestamp";
const std::string SpannerEventNotificationMIDIMsgDictKey = "message";
const std::string SpannerEventNotificationTimestampDictKey = "timestamp";

UserEventTriggerReceivedNotification::~UserEventTriggerReceivedNotification() = default;
SpannerEventReceivedNotification::~SpannerEventReceivedNotification() = default;

} // namespace ZEP::MIDIIO
