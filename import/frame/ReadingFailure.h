// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** What the importers of formats that have no message for it tell of a file that can't be read, so that it isn't taken for an empty list. */
struct OVERMARKS_API ReadingFailure
{
    juce::String readingFailure; ///< why the last parse() has read nothing, in words; empty if it has read
};

} // namespace ZEP::Overmarks
