// SPDX-License-Identifier: GPL-3.0-only
#include "XMLText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace DocxHandler::Testing
{

namespace
{

std::string textOf (std::string_view content)
{
    XMLText xml;
    xml.text (content);
    return xml.take();
}

} // namespace

TEST (XMLText, whatStandsForSomethingElseIsEscapedWhereverItIs)
{
    EXPECT_EQ (textOf (""), "");
    EXPECT_EQ (textOf ("plain ~ '"), "plain ~ '");
    EXPECT_EQ (textOf ("<a & \"b\">"), "&lt;a &amp; &quot;b&quot;&gt;");
    EXPECT_EQ (textOf ("\ta\n\r"), "&#9;a&#10;&#13;");
}

TEST (XMLText, charactersOfSeveralBytesStandBetweenOthers)
{
    EXPECT_EQ (textOf ("a\xc3\xa9z\xe5\xb0\x91\xf0\x9f\x8e\xac"), "a\xc3\xa9z\xe5\xb0\x91\xf0\x9f\x8e\xac");
}

TEST (XMLText, whatXMLCannotHoldIsLeftOutAndWhatIsNoUTF8IsReplaced)
{
    EXPECT_EQ (textOf (std::string_view ("a\0\x01\x1f\x7f"
                                         "b",
                                         6)),
               "a\x7f"
               "b");
    EXPECT_EQ (textOf ("a\xef\xbf\xbf"
                       "b"),
               "ab");
    EXPECT_EQ (textOf ("a\xff\xc3"), "a\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ (textOf ("\xed\xa0\x80"), "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd") << "half a character";
}

TEST (XMLText, attributesAreTextsOrNumbers)
{
    XMLText xml;
    xml.leaf ("a", { { "t", "\"<" }, { "e", "" }, { "s", std::string ("x") } });
    xml.leaf ("b", { { "z", 0 }, { "n", -12 } });
    xml.leaf ("c", { { "least", std::numeric_limits<std::int64_t>::min() },
                     { "most", std::numeric_limits<std::uint64_t>::max() } });
    EXPECT_EQ (xml.take(), R"(<a t="&quot;&lt;" e="" s="x"/><b z="0" n="-12"/>)"
                           R"(<c least="-9223372036854775808" most="18446744073709551615"/>)");
}

TEST (XMLText, elementsAreClosedFromTheInside)
{
    XMLText xml;
    xml.open ("a");
    xml.leafWithText ("b", "&");
    xml.open ("c");
    xml.close();
    xml.close();
    EXPECT_EQ (xml.take(), "<a><b>&amp;</b><c></c></a>");
}

} // namespace DocxHandler::Testing
