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

    A wanted input that is unplugged is opened again when it comes back. Then it often has another identifier, so one that
    comes with the name of one that has gone is taken for it; one that was there all the time is not. An input that is gone
    and back under its identifier between two looks can't be told from one that stayed, though nothing comes from it any
    more: only closing and opening helps.

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

    /** Wants an input no more, neither now nor when it comes back, even if all are wanted.
        @param identifier  of an input that is there; if there is none, the one that a wanted input was opened with */
    void close (const std::string& identifier);

    /** Wants all that are there and all that come, those too that were closed. */
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

    /** An input that is wanted or not, whatever its identifier becomes. */
    struct Choice
    {
        MIDIDevices::Device device; ///< as it was there last
        std::string namedAs;        ///< its identifier when it was chosen
    };
    using Choices = std::vector<Choice>;

    void lookWithLock();
    void closeDevice (const MIDIDevices::Device& device);
    void followToNewIdentifier (const MIDIDevices::Device& newcomer,
                                const std::vector<MIDIDevices::Device>& available);
    static bool holds (const Choices& choices, const MIDIDevices::Device& device);
    static void forget (Choices& choices, const MIDIDevices::Device& device);
    void forgetWhatHasGone (const std::vector<MIDIDevices::Device>& available);
    void openWhatIsWanted();
    bool isWanted (const MIDIDevices::Device& device) const;
    Known* find (const std::string& identifier);

    mutable std::mutex mutex;
    std::unique_ptr<MIDIDevices> devices;
    MIDIDevices::Receiver receiver;
    Choices wanted;
    Choices unwanted; ///< although all are wanted
    std::vector<Known> known;
    bool wantsAll = false;
};

} // namespace ZEP::MIDIIO
