// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PDFDocument.h"
#include "support/ReadPDF.h"

#include <gtest/gtest.h>

#include <functional>

namespace ExportSupport
{

/** Two words: one that a place on paper just holds, and one that is too wide for it by about a point. */
struct FittingWords
{
    /** For the document's present font. Letters of different widths, so that together they have nearly any.
        @param width    of the place
        @param letters  a narrow and a wide one */
    FittingWords (ZEP::Core::PDFDocument& document, float width, const char* letters = "im")
        : placeWidth (width)
    {
        for (int wide = 0; wide < 80 && (whole.isEmpty() || tooWide.isEmpty()); ++wide)
            for (int narrow = 0; narrow < 400; ++narrow)
            {
                const auto word =
                    juce::String::repeatedString (juce::String::charToString (letters[1]), wide)
                    + juce::String::repeatedString (juce::String::charToString (letters[0]), narrow);
                const auto excess = document.widthOfLine (word) - width;

                if (excess > -0.65f && excess < 0.01f)
                {
                    whole = word;
                    wholeWidth = excess + width;
                }
                if (excess > 0.55f && excess < 1.55f)
                    tooWide = word;
                if (excess > 1.55f)
                    break;
            }
    }

    /** That a page on which the word is drawn has it whole only if it fits.
        @param pageWith  draws a page with this word in the place */
    void expectTheWidth (
        const std::function<ZEP::Overmarks::Testing::PDFPage (const juce::String&)>& pageWith) const
    {
        if (whole.isEmpty() || tooWide.isEmpty())
            GTEST_SKIP() << "no word of this font has nearly that width";

        // A reader is told the letters that a sign stands for, so the word is there either way.
        const auto drawnWidth = [&pageWith] (const juce::String& word)
        {
            const auto found = pageWith (word).word (word.toStdString());
            return found.right - found.x;
        };
        EXPECT_NEAR (drawnWidth (whole), wholeWidth, 0.3) << "it fits: " << whole;
        EXPECT_LT (drawnWidth (tooWide), placeWidth + 0.3f) << "it ends beyond its place: " << tooWide;
    }

    juce::String whole;
    juce::String tooWide;
    float placeWidth;
    float wholeWidth = 0;
};

} // namespace ExportSupport
