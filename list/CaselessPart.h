// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <vector>

namespace ZEP::Overmarks
{

/** A part that is looked for in many texts without regard to case, such as what the user types into a search field.

    Finds what juce::String::containsIgnoreCase() finds, but prepares what can be prepared once. */
class CaselessPart final
{
public:
    explicit CaselessPart (const juce::String& part);

    /** An empty part is in every text. */
    bool isIn (const juce::String& text) const;

private:
    juce::juce_wchar nextUpperCase (juce::CharPointer_UTF8& text) const;
    bool isAt (juce::CharPointer_UTF8 text) const;

    std::vector<juce::juce_wchar> upperCase;
    std::array<juce::juce_wchar, 128> upperCaseOfASCII {};
};

} // namespace ZEP::Overmarks
