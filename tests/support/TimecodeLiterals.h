// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCToolbox.h"

#include <cstddef>
#include <stdexcept>
#include <string>

/** "01:00:00:00"_tc: a timecode as one writes it in a cue sheet. A text that is none throws, so that the test
    fails. */
inline ZEP::Core::_TCTime operator""_tc (const char* text, std::size_t length)
{
    const std::string label (text, length);
    const auto time = ZEP::Core::TCToolbox::tcTimeFromString (label);

    if (time.invalid)
        throw std::invalid_argument ("not a timecode: " + label);

    return time;
}
