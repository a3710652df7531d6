// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/EventArray.h"
#include "list/EventArrayNotifications.h"

#include <Poco/Any.h>
#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>

#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** What a list told, in the order in which it told it: "number", "filtered", "selection". */
class ListDiary final
{
public:
    ListDiary()
    {
        auto& center = Poco::NotificationCenter::defaultCenter();
        center.addObserver (Poco::NObserver (*this, &ListDiary::takeNumber));
        center.addObserver (Poco::NObserver (*this, &ListDiary::takeFiltered));
        center.addObserver (Poco::NObserver (*this, &ListDiary::takeSelection));
    }

    ~ListDiary()
    {
        auto& center = Poco::NotificationCenter::defaultCenter();
        center.removeObserver (Poco::NObserver (*this, &ListDiary::takeNumber));
        center.removeObserver (Poco::NObserver (*this, &ListDiary::takeFiltered));
        center.removeObserver (Poco::NObserver (*this, &ListDiary::takeSelection));
    }

    ListDiary (const ListDiary&) = delete;
    ListDiary& operator= (const ListDiary&) = delete;

    /** What arrived since the last call. */
    std::vector<std::string> read() { return std::exchange (entries, {}); }

    std::vector<std::string> entries;
    std::vector<EventArray*> senders;
    std::vector<std::size_t> userInfoSizes;
    std::vector<std::size_t> eventCounts; ///< entries of `events` at the moment of the news

private:
    void takeNumber (const Poco::AutoPtr<EventArrayNumberChangedNotification>& news)
    {
        take ("number", *news);
    }
    void takeFiltered (const Poco::AutoPtr<EventArrayFilteredEventsChangedNotification>& news)
    {
        take ("filtered", *news);
    }
    void takeSelection (const Poco::AutoPtr<EventArraySelectedEventsChangedNotification>& news)
    {
        take ("selection", *news);
    }

    void take (const char* name, const ZEP::Core::Notification& news)
    {
        auto* sender = Poco::AnyCast<EventArray*> (news.userInfo.at ("object"));
        entries.emplace_back (name);
        senders.push_back (sender);
        userInfoSizes.push_back (news.userInfo.size());
        eventCounts.push_back (sender->events.size());
    }
};

} // namespace ZEP::Overmarks::Testing
