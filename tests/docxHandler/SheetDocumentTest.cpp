// SPDX-License-Identifier: GPL-3.0-only
#include "SheetDocument.h"

#include "DocxContents.h"
#include "SchemaOrder.h"
#include "SheetJSON.h"
#include "SheetStyles.h"
#include "SheetSupport.h"

#include <gmock/gmock.h>
#include <set>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::time_t someDay = 1'795'000'000;

std::map<std::string, std::string> partsOfSheet (const JSON& json, const Paper& paper = {})
{
    const Surroundings surroundings { paper, "en-GB", someDay };
    return partsOf (wordDocument (sheetFromJSON (json.dump()), surroundings, [] (double) {}));
}

std::unique_ptr<pugi::xml_document> bodyOf (const JSON& json)
{
    return parsedXML (partsOfSheet (json).at ("word/document.xml"));
}

JSON sheetsOfAllKinds()
{
    return JSON::array (
        { sheetJSON ({ cueJSON() }), sheetJSON ({ fullCueJSON(), fullCueJSON() }, "Actor Layout"),
          sheetJSON ({ fullCueJSON() }, "Engineer Layout"),
          combinedJSON ({ { cueJSON() }, { fullCueJSON() } }), sheetJSON ({}), JSON::object(),
          sheetJSON ({ cueJSON ({ { "cueTakes", takesJSON (31, 27, 3, 50, 2) } }) }),
          sheetJSON ({ cueJSON ({ { "cueText", richJSON (std::string (20000, 'x')) } }) }),
          sheetJSON ({ cueJSON ({ { "cueText", richJSON ("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d") } }) }) });
}

} // namespace

TEST (SheetDocument, everyPartKeepsTheOrderOfItsSchema)
{
    for (const auto& json : sheetsOfAllKinds())
        for (const auto& [name, bytes] : partsOfSheet (json))
            if (name.starts_with ("word/") && name.ends_with (".xml"))
            {
                EXPECT_THAT (mistakesOfOrder (*parsedXML (bytes)), IsEmpty()) << name;
            }
}

TEST (SheetDocument, everyCellEndsWithAParagraphAndEveryTableIsFollowedByOne)
{
    for (const auto& json : sheetsOfAllKinds())
    {
        const auto body = bodyOf (json);

        for (const auto& cell : all (*body, "w:tc"))
            EXPECT_STREQ (cell.last_child().name(), "w:p");

        for (const auto& table : all (*body, "w:tbl"))
            EXPECT_STREQ (table.next_sibling().name(), "w:p");
    }
}

TEST (SheetDocument, everyRowFillsTheGridOfItsTable)
{
    for (const auto& json : sheetsOfAllKinds())
    {
        const auto body = bodyOf (json);

        for (const auto& table : all (*body, "w:tbl"))
        {
            const auto columns =
                std::distance (table.child ("w:tblGrid").begin(), table.child ("w:tblGrid").end());

            for (const auto& row : table.children ("w:tr"))
            {
                long filled = 0;

                for (const auto& cell : row.children ("w:tc"))
                    filled += cell.child ("w:tcPr").child ("w:gridSpan").attribute ("w:val").as_int (1);

                EXPECT_EQ (filled, columns);
            }
        }
    }
}

TEST (SheetDocument, everyPartHasAContentTypeAndEveryRelationATarget)
{
    const auto parts = partsOfSheet (sheetJSON ({ fullCueJSON() }));
    const auto types = parsedXML (parts.at ("[Content_Types].xml"));

    for (const auto& [name, bytes] : parts)
    {
        const auto override = types->select_node (("//Override[@PartName='/" + name + "']").c_str());
        const auto extension = name.substr (name.rfind ('.') + 1);
        EXPECT_TRUE (override || types->select_node (("//Default[@Extension='" + extension + "']").c_str()))
            << name;
    }

    for (const auto& override : all (*types, "Override"))
        EXPECT_TRUE (parts.contains (std::string (override.attribute ("PartName").value()).substr (1)));

    for (const auto& [name, bytes] : parts)
    {
        if (! name.ends_with (".rels"))
            continue;

        const std::string folder = name.starts_with ("word/") ? "word/" : "";
        const auto relations = parsedXML (bytes);

        for (const auto& relation : all (*relations, "Relationship"))
            EXPECT_TRUE (parts.contains (folder + relation.attribute ("Target").value())) << name;
    }
}

TEST (SheetDocument, everyIdentifierIsUniqueAndEveryReferenceHasItsRelation)
{
    const auto parts = partsOfSheet (sheetJSON ({ fullCueJSON(), fullCueJSON() }));
    const auto body = parsedXML (parts.at ("word/document.xml"));
    const auto relations = parsedXML (parts.at ("word/_rels/document.xml.rels"));
    std::set<std::string> identifiers;

    for (const auto& drawing : all (*body, "wp:docPr"))
        EXPECT_TRUE (identifiers.insert (drawing.attribute ("id").value()).second);

    EXPECT_EQ (identifiers.size(), 6U);

    for (const auto& hit : body->select_nodes ("//@r:id | //@r:embed"))
        EXPECT_TRUE (relations->select_node (
            ("//Relationship[@Id='" + std::string (hit.attribute().value()) + "']").c_str()));
}

TEST (SheetDocument, everyStyleThatIsUsedIsDefined)
{
    const auto parts = partsOfSheet (combinedJSON ({ { fullCueJSON() }, { fullCueJSON() } }));
    const auto styles = parsedXML (parts.at ("word/styles.xml"));

    for (const auto* part : { "word/document.xml", "word/footer1.xml" })
    {
        const auto tree = parsedXML (parts.at (part));

        for (const auto& used : all (*tree, "w:pStyle"))
            EXPECT_TRUE (styles->select_node (
                ("//w:style[@w:styleId='" + std::string (used.attribute ("w:val").value()) + "']").c_str()));
    }
}

TEST (SheetDocument, eachPictureIsInThePackageOnce)
{
    const auto parts = partsOfSheet (sheetJSON ({ fullCueJSON(), fullCueJSON() }));
    EXPECT_EQ (std::count_if (parts.begin(), parts.end(),
                              [] (const auto& part) { return part.first.starts_with ("word/media/"); }),
               4);
}

TEST (SheetDocument, withoutIconsItIsStillASheet)
{
    const auto cue = cueJSON ({ { "charIconFilePath", "/nowhere/icon.png" },
                                { "startTCIconFilePath", "" },
                                { "endTCIconFilePath", __FILE__ } });
    const auto parts = partsOfSheet (sheetJSON ({ cue }));
    const auto body = parsedXML (parts.at ("word/document.xml"));
    EXPECT_TRUE (all (*body, "w:drawing").empty());
    EXPECT_THAT (textsOfStyle (*body, "CueCharacter"), ElementsAre ("\tANNA"));
}

TEST (SheetDocument, showsEachFieldOfACueInEveryLayout)
{
    for (const auto* layout : { "Director Layout", "Actor Layout", "Engineer Layout" })
    {
        const auto body = bodyOf (sheetJSON ({ fullCueJSON() }, layout));
        EXPECT_THAT (textsOfStyle (*body, "CueText"),
                     ElementsAre ("No.\nNot \xe2\x99\xaa again\t& <never>."));
        EXPECT_THAT (textsOfStyle (*body, "CueNotes"), ElementsAre ("Softer."));
        EXPECT_THAT (textsOfStyle (*body, "CueEngineeringNotes"), ElementsAre ("Use the lavalier."));
        EXPECT_THAT (textsOfStyle (*body, "CueReason"), ElementsAre ("Aeroplane"));
        EXPECT_THAT (textsOfStyle (*body, "CueRegion"), ElementsAre ("Top"));
        EXPECT_THAT (textsOfStyle (*body, "CueNumber"), ElementsAre ("R1-001"));
        EXPECT_THAT (textsOfStyle (*body, "CueCharacter"), ElementsAre ("\tANNA"));
        EXPECT_THAT (textsOfStyle (*body, "CueIn"), ElementsAre ("\t01:00:07:01"));
        EXPECT_THAT (textsOfStyle (*body, "CueOut"), ElementsAre ("\t01:00:11:07"));
    }
}

TEST (SheetDocument, theEngineersSheetPutsHisNotesFirst)
{
    EXPECT_THAT (textsOfStyle (*bodyOf (sheetJSON ({ fullCueJSON() }, "Engineer Layout")), "CueLabel"),
                 ElementsAre ("ENG. NOTES", "", "NOTES", "", "REASON", "FN REGION", "", ""));
    EXPECT_THAT (textsOfStyle (*bodyOf (sheetJSON ({ fullCueJSON() }, "Director Layout")), "CueLabel"),
                 ElementsAre ("NOTES", "", "REASON", "FN REGION", "", "ENG. NOTES", "", ""));
}

TEST (SheetDocument, whatALayoutsReaderDoesNotNeedIsSmall)
{
    const auto sizeIn = [] (const char* layout, Field field)
    { return styleSize (field, sheetFromJSON (sheetJSON ({ fullCueJSON() }, layout).dump())); };

    EXPECT_EQ (sizeIn ("Engineer Layout", Field::engineeringNotes), 16);
    EXPECT_EQ (sizeIn ("Director Layout", Field::engineeringNotes), 12);
    EXPECT_EQ (sizeIn ("Actor Layout", Field::reason), 12);
    EXPECT_EQ (sizeIn ("Director Layout", Field::reason), 16);
    EXPECT_EQ (sizeIn ("Actor Layout", Field::notes), 16);
}

TEST (SheetDocument, fieldsWithoutAValueHaveNoRow)
{
    const auto body = bodyOf (sheetJSON ({ cueJSON() }));
    const auto table = all (*body, "w:tbl").at (1);
    EXPECT_EQ (std::distance (table.children ("w:tr").begin(), table.children ("w:tr").end()), 1);
}

TEST (SheetDocument, boldAndItsKindAreKept)
{
    const auto body = bodyOf (sheetJSON ({ fullCueJSON() }));
    const auto run = [&body] (const std::string& text)
    { return body->select_node (("//w:r[w:t='" + text + "']").c_str()).node().child ("w:rPr"); };

    EXPECT_TRUE (run ("No").child ("w:b"));
    EXPECT_FALSE (run (".").child ("w:b"));
    EXPECT_TRUE (run ("Not \xe2\x99\xaa").child ("w:i"));
    EXPECT_STREQ (run ("Not \xe2\x99\xaa").child ("w:u").attribute ("w:val").value(), "single");
    EXPECT_STREQ (run ("Not \xe2\x99\xaa").child ("w:color").attribute ("w:val").value(), "C00000");
    EXPECT_TRUE (run ("ag").child ("w:strike"));
    EXPECT_STREQ (run ("ag").child ("w:sz").attribute ("w:val").value(), "56"); // twice the usual height
}

TEST (SheetDocument, textOfTheUsualHeightHasTheSizeOfItsField)
{
    const auto body = bodyOf (sheetJSON ({ fullCueJSON() }));
    const auto notes = body->select_node ("//w:r[w:t='Softer.']/w:rPr").node();
    EXPECT_TRUE (notes.child ("w:b"));
    EXPECT_FALSE (notes.child ("w:sz"));
}

TEST (SheetDocument, charactersThatXMLForbidsAreLeftOut)
{
    const auto cue = cueJSON ({ { "cueText", richJSON (std::string ("a\x01"
                                                                    "b\x0b"
                                                                    "c\x1f\xef\xbf\xbf")
                                                       + std::string (1, '\0') + "d") },
                                { "charName", "\x02X" } });
    const auto body = bodyOf (sheetJSON ({ cue }));
    EXPECT_THAT (textsOfStyle (*body, "CueText"), ElementsAre ("abcd"));
    EXPECT_THAT (textsOfStyle (*body, "CueCharacter"), ElementsAre ("\tX"));
}

TEST (SheetDocument, aLineBreakIsOneHoweverItIsWritten)
{
    const auto runs =
        JSON::array ({ runJSON (0, 2, { { "bold", true } }) }); // ends between the two characters of a break
    const auto body = bodyOf (sheetJSON ({ cueJSON ({ { "cueText", richJSON ("a\r\nb\rc\nd", runs) } }) }));
    EXPECT_THAT (textsOfStyle (*body, "CueText"), ElementsAre ("a\nb\nc\nd"));
}

TEST (SheetDocument, selectedAndAlternativeTakesAreNamedAndCountedFromZero)
{
    const auto body = bodyOf (sheetJSON ({ cueJSON ({ { "cueTakes", takesJSON (5, 2, 0) } }) }));
    const auto boxes = textsOfStyle (*body, "CueTake");
    ASSERT_EQ (boxes.size(), 25U);
    EXPECT_THAT (std::vector (boxes.begin(), boxes.begin() + 6),
                 ElementsAre ("Alt", "2", "Sel", "4", "5", "6"));
    EXPECT_EQ (boxes.back(), "25");
}

TEST (SheetDocument, recordedTakesAreShaded)
{
    const auto body = bodyOf (sheetJSON ({ cueJSON ({ { "cueTakes", takesJSON (2, -1, -1) } }) }));
    EXPECT_EQ (body->select_nodes ("//w:tc[w:p/w:pPr/w:pStyle/@w:val='CueTake']/w:tcPr/w:shd").size(), 2U);
}

TEST (SheetDocument, aTakeThatIsBothIsTheSelectedOne)
{
    const auto body = bodyOf (sheetJSON ({ cueJSON ({ { "cueTakes", takesJSON (3, 1, 1) } }) }));
    EXPECT_EQ (textsOfStyle (*body, "CueTake").at (1), "Sel");
}

TEST (SheetDocument, fiftyTakesStandInTwoRows)
{
    const auto body = bodyOf (sheetJSON ({ cueJSON ({ { "cueTakes", takesJSON (26, 27, 49, 50, 2) } }) }));
    const auto boxes = textsOfStyle (*body, "CueTake");
    ASSERT_EQ (boxes.size(), 50U);
    EXPECT_EQ (boxes[25], "26");
    EXPECT_EQ (boxes[27], "Sel");
    EXPECT_EQ (boxes[49], "Alt");
}

TEST (SheetDocument, absurdNumbersOfTakesStayOnThePage)
{
    const auto body = bodyOf (sheetJSON (
        { cueJSON ({ { "cueTakes", takesJSON (2000000000, -7, 2000000000, 2000000000, 2000000000) } }) }));
    EXPECT_EQ (textsOfStyle (*body, "CueTake").size(), 100U);
    EXPECT_TRUE (
        textsOfStyle (*bodyOf (sheetJSON ({ cueJSON ({ { "cueTakes", takesJSON (1, 0, 0, -5, -1) } }) })),
                      "CueTake")
            .empty());
}

TEST (SheetDocument, aBlockKeepsTogetherAndTheGapBelowItDoesNotHoldTheNext)
{
    const auto parts = partsOfSheet (sheetJSON ({ fullCueJSON() }));
    const auto styles = parsedXML (parts.at ("word/styles.xml"));
    const auto body = parsedXML (parts.at ("word/document.xml"));
    const auto table = all (*body, "w:tbl").at (1);

    for (const auto& row : table.children ("w:tr"))
        EXPECT_TRUE (row.child ("w:trPr").child ("w:cantSplit"));

    for (const auto& used : table.select_nodes (".//w:pStyle/@w:val"))
        EXPECT_TRUE (styles->select_node (
            ("//w:style[@w:styleId='" + std::string (used.attribute().value()) + "']/w:pPr/w:keepNext")
                .c_str()));

    EXPECT_STREQ (table.next_sibling().child ("w:pPr").child ("w:pStyle").attribute ("w:val").value(),
                  "CueSpacing");
    EXPECT_FALSE (styles->select_node ("//w:style[@w:styleId='CueSpacing']/w:pPr/w:keepNext"));
}

TEST (SheetDocument, anyNumberOfTakeRowsCountsAsTheMostThatArePrinted)
{
    const auto heights = [] (int rows)
    {
        std::vector<std::string> result;
        const auto body =
            bodyOf (sheetJSON ({ cueJSON ({ { "cueTakes", takesJSON (0, -1, -1, 1'000'000'000, rows) } }) }));

        for (const auto& height : all (*body, "w:trHeight"))
            result.emplace_back (height.attribute ("w:val").value());

        return result;
    };

    const auto expected = heights (4);

    for (const auto rows : { 5, 1'000'000, 100'000'000, 1'000'000'000 })
        EXPECT_EQ (heights (rows), expected) << rows;
}

TEST (SheetDocument, aCueThatIsTallerThanAPageMayFlow)
{
    const auto body =
        bodyOf (sheetJSON ({ cueJSON ({ { "cueText", richJSON (std::string (20000, 'x')) } }) }));
    const auto table = all (*body, "w:tbl").at (1);
    EXPECT_TRUE (table.select_nodes (".//w:cantSplit").empty());
    EXPECT_EQ (table.select_nodes (".//w:keepNext[@w:val='0']").size(),
               table.select_nodes (".//w:pPr").size());
}

TEST (SheetDocument, eachBlockOfACombinedDocumentBeginsAPage)
{
    const auto body = bodyOf (combinedJSON ({ { cueJSON() },
                                              {},
                                              { cueJSON ({ { "charName", "PAUL" } }) },
                                              { cueJSON ({ { "charName", "" } }) } }));
    EXPECT_THAT (textsOfStyle (*body, "CueBlockHeading"), ElementsAre ("ANNA", "PAUL", "No character"));
    EXPECT_EQ (all (*body, "w:pageBreakBefore").size(), 3U);
    EXPECT_EQ (all (*body, "w:tbl").size(), 4U); // one is the front matter
}

TEST (SheetDocument, theFrontMatterLeavesOutWhatIsEmptyButReelAndPictureVersion)
{
    auto json = sheetJSON ({});
    json["frontMatter"].update ({ { "soundSupervisor", "" },
                                  { "timelineName", " " },
                                  { "projectFilePath", "" },
                                  { "episodeReel", "" },
                                  { "pictureVersion", "" },
                                  { "charAndActor", "" } });
    const auto body = bodyOf (json);
    EXPECT_THAT (textsOfStyle (*body, "FrontMatterLabel"),
                 ElementsAre ("PROJECT", "PRODUCED BY", "SOUND STUDIO", "EPISODE/REEL", "PICTURE VERSION"));
    EXPECT_THAT (textsOfStyle (*body, "FrontMatterValue"),
                 ElementsAre ("Lantern Pictures", "Stage B", "", ""));
}

TEST (SheetDocument, theFooterTellsVersionLayoutDateAndPages)
{
    const auto footer = parsedXML (partsOfSheet (sheetJSON ({ cueJSON() })).at ("word/footer1.xml"));
    EXPECT_EQ (textOf (*footer), "  1.0.0\tDirector Layout  \xc2\xb7  21/11/2026\tPage 1 of 1");
    EXPECT_EQ (footer->select_nodes ("//w:fldSimple[@w:instr=' PAGE ']").size(), 1U);
    EXPECT_EQ (footer->select_nodes ("//w:fldSimple[@w:instr=' NUMPAGES ']").size(), 1U);
    EXPECT_EQ (all (*footer, "w:drawing").size(), 1U);
}

TEST (SheetDocument, withoutFooterAndFrontMatterThereAreJustTheCues)
{
    const auto parts = partsOfSheet ({ { "cueContentList", JSON::array ({ cueJSON() }) } });
    EXPECT_FALSE (parts.contains ("word/footer1.xml"));
    EXPECT_EQ (all (*parsedXML (parts.at ("word/document.xml")), "w:tbl").size(), 1U);
}

TEST (SheetDocument, thePaperIsTheOneOfTheSurroundings)
{
    const auto letter = parsedXML (
        partsOfSheet (sheetJSON ({ cueJSON() }), Paper::ofMillimetres (216, 279)).at ("word/document.xml"));
    EXPECT_STREQ (all (*letter, "w:pgSz").at (0).attribute ("w:w").value(), "12240");
    EXPECT_STREQ (all (*letter, "w:pgSz").at (0).attribute ("w:h").value(), "15840");
}

TEST (SheetDocument, propertiesTellTitleTimeAndLanguage)
{
    const auto core = parsedXML (partsOfSheet (sheetJSON ({ cueJSON() })).at ("docProps/core.xml"));
    EXPECT_STREQ (core->first_element_by_path ("cp:coreProperties/dc:title").child_value(),
                  "The Long Way Home");
    EXPECT_STREQ (core->first_element_by_path ("cp:coreProperties/dcterms:created").child_value(),
                  "2026-11-18T11:06:40Z");
    EXPECT_STREQ (core->first_element_by_path ("cp:coreProperties/dc:language").child_value(), "en-GB");
}

TEST (SheetDocument, theSameSheetGivesTheSameBytes)
{
    const auto sheet = sheetFromJSON (sheetJSON ({ fullCueJSON() }).dump());
    const Surroundings surroundings { {}, "en-GB", someDay };
    EXPECT_EQ (wordDocument (sheet, surroundings, [] (double) {}),
               wordDocument (sheet, surroundings, [] (double) {}));
}

TEST (SheetDocument, rightToLeftTextReadsFromTheRight)
{
    const auto body =
        bodyOf (sheetJSON ({ cueJSON ({ { "cueText", richJSON ("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d") } }) }));
    const auto paragraph = body->select_node ("//w:p[w:pPr/w:pStyle/@w:val='CueText']").node();
    EXPECT_TRUE (paragraph.child ("w:pPr").child ("w:bidi"));
    EXPECT_TRUE (paragraph.child ("w:r").child ("w:rPr").child ("w:rtl"));
    EXPECT_STREQ (all (*body, "w:bidiVisual").at (0).attribute ("w:val").value(),
                  "0"); // the block itself doesn't turn round
}

} // namespace DocxHandler::Testing
