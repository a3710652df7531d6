// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace ZEP::Overmarks::Testing
{

constexpr int createsLine = 0, updatesLines = 2, removesLines = 1;

/** A spanner message as an object panner sends it. */
struct SpannerBytes
{
    std::array<int, 5> identity { 0, 0, 0, 0, 7 };
    int group = 1;
    int command = createsLine;
    int position = 64;
    std::array<int, 3> colour { 127, 0, 0 };

    std::string text() const
    {
        std::string bytes = "\xF0\x7D\x53\x50";

        for (const int digit : identity)
            bytes += static_cast<char> (digit);

        bytes += static_cast<char> (group);
        bytes += static_cast<char> (command);
        bytes += static_cast<char> (position);

        for (const int part : colour)
            bytes += static_cast<char> (part);

        return bytes + '\xF7';
    }
};

} // namespace ZEP::Overmarks::Testing
