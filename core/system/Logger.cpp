// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/Logger.h"

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

/** Commands a terminal, ends a line or turns what follows round. */
bool isUnshown (juce::juce_wchar code)
{
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool breaksLine = code == 0x2028 || code == 0x2029;
    const bool turnsDirection = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return isControl || breaksLine || turnsDirection;
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
        else if (isUnshown (code))
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
