// SPDX-License-Identifier: GPL-3.0-only
#include "import/PrefixCueNumbers.h"

#include <gtest/gtest.h>

using ZEP::Overmarks::PrefixCueNumbers;

TEST (PrefixCueNumbers, countOnEachPrefixOnItsOwn)
{
    PrefixCueNumbers numbers;
    EXPECT_EQ (numbers.next ("A", ""), "A0001");
    EXPECT_EQ (numbers.next ("B", ""), "B0001");
    EXPECT_EQ (numbers.next ("A", ""), "A0002");
    EXPECT_EQ (numbers.next ("B", "Clarity (AR4)"), "B0002");
    EXPECT_EQ (numbers.next ("A", ""), "A0003");
}

TEST (PrefixCueNumbers, withoutAPrefixTheyAreBare)
{
    PrefixCueNumbers numbers;
    EXPECT_EQ (numbers.next ("", ""), "0001");
    EXPECT_EQ (numbers.next ("", ""), "0002");
}

TEST (PrefixCueNumbers, aSupplementRepeatsTheNumberBeforeIt)
{
    PrefixCueNumbers numbers;
    EXPECT_EQ (numbers.next ("A", ""), "A0001");
    EXPECT_EQ (numbers.next ("A", ""), "A0002");
    EXPECT_EQ (numbers.next ("A", "SUP"), "A0002");
    EXPECT_EQ (numbers.next ("A", "SUP"), "A0002");
    EXPECT_EQ (numbers.next ("A", ""), "A0003");
}

TEST (PrefixCueNumbers, theFirstOfAPrefixIsNumberOneAlsoAsASupplement)
{
    PrefixCueNumbers numbers;
    EXPECT_EQ (numbers.next ("A", "SUP"), "A0001");
    EXPECT_EQ (numbers.next ("A", "SUP"), "A0001");
    EXPECT_EQ (numbers.next ("A", ""), "A0002");
}

TEST (PrefixCueNumbers, onlyTheVeryWordMarksASupplement)
{
    PrefixCueNumbers numbers;
    EXPECT_EQ (numbers.next ("A", ""), "A0001");
    EXPECT_EQ (numbers.next ("A", "sup"), "A0002");
    EXPECT_EQ (numbers.next ("A", "SUP "), "A0003");
}

TEST (PrefixCueNumbers, prefixesAreToldApartByCase)
{
    PrefixCueNumbers numbers;
    EXPECT_EQ (numbers.next ("a", ""), "a0001");
    EXPECT_EQ (numbers.next ("A", ""), "A0001");
}

TEST (PrefixCueNumbers, pastFourDigitsTheyGrow)
{
    PrefixCueNumbers numbers;
    juce::String last;
    for (int i = 0; i < 10000; ++i)
        last = numbers.next ("A", "");
    EXPECT_EQ (last, "A10000");
    EXPECT_EQ (numbers.next ("A", "SUP"), "A10000");
}
