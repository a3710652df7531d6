// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/RichTextString.h"

#include "core/text/StringUtil.h"
#include "proto/overmarks.pb.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

using namespace ZEP::Core;

namespace
{

const juce::Colour black { 0xff000000 };
const juce::Colour red { 0xffff0000 };

juce::String text (const char* utf8) { return StringUtil::fromUTF8 (utf8); }

juce::Font bold() { return RichTextString::defaultFont().boldened(); }

RichTextString marked (const char* utf8, juce::Range<int> range, const juce::Font& font = bold(),
                       juce::Colour colour = black)
{
    RichTextString result (text (utf8));
    result.setFont (range, font);
    result.setColour (range, colour);
    return result;
}

/* The text, each formatted run in brackets with the letters of its look: "one [b:two] three". */
std::string drawn (const RichTextString& rich)
{
    std::string result;
    int end = 0;

    for (const auto& run : rich.formattedRuns())
    {
        const std::string look = std::string (run.font.isBold() ? "b" : "") + (run.font.isItalic() ? "i" : "")
                                 + (run.font.isUnderlined() ? "u" : "")
                                 + (RichTextString::isStruckThrough (run.font) ? "s" : "")
                                 + (run.colour == black ? "" : "c");
        result += rich.getText().substring (end, run.range.getStart()).toStdString();
        end = run.range.getEnd();
        result += "[" + look + ":" + rich.getText().substring (run.range.getStart(), end).toStdString() + "]";
    }

    return result + rich.getText().substring (end).toStdString();
}

/* Runs from 0 to the length without a gap. */
bool isCovered (const RichTextString& rich)
{
    int end = 0;

    for (int i = 0; i < rich.getNumAttributes(); ++i)
    {
        if (rich.getAttribute (i).range.getStart() != end || rich.getAttribute (i).range.isEmpty())
            return false;

        end = rich.getAttribute (i).range.getEnd();
    }

    return end == rich.getText().length() && rich.length() == end;
}

} // namespace

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

// ---- Stored attributes

TEST (StoredAttribute, comesBackAsItWas)
{
    auto odd = juce::Font ("Courier New", "Light Oblique Strikethrough", 33.5F);
    odd.setUnderline (true);
    odd.setHorizontalScale (1.5F);
    odd.setExtraKerningFactor (0.25F);

    for (const auto& font : { RichTextString::defaultFont(), bold(), juce::Font (14.0F), odd })
        for (const auto& colour : { black, red, juce::Colour (0x80123456), juce::Colour() })
        {
            const RichTextString::Attribute attribute ({ 2, 5 }, font, colour);
            tessera1::ProtoRichTextAttribute stored;
            RichTextString::applyStringAttributeToProtoObject (attribute, &stored);
            tessera1::ProtoRichTextAttribute read;
            ASSERT_TRUE (read.ParseFromString (stored.SerializeAsString()));
            const auto back = RichTextString::attributeFromProtoObject (&read);

            EXPECT_EQ (back.range, attribute.range);
            EXPECT_EQ (back.font, font) << font.toString();
            EXPECT_EQ (back.colour, colour);

            RichTextString rich (text ("1234567"));
            rich.applyProtoTextAttribute (&read);
            RichTextString expected (text ("1234567"));
            expected.setFont (juce::Range<int> (2, 5), font);
            expected.setColour (juce::Range<int> (2, 5), colour);
            EXPECT_EQ (rich, expected);
            EXPECT_TRUE (isCovered (rich));
        }
}

TEST (StoredAttribute, holdsTheFontByItsNumbers)
{
    tessera1::ProtoRichTextAttribute stored;
    RichTextString::applyStringAttributeToProtoObject ({ { 1, 4 }, bold(), red }, &stored);

    EXPECT_EQ (stored.rangestart(), 1);
    EXPECT_EQ (stored.rangeend(), 4);
    EXPECT_EQ (stored.typefacename(), "");
    EXPECT_EQ (stored.typefacestyle(), "Bold");
    EXPECT_EQ (stored.height(), 14.0F);
    EXPECT_FALSE (stored.underlined());
    EXPECT_EQ (stored.horizontalscale(), 1.0F);
    EXPECT_EQ (stored.extrakerning(), 0.0F);
    EXPECT_EQ (stored.colour(), 0xffff0000U);
}

TEST (StoredAttribute, outsideTheTextIsClipped)
{
    struct Clipped
    {
        int start;
        int end;
        const char* result;
    };
    constexpr auto lowest = std::numeric_limits<int>::min();
    constexpr auto highest = std::numeric_limits<int>::max();

    for (const auto& [start, end, result] :
         { Clipped { 2, 99, "on[b:e]" }, Clipped { -5, 1, "[b:o]ne" }, Clipped { lowest, highest, "[b:one]" },
           Clipped { 3, 9, "one" }, Clipped { 50, 60, "one" }, Clipped { -9, -3, "one" },
           Clipped { 2, 1, "one" }, Clipped { 1, 1, "one" }, Clipped { highest, lowest, "one" } })
    {
        tessera1::ProtoRichTextAttribute stored;
        stored.set_rangestart (start);
        stored.set_rangeend (end);
        stored.set_typefacestyle ("Bold");
        stored.set_colour (0xff000000U);

        RichTextString rich (text ("one"));
        rich.applyProtoTextAttribute (&stored);
        EXPECT_EQ (drawn (rich), result);
        EXPECT_TRUE (isCovered (rich));

        RichTextString atOnce (text ("one"));
        atOnce.applyAttributes ({ RichTextString::attributeFromProtoObject (&stored) });
        EXPECT_EQ (drawn (atOnce), result);
    }
}

TEST (StoredAttribute, ofAnEmptyTextIsIgnored)
{
    tessera1::ProtoRichTextAttribute stored;
    stored.set_rangeend (5);
    RichTextString rich;
    rich.applyProtoTextAttribute (&stored);
    rich.applyProtoTextAttribute (nullptr);

    EXPECT_EQ (rich.getNumAttributes(), 0);
}

TEST (StoredAttribute, withDamagedNumbersHasAUsableFont)
{
    for (const auto number : { NAN, INFINITY, -INFINITY, -3.0F, 0.0F })
    {
        tessera1::ProtoRichTextAttribute stored;
        stored.set_rangeend (3);
        stored.set_height (number);
        stored.set_horizontalscale (number);
        stored.set_extrakerning (std::isfinite (number) ? 0.0F : number);
        stored.set_colour (0xff000000U);

        EXPECT_EQ (RichTextString::attributeFromProtoObject (&stored).font, RichTextString::defaultFont())
            << number;
    }
}

TEST (StoredAttribute, withANameThatIsNoUTF8IsRead)
{
    tessera1::ProtoRichTextAttribute stored;
    stored.set_typefacename ("Caf\xe9");

    EXPECT_EQ (RichTextString::attributeFromProtoObject (&stored).font.getTypefaceName(),
               text ("Caf\xef\xbf\xbd"));
}

// ---- Many attributes

TEST (ManyAttributes, lieOverOneAnotherLikeOnesAddedInTurn)
{
    std::mt19937 random (3);
    std::uniform_int_distribution<int> place (-3, 25);

    for (int round = 0; round < 2000; ++round)
    {
        std::vector<RichTextString::Attribute> attributes;
        auto inTurn = marked ("one two thr\xc3\xa9\xc3\xa9 four", { 4, 7 });
        auto atOnce = inTurn;

        for (int i = 0; i < round % 8; ++i)
        {
            const auto start = place (random);
            const RichTextString::Attribute attribute ({ start, start + round % 6 },
                                                       i % 2 == 0 ? bold() : RichTextString::defaultFont(),
                                                       i % 3 == 0 ? red : black);
            attributes.push_back (attribute);
            tessera1::ProtoRichTextAttribute stored;
            RichTextString::applyStringAttributeToProtoObject (attribute, &stored);
            inTurn.applyProtoTextAttribute (&stored);
        }

        atOnce.applyAttributes (attributes);
        ASSERT_EQ (atOnce, inTurn) << drawn (atOnce) << " and " << drawn (inTurn);
        ASSERT_TRUE (isCovered (atOnce));
    }
}

TEST (ManyAttributes, ofADamagedFileAreReadInOneGo)
{
    constexpr int count = 100000;
    std::vector<RichTextString::Attribute> attributes;

    for (int i = 0; i < count; ++i)
    {
        attributes.push_back ({ { i, i + 1 }, i % 2 == 0 ? bold() : RichTextString::defaultFont(), black });
        attributes.push_back ({ { 0, count }, bold(), black });
        std::swap (attributes.front(), attributes.back());
    }

    RichTextString rich (juce::String::repeatedString ("x", count));
    rich.applyAttributes (attributes);

    EXPECT_EQ (rich.length(), count);
    EXPECT_TRUE (isCovered (rich));
    EXPECT_FALSE (rich.isPlain());
}

TEST (ManyAttributes, surviveEveryOperation)
{
    constexpr int count = 100000;
    std::vector<RichTextString::Attribute> attributes;

    for (int i = 0; i < count; i += 2)
        attributes.push_back ({ { i, i + 1 }, bold(), black });

    RichTextString rich (juce::String::repeatedString (text ("…b"), count / 2));
    rich.applyAttributes (attributes);
    ASSERT_EQ (rich.formattedRuns().size(), count / 2U);

    EXPECT_EQ (rich.replaceIllegalASCIICharacters().length(), count * 2);
    EXPECT_EQ (rich.substring (1).formattedRuns().size(), count / 2U - 1);
    EXPECT_EQ (rich.replace ("b", "", false).formattedRuns().size(), 1U);
}
