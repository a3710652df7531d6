// SPDX-License-Identifier: GPL-3.0-only
// A program that needs timecode and nothing else.

#include "core/timecode/TCToolbox.h"

#include <iostream>

using namespace ZEP::Core;

int main()
{
    const auto def = TCToolbox::tcDefForRateName ("29.97df").value();
    const auto time = TCToolbox::tcTimeFromString ("01:00:59;29");
    std::cout << TCToolbox::stringFromTCTime (TCToolbox::addFramesAndTCTimes (1, time, def), true) << "\n";
}
