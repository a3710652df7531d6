// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/ObjectJSON.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

using namespace ZEP::Core;

namespace
{

std::string jsonWith (const juce::String& name, const juce::var& value, bool allOnOneLine = true)
{
    const juce::DynamicObject::Ptr object (new juce::DynamicObject());
    object->setProperty (name, value);
    return jsonTextOf (*object, allOnOneLine);
}

juce::String utf8 (const std::string& text) { return juce::String::fromUTF8 (text.c_str()); }

} // namespace

TEST (ObjectJSON, hasTheFormOfTheFramework)
{
    EXPECT_EQ (jsonWith ("name", "Anna"), R"({"name": "Anna"})");
    EXPECT_EQ (jsonWith ("name", "Anna", false), "{\r\n  \"name\": \"Anna\"\r\n}");
    EXPECT_EQ (jsonWith ("height", 1.126), R"({"height": 1.126})");
    EXPECT_EQ (jsonWith ("height", 3), R"({"height": 3})");
}

TEST (ObjectJSON, aBellIsWrittenSoThatItCanBeRead)
{
    EXPECT_EQ (jsonWith ("name", "An\ana"), R"({"name": "An\u0007na"})");
    EXPECT_EQ (jsonWith ("na\ame", 1), R"({"na\u0007me": 1})");
    EXPECT_EQ (jsonWith ("name", "\a\a"), R"({"name": "\u0007\u0007"})");
}

TEST (ObjectJSON, aBackslashBeforeAnAIsNoBell)
{
    EXPECT_EQ (jsonWith ("path", "C:\\a\\b"), R"({"path": "C:\\a\\b"})");
    EXPECT_EQ (jsonWith ("path", "\\\a\\a"), R"({"path": "\\\u0007\\a"})");
}

TEST (ObjectJSON, everyLetterIsReadAsItWas)
{
    std::string letters = "ä€😀\x7f\"\\/";

    for (char letter = 1; letter < ' '; ++letter)
        letters.append ({ letter, 'a', '\\' });

    EXPECT_EQ (nlohmann::json::parse (jsonWith ("text", utf8 (letters))).at ("text"), letters);
}
