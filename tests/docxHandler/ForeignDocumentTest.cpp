// SPDX-License-Identifier: GPL-3.0-only
//
// Documents that other programs and people have made.
#include "ImportSupport.h"

#include <gmock/gmock.h>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::SizeIs;

std::vector<ImportedCue> cuesAround (const std::string& body)
{
    return cuesOfWordDocument (documentAround (body));
}

ImportedCue cue (const std::string& in, const std::string& out, const std::string& character,
                 const std::string& number, const std::string& text)
{
    return { in, out, character, number, {}, {}, { text, {} }, {}, {} };
}

std::string lines (const std::vector<std::string>& texts)
{
    std::string body;

    for (const auto& text : texts)
        body += paragraphXML (text);

    return body;
}

} // namespace

TEST (ForeignDocument, aTableWithTitlesGivesACueForEachRow)
{
    EXPECT_THAT (cuesAround (tableXML ({ { "Cue", "TC In", "TC Out", "Character", "Dialogue" },
                                         { "1", "01:00:00:00", "01:00:02:00", "ANNA", "Hello." },
                                         { "2", "01:00:03:00", "01:00:04:10", "PAUL", "Well?" } })),
                 ElementsAre (cue ("01:00:00:00", "01:00:02:00", "ANNA", "1", "Hello."),
                              cue ("01:00:03:00", "01:00:04:10", "PAUL", "2", "Well?")));
}

TEST (ForeignDocument, titlesCountWhateverTheirCaseAndSigns)
{
    EXPECT_THAT (
        cuesAround (tableXML (
            { { "#", "START", "end ", "Name:", "Text", "Comments", "Eng. Notes", "Reason", "Region" },
              { "7", "01:00:00:00", "01:00:02:00", "ANNA", "Hello.", "Soft", "Lav", "Noise", "Top" } })),
        ElementsAre (ImportedCue { "01:00:00:00",
                                   "01:00:02:00",
                                   "ANNA",
                                   "7",
                                   "Noise",
                                   "Top",
                                   { "Hello.", {} },
                                   { "Soft", {} },
                                   { "Lav", {} } }));
}

TEST (ForeignDocument, rowsAboveTheTitlesAndTitlesOnEachPageAreNoCues)
{
    EXPECT_THAT (cuesAround (tableXML ({ { "The Long Way Home" },
                                         { "In", "Out", "Character", "Line" },
                                         { "01:00:00:00", "01:00:02:00", "ANNA", "Hello." },
                                         { "In", "Out", "Character", "Line" },
                                         { "REEL 2" },
                                         { "", "", "", "" },
                                         { "02:00:00:00", "02:00:02:00", "ANNA", "Bye." } })),
                 ElementsAre (cue ("01:00:00:00", "01:00:02:00", "ANNA", "", "Hello."),
                              cue ("02:00:00:00", "02:00:02:00", "ANNA", "", "Bye.")));
}

TEST (ForeignDocument, bothTimecodesMayStandInOneCell)
{
    EXPECT_THAT (cuesAround (tableXML ({ { "TC In / Out", "Character", "Text" },
                                         { "01:00:00:00 - 01:00:02:00", "ANNA", "Hello." } })),
                 ElementsAre (cue ("01:00:00:00", "01:00:02:00", "ANNA", "", "Hello.")));
}

TEST (ForeignDocument, aListWithInPointsAloneIsOneToo)
{
    EXPECT_THAT (cuesAround (tableXML ({ { "TC", "Text" }, { "01:00:00:00", "Hello." } })),
                 ElementsAre (cue ("01:00:00:00", "", "", "", "Hello.")));
}

TEST (ForeignDocument, mergedCellsCountForTheirColumns)
{
    const auto title = "<w:tr>" + cellXML ("Character") + cellXML ("Start")
                       + cellXML ("Text", "<w:gridSpan w:val=\"2\"/>") + cellXML ("Notes") + "</w:tr>";
    const auto first = "<w:tr>" + cellXML ("ANNA", "<w:vMerge w:val=\"restart\"/>") + cellXML ("01:00:00:00")
                       + cellXML ("Hello.", "<w:gridSpan w:val=\"2\"/>") + cellXML ("Soft") + "</w:tr>";
    const auto second = "<w:tr>" + cellXML ("", "<w:vMerge/>") + cellXML ("01:00:05:00")
                        + cellXML ("Bye.", "<w:gridSpan w:val=\"2\"/>") + cellXML ("") + "</w:tr>";
    const auto cues = cuesAround ("<w:tbl>" + title + first + second + "</w:tbl>");
    ASSERT_THAT (cues, SizeIs (2));
    EXPECT_EQ (cues[0].notes.text, "Soft");
    EXPECT_EQ (cues[1].character, "ANNA");
    EXPECT_EQ (cues[1].text.text, "Bye.");
}

TEST (ForeignDocument, aTableWithoutTitlesIsReadByItsTimecodes)
{
    EXPECT_THAT (
        cuesAround (tableXML ({ { "A1", "01:00:00:00", "01:00:02:00", "ANNA", "Where have you been?" },
                                { "A2", "01:00:03:00", "01:00:04:10", "PAUL", "Well?" },
                                { "A3", "", "", "", "cut" } })),
        ElementsAre (cue ("01:00:00:00", "01:00:02:00", "ANNA", "A1", "Where have you been?"),
                     cue ("01:00:03:00", "01:00:04:10", "PAUL", "A2", "Well?")));
}

TEST (ForeignDocument, aTableInATableIsFound)
{
    EXPECT_THAT (cuesAround ("<w:tbl><w:tr><w:tc>"
                             + tableXML ({ { "In", "Text" }, { "01:00:00:00", "Hello." } })
                             + "<w:p/></w:tc></w:tr></w:tbl>"),
                 ElementsAre (cue ("01:00:00:00", "", "", "", "Hello.")));
}

TEST (ForeignDocument, timecodePairsInTextBeginCues)
{
    EXPECT_THAT (
        cuesAround (lines ({ "The Long Way Home", "01:00:00:00 - 01:00:02:00", "ANNA", "R1-001", "Where have",
                             "you been?", "", "01:00:03:00", "01:00:04:10", "PAUL", "Well?" })),
        ElementsAre (cue ("01:00:00:00", "01:00:02:00", "ANNA", "R1-001", "Where have\nyou been?"),
                     cue ("01:00:03:00", "01:00:04:10", "PAUL", "", "Well?")));
}

TEST (ForeignDocument, headingsInTextOpenNotesAndReason)
{
    const auto cues = cuesAround (
        lines ({ "01:00:00:00\xe2\x80\xa8"
                 "01:00:02:00",
                 "ANNA", "1", "Hello.", "Notes", "Soft", "Eng. Notes", "Lav", "Reason", "Noise" }));
    EXPECT_THAT (cues, ElementsAre (ImportedCue { "01:00:00:00",
                                                  "01:00:02:00",
                                                  "ANNA",
                                                  "1",
                                                  "Noise",
                                                  {},
                                                  { "Hello.", {} },
                                                  { "Soft", {} },
                                                  { "Lav", {} } }));
}

TEST (ForeignDocument, subtitlesInTextKeepTheirNumbers)
{
    EXPECT_THAT (cuesAround (lines ({ "1", "00:00:01,000 --&gt; 00:00:02,500", "I was never there.", "", "2",
                                      "00:00:03,000 --&gt; 00:00:04,000", "Neither was I." })),
                 ElementsAre (cue ("00:00:01,000", "00:00:02,500", "", "1", "I was never there."),
                              cue ("00:00:03,000", "00:00:04,000", "", "2", "Neither was I.")));
}

TEST (ForeignDocument, theFirstLineOfASubtitleIsNoName)
{
    EXPECT_THAT (cuesAround (lines ({ "1", "00:00:01,000 --&gt; 00:00:02,000", "Hello there", "my friend", "",
                                      "2", "00:00:03,000 --&gt; 00:00:04,000", "NO SMOKING", "in here" })),
                 ElementsAre (cue ("00:00:01,000", "00:00:02,000", "", "1", "Hello there\nmy friend"),
                              cue ("00:00:03,000", "00:00:04,000", "", "2", "NO SMOKING\nin here")));
}

TEST (ForeignDocument, aNameInTextStandsInCapitalsOrAboveANumber)
{
    EXPECT_THAT (
        cuesAround (lines ({ "01:00:00:00 01:00:02:00", "\xc3\x84NNE", "Hello.", "01:00:03:00 01:00:04:00",
                             "Anne", "R1-7", "Hello.", "01:00:05:00 01:00:06:00", "Come", "here" })),
        ElementsAre (cue ("01:00:00:00", "01:00:02:00", "\xc3\x84NNE", "", "Hello."),
                     cue ("01:00:03:00", "01:00:04:00", "Anne", "R1-7", "Hello."),
                     cue ("01:00:05:00", "01:00:06:00", "", "", "Come\nhere")));
}

TEST (ForeignDocument, textBesideTheTimecodesGoesOnBelow)
{
    EXPECT_THAT (cuesAround (lines ({ "01:00:00:00-01:00:02:00 Hello", "FADE IN" })),
                 ElementsAre (cue ("01:00:00:00", "01:00:02:00", "", "", "Hello\nFADE IN")));
    EXPECT_THAT (cuesAround (lines ({ "01:00:00:00-01:00:02:00 ANNA", "Hello" })),
                 ElementsAre (cue ("01:00:00:00", "01:00:02:00", "ANNA", "", "Hello")));
}

TEST (ForeignDocument, onlyANumberMayStandBeforeTheTimecodes)
{
    EXPECT_EQ (refusalOf (documentAround (lines ({ "Meeting from 10:00:00:00 to 11:00:00:00 in room 5",
                                                   "Reel 2, 10:00:00:00 - 11:00:00:00" }))),
               "holds no cues");
    EXPECT_THAT (
        cuesAround (lines ({ "R1-001 01:00:00:00 - 01:00:02:00", "Hello.", "Cue 12 01:00:03:00 - 01:00:04:00",
                             "Bye.", "TC: 01:00:05:00 to 01:00:06:00", "Ah." })),
        ElementsAre (cue ("01:00:00:00", "01:00:02:00", "", "R1-001", "Hello."),
                     cue ("01:00:03:00", "01:00:04:00", "", "Cue 12", "Bye."),
                     cue ("01:00:05:00", "01:00:06:00", "", "", "Ah.")));
}

TEST (ForeignDocument, theLookOfTextIsKept)
{
    const auto cues = cuesAround (
        paragraphXML ("01:00:00:00 01:00:02:00")
        + "<w:p><w:r><w:t>ANNA</w:t><w:br/><w:t xml:space=\"preserve\">Where </w:t></w:r><w:r><w:rPr><w:i/></w:rPr><w:t>were</w:t></w:r></w:p>");
    Look italic;
    italic.italic = true;
    ASSERT_THAT (cues, SizeIs (1));
    EXPECT_EQ (cues[0].text, (RichText { "Where were", { { 6, 10, italic } } }));
}

TEST (ForeignDocument, aTimecodeAloneOrTwoInASentenceAreNoCue)
{
    EXPECT_EQ (refusalOf (documentAround (
                   lines ({ "See 01:00:00:00.", "Between 01:00:00:00 and then at 01:00:05:00 again" }))),
               "holds no cues");
}

TEST (ForeignDocument, aSentenceWithTwoTimecodesIsNoCueInAnyScript)
{
    const std::vector<std::string> sentences {
        // "Come back to ... and ..."
        "\xd0\x92\xd0\xb5\xd1\x80\xd0\xbd\xd0\xb8\xd1\x81\xd1\x8c \xd0\xba 01:00:00:00 "
        "\xd0\xb8 01:00:02:00",
        // "The signs are at ..., ..."
        "\xe5\x90\x88\xe5\x9b\xb3\xe3\x81\xaf"
        "01:00:00:00\xe3\x80\x81"
        "01:00:05:00\xe3\x81\xa7\xe3\x81\x99",
        "\xce\xb1\xcf\x80\xcf\x8c 01:00:00:00 01:00:02:00",                  // Greek "from"
        "\xd9\x85\xd9\x86 01:00:00:00 \xd8\xa5\xd9\x84\xd9\x89 01:00:02:00", // Arabic "from", "until"
    };

    for (const auto& sentence : sentences)
        EXPECT_THAT (
            cuesAround (lines ({ "01:00:01:00 - 01:00:09:00 Hello", sentence, "Bye" })),
            ElementsAre (cue ("01:00:01:00", "01:00:09:00", "", "", "Hello\n" + sentence + "\nBye")));
}

TEST (ForeignDocument, dashesArrowsAndWordsForThemJoinTimecodesInAnyScript)
{
    for (const std::string between :
         { " \xe2\x80\x93 ", " \xe2\x80\x94 ", "\xe2\x88\x92", "\xc2\xa0", "\xe3\x80\x80", "\xe3\x80\x9c",
           "\xef\xbd\x9e", " \xe2\x86\x92 ", " \xe2\x9e\xa1\xef\xb8\x8f ", " \xe2\x80\x8f- ", " to ", " bis ",
           " \xc3\xa0 ", " \xd0\xb4\xd0\xbe ", "\xe3\x81\x8b\xe3\x82\x89" })
        EXPECT_THAT (cuesAround (lines ({ "\xe2\x80\xa2 01:00:00:00" + between + "01:00:02:00", "Hello" })),
                     ElementsAre (cue ("01:00:00:00", "01:00:02:00", "", "", "Hello")))
            << between;

    EXPECT_THAT (cuesAround (lines ({ "\xe2\x84\x96"
                                      "12 01:00:00:00 - 01:00:02:00",
                                      "Hello", "\xd0\xa2\xd0\x9a: 01:00:03:00 - 01:00:04:00", "Bye" })),
                 ElementsAre (cue ("01:00:00:00", "01:00:02:00", "",
                                   "\xe2\x84\x96"
                                   "12",
                                   "Hello"),
                              cue ("01:00:03:00", "01:00:04:00", "", "", "Bye")));
}

TEST (ForeignDocument, aLabelThatIsSpokenIsNoHeading)
{
    for (const std::string spoken : { "Reason?", "Note!", "\xd0\xad\xd1\x82\xd0\xbe Note.", "\"Notes\"",
                                      "Notes...", "- Reason", "Region, 2", "Eng... Notes" })
        EXPECT_THAT (cuesAround (lines ({ "01:00:00:00 - 01:00:02:00", "Hello", spoken, "Bye" })),
                     ElementsAre (cue ("01:00:00:00", "01:00:02:00", "", "", "Hello\n" + spoken + "\nBye")))
            << spoken;
}

TEST (ForeignDocument, aHeadingMayHaveAColonOrAFullStop)
{
    for (const std::string heading : { "Notes", "NOTES:", "Note.", " notes : " })
        EXPECT_EQ (
            cuesAround (lines ({ "01:00:00:00 - 01:00:02:00", "Hello", heading, "Soft" })).at (0).notes.text,
            "Soft")
            << heading;

    for (const std::string heading : { "Eng. Notes", "ENG. NOTES:", "Engineering notes.", "Eng Notes" })
        EXPECT_EQ (cuesAround (lines ({ "01:00:00:00 - 01:00:02:00", "Hello", heading, "Lav" }))
                       .at (0)
                       .engineeringNotes.text,
                   "Lav")
            << heading;

    EXPECT_EQ (
        cuesAround (lines ({ "01:00:00:00 - 01:00:02:00", "Hello", "FN Region:", "Top" })).at (0).region,
        "Top");
}

TEST (ForeignDocument, commentsAndLiteralSectionsCutNoText)
{
    const auto textOf = [] (const std::string& content)
    {
        return cuesAround ("<w:tbl>" + rowXML ({ "In", "Text" }) + "<w:tr>" + cellXML ("01:00:00:00")
                           + "<w:tc><w:p><w:r>" + content + "</w:r></w:p></w:tc></w:tr></w:tbl>")
            .at (0)
            .text.text;
    };

    EXPECT_EQ (textOf ("<w:t>Tom <![CDATA[& Jerry]]> run</w:t>"), "Tom & Jerry run");
    EXPECT_EQ (textOf ("<w:t>a<!--c-->b</w:t>"), "ab");
    EXPECT_EQ (textOf ("<w:t><![CDATA[<b>]]></w:t>"), "<b>");
    EXPECT_EQ (textOf ("<w:t>a<?x y?>b &amp; c</w:t>"), "ab & c");
}

TEST (ForeignDocument, aNoBreakSpaceIsText)
{
    const auto run = [] (const std::string& text) { return "<w:r><w:t>" + text + "</w:t></w:r>"; };
    const auto cues = cuesAround ("<w:tbl>" + rowXML ({ "In", "Text" }) + "<w:tr>" + cellXML ("01:00:00:00")
                                  + "<w:tc><w:p>" + run (" \t\nBonjour&#160;\r\n ") + run ("!")
                                  + run ("&#160;?") + "</w:p></w:tc></w:tr></w:tbl>");
    ASSERT_THAT (cues, SizeIs (1));
    EXPECT_EQ (cues[0].text.text, "Bonjour\xc2\xa0!\xc2\xa0?");
}

TEST (ForeignDocument, anEmptyDocumentHoldsNoCues)
{
    EXPECT_EQ (refusalOf (documentAround ("")), "holds no cues");
    EXPECT_EQ (
        refusalOf (documentAround ("<w:tbl/><w:tbl><w:tr/></w:tbl><w:tbl><w:tr><w:tc/></w:tr></w:tbl>")),
        "holds no cues");
}

TEST (ForeignDocument, anotherPrefixOrNoneIsFine)
{
    auto parts = partsOf (documentAround (tableXML ({ { "In", "Text" }, { "01:00:00:00", "Hello." } })));
    auto& body = parts.at ("word/document.xml");

    for (const std::string to : { "x:", "" })
    {
        auto renamed = parts;
        auto& xml = renamed.at ("word/document.xml");

        for (auto place = xml.find ("w:"); place != std::string::npos;
             place = xml.find ("w:", place + to.size()))
            xml.replace (place, 2, to);

        EXPECT_THAT (cuesOfWordDocument (packed (renamed)), SizeIs (1)) << xml;
    }

    EXPECT_FALSE (body.empty());
}

TEST (ForeignDocument, theBodyMayHaveAnotherName)
{
    auto parts = partsOf (documentAround (tableXML ({ { "In", "Text" }, { "01:00:00:00", "Hello." } })));
    auto body = parts.extract ("word/document.xml");
    body.key() = "word/document2.xml";
    parts.insert (std::move (body));
    auto& relations = parts.at ("_rels/.rels");
    relations.replace (relations.find ("word/document.xml"), 17, "/word/../word/document2.xml");
    EXPECT_THAT (cuesOfWordDocument (packed (parts)), SizeIs (1));
}

} // namespace DocxHandler::Testing
