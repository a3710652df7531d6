// SPDX-License-Identifier: GPL-3.0-only
#include "list/TextPart.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

bool isIn (const char* part, const char* text)
{
    return TextPart (juce::String::fromUTF8 (part)).isIn (juce::String::fromUTF8 (text));
}

TEST (TextPart, anEmptyPartIsInEveryText)
{
    EXPECT_TRUE (TextPart ({}).isEmpty());
    EXPECT_TRUE (isIn ("", ""));
    EXPECT_TRUE (isIn ("", "Go!"));
    EXPECT_FALSE (TextPart ("o").isEmpty());
}

TEST (TextPart, isFoundAtBothEndsAndInItsCaseAlone)
{
    EXPECT_TRUE (isIn ("Go", "Go!"));
    EXPECT_TRUE (isIn ("o!", "Go!"));
    EXPECT_TRUE (isIn ("Go!", "Go!"));
    EXPECT_FALSE (isIn ("go", "Go!"));
    EXPECT_FALSE (isIn ("GO", "Go!"));
}

TEST (TextPart, aLongerPartIsInNoText)
{
    EXPECT_FALSE (isIn ("Go!", ""));
    EXPECT_FALSE (isIn ("Go! Go!", "Go!"));
    EXPECT_FALSE (isIn ("xGo!", "Go!"));
}

TEST (TextPart, lettersBeyondASCIIAreFoundWhole)
{
    EXPECT_TRUE (isIn ("schön", "Wie schön!"));
    EXPECT_FALSE (isIn ("schon", "Wie schön!"));
    EXPECT_FALSE (isIn ("schÖn", "Wie schön!"));
    EXPECT_TRUE (isIn ("да", "Ну да."));
    EXPECT_FALSE (isIn ("дa", "Ну да."));
    EXPECT_TRUE (isIn ("語😀", "日本語😀"));
}

TEST (TextPart, aTextFullOfTheRarestLetterIsLookedThroughToItsEnd)
{
    const juce::String many = juce::String::repeatedString ("zq ", 1000);
    EXPECT_TRUE (TextPart ("zqz").isIn (many + "zqz"));
    EXPECT_FALSE (TextPart ("zqz").isIn (many));
    EXPECT_TRUE (TextPart ("q z").isIn (many));
}

TEST (TextPart, isFoundWhereItsBytesAre)
{
    static const std::vector<std::string> letters { "a", "e", " ", "z", "Z", "ä", "д", "😀" };
    std::mt19937 random (11);
    const auto textOf = [&random] (std::size_t longest, std::size_t kinds)
    {
        std::string text;
        for (auto length = random() % (longest + 1); length > 0; --length)
            text += letters[random() % kinds];
        return text;
    };

    for (int i = 0; i < 100000; ++i)
    {
        const auto kinds = 1 + random() % letters.size();
        const auto text = textOf (80, kinds), part = textOf (4, kinds);
        ASSERT_EQ (isIn (part.c_str(), text.c_str()), text.find (part) != std::string::npos)
            << '"' << part << "\" in \"" << text << '"';
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
