// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "midiio/MIDIDevices.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace ZEP::MIDIIO::Testing
{

/** What is plugged in, and which of it is open. */
struct Desk
{
    std::vector<MIDIDevices::Device> plugged;
    std::vector<std::string> locked; ///< identifiers of what another program keeps for itself
    std::map<std::string, MIDIDevices::Receiver> open;
    int attempts = 0;
    std::mutex mutex; ///< guards `plugged` where a watch looks at it
};

class DeskDevices final : public MIDIDevices
{
public:
    explicit DeskDevices (Desk& deskOfTest) : desk (deskOfTest) {}

    std::vector<Device> available() override
    {
        const std::lock_guard lock (desk.mutex);
        return desk.plugged;
    }

    std::unique_ptr<Connection> open (const Device& device, const Receiver& receiver) override
    {
        ++desk.attempts;

        if (std::find (desk.locked.begin(), desk.locked.end(), device.identifier) != desk.locked.end())
            return nullptr;

        return std::make_unique<OpenDevice> (desk, device.identifier, receiver);
    }

private:
    struct OpenDevice final : public Connection
    {
        OpenDevice (Desk& deskOfTest, const std::string& opened, const Receiver& receiver)
            : desk (deskOfTest),
              identifier (opened)
        {
            desk.open[identifier] = receiver;
        }

        ~OpenDevice() override { desk.open.erase (identifier); }

        Desk& desk;
        std::string identifier;
    };

    Desk& desk;
};

} // namespace ZEP::MIDIIO::Testing
