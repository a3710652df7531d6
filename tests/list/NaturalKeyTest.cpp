// SPDX-License-Identifier: GPL-3.0-only
#include "list/NaturalKey.h"

#include <gtest/gtest.h>

#include <clocale>
#include <random>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

int sign (int value) { return (value > 0) - (value < 0); }

int byKeys (const juce::String& a, const juce::String& b)
{
    return sign (naturalKeyOf (a).compare (naturalKeyOf (b)));
}

int byTexts (const juce::String& a, const juce::String& b) { return sign (a.compareNatural (b, false)); }

TEST (NaturalKey, numbersGoByTheirValueAndLettersInEitherCase)
{
    EXPECT_LT (byKeys ("R2", "R10"), 0);
    EXPECT_LT (byKeys ("r2", "R10"), 0);
    EXPECT_EQ (byKeys ("r10 b", "R10   B"), 0);
    EXPECT_LT (byKeys ("R10", "R10a"), 0);
    EXPECT_LT (byKeys ("9", "A"), 0);
    EXPECT_LT (byKeys ("-1", "1"), 0);
    EXPECT_LT (byKeys ("", " 1"), 0);
}

TEST (NaturalKey, aLeadingZeroMakesDigitsADecimalFraction)
{
    EXPECT_LT (byKeys ("R05", "R1"), 0);
    EXPECT_LT (byKeys ("R0", "R00"), 0);
    EXPECT_LT (byKeys ("R01", "R02"), 0);
    EXPECT_LT (byKeys ("R0999", "R1"), 0);
}

TEST (NaturalKey, aNumberOfAnyLengthGoesByItsValue)
{
    for (const int length : { 1, 42, 43, 44, 45, 255, 256, 300 })
    {
        const auto nines = juce::String::repeatedString ("9", length);
        EXPECT_LT (byKeys (nines, "1" + juce::String::repeatedString ("0", length)), 0) << length;
        EXPECT_LT (byKeys ("1" + juce::String::repeatedString ("0", length - 1), nines), 0) << length;
    }
}

TEST (NaturalKey, aUsualCueNumberFitsIntoEightBytes)
{
    for (const char* text : { "R1 1234", "R12-345", "101-0", "M1234a", "12345678" })
        EXPECT_LE (naturalKeyOf (text).size(), 8U) << text;
}

TEST (NaturalKey, numbersByChanceGoByTheirValue)
{
    std::mt19937 random (5);
    for (int i = 0; i < 100000; ++i)
    {
        const auto number = [&random] { return juce::String (std::to_string (random() >> random() % 32)); };
        const auto a = "R" + number() + " " + number(), b = "R" + number() + "-" + number();
        const auto c = a.upToFirstOccurrenceOf (" ", true, false) + number();
        ASSERT_EQ (byKeys (a, b), byTexts (a, b)) << a << " and " << b;
        ASSERT_EQ (byKeys (a, c), byTexts (a, c)) << a << " and " << c;
    }
}

/** Letters beyond ASCII are letters, as in a program that has asked for its user's language. */
class EveryLetter final
{
public:
    EveryLetter() { EXPECT_NE (std::setlocale (LC_CTYPE, "C.UTF-8"), nullptr); }
    EveryLetter (const EveryLetter&) = delete;
    EveryLetter& operator= (const EveryLetter&) = delete;
    ~EveryLetter() { std::setlocale (LC_CTYPE, "C"); }
};

TEST (NaturalKey, comparesAsTheTextsDo)
{
    const EveryLetter scope;
    EXPECT_EQ (byKeys (juce::String::fromUTF8 ("Ä"), juce::String::fromUTF8 ("ä")), 0);
    static const std::vector<juce::String> pieces { "0",
                                                    "1",
                                                    "2",
                                                    "9",
                                                    "10",
                                                    "00",
                                                    "05",
                                                    "a",
                                                    "B",
                                                    "b",
                                                    "Z",
                                                    "z",
                                                    " ",
                                                    "  ",
                                                    "\t",
                                                    "-",
                                                    "_",
                                                    ".",
                                                    "[",
                                                    "~",
                                                    juce::String::fromUTF8 ("ä"),
                                                    juce::String::fromUTF8 ("Ä"),
                                                    juce::String::fromUTF8 ("ß"),
                                                    juce::String::fromUTF8 ("–"),
                                                    juce::String::fromUTF8 ("語"),
                                                    juce::String::fromUTF8 ("😀"),
                                                    juce::String::fromUTF8 ("\xc2\xa0"),
                                                    juce::String::fromUTF8 ("\xe2\x80\x83") };
    std::mt19937 random (20261122);
    const auto text = [&random]
    {
        juce::String made;
        for (auto length = random() % 7; length > 0; --length)
            made += pieces[random() % pieces.size()];
        return made;
    };

    for (int i = 0; i < 200000; ++i)
    {
        const auto a = text();
        const auto b = text();
        ASSERT_EQ (byKeys (a, b), byTexts (a, b)) << '"' << a << "\" and \"" << b << '"';
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
