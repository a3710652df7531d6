// SPDX-License-Identifier: GPL-3.0-only
#include "Interruption.h"

#include <atomic>

namespace overmarks
{

namespace
{

std::atomic<bool> wanted { false };
static_assert (std::atomic<bool>::is_always_lock_free, "written by a signal handler");

void noteInterruption (int) { wanted = true; }

/** A signal that was to be ignored, as of a program in the background, stays so. */
void listenTo (int signal, struct sigaction& former)
{
    struct sigaction noted
    {
    };
    noted.sa_handler = noteInterruption;
    noted.sa_flags = static_cast<int> (SA_RESETHAND);
    sigaction (signal, nullptr, &former);

    if (former.sa_handler != SIG_IGN)
        sigaction (signal, &noted, nullptr);
}

} // namespace

Interruption::Interruption()
{
    wanted = false;
    listenTo (SIGINT, formerInterrupt);
    listenTo (SIGTERM, formerEnd);
}

Interruption::~Interruption()
{
    sigaction (SIGINT, &formerInterrupt, nullptr);
    sigaction (SIGTERM, &formerEnd, nullptr);
}

bool Interruption::isWanted() noexcept { return wanted; }

} // namespace overmarks
