// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/OutputFileNames.h"

#include <algorithm>

namespace ZEP::Overmarks
{

const juce::String OutputFileNames::noCharacter { "<no char>" };

namespace
{

int lengthInBytes (const juce::String& text) { return static_cast<int> (text.getNumBytesAsUTF8()); }

/** The start of a text, at most `bytes` long, that ends with a whole character. */
juce::String cutToBytes (const juce::String& text, int bytes)
{
    if (lengthInBytes (text) <= bytes)
        return text;

    const auto* const whole = text.toRawUTF8();
    int end = std::max (bytes, 0);

    while (end > 0 && (static_cast<unsigned char> (whole[end]) & 0xc0) == 0x80)
        --end;

    return juce::String::fromUTF8 (whole, end);
}

/** A character's name as part of a file name. What is far beyond the longest one isn't even looked at. */
juce::String harmless (const juce::String& characterName, const juce::String& charactersToBlank)
{
    auto name = cutToBytes (characterName, 2 * OutputFileNames::longestName).replaceCharacter ('/', '_');

    for (auto p = charactersToBlank.getCharPointer(); ! p.isEmpty(); ++p)
        name = name.replaceCharacter (*p, ' ');

    return name;
}

} // namespace

OutputFileNames::OutputFileNames (const juce::String& folderPath, const juce::String& baseName,
                                  const juce::String& fileExtension, const juce::String& charactersToBlank)
    : folder (folderPath),
      base (baseName),
      extension (fileExtension),
      blanked (charactersToBlank)
{
}

juce::File OutputFileNames::single() const { return inFolder (base + extension); }

juce::File OutputFileNames::nextFor (const juce::String& characterName)
{
    const auto part = harmless (characterName, blanked);
    const auto first = fitted (part, {});

    if (take (first))
        return inFolder (first);

    auto& number = lastNumbers.try_emplace (first, 1).first->second;
    auto name = first;

    while (! take (name))
        name = fitted (part, " (" + juce::String (++number) + ")");

    return inFolder (name);
}

bool OutputFileNames::take (const juce::String& name)
{
    return taken.insert (juce::File::areFileNamesCaseSensitive() ? name : name.toLowerCase()).second;
}

juce::String OutputFileNames::fitted (const juce::String& characterPart, const juce::String& number) const
{
    // Only the part behind the last separator is a name of its own, should the base name hold one.
    const auto front = base + "_";
    const auto back = number + extension;
    const auto room =
        longestName - lengthInBytes (front.fromLastOccurrenceOf ("/", false, false)) - lengthInBytes (back);
    return front + cutToBytes (characterPart, room) + back;
}

juce::File OutputFileNames::inFolder (const juce::String& name) const
{
    // At the start of a path the tilde would stand for somebody's home.
    return folder.getChildFile (name.startsWithChar ('~') ? "./" + name : name);
}

} // namespace ZEP::Overmarks
