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

bool MIDIInputs::holds (const Choices& choices, const Device& device)
{
    return std::any_of (choices.begin(), choices.end(),
                        [&device] (const Choice& choice) { return choice.device == device; });
}

void MIDIInputs::forget (Choices& choices, const Device& device)
{
    std::erase_if (choices, [&device] (const Choice& choice) { return choice.device == device; });
}

bool MIDIInputs::open (const std::string& identifier)
{
    const std::lock_guard lock (mutex);
    lookWithLock();
    const auto* const input = find (identifier);

    if (input == nullptr)
        return false;

    forget (unwanted, input->device);

    if (! holds (wanted, input->device))
        wanted.push_back ({ input->device, identifier });

    openWhatIsWanted();
    return input->connection != nullptr;
}

void MIDIInputs::close (const std::string& identifier)
{
    const std::lock_guard lock (mutex);

    if (const auto* const input = find (identifier))
        return closeDevice (Device (input->device));

    // It has gone, or is back under another identifier.
    const auto chosen = wanted;

    for (const auto& choice : chosen)
        if (choice.namedAs == identifier || choice.device.identifier == identifier)
            closeDevice (choice.device);
}

void MIDIInputs::closeDevice (const Device& device)
{
    forget (wanted, device);

    if (wantsAll && ! holds (unwanted, device))
        unwanted.push_back ({ device, device.identifier });

    for (auto& input : known)
        if (input.device == device)
            input.connection.reset();
}

void MIDIInputs::openAll()
{
    const std::lock_guard lock (mutex);
    wantsAll = true;
    unwanted.clear();
    lookWithLock();
}

void MIDIInputs::closeAll()
{
    const std::lock_guard lock (mutex);
    wantsAll = false;
    wanted.clear();
    unwanted.clear();

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
    {
        if (find (device.identifier) != nullptr)
            continue;

        if (! holds (wanted, device) && ! holds (unwanted, device))
            followToNewIdentifier (device, available);

        known.push_back ({ device, nullptr });
    }

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
    return holds (wanted, device) || (wantsAll && ! holds (unwanted, device));
}

/** Of several inputs of one name each stands for one that has gone. */
void MIDIInputs::followToNewIdentifier (const Device& newcomer, const std::vector<Device>& available)
{
    for (auto* const choices : { &wanted, &unwanted })
    {
        const auto gone = std::find_if (
            choices->begin(), choices->end(),
            [&] (const Choice& choice)
            {
                return choice.device.name == newcomer.name
                       && std::find (available.begin(), available.end(), choice.device) == available.end();
            });

        if (gone != choices->end())
        {
            gone->device = newcomer;
            return;
        }
    }
}

MIDIInputs::Known* MIDIInputs::find (const std::string& identifier)
{
    const auto found =
        std::find_if (known.begin(), known.end(),
                      [&identifier] (const Known& input) { return input.device.identifier == identifier; });
    return found != known.end() ? &*found : nullptr;
}

} // namespace ZEP::MIDIIO
