// SPDX-License-Identifier: GPL-3.0-only
// What is shaped once and kept.
#include "core/documents/PageText.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

using ZEP::Core::PageText;

constexpr auto noLimit = std::numeric_limits<float>::infinity();

TEST (PageTextTest, aTextThatCameBeforeIsShapedAlready)
{
    PageText texts;
    const auto shape = texts.paragraph ("Where were you?", 400);
    EXPECT_EQ (texts.paragraph ("Where were you?", 400), shape);
    EXPECT_NE (texts.paragraph ("Where were you?", 300), shape);
    EXPECT_NE (texts.paragraph ("Where was he?", 400), shape);
    texts.setFont (true, 12);
    EXPECT_NE (texts.paragraph ("Where were you?", 400), shape);
}

TEST (PageTextTest, theLongestCueIsShapedOnceForAllItsPages)
{
    PageText texts;
    const auto words = juce::String::repeatedString ("more words ", 18000);
    const auto notes = juce::String::repeatedString ("many notes ", 18000);
    const auto text = texts.paragraph (words, 410), below = texts.paragraph (notes, 347);

    for (int page = 1; page <= 70; ++page)
    {
        EXPECT_EQ (texts.paragraph (words, 410), text) << page;
        EXPECT_EQ (texts.paragraph (notes, 347), below) << page;
        EXPECT_GT (texts.oneLine ("Page: " + juce::String (page) + "/70", noLimit)->width, 0.0f);
    }
}

TEST (PageTextTest, whatCameLongAgoIsForgotten)
{
    PageText texts;
    const auto first = texts.paragraph (juce::String::repeatedString ("more words ", 18000), 410);

    for (int i = 0; i < 3; ++i)
        EXPECT_GT (
            texts.paragraph (juce::String (i) + juce::String::repeatedString (" words", 33000), 410)->height,
            0.0f);

    EXPECT_EQ (first.use_count(), 1);
}

} // namespace
