// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEventFile.h"

#include "core/system/Descriptor.h"
#include "core/system/FileInput.h"
#include "core/system/Logger.h"
#include "core/system/MissingFile.h"
#include "core/system/SystemUtility.h"
#include "core/system/WholeFile.h"
#include "event/RecordWeight.h"
#include "proto/midi.pb.h"

#include <google/protobuf/stubs/logging.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>

namespace ZEP::Overmarks
{

using tessera1::ProtoMIDITriggerEventList;
using ZEP::Core::WholeFile;
using State = MIDITriggerEventFile::State;

namespace
{

constexpr auto fileName = "midiEventsV3.bin";

juce::File triggerFile() { return juce::File (MIDITriggerEventFile::path()); }

/** How many bytes a list may have; no record has more than an int can tell. */
std::uint64_t mostBytes()
{
    return std::min<std::uint64_t> (MIDITriggerEventFile::limits().bytesOfFile,
                                    std::numeric_limits<int>::max());
}

/** What the file holds, looked at once. */
struct Reading
{
    State state = State::missing;
    std::string bytes {};
    ProtoMIDITriggerEventList list {};
    juce::String reason {}; ///< why it is unreadable
};

/** A few bytes of a list can take many times as much in memory. */
bool isTooHeavy (const std::string& bytes)
{
    return RecordWeight::of (bytes, *ProtoMIDITriggerEventList::descriptor(),
                             MIDITriggerEventFile::limits().spareMemory)
           == RecordWeight::Finding::tooHeavy;
}

/** Bytes without a single trigger in them aren't ours either: an empty list is an empty file. */
bool parse (Reading& reading)
{
    const google::protobuf::LogSilencer silence; // it would write to standard error
    return reading.list.ParseFromString (reading.bytes)
           && (! reading.list.events().empty() || reading.bytes.empty());
}

Reading readingOf (const juce::File& file)
{
    if (ZEP::Core::isMissing (file))
        return {};

    Reading reading { State::unreadable };
    const auto result = ZEP::Core::FileInput::readWhole (file.getFullPathName(), reading.bytes, mostBytes());

    if (result.failed())
        reading.reason = result.getErrorMessage();
    else if (isTooHeavy (reading.bytes))
        reading.reason = "it claims to hold more bindings than its " + juce::String (reading.bytes.size())
                         + " bytes have room for";
    else
        reading.state = parse (reading) ? State::sound : State::damaged;

    return reading;
}

/** The file whose content the last reading of the list has not got to see; empty if it has. */
juce::String& pathReadInVain()
{
    static juce::String path;
    return path;
}

juce::Result cantWrite (const juce::File& file, const juce::String& reason)
{
    return juce::Result::fail ("Can't write " + file.getFullPathName() + ": " + reason);
}

/** Makes an empty file that nobody else may read: nor might they read the damaged one. */
juce::Result makePrivateFile (const juce::File& file)
{
    const ZEP::Core::Descriptor made (file.getFullPathName().toStdString(), O_WRONLY | O_CREAT | O_EXCL,
                                      0600);

    return made.isOpen()
               ? juce::Result::ok()
               : cantWrite (file, juce::String::fromUTF8 (std::generic_category().message (errno).c_str()));
}

/** A file that can't be replaced is kept again before each attempt; one copy is enough. */
bool isKept (const juce::File& file, const std::string& bytes)
{
    for (const auto& copy : file.getParentDirectory().findChildFiles (
             juce::File::findFiles, false,
             file.getFileNameWithoutExtension() + ".damaged*" + file.getFileExtension()))
    {
        std::string kept;

        if (ZEP::Core::FileInput::readWhole (copy.getFullPathName(), kept, bytes.size()).wasOk()
            && kept == bytes)
            return true;
    }

    return false;
}

/** What somebody may still want to rescue must not be written over, nor what nobody has seen. */
juce::Result keepOldFile (const juce::File& file)
{
    const auto reading = readingOf (file);

    if (reading.state == State::missing
        || file.isDirectory()) // which can't be replaced, and nobody asks what it holds
        return juce::Result::ok();

    const bool isUnseen = pathReadInVain() == file.getFullPathName();

    if (reading.state == State::unreadable)
        return cantWrite (file, "what it holds can't be read");
    if ((reading.state == State::sound && ! isUnseen) || isKept (file, reading.bytes))
        return juce::Result::ok();

    const auto beside = file.getParentDirectory().getNonexistentChildFile (
        file.getFileNameWithoutExtension() + ".damaged", file.getFileExtension(), false);

    if (const auto made = makePrivateFile (beside); made.failed())
        return made;

    const auto written = WholeFile::write (beside, reading.bytes);

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

MIDITriggerEventFile::Limits& MIDITriggerEventFile::limits()
{
    static Limits current;
    return current;
}

MIDITriggerEventFile::State MIDITriggerEventFile::state() { return readingOf (triggerFile()).state; }

MIDITriggerEventFile::Content MIDITriggerEventFile::load()
{
    auto reading = readingOf (triggerFile());
    Content content { reading.state, {}, reading.reason };
    pathReadInVain() = content.state == State::unreadable ? path() : juce::String();

    if (content.state != State::sound)
        return content;

    for (auto& stored : *reading.list.mutable_events())
    {
        content.triggers.push_back (std::make_shared<MIDITriggerEvent>());
        content.triggers.back()->initWithProtoObject (&stored);
    }

    return content;
}

MIDITriggerEventFile::Triggers MIDITriggerEventFile::read()
{
    auto content = load();

    if (content.state == State::missing || content.state == State::unreadable)
        ZEP::Core::Logger::error ("Couldn't read MIDI Trigger Events from file at path: " + path());

    return std::move (content.triggers);
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

    const auto tooLarge = [&file] { return cantWrite (file, "it would be too large to be read again"); };

    // Beyond what a record can hold none is made, which would look like a list of nothing.
    if (list.ByteSizeLong() > mostBytes())
        return tooLarge();

    const auto bytes = list.SerializeAsString();

    if (isTooHeavy (bytes))
        return tooLarge();
    if (const auto kept = keepOldFile (file); kept.failed())
        return kept;

    const auto written = WholeFile::write (file, bytes);

    if (written.wasOk())
        pathReadInVain().clear();

    return written;
}

} // namespace ZEP::Overmarks
