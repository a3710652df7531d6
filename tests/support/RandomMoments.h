// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <thread>

namespace ZEP::Overmarks::Testing
{

/** How often a test of threads is repeated: so often as is said here, unless the environment says OVERMARKS_TEST_ROUNDS. */
inline int roundsOf (int usual)
{
    const char* const said = std::getenv ("OVERMARKS_TEST_ROUNDS");
    const int number = said != nullptr ? std::atoi (said) : 0;
    return number > 0 ? number : usual;
}

/** Moments at which a thread does something, each time others and with the same seed the same. One thread. */
class RandomMoments final
{
public:
    explicit RandomMoments (int seed) : numbers (static_cast<std::uint32_t> (seed)) {}

    /** From 0 to `most`. */
    int upTo (int most) { return static_cast<int> (numbers() % static_cast<std::uint32_t> (most + 1)); }

    /** Lets others go on: not at all, for a turn or some, or for up to so many microseconds. */
    void pass (int mostMicroseconds = 300)
    {
        constexpr int mostTurns = 20;

        switch (upTo (2))
        {
            case 0: return;
            case 1:
                for (int turns = upTo (mostTurns); turns > 0; --turns)
                    std::this_thread::yield();
                return;
            default: std::this_thread::sleep_for (std::chrono::microseconds (upTo (mostMicroseconds)));
        }
    }

private:
    std::mt19937 numbers;
};

} // namespace ZEP::Overmarks::Testing
