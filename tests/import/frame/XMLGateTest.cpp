// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/XMLGate.h"

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
    EXPECT_EQ (textOf ("<!DOCTYPE a [<!ELEMENT a (#PCDATA)><!ATTLIST a b CDATA 'c'>]><a>x</a>"), "x");
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
}

TEST (XMLGate, nestingHasALimit)
{
    EXPECT_EQ (textOf (nested (XMLGate::deepestNesting)), "x");
    EXPECT_EQ (textOf (nested (XMLGate::deepestNesting + 1)), refused);
    EXPECT_EQ (textOf (nested (200000)), refused);
}

TEST (XMLGate, aDocumentOfNothingButTagsIsRefused)
{
    std::string tags;
    for (int i = 0; i < 1000000; ++i)
        tags += "<a/>";
    EXPECT_EQ (textOf ("<r>" + tags + "</r>"), refused);
}
