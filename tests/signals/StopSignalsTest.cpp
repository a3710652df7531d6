// SPDX-License-Identifier: GPL-3.0-only
// The command-line program's way with signals: somebody stops it at any moment.
#include "overmarks/StopSignals.h"
#include "overmarks/PrivateFolder.h"
#include "overmarks/Session.h"
#include "signals/Child.h"
#include "support/RandomMoments.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace overmarks;
using namespace ZEP::Overmarks::Testing;

namespace
{

constexpr int stopped = 3, lost = 4, late = 5;

class StopSignalsThreads : public testing::Test
{
protected:
    /** Starts a process that does the work in a folder, and then nothing, and stops it at some moment of all that.
        @returns how it ended; see Child.h */
    template <typename Work>
    int stoppedSomewhere (int round, const Work& work) const
    {
        Child child (
            [&]
            {
                RandomMoments moments (round);

                try
                {
                    const PrivateFolder privateFolder (juce::File (folder.directory()), "work.");
                    privateFolder.get().getChildFile ("a").replaceWithText ("begun");
                    work (privateFolder, moments);
                }
                catch (const WorkStopped&)
                {
                    return stopped;
                }

                ::sleep (60); // the signal always comes
                return lost;
            });

        RandomMoments moments (round + 1);
        static constexpr std::array signals { SIGINT, SIGTERM, SIGHUP };

        for (int times = 1 + moments.upTo (1); times > 0; --times)
        {
            moments.pass (3000);
            child.send (signals.at (static_cast<std::size_t> (moments.upTo (2))));
        }

        return child.wait();
    }

    void expectEmptyFolder (int round) const
    {
        ASSERT_EQ (folder.names(), std::vector<std::string>()) << "round " << round;
    }

    static bool isEndedBySignal (int status)
    {
        return status == 128 + SIGINT || status == 128 + SIGTERM || status == 128 + SIGHUP;
    }

    TemporaryFolder folder;
    const int rounds = roundsOf (1000);
};

TEST_F (StopSignalsThreads, aSignalAtAnyMomentEndsTheProgramAndTakesItsFolder)
{
    for (int round = 0; round < rounds; ++round)
    {
        const auto status = stoppedSomewhere (round,
                                              [] (const PrivateFolder& place, RandomMoments& moments)
                                              {
                                                  moments.pass (1500);
                                                  place.get().getChildFile ("b").replaceWithText ("more");
                                              });
        ASSERT_TRUE (isEndedBySignal (status)) << "round " << round << ": " << status;
        ASSERT_NO_FATAL_FAILURE (expectEmptyFolder (round));
    }
}

TEST_F (StopSignalsThreads, aSignalThatIsMetWithPatienceIsNeverLost)
{
    int told = 0;

    for (int round = 0; round < rounds; ++round)
    {
        const auto status =
            stoppedSomewhere (round,
                              [] (const PrivateFolder& place, RandomMoments& moments)
                              {
                                  const StopSignals::Patience patience (place.getSignals());

                                  for (int step = 0; step < 5; ++step)
                                  {
                                      moments.pass (600);
                                      place.getSignals().throwIfStopped ("nothing was written");
                                  }
                              });
        ASSERT_TRUE (status == stopped || isEndedBySignal (status)) << "round " << round << ": " << status;
        ASSERT_NO_FATAL_FAILURE (expectEmptyFolder (round));
        told += status == stopped ? 1 : 0;
    }

    EXPECT_GT (told, 0) << "else the test has seen nothing";
}

TEST_F (StopSignalsThreads, aToolIsCancelledWheneverTheSignalComesAndNeverAfterItsEnd)
{
    int told = 0;
    const int tools =
        roundsOf (200); // a signal that comes before the tool is handed on up to a tenth of a second later

    for (int round = 0; round < tools; ++round)
    {
        const auto status = stoppedSomewhere (round,
                                              [] (const PrivateFolder& place, RandomMoments& moments)
                                              {
                                                  const StopSignals::Patience patience (place.getSignals());
                                                  std::atomic<bool> isCancelled { false }, isOver { false };

                                                  place.getSignals().whileToolWorks (
                                                      [&]
                                                      {
                                                          isCancelled = true;

                                                          if (isOver)
                                                              ::_exit (late);
                                                      },
                                                      [&]
                                                      {
                                                          while (! isCancelled)
                                                              moments.pass (200);
                                                      });
                                                  isOver = true;
                                                  moments.pass (300);
                                                  place.getSignals().throwIfStopped ("nothing was written");
                                                  ::_exit (lost);
                                              });
        ASSERT_TRUE (status == stopped || isEndedBySignal (status)) << "round " << round << ": " << status;
        ASSERT_NO_FATAL_FAILURE (expectEmptyFolder (round));
        told += status == stopped ? 1 : 0;
    }

    EXPECT_GT (told, 0) << "else the test has seen nothing";
}

TEST_F (StopSignalsThreads, anAnswerIsWholeOrNotThere)
{
    const TemporaryFolder output;
    const std::string answer (5000, 'a');
    int answered = 0;

    for (int round = 0; round < rounds; ++round)
    {
        output.write ("output", "");
        const auto status =
            stoppedSomewhere (round,
                              [&] (const PrivateFolder& place, RandomMoments& moments)
                              {
                                  const auto file = ::open ((output.path / "output").c_str(), O_WRONLY);
                                  ::dup2 (file, STDOUT_FILENO);
                                  moments.pass (500);
                                  const StopSignals::Answer told (place.getSignals(), answer);
                                  const StopSignals::Answer within (place.getSignals(), "another");
                                  moments.pass (1500);
                              });
        const auto written = output.bytes ("output");
        ASSERT_TRUE (status == 1 ? written == answer : isEndedBySignal (status) && written.empty())
            << "round " << round << ": " << status << ", " << written.size() << " bytes";
        ASSERT_NO_FATAL_FAILURE (expectEmptyFolder (round));
        answered += status == 1 ? 1 : 0;
    }

    EXPECT_GT (answered, 0) << "else the test has seen nothing";
}

} // namespace
