// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/WideObject.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace ZEP::Core;

namespace
{

using Pointer = juce::ReferenceCountedObjectPtr<WideObject>;

juce::String name (int number) { return "member " + juce::String (number); }

Pointer objectWith (int members)
{
    Pointer object (new WideObject());
    for (int i = 0; i < members; ++i)
        object->setMember (name (i), i);
    return object;
}

std::vector<std::string> membersOf (juce::DynamicObject& object)
{
    std::vector<std::string> found;
    WideObject::forEachMember (object,
                               [&] (const juce::String& member, const juce::var& value)
                               {
                                   found.push_back ((member + "=" + value.toString()).toStdString());
                                   return true;
                               });
    return found;
}

std::string json (juce::DynamicObject& object, bool allOnOneLine)
{
    juce::MemoryOutputStream stream;
    object.writeAsJSON (stream, 0, allOnOneLine, 1);
    return stream.toString().toStdString();
}

constexpr int many = 3 * WideObject::plainMembers;

} // namespace

TEST (WideObject, isAnOrdinaryObjectWhileItIsSmall)
{
    const auto object = objectWith (WideObject::plainMembers);
    EXPECT_EQ (object->getProperties().size(), WideObject::plainMembers);
    EXPECT_EQ (static_cast<int> (object->getProperties()[name (7)]), 7);
}

TEST (WideObject, keepsTheOrderOfItsMembersHoweverManyThereAre)
{
    const auto members = membersOf (*objectWith (many));
    ASSERT_EQ (members.size(), static_cast<std::size_t> (many));
    for (int i = 0; i < many; ++i)
        EXPECT_EQ (members[static_cast<std::size_t> (i)], (name (i) + "=" + juce::String (i)).toStdString());
}

TEST (WideObject, findsItsMembersByName)
{
    const auto object = objectWith (many);
    EXPECT_EQ (object->size(), many);
    EXPECT_TRUE (object->hasProperty (name (3)));
    EXPECT_TRUE (object->hasProperty (name (many - 1)));
    EXPECT_FALSE (object->hasProperty (name (many)));
    EXPECT_EQ (static_cast<int> (object->getProperty (name (3))), 3);
    EXPECT_EQ (static_cast<int> (object->getProperty (name (many - 1))), many - 1);
    EXPECT_TRUE (object->getProperty (name (many)).isVoid());
    EXPECT_FALSE (objectWith (2)->hasProperty (name (2)));
}

TEST (WideObject, aMemberThatIsSetAgainKeepsItsPlace)
{
    const auto object = objectWith (many);
    object->setMember (name (1), "one");
    object->setProperty (name (many - 2), "last but one");
    EXPECT_EQ (object->size(), many);
    const auto members = membersOf (*object);
    EXPECT_EQ (members[1], "member 1=one");
    EXPECT_EQ (members[static_cast<std::size_t> (many - 2)],
               (name (many - 2) + "=last but one").toStdString());
}

TEST (WideObject, aRemovedMemberLeavesTheOthersInOrder)
{
    const auto object = objectWith (many);
    auto expected = membersOf (*object);
    expected.erase (expected.begin() + 300);
    expected.erase (expected.begin() + 5);
    object->removeProperty (name (300));
    object->removeProperty (name (5));
    object->removeProperty ("nobody");
    EXPECT_EQ (membersOf (*object), expected);
    EXPECT_FALSE (object->hasProperty (name (5)));
    EXPECT_EQ (static_cast<int> (object->getProperty (name (301))), 301);
}

TEST (WideObject, aCopyIsIndependent)
{
    const auto object = objectWith (many);
    const auto copy = object->clone();
    const auto expected = membersOf (*copy);
    object->setMember (name (0), "changed");
    object->setMember (name (many - 1), "changed");
    EXPECT_EQ (membersOf (*copy), expected);
}

TEST (WideObject, aWalkEndsWhereTheVisitorSaysSo)
{
    for (const int stop : { 2, WideObject::plainMembers + 2 })
    {
        int visited = 0;
        EXPECT_FALSE (WideObject::forEachMember (*objectWith (many), [&] (const auto&, const auto&)
                                                 { return visited++ < stop; }));
        EXPECT_EQ (visited, stop + 1);
    }
}

TEST (WideObject, anyObjectCanBeWalked)
{
    juce::DynamicObject::Ptr plain (new juce::DynamicObject());
    plain->setProperty ("a", 1);
    EXPECT_EQ (membersOf (*plain), std::vector<std::string> { "a=1" });
}

TEST (WideObject, membersThatAreSetApartAreFoundInTheirOrder)
{
    for (const int count : { 1, 5, 16, 17, 300 })
    {
        const Pointer object (new WideObject());
        object->setMember ("first", -1);
        for (int i = 0; i < count; ++i)
            object->setMemberApart ("n" + juce::String (i), i);
        object->setMember ("last", -2);
        object->setMemberApart ("first", -3);
        object->setMember ("n0", 70);

        EXPECT_EQ (object->getProperties().size(), 1) << count;
        EXPECT_EQ (object->size(), count + 2) << count;
        EXPECT_EQ (static_cast<int> (object->getProperty ("first")), -3) << count;
        EXPECT_EQ (static_cast<int> (object->getProperty ("n0")), 70) << count;
        EXPECT_EQ (static_cast<int> (object->getProperty ("last")), -2) << count;
        EXPECT_FALSE (object->hasProperty ("n" + juce::String (count))) << count;

        int place = -1;
        WideObject::forEachMember (*object,
                                   [&] (const juce::String& name, const auto&)
                                   {
                                       EXPECT_EQ (name, place < 0        ? juce::String ("first")
                                                        : place == count ? juce::String ("last")
                                                                         : "n" + juce::String (place));
                                       ++place;
                                       return true;
                                   });
    }
}

TEST (WideObject, aMemberIsFoundInAnyValue)
{
    const juce::var wide (objectWith (many).get());
    for (const int i : { 0, many - 1 })
        EXPECT_EQ (static_cast<int> (WideObject::valueOf (wide, name (i), -1)), i);
    EXPECT_EQ (static_cast<int> (WideObject::valueOf (wide, name (many), -1)), -1);

    const juce::var plain (new juce::DynamicObject());
    plain.getDynamicObject()->setProperty ("a", 1);
    EXPECT_EQ (static_cast<int> (WideObject::valueOf (plain, "a")), 1);
    EXPECT_EQ (static_cast<int> (WideObject::valueOf (plain, "b", 2)), 2);

    for (const auto& value :
         { juce::var(), juce::var (7), juce::var ("a"), juce::var (juce::Array<juce::var>()) })
        EXPECT_EQ (static_cast<int> (WideObject::valueOf (value, "a", 3)), 3);
}

TEST (WideObject, isWrittenAsTheFrameworkWritesObjects)
{
    const auto fill = [] (auto&& set)
    {
        for (int i = 0; i < many; ++i)
        {
            juce::DynamicObject::Ptr inner (new juce::DynamicObject());
            inner->setProperty ("quoted \"name\"", juce::String::fromUTF8 ("line\nbreak, ä, 🎬"));
            inner->setProperty ("number", i);
            set (name (i), juce::var (inner.get()));
        }
        set ("plain \"text\"", juce::var ("text"));
    };

    juce::DynamicObject::Ptr plain (new juce::DynamicObject());
    fill ([&] (const juce::String& member, const juce::var& value) { plain->setProperty (member, value); });
    const Pointer wide (new WideObject());
    fill ([&] (const juce::String& member, const juce::var& value) { wide->setMember (member, value); });

    EXPECT_EQ (json (*wide, false), json (*plain, false));
    EXPECT_EQ (json (*wide, true), json (*plain, true));
}
