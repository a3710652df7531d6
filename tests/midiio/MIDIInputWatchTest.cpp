// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIInputWatch.h"

#include "midiio/Desk.h"
#include "support/CollectedLog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

namespace
{

using namespace std::chrono_literals;
using namespace ZEP::MIDIIO;
using namespace ZEP::MIDIIO::Testing;

class MIDIInputWatchTest : public testing::Test
{
protected:
    ~MIDIInputWatchTest() override { watch.end(); }

    void plug (const std::vector<MIDIDevices::Device>& devices)
    {
        const std::lock_guard lock (desk.mutex);
        desk.plugged = devices;
    }

    /** Whether it becomes so within ten seconds. */
    bool isToldTimes (int number) const
    {
        for (int tries = 0; tries < 10000 && told < number; ++tries)
            std::this_thread::sleep_for (1ms);

        return told == number;
    }

    Desk desk { { { "20-0", "Keys" } }, {}, {}, 0, {} };
    MIDIInputs inputs { std::make_unique<DeskDevices> (desk), [] (auto, double) {} };
    std::atomic<int> told { 0 };
    MIDIInputWatch watch { inputs, 1ms };
};

TEST_F (MIDIInputWatchTest, tellsThatAnInputComesAndGoes)
{
    watch.setChanged ([this] { ++told; });
    watch.begin();
    plug ({ { "20-0", "Keys" }, { "24-0", "Pedal" } });
    EXPECT_TRUE (isToldTimes (1));
    EXPECT_EQ (inputs.list().size(), 2u);
    plug ({});
    EXPECT_TRUE (isToldTimes (2));
    EXPECT_TRUE (inputs.list().empty());
}

TEST_F (MIDIInputWatchTest, whatIsThereAtFirstAndWhatIsOpenedIsNotTold)
{
    watch.setChanged ([this] { ++told; });
    watch.begin();
    watch.begin();
    EXPECT_TRUE (inputs.open ("20-0"));
    std::this_thread::sleep_for (50ms);
    EXPECT_EQ (told, 0);
}

TEST_F (MIDIInputWatchTest, tellsAlsoWhenSomebodyElseHasLooked)
{
    watch.setChanged ([this] { ++told; });
    watch.begin();
    plug ({ { "24-0", "Pedal" } });
    inputs.look();
    EXPECT_TRUE (isToldTimes (1));
}

TEST_F (MIDIInputWatchTest, opensAWantedInputThatComesBack)
{
    inputs.openAll();
    watch.setChanged ([this] { ++told; });
    watch.begin();
    plug ({});
    EXPECT_TRUE (isToldTimes (1));
    plug ({ { "28-0", "Keys" } });
    EXPECT_TRUE (isToldTimes (2));
    EXPECT_TRUE (inputs.list().at (0).isOpen);
}

TEST_F (MIDIInputWatchTest, withoutAnybodyToTellItGoesOn)
{
    watch.begin();
    plug ({});
    std::this_thread::sleep_for (20ms);
    watch.setChanged ([this] { ++told; });
    plug ({ { "24-0", "Pedal" } });
    EXPECT_TRUE (isToldTimes (1));
}

TEST_F (MIDIInputWatchTest, whoeverIsToldMayAskForTheInputsAndEndTheWatch)
{
    std::atomic<std::size_t> seen { 0 };
    watch.setChanged (
        [&]
        {
            seen = inputs.list().size();
            watch.end();
            ++told;
        });
    watch.begin();
    plug ({ { "20-0", "Keys" }, { "24-0", "Pedal" } });
    EXPECT_TRUE (isToldTimes (1));
    EXPECT_EQ (seen, 2u);
    plug ({});
    std::this_thread::sleep_for (20ms);
    EXPECT_EQ (told, 1);
    EXPECT_EQ (inputs.list().size(), 2u);
}

TEST_F (MIDIInputWatchTest, whatTheFormerOneHoldsMayUseTheWatchWhenItGoes)
{
    bool hasGone = false;
    const auto goes = [&] (void*)
    {
        hasGone = true;
        watch.setChanged ([this] { ++told; });
    };
    watch.setChanged ([held = std::shared_ptr<void> (nullptr, goes)] {});
    watch.setChanged ({});
    EXPECT_TRUE (hasGone);
    watch.begin();
    plug ({});
    EXPECT_TRUE (isToldTimes (1));
}

TEST_F (MIDIInputWatchTest, whoeverIsToldMayFail)
{
    const ZEP::Overmarks::Testing::CollectedLog log;
    watch.setChanged (
        [this]
        {
            ++told;
            throw std::runtime_error ("no window");
        });
    watch.begin();
    plug ({});
    EXPECT_TRUE (isToldTimes (1));
    plug ({ { "24-0", "Pedal" } });
    EXPECT_TRUE (isToldTimes (2));
    watch.end(); // what was thrown is logged behind the count
    EXPECT_EQ (log.lines().at (0), "A change of the MIDI inputs wasn't handled: no window");
}

} // namespace
