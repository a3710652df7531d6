// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>

namespace ZEP::Core
{

/** The line over the picture that shows where a panned object stands.

    Held by a std::shared_ptr. It has no lock of its own: whoever keeps the lines guards them. */
struct SpannerPanLine final
{
    /** Identity of the panned object; several lines may have the same one. */
    std::uint32_t lineID = 0;

    /** 0.0 to 1.0. */
    float position = 0.0f;

    std::uint32_t group = 0; ///< as the spanner message told it, 0 to 127

    /** Its alpha tells the state of the line: 0.6 while it is alive, 0.0 when it has faded. */
    juce::Colour colour;
};

} // namespace ZEP::Core
