// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>
#include <Poco/Logger.h>
#include <Poco/Message.h>

#include <stdexcept>

namespace ZEP::Overmarks::Testing
{

/** A log that can't be written, as long as this object lives: its disk is full, say. */
class FailingLog final
{
public:
    FailingLog()
    {
        Poco::Logger::destroy (name);
        Poco::Logger::get (name).setChannel (Poco::AutoPtr<Full> (new Full));
        Poco::Logger::get (name).setLevel (Poco::Message::PRIO_ERROR);
    }

    FailingLog (const FailingLog&) = delete;
    FailingLog& operator= (const FailingLog&) = delete;
    ~FailingLog() { Poco::Logger::destroy (name); }

private:
    struct Full final : public Poco::Channel
    {
        void log (const Poco::Message&) override { throw std::runtime_error ("the log is full"); }
    };

    static constexpr auto name = "ZEP";
};

} // namespace ZEP::Overmarks::Testing
