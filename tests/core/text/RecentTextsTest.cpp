// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/RecentTexts.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using namespace ZEP::Core;

namespace
{

bool areShared (const juce::String& one, const juce::String& other)
{
    return one.toRawUTF8() == other.toRawUTF8();
}

} // namespace

TEST (RecentTexts, equalTextsShareTheirCharacters)
{
    RecentTexts recent;
    const auto first = recent.textOf ("Clarity (AR4)");
    const auto second = recent.textOf (std::string ("Clarity (AR4)"));
    EXPECT_EQ (first, "Clarity (AR4)");
    EXPECT_TRUE (areShared (first, second));
}

TEST (RecentTexts, eachTextIsThatOfItsBytes)
{
    RecentTexts recent;

    for (int round = 0; round < 2; ++round)
        for (std::size_t i = 0; i < 8 * RecentTexts::places; ++i)
        {
            const auto text = "Gr\xc3\xbc\xc3\x9f" + std::to_string (i);
            EXPECT_EQ (recent.textOf (text).toStdString(), text);
        }
}

/** Texts that stand in the same place come one after the other, as a text and its beginning may. */
TEST (RecentTexts, theBeginningOfATextIsAnother)
{
    int met = 0;

    for (int i = 0; i < 20000; ++i)
    {
        const auto text = "TAKE " + std::to_string (i);
        const std::string_view whole (text);
        const auto beginning = whole.substr (0, 4);

        RecentTexts recent;
        const auto first = recent.textOf (whole);
        EXPECT_EQ (first.toStdString(), whole);
        EXPECT_EQ (recent.textOf (beginning).toStdString(), beginning);
        const auto second = recent.textOf (whole);
        EXPECT_EQ (second.toStdString(), whole);
        met += areShared (first, second) ? 0 : 1;
    }

    EXPECT_GT (met, 0);
}

TEST (RecentTexts, onlyTheBytesThatAreHandedInCount)
{
    RecentTexts recent;
    EXPECT_EQ (recent.textOf (std::string_view ("CHARACTER 1|", 11)), "CHARACTER 1");
    EXPECT_EQ (recent.textOf (std::string_view ("CHARACTER 12", 11)), "CHARACTER 1");
    EXPECT_EQ (recent.textOf (std::string_view ("CHARACTER 12", 12)), "CHARACTER 12");
}

TEST (RecentTexts, aLongTextIsNotKept)
{
    RecentTexts recent;
    const std::string line (RecentTexts::mostBytes + 1, 'x');
    const auto first = recent.textOf (line);
    const auto second = recent.textOf (line);
    EXPECT_EQ (first.toStdString(), line);
    EXPECT_EQ (second.toStdString(), line);
    EXPECT_FALSE (areShared (first, second));
}

TEST (RecentTexts, nothingIsNoText)
{
    RecentTexts recent;
    EXPECT_TRUE (recent.textOf ({}).isEmpty());
    EXPECT_TRUE (recent.textOf ("").isEmpty());
}
