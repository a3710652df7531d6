// SPDX-License-Identifier: GPL-3.0-only
//
// Tables of other people: whose titles say more, less or something else than ours.
#include "ImportSupport.h"

#include <gmock/gmock.h>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::SizeIs;
using Rows = std::vector<std::vector<std::string>>;

constexpr auto in = "01:00:00:00";
constexpr auto out = "01:00:02:00";

std::vector<ImportedCue> cuesOf (const Rows& rows)
{
    return cuesOfWordDocument (documentAround (tableXML (rows)));
}

ImportedCue cue (const std::string& character, const std::string& number, const std::string& text,
                 const std::string& notes = {})
{
    return { in, out, character, number, {}, {}, { text, {} }, { notes, {} }, {} };
}

} // namespace

TEST (CueTableImport, whatStandsUnderAnUnknownTitleBelongsToNoOther)
{
    EXPECT_THAT (cuesOf ({ { "Cue", "TC In", "TC Out", "Character", "Actor", "Dialogue", "Page", "Takes" },
                           { "12", in, out, "ANNA", "Jane Roe", "Hello there", "4", "3" } }),
                 ElementsAre (cue ("ANNA", "12", "Hello there")));
}

TEST (CueTableImport, anEmptyCellUnderAnUnknownTitleTakesNothingAway)
{
    EXPECT_THAT (
        cuesOf ({ { "In", "Out", "Text", "Foo" }, { in, out, "Hello", "" }, { in, out, "Hello", "bar" } }),
        ElementsAre (cue ("", "", "Hello"), cue ("", "", "Hello")));
}

TEST (CueTableImport, aDurationIsNoOutPoint)
{
    const auto cues = cuesOf ({ { "TC IN", "DURATION", "CHARACTER", "DIALOGUE" },
                                { in, "00:00:02:00", "ANNA", "Hi there" },
                                { in, "01:30:02:00", "ANNA", "Hi there" } });
    ASSERT_THAT (cues, SizeIs (2));
    EXPECT_EQ (cues[0].inPoint + cues[0].outPoint + cues[1].outPoint, in);
}

TEST (CueTableImport, cellsUnderOneMergedTitleAllCountForIt)
{
    const auto title = "<w:tr>" + cellXML ("In") + cellXML ("Out") + cellXML ("Character")
                       + cellXML ("Text", "<w:gridSpan w:val=\"2\"/>") + "</w:tr>";
    const auto cues = cuesOfWordDocument (documentAround (
        "<w:tbl>" + title + rowXML ({ in, out, "ANNA", "Hello", "there", "?" }) + "</w:tbl>"));
    EXPECT_THAT (cues, ElementsAre (cue ("ANNA", "", "Hello\nthere")));
}

TEST (CueTableImport, titlesInOtherLanguagesAreKnown)
{
    EXPECT_THAT (cuesOf ({ { "Nr.", "Beginn", "Ende", "Rolle", "Sprecher", "Text", "Bemerkung" },
                           { "1", in, out, "ANNA", "Jane", "Hallo", "leise" } }),
                 ElementsAre (cue ("ANNA", "1", "Hallo", "leise")));
    EXPECT_THAT (cuesOf ({ { "N\xc2\xb0",
                             "TC d\xc3\xa9"
                             "but",
                             "TC fin", "Personnage", "R\xc3\xa9plique", "Remarques" },
                           { "1", in, out, "ANNA", "Bonjour", "doux" } }),
                 ElementsAre (cue ("ANNA", "1", "Bonjour", "doux")));
    EXPECT_THAT (
        cuesOf ({ { "N\xc3\xbamero", "TC entrada", "TC salida", "Personaje", "Di\xc3\xa1logo", "Notas" },
                  { "1", in, out, "ANNA", "Hola", "suave" } }),
        ElementsAre (cue ("ANNA", "1", "Hola", "suave")));
    EXPECT_THAT (cuesOf ({ { "Numero", "Inizio", "Fine", "Personaggio", "Battuta", "Note" },
                           { "1", in, out, "ANNA", "Ciao", "piano" } }),
                 ElementsAre (cue ("ANNA", "1", "Ciao", "piano")));
}

TEST (CueTableImport, ofTwoTitlesTheOneThatIsMeantCounts)
{
    EXPECT_THAT (cuesOf ({ { "Time In", "Time Out", "Speaker", "Character", "Original", "Translation" },
                           { in, out, "Jane", "ANNA", "Hello", "Hallo" } }),
                 ElementsAre (cue ("ANNA", "", "Hallo")));
    EXPECT_THAT (cuesOf ({ { "Cue #", "In", "Out", "Character", "Cue" }, { "1", in, out, "ANNA", "Hello" } }),
                 ElementsAre (cue ("ANNA", "1", "Hello")));
    EXPECT_THAT (cuesOf ({ { "TC IN", "TC OUT", "CHARACTER", "ENGLISH" }, { in, out, "ANNA", "Hi there" } }),
                 ElementsAre (cue ("ANNA", "", "Hi there")));
}

TEST (CueTableImport, timesUnderTitlesThatAreNotKnownAreNotLost)
{
    EXPECT_THAT (cuesOf ({ { "Nr.", "Alku", "Loppu", "Rolle", "Text" }, { "1", in, out, "ANNA", "Hei" } }),
                 ElementsAre (cue ("ANNA", "1", "Hei")));
    EXPECT_THAT (cuesOf ({ { "Nr.", "Aika", "Rolle", "Text" },
                           { "1", std::string (in) + " - " + out, "ANNA", "At 01:00:01:00 I go" } }),
                 ElementsAre (cue ("ANNA", "1", "At 01:00:01:00 I go")));
    EXPECT_THAT (cuesOf ({ { "TC In", "Loppu", "Rolle", "Text" }, { in, out, "ANNA", "Hei" } }),
                 ElementsAre (cue ("ANNA", "", "Hei")));
}

TEST (CueTableImport, timesWithoutFramesAreWholeSeconds)
{
    const auto cues = cuesOf ({ { "TC In", "TC Out", "Dialogue" }, { "01:00:00", "01:00:02", "Hello" } });
    EXPECT_THAT (cues, ElementsAre (cue ("", "", "Hello")));
}

TEST (CueTableImport, aRowWhoseWordsAreTitlesIsStillACue)
{
    EXPECT_THAT (cuesOf ({ { "TC In", "TC Out", "Character", "Text" },
                           { in, out, "BOB", "Start" },
                           { in, out, "In", "Line" },
                           { "TC In", "TC Out", "Character", "Text" },
                           { "", "", "Role", "Line" },
                           { in, out, "ANNA", "Hi" } }),
                 ElementsAre (cue ("BOB", "", "Start"), cue ("In", "", "Line"),
                              ImportedCue { {}, {}, "Role", {}, {}, {}, { "Line", {} }, {}, {} },
                              cue ("ANNA", "", "Hi")));
}

TEST (CueTableImport, aTimecodeInASentenceIsNoTimeOfATableWithoutTitles)
{
    EXPECT_THAT (cuesOf ({ { "1", in, out, "ANNA", "At 01:00:01:00 she says hello" } }),
                 ElementsAre (cue ("ANNA", "1", "At 01:00:01:00 she says hello")));
    EXPECT_THAT (cuesOf ({ { "At 01:00:01:00 she says hello", in, out, "ANNA" } }),
                 ElementsAre (cue ("ANNA", "", "At 01:00:01:00 she says hello")));
    EXPECT_THAT (cuesOf ({ { std::string (in) + "\n" + out, "ANNA", "Hello there" },
                           { std::string ("In: ") + in + " Out: " + out, "ANNA", "Bye now" } }),
                 ElementsAre (cue ("ANNA", "", "Hello there"), cue ("ANNA", "", "Bye now")));
}

TEST (CueTableImport, aTableWithoutTitlesGoesOnUnderThoseAboveIt)
{
    const Rows titled { { "Cue", "TC In", "TC Out", "Notes", "Character", "Dialogue" },
                        { "1", in, out, "loud", "ANNA", "Hello" } };
    const Rows further { { "2", in, out, "", "PAUL", "Well?" },
                         { "", "", "", "", "", "Is it you?" },
                         { "3", "", "", "soft", "ANNA", "Yes" } };
    const auto rest = tableXML (further) + paragraphXML ("Reel 2") + tableXML (further);
    const std::vector<ImportedCue> parts {
        cue ("PAUL", "2", "Well?\nIs it you?"),
        { {}, {}, "ANNA", "3", {}, {}, { "Yes", {} }, { "soft", {} }, {} }
    };
    EXPECT_THAT (cuesOfWordDocument (documentAround (tableXML (titled) + rest)),
                 ElementsAre (cue ("ANNA", "1", "Hello", "loud"), parts[0], parts[1], parts[0], parts[1]));
    EXPECT_THAT (cuesOfWordDocument (documentAround (rest + tableXML (titled))),
                 ElementsAre (cue ("ANNA", "1", "Hello", "loud")))
        << "titles mean nothing above them";
}

TEST (CueTableImport, theTextOfACueGoesOnInTheNextTable)
{
    EXPECT_THAT (cuesOfWordDocument (
                     documentAround (tableXML ({ { "TC In", "TC Out", "Dialogue" }, { in, out, "Hello" } })
                                     + tableXML ({ { "", "", "there" }, { in, out, "Bye" } }))),
                 ElementsAre (cue ("", "", "Hello\nthere"), cue ("", "", "Bye")));
}

TEST (CueTableImport, aTableOfSomethingElseDoesNotGoOn)
{
    const Rows titled { { "TC In", "TC Out", "Character", "Dialogue" }, { in, out, "ANNA", "Hello" } };
    const Rows cast { { "ANNA", "Jane Roe", "Studio 1", "at ten" }, { "PAUL", "John Doe", "", "at eleven" } };
    const Rows narrow { { in, out, "Changes" } };
    EXPECT_THAT (
        cuesOfWordDocument (documentAround (tableXML (titled) + tableXML (cast) + tableXML (narrow))),
        ElementsAre (cue ("ANNA", "", "Hello")));
}

TEST (CueTableImport, aTableOfAnotherListHasItsOwnTitles)
{
    EXPECT_THAT (
        cuesOfWordDocument (documentAround (
            tableXML ({ { "TC In", "TC Out", "Character", "Dialogue" }, { in, out, "ANNA", "Hello" } })
            + tableXML ({ { "TC In", "TC Out", "Dialogue", "Character" }, { in, out, "Bye", "PAUL" } })
            + tableXML ({ { in, out, "Now", "ANNA" } }))),
        ElementsAre (cue ("ANNA", "", "Hello"), cue ("PAUL", "", "Bye"), cue ("ANNA", "", "Now")));
}

TEST (CueTableImport, aTableWithinACellIsNoFurtherPartOfTheList)
{
    const auto nested = tableXML ({ { in, out } });
    EXPECT_THAT (
        cuesOfWordDocument (documentAround ("<w:tbl>" + rowXML ({ "TC In", "Dialogue" }) + "<w:tr>"
                                            + cellXML (in) + "<w:tc>" + paragraphXML ("Hello") + nested
                                            + "</w:tc></w:tr></w:tbl>" + tableXML ({ { in, "Bye" } }))),
        SizeIs (2));
}

TEST (CueTableImport, aListWithoutTimesGoesOnByItsColumns)
{
    EXPECT_THAT (
        cuesOfWordDocument (documentAround (tableXML ({ { "Character", "Text" }, { "ANNA", "Hello" } })
                                            + tableXML ({ { "PAUL", "Bye" } }))),
        ElementsAre (ImportedCue { {}, {}, "ANNA", {}, {}, {}, { "Hello", {} }, {}, {} },
                     ImportedCue { {}, {}, "PAUL", {}, {}, {}, { "Bye", {} }, {}, {} }));
}

TEST (CueTableImport, aRowOfTextAloneGoesOnWithTheCueAboveIt)
{
    EXPECT_THAT (
        cuesOf ({ { "Cue", "TC In", "TC Out", "Character", "Dialogue", "Notes" },
                  { "", "", "", "", "Nobody says this", "" },
                  { "1", in, out, "ANNA", "Hello", "" },
                  { "", "", "", "", "there", "" },
                  { "", "", "", "", "my friend", "softly" },
                  { "2", "", "", "", "", "cut" },
                  { "", "", "", "", "", "" },
                  { "3", in, out, "PAUL", "Bye", "" } }),
        ElementsAre (cue ("ANNA", "1", "Hello\nthere\nmy friend", "softly"), cue ("PAUL", "3", "Bye")));
}

TEST (CueTableImport, whatAMergedCellGoesOnShowingIsNoFurtherText)
{
    const auto row = [] (const std::string& text, const std::string& merge, const std::string& notes) {
        return "<w:tr>" + cellXML (text.empty() ? "" : in) + cellXML (text, merge) + cellXML (notes)
               + "</w:tr>";
    };
    EXPECT_THAT (
        cuesOfWordDocument (documentAround ("<w:tbl>" + rowXML ({ "TC In", "Text", "Notes" })
                                            + row ("Hello", "<w:vMerge w:val=\"restart\"/>", "one")
                                            + row ("", "<w:vMerge/>", "two") + "</w:tbl>")),
        ElementsAre (ImportedCue { in, {}, {}, {}, {}, {}, { "Hello", {} }, { "one\ntwo", {} }, {} }));
}

TEST (CueTableImport, aTimecodeInASentenceIsNoTimeInAnyScript)
{
    const std::string sentence = "\xd0\x97\xd0\xb0\xd0\xbf\xd1\x83\xd1\x81\xd0\xba "
                                 "\xd0\xb2 01:00:04:00"; // "Start at 01:00:04:00"
    EXPECT_THAT (cuesOf ({ { "1", in, out, "ANNA", sentence } }), ElementsAre (cue ("ANNA", "1", sentence)));
    EXPECT_THAT (
        cuesOf ({ { std::string (in) + " \xe2\x80\x93 " + out, "ANNA", "Hello there" },
                  { std::string (in) + "\xe3\x80\x9c" + out, "ANNA", "Hello there" },
                  { std::string (in) + " \xc3\xa0 " + out, "ANNA", "Hello there" },
                  { "\xd1\x81 " + std::string (in) + " \xd0\xbf\xd0\xbe " + out, "ANNA", "Hello there" } }),
        ElementsAre (cue ("ANNA", "", "Hello there"), cue ("ANNA", "", "Hello there"),
                     cue ("ANNA", "", "Hello there"), cue ("ANNA", "", "Hello there")));
}

TEST (CueTableImport, aNameIsOneLine)
{
    const auto cell =
        "<w:tc><w:p><w:r><w:t>ANNA</w:t><w:br/><w:t>(young)</w:t><w:tab/><w:t>V.O.</w:t></w:r></w:p></w:tc>";
    const auto cues = cuesOfWordDocument (
        documentAround ("<w:tbl>" + rowXML ({ "In", "Out", "Text", "Character" }) + "<w:tr>" + cellXML (in)
                        + cellXML (out) + cellXML ("Hi") + cell + "</w:tr></w:tbl>"));
    EXPECT_THAT (cues, ElementsAre (cue ("ANNA (young) V.O.", "", "Hi")));
}

} // namespace DocxHandler::Testing
