// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventRowReader.h"

#include "import/frame/EventRowSupport.h"

namespace ZEP::Overmarks::Testing
{
namespace
{

class EventRowReaderCastTest : public EventRowsTest
{
protected:
    static NamedCells row (const std::string& name, const std::string& prefix, const std::string& actor)
    {
        return { { "Text", "t" }, { "Character", name }, { "Char Prefix", prefix }, { "Actor", actor } };
    }

    /** "Anna A B. Miller", one line for each character. */
    Lines castLines() const
    {
        Lines lines;
        for (const auto& character : cast->characters())
            lines.push_back (
                (character->name + "/" + character->prefix + "/" + character->actor).toStdString());
        return lines;
    }
};

TEST_F (EventRowReaderCastTest, charactersAreMadeOnceInTheOrderOfTheRows)
{
    const auto result = read ({ row ("Ben", "B", "C. Adams"), row ("Anna", "A", "B. Miller"),
                                row (" Ben ", "B", "C. Adams"), row ("", "", ""), row ("ben", "", "") });
    EXPECT_EQ (problems (result), Lines());
    EXPECT_EQ (castLines(), (Lines { "Ben/B/C. Adams", "Anna/A/B. Miller", "ben//" }));
    EXPECT_EQ (result.events[0]->getCharacterID(), result.events[2]->getCharacterID());
    EXPECT_EQ (result.events[3]->getCharacterID(), juce::String());
    EXPECT_EQ (result.events[4]->character()->name, juce::String ("ben"));
}

TEST_F (EventRowReaderCastTest, charactersOfTheProjectAreUsedAgain)
{
    const auto anna = addCharacter ("Anna", "B. Miller", "A");
    const auto result = read ({ row ("Anna", "", ""), row ("Anna", "A", "B. Miller") });
    EXPECT_EQ (problems (result), Lines());
    EXPECT_EQ (result.events[0]->getCharacterID(), anna);
    EXPECT_EQ (result.events[1]->getCharacterID(), anna);
    EXPECT_EQ (castLines(), Lines { "Anna/A/B. Miller" });
}

TEST_F (EventRowReaderCastTest, whatTheFirstRowLeavesOpenALaterRowFills)
{
    addCharacter ("Ben");
    const auto result = read ({ row ("Anna", "", ""), row ("Anna", "", "B. Miller"), row ("Anna", "A", ""),
                                row ("Ben", "B", "C. Adams") });
    EXPECT_EQ (problems (result), Lines());
    EXPECT_EQ (castLines(), (Lines { "Ben/B/C. Adams", "Anna/A/B. Miller" }));
}

TEST_F (EventRowReaderCastTest, aSecondActorOfOneCharacterIsAProblemOfEveryRowThatNamesHim)
{
    const auto result = read (
        { row ("Anna", "A", "B. Miller"), row ("Anna", "A", "D. Young"), row ("Anna", "X", "D. Young") });
    EXPECT_EQ (
        problems (result),
        (Lines {
            "1 Actor: the actor \"D. Young\" is not used, because the character \"Anna\" already has \"B. Miller\"",
            "2 Char Prefix: the prefix \"X\" is not used, because the character \"Anna\" already has \"A\"",
            "2 Actor: the actor \"D. Young\" is not used, because the character \"Anna\" already has \"B. Miller\"" }));
    EXPECT_EQ (castLines(), Lines { "Anna/A/B. Miller" });
}

TEST_F (EventRowReaderCastTest, anActorWithoutACharacterIsAProblem)
{
    EXPECT_EQ (complaints (row (" ", "A", "B. Miller")),
               (Lines { "Char Prefix: the prefix \"A\" is not used, because the row names no character",
                        "Actor: the actor \"B. Miller\" is not used, because the row names no character" }));
    EXPECT_EQ (castLines(), Lines());
}

TEST_F (EventRowReaderCastTest, oneActorMayPlayManyCharacters)
{
    EXPECT_EQ (problems (read ({ row ("Anna", "A", "B. Miller"), row ("Maid", "A", "B. Miller") })), Lines());
}

TEST_F (EventRowReaderCastTest, withoutACastTheReaderMakesOne)
{
    const EventRowReader reader (timeInfo, nullptr);
    const CueTable table ({ row ("Anna", "A", "B. Miller") });
    const auto made = reader.read (table.rows, table.columns, 0).events.at (0);
    ASSERT_EQ (reader.characterMap()->characters().size(), 1u);
    EXPECT_EQ (reader.characterMap()->characterForID (made->getCharacterID())->name, juce::String ("Anna"));
    EXPECT_TRUE (cast->characters().empty());
}

TEST_F (EventRowReaderCastTest, charactersMayBeRenamedOnceAListIsRead)
{
    (void)read ({ row ("Anna", "", "") });
    cast->characters()[0]->name = "Hannah";
    (void)read ({ row ("Anna", "", ""), row ("Hannah", "H", "") });
    EXPECT_EQ (castLines(), (Lines { "Hannah/H/", "Anna//" }));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
