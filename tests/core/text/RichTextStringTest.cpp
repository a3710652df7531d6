// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/RichTextString.h"

#include "core/text/RichTextDrawing.h"

#include <gtest/gtest.h>
#include <limits>
#include <malloc.h>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

using namespace ZEP::Core;
using namespace RichTextDrawing;

// ---- Making

TEST (RichText, madeByDefaultIsEmpty)
{
    const RichTextString rich;

    EXPECT_TRUE (rich.getText().isEmpty());
    EXPECT_EQ (rich.getLineSpacing(), 0.0F);
    EXPECT_EQ (rich.getJustification(), juce::Justification::left);
    EXPECT_EQ (rich.getWordWrap(), juce::AttributedString::byWord);
    EXPECT_EQ (rich.getReadingDirection(), juce::AttributedString::natural);
    EXPECT_EQ (rich.getNumAttributes(), 0);
    EXPECT_EQ (rich.length(), 0);
    EXPECT_TRUE (rich.isPlain());
}

TEST (RichText, ofATextIsPlain)
{
    const RichTextString rich (text ("Hello"));

    EXPECT_EQ (rich.getText(), "Hello");
    EXPECT_TRUE (rich.isPlain());
    EXPECT_TRUE (rich.formattedRuns().empty());
    EXPECT_TRUE (isCovered (rich));
}

TEST (RichText, ofAnEmptyTextIsLikeTheDefault)
{
    EXPECT_EQ (RichTextString (juce::String()).getNumAttributes(), 0);
    EXPECT_EQ (RichTextString (juce::String()), RichTextString());
}

/** How many runs there is room for in memory. */
std::size_t roomForRuns (const RichTextString& rich)
{
    auto* first = const_cast<RichTextString::Attribute*> (&rich.getAttribute (0));
    return ::malloc_usable_size (first) / sizeof (*first);
}

TEST (RichText, thatIsPlainTakesTheRoomOfOneRunAndSoDoItsCopies)
{
    const RichTextString rich (text ("Hello"));
    const auto copy = rich;
    RichTextString assigned (text ("before"));
    assigned = rich;

    EXPECT_EQ (roomForRuns (rich), 1U);
    EXPECT_EQ (roomForRuns (copy), 1U);
    EXPECT_EQ (roomForRuns (assigned), 1U);
    EXPECT_EQ (roomForRuns (rich.replaceIllegalASCIICharacters()), 1U);
    EXPECT_EQ (assigned, rich);
    assigned = *&assigned;
    EXPECT_EQ (assigned, rich);
}

TEST (RichText, takesTheCharactersOfATextThatNobodyElseNeeds)
{
    auto characters = text ("Hello");
    const auto* const place = characters.toRawUTF8();
    const RichTextString rich (std::move (characters));

    EXPECT_EQ (rich, RichTextString (text ("Hello")));
    EXPECT_EQ (rich.getText().toRawUTF8(), place);
    EXPECT_EQ (RichTextString (juce::String (juce::CharPointer_UTF8 (""))).getNumAttributes(), 0);
}

TEST (RichText, isCoveredWhateverItsLengthAndWhereverItsForeignLetter)
{
    for (std::size_t length = 1; length < 30; ++length)
        for (std::size_t foreign = 0; foreign <= length; ++foreign)
        {
            auto bytes = std::string (length, 'x');
            bytes.insert (foreign, foreign < length ? "\xe4\xb8\xad" : "");
            const RichTextString rich (text (bytes.c_str()));

            EXPECT_TRUE (isCovered (rich)) << bytes;
            EXPECT_EQ (rich.length(), rich.getText().length()) << bytes;
        }
}

TEST (RichText, countsCharactersAndNotBytes) { EXPECT_EQ (RichTextString (text ("中é🎬x")).length(), 4); }

TEST (RichText, isMadeOfATextOfTheFramework)
{
    juce::AttributedString framework;
    framework.append ("one ", bold());
    framework.setJustification (juce::Justification::right);

    const RichTextString rich (framework);
    EXPECT_EQ (drawn (rich), "[b:one ]");
    EXPECT_EQ (rich.getJustification(), juce::Justification::right);
}

TEST (RichText, isReleasedThroughItsBase)
{
    EXPECT_TRUE (std::has_virtual_destructor_v<RichTextString>);
    EXPECT_TRUE (std::is_nothrow_move_constructible_v<RichTextString>);
}

TEST (RichText, isAssignedWithTextLayoutAndAttributes)
{
    auto rich = marked ("one two", { 0, 3 });
    rich.setLineSpacing (2.0F);
    rich.setJustification (juce::Justification::centred);
    RichTextString copy (text ("something else"));
    copy = rich;

    EXPECT_EQ (drawn (copy), "[b:one] two");
    EXPECT_EQ (copy.getLineSpacing(), 2.0F);
    EXPECT_EQ (copy.getJustification(), juce::Justification::centred);
}

// ---- Plain or formatted

TEST (FormattedRuns, areThoseThatDifferFromTheDefaultFontInBlack)
{
    EXPECT_EQ (drawn (marked ("one two three", { 4, 7 })), "one [b:two] three");
    EXPECT_EQ (drawn (marked ("one two three", { 0, 3 }, RichTextString::defaultFont(), red)),
               "[c:one] two three");
    EXPECT_EQ (drawn (marked ("one two", { 0, 7 }, RichTextString::defaultFont().withHeight (20.0F))),
               "[:one two]");
}

TEST (FormattedRuns, areNoneAfterBoldIsTakenBack)
{
    auto font = bold();
    font.setBold (false);

    EXPECT_TRUE (marked ("one two", { 0, 3 }, font).isPlain());
    EXPECT_TRUE (marked ("one two", { 0, 3 }, juce::Font (14.0F)).isPlain());
}

TEST (FormattedRuns, holdNoEmptyRun)
{
    RichTextString rich;
    rich.append ("", bold());

    EXPECT_TRUE (rich.isPlain());
    EXPECT_TRUE (rich.formattedRuns().empty());
    EXPECT_EQ (rich, RichTextString());
}

TEST (FormattedRuns, joinNeighboursOfOneLook)
{
    RichTextString rich;
    rich.append ("one", bold());
    rich.append ("", red);
    rich.append (" two", bold(), black);

    ASSERT_EQ (rich.formattedRuns().size(), 1U);
    EXPECT_EQ (rich.formattedRuns()[0].range, juce::Range<int> (0, 7));
}

TEST (FormattedRuns, areAllOfAWholeText)
{
    auto rich = marked ("one two three", { 0, 3 });
    rich.setFont (juce::Range<int> (8, 13), juce::Font (14.0F, juce::Font::italic | juce::Font::underlined));

    EXPECT_EQ (drawn (rich), "[b:one] two [iu:three]");
}

// ---- Equality

TEST (EqualRichTexts, haveTheSameTextAndLook)
{
    EXPECT_EQ (marked ("one two", { 0, 3 }), marked ("one two", { 0, 3 }));
    EXPECT_NE (marked ("one two", { 0, 3 }), marked ("one two", { 0, 4 }));
    EXPECT_NE (marked ("one two", { 0, 3 }), marked ("one twO", { 0, 3 }));
    EXPECT_NE (marked ("one two", { 0, 3 }), RichTextString (text ("one two")));
    EXPECT_NE (RichTextString (text ("one two")), marked ("one two", { 0, 3 }));
    EXPECT_NE (marked ("one two", { 0, 3 }), marked ("one two", { 0, 3 }, bold(), red));
    EXPECT_NE (marked ("one two", { 0, 3 }), marked ("one two", { 0, 3 }, bold().italicised()));
    EXPECT_NE (marked ("one two", { 0, 3 }, bold().withHeight (20.0F)), marked ("one two", { 0, 3 }));
    EXPECT_EQ (RichTextString (text ("é")), RichTextString (text ("é")));
}

TEST (EqualRichTexts, mayBeMadeInDifferentWays)
{
    RichTextString typed;
    typed.setText ("one two");

    EXPECT_EQ (typed, RichTextString (text ("one two")));
    EXPECT_EQ (marked ("one two", { 0, 3 }, juce::Font (14.0F)), RichTextString (text ("one two")));
    EXPECT_EQ (marked ("one", { 0, 3 }, bold()),
               marked ("one", { 0, 3 }, juce::Font (14.0F, juce::Font::bold)));
}

TEST (EqualRichTexts, mayHaveDifferentLayout)
{
    RichTextString wide (text ("one"));
    wide.setLineSpacing (3.0F);

    EXPECT_EQ (wide, RichTextString (text ("one")));
}

// ---- Substring

TEST (RichSubstring, keepsTheLookOfItsCharacters)
{
    const auto rich = marked ("one two three", { 4, 7 });

    EXPECT_EQ (drawn (rich.substring (2)), "e [b:two] three");
    EXPECT_EQ (drawn (rich.substring (5)), "[b:wo] three");
    EXPECT_EQ (drawn (rich.substring (5, 6)), "[b:w]");
    EXPECT_EQ (drawn (rich.substring (0, 4)), "one ");
    EXPECT_EQ (drawn (rich.substring (7, 13)), " three");
    EXPECT_TRUE (isCovered (rich.substring (5)));
}

TEST (RichSubstring, cutsTheTextLikeAPlainOne)
{
    const auto rich = marked ("é中🎬 two", { 1, 5 });

    for (const auto start :
         { std::numeric_limits<int>::min(), -1, 0, 1, 2, 5, 7, 8, std::numeric_limits<int>::max() })
    {
        EXPECT_EQ (rich.substring (start).getText(), rich.getText().substring (start)) << start;

        for (const auto end :
             { std::numeric_limits<int>::min(), -1, 0, 1, 3, 7, 8, std::numeric_limits<int>::max() })
        {
            EXPECT_EQ (rich.substring (start, end).getText(), rich.getText().substring (start, end))
                << start << " " << end;
            EXPECT_TRUE (isCovered (rich.substring (start, end)));
        }
    }
}

TEST (RichSubstring, keepsTheLayout)
{
    auto rich = marked ("one two", { 0, 3 });
    rich.setJustification (juce::Justification::right);

    EXPECT_EQ (rich.substring (1).getJustification(), juce::Justification::right);
}

// ---- Replace

TEST (RichReplace, movesTheAttributesWithTheirCharacters)
{
    EXPECT_EQ (drawn (marked ("one two three", { 8, 13 }).replace ("two", "twenty-two", false)),
               "one twenty-two [b:three]");
    EXPECT_EQ (drawn (marked ("one two three", { 8, 13 }).replace ("one ", "", false)), "two [b:three]");
}

TEST (RichReplace, givesTheNewTextTheLookOfTheOld)
{
    EXPECT_EQ (drawn (marked ("one two three", { 4, 7 }).replace ("two", "2", false)), "one [b:2] three");
    EXPECT_EQ (drawn (marked ("one two three", { 4, 7 }).replace ("e t", "-", false)), "on-[b:wo] three");
    EXPECT_EQ (drawn (marked ("one two three", { 4, 7 }).replace ("two three", "2 3", false)), "one [b:2 3]");
}

TEST (RichReplace, canLeaveNothing)
{
    const auto rich = marked ("two", { 0, 3 }).replace ("two", "", false);

    EXPECT_EQ (rich, RichTextString());
    EXPECT_TRUE (isCovered (rich));
}

TEST (RichReplace, withNothingToFindChangesNothing)
{
    const auto rich = marked ("one two", { 0, 3 });

    EXPECT_EQ (rich.replace ("three", "3", false), rich);
    EXPECT_EQ (rich.replace ("", "x", false), rich);
    EXPECT_EQ (rich.replace ("ONE", "1", false), rich);
    EXPECT_EQ (RichTextString().replace ("a", "b", false), RichTextString());
}

TEST (RichReplace, doesNotLookIntoWhatItPutIn)
{
    EXPECT_EQ (RichTextString (text ("aaa")).replace ("a", "aa", false).getText(), "aaaaaa");
    EXPECT_EQ (RichTextString (text ("aaab")).replace ("aa", "a", false).getText(), "aab");
}

TEST (RichReplace, changesTheTextLikeAPlainOne)
{
    std::mt19937 random (11);
    const char* letters[] = { "a", "A", "b", "é", "É", "中", " " };
    const auto letter = [&] { return letters[std::uniform_int_distribution<std::size_t> (0, 6) (random)]; };

    for (int round = 0; round < 3000; ++round)
    {
        std::string line;
        std::string from = letter();

        for (int i = 0; i < round % 17; ++i)
            line += letter();

        if (round % 3 == 0)
            from += letter();

        const auto ignoreCase = round % 2 == 0;
        auto rich = marked (line.c_str(), { 2, 5 });
        rich.setColour (juce::Range<int> (4, 9), red);
        const auto replaced = rich.replace (text (from.c_str()), text ("aé"), ignoreCase);

        ASSERT_EQ (replaced.getText(),
                   text (line.c_str()).replace (text (from.c_str()), text ("aé"), ignoreCase))
            << line;
        ASSERT_TRUE (isCovered (replaced)) << line;
    }
}

// ---- Plain counterparts

TEST (RichPlainText, keepsTheAttributesOnTheMovedCharacters)
{
    const auto rich = marked ("Well… “no”", { 6, 10 });

    EXPECT_EQ (drawn (rich), "Well… [b:“no”]");
    EXPECT_EQ (drawn (rich.replaceIllegalASCIICharacters()), "Well... [b:\"no\"]");
    EXPECT_TRUE (isCovered (rich.replaceIllegalASCIICharacters()));
}

TEST (RichPlainText, givesThreeDotsTheLookOfTheEllipsis)
{
    EXPECT_EQ (drawn (marked ("a…b", { 1, 2 }).replaceIllegalASCIICharacters()), "a[b:...]b");
}

TEST (RichPlainText, losesARunOfInvisibleCharacters)
{
    const auto rich = marked ("a\xe2\x80\x8b\xe2\x80\x8b"
                              "b",
                              { 1, 3 })
                          .replaceIllegalASCIICharacters();

    EXPECT_EQ (drawn (rich), "ab");
    EXPECT_TRUE (isCovered (rich));
}

TEST (RichPlainText, withNothingToReplaceIsTheSameText)
{
    const auto rich = marked ("one two", { 0, 3 });
    const auto same = rich.replaceIllegalASCIICharacters();

    EXPECT_EQ (same, rich);
    EXPECT_EQ (same.getText().getCharPointer().getAddress(), rich.getText().getCharPointer().getAddress());
}

// ---- JSON

TEST (RichJSON, listsTheFormattedRunsAlone)
{
    auto rich = marked ("one two", { 4, 7 }, RichTextString::withStrikethrough (bold(), true),
                        juce::Colour (0x00010203));

    EXPECT_EQ (
        juce::JSON::toString (rich.toJSONDynamicObject().get(), true).toStdString(),
        R"({"text": "one two", "runs": [{"start": 4, "end": 7, "bold": true, "italic": false, "underlined": false, )"
        R"("struckThrough": true, "height": 14.0, "colour": "00010203"}]})");
}

TEST (RichJSON, ofAPlainTextHasNoRuns)
{
    EXPECT_EQ (juce::JSON::toString (RichTextString (text ("one")).toJSONDynamicObject().get(), true),
               R"({"text": "one", "runs": []})");
    EXPECT_EQ (juce::JSON::toString (RichTextString().toJSONDynamicObject().get(), true),
               R"({"text": "", "runs": []})");
}

TEST (RichJSON, writesOpaqueColoursWithTheirAlpha)
{
    const auto object = marked ("one", { 0, 3 }, bold(), black).toJSONDynamicObject();
    EXPECT_EQ (object->getProperty ("runs")[0]["colour"].toString(), "ff000000");
}

// ---- Strike

TEST (StruckThroughText, isAWordOfTheTypefaceStyle)
{
    const auto struck = RichTextString::withStrikethrough (bold().italicised(), true);

    EXPECT_TRUE (RichTextString::isStruckThrough (struck));
    EXPECT_EQ (struck.getTypefaceStyle(), "Bold Italic Strikethrough");
    EXPECT_TRUE (struck.isBold());
    EXPECT_TRUE (struck.isItalic());
    EXPECT_FALSE (RichTextString::isStruckThrough (bold()));
}

TEST (StruckThroughText, isTakenBack)
{
    const auto& plainFont = RichTextString::defaultFont();

    for (const auto& font : { plainFont, bold(), bold().italicised(), plainFont.withHeight (30.0F) })
        EXPECT_EQ (RichTextString::withStrikethrough (RichTextString::withStrikethrough (font, true), false),
                   font);
}

TEST (StruckThroughText, isSetOnlyOnce)
{
    const auto once = RichTextString::withStrikethrough (bold(), true);

    EXPECT_EQ (RichTextString::withStrikethrough (once, true), once);
    EXPECT_EQ (RichTextString::withStrikethrough (bold(), false), bold());
}

TEST (StruckThroughText, isAFormattedRun)
{
    EXPECT_EQ (drawn (marked ("one two", { 0, 3 },
                              RichTextString::withStrikethrough (RichTextString::defaultFont(), true))),
               "[s:one] two");
}
