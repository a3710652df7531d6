// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ZEP::MIDIIO
{

/** The machine's MIDI inputs, as MIDIInputs needs them. One thread at a time. */
class MIDIDevices
{
public:
    struct Device
    {
        std::string identifier, name;

        bool operator== (const Device&) const = default;
    };

    /** An input that is open until this is destroyed, after which no message comes from it. */
    class Connection
    {
    public:
        Connection() = default;
        Connection (const Connection&) = delete;
        Connection& operator= (const Connection&) = delete;
        virtual ~Connection() = default;
    };

    /** Takes one whole message, on a thread of the device. The time stamp is in seconds. */
    using Receiver = std::function<void (std::span<const std::uint8_t> message, double timeStamp)>;

    MIDIDevices() = default;
    MIDIDevices (const MIDIDevices&) = delete;
    MIDIDevices& operator= (const MIDIDevices&) = delete;
    virtual ~MIDIDevices() = default;

    virtual std::vector<Device> available() = 0;

    /** @returns null if it can't be opened */
    virtual std::unique_ptr<Connection> open (const Device& device, const Receiver& receiver) = 0;
};

/** The inputs that the framework finds. A machine without MIDI has none, and isn't asked further. */
class SystemMIDIDevices final : public MIDIDevices
{
public:
    std::vector<Device> available() override;
    std::unique_ptr<Connection> open (const Device& device, const Receiver& receiver) override;
};

} // namespace ZEP::MIDIIO
