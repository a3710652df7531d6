// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventASCExporter.h"

#include "export/ExportSupport.h"
#include "export/GoldenFiles.h"
#include "support/CueLists.h"

using namespace ExportSupport;

namespace
{

using Names = std::vector<std::string>;

std::string blanks (std::size_t number) { return std::string (number, ' '); }
std::string letters (std::size_t number) { return std::string (number, 'x'); }

class ASCExportTest : public ExportTest
{
protected:
    std::string exported (const Events& listed)
    {
        EXPECT_EQ (EventASCExporter().exportEvents (listed, folder.directory() + "/list.asc"), "");
        return folder.bytes ("list.asc");
    }

    /** The text column of a single cue, without the blanks behind it. */
    std::string textColumn (const std::string& words)
    {
        const auto cue = event ({ "7" });
        // Setters put breaks of a word processor right; a project of another program may hold them.
        ZEP::Overmarks::Testing::setField (*cue, "text", ZEP::Core::RichTextString (text (words)));
        auto line = exported ({ cue }).substr (24, 37);
        return line.substr (0, line.find_last_not_of (' ') + 1);
    }
};

} // namespace

TEST_F (ASCExportTest, aListIsAsItsGoldenFile)
{
    addCharacter ("a", "Anna");
    addCharacter ("b", "Bartholomew Cubbins III");
    addCharacter ("w", "Frau Größe");
    const Events list {
        event ({ "AN 1", 0, 25, "a", "Good evening." }),
        event ({ "BC 12", 30, 60, "b",
                 "Nobody told me that the harbour would be this far away from the light." }),
        event ({ "", 70, 75, "", "never listed" }, EventTypeMarker),
        event ({ "FG 2", 80, 90, "w", "Schöne Grüße\nvon der Straße - für 5 € 🎬" }),
        event ({ "X1", 100, 125 }),
    };
    expectGoldenFile ("asc/cues.asc", exported (list));
}

TEST_F (ASCExportTest, theFirstLineHasNameTextAndNumberInTheirColumns)
{
    addCharacter ("a", "Ann");
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "a", "Line" }) }),
               "Ann" + blanks (21) + "Line" + blanks (33) + "7\r\n");
}

TEST_F (ASCExportTest, aNameOfTwentyTwoBytesLeavesTwoBlanks)
{
    addCharacter ("a", letters (22));
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "a", "Line" }) }).substr (0, 28), letters (22) + "  Line");
}

TEST_F (ASCExportTest, aLongerNameLosesItsEnd)
{
    addCharacter ("a", letters (22) + "y");
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "a", "Line" }) }).substr (0, 28), letters (22) + "  Line");
}

TEST_F (ASCExportTest, aTextOfThirtyFiveBytesHasOneLine)
{
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "", letters (35) }) }),
               blanks (24) + letters (35) + "  7\r\n");
}

TEST_F (ASCExportTest, aTextOfThirtySixBytesHasTwo)
{
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "", letters (35) + "y" }) }),
               blanks (24) + letters (35) + "  7\r\n" + blanks (24) + "y\r\n");
}

TEST_F (ASCExportTest, aLongTextGoesOnInPiecesOfThirtyFive)
{
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "", letters (105) }) }),
               blanks (24) + letters (35) + "  7\r\n" + blanks (24) + letters (35) + "\r\n" + blanks (24)
                   + letters (35) + "\r\n");
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "", letters (71) }) }), blanks (24) + letters (35) + "  7\r\n"
                                                                            + blanks (24) + letters (35)
                                                                            + "\r\n" + blanks (24) + "x\r\n");
}

TEST_F (ASCExportTest, lettersAreCountedAsTheBytesOfTheFile)
{
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "", "ä" + letters (34) }) }),
               blanks (24) + "\xe4" + letters (34) + "  7\r\n");
}

TEST_F (ASCExportTest, aCueNumberIsWholeHoweverLong)
{
    EXPECT_EQ (exported ({ event ({ letters (200), 0, 25 }) }), blanks (61) + letters (200) + "\r\n");
}

TEST_F (ASCExportTest, breaksDoubleBlanksAndTabsAreRemovedInThisOrder)
{
    EXPECT_EQ (textColumn ("a\nb"), "ab");
    EXPECT_EQ (textColumn ("a\r\fb"), "ab");
    EXPECT_EQ (textColumn ("a\r\n\fb"), "ab");
    EXPECT_EQ (textColumn ("a  b"), "ab");
    EXPECT_EQ (textColumn ("a   b"), "a b");
    EXPECT_EQ (textColumn ("a \n b"), "ab");
    EXPECT_EQ (textColumn ("a\tb"), "ab");
    EXPECT_EQ (textColumn ("a \t b"), "a  b");
    EXPECT_EQ (textColumn ("a\rb"), "a\rb");
}

TEST_F (ASCExportTest, aNameLosesItsBreaksAlone)
{
    addCharacter ("a", "A\nn\r\fn  \tB");
    EXPECT_EQ (exported ({ event ({ "7", 0, 25, "a" }) }).substr (0, 24), "Ann  \tB" + blanks (17));
}

TEST_F (ASCExportTest, charactersOutsideOfTheEncodingAreQuestionMarks)
{
    addCharacter ("a", "Zoë Œ");
    EXPECT_EQ (exported ({ event ({ "№7", 0, 25, "a", "(少) Ł 🎬 é" }) }),
               "Zo\xeb ?" + blanks (19) + "(?) ? ? \xe9" + blanks (28) + "?7\r\n");
}

TEST_F (ASCExportTest, aListOfMarkersIsAnEmptyFile)
{
    EXPECT_EQ (exported ({ event ({ "1" }, EventTypeMarker), event ({ "2" }, EventTypeStreamer),
                           event ({ "3" }, EventTypeFlutter), event ({ "4" }, EventTypeFadeIn) }),
               "");
    EXPECT_EQ (folder.names(), Names { "list.asc" });
    EXPECT_EQ (exported ({}), "");
}

TEST_F (ASCExportTest, onlyTheLastOfTheListHasNoBlankLineBehindIt)
{
    const auto cue = [this] { return event ({ "7" }); };
    const auto line = blanks (61) + "7\r\n";
    EXPECT_EQ (exported ({ cue(), cue() }), line + "\r\n" + line);
    EXPECT_EQ (exported ({ cue(), event ({ "1" }, EventTypeMarker) }), line + "\r\n");
    EXPECT_EQ (exported ({ event ({ "1" }, EventTypeMarker), cue() }), line);
    const auto same = cue();
    EXPECT_EQ (exported ({ same, same }), line + "\r\n" + line);
}

TEST_F (ASCExportTest, anOlderFileIsReplaced)
{
    folder.write ("list.asc", std::string (50000, 'o'));
    EXPECT_EQ (exported ({ event ({ "7" }) }), blanks (61) + "7\r\n");
}

TEST_F (ASCExportTest, aPathThatCannotBeOpenedIsNotReported)
{
    EXPECT_EQ (
        EventASCExporter().exportEvents ({ event ({ "7" }) }, folder.directory() + "/missing/list.asc"), "");
    EXPECT_EQ (folder.names(), Names());
}
