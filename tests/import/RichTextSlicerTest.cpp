// SPDX-License-Identifier: GPL-3.0-only
#include "import/RichTextSlicer.h"

#include <gtest/gtest.h>

#include <random>

using namespace ZEP::Overmarks;
using ZEP::Core::RichTextString;

namespace
{

RichTextString colourful()
{
    RichTextString text (juce::String::fromUTF8 ("ab\xc3\xa4\xf0\x9f\x8e\xac"
                                                 "cdefgh"));
    text.setFont ({ 1, 4 }, juce::Font (20.0f, juce::Font::bold));
    text.setColour ({ 3, 6 }, juce::Colours::red);
    text.setFont ({ 8, 10 }, juce::Font (14.0f, juce::Font::italic));
    text.setLineSpacing (3.0f);
    return text;
}

} // namespace

TEST (RichTextSlicer, cutsAsSubstringDoes)
{
    const auto text = colourful();
    const RichTextSlicer slicer (text);

    for (int start = -2; start <= text.length() + 2; ++start)
        for (int end = -2; end <= text.length() + 2; ++end)
        {
            const auto slice = slicer.slice (start, end);
            EXPECT_TRUE (slice == text.substring (start, end)) << start << " to " << end;
            EXPECT_EQ (slice.length(), slice.getText().length());
            EXPECT_EQ (slice.getLineSpacing(), 3.0f);
        }
}

TEST (RichTextSlicer, anEmptyTextHasEmptySlices)
{
    const RichTextString text;
    EXPECT_EQ (RichTextSlicer (text).slice (0, 10).getText(), "");
}

TEST (RichTextSlicer, manyRunsAreCutAsSubstringDoes)
{
    std::mt19937 random (1);
    RichTextString text (juce::String::repeatedString ("abc\n", 200));

    for (int i = 0; i < 300; ++i)
    {
        const auto start = static_cast<int> (random() % 800);
        text.setFont ({ start, start + 1 + static_cast<int> (random() % 9) },
                      juce::Font (10.0f + static_cast<float> (random() % 9)));
    }

    const RichTextSlicer slicer (text);

    for (int i = 0; i < 300; ++i)
    {
        const auto start = static_cast<int> (random() % 800);
        const auto end = static_cast<int> (random() % 800);
        EXPECT_TRUE (slicer.slice (start, end) == text.substring (start, end)) << start << " to " << end;
    }
}
