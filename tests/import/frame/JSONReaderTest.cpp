// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/JSONReader.h"

#include "import/frame/ImportLimits.h"

#include "core/text/StringUtil.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

using namespace ZEP::Overmarks;
using ZEP::Core::StringUtil;
using ZEP::Core::WideObject;

namespace
{

std::optional<juce::var> read (const std::string& utf8)
{
    return JSONReader::read (StringUtil::fromUTF8 (utf8));
}

/** The value that stands alone in a list. */
juce::var only (const std::string& value)
{
    const auto list = read ("[" + value + "]");
    return list.has_value() && list->size() == 1 ? (*list)[0] : juce::var ("(unreadable)");
}

/** A value as the framework writes it, on one line; its numbers of every kind as text. */
std::string written (const juce::var& value) { return juce::JSON::toString (value, true).toStdString(); }

std::string nested (int depth)
{
    return std::string (static_cast<std::size_t> (depth), '[')
           + std::string (static_cast<std::size_t> (depth), ']');
}

} // namespace

TEST (JSONReader, readsObjectsListsAndValuesInTheirOrder)
{
    const auto root = read (R"( {"b": [1, -2, 0.5, "x", true, false, null], "a": {"c": {}, "d": []}} )");
    ASSERT_TRUE (root.has_value());
    EXPECT_EQ (written (*root), R"({"b": [1, -2, 0.5, "x", true, false, null], "a": {"c": {}, "d": []}})");
}

TEST (JSONReader, wholeNumbersKeepTheirKind)
{
    EXPECT_TRUE (only ("2147483647").isInt());
    EXPECT_TRUE (only ("-2147483648").isInt());
    EXPECT_TRUE (only ("2147483648").isInt64());
    EXPECT_EQ (static_cast<juce::int64> (only ("-999999999999999999")), -999999999999999999);
    EXPECT_EQ (static_cast<int> (only ("007")), 7);
}

TEST (JSONReader, numbersThatAreTooLongBecomeFractions)
{
    EXPECT_TRUE (only ("1234567890123456789012").isDouble());
    EXPECT_DOUBLE_EQ (static_cast<double> (only ("1234567890123456789012")), 1234567890123456789012.0);
    EXPECT_EQ (static_cast<double> (only ("-1e999")), -std::numeric_limits<double>::infinity());
    EXPECT_EQ (static_cast<double> (only ("1e-999")), 0.0);
}

TEST (JSONReader, numbersBeyondTheRangeOfAFractionAreZeroOrWithoutEnd)
{
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    const std::string zeros (400, '0');
    for (const auto& text :
         { "0." + zeros + "1", "0." + zeros + "1e10", "1" + zeros + "e-900", std::string ("3e-400"),
           "0." + zeros + "1e+0020", "1e-" + std::string (30, '9') })
        EXPECT_EQ (static_cast<double> (only (text)), 0.0) << text;
    for (const auto& text : { "1" + zeros, "1" + zeros + "e-10", "1" + zeros + ".5", "0." + zeros + "1e800",
                              "00012" + zeros + "E-0010", "1e" + std::string (30, '9') })
    {
        EXPECT_EQ (static_cast<double> (only (text)), infinity) << text;
        EXPECT_EQ (static_cast<double> (only ("-" + text)), -infinity) << text;
    }
    EXPECT_DOUBLE_EQ (static_cast<double> (only ("1" + zeros + "e-400")), 1.0);
    EXPECT_DOUBLE_EQ (static_cast<double> (only ("0." + zeros + "1e401")), 1.0);
}

TEST (JSONReader, everyValueHasAText)
{
    EXPECT_EQ (JSONReader::textOf (juce::var (new juce::DynamicObject())), juce::String ("[Object]"));
    EXPECT_EQ (JSONReader::textOf (juce::Array<juce::var> { 1 }), juce::String ("[Array]"));
    EXPECT_EQ (JSONReader::textOf ({}), juce::String());
    EXPECT_EQ (JSONReader::textOf ("12A"), juce::String ("12A"));
    EXPECT_EQ (JSONReader::textOf (12), juce::String ("12"));
    EXPECT_EQ (JSONReader::textOf (true), juce::String ("1"));
}

TEST (JSONReader, fractionsAndPowersAreRead)
{
    EXPECT_DOUBLE_EQ (static_cast<double> (only ("-12.25e+2")), -1225.0);
    EXPECT_DOUBLE_EQ (static_cast<double> (only ("5E-1")), 0.5);
    EXPECT_DOUBLE_EQ (static_cast<double> (only ("5.")), 5.0);
}

TEST (JSONReader, whatIsNoNumberIsRefused)
{
    for (const auto* text :
         { "-", "- 5", "-}", "+5", ".5", "5e", "5e+", "12a", "0x10", "1 2", "1_000", "--1" })
        EXPECT_FALSE (read (std::string ("[") + text + "]").has_value()) << text;
    EXPECT_FALSE (read ("[-").has_value());
    EXPECT_FALSE (read ("{\"a\":-").has_value());
    EXPECT_FALSE (read ("{\"a\":1e").has_value());
}

TEST (JSONReader, escapesAreUndone)
{
    EXPECT_EQ (only (R"("\" \\ \/ \b\f\n\r\t \u0041\u00e4")").toString(),
               StringUtil::fromUTF8 ("\" \\ / \b\f\n\r\t A\xc3\xa4"));
    EXPECT_EQ (only (R"("\q\'")").toString(), "q'");
}

TEST (JSONReader, theHalvesOfAnEscapedEmojiAreJoined)
{
    EXPECT_EQ (only (R"("\uD83C\udfac!")").toString(), StringUtil::fromUTF8 ("🎬!"));
}

TEST (JSONReader, halfAnEmojiBecomesAReplacementCharacter)
{
    EXPECT_EQ (only (R"("\ud83c")").toString(), StringUtil::fromUTF8 ("\xef\xbf\xbd"));
    EXPECT_EQ (only (R"("\udfac\ud83c")").toString(), StringUtil::fromUTF8 ("\xef\xbf\xbd\xef\xbf\xbd"));
    EXPECT_EQ (only (R"("\ud83cx")").toString(), StringUtil::fromUTF8 ("\xef\xbf\xbdx"));
    EXPECT_EQ (only (R"("\ud83c\u0041")").toString(), StringUtil::fromUTF8 ("\xef\xbf\xbd"
                                                                            "A"));
    EXPECT_EQ (only (R"("\ud83c\ud83c\udfac")").toString(), StringUtil::fromUTF8 ("\xef\xbf\xbd🎬"));
}

TEST (JSONReader, halfAnEmojiOfTheFrameworkIsDecodedLikeAnyOtherBytes)
{
    const auto half = juce::String::charToString (static_cast<juce::juce_wchar> (0xd83d));
    const auto list = JSONReader::read ("[\"a" + half + "\"]");
    ASSERT_TRUE (list.has_value());
    EXPECT_EQ ((*list)[0].toString(), StringUtil::fromUTF8 (("a" + half).toRawUTF8()));
}

TEST (JSONReader, textsAndNamesWithEscapesStandBesideThoseWithout)
{
    const auto root = read (R"({"na\"me": "a\\", "name": "", "n": "\u0041b", "long\tname": "\n"})");
    ASSERT_TRUE (root.has_value());
    EXPECT_EQ (written (*root), R"({"na\"me": "a\\", "name": "", "n": "Ab", "long\tname": "\n"})");
}

TEST (JSONReader, brokenEscapesAreRefused)
{
    for (const auto* text : { R"("\u")", R"("\u12")", R"("\u12g4")", R"("\u-123")", R"("\u0000")",
                              R"("\ud83c\u12")", R"("\)", R"("\u12)" })
        EXPECT_FALSE (read (std::string ("[") + text + "]").has_value()) << text;
    EXPECT_FALSE (read ("[\"\\").has_value());
    EXPECT_FALSE (read ("[\"\\u").has_value());
}

TEST (JSONReader, aMemberThatStandsTwiceHasTheLaterValueInTheFirstPlace)
{
    EXPECT_EQ (written (*read (R"({"a": 1, "b": 2, "a": 3})")), R"({"a": 3, "b": 2})");
}

TEST (JSONReader, slipsOfAHandThatTheFrameworkForgivesAreForgiven)
{
    EXPECT_EQ (written (*read ("{\"a\": [1, 2,], \"b\": 'it \"is\"',}")),
               R"({"a": [1, 2], "b": "it \"is\""})");
    EXPECT_EQ (written (*read ("{\"a\": \"two\nlines\tand a tab\"}")), R"({"a": "two\nlines\tand a tab"})");
    EXPECT_EQ (written (*read ("{\"a\": 1} and so on {")), R"({"a": 1})");
}

TEST (JSONReader, whatIsNoJSONIsRefused)
{
    for (const auto* text : { "x",
                              "1",
                              "\"text\"",
                              "{",
                              "[",
                              "}",
                              "{]",
                              "[}",
                              "[1}",
                              "{\"a\"}",
                              "{\"a\":}",
                              "{\"a\" 1}",
                              "{,}",
                              "[,]",
                              "[1,,2]",
                              "{'a': 1}",
                              "{a: 1}",
                              "{\"\": 1}",
                              "{\"a\": 1 \"b\": 2}",
                              "[tru]",
                              "[nul]",
                              "[falsch]",
                              "[\"a",
                              "{\"a",
                              "{\"a\":\"b",
                              "[1",
                              "[1,",
                              "{\"a\":1",
                              "{\"a\":1,",
                              "[[[[",
                              "/* */ {}" })
        EXPECT_FALSE (read (text).has_value()) << text;
}

TEST (JSONReader, aTextOfBlanksIsNothing)
{
    for (const auto* text : { "", " \r\n\t " })
    {
        const auto root = read (text);
        ASSERT_TRUE (root.has_value());
        EXPECT_TRUE (root->isVoid());
    }
}

TEST (JSONReader, nestingHasALimit)
{
    EXPECT_TRUE (read (nested (ImportLimits().nestingOfJSON)).has_value());
    EXPECT_FALSE (read (nested (ImportLimits().nestingOfJSON + 1)).has_value());
    EXPECT_FALSE (read (std::string (10000000, '[')).has_value());

    std::string objects;
    for (int i = 0; i < 100000; ++i)
        objects += "{\"a\":";
    EXPECT_FALSE (read (objects).has_value());
}

TEST (JSONReader, aTextOfNothingButListsIsRefused)
{
    std::string lists = "[";
    for (int i = 0; i < 1000000; ++i)
        lists += "[],";
    EXPECT_FALSE (read (lists + "]").has_value());
}

TEST (JSONReader, anObjectOfVeryManyMembersIsReadAtOnce)
{
    constexpr int members = 300000;
    std::string text = "{";
    for (int i = 0; i < members; ++i)
        text += "\"" + std::to_string (i * 7919LL % 1000003) + "\":" + std::to_string (i) + ",";
    const auto root = read (text + "}");
    ASSERT_TRUE (root.has_value());
    auto* const object = dynamic_cast<WideObject*> (root->getDynamicObject());
    ASSERT_NE (object, nullptr);
    EXPECT_EQ (object->size(), members);
}

TEST (JSONReader, objectsOfEverNewNamesStayOutOfThePoolOfNames)
{
    constexpr int objects = 2000;
    std::string text = "[";
    for (int i = 0; i < objects; ++i)
    {
        text += "{\"type\": 1";
        for (int j = 0; j < 20; ++j)
            text += ", \"n" + std::to_string (20 * i + j) + "\": " + std::to_string (j);
        text += ", \"type\": 2},";
    }

    const auto root = read (text + "]");
    ASSERT_TRUE (root.has_value());
    ASSERT_EQ (root->size(), objects);
    int plain = 0;

    for (int i = 0; i < objects; ++i)
    {
        auto* const object = dynamic_cast<WideObject*> ((*root)[i].getDynamicObject());
        ASSERT_NE (object, nullptr);
        ASSERT_EQ (object->size(), 21);
        ASSERT_EQ (static_cast<int> (WideObject::valueOf ((*root)[i], "type")), 2);
        ASSERT_EQ (static_cast<int> (
                       WideObject::valueOf ((*root)[i], juce::String ("n") + juce::String (20 * i + 19))),
                   19);
        plain += object->getProperties().size();
    }

    EXPECT_LE (plain, static_cast<int> (JSONReader::mostPooledNames) + objects);
}

TEST (JSONReader, readsWhatTheFrameworkReads)
{
    std::mt19937 random (5);
    const char* const pieces[] = {
        "{",   "}",   "[",    "]",    ",", ":",   "\"a\"",   "\"b c\"", "1",
        "-20", "3.5", "true", "null", " ", "'x'", "\"\\n\"", "\"c\":",  "{\"d\":["
    };
    int readable = 0;

    for (int i = 0; i < 60000; ++i)
    {
        std::string text = random() % 2 == 0 ? "{" : "[";
        for (auto n = random() % 8; n > 0; --n)
            text += pieces[random() % std::size (pieces)];
        while (random() % 3 != 0)
            text += random() % 2 == 0 ? "}" : "]";

        juce::var theirs;
        const bool isTheirs = juce::JSON::parse (juce::String (text), theirs).wasOk();
        const auto ours = read (text);
        ASSERT_EQ (ours.has_value(), isTheirs) << text;
        if (isTheirs)
        {
            ++readable;
            ASSERT_EQ (written (*ours), written (theirs)) << text;
        }
    }

    EXPECT_GT (readable, 500);
}
