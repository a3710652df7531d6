// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PDFDocument.h"
#include "support/ReadPDF.h"

#include <gtest/gtest.h>

#include <functional>

namespace ExportSupport
{

/** Two words: one that a place on paper just holds, and one that is too wide for it by less than half a point. */
struct FittingWords
{
    /** For the document's present font. Letters of different widths, so that together they have nearly any.
        @param width    of the place
        @param letters  a narrow and a wide one */
    FittingWords (ZEP::Core::PDFDocument& document, float width, const char* letters = "im")
    {
        for (int wide = 0; wide < 80 && (whole.isEmpty() || tooWide.isEmpty()); ++wide)
            for (int narrow = 0; narrow < 400; ++narrow)
            {
                const auto word =
                    juce::String::repeatedString (juce::String::charToString (letters[1]), wide)
                    + juce::String::repeatedString (juce::String::charToString (letters[0]), narrow);
                const auto excess = document.widthOfLine (word) - width;

                if (excess > -0.45f && excess < -0.05f)
                    whole = word;
                if (excess > 0.05f && excess < 0.45f)
                    tooWide = word;
                if (excess > 0.45f)
                    break;
            }
    }

    /** That a page on which the word is drawn has it whole only if it fits.
        @param pageWith  draws a page with this word in the place */
    void expectTheWidth (
        const std::function<ZEP::Overmarks::Testing::PDFPage (const juce::String&)>& pageWith) const
    {
        ASSERT_TRUE (whole.isNotEmpty() && tooWide.isNotEmpty());
        EXPECT_EQ (pageWith (whole).count (whole.toStdString()), 1) << "it fits: " << whole;
        EXPECT_EQ (pageWith (tooWide).count (tooWide.toStdString()), 0)
            << "it ends beyond its place: " << tooWide;
    }

    juce::String whole;
    juce::String tooWide;
};

} // namespace ExportSupport
