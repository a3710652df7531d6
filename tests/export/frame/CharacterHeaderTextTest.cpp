// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/CharacterHeaderText.h"

#include "export/ExportSupport.h"

using namespace ExportSupport;
using ZEP::Core::ADRCharacter;

namespace
{

std::shared_ptr<ADRCharacter> role (const juce::String& name, const juce::String& actor = {})
{
    auto character = std::make_shared<ADRCharacter> (name);
    character->actor = actor;
    return character;
}

constexpr CharacterHeaderRule asTheyStand {};
constexpr CharacterHeaderRule trimmed { true, true, true };
constexpr CharacterHeaderRule repeated { false, false, false };

} // namespace

TEST (CharacterHeaderText, namesTheRoleAndWhoSpeaksIt)
{
    EXPECT_EQ (characterHeaderText (role ("Ann", "Mary")), "Ann (Mary)");
}

TEST (CharacterHeaderText, namesTheRoleAloneWhileNobodySpeaksIt)
{
    EXPECT_EQ (characterHeaderText (role ("Ann")), "Ann");
}

TEST (CharacterHeaderText, isEmptyWithoutACharacter) { EXPECT_EQ (characterHeaderText (nullptr), ""); }

TEST (CharacterHeaderText, blanksStayUnlessTheyAreTrimmed)
{
    EXPECT_EQ (characterHeaderText (role (" Ann ", " Mary "), asTheyStand), " Ann  ( Mary )");
    EXPECT_EQ (characterHeaderText (role (" Ann ", " Mary "), trimmed), "Ann (Mary)");
    EXPECT_EQ (characterHeaderText (role (" Ann ", " Mary "), { true, false, true }), "Ann ( Mary )");
}

TEST (CharacterHeaderText, anActorOfBlanksIsNobodyOnceTrimmed)
{
    EXPECT_EQ (characterHeaderText (role ("Ann", "  "), trimmed), "Ann");
}

TEST (CharacterHeaderText, severalAreJoinedEachOnce)
{
    const std::vector cast { role ("Bob"), role ("Ann", "Mary"), role ("Bob"), role ("bob") };
    EXPECT_EQ (joinedCharacterHeaderText (cast), "Bob, Ann (Mary), bob");
    EXPECT_EQ (joinedCharacterHeaderText (cast, repeated), "Bob, Ann (Mary), Bob, bob");
}

TEST (CharacterHeaderText, whatIsNoCharacterIsLeftOut)
{
    EXPECT_EQ (joinedCharacterHeaderText ({ nullptr, role ("Ann"), nullptr }), "Ann");
    EXPECT_EQ (joinedCharacterHeaderText ({}), "");
}

class CharacterHeaderTextOfEvents : public ExportTest
{
};

TEST_F (CharacterHeaderTextOfEvents, followsTheOrderOfTheEvents)
{
    addCharacter ("a", "Ann", "AN", "Mary");
    addCharacter ("b", "Bob");
    const auto list = events ({ { "1", 0, 25, "b" },
                                { "2", 50, 75, "a" },
                                { "3", 100, 125, "" },
                                { "4", 150, 175, "b" },
                                { "5", 200, 225, "gone" } });
    EXPECT_EQ (joinedCharacterHeaderTextOfEvents (list), "Bob, Ann (Mary)");
}
