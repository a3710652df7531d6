// SPDX-License-Identifier: GPL-3.0-only
//
// Cue sheets of ours, read back as they were written and after somebody has worked on them.
#include "ImportSupport.h"

#include <gmock/gmock.h>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::SizeIs;

/* The cue of a document with one, after the changes. */
ImportedCue cueAfter (const std::vector<std::pair<std::string, std::string>>& changes)
{
    const auto cues = cuesOfWordDocument (edited (sheetJSON ({ fullCueJSON() }), changes));
    EXPECT_THAT (cues, SizeIs (1));
    return cues.empty() ? ImportedCue() : cues.front();
}

constexpr auto styleTag = "<w:pPr><w:pStyle w:val=\"";

} // namespace

TEST (CueSheetImport, everyLayoutGivesBackEverything)
{
    for (const auto* layout : { "Director Layout", "Actor Layout", "Engineer Layout" })
        EXPECT_THAT (cuesOfWordDocument (documentOf (sheetJSON ({ fullCueJSON() }, layout))),
                     ElementsAre (fullCue()));
}

TEST (CueSheetImport, aCueWithoutNotesHasNone)
{
    ImportedCue cue {
        "01:00:07:01", "01:00:11:07", "ANNA", "R1-001", {}, {}, { "Where have you been?", {} }, {}, {}
    };
    EXPECT_THAT (cuesOfWordDocument (documentOf (sheetJSON ({ cueJSON() }))), ElementsAre (cue));
}

TEST (CueSheetImport, aCombinedDocumentGivesItsCuesInItsOrder)
{
    const auto number = [] (const char* text) { return cueJSON ({ { "cueNumber", text } }); };
    const auto cues = cuesOfWordDocument (
        documentOf (combinedJSON ({ { number ("1"), number ("3") }, {}, { number ("2") } })));
    ASSERT_THAT (cues, SizeIs (3));
    EXPECT_EQ (cues[0].number + cues[1].number + cues[2].number, "132");
}

TEST (CueSheetImport, emptyFieldsStayEmpty)
{
    auto empty = cueJSON ({ { "charName", "" },
                            { "cueNumber", "" },
                            { "startTC", "" },
                            { "endTC", "" },
                            { "cueText", richJSON ("") } });

    for (const auto& [key, value] : std::initializer_list<std::pair<const char*, ImportedCue>> {
             { "charName", { {}, {}, "ANNA", {}, {}, {}, {}, {}, {} } },
             { "cueNumber", { {}, {}, {}, "ANNA", {}, {}, {}, {}, {} } },
             { "cueText", { {}, {}, {}, {}, {}, {}, { "ANNA", {} }, {}, {} } } })
    {
        auto cue = empty;
        cue[key] = "ANNA";
        EXPECT_THAT (cuesOfWordDocument (documentOf (sheetJSON ({ cue, fullCueJSON() }))),
                     ElementsAre (value, fullCue()));
    }
}

TEST (CueSheetImport, aCueWithNothingInItIsNone)
{
    const auto empty = cueJSON ({ { "charName", "" },
                                  { "cueNumber", "" },
                                  { "startTC", "" },
                                  { "endTC", "" },
                                  { "cueText", richJSON ("") } });
    EXPECT_THAT (cuesOfWordDocument (documentOf (sheetJSON ({ empty, fullCueJSON() }))),
                 ElementsAre (fullCue()));
    EXPECT_EQ (refusalOf (documentOf (sheetJSON ({ empty }))), "holds no cues");
}

TEST (CueSheetImport, wordsOfLabelsAreTextWhereTheTextStands)
{
    for (const auto* word : { "Notes", "REASON", "01:00:00:00", "Region" })
    {
        const auto cues = cuesOfWordDocument (documentOf (
            sheetJSON ({ cueJSON ({ { "cueText", richJSON (word) }, { "cueNotes", richJSON (word) } }) })));
        ASSERT_THAT (cues, SizeIs (1));
        EXPECT_EQ (cues[0].text.text, word);
        EXPECT_EQ (cues[0].notes.text, word);
    }
}

TEST (CueSheetImport, editedTextNumberAndRegionComeBack)
{
    auto expected = fullCue();
    expected.number = "R1-001A";
    expected.region = "Left";
    expected.notes.text = "Louder.";
    EXPECT_EQ (
        cueAfter ({ { ">R1-001<", ">R1-001A<" }, { ">Top<", ">Left<" }, { ">Softer.<", ">Louder.<" } }),
        expected);
}

TEST (CueSheetImport, textThatWasPastedWithAForeignStyleStaysInItsCell)
{
    auto expected = fullCue();
    expected.text.text += "\nNever.";
    const auto end = std::string ("&lt;never&gt;.</w:t></w:r></w:p>");
    EXPECT_EQ (
        cueAfter (
            { { end,
                end + "<w:p><w:pPr><w:pStyle w:val=\"Heading1\"/></w:pPr><w:r><w:t>Never.</w:t></w:r></w:p>" } }),
        expected);
    EXPECT_EQ (cueAfter ({ { end, end + "<w:p>" + styleTag
                                      + "CueNotes\"/></w:pPr><w:r><w:t>Never.</w:t></w:r></w:p>" } })
                   .notes,
               expected.notes);
}

TEST (CueSheetImport, aTextWhoseStyleIsGoneIsStillTheText)
{
    EXPECT_EQ (cueAfter ({ { std::string (styleTag) + "CueText\"/>", "<w:pPr>" } }), fullCue());
}

TEST (CueSheetImport, notesThatWereTypedInTheStyleOfTheTextAreNotes)
{
    EXPECT_EQ (
        cueAfter ({ { std::string (styleTag) + "CueNotes\"/>", std::string (styleTag) + "CueText\"/>" } }),
        fullCue());
}

TEST (CueSheetImport, aTranslatedLabelLeavesTheStyleToTell)
{
    EXPECT_EQ (cueAfter ({ { ">NOTES<", ">ANMERKUNGEN<" }, { ">REASON<", ">GRUND<" } }), fullCue());
}

TEST (CueSheetImport, withoutAnyStylesTheShapeTells)
{
    auto parts = partsOf (documentOf (sheetJSON ({ fullCueJSON(), cueJSON() })));
    parts.erase ("word/styles.xml");
    parts.erase ("word/_rels/document.xml.rels");
    auto& body = parts.at ("word/document.xml");

    for (auto place = body.find ("<w:pStyle"); place != std::string::npos;
         place = body.find ("<w:pStyle", place))
        body.erase (place, body.find ("/>", place) + 2 - place);

    const auto cues = cuesOfWordDocument (packed (parts));
    ASSERT_THAT (cues, SizeIs (2));
    EXPECT_EQ (cues[0], fullCue());
    EXPECT_EQ (cues[1].text.text, "Where have you been?");
}

TEST (CueSheetImport, stylesAreKnownByTheirNamesWhateverTheirIdentifiers)
{
    auto parts = partsOf (documentOf (sheetJSON ({ fullCueJSON() }, "Engineer Layout")));

    for (const auto* part : { "word/document.xml", "word/styles.xml" })
        for (const auto* identifier :
             { "CueText", "CueNotes", "CueNumber", "CueCharacter", "CueIn", "CueOut" })
        {
            auto& xml = parts.at (part);
            const auto from = "\"" + std::string (identifier) + "\"";
            const auto to = "\"a"
                            + std::to_string (std::string (identifier).size() * 7
                                              + static_cast<unsigned char> (identifier[4]))
                            + "\"";

            for (auto place = xml.find (from); place != std::string::npos; place = xml.find (from, place))
                xml.replace (place, from.size(), to);
        }

    EXPECT_THAT (cuesOfWordDocument (packed (parts)), ElementsAre (fullCue()));
}

TEST (CueSheetImport, aStyleThatIsBasedOnOursCountsAsOurs)
{
    const auto cues = cuesOfWordDocument (documentAround (
        "<w:tbl><w:tr><w:tc><w:p><w:pPr><w:pStyle w:val=\"Big\"/></w:pPr><w:r><w:t>Hello</w:t></w:r></w:p></w:tc></w:tr></w:tbl>",
        R"(<w:style w:type="paragraph" w:styleId="A"><w:name w:val="Cue Text"/></w:style><w:style w:type="paragraph" w:styleId="Big"><w:name w:val="Huge"/><w:basedOn w:val="A"/></w:style>)"));
    ASSERT_THAT (cues, SizeIs (1));
    EXPECT_EQ (cues[0].text.text, "Hello");
}

TEST (CueSheetImport, stylesThatAreBasedOnEachOtherEndSomewhere)
{
    EXPECT_EQ (
        refusalOf (documentAround (
            "<w:p><w:pPr><w:pStyle w:val=\"A\"/></w:pPr><w:r><w:rPr><w:rStyle w:val=\"A\"/></w:rPr><w:t>x</w:t></w:r></w:p>",
            R"(<w:style w:styleId="A"><w:name w:val="a"/><w:basedOn w:val="B"/></w:style><w:style w:styleId="B"><w:name w:val="b"/><w:basedOn w:val="A"/></w:style>)")),
        "holds no cues");
}

TEST (CueSheetImport, runsThatAnEditorHasSplitAreJoined)
{
    EXPECT_EQ (
        cueAfter (
            { { "Softer.</w:t></w:r>",
                "Sof</w:t></w:r><w:proofErr w:type=\"spellStart\"/><w:bookmarkStart w:id=\"7\" w:name=\"x\"/><w:r><w:rPr><w:b w:val=\"true\"/></w:rPr><w:lastRenderedPageBreak/><w:t>ter.</w:t></w:r>" } }),
        fullCue());
}

TEST (CueSheetImport, insertedTextIsThereAndDeletedTextIsGone)
{
    auto expected = fullCue();
    expected.engineeringNotes.text = "Use the other lavalier.";
    EXPECT_EQ (
        cueAfter (
            { { ">Use the lavalier.</w:t></w:r>",
                ">Use the </w:t></w:r><w:del w:id=\"1\"><w:r><w:delText>wrong </w:delText><w:t>bad </w:t></w:r></w:del><w:ins w:id=\"2\"><w:r><w:t xml:space=\"preserve\">other </w:t></w:r></w:ins><w:moveFrom w:id=\"3\"><w:r><w:t>moved</w:t></w:r></w:moveFrom><w:r><w:t>lavalier.</w:t></w:r>" } }),
        expected);
}

TEST (CueSheetImport, wrappersAroundTextAreSeenThrough)
{
    const std::string run = "<w:r><w:t xml:space=\"preserve\">Use the lavalier.</w:t></w:r>";

    for (const auto& wrapped : { "<w:hyperlink w:history=\"1\">" + run + "</w:hyperlink>",
                                 "<w:sdt><w:sdtPr/><w:sdtContent>" + run + "</w:sdtContent></w:sdt>",
                                 "<w:smartTag w:element=\"x\">" + run + "</w:smartTag>",
                                 "<w:fldSimple w:instr=\"QUOTE\">" + run + "</w:fldSimple>",
                                 "<w:customXml><w:ins>" + run + "</w:ins></w:customXml>" })
        EXPECT_EQ (cueAfter ({ { run, wrapped } }), fullCue()) << wrapped;
}

TEST (CueSheetImport, contentControlsAroundTablesRowsAndCellsAreSeenThrough)
{
    for (const std::string element : { "w:tbl", "w:tr", "w:tc" })
        EXPECT_EQ (cueAfter ({ { "<" + element + ">", "<w:sdt><w:sdtContent><" + element + ">" },
                               { "</" + element + ">", "</" + element + "></w:sdtContent></w:sdt>" } }),
                   fullCue())
            << element;
}

TEST (CueSheetImport, whatIsNoTextIsPassedOver)
{
    EXPECT_EQ (
        cueAfter (
            { { ">Use the lavalier.</w:t>",
                ">Use the </w:t><w:drawing><wp:inline><a:t>no</a:t><w:txbxContent><w:p><w:r><w:t>no</w:t></w:r></w:p></w:txbxContent></wp:inline></w:drawing><w:instrText>PAGE</w:instrText><w:commentReference w:id=\"0\"/><w:pict><w:t>no</w:t></w:pict><w:t>lavalier.</w:t>" } }),
        fullCue());
}

TEST (CueSheetImport, hiddenTextIsNotPrintedAndNotRead)
{
    EXPECT_EQ (
        cueAfter (
            { { ">Use the lavalier.</w:t></w:r>",
                ">Use the lavalier.</w:t></w:r><w:r><w:rPr><w:vanish/></w:rPr><w:t>secret</w:t></w:r>" } }),
        fullCue());
}

TEST (CueSheetImport, characterStylesGiveBoldAndItalic)
{
    const auto cues = cuesOfWordDocument (documentAround (
        "<w:tbl><w:tr><w:tc><w:p><w:pPr><w:pStyle w:val=\"CueText\"/></w:pPr><w:r><w:rPr><w:rStyle w:val=\"Strong\"/></w:rPr><w:t>a</w:t></w:r><w:r><w:rPr><w:rStyle w:val=\"Strong\"/><w:b w:val=\"0\"/></w:rPr><w:t>b</w:t></w:r></w:p></w:tc></w:tr></w:tbl>",
        R"(<w:style w:type="character" w:styleId="Strong"><w:name w:val="Strong"/><w:rPr><w:b/></w:rPr></w:style>)"));
    ASSERT_THAT (cues, SizeIs (1));
    Look bold;
    bold.bold = true;
    EXPECT_EQ (cues[0].text, (RichText { "ab", { { 0, 1, bold } } }));
}

TEST (CueSheetImport, newParagraphsAreLineBreaksAndEmptyOnesAtTheEndsAreNothing)
{
    auto expected = fullCue();
    expected.engineeringNotes.text = "Use\n\nthe lavalier.";
    const auto paragraph = std::string ("<w:p>") + styleTag + "CueEngineeringNotes\"/></w:pPr>";
    EXPECT_EQ (
        cueAfter ({ { ">Use the lavalier.</w:t></w:r></w:p>",
                      ">Use</w:t></w:r></w:p>" + paragraph + "</w:p>" + paragraph
                          + "<w:r><w:t>the lavalier.</w:t></w:r></w:p>" + paragraph + "</w:p><w:p/>" } }),
        expected);
}

TEST (CueSheetImport, aDeletedParagraphMarkJoinsItsParagraphs)
{
    EXPECT_EQ (cueAfter ({ { ">Use the lavalier.</w:t></w:r></w:p>",
                             ">Use </w:t></w:r></w:p><w:p><w:r><w:t>the lavalier.</w:t></w:r></w:p>" },
                           { std::string (styleTag) + "CueEngineeringNotes\"/>",
                             std::string (styleTag)
                                 + "CueEngineeringNotes\"/><w:rPr><w:del w:id=\"1\"/></w:rPr>" } }),
               fullCue());
}

TEST (CueSheetImport, blocksThatHaveGrownTogetherAreStillTwoCues)
{
    auto parts = partsOf (documentOf (sheetJSON ({ fullCueJSON(), cueJSON() })));
    auto& body = parts.at ("word/document.xml");
    const auto join = body.find ("</w:tbl><w:p><w:pPr><w:pStyle w:val=\"CueSpacing\"/></w:pPr></w:p><w:tbl>");
    ASSERT_NE (join, std::string::npos);
    const auto rows = body.find ("</w:tblGrid>", join) + std::string ("</w:tblGrid>").size();
    body.erase (join, rows - join);

    const auto cues = cuesOfWordDocument (packed (parts));
    ASSERT_THAT (cues, SizeIs (2));
    EXPECT_EQ (cues[0], fullCue());
    EXPECT_EQ (cues[1].text.text, "Where have you been?");
}

TEST (CueSheetImport, aRowThatSomebodyAddsGoesToTheNotes)
{
    auto expected = fullCue();
    expected.notes.text += "\nAsk Mia";
    EXPECT_EQ (cueAfter ({ { "</w:tr></w:tbl><w:p><w:pPr><w:pStyle w:val=\"CueSpacing\"/>",
                             "</w:tr>" + rowXML ({ "Ask Mia" })
                                 + "</w:tbl><w:p><w:pPr><w:pStyle w:val=\"CueSpacing\"/>" } }),
               expected);
}

TEST (CueSheetImport, aTableInTheTextsCellIsText)
{
    auto expected = fullCue();
    expected.text.text += "\none\ntwo";
    const auto end = std::string ("&lt;never&gt;.</w:t></w:r></w:p>");
    EXPECT_EQ (cueAfter ({ { end, end + tableXML ({ { "one" }, { "two" } }) + "<w:p/>" } }), expected);
}

TEST (CueSheetImport, theBlocksAreFoundInATableThatHoldsThem)
{
    auto parts = partsOf (documentOf (sheetJSON ({ fullCueJSON() })));
    auto& body = parts.at ("word/document.xml");
    body.insert (body.find ("<w:body>") + 8, "<w:tbl><w:tr><w:tc>");
    body.insert (body.find ("<w:sectPr>"), "</w:tc></w:tr></w:tbl>");
    EXPECT_THAT (cuesOfWordDocument (packed (parts)), ElementsAre (fullCue()));
}

TEST (CueSheetImport, aCueWhoseDetailsWereDeletedKeepsItsText)
{
    const auto cues = cuesOfWordDocument (documentAround (
        "<w:tbl>"
        "<w:tr><w:tc><w:p>"
        + std::string (styleTag)
        + "CueText\"/></w:pPr><w:r><w:t>One</w:t></w:r></w:p></w:tc></w:tr>"
          "<w:tr><w:tc><w:p>"
        + styleTag + "CueText\"/></w:pPr><w:r><w:t>Two</w:t></w:r></w:p></w:tc></w:tr></w:tbl>"));
    ASSERT_THAT (cues, SizeIs (2));
    EXPECT_EQ (cues[1].text.text, "Two");
}

TEST (CueSheetImport, detailsThatWereTypedAnewWithoutStyleTakeTheirPlaces)
{
    EXPECT_EQ (cueAfter ({ { std::string (styleTag) + "CueNumber\"/>", "<w:pPr>" },
                           { std::string (styleTag) + "CueOut\"/>", "<w:pPr>" } }),
               fullCue());
}

TEST (CueSheetImport, aDeletedRowIsGone)
{
    auto expected = fullCue();
    expected.notes = {};
    auto parts = partsOf (documentOf (sheetJSON ({ fullCueJSON() })));
    auto& body = parts.at ("word/document.xml");
    const auto row = body.rfind ("<w:trPr>", body.find (">NOTES<"));
    body.insert (row + 8, "<w:del w:id=\"9\"/>");
    EXPECT_THAT (cuesOfWordDocument (packed (parts)), ElementsAre (expected));
}

} // namespace DocxHandler::Testing
