// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <string>

namespace ZEP::Overmarks
{

/** The bytes of a whole file; nothing if it can't be opened or isn't an ordinary file: to read a pipe could mean to wait for
    ever. */
[[nodiscard]] std::optional<std::string> contentOfFile (const juce::String& path);

} // namespace ZEP::Overmarks
