// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/Notification.h"

namespace ZEP::Core
{
Notification::Notification (const std::map<std::string, Poco::Any>& info) : userInfo (info) {}

Notification::~Notification() = default;
} // namespace ZEP::Core
