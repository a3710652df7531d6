// SPDX-License-Identifier: GPL-3.0-only
#include "list/TTALFormat.h"

#include <array>

namespace ZEP::Overmarks::TTAL
{

namespace
{

struct Rate
{
    const char* name;
    Core::FrameRateCode whenRead;
    Core::FrameRateCode alsoWrittenFor;
};

constexpr std::array<Rate, 8> rates { {
    { "FPS_2397", Core::FrameRate23976, Core::FrameRate23976 },
    { "FPS_2400", Core::FrameRate24, Core::FrameRate24 },
    { "FPS_2500", Core::FrameRate25, Core::FrameRate25 },
    { "FPS_2997", Core::FrameRate2997Drop, Core::FrameRate2997 },
    { "FPS_3000", Core::FrameRate30, Core::FrameRate30 },
    { "FPS_5000", Core::FrameRate50, Core::FrameRate50 },
    { "FPS_5994", Core::FrameRate5994Drop, Core::FrameRate5994 },
    { "FPS_6000", Core::FrameRate60, Core::FrameRate60 },
} };

} // namespace

juce::String rateName (Core::FrameRateCode code)
{
    for (const auto& rate : rates)
        if (rate.whenRead == code || rate.alsoWrittenFor == code)
            return rate.name;

    return "unsupported";
}

std::optional<Core::FrameRateCode> rateNamed (const juce::String& name)
{
    for (const auto& rate : rates)
        if (name == rate.name)
            return rate.whenRead;

    return std::nullopt;
}

} // namespace ZEP::Overmarks::TTAL
