// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/Notification.h"

#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>
#include <gtest/gtest.h>

#include <thread>

namespace
{
using ZEP::Core::Notification;

class CueChanged final : public Notification
{
public:
    using Notification::Notification;
};

class CueMoved final : public Notification
{
public:
    using Notification::Notification;
};

class Listener final
{
public:
    Listener() { Poco::NotificationCenter::defaultCenter().addObserver (observer); }
    ~Listener() { Poco::NotificationCenter::defaultCenter().removeObserver (observer); }

    int changes = 0;
    int number = 0;
    std::thread::id thread;

private:
    void take (const Poco::AutoPtr<CueChanged>& news)
    {
        ++changes;
        thread = std::this_thread::get_id();
        number = Poco::AnyCast<int> (news->userInfo.at ("number"));
    }

    Poco::NObserver<Listener, CueChanged> observer { *this, &Listener::take };
};

template <typename News>
void post (int number)
{
    Poco::NotificationCenter::defaultCenter().postNotification (
        Poco::AutoPtr<News> (new News ({ { "number", number } })));
}
} // namespace

TEST (Notification, copiesWhatItIsAbout)
{
    std::map<std::string, Poco::Any> userInfo { { "number", 4 } };
    const Poco::AutoPtr<CueChanged> news (new CueChanged (userInfo));
    userInfo["number"] = 5;

    EXPECT_EQ (news->userInfo.size(), 1u);
    EXPECT_EQ (Poco::AnyCast<int> (news->userInfo.at ("number")), 4);
}

TEST (Notification, isToldApartByItsType)
{
    const Listener listener;

    post<CueMoved> (1);
    EXPECT_EQ (listener.changes, 0);
    post<CueChanged> (2);
    EXPECT_EQ (listener.changes, 1);
    EXPECT_EQ (listener.number, 2);
}

TEST (Notification, isDeliveredAtOnceOnTheThreadOfTheChange)
{
    const Listener listener;
    std::thread::id poster;
    std::thread other (
        [&]
        {
            poster = std::this_thread::get_id();
            post<CueChanged> (3);
            EXPECT_EQ (listener.changes, 1);
        });
    other.join();

    EXPECT_EQ (listener.thread, poster);
}
