// SPDX-License-Identifier: GPL-3.0-only
#include "import/PrefixCueNumbers.h"

namespace ZEP::Overmarks
{
namespace
{

constexpr auto kSupplement = "SUP";
constexpr int kDigits = 4;

} // namespace

juce::String PrefixCueNumbers::next (const juce::String& prefix, const juce::String& reason)
{
    const auto [entry, isFirst] = counts.try_emplace (prefix, 1);

    if (! isFirst && reason != kSupplement)
        ++entry->second;

    return prefix + juce::String (entry->second).paddedLeft ('0', kDigits);
}

} // namespace ZEP::Overmarks
