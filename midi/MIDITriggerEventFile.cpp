// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEventFile.h"

#include "core/system/FileInput.h"
#include "core/system/Logger.h"
#include "core/system/SystemUtility.h"
#include "core/system/WholeFile.h"
#include "proto/midi.pb.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

namespace ZEP::Overmarks
{

using tessera1::ProtoMIDITriggerEventList;
using ZEP::Core::WholeFile;

namespace
{

constexpr auto fileName = "midiEventsV3.bin";

juce::File triggerFile() { return juce::File (MIDITriggerEventFile::path()); }

/** Whether bytes can be read from it that end. */
bool isReadable (const juce::File& file) { return file.existsAsFile() && ! WholeFile::isDeviceOrPipe (file); }

std::optional<std::string> bytesOf (const juce::File& file)
{
    constexpr std::uint64_t most = std::numeric_limits<int>::max(); // what a list of this kind can hold
    std::string bytes;

    if (ZEP::Core::FileInput::readWhole (file.getFullPathName(), bytes, most).failed())
        return {};

    return bytes;
}

/** Nothing if the bytes are no list. */
std::optional<ProtoMIDITriggerEventList> listIn (const std::string& bytes)
{
    ProtoMIDITriggerEventList list;
    return list.ParseFromString (bytes) ? std::optional (std::move (list)) : std::nullopt;
}

/** Bytes without a single trigger in them aren't ours either: an empty list is an empty file. */
bool holdsNoList (const std::string& bytes)
{
    const auto list = listIn (bytes);
    return ! list.has_value() || (list->events().empty() && ! bytes.empty());
}

juce::Result cantWrite (const juce::File& file, const juce::String& reason)
{
    return juce::Result::fail ("Can't write " + file.getFullPathName() + ": " + reason);
}

/** Makes an empty file that nobody else may read: nor might they read the damaged one. */
juce::Result makePrivateFile (const juce::File& file)
{
    const int made =
        ::open (file.getFullPathName().toRawUTF8(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);

    if (made < 0)
        return cantWrite (file, juce::String::fromUTF8 (std::generic_category().message (errno).c_str()));

    ::close (made);
    return juce::Result::ok();
}

/** A file that can't be replaced is kept again before each attempt; one copy is enough. */
bool isKept (const juce::File& file, const std::string& bytes)
{
    for (const auto& copy : file.getParentDirectory().findChildFiles (
             juce::File::findFiles, false,
             file.getFileNameWithoutExtension() + ".damaged*" + file.getFileExtension()))
        if (isReadable (copy) && bytesOf (copy) == bytes)
            return true;

    return false;
}

/** What somebody may still want to rescue must not be written over. */
juce::Result keepDamagedFile (const juce::File& file)
{
    if (! file.existsAsFile())
        return juce::Result::ok();

    const auto bytes = bytesOf (file);

    if (! bytes.has_value())
        return cantWrite (file, "what it holds can't be read");
    if (! holdsNoList (*bytes) || isKept (file, *bytes))
        return juce::Result::ok();

    const auto beside = file.getParentDirectory().getNonexistentChildFile (
        file.getFileNameWithoutExtension() + ".damaged", file.getFileExtension(), false);

    if (const auto made = makePrivateFile (beside); made.failed())
        return made;

    const auto written = WholeFile::write (beside, *bytes);

    if (written.failed())
        beside.deleteFile();

    return written;
}

} // namespace

juce::String MIDITriggerEventFile::path()
{
    return ZEP::Core::SystemUtility::applicationSupportDirectoryPath() + juce::File::getSeparatorString()
           + fileName;
}

MIDITriggerEventFile::State MIDITriggerEventFile::state()
{
    const auto file = triggerFile();

    if (! file.exists())
        return State::missing;
    if (! isReadable (file))
        return State::unreadable;

    const auto bytes = bytesOf (file);

    if (! bytes.has_value())
        return State::unreadable;

    return holdsNoList (*bytes) ? State::damaged : State::sound;
}

MIDITriggerEventFile::Triggers MIDITriggerEventFile::read()
{
    const auto file = triggerFile();

    if (! isReadable (file))
    {
        ZEP::Core::Logger::error ("Couldn't read MIDI Trigger Events from file at path: " + path());
        return {};
    }

    auto list = listIn (bytesOf (file).value_or (std::string()));

    if (! list.has_value())
        return {};

    Triggers triggers;

    for (auto& stored : *list->mutable_events())
    {
        triggers.push_back (std::make_shared<MIDITriggerEvent>());
        triggers.back()->initWithProtoObject (&stored);
    }

    return triggers;
}

juce::Result MIDITriggerEventFile::write (const Triggers& triggers)
{
    const auto file = triggerFile();
    ProtoMIDITriggerEventList list;

    for (const auto& trigger : triggers)
        if (trigger != nullptr)
            trigger->fillProtoObject (list.add_events());

    if (const auto made = file.getParentDirectory().createDirectory(); made.failed())
        return cantWrite (file, made.getErrorMessage());
    if (WholeFile::isDeviceOrPipe (file))
        return cantWrite (file, "it is a device or a pipe");
    if (const auto kept = keepDamagedFile (file); kept.failed())
        return kept;

    return WholeFile::write (file, list.SerializeAsString());
}

} // namespace ZEP::Overmarks
