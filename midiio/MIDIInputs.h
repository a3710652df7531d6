// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "midiio/MIDIDevices.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace ZEP::MIDIIO
{

/** Which inputs are wanted, which are there, and which are open.

    A wanted input that is unplugged is opened again when it comes back. Then it often has another identifier, so it is
    known by its name; of several inputs of one name the identifier decides.

    look() is what keeps this up to date; whoever owns the object calls it now and then. Any thread. */
class MIDIInputs final
{
public:
    struct Input
    {
        std::string identifier, name;
        bool isOpen = false;

        bool operator== (const Input&) const = default;
    };

    MIDIInputs (std::unique_ptr<MIDIDevices> devicesOfMachine, MIDIDevices::Receiver receiverOfMessages);

    /** What was there at the last look. */
    [[nodiscard]] std::vector<Input> list() const;

    /** Wants an input that is there. @returns whether it is open now */
    bool open (const std::string& identifier);
    void close (const std::string& identifier);

    /** Wants all that are there and all that come. */
    void openAll();
    void closeAll();

    /** Looks what is there, closes what has gone and opens what is wanted. */
    void look();

private:
    struct Known
    {
        MIDIDevices::Device device;
        std::unique_ptr<MIDIDevices::Connection> connection; ///< null while closed
    };

    void lookWithLock();
    void forgetWhatHasGone (const std::vector<MIDIDevices::Device>& available);
    void openWhatIsWanted();
    bool isWanted (const MIDIDevices::Device& device) const;
    Known* find (const std::string& identifier);

    mutable std::mutex mutex;
    std::unique_ptr<MIDIDevices> devices;
    MIDIDevices::Receiver receiver;
    std::vector<MIDIDevices::Device> wanted;
    std::vector<Known> known;
    bool wantsAll = false;
};

} // namespace ZEP::MIDIIO
