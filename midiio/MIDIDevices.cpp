// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIDevices.h"

#include <juce_audio_devices/juce_audio_devices.h>

#include <unistd.h>

namespace ZEP::MIDIIO
{

namespace
{

/** Without the sequencer the system's library complains on standard error each time it is asked. */
bool machineHasMIDI() { return ::access ("/dev/snd/seq", R_OK | W_OK) == 0; }

/** The sequencer's own clock and announcements are no instruments. */
bool isSequencerItself (const juce::MidiDeviceInfo& device) { return device.identifier.startsWith ("0-"); }

class OpenInput final : public MIDIDevices::Connection, private juce::MidiInputCallback
{
public:
    OpenInput (const juce::String& identifier, MIDIDevices::Receiver receiverOfMessages)
        : receiver (std::move (receiverOfMessages)),
          input (juce::MidiInput::openDevice (identifier, this))
    {
        if (input != nullptr)
            input->start();
    }

    [[nodiscard]] bool isOpen() const { return input != nullptr; }

private:
    void handleIncomingMidiMessage (juce::MidiInput*, const juce::MidiMessage& message) override
    {
        receiver ({ message.getRawData(), static_cast<std::size_t> (message.getRawDataSize()) },
                  message.getTimeStamp());
    }

    MIDIDevices::Receiver receiver;
    std::unique_ptr<juce::MidiInput> input; ///< closed before the receiver goes
};

} // namespace

std::vector<MIDIDevices::Device> SystemMIDIDevices::available()
{
    std::vector<Device> devices;

    if (machineHasMIDI())
        for (const auto& device : juce::MidiInput::getAvailableDevices())
            if (! isSequencerItself (device))
                devices.push_back ({ device.identifier.toStdString(), device.name.toStdString() });

    return devices;
}

std::unique_ptr<MIDIDevices::Connection> SystemMIDIDevices::open (const Device& device,
                                                                  const Receiver& receiver)
{
    if (! machineHasMIDI())
        return nullptr;

    auto input = std::make_unique<OpenInput> (juce::String (device.identifier), receiver);
    return input->isOpen() ? std::move (input) : nullptr;
}

} // namespace ZEP::MIDIIO
