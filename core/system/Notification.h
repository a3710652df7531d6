// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <Poco/Any.h>
#include <Poco/Notification.h>

#include <map>
#include <string>

namespace ZEP::Core
{
/** Base of everything the library tells the application about; what it is about is the type of the derived
    class.

    Post it newly allocated in a Poco::AutoPtr through Poco::NotificationCenter::defaultCenter(): observers
    run at once, on the thread of the change. Derived classes add nothing; what belongs to the news stands in
    userInfo.
*/
class ZEP_CORE_API Notification : public Poco::Notification
{
public:
    /** Copies the map. */
    explicit Notification (const std::map<std::string, Poco::Any>& userInfo);

    std::map<std::string, Poco::Any> userInfo; ///< each derived class tells its keys; may be empty

protected:
    ~Notification() override;
};
} // namespace ZEP::Core
