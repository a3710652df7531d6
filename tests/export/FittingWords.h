// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PDFDocument.h"
#include "support/ReadPDF.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace ExportSupport
{

/** Two words: one that a place on paper just holds, and one that is too wide for it by half a point or a little more. */
class FittingWords final
{
public:
    /** For the document's present font: wide letters, and behind them a few narrow ones. Those of Arial are all as wide as so many
        eighteenths of their size; the sign in front is not, so that words come close to any width.
        @param width  of the place */
    FittingWords (ZEP::Core::PDFDocument& document, float width) : placeWidth (width)
    {
        const auto repeated = [] (const char* letter, int times)
        { return juce::String::repeatedString (letter, std::max (0, times)); };
        const auto fitting = [&document, width] (const juce::String& start, const char* letter)
        { return static_cast<int> ((width - document.widthOfLine (start)) / document.widthOfLine (letter)); };

        for (int kind = 0; kind < 20; ++kind)
        {
            auto start = repeated ("@", kind % 4);
            start += repeated ("m", fitting (start, "m") - kind / 4);
            const auto narrow = fitting (start, "i");

            for (const int times : { narrow - 1, narrow, narrow + 1 })
                take (start + repeated ("i", times), document);
        }
    }

    /** That a page on which the word is drawn has it whole only if it fits.
        @param pageWith  draws a page with this word in the place */
    void expectTheWidth (
        const std::function<ZEP::Overmarks::Testing::PDFPage (const juce::String&)>& pageWith) const
    {
        ASSERT_GT (wholeWidth, placeWidth - 0.9f) << "the letters of this font are all as wide as each other";
        ASSERT_LT (tooWideWidth, placeWidth + 0.95f);

        // A reader is told the letters that a sign stands for, so the word is there either way.
        const auto drawnWidth = [&pageWith] (const juce::String& word)
        {
            const auto found = pageWith (word).word (word.toStdString());
            EXPECT_GT (found.right, found.x) << "it isn't there: " << word;
            return found.right - found.x;
        };
        EXPECT_NEAR (drawnWidth (whole), wholeWidth, 0.3) << "it fits: " << whole;
        EXPECT_LT (drawnWidth (tooWide), placeWidth + 0.3f) << "it ends beyond its place: " << tooWide;
    }

private:
    void take (const juce::String& word, ZEP::Core::PDFDocument& document)
    {
        const auto width = document.widthOfLine (word);

        if (width <= placeWidth - 0.02f && width > wholeWidth)
        {
            whole = word;
            wholeWidth = width;
        }
        if (width > placeWidth + 0.5f && width < tooWideWidth)
        {
            tooWide = word;
            tooWideWidth = width;
        }
    }

    juce::String whole;
    juce::String tooWide;
    float placeWidth;
    float wholeWidth = 0;
    float tooWideWidth = 1.0e6f;
};

} // namespace ExportSupport
