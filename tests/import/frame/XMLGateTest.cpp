// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/XMLGate.h"

#include "import/frame/ImportLimits.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZEP::Overmarks;

namespace
{

/** All text of a document; "(refused)" for one that doesn't pass. */
std::string textOf (const std::string& document)
{
    const auto root = XMLGate::rootOf (document);
    return root != nullptr ? root->getAllSubText().toStdString() : "(refused)";
}

constexpr auto refused = "(refused)";

/** "<n0/><n1/>..." */
std::string elements (std::size_t count)
{
    std::string document;
    for (std::size_t i = 0; i < count; ++i)
        document += "<n" + std::to_string (i) + "/>";
    return document;
}

/** " n0=''  n1='' ..." */
std::string attributes (std::size_t count, const std::string& name = "n")
{
    std::string document;
    for (std::size_t i = 0; i < count; ++i)
        document += " " + name + std::to_string (i) + "=''";
    return document;
}

std::string repeated (const std::string& text, std::size_t times)
{
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

std::string nested (int depth)
{
    std::string document;
    for (int i = 0; i < depth; ++i)
        document += "<a>";
    document += "x";
    for (int i = 0; i < depth; ++i)
        document += "</a>";
    return document;
}

} // namespace

TEST (XMLGate, aWellFormedDocumentPasses)
{
    const auto root = XMLGate::rootOf ("<?xml version=\"1.0\"?>\n<a b=\"c\"><d>x</d><e/></a>\n");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->getTagName(), "a");
    EXPECT_EQ (root->getStringAttribute ("b"), "c");
    EXPECT_EQ (root->getNumChildElements(), 2);
    ASSERT_NE (XMLGate::rootOf ("<a/>"), nullptr);
    EXPECT_EQ (XMLGate::rootOf ("<a/>")->getNumChildElements(), 0);
}

TEST (XMLGate, whatIsNotWellFormedIsRefused)
{
    for (const auto* document : { "",
                                  " ",
                                  "x",
                                  "<",
                                  "<a",
                                  "<a>",
                                  "<a></b>",
                                  "<a><b></a></b>",
                                  "<a/><b/>",
                                  "<a>&</a>",
                                  "<a>&#x4",
                                  "<a>&#x4</a>",
                                  "<a>&#0;</a>",
                                  "<a>&nbsp;</a>",
                                  "<a b=c/>",
                                  "<a b='1' b='2'/>",
                                  "<a><![CDATA[x</a>",
                                  "<a><!-- x</a>",
                                  "<a><?x</a>",
                                  "<a/>x",
                                  "<a>]]></a>",
                                  "<a>\x01</a>",
                                  "<1/>",
                                  "< a/>",
                                  "<!DOCTYPE a" })
        EXPECT_EQ (textOf (document), refused) << document;
}

TEST (XMLGate, bytesThatAreNotUTF8AreRefused)
{
    EXPECT_EQ (textOf ("<a>\xe4</a>"), refused);
    EXPECT_EQ (textOf ("<a>\xc0\x80</a>"), refused);
    EXPECT_EQ (textOf ("<a>\xed\xa0\x80</a>"), refused);
    EXPECT_EQ (textOf ("<a>x</a>\xc3"), refused);
    EXPECT_EQ (textOf (std::string ("<a>\0</a>", 8)), refused);
}

TEST (XMLGate, anyEncodingMayBeClaimed)
{
    EXPECT_EQ (textOf ("<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>ä</a>"), "ä");
    EXPECT_EQ (textOf ("<?xml version=\"1.0\" encoding=\"klingon\"?><a>ä</a>"), "ä");
}

TEST (XMLGate, processingInstructionsAreLeftOut)
{
    EXPECT_EQ (textOf ("<?x?><a><?x?>b</a><?x?>"), "b");
    EXPECT_EQ (textOf ("<a><?x y > < ?>b<?x?>c<d><?z?></d><?x?></a>"), "bc");
}

TEST (XMLGate, commentsAreLeftOut)
{
    EXPECT_EQ (textOf ("<!-- a --><a><!-- < -->b<!----> c</a><!-- -->"), "b c");
}

TEST (XMLGate, theUsualReferencesAndLiteralTextAreUnderstood)
{
    EXPECT_EQ (textOf ("<a>&lt;&amp;&gt;&quot;&apos;&#65;&#x20ac;</a>"), "<&>\"'A€");
    EXPECT_EQ (textOf ("<a><![CDATA[<?x?> <!-- --> &amp;]]></a>"), "<?x?> <!-- --> &amp;");
}

TEST (XMLGate, lineBreaksAreLineFeedsUnlessTheyAreWrittenAsReferences)
{
    EXPECT_EQ (textOf ("<a>1\r\n2\r3\n4</a>"), "1\n2\n3\n4");
    EXPECT_EQ (textOf ("<a>1&#13;2&#13;&#10;3</a>"), "1\r2\r\n3");
}

TEST (XMLGate, aDocumentTypeMayNameWhatItWants)
{
    EXPECT_EQ (
        textOf (
            "<!DOCTYPE plist PUBLIC \"-//X//DTD Y 1.0//EN\" \"http://host.invalid/y.dtd\"><plist>x</plist>"),
        "x");
    EXPECT_EQ (textOf ("<!DOCTYPE a SYSTEM \"/etc/hostname\"><a>x</a>"), "x");
    EXPECT_EQ (textOf ("<!DOCTYPE a [<!ELEMENT a (#PCDATA)>]><a>x</a>"), "x");
}

TEST (XMLGate, aDeclaredEntityIsRefusedEvenUnused)
{
    EXPECT_EQ (textOf ("<!DOCTYPE a [<!ENTITY e 'x'>]><a>y</a>"), refused);
    EXPECT_EQ (textOf ("<!DOCTYPE a [<!ENTITY % e 'x'>]><a>y</a>"), refused);
    EXPECT_EQ (textOf ("<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/hostname'>]><a>&e;</a>"), refused);
}

TEST (XMLGate, anEntityThatOnlyAnotherFileCouldDeclareIsRefused)
{
    EXPECT_EQ (textOf ("<!DOCTYPE a SYSTEM \"a.dtd\"><a>&e;</a>"), refused);
    EXPECT_EQ (textOf ("<!DOCTYPE a SYSTEM \"a.dtd\"><a b=\"&e;\">x</a>"), refused);
    EXPECT_EQ (textOf ("<!DOCTYPE a SYSTEM \"a.dtd\"><a b=\"1\" c='2&e;'/>"), refused);
    EXPECT_EQ (textOf ("<!DOCTYPE a SYSTEM \"a.dtd\"><a b=\"&amp;'&gt;\">x</a>"), "x");
}

TEST (XMLGate, declaredAttributesAreRefused)
{
    EXPECT_EQ (textOf ("<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a>x</a>"), refused);
}

// ---- what the framework's reader misreads --------------------------------------------------------------------------------

TEST (XMLGate, numbersOfCharactersMayHaveLeadingZeros)
{
    EXPECT_EQ (textOf ("<a>a&#00000000000065;b</a>"), "aAb");
    EXPECT_EQ (textOf ("<a>a&#x00000000000000000000000041;b</a>"), "aAb");
    EXPECT_EQ (textOf ("<a>&#x000020AC;&#08364;</a>"), "€€");
    EXPECT_EQ (textOf ("<a>&#00;</a>"), refused);

    const auto root = XMLGate::rootOf ("<a b='&#00000000000065;' c=\"x>&#x000000000000042;'\"/>");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->getStringAttribute ("b"), "A");
    EXPECT_EQ (root->getStringAttribute ("c"), "x>B'");
}

TEST (XMLGate, whatLooksLikeAReferenceInLiteralTextStays)
{
    EXPECT_EQ (textOf ("<a><![CDATA[&#0000000000065; &e; \"<ä>]]>&#065;<![CDATA[]]></a>"),
               "&#0000000000065; &e; \"<ä>A");
}

TEST (XMLGate, lettersBeyondASCIIInNamesAreWrittenAsUnderscores)
{
    const auto root = XMLGate::rootOf ("<größe länge='ä'><ключ>ö</ключ><夜/></größe>");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->getTagName(), "gr____e");
    EXPECT_EQ (root->getStringAttribute ("l__nge").toStdString(), "ä");
    EXPECT_EQ (root->getNumChildElements(), 2);
    EXPECT_EQ (root->getAllSubText().toStdString(), "ö");
}

// ---- limits --------------------------------------------------------------------------------------------------------------

TEST (XMLGate, nestingHasALimit)
{
    EXPECT_EQ (textOf (nested (ImportLimits().nestingOfXML)), "x");
    EXPECT_EQ (textOf (nested (ImportLimits().nestingOfXML + 1)), refused);
    EXPECT_EQ (textOf (nested (200000)), refused);
}

TEST (XMLGate, aDocumentOfNothingButTagsIsRefused)
{
    EXPECT_EQ (textOf ("<r>" + repeated ("<a/>", 1000000) + "</r>"), refused);
}

TEST (XMLGate, aDocumentOfNothingButAttributesIsRefused)
{
    EXPECT_EQ (textOf ("<r>" + repeated ("<a b='' c='' d='' e='' f='' g='' h=''/>", 40000) + "</r>"),
               refused);
}

TEST (XMLGate, aDocumentOfNothingButPiecesOfTextIsRefused)
{
    EXPECT_EQ (textOf ("<r>" + repeated ("<a/>x", 100000) + "</r>"), refused);
    EXPECT_EQ (textOf ("<r>" + repeated ("x<![CDATA[]]>", 400000) + "</r>"), refused);
    EXPECT_EQ (textOf ("<r>" + repeated ("x\n", 100000) + "</r>").size(), 200000u);
}

TEST (XMLGate, aListWithBlanksBetweenItsElementsPasses)
{
    EXPECT_EQ (textOf ("<r>" + repeated ("<dict>\n </dict>\n", 100000) + "</r>"), "");
}

TEST (XMLGate, namesHaveALimit)
{
    EXPECT_EQ (textOf ("<r>x" + elements (ImportLimits().namesOfXML - 1) + "</r>"), "x");
    EXPECT_EQ (textOf ("<r>x" + elements (ImportLimits().namesOfXML) + "</r>"), refused);
    EXPECT_EQ (textOf ("<r>x" + elements (150000) + "</r>"), refused);

    std::string others = "<r>x";
    for (std::size_t i = 0; i < ImportLimits().namesOfXML / ImportLimits().attributesOfXML; ++i)
        others += "<a" + attributes (ImportLimits().attributesOfXML, "n" + std::to_string (i) + "_") + "/>";
    EXPECT_EQ (textOf (others + "</r>"), "x");
    EXPECT_EQ (textOf (others + "<a" + attributes (ImportLimits().attributesOfXML, "o") + "/></r>"), refused);
}

TEST (XMLGate, theAttributesOfAnElementHaveALimit)
{
    EXPECT_EQ (textOf ("<r" + attributes (ImportLimits().attributesOfXML) + ">x</r>"), "x");
    EXPECT_EQ (textOf ("<r" + attributes (ImportLimits().attributesOfXML + 1) + ">x</r>"), refused);
    EXPECT_EQ (textOf ("<r" + attributes (150000) + ">x</r>"), refused);
}
