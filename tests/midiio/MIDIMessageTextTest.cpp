// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIMessageText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using ZEP::MIDIIO::MIDIMessageText;
using Bytes = std::vector<std::uint8_t>;

struct Form
{
    const char* name;
    Bytes message;
    const char* text;
};

class MIDIMessageTextForms : public testing::TestWithParam<Form>
{
};

TEST_P (MIDIMessageTextForms, isWhatATriggerIsStoredBy)
{
    EXPECT_EQ (MIDIMessageText::textOf (GetParam().message), GetParam().text);
}

TEST_P (MIDIMessageTextForms, isRecognisedAsOne)
{
    const std::string text = GetParam().text;
    EXPECT_EQ (MIDIMessageText::isMessageText (text), ! text.empty());
}

INSTANTIATE_TEST_SUITE_P (
    MIDI, MIDIMessageTextForms,
    testing::Values (
        Form { "noteOn", { 0x90, 60, 100 }, "NoteOn 1 60" },
        Form { "noteOnOfTheLastChannel", { 0x9F, 127, 1 }, "NoteOn 16 127" },
        Form { "lowestNote", { 0x90, 0, 1 }, "NoteOn 1 0" },
        Form { "noteOff", { 0x80, 60, 64 }, "NoteOff 1 60" },
        Form { "noteOffWithoutVelocity", { 0x80, 60, 0 }, "NoteOff 1 60" },
        Form { "noteOnWithoutVelocityIsANoteOff", { 0x92, 60, 0 }, "NoteOff 3 60" },
        Form { "controller", { 0xB0, 64, 127 }, "CC 1 64" },
        Form { "controllerWithSmallestValue", { 0xB0, 64, 1 }, "CC 1 64" },
        Form { "releasedController", { 0xB0, 64, 0 }, "CC 1 64" }, Form { "program", { 0xC0, 5 }, "PC 1 5" },
        Form { "firstProgram", { 0xC9, 0 }, "PC 10 0" },
        Form { "play", { 0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7 }, "MMC 02" },
        Form { "anyDevice", { 0xF0, 0x7F, 0x10, 0x06, 0x02, 0xF7 }, "MMC 02" },
        Form { "locateCarriesATime",
               { 0xF0, 0x7F, 0x7F, 0x06, 0x44, 0x06, 0x01, 1, 2, 3, 4, 0, 0xF7 },
               "MMC 44" },
        Form { "commandInCapitals", { 0xF0, 0x7F, 0x7F, 0x06, 0x4F, 0xF7 }, "MMC 4F" },
        Form { "aftertouch", { 0xA0, 60, 1 }, "" }, Form { "pressure", { 0xD0, 60 }, "" },
        Form { "bend", { 0xE0, 0, 64 }, "" }, Form { "clock", { 0xF8 }, "" }, Form { "nothing", {}, "" },
        Form { "statusAlone", { 0x90 }, "" }, Form { "velocityMissing", { 0x90, 60 }, "" },
        Form { "programMissing", { 0xC0 }, "" }, Form { "aByteTooMany", { 0x90, 60, 1, 1 }, "" },
        Form { "statusInsteadOfANote", { 0x90, 0x90, 1 }, "" }, Form { "dataAlone", { 60, 1 }, "" },
        Form { "commandMissing", { 0xF0, 0x7F, 0x7F, 0x06, 0xF7 }, "" },
        Form { "endMissing", { 0xF0, 0x7F, 0x7F, 0x06, 0x02, 0x00 }, "" },
        Form { "exclusiveStartAlone", { 0xF0 }, "" }, Form { "emptyExclusive", { 0xF0, 0xF7 }, "" },
        Form { "anotherUniversalMessage", { 0xF0, 0x7F, 0x7F, 0x01, 0x01, 0xF7 }, "" },
        Form { "statusInsideAnExclusive", { 0xF0, 0x7F, 0x7F, 0x06, 0x90, 0xF7 }, "" }),
    [] (const auto& form) { return form.param.name; });

class NoMIDIMessageText : public testing::TestWithParam<const char*>
{
};

TEST_P (NoMIDIMessageText, neverArrives) { EXPECT_FALSE (MIDIMessageText::isMessageText (GetParam())); }

INSTANTIATE_TEST_SUITE_P (MIDI, NoMIDIMessageText,
                          testing::Values ("", " ", "NoteOn", "NoteOn 1", "NoteOn 1 ", "NoteOn  60",
                                           "NoteOn 0 60", "NoteOn 17 60", "NoteOn 1 128", "NoteOn 1 -1",
                                           "NoteOn 1 060", "NoteOn 01 60", "noteon 1 60", "NoteOn 1 60 ",
                                           " NoteOn 1 60", "NoteOn 1 60 100", "NoteOn 1 6O",
                                           "NoteOn 1 99999999999", "NoteOn +1 60", "Note 1 60", "CC 1",
                                           "PC 1 200", "MMC", "MMC 2", "MMC 002", "MMC 4f", "MMC 80",
                                           "MMC XX", "MMC -1", "MMC 1 2"));

} // namespace
