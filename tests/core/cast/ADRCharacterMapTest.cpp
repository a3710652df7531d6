// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCharacterMap.h"

#include <gtest/gtest.h>

#include <ctime>
#include <set>

namespace
{
using namespace ZEP::Core;

std::shared_ptr<ADRCharacter> role (const juce::String& name)
{
    return std::make_shared<ADRCharacter> (name);
}

juce::String addRole (ADRCharacterMap& map, const juce::String& name)
{
    return map.addCharacter (role (name), false, {});
}

/** Of the processor, so that a busy machine makes no difference. */
double secondsFor (const std::function<void()>& work)
{
    const auto start = std::clock();
    work();
    return static_cast<double> (std::clock() - start) / CLOCKS_PER_SEC;
}

bool isRandomUUID (const juce::String& id)
{
    return id.length() == 36 && id.containsOnly ("0123456789abcdef-") && id[8] == '-' && id[13] == '-'
           && id[14] == '4' && id[18] == '-' && id[23] == '-';
}
} // namespace

TEST (ADRCharacterMap, anEmptyMapKnowsNobody)
{
    const ADRCharacterMap map;

    EXPECT_TRUE (map.characters().empty());
    EXPECT_TRUE (map.characterIDs().empty());
    EXPECT_EQ (map.characterForID ("x"), nullptr);
    EXPECT_EQ (map.characterForID ({}), nullptr);
    EXPECT_EQ (map.characterIDForCharacterWithName ("Anna"), "");
    EXPECT_EQ (map.characterIDForCharacterWithName ({}), "");
    EXPECT_FALSE (map.contains ("x"));
}

TEST (ADRCharacterMap, keepsTheGivenIdentifier)
{
    ADRCharacterMap map;
    const auto anna = role ("Anna");

    EXPECT_EQ (map.addCharacter (anna, true, "from the file"), "from the file");
    EXPECT_EQ (map.characterForID ("from the file"), anna);
    EXPECT_EQ (map.characterForID ("From the file"), nullptr);
    EXPECT_TRUE (map.contains ("from the file"));
    EXPECT_EQ (map.characterIDForCharacterWithName ("Anna"), "from the file");
}

TEST (ADRCharacterMap, makesARandomIdentifierUnlessTheCallerInsists)
{
    ADRCharacterMap map;
    std::set<juce::String> ids;
    for (int i = 0; i < 100; ++i)
        ids.insert (map.addCharacter (role ("Guard"), false, "ignored"));

    EXPECT_EQ (ids.size(), 100u);
    for (const auto& id : ids)
        EXPECT_TRUE (isRandomUUID (id)) << id;
    EXPECT_FALSE (map.contains ("ignored"));
}

TEST (ADRCharacterMap, anEmptyIdentifierCannotBeKeptSinceItMeansNoCharacter)
{
    ADRCharacterMap map;

    EXPECT_TRUE (isRandomUUID (map.addCharacter (role ("Anna"), true, {})));
    EXPECT_EQ (map.characterForID ({}), nullptr);
}

TEST (ADRCharacterMap, addingNobodyAddsNothing)
{
    ADRCharacterMap map;

    EXPECT_EQ (map.addCharacter (nullptr, true, "id"), "");
    EXPECT_TRUE (map.characters().empty());
    EXPECT_FALSE (map.contains ("id"));
}

TEST (ADRCharacterMap, showsCharactersInTheOrderOfAdding)
{
    ADRCharacterMap map;
    std::vector<juce::String> ids;
    for (const auto* name : { "Zoe", "Anna", "Mia", "Bob" })
        ids.push_back (addRole (map, name));

    ASSERT_EQ (map.characters().size(), 4u);
    EXPECT_EQ (map.characters()[0]->name, "Zoe");
    EXPECT_EQ (map.characters()[1]->name, "Anna");
    EXPECT_EQ (map.characters()[2]->name, "Mia");
    EXPECT_EQ (map.characters()[3]->name, "Bob");
    EXPECT_EQ (map.characterIDs(), ids);

    map.characters()[0]->name = "Aaron";
    EXPECT_EQ (map.characters()[0]->name, "Aaron");
    EXPECT_EQ (map.characterIDs(), ids);
}

TEST (ADRCharacterMap, aCharacterUnderATakenIdentifierTakesThePlaceOfTheFormerOne)
{
    ADRCharacterMap map;
    map.addCharacter (role ("Anna"), true, "1");
    map.addCharacter (role ("Bob"), true, "2");
    const auto carla = role ("Carla");

    EXPECT_EQ (map.addCharacter (carla, true, "1"), "1");

    ASSERT_EQ (map.characters().size(), 2u);
    EXPECT_EQ (map.characters()[0], carla);
    EXPECT_EQ (map.characterForID ("1"), carla);
    EXPECT_EQ (map.characterIDForCharacterWithName ("Anna"), "");
    EXPECT_EQ (map.characterIDForCharacterWithName ("Carla"), "1");
    EXPECT_EQ (map.characterIDs(), (std::vector<juce::String> { "1", "2" }));
}

TEST (ADRCharacterMap, ofCharactersWithOneNameTheFirstIsFound)
{
    ADRCharacterMap map;
    const auto first = addRole (map, "Guard");
    addRole (map, "Guard");

    EXPECT_EQ (map.characterIDForCharacterWithName ("Guard"), first);
}

TEST (ADRCharacterMap, namesAreComparedExactly)
{
    ADRCharacterMap map;
    addRole (map, "Anna");

    EXPECT_EQ (map.characterIDForCharacterWithName ("anna"), "");
    EXPECT_EQ (map.characterIDForCharacterWithName ("Anna "), "");
}

TEST (ADRCharacterMap, findsARenamedCharacterByItsNewNameAlone)
{
    ADRCharacterMap map;
    const auto anna = addRole (map, "Anna");
    ASSERT_EQ (map.characterIDForCharacterWithName ("Anna"), anna);

    map.characterForID (anna)->name = "Hannah";

    EXPECT_EQ (map.characterIDForCharacterWithName ("Anna"), "");
    EXPECT_EQ (map.characterIDForCharacterWithName ("Hannah"), anna);
}

TEST (ADRCharacterMap, findsACharacterWhoseNameWasExtendedInPlace)
{
    ADRCharacterMap map;
    const auto id = addRole (map, {});
    auto& name = map.characterForID (id)->name;
    name.preallocateBytes (1000);
    name += "Old";
    ASSERT_EQ (map.characterIDForCharacterWithName ("Old"), id);

    name += "er";

    EXPECT_EQ (map.characterIDForCharacterWithName ("Older"), id);
    EXPECT_EQ (map.characterIDForCharacterWithName ("Old"), "");
}

TEST (ADRCharacterMap, aRenamedCharacterThatStandsEarlierIsFoundFirst)
{
    ADRCharacterMap map;
    const auto first = addRole (map, "Guard 1");
    const auto second = addRole (map, "Guard");
    ASSERT_EQ (map.characterIDForCharacterWithName ("Guard"), second);

    map.characterForID (first)->name = "Guard";
    EXPECT_EQ (map.characterIDForCharacterWithName ("Guard"), first);

    map.characterForID (first)->name = "Guard 1";
    EXPECT_EQ (map.characterIDForCharacterWithName ("Guard"), second);
}

TEST (ADRCharacterMap, twoCharactersMayExchangeTheirNames)
{
    ADRCharacterMap map;
    const auto viola = addRole (map, "Viola");
    const auto cesario = addRole (map, "Cesario");

    std::swap (map.characterForID (viola)->name, map.characterForID (cesario)->name);

    EXPECT_EQ (map.characterIDForCharacterWithName ("Cesario"), viola);
    EXPECT_EQ (map.characterIDForCharacterWithName ("Viola"), cesario);
}

TEST (ADRCharacterMap, anEqualNameSetAgainChangesNothing)
{
    ADRCharacterMap map;
    const auto anna = addRole (map, "Anna");

    map.characterForID (anna)->name = juce::String ("An") + "na";

    EXPECT_EQ (map.characterIDForCharacterWithName ("Anna"), anna);
}

TEST (ADRCharacterMap, oneCharacterMayStandUnderTwoIdentifiers)
{
    ADRCharacterMap map;
    const auto anna = role ("Anna");
    map.addCharacter (anna, true, "1");
    map.addCharacter (anna, true, "2");
    anna->name = "Hannah";

    EXPECT_EQ (map.characters().size(), 2u);
    EXPECT_EQ (map.characterIDForCharacterWithName ("Hannah"), "1");
}

TEST (ADRCharacterMap, lettersOfAllLanguagesAreNames)
{
    ADRCharacterMap map;
    const auto id = addRole (map, juce::CharPointer_UTF8 ("\xc3\x84nne \xe2\x99\xaa \xf0\x9f\x8e\xac"));

    EXPECT_EQ (map.characterIDForCharacterWithName (
                   juce::CharPointer_UTF8 ("\xc3\x84nne \xe2\x99\xaa \xf0\x9f\x8e\xac")),
               id);
}

TEST (ADRCharacterMap, aRenameBeforeTheScopeIsSeenWithinIt)
{
    ADRCharacterMap map;
    const auto anna = addRole (map, "Anna");
    map.characterForID (anna)->name = "Hannah";

    const ADRCharacterMap::NamesAtRest scope (map);

    EXPECT_EQ (map.characterIDForCharacterWithName ("Hannah"), anna);
    const auto bob = addRole (map, "Bob");
    EXPECT_EQ (map.characterIDForCharacterWithName ("Bob"), bob);
}

TEST (ADRCharacterMap, aRenameAfterTheLastScopeIsSeen)
{
    ADRCharacterMap map;
    const auto anna = addRole (map, "Anna");
    {
        const ADRCharacterMap::NamesAtRest outer (map);
        const ADRCharacterMap::NamesAtRest inner (map);
    }
    map.characterForID (anna)->name = "Hannah";

    EXPECT_EQ (map.characterIDForCharacterWithName ("Hannah"), anna);
}

TEST (ADRCharacterMap, tenThousandNewNamesAreFoundWithoutAScope)
{
    ADRCharacterMap map;
    const auto seconds = secondsFor (
        [&]
        {
            for (int i = 0; i < 10000; ++i)
            {
                const auto name = "Role " + juce::String (i);
                ASSERT_EQ (map.characterIDForCharacterWithName (name), "");
                addRole (map, name);
            }
        });
    RecordProperty ("milliseconds", static_cast<int> (seconds * 1000.0));

    EXPECT_EQ (map.characters().size(), 10000u);
    EXPECT_EQ (map.characterIDForCharacterWithName ("Role 9999"), map.characterIDs().back());
}

TEST (ADRCharacterMap, aHundredThousandNewNamesAreFoundWithinAScope)
{
    ADRCharacterMap map;
    const auto seconds = secondsFor (
        [&]
        {
            const ADRCharacterMap::NamesAtRest scope (map);
            for (int i = 0; i < 100000; ++i)
            {
                const auto name = "Role " + juce::String (i);
                ASSERT_EQ (map.characterIDForCharacterWithName (name), "");
                addRole (map, name);
            }
        });
    RecordProperty ("milliseconds", static_cast<int> (seconds * 1000.0));

    EXPECT_EQ (map.characters().size(), 100000u);
}

TEST (ADRCharacterMap, findsEveryoneByIdentifierInALargeCast)
{
    ADRCharacterMap map;
    for (int i = 0; i < 20000; ++i)
        map.addCharacter (role ("Role " + juce::String (i)), true, juce::String (i));

    for (int i = 0; i < 20000; ++i)
        ASSERT_EQ (map.characterForID (juce::String (i))->name, "Role " + juce::String (i));
}

TEST (ADRCharacterMap, aHundredThousandNamesAndIdentifiersOfOneHashAreFound)
{
    // Two pairs of letters that the framework's hash can't tell apart make any number of texts that it can't.
    juce::StringArray texts { "" };
    for (int pairs = 0; pairs < 17; ++pairs)
    {
        juce::StringArray longer;
        for (const auto& text : texts)
        {
            longer.add (text + juce::String::fromUTF8 ("a\xc3\x86"));
            longer.add (text + "ba");
        }
        texts.swapWith (longer);
    }
    ASSERT_EQ (std::hash<juce::String>() (texts[0]), std::hash<juce::String>() (texts[texts.size() - 1]));

    ADRCharacterMap map;
    const auto seconds = secondsFor (
        [&]
        {
            const ADRCharacterMap::NamesAtRest scope (map);
            for (const auto& text : texts)
                map.addCharacter (role (text), true, text);
            for (const auto& text : texts)
                ASSERT_EQ (map.characterIDForCharacterWithName (text), text);
        });
    RecordProperty ("milliseconds", static_cast<int> (seconds * 1000.0));

    EXPECT_EQ (map.characters().size(), 131072u);
}
