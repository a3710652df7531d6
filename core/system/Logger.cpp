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
/** File names and cells are quoted in the log, which may go to a terminal: nothing in them may command it, or pass for a message
    of its own. */
std::string withoutControlCodes (const juce::String& text)
{
    juce::String clean;
    clean.preallocateBytes (text.getNumBytesAsUTF8());
    for (auto letter = text.getCharPointer(); ! letter.isEmpty();)
    {
        const auto code = letter.getAndAdvance();
        const bool isGap = code == '\n' || code == '\t';
        const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
        const bool breaksLine = code == 0x2028 || code == 0x2029;
        const bool turnsDirection = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
        const juce::juce_wchar gap = ' ', unshown = '?';
        clean += isGap ? gap : isControl || breaksLine || turnsDirection ? unshown : code;
    }
    return clean.toStdString();
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
