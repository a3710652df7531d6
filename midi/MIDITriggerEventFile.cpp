// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEventFile.h"

#include "core/system/Logger.h"
#include "core/system/SystemUtility.h"
#include "core/system/WholeFile.h"
#include "proto/midi.pb.h"

#include <limits>
#include <optional>
#include <string>

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
    juce::MemoryBlock block;

    if (file.getSize() > std::numeric_limits<int>::max() || ! file.loadFileAsData (block))
        return {};

    return std::string (block.begin(), block.end());
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

/** What somebody may still want to rescue must not be written over. */
juce::Result keepDamagedFile (const juce::File& file)
{
    if (! isReadable (file))
        return juce::Result::ok();

    const auto bytes = bytesOf (file);

    if (! bytes.has_value())
        return juce::Result::fail ("Can't write " + file.getFullPathName() + ": what it holds can't be read");
    if (! holdsNoList (*bytes))
        return juce::Result::ok();

    const auto beside = file.getParentDirectory().getNonexistentChildFile (
        file.getFileNameWithoutExtension() + ".damaged", file.getFileExtension(), false);
    return WholeFile::write (beside, *bytes);
}

} // namespace

juce::String MIDITriggerEventFile::path()
{
    return ZEP::Core::SystemUtility::applicationSupportDirectoryPath() + juce::File::getSeparatorString()
           + fileName;
}

bool MIDITriggerEventFile::isDamaged()
{
    const auto file = triggerFile();

    if (! isReadable (file))
        return false;

    const auto bytes = bytesOf (file);
    return ! bytes.has_value() || holdsNoList (*bytes);
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
        return juce::Result::fail ("Can't write " + file.getFullPathName() + ": " + made.getErrorMessage());
    if (const auto kept = keepDamagedFile (file); kept.failed())
        return kept;

    return WholeFile::write (file, list.SerializeAsString());
}

} // namespace ZEP::Overmarks
