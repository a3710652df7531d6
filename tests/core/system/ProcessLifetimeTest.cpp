// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/ProcessLifetime.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
struct Guest
{
    Guest (std::string guestName, int& counter) : name (std::move (guestName)), gone (counter) {}
    ~Guest() { ++gone; }

    std::string name;
    int& gone;
};
} // namespace

TEST (ProcessLifetime, holdsWhatItWasMadeWithAndNeverDestroysIt)
{
    int gone = 0;
    {
        const ZEP::Core::ProcessLifetime<Guest> guest { "short", gone };
        EXPECT_EQ (guest.get().name, "short");
        guest.get().name = "new";
        EXPECT_EQ (guest.get().name, "new");
    }
    EXPECT_EQ (gone, 0);
}
