// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** The text of a new random UUID, the identity of an event. Any thread. */
juce::String randomIdentity();

} // namespace ZEP::Overmarks
