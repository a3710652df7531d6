// SPDX-License-Identifier: GPL-3.0-only
#include "list/CaselessPart.h"

#include <algorithm>

namespace ZEP::Overmarks
{

using juce::CharacterFunctions;

CaselessPart::CaselessPart (const juce::String& part)
{
    for (auto p = part.getCharPointer(); ! p.isEmpty();)
        upperCase.push_back (CharacterFunctions::toUpperCase (p.getAndAdvance()));

    for (std::size_t i = 0; i < upperCaseOfASCII.size(); ++i)
        upperCaseOfASCII[i] = CharacterFunctions::toUpperCase (static_cast<juce::juce_wchar> (i));
}

juce::juce_wchar CaselessPart::nextUpperCase (juce::CharPointer_UTF8& text) const
{
    const auto first = static_cast<unsigned char> (*text.getAddress());

    if (first >= upperCaseOfASCII.size())
        return CharacterFunctions::toUpperCase (text.getAndAdvance());

    text = juce::CharPointer_UTF8 (text.getAddress() + 1);
    return upperCaseOfASCII[first];
}

bool CaselessPart::isAt (juce::CharPointer_UTF8 text) const
{
    // The zero behind the text is in no part, so that the comparison never leaves the text.
    return std::all_of (upperCase.begin(), upperCase.end(),
                        [&] (juce::juce_wchar wanted) { return nextUpperCase (text) == wanted; });
}

bool CaselessPart::isIn (const juce::String& text) const
{
    if (upperCase.empty())
        return true;

    auto p = text.getCharPointer();

    while (! p.isEmpty())
    {
        auto behind = p;

        if (nextUpperCase (behind) == upperCase.front() && isAt (p))
            return true;

        p = behind;
    }

    return false;
}

} // namespace ZEP::Overmarks
