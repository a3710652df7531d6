// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <csignal>

namespace overmarks
{

/** Whoever runs the program wants it to stop (Ctrl-C, or the signal to end): work that can stop at a good place does so while this
    object lives. Asked a second time the program ends at once. One such object at a time. */
class Interruption final
{
public:
    Interruption();
    ~Interruption();

    Interruption (const Interruption&) = delete;
    Interruption& operator= (const Interruption&) = delete;

    [[nodiscard]] static bool isWanted() noexcept;

private:
    struct sigaction formerInterrupt
    {
    };
    struct sigaction formerEnd
    {
    };
};

} // namespace overmarks
