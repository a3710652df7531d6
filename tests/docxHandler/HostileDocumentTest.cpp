// SPDX-License-Identifier: GPL-3.0-only
#include "ImportSupport.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace DocxHandler::Testing
{

namespace
{

std::string repeated (const std::string& text, std::size_t count)
{
    std::string result;

    for (std::size_t i = 0; i < count; ++i)
        result += text;

    return result;
}

} // namespace

TEST (HostileDocument, whatIsNoPackageIsRefusedInClearWords)
{
    EXPECT_EQ (refusalOf (""), "is empty");
    EXPECT_EQ (refusalOf ("Dear director"), "is no Word document");
    EXPECT_EQ (refusalOf (std::string ("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1", 8) + std::string (4096, '\0')),
               "is encrypted or a document of the old .doc kind");
    EXPECT_EQ (refusalOf ("PK\x03\x04 and nothing more"), "is damaged or cut short");
    EXPECT_EQ (refusalOf (packed ({ { "xl/workbook.xml", "<workbook/>" } })), "is no Word document");
    EXPECT_EQ (refusalOf (packed ({ { "word/document.xml", "<workbook/>" } })), "is no Word document");
}

TEST (HostileDocument, aCutOneIsRefusedWhereverItIsCut)
{
    const auto whole = documentOf (sheetJSON ({ fullCueJSON() }));

    for (std::size_t length = 4; length < whole.size(); length += 997)
        EXPECT_EQ (refusalOf (whole.substr (0, length)), "is damaged or cut short") << length;
}

TEST (HostileDocument, anyByteMayBeWrong)
{
    const auto whole = documentOf (sheetJSON ({ fullCueJSON() }));

    for (std::size_t place = 0; place < whole.size(); place += 61)
    {
        auto damaged = whole;
        damaged[place] = static_cast<char> (~damaged[place]);
        EXPECT_LT (refusalOf (damaged).size(), 100U); // reads or refuses, and ends
    }
}

TEST (HostileDocument, malformedXMLIsDamage)
{
    EXPECT_EQ (refusalOf (documentAround ("<w:p><w:r>")), "is damaged: its XML is malformed");
}

TEST (HostileDocument, aDocumentTypeIsRefusedBeforeItsEntitiesCount)
{
    std::string laughs = "<!DOCTYPE w:document [<!ENTITY a0 \"ha\">";

    for (int i = 1; i < 30; ++i)
        laughs += "<!ENTITY a" + std::to_string (i) + " \""
                  + repeated ("&a" + std::to_string (i - 1) + ";", 10) + "\">";

    auto parts = partsOf (documentAround (paragraphXML ("&a29;")));
    auto& body = parts.at ("word/document.xml");
    body.insert (body.find ("<w:document"), laughs + "]>");
    EXPECT_EQ (refusalOf (packed (parts)), "declares a document type, which no Word document does");
}

TEST (HostileDocument, deepNestingIsRefused)
{
    for (const std::string element : { "w:tbl", "w:ins", "w:sdt", "w:unknown" })
    {
        const auto nested = repeated ("<" + element + ">", 100000) + repeated ("</" + element + ">", 100000);
        EXPECT_EQ (refusalOf (documentAround (nested)), "is nested too deeply");
    }
}

TEST (HostileDocument, manyParagraphsDeepInTablesAreRefusedBeforeTheyMultiply)
{
    constexpr std::size_t depth = 60;
    const auto nested = [] (const std::string& inner)
    {
        return documentAround (repeated ("<w:tbl><w:tr><w:tc>", depth) + inner
                               + repeated ("</w:tc></w:tr></w:tbl>", depth));
    };

    EXPECT_EQ (refusalOf (nested (repeated ("<w:p/>", 300'000))), "is nested too deeply");
    EXPECT_EQ (refusalOf (nested (paragraphXML (std::string (15'000'000, 'a')))), "is nested too deeply");
    EXPECT_EQ (refusalOf (nested (repeated ("<w:p/>", 100))), "holds no cues");
}

TEST (HostileDocument, aMergedCellBesideManyRowsIsRefusedBeforeItMultiplies)
{
    const auto titles = rowXML ({ "In", "Text" });
    const auto first = "<w:tr>" + cellXML ("01:00:00:00")
                       + cellXML (std::string (1'000'000, 'a'), "<w:vMerge w:val=\"restart\"/>") + "</w:tr>";
    const auto further = "<w:tr>" + cellXML ("01:00:00:00") + cellXML ("", "<w:vMerge/>") + "</w:tr>";
    EXPECT_EQ (
        refusalOf (documentAround ("<w:tbl>" + titles + first + repeated (further, 5000) + "</w:tbl>")),
        "is too large when unpacked");
}

TEST (HostileDocument, aRowOfManyCellsIsNoList)
{
    for (const auto* text : { "a", "01:00:00:00" })
    {
        const auto refusal = refusalOf (
            documentAround ("<w:tbl><w:tr>" + repeated (cellXML (text), 20'000) + "</w:tr></w:tbl>"));
        EXPECT_TRUE (refusal.empty() || refusal == "holds no cues") << refusal;
    }
}

TEST (HostileDocument, rowsThatAreAddedWithoutEndAreOneCue)
{
    constexpr std::size_t rows = 60'000;
    const auto styled = [] (const std::string& style, const std::string& text)
    {
        return "<w:p><w:pPr><w:pStyle w:val=\"" + style + "\"/></w:pPr><w:r><w:rPr><w:b/></w:rPr><w:t>" + text
               + "</w:t></w:r></w:p>";
    };
    const auto block = "<w:tbl><w:tr><w:tc>" + styled ("CueText", "Hello") + "</w:tc><w:tc>"
                       + styled ("CueNumber", "1") + styled ("CueIn", "01:00:00:00") + "</w:tc></w:tr>"
                       + repeated ("<w:tr><w:tc>" + styled ("CueText", "x") + "</w:tc><w:tc>"
                                       + styled ("CueNumber", "") + "</w:tc></w:tr>",
                                   rows)
                       + "</w:tbl>";
    const auto list = "<w:tbl>" + rowXML ({ "In", "Text" }) + rowXML ({ "01:00:00:00", "Hello" })
                      + repeated (rowXML ({ "", "x" }), rows) + "</w:tbl>";
    const auto ofBlock = cuesOfWordDocument (documentAround (block));
    const auto ofList = cuesOfWordDocument (documentAround (list));
    ASSERT_EQ (ofBlock.size(), 1U);
    EXPECT_EQ (ofBlock[0].notes.text.size(), 2 * rows - 1);
    EXPECT_EQ (ofBlock[0].notes.runs.size(), rows);
    ASSERT_EQ (ofList.size(), 1U);
    EXPECT_EQ (ofList[0].text.text.size(), 5 + 2 * rows);
}

TEST (HostileDocument, aStyleWithoutEndIsReadOnce)
{
    constexpr std::size_t properties = 1'000'000;
    constexpr std::size_t runs = 2000;
    const auto styles = R"(<w:style w:styleId="a"><w:name w:val="a"/><w:rPr>)"
                        + repeated ("<w:b/>", properties)
                        + R"(</w:rPr></w:style><w:style w:styleId="b"><w:basedOn w:val="a"/></w:style>)";
    const auto body = "<w:tbl>" + rowXML ({ "In", "Text" }) + "<w:tr>" + cellXML ("01:00:00:00")
                      + "<w:tc><w:p>"
                      + repeated (R"(<w:r><w:rPr><w:rStyle w:val="b"/></w:rPr><w:t>x</w:t></w:r>)", runs)
                      + "</w:p></w:tc></w:tr></w:tbl>";
    const auto cues = cuesOfWordDocument (documentAround (body, styles));
    ASSERT_EQ (cues.size(), 1U);
    Look bold;
    bold.bold = true;
    EXPECT_EQ (cues[0].text, (RichText { std::string (runs, 'x'), { { 0, runs, bold } } }));
}

TEST (HostileDocument, aZipBombIsRefusedBeforeItGrows)
{
    auto bomb = documentAround (std::string (std::size_t { 257 } << 20U, ' '));
    EXPECT_LT (bomb.size(), std::size_t { 1 } << 20U);
    EXPECT_EQ (refusalOf (bomb), "is too large when unpacked");

    // Now it claims sixteen bytes: in the central directory, 24 bytes behind the entry's signature.
    for (auto entry = bomb.find ("PK\x01\x02"); entry != std::string::npos;
         entry = bomb.find ("PK\x01\x02", entry + 4))
        bomb.replace (entry + 24, 4, std::string ("\x10\x00\x00\x00", 4));

    EXPECT_EQ (refusalOf (bomb), "is too large when unpacked");
}

// ---- what all parts come to ------------------------------------------------------------------------------------------------

/** A document with further parts that nobody reads. They are small and say that they become large. */
class FurtherParts : public ::testing::Test
{
protected:
    static constexpr std::size_t megabyte = std::size_t { 1 } << 20U;

    static std::string noise (std::size_t size)
    {
        std::string bytes;

        for (std::uint32_t state = 1; bytes.size() < size;)
            bytes += static_cast<char> ((state = state * 1664525 + 1013904223) >> 24U);

        return bytes;
    }

    /** @param sizes  what the parts say  @param packedSize  of a part that is what it says
        @param claimedPackedSize  what a further part says that it was packed into */
    static std::string refusalWith (const std::vector<std::size_t>& sizes, std::size_t packedSize = 0,
                                    std::size_t claimedPackedSize = 1)
    {
        auto parts = partsOf (documentAround (tableXML ({ { "In", "Text" }, { "01:00:00:00", "Hello." } })));
        parts["word/media/picture.png"] = noise (packedSize);

        for (std::size_t i = 0; i < sizes.size(); ++i)
            parts["word/media/" + std::to_string (i) + ".bmp"] = "x";

        parts["word/media/claim.bmp"] = "x";
        auto document = packed (parts);
        claim (document, "word/media/claim.bmp", placeOfPackedSize, claimedPackedSize);

        for (std::size_t i = 0; i < sizes.size(); ++i)
            claim (document, "word/media/" + std::to_string (i) + ".bmp", placeOfSize, sizes[i]);

        return refusalOf (document);
    }

private:
    // In the central directory, behind the signature of an entry.
    static constexpr std::size_t placeOfPackedSize = 20;
    static constexpr std::size_t placeOfSize = 24;
    static constexpr std::size_t placeOfName = 46;

    static void claim (std::string& document, const std::string& name, std::size_t place, std::size_t size)
    {
        for (auto entry = document.find ("PK\x01\x02"); entry != std::string::npos;
             entry = document.find ("PK\x01\x02", entry + 4))
            if (document.compare (entry + placeOfName, name.size(), name) == 0)
                for (std::size_t byte = 0; byte < 4; ++byte)
                    document[entry + place + byte] = static_cast<char> (size >> (8 * byte));
    }
};

TEST_F (FurtherParts, thatAreSmallMayBePackedAsTightlyAsTheyLike)
{
    EXPECT_EQ (refusalWith ({ 16 * megabyte, 15 * megabyte }), "");
}

TEST_F (FurtherParts, thatAreLargeAndPackedTooTightlyAreRefused)
{
    EXPECT_EQ (refusalWith ({ 16 * megabyte, 17 * megabyte }), "is too large when unpacked");
}

TEST_F (FurtherParts, thatArePackedAsPicturesAreMayBeLarge)
{
    EXPECT_EQ (refusalWith ({ 33 * megabyte }, 180'000), "");
    EXPECT_EQ (refusalWith ({ 33 * megabyte }, 165'000), "is too large when unpacked");
}

TEST_F (FurtherParts, thatSayTheyArePackedIntoMoreThanTheFileAreRefused)
{
    EXPECT_EQ (refusalWith ({ 33 * megabyte }, 0, 10'000'000), "is too large when unpacked");
}

TEST_F (FurtherParts, ofMoreThanHalfAGigabyteAreRefused)
{
    EXPECT_EQ (refusalWith ({ 512 * megabyte }, 8'000'000), "");
    EXPECT_EQ (refusalWith ({ 512 * megabyte + 1 }, 8'000'000), "is too large when unpacked");
}

TEST_F (FurtherParts, thatComeToMoreThanAGigabyteWithTheOthersAreRefused)
{
    EXPECT_EQ (refusalWith ({ 500 * megabyte, 500 * megabyte }, 8'000'000), "");
    EXPECT_EQ (refusalWith ({ 512 * megabyte, 512 * megabyte }, 8'000'000), "is too large when unpacked");
}

TEST (HostileDocument, markupWithoutEndIsRefusedBeforeItIsParsed)
{
    EXPECT_EQ (refusalOf (documentAround (repeated ("<w:p/>", 12'500'000))), "is too large when unpacked");
}

TEST (HostileDocument, aPartWithAPasswordIsEncrypted)
{
    auto document = documentAround (paragraphXML ("x"));

    // The lowest bit of an entry's flags, in the central directory and in front of the entry.
    for (auto entry = document.find ("PK\x01\x02"); entry != std::string::npos;
         entry = document.find ("PK\x01\x02", entry + 4))
        document[entry + 8] = static_cast<char> (document[entry + 8] | 1);

    for (auto entry = document.find ("PK\x03\x04"); entry != std::string::npos;
         entry = document.find ("PK\x03\x04", entry + 4))
        document[entry + 6] = static_cast<char> (document[entry + 6] | 1);

    EXPECT_EQ (refusalOf (document), "is encrypted");
}

TEST (HostileDocument, macrosAndOtherPartsAreNeverLookedAt)
{
    auto parts = partsOf (documentOf (sheetJSON ({ fullCueJSON() })));
    parts["word/vbaProject.bin"] = std::string (1000, '\xff');
    parts["../../etc/passwd"] = "x";
    parts["word/footer1.xml"] = "<broken";
    parts["word/comments.xml"] = "<broken";
    EXPECT_EQ (refusalOf (packed (parts)), "");
}

TEST (HostileDocument, textThatIsNoUTF8BecomesReplacementCharacters)
{
    const auto cues = cuesOfWordDocument (documentAround (tableXML ({ { "In", "Text" },
                                                                      { "01:00:00:00", "a\xff\xc0\x80"
                                                                                       "b" } })));
    ASSERT_EQ (cues.size(), 1U);
    EXPECT_EQ (cues[0].text.text, "a\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"
                                  "b");
}

TEST (HostileDocument, relationsThatLeadOutsideLeadNowhere)
{
    auto parts = partsOf (documentAround (tableXML ({ { "In", "Text" }, { "01:00:00:00", "Hello." } })));
    auto& relations = parts.at ("_rels/.rels");
    relations.replace (relations.find ("word/document.xml"), 17, "../../../../etc/passwd");
    EXPECT_EQ (refusalOf (packed (parts)), ""); // the usual place is looked at instead
}

} // namespace DocxHandler::Testing
