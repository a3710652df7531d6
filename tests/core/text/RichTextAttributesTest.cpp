// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/RichTextString.h"

#include "core/text/RichTextDrawing.h"
#include "proto/overmarks.pb.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

using namespace ZEP::Core;
using namespace RichTextDrawing;

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
