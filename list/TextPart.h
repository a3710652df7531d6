// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <cstddef>

namespace ZEP::Overmarks
{

/** A part that is looked for in many texts, byte for byte: in UTF-8 a text holds a part if its bytes do.

    Looks for that byte of the part that texts hold least often, and only where it stands for the rest. */
class TextPart final
{
public:
    explicit TextPart (const juce::String& part);

    bool isEmpty() const noexcept { return length == 0; } ///< Then it is in every text.
    bool isIn (const juce::String& text) const noexcept;

private:
    juce::String part;
    std::size_t length;
    std::ptrdiff_t placeOfRarest = 0;
};

} // namespace ZEP::Overmarks
