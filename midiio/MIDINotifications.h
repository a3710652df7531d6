// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_MIDIIO/Export.h"
#include "core/system/Notification.h"

#include <string>

namespace ZEP::MIDIIO
{

/** Key of a trigger's userInfo: a std::string with the text form of the message, as in addMIDIEventTrigger(). */
ZEP_MIDIIO_API extern const std::string UserTriggerEventNotificationEventDictKey;

/** Key of a trigger's userInfo: a double, seconds on the clock of juce::Time::getMillisecondCounter(). */
ZEP_MIDIIO_API extern const std::string UserTriggerEventTimestampDictKey;

/** Key of a spanner's userInfo: a std::string with the bytes of the whole message. */
ZEP_MIDIIO_API extern const std::string SpannerEventNotificationMIDIMsgDictKey;

/** Key of a spanner's userInfo: a double, seconds on the clock of juce::Time::getMillisecondCounter(). */
ZEP_MIDIIO_API extern const std::string SpannerEventNotificationTimestampDictKey;

/** A message that is registered as a trigger has come in. Delivered on the MIDI system's own thread. */
class ZEP_MIDIIO_API UserEventTriggerReceivedNotification : public ZEP::Core::Notification
{
public:
    using Notification::Notification;
    ~UserEventTriggerReceivedNotification() override;
};

/** A spanner message has come in, whole. Delivered on the MIDI system's own thread. */
class ZEP_MIDIIO_API SpannerEventReceivedNotification : public ZEP::Core::Notification
{
public:
    using Notification::Notification;
    ~SpannerEventReceivedNotification() override;
};

} // namespace ZEP::MIDIIO
