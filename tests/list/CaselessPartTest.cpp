// SPDX-License-Identifier: GPL-3.0-only
#include "list/CaselessPart.h"

#include "support/RandomEvents.h"

#include <gtest/gtest.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

juce::String utf8 (const char* text) { return juce::CharPointer_UTF8 (text); }

TEST (CaselessPart, isFoundAnywhereInAnyCase)
{
    const CaselessPart part ("tOm");
    for (const auto* text : { "Tom", "TOMORROW", "a tom", "totom", "ttom" })
        EXPECT_TRUE (part.isIn (text)) << text;
    for (const auto* text : { "", "To", "t om", "mot", "tttto" })
        EXPECT_FALSE (part.isIn (text)) << text;
}

TEST (CaselessPart, anEmptyPartIsInEveryText)
{
    EXPECT_TRUE (CaselessPart ({}).isIn (""));
    EXPECT_TRUE (CaselessPart ({}).isIn ("a"));
}

TEST (CaselessPart, wideCharactersAreFound)
{
    EXPECT_TRUE (CaselessPart (utf8 ("本")).isIn (utf8 ("日本")));
    EXPECT_TRUE (CaselessPart (utf8 ("😀b")).isIn (utf8 ("a😀B")));
    EXPECT_FALSE (CaselessPart (utf8 ("日😀")).isIn (utf8 ("日本")));
}

TEST (CaselessPart, findsWhatTheStringItselfFinds)
{
    const std::vector<juce::String> pieces { "a",
                                             "A",
                                             "b",
                                             "aB",
                                             " ",
                                             "1",
                                             utf8 ("é"),
                                             utf8 ("É"),
                                             utf8 ("ß"),
                                             utf8 ("ı"),
                                             "i",
                                             "I",
                                             "k",
                                             utf8 ("\xe2\x84\xaa"),
                                             utf8 ("日"),
                                             utf8 ("😀"),
                                             utf8 ("e\xcc\x81") };
    RandomEvents random (1);
    const auto anyText = [&] (int most)
    {
        juce::String text;
        for (int i = random.below (most + 1); i > 0; --i)
            text += random.oneOf (pieces);
        return text;
    };
    int found = 0;
    for (int i = 0; i < 20000; ++i)
    {
        const auto text = anyText (8);
        const auto part = anyText (3);
        const bool expected = text.containsIgnoreCase (part);
        ASSERT_EQ (CaselessPart (part).isIn (text), expected) << part << " in " << text;
        found += expected ? 1 : 0;
    }
    EXPECT_GT (found, 1000);
    EXPECT_LT (found, 19000);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
