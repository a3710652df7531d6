// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <string>
#include <string_view>
#include <vector>

namespace overmarks
{

/** A piece of two versions of a text: what both have, or one of them alone. */
struct TextPiece
{
    enum class Kind
    {
        kept,
        removed, ///< of the old version
        added    ///< of the new one
    };

    Kind kind = Kind::kept;
    std::string text; ///< UTF-8
};

using TextPieces = std::vector<TextPiece>;

/** Two versions of a text, word by word: all pieces but the added ones make the old text, all but the removed ones the new one.
    What was removed stands before what has come in its place. Long passages that have little in common are one piece. */
TextPieces wordDifference (const juce::String& old, const juce::String& now);

/** The words of a text, the blanks and line breaks between them, and its other characters one by one. A character of a script without
    blanks is a word of its own. The views are of `text`. */
std::vector<std::string_view> wordsIn (const std::string& text);

/** The text with one blank for each stretch of blanks and line breaks, and none at its ends. */
std::string withSingleBlanks (const juce::String& text);

/** How much two texts have in common: the share of their words, 0 for none to 1 for all. Blanks and their order play no part. */
double likeness (const std::string& one, const std::string& other);

} // namespace overmarks
