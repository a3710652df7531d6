// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>
#include <Poco/Logger.h>
#include <Poco/Message.h>

#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** What the library tells whoever runs the program, as long as this object lives, instead of on standard error. */
class CollectedLog final
{
public:
    CollectedLog()
    {
        Poco::Logger::destroy (name);
        Poco::Logger::get (name).setChannel (channel);
        Poco::Logger::get (name).setLevel (Poco::Message::PRIO_ERROR);
    }

    CollectedLog (const CollectedLog&) = delete;
    CollectedLog& operator= (const CollectedLog&) = delete;
    ~CollectedLog() { Poco::Logger::destroy (name); }

    [[nodiscard]] const std::vector<std::string>& lines() const { return channel->lines; }

private:
    struct Lines final : public Poco::Channel
    {
        void log (const Poco::Message& message) override { lines.push_back (message.getText()); }

        std::vector<std::string> lines;
    };

    static constexpr auto name = "ZEP";
    Poco::AutoPtr<Lines> channel { new Lines };
};

} // namespace ZEP::Overmarks::Testing
