// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "event/EventNotifications.h"

#include <Poco/Any.h>
#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** Keeps what arrived of one class of notification since it was made or reset, as an application's window would see it. */
template <typename NotificationClass>
class NotificationCounter final
{
public:
    NotificationCounter() { Poco::NotificationCenter::defaultCenter().addObserver (observer()); }
    ~NotificationCounter() { Poco::NotificationCenter::defaultCenter().removeObserver (observer()); }

    NotificationCounter (const NotificationCounter&) = delete;
    NotificationCounter& operator= (const NotificationCounter&) = delete;

    [[nodiscard]] int count() const { return static_cast<int> (arrived.size()); }
    [[nodiscard]] const NotificationClass& last() const { return *arrived.back(); }
    void reset() { arrived.clear(); }

private:
    Poco::NObserver<NotificationCounter, NotificationClass> observer()
    {
        return { *this, &NotificationCounter::take };
    }

    void take (const Poco::AutoPtr<NotificationClass>& notification) { arrived.push_back (notification); }

    std::vector<Poco::AutoPtr<NotificationClass>> arrived;
};

/** The two notifications of events. */
struct EventNews
{
    NotificationCounter<EventAttributeDidChangeNotification> attributes;
    NotificationCounter<EventTimingDidChangeNotification> timings;

    void reset()
    {
        attributes.reset();
        timings.reset();
    }

    [[nodiscard]] int count() const { return attributes.count() + timings.count(); }
};

/** The events that a notification of an event names. */
inline std::vector<Event*> eventsOf (const ZEP::Core::Notification& notification)
{
    const auto entry = notification.userInfo.find (EventChangedNotification_EventsKey);
    if (entry == notification.userInfo.end())
        return {};
    return Poco::RefAnyCast<std::vector<Event*>> (entry->second);
}

} // namespace ZEP::Overmarks::Testing
