// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventArendisTXTExporter.h"

#include "export/ExportSupport.h"
#include "export/GoldenFiles.h"

using namespace ExportSupport;

namespace
{

using Names = std::vector<std::string>;

const std::string head = "Title\r\n\r\n\r\n\r\n\r\n\r\n";
const std::string band = "(1. Band)\r\n";

std::string blanks (std::size_t number) { return std::string (number, ' '); }
std::string letters (std::size_t number) { return std::string (number, 'x'); }

class ArendisExportTest : public ExportTest
{
protected:
    std::string exported (const Events& listed, const std::string& title = "Title")
    {
        EXPECT_EQ (
            EventArendisTXTExporter().exportEvents (listed, folder.directory() + "/list.txt", text (title)),
            "");
        return folder.bytes ("list.txt");
    }

    /** The label of a character's line. */
    std::string label (const std::string& name)
    {
        cast = std::make_shared<ZEP::Core::ADRCharacterMap>();
        Event::setADRCharacterMap (cast);
        addCharacter ("a", name);
        const auto bytes = exported ({ event ({ "", 0, 25, "a", "Line" }) });
        return bytes.substr (head.size() + band.size(), 16);
    }
};

} // namespace

TEST_F (ArendisExportTest, aListIsAsItsGoldenFile)
{
    addCharacter ("a", "Anna");
    addCharacter ("b", "Bartholomew Cubbins");
    const Events list {
        event ({ "R1 Take 1", 0, 25, "a", "Good evening." }),
        event ({ "R1 Take 1", 30, 60, "b",
                 "Nobody told me that the harbour would be\nthis far away from the light." }),
        event ({ "R1 Take 1", 60, 60, "", "" }, EventTypeMarker),
        event ({ "A number that is far too long", 80, 90, "a", "Schöne Grüße - für 5 € 🎬" }),
        event ({ "", 100, 125, "", "Crowd" }),
    };
    expectGoldenFile ("arendis/script.txt", exported (list, "Der Größte, Folge 3"));
}

TEST_F (ArendisExportTest, anEmptyListIsTheTitleAndSixLineEnds) { EXPECT_EQ (exported ({}), head); }

TEST_F (ArendisExportTest, anEmptyTitleLeavesTheSixLineEnds)
{
    EXPECT_EQ (exported ({}, ""), "\r\n\r\n\r\n\r\n\r\n\r\n");
}

TEST_F (ArendisExportTest, theTitleIsUTF8AndEverythingElseIsNot)
{
    EXPECT_EQ (exported ({ event ({ "ö", 0, 25, "", "ä" }) }, "Ü"),
               "Ü\r\n\r\n\r\n\r\n\r\n\r\n" + blanks (56) + "\xf6\r\n" + band + blanks (16) + "\xe4\r\n");
}

TEST_F (ArendisExportTest, threeEventsOfOneCueNumberShareItsLine)
{
    const auto line = blanks (16) + "Line\r\n";
    EXPECT_EQ (exported (events (
                   { { "7", 0, 25, "", "Line" }, { "7", 0, 25, "", "Line" }, { "7", 0, 25, "", "Line" } })),
               head + blanks (56) + "7\r\n" + band + line + band + line + band + line);
}

TEST_F (ArendisExportTest, aCueNumberThatComesBackHasItsLineAgain)
{
    EXPECT_EQ (exported (events ({ { "7" }, { "8" }, { "7" } })),
               head + blanks (56) + "7\r\n" + band + blanks (16) + "\r\n" + blanks (56) + "8\r\n" + band
                   + blanks (16) + "\r\n" + blanks (56) + "7\r\n" + band + blanks (16) + "\r\n");
}

TEST_F (ArendisExportTest, anEmptyCueNumberHasALineOnlyBehindAnother)
{
    EXPECT_EQ (exported (events ({ { "" }, { "7" }, { "" } })),
               head + band + blanks (16) + "\r\n" + blanks (56) + "7\r\n" + band + blanks (16) + "\r\n"
                   + blanks (56) + "\r\n" + band + blanks (16) + "\r\n");
}

TEST_F (ArendisExportTest, numbersThatDifferInTheirEndHaveALineEach)
{
    const auto number = letters (16);
    EXPECT_EQ (exported (events ({ { number + "1" }, { number + "2" } })),
               head + blanks (56) + number + "\r\n" + band + blanks (16) + "\r\n" + blanks (56) + number
                   + "\r\n" + band + blanks (16) + "\r\n");
}

TEST_F (ArendisExportTest, eventsOfAnyTypeAreWritten)
{
    const auto bytes = exported ({ event ({ "", 0, 25, "", "a" }, EventTypeMarker),
                                   event ({ "", 0, 25, "", "b" }, EventTypeStreamer) });
    EXPECT_EQ (bytes, head + band + blanks (16) + "a\r\n" + band + blanks (16) + "b\r\n");
}

TEST_F (ArendisExportTest, aShortNameHasAColonAndIsFilledUp)
{
    EXPECT_EQ (label ("Ann"), "Ann:" + blanks (12));
    EXPECT_EQ (label (letters (15)), letters (15) + ":");
    EXPECT_EQ (label (""), ":" + blanks (15));
    EXPECT_EQ (label ("Zoë Œ"), "Zo\xeb ?:" + blanks (10));
}

TEST_F (ArendisExportTest, aLongNameKeepsItsTwoEnds)
{
    EXPECT_EQ (label ("Bartholomew Cubbins"), "Barthol~Cubbins:");
    EXPECT_EQ (label ("0123456789abcdef"), "0123456~9abcdef:");
}

TEST_F (ArendisExportTest, aLineBreakInANameStays)
{
    EXPECT_EQ (label ("A\nB"), "A\nB:" + blanks (12));
    EXPECT_EQ (label ("Bartho\nomew Cub\nins"), "Bartho\n~Cub\nins:");
}

TEST_F (ArendisExportTest, anEmptyTextIsTheLabelAlone)
{
    addCharacter ("a", "Ann");
    EXPECT_EQ (exported (events ({ { "", 0, 25, "a" }, { "", 0, 25, "a", "\n\r" } })),
               head + band + "Ann:" + blanks (12) + "\r\n" + band + "Ann:" + blanks (12) + "\r\n");
}

TEST_F (ArendisExportTest, aTextOfThirtyNineBytesHasOneLineAndOneOfFortyTwo)
{
    EXPECT_EQ (exported (events ({ { "", 0, 25, "", letters (39) } })),
               head + band + blanks (16) + letters (39) + "\r\n");
    EXPECT_EQ (exported (events ({ { "", 0, 25, "", letters (39) + "y" } })),
               head + band + blanks (16) + letters (39) + "\r\n" + blanks (16) + "y\r\n");
    EXPECT_EQ (exported (events ({ { "", 0, 25, "", letters (78) } })),
               head + band + blanks (16) + letters (39) + "\r\n" + blanks (16) + letters (39) + "\r\n");
}

TEST_F (ArendisExportTest, onlyTheFirstLineHasTheLabel)
{
    addCharacter ("a", "Ann");
    EXPECT_EQ (exported (events ({ { "", 0, 25, "a", letters (40) } })),
               head + band + "Ann:" + blanks (12) + letters (39) + "\r\n" + blanks (16) + "x\r\n");
}

TEST_F (ArendisExportTest, lineBreaksAreRemovedAndBlanksStay)
{
    EXPECT_EQ (exported (events ({ { "", 0, 25, "", "a\r\nb  c\td\re" } })),
               head + band + blanks (16) + "ab  c\tde\r\n");
}

TEST_F (ArendisExportTest, charactersOutsideOfTheEncodingAreQuestionMarks)
{
    EXPECT_EQ (exported (events ({ { "№", 0, 25, "", "€Ł🎬" } })),
               head + blanks (56) + "?\r\n" + band + blanks (16) + "???\r\n");
}

TEST_F (ArendisExportTest, anOlderFileIsReplaced)
{
    folder.write ("list.txt", std::string (50000, 'o'));
    EXPECT_EQ (exported ({}), head);
}

TEST_F (ArendisExportTest, aPathThatCannotBeOpenedIsNotReported)
{
    EXPECT_EQ (EventArendisTXTExporter().exportEvents ({}, folder.directory() + "/missing/list.txt", "Title"),
               "");
    EXPECT_EQ (folder.names(), Names());
}
