// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/Logger.h"

#include <Poco/AutoPtr.h>
#include <Poco/ConsoleChannel.h>
#include <Poco/Logger.h>

#include <iostream>

namespace ZEP::Core
{
namespace
{
constexpr auto loggerName = "ZEP";

Poco::Logger& logger()
{
    // Asked for each time: the application may have shut all loggers down in between.
    const bool isNew = ! Poco::Logger::has (loggerName);
    auto& found = Poco::Logger::get (loggerName);
    if (isNew)
    {
        if (found.getChannel().isNull())
            found.setChannel (new Poco::ConsoleChannel (std::cerr));
        found.setLevel (Poco::Message::PRIO_ERROR);
    }
    return found;
}
} // namespace

void Logger::debug (const juce::String& text)
{
    auto& target = logger();
    if (target.debug())
        target.debug (text.toStdString());
}

void Logger::error (const juce::String& text)
{
    auto& target = logger();
    if (target.error())
        target.error (text.toStdString());
}
} // namespace ZEP::Core
