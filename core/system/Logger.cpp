// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/Logger.h"

#include "core/system/TerminalOrders.h"

#include <Poco/AutoPtr.h>
#include <Poco/ConsoleChannel.h>
#include <Poco/Logger.h>

#include <iostream>
#include <string>

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

/** File names and cells are quoted in the log, which may go to a terminal: nothing in them may command it, or pass for a message
    of its own. */
std::string withoutControlCodes (const juce::String& text)
{
    std::string clean;
    clean.reserve (text.getNumBytesAsUTF8());
    for (auto letter = text.getCharPointer(); ! letter.isEmpty();)
    {
        const auto* const start = letter.getAddress();
        const auto code = letter.getAndAdvance();
        if (code == '\n' || code == '\t')
            clean += ' ';
        else if (isTerminalOrder (static_cast<std::uint32_t> (code)))
            clean += '?';
        else
            clean.append (start, static_cast<std::size_t> (letter.getAddress() - start));
    }
    return clean;
}
} // namespace

void Logger::debug (const juce::String& text)
{
    auto& target = logger();
    if (target.debug())
        target.debug (withoutControlCodes (text));
}

void Logger::error (const juce::String& text)
{
    auto& target = logger();
    if (target.error())
        target.error (withoutControlCodes (text));
}
} // namespace ZEP::Core
