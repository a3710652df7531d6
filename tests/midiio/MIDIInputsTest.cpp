// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIInputs.h"

#include "midiio/Desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace
{

using namespace ZEP::MIDIIO;
using namespace ZEP::MIDIIO::Testing;
using testing::ElementsAre;
using testing::IsEmpty;
using Input = MIDIInputs::Input;

class MIDIInputsTest : public testing::Test
{
protected:
    std::vector<Input> look()
    {
        inputs.look();
        return inputs.list();
    }

    Desk desk { { { "20-0", "Keys" }, { "24-0", "Pedal" } }, {}, {}, 0, {} };
    std::vector<std::uint8_t> received;
    MIDIInputs inputs { std::make_unique<DeskDevices> (desk),
                        [this] (auto message, double) { received.assign (message.begin(), message.end()); } };
};

TEST_F (MIDIInputsTest, whatIsThereIsListedAndClosed)
{
    EXPECT_THAT (inputs.list(), IsEmpty());
    EXPECT_THAT (look(), ElementsAre (Input { "20-0", "Keys", false }, Input { "24-0", "Pedal", false }));
    EXPECT_EQ (desk.attempts, 0);
}

TEST_F (MIDIInputsTest, anOpenInputIsHeard)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    const std::vector<std::uint8_t> message { 0x90, 60, 1 };
    desk.open.at ("24-0") (message, 0);
    EXPECT_EQ (received, message);
    EXPECT_THAT (inputs.list(),
                 ElementsAre (Input { "20-0", "Keys", false }, Input { "24-0", "Pedal", true }));
}

TEST_F (MIDIInputsTest, anInputThatIsNotThereCantBeOpened)
{
    EXPECT_FALSE (inputs.open ("99-0"));
    EXPECT_FALSE (inputs.open (""));
    EXPECT_THAT (desk.open, IsEmpty());
}

TEST_F (MIDIInputsTest, openingTwiceOpensOnce)
{
    EXPECT_TRUE (inputs.open ("20-0"));
    EXPECT_TRUE (inputs.open ("20-0"));
    EXPECT_EQ (desk.attempts, 1);
}

TEST_F (MIDIInputsTest, anUnpluggedInputIsClosedAndComesBackUnderItsName)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    desk.plugged.pop_back();
    EXPECT_THAT (look(), ElementsAre (Input { "20-0", "Keys", false }));
    EXPECT_THAT (desk.open, IsEmpty());

    desk.plugged.push_back ({ "28-0", "Pedal" });
    EXPECT_THAT (look(), ElementsAre (Input { "20-0", "Keys", false }, Input { "28-0", "Pedal", true }));
}

TEST_F (MIDIInputsTest, aTwinIsNotOpenedWhileTheWantedOneIsThere)
{
    desk.plugged.push_back ({ "28-0", "Pedal" });
    EXPECT_TRUE (inputs.open ("24-0"));
    EXPECT_FALSE (look().back().isOpen);
}

TEST_F (MIDIInputsTest, anotherDeviceUnderTheOldIdentifierIsNotOpened)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    desk.plugged.back().name = "Drums";
    EXPECT_THAT (look(), ElementsAre (Input { "20-0", "Keys", false }, Input { "24-0", "Drums", false }));
}

TEST_F (MIDIInputsTest, aClosedInputStaysClosed)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    inputs.close ("24-0");
    EXPECT_THAT (desk.open, IsEmpty());
    look();
    EXPECT_THAT (desk.open, IsEmpty());
    inputs.close ("99-0");
}

TEST_F (MIDIInputsTest, anInputThatCameBackIsClosedForGood)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    desk.plugged.back().identifier = "28-0";
    EXPECT_TRUE (look().back().isOpen);
    inputs.close ("28-0");
    EXPECT_FALSE (look().back().isOpen);
}

TEST_F (MIDIInputsTest, allAreOpenedAndEachThatComes)
{
    inputs.openAll();
    EXPECT_EQ (desk.open.size(), 2u);
    desk.plugged.push_back ({ "28-0", "Drums" });
    look();
    EXPECT_EQ (desk.open.size(), 3u);
    inputs.closeAll();
    EXPECT_THAT (desk.open, IsEmpty());
    look();
    EXPECT_THAT (desk.open, IsEmpty());
}

TEST_F (MIDIInputsTest, anInputThatAnotherProgramKeepsIsTriedAgain)
{
    desk.locked = { "24-0" };
    EXPECT_FALSE (inputs.open ("24-0"));
    EXPECT_FALSE (look().back().isOpen);
    desk.locked.clear();
    EXPECT_TRUE (look().back().isOpen);
}

TEST_F (MIDIInputsTest, anInputThatIsClosedStaysClosedThoughAllAreWanted)
{
    inputs.openAll();
    inputs.close ("24-0");
    EXPECT_THAT (look(), ElementsAre (Input { "20-0", "Keys", true }, Input { "24-0", "Pedal", false }));

    desk.plugged.back().identifier = "28-0";
    EXPECT_THAT (look(), ElementsAre (Input { "20-0", "Keys", true }, Input { "28-0", "Pedal", false }));
    EXPECT_TRUE (inputs.open ("28-0"));
    EXPECT_TRUE (look().back().isOpen);
}

TEST_F (MIDIInputsTest, openingAllOpensAlsoWhatWasClosed)
{
    inputs.openAll();
    inputs.close ("24-0");
    inputs.openAll();
    EXPECT_TRUE (look().back().isOpen);
}

TEST_F (MIDIInputsTest, anInputThatCameBackIsClosedAlsoUnderItsFirstIdentifier)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    desk.plugged.back().identifier = "28-0";
    EXPECT_TRUE (look().back().isOpen);
    desk.plugged.back().identifier = "32-0";
    EXPECT_TRUE (look().back().isOpen);
    inputs.close ("24-0");
    EXPECT_THAT (desk.open, IsEmpty());
    EXPECT_FALSE (look().back().isOpen);
}

TEST_F (MIDIInputsTest, anInputThatIsClosedWhileItIsAwayStaysClosed)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    desk.plugged.pop_back();
    look();
    inputs.close ("24-0");
    desk.plugged.push_back ({ "24-0", "Pedal" });
    EXPECT_FALSE (look().back().isOpen);
}

TEST_F (MIDIInputsTest, anIdentifierMeansTheInputThatHasItNow)
{
    EXPECT_TRUE (inputs.open ("24-0"));
    desk.plugged = { { "24-0", "Drums" }, { "28-0", "Pedal" } };
    EXPECT_THAT (look(), ElementsAre (Input { "24-0", "Drums", false }, Input { "28-0", "Pedal", true }));
    inputs.close ("24-0");
    EXPECT_TRUE (look().back().isOpen);
    EXPECT_TRUE (inputs.open ("24-0"));
    inputs.close ("24-0");
    EXPECT_THAT (look(), ElementsAre (Input { "24-0", "Drums", false }, Input { "28-0", "Pedal", true }));
}

TEST_F (MIDIInputsTest, aTwinIsNotOpenedWhenTheWantedOneIsUnplugged)
{
    desk.plugged.push_back ({ "28-0", "Pedal" });
    EXPECT_TRUE (inputs.open ("24-0"));
    desk.plugged.erase (desk.plugged.begin() + 1);
    EXPECT_THAT (look(), ElementsAre (Input { "20-0", "Keys", false }, Input { "28-0", "Pedal", false }));
    desk.plugged.push_back ({ "32-0", "Pedal" });
    EXPECT_TRUE (look().back().isOpen);
    EXPECT_EQ (desk.open.size(), 1u);
}

TEST (SystemMIDIDevices, canBeAskedOnAnyMachine)
{
    SystemMIDIDevices devices;
    devices.available();
    EXPECT_EQ (devices.open ({ "no such", "input" }, [] (auto, double) {}), nullptr);
}

} // namespace
