// SPDX-License-Identifier: GPL-3.0-only
// The file of a user's MIDI triggers, damaged in any way: what can be read is written and read as the same, and what can't be read
// is kept before something else is written.
#include "Application.h"
#include "ScratchFolder.h"

#include "core/system/SystemUtility.h"
#include "midi/MIDITriggerEventFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

void checkTriggers (const MIDITriggerEventFile::Triggers& triggers)
{
    for (const auto& trigger : triggers)
    {
        law (isUTF8 (trigger->triggerMessage) && isUTF8 (trigger->label), "the texts of a trigger are sound");

        if (trigger->event != nullptr)
        {
            checkText (trigger->event->getText());
            checkText (trigger->event->getNotes());
            checkText (trigger->event->description());
            checkText (trigger->event->oneLineDescription());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    const auto folder = scratchFolder() / "support";
    std::filesystem::remove_all (folder);
    std::filesystem::create_directories (folder);
    SystemUtility::configure ({ 1, {}, {}, pathText (folder) });

    const std::filesystem::path file (MIDITriggerEventFile::path().toStdString());
    law (file.parent_path() == folder, "the triggers lie in the user's folder");
    std::ofstream (file, std::ios::binary) << bytesOfInput (data, size);

    const auto state = MIDITriggerEventFile::state();
    law (state == MIDITriggerEventFile::State::sound || state == MIDITriggerEventFile::State::damaged,
         "a file is sound or damaged");
    const auto isDamaged = state == MIDITriggerEventFile::State::damaged;
    const auto triggers = MIDITriggerEventFile::read();
    checkTriggers (triggers);
    law (! isDamaged || triggers.empty(), "a damaged file holds no triggers");

    law (MIDITriggerEventFile::write (triggers).wasOk(), "what was read can be written");
    law (MIDITriggerEventFile::state() == MIDITriggerEventFile::State::sound, "what was written is sound");
    law (std::filesystem::exists (folder / "midiEventsV3.damaged.bin") == isDamaged,
         "a damaged file, and no other, is kept");

    const auto written = contentOf (file);
    const auto again = MIDITriggerEventFile::read();
    law (again.size() == triggers.size(), "as many triggers come back");
    law (MIDITriggerEventFile::write (again).wasOk() && contentOf (file) == written,
         "what was written is read and written as the same");
    return 0;
}
