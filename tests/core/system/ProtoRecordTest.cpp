// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/ProtoRecord.h"

#include "proto/overmarks.pb.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
using tessera1::ProtoCharacter;
using ZEP::Core::ProtoRecord;

/** A record with a number and a text that no version has yet. */
std::string fromTheFuture() { return "\xc0\x3e\x07\xca\x3e\x03new"; }
} // namespace

TEST (ProtoRecord, textIsUTF8)
{
    EXPECT_EQ (ProtoRecord::text ({}), "");
    EXPECT_EQ (ProtoRecord::text (juce::String (juce::CharPointer_UTF8 ("Zo\xc3\xab \xf0\x9f\x98\x80"))),
               "Zo\xc3\xab \xf0\x9f\x98\x80");
}

TEST (ProtoRecord, halfOfASurrogatePairBecomesTheReplacementCharacter)
{
    const auto text = "a" + juce::String::charToString (0xd800) + "b";
    tessera1::ProtoCharacter record;
    record.set_name (ProtoRecord::text (text));

    EXPECT_EQ (record.name().substr (0, 4), "a\xef\xbf\xbd");
    EXPECT_EQ (record.name().back(), 'b');
    EXPECT_TRUE (ProtoCharacter().ParseFromString (record.SerializeAsString()));
}

TEST (ProtoRecord, eachWrongCharacterBecomesExactlyOne)
{
    const auto half = juce::String::charToString (0xd83d), otherHalf = juce::String::charToString (0xde00);
    const auto good = juce::String (juce::CharPointer_UTF8 ("\xc3\xab\xf0\x9f\x98\x80"));
    EXPECT_EQ (ProtoRecord::text (half), "\xef\xbf\xbd");
    EXPECT_EQ (ProtoRecord::text (good + half + otherHalf + good),
               "\xc3\xab\xf0\x9f\x98\x80\xef\xbf\xbd\xef\xbf\xbd\xc3\xab\xf0\x9f\x98\x80");
    EXPECT_EQ (ProtoRecord::text ("a" + half + "b").size(), 5u);
}

TEST (ProtoRecord, aRecordOfThisVersionHasNoNewerFields)
{
    ProtoCharacter record;
    record.set_name ("ANNA");
    EXPECT_EQ (ProtoRecord::newerFields (record), "");
}

TEST (ProtoRecord, newerFieldsComeBackBehindTheKnownOnes)
{
    ProtoCharacter record;
    ASSERT_TRUE (record.ParseFromString (fromTheFuture()));
    EXPECT_EQ (ProtoRecord::newerFields (record), fromTheFuture());

    ProtoCharacter stored;
    stored.set_id ("c1");
    ProtoRecord::addNewerFields (stored, ProtoRecord::newerFields (record));
    EXPECT_EQ (stored.SerializeAsString(), "\n\x02"
                                           "c1" + fromTheFuture());
}

TEST (ProtoRecord, addingNothingChangesNothing)
{
    ProtoCharacter record;
    ASSERT_TRUE (record.ParseFromString (fromTheFuture()));
    ProtoRecord::addNewerFields (record, "");
    EXPECT_EQ (record.SerializeAsString(), fromTheFuture());
}
