// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/EventArray.h"
#include "list/EventArrayNotifications.h"

#include <Poco/NotificationCenter.h>

#include <utility>

namespace ZEP::Overmarks
{

/** Tells everyone at once that this list has changed. @param userInfo  what the news holds besides the list itself */
template <typename NotificationClass>
void EventArray::post (std::map<std::string, Poco::Any> userInfo)
{
    userInfo["object"] = this;
    Poco::NotificationCenter::defaultCenter().postNotification (new NotificationClass (userInfo));
}

} // namespace ZEP::Overmarks
