// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIInputs.h"

#include <algorithm>
#include <utility>

namespace ZEP::MIDIIO
{

using Device = MIDIDevices::Device;

MIDIInputs::MIDIInputs (std::unique_ptr<MIDIDevices> devicesOfMachine,
                        MIDIDevices::Receiver receiverOfMessages)
    : devices (std::move (devicesOfMachine)),
      receiver (std::move (receiverOfMessages))
{
}

std::vector<MIDIInputs::Input> MIDIInputs::list() const
{
    const std::lock_guard lock (mutex);
    std::vector<Input> inputs;

    for (const auto& input : known)
        inputs.push_back ({ input.device.identifier, input.device.name, input.connection != nullptr });

    return inputs;
}

bool MIDIInputs::open (const std::string& identifier)
{
    const std::lock_guard lock (mutex);
    lookWithLock();
    const auto* const input = find (identifier);

    if (input == nullptr)
        return false;

    if (std::find (wanted.begin(), wanted.end(), input->device) == wanted.end())
        wanted.push_back (input->device);

    openWhatIsWanted();
    return input->connection != nullptr;
}

void MIDIInputs::close (const std::string& identifier)
{
    const std::lock_guard lock (mutex);
    std::erase_if (wanted, [&] (const Device& device) { return device.identifier == identifier; });

    if (auto* const input = find (identifier))
    {
        // It may be wanted under the identifier that it had before it was unplugged.
        std::erase_if (wanted, [this, input] (const Device& device)
                       { return device.name == input->device.name && find (device.identifier) == nullptr; });
        input->connection.reset();
    }
}

void MIDIInputs::openAll()
{
    const std::lock_guard lock (mutex);
    wantsAll = true;
    lookWithLock();
}

void MIDIInputs::closeAll()
{
    const std::lock_guard lock (mutex);
    wantsAll = false;
    wanted.clear();

    for (auto& input : known)
        input.connection.reset();
}

void MIDIInputs::look()
{
    const std::lock_guard lock (mutex);
    lookWithLock();
}

void MIDIInputs::lookWithLock()
{
    const auto available = devices->available();
    forgetWhatHasGone (available);

    for (const auto& device : available)
        if (find (device.identifier) == nullptr)
            known.push_back ({ device, nullptr });

    openWhatIsWanted();
}

void MIDIInputs::forgetWhatHasGone (const std::vector<Device>& available)
{
    std::erase_if (known,
                   [&available] (const Known& input) {
                       return std::find (available.begin(), available.end(), input.device) == available.end();
                   });
}

void MIDIInputs::openWhatIsWanted()
{
    for (auto& input : known)
        if (input.connection == nullptr && isWanted (input.device))
            input.connection = devices->open (input.device, receiver);
}

bool MIDIInputs::isWanted (const Device& device) const
{
    if (wantsAll || std::find (wanted.begin(), wanted.end(), device) != wanted.end())
        return true;

    const auto isThere = [this] (const Device& one)
    {
        return std::any_of (known.begin(), known.end(),
                            [&one] (const Known& input) { return input.device == one; });
    };
    return std::any_of (wanted.begin(), wanted.end(),
                        [&] (const Device& one) { return one.name == device.name && ! isThere (one); });
}

MIDIInputs::Known* MIDIInputs::find (const std::string& identifier)
{
    const auto found =
        std::find_if (known.begin(), known.end(),
                      [&identifier] (const Known& input) { return input.device.identifier == identifier; });
    return found != known.end() ? &*found : nullptr;
}

} // namespace ZEP::MIDIIO
