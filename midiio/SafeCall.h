// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/Logger.h"
#include "core/text/StringUtil.h"

#include <Poco/Exception.h>

#include <exception>
#include <string>

namespace ZEP::MIDIIO
{

/** The log is the application's and may fail too; that must not end a thread. */
inline void tellLog (const std::string& words) noexcept
{
    try
    {
        ZEP::Core::Logger::error (ZEP::Core::StringUtil::fromUTF8 (words));
    }
    catch (...)
    {
        // There is nobody left to tell.
    }
}

/** Calls what belongs to the application on a thread of this library. That it fails is logged, behind the given words, and
    must end neither the thread nor the process. */
template <typename Work>
void callSafely (const std::string& failure, const Work& work)
{
    try
    {
        work();
    }
    catch (const Poco::Exception& error)
    {
        tellLog (failure + error.displayText());
    }
    catch (const std::exception& error)
    {
        tellLog (failure + error.what());
    }
    catch (...)
    {
        tellLog (failure + "unknown reason");
    }
}

} // namespace ZEP::MIDIIO
