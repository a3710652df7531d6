// SPDX-License-Identifier: GPL-3.0-only
//
// Cue sheets of ours that somebody has pasted into, added rows to and deleted from.
#include "ImportSupport.h"

#include <gmock/gmock.h>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::SizeIs;

std::string styled (const std::string& style, const std::string& runs)
{
    return "<w:p><w:pPr><w:pStyle w:val=\"" + style + "\"/></w:pPr>" + runs + "</w:p>";
}

std::string run (const std::string& text)
{
    return "<w:r><w:t xml:space=\"preserve\">" + text + "</w:t></w:r>";
}

std::string cell (const std::string& content) { return "<w:tc>" + content + "</w:tc>"; }

std::string details (const std::string& number)
{
    return cell (styled ("CueNumber", run (number)) + styled ("CueCharacter", run ("ANNA"))
                 + styled ("CueIn", run ("01:00:00:00")) + styled ("CueOut", run ("01:00:02:00")));
}

std::string row (const std::string& cells) { return "<w:tr>" + cells + "</w:tr>"; }

std::string block (const std::string& rows) { return "<w:tbl>" + rows + "</w:tbl>"; }

std::string plainBlock (const std::string& textCell) { return block (row (cell (textCell) + details ("1"))); }

std::vector<ImportedCue> cuesAround (const std::string& body)
{
    return cuesOfWordDocument (documentAround (body));
}

ImportedCue cue (const std::string& number, const std::string& text, const std::string& notes = {})
{
    return { "01:00:00:00", "01:00:02:00", "ANNA", number, {}, {}, { text, {} }, { notes, {} }, {} };
}

/* A row that a word processor adds: the style of each cell's first paragraph and no words. */
std::string addedRow (const std::string& remark)
{
    return row (cell (styled ("CueText", run (remark))) + cell (styled ("CueNumber", "")));
}

} // namespace

TEST (CueSheetEdits, aDetailThatWasPastedIntoTheTextIsText)
{
    EXPECT_THAT (
        cuesAround (plainBlock (styled ("CueText", run ("Hello,")) + styled ("CueCharacter", run ("BOB")))),
        ElementsAre (cue ("1", "Hello,\nBOB")));
}

TEST (CueSheetEdits, aTextInTheStyleOfANumberIsText)
{
    EXPECT_THAT (cuesAround (plainBlock (styled ("CueNumber", run ("Hello")))),
                 ElementsAre (cue ("1", "Hello")));
}

TEST (CueSheetEdits, twoTimecodesInTheTextAreText)
{
    EXPECT_THAT (cuesAround (plainBlock (paragraphXML ("01:00:00:00") + paragraphXML ("01:00:01:00"))),
                 ElementsAre (cue ("1", "01:00:00:00\n01:00:01:00")));
}

TEST (CueSheetEdits, aTimecodeThatWasPastedIntoTheNotesBeginsNoCue)
{
    auto expected = fullCue();
    expected.notes.text += "\n01:00:00:00";
    const std::string notes = ">Softer.</w:t></w:r></w:p>";
    const auto cues = cuesOfWordDocument (
        edited (sheetJSON ({ fullCueJSON() }), { { notes, notes + styled ("CueIn", run ("01:00:00:00")) } }));
    EXPECT_THAT (cues, ElementsAre (expected));
}

TEST (CueSheetEdits, anAddedRowWithTheStylesOfTheFirstGoesToTheNotes)
{
    EXPECT_THAT (cuesAround (block (row (cell (styled ("CueText", run ("Hello"))) + details ("1"))
                                    + addedRow ("Ask Mia"))),
                 ElementsAre (cue ("1", "Hello", "Ask Mia")));
}

TEST (CueSheetEdits, anAddedRowAboveTheFirstGoesToTheNotesToo)
{
    EXPECT_THAT (cuesAround (block (addedRow ("Ask Mia")
                                    + row (cell (styled ("CueText", run ("Hello"))) + details ("1")))),
                 ElementsAre (cue ("1", "Hello", "Ask Mia")));
}

TEST (CueSheetEdits, anAddedRowBesideTheDetailsGoesToTheNotes)
{
    const auto continued = cell ("<w:tcPr><w:vMerge/></w:tcPr><w:p/>");
    EXPECT_THAT (cuesAround (block (row (cell (styled ("CueText", run ("Hello"))) + details ("1"))
                                    + row (cell (styled ("CueText", run ("Ask Mia"))) + continued))),
                 ElementsAre (cue ("1", "Hello", "Ask Mia")));
}

TEST (CueSheetEdits, aReasonThatWasDeletedDoesNotTakeTheNextLabel)
{
    auto expected = fullCue();
    expected.reason.clear();
    EXPECT_THAT (cuesOfWordDocument (edited (sheetJSON ({ fullCueJSON() }), { { ">Aeroplane<", "><" } })),
                 ElementsAre (expected));
}

TEST (CueSheetEdits, aCueThatWasPastedIntoATextIsACueOfItsOwn)
{
    const auto inner = block (row (cell (styled ("CueText", run ("Inner"))) + details ("2")));
    EXPECT_THAT (cuesAround (plainBlock (styled ("CueText", run ("Outer")) + inner + "<w:p/>")),
                 ElementsAre (cue ("1", "Outer"), cue ("2", "Inner")));
}

TEST (CueSheetEdits, aTableInTheStyleOfTheTextIsReadOnce)
{
    const auto inner =
        block (row (cell (styled ("CueText", run ("one"))) + cell (styled ("CueText", run ("two")))));
    EXPECT_THAT (cuesAround (plainBlock (styled ("CueText", run ("Outer")) + inner + "<w:p/>")),
                 ElementsAre (cue ("1", "Outer\none\ntwo")));
}

TEST (CueSheetEdits, aTextInTheStyleOfATakeIsText)
{
    EXPECT_THAT (cuesAround (plainBlock (styled ("CueTake", run ("Hello")))),
                 ElementsAre (cue ("1", "Hello")));
}

TEST (CueSheetEdits, aCueWhoseWordsWereDeletedAsTrackedChangesIsGone)
{
    const std::string deleted = "<w:del w:id=\"2\"><w:r><w:delText>old</w:delText></w:r></w:del>";
    const auto emptied = block (row (cell (styled ("CueText", deleted))
                                     + cell (styled ("CueNumber", deleted) + styled ("CueCharacter", deleted)
                                             + styled ("CueIn", deleted) + styled ("CueOut", deleted))));
    EXPECT_THAT (cuesAround (plainBlock (styled ("CueText", run ("Hello"))) + "<w:p/>" + emptied),
                 ElementsAre (cue ("1", "Hello")));
}

TEST (CueSheetEdits, thePlaceholderOfAContentControlIsNoText)
{
    const auto control = [] (const std::string& content)
    {
        return "<w:sdt><w:sdtPr><w:showingPlcHdr/></w:sdtPr><w:sdtContent>" + content
               + "</w:sdtContent></w:sdt>";
    };
    const auto hint = run ("Click or tap here to enter text.");
    EXPECT_THAT (cuesAround (plainBlock (styled ("CueText", control (hint)))), ElementsAre (cue ("1", "")));
    EXPECT_THAT (cuesAround (plainBlock (control (styled ("CueText", hint)) + "<w:p/>")),
                 ElementsAre (cue ("1", "")));
    EXPECT_THAT (cuesAround (block (row (control (cell (styled ("CueText", hint))) + details ("1")))),
                 ElementsAre (cue ("1", "")));
    EXPECT_THAT (cuesAround (plainBlock (styled ("CueText", "<w:sdt><w:sdtPr/><w:sdtContent>" + run ("Hi")
                                                                + "</w:sdtContent></w:sdt>"))),
                 ElementsAre (cue ("1", "Hi")));
}

TEST (CueSheetEdits, aNumberAndANameAreOneLineEach)
{
    const std::string broken = "<w:r><w:t>X</w:t><w:br/><w:t>Y</w:t><w:tab/><w:t>Z</w:t></w:r>";
    const auto cues = cuesAround (block (
        row (cell (styled ("CueText", run ("Hello")))
             + cell (styled ("CueNumber", broken) + styled ("CueCharacter", broken)
                     + styled ("CueIn", run ("01:00:00:00")) + styled ("CueOut", run ("01:00:02:00"))))));
    ASSERT_THAT (cues, SizeIs (1));
    EXPECT_EQ (cues[0].number, "X Y Z");
    EXPECT_EQ (cues[0].character, "X Y Z");
}

TEST (CueSheetEdits, withoutStylesAnEmptyNumberLeavesTheNameTheName)
{
    const auto times = paragraphXML ("01:00:00:00") + paragraphXML ("01:00:02:00");
    EXPECT_THAT (cuesAround (block (
                     row (cell (paragraphXML ("Hello")) + cell ("<w:p/>" + paragraphXML ("ANNA") + times)))),
                 ElementsAre (cue ("", "Hello")));
    EXPECT_THAT (cuesAround (block (row (cell (paragraphXML ("Hello"))
                                         + cell (paragraphXML ("7") + paragraphXML ("ANNA") + times)))),
                 ElementsAre (cue ("7", "Hello")));
}

TEST (CueSheetEdits, symbolsOfTextAreReadAndPageBreaksAreNot)
{
    EXPECT_THAT (
        cuesAround (plainBlock (styled (
            "CueText",
            "<w:r><w:t>A</w:t><w:br w:type=\"page\"/><w:sym w:font=\"Wingdings\" w:char=\"F04A\"/>"
            "<w:sym w:font=\"Arial\" w:char=\"266A\"/><w:sym w:char=\"D800\"/><w:sym/><w:t>B</w:t></w:r>"))),
        ElementsAre (cue ("1", "A\xe2\x99\xaa"
                               "B")));
}

} // namespace DocxHandler::Testing
