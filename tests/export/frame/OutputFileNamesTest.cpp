// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/OutputFileNames.h"

#include "export/ExportSupport.h"

using namespace ExportSupport;

namespace
{

std::string nameOf (const juce::File& file) { return file.getFileName().toStdString(); }

/** The file of the one character of an export. */
std::string fileOf (const std::string& character, const std::string& base = "Reel 2",
                    const std::string& toBlank = {})
{
    OutputFileNames names ("/out", text (base), ".csv", text (toBlank));
    const auto file = names.nextFor (text (character));
    EXPECT_EQ (file.getParentDirectory().getFullPathName(), "/out") << character;
    return nameOf (file);
}

} // namespace

TEST (OutputFileNames, oneFileIsNamedByTheExport)
{
    EXPECT_EQ (OutputFileNames ("/out", "Reel 2", ".csv").single().getFullPathName(), "/out/Reel 2.csv");
}

TEST (OutputFileNames, aCharactersFileCarriesItsName) { EXPECT_EQ (fileOf ("Ann"), "Reel 2_Ann.csv"); }

TEST (OutputFileNames, theNameIsNotTrimmed) { EXPECT_EQ (fileOf (" Ann "), "Reel 2_ Ann .csv"); }

TEST (OutputFileNames, slashesBecomeUnderscores) { EXPECT_EQ (fileOf ("Ann/Bob//"), "Reel 2_Ann_Bob__.csv"); }

TEST (OutputFileNames, commasStayUnlessTheyAreToBecomeBlanks)
{
    EXPECT_EQ (fileOf ("Ann, the 1st"), "Reel 2_Ann, the 1st.csv");
    EXPECT_EQ (fileOf ("Ann, the/1st", "Reel 2", ","), "Reel 2_Ann  the_1st.csv");
}

TEST (OutputFileNames, noNameLeavesTheFolder)
{
    EXPECT_EQ (fileOf (".."), "Reel 2_...csv");
    EXPECT_EQ (fileOf ("../../etc/passwd"), "Reel 2_.._.._etc_passwd.csv");
    EXPECT_EQ (fileOf ("/etc/passwd", ""), "__etc_passwd.csv");
    EXPECT_EQ (fileOf ("..", ""), "_...csv");
    EXPECT_EQ (fileOf ("~root"), "Reel 2_~root.csv");
}

TEST (OutputFileNames, aTildeAtTheStartIsNobodysHome)
{
    EXPECT_EQ (fileOf ("Ann", "~draft"), "~draft_Ann.csv");
    EXPECT_EQ (OutputFileNames ("/out", "~root", ".csv").single().getFullPathName(), "/out/~root.csv");
}

TEST (OutputFileNames, noOtherCharacterIsTouched)
{
    const std::string steering = "Ann\n\tBob\x1b[2J\x7f\xc2\x85";
    EXPECT_EQ (fileOf (steering), "Reel 2_" + steering + ".csv");
    EXPECT_EQ (fileOf ("a\\b:c*?\"<>|"), "Reel 2_a\\b:c*?\"<>|.csv");
}

TEST (OutputFileNames, aNULCannotCutTheExtensionOff)
{
    EXPECT_EQ (fileOf (std::string ("Ann\0Bob", 7)), "Reel 2_Ann.csv");
}

TEST (OutputFileNames, lettersOfAnyLanguageStay)
{
    EXPECT_EQ (fileOf ("Zoë 少女 🎬"), "Reel 2_Zoë 少女 🎬.csv");
}

TEST (OutputFileNames, aNameThatIsTooLongLosesItsEnd)
{
    const auto longest = fileOf (std::string (1000, 'a'));
    EXPECT_EQ (longest, "Reel 2_" + std::string (255 - 11, 'a') + ".csv");
    EXPECT_EQ (longest.size(), 255u);
}

TEST (OutputFileNames, aBaseNameThatLeavesNoRoomIsKeptAndTheCharactersNameIsNot)
{
    for (const std::size_t length : { 250u, 300u })
        EXPECT_EQ (fileOf ("Ann", std::string (length, 'b')), std::string (length, 'b') + "_.csv");

    const std::string base (249, 'b');
    EXPECT_EQ (fileOf ("Ann", base), base + "_A.csv");
}

TEST (OutputFileNames, aNameOfFittingLengthStaysWhole)
{
    EXPECT_EQ (fileOf (std::string (244, 'a')).size(), 255u);
    EXPECT_EQ (fileOf (std::string (243, 'a')).size(), 254u);
}

TEST (OutputFileNames, noLetterIsCutInTwo)
{
    std::string clapperboards;

    for (int i = 0; i < 100; ++i)
        clapperboards += "🎬";

    const auto name = fileOf (clapperboards);
    EXPECT_EQ (name, "Reel 2_" + clapperboards.substr (0, 244) + ".csv");
    EXPECT_EQ (fileOf ("a" + clapperboards), "Reel 2_a" + clapperboards.substr (0, 240) + ".csv");
}

TEST (OutputFileNames, equalNamesGetFilesOfTheirOwn)
{
    OutputFileNames names ("/out", "R", ".csv");
    EXPECT_EQ (nameOf (names.nextFor ("Ann")), "R_Ann.csv");
    EXPECT_EQ (nameOf (names.nextFor ("Ann")), "R_Ann (2).csv");
    EXPECT_EQ (nameOf (names.nextFor ("Ann")), "R_Ann (3).csv");
}

TEST (OutputFileNames, namesThatBecomeEqualGetFilesOfTheirOwn)
{
    OutputFileNames names ("/out", "R", ".csv");
    EXPECT_EQ (nameOf (names.nextFor ("A/B")), "R_A_B.csv");
    EXPECT_EQ (nameOf (names.nextFor ("A_B")), "R_A_B (2).csv");
    EXPECT_EQ (nameOf (names.nextFor ("A_B (2)")), "R_A_B (2) (2).csv");
}

TEST (OutputFileNames, aNumberThatACharacterHasAlreadyIsPassedOver)
{
    OutputFileNames names ("/out", "R", ".csv");
    EXPECT_EQ (nameOf (names.nextFor ("Ann (2)")), "R_Ann (2).csv");
    EXPECT_EQ (nameOf (names.nextFor ("Ann")), "R_Ann.csv");
    EXPECT_EQ (nameOf (names.nextFor ("Ann")), "R_Ann (3).csv");
}

TEST (OutputFileNames, longNamesOfEqualBeginningsGetFilesOfTheirOwn)
{
    OutputFileNames names ("/out", "R", ".csv");
    const std::string beginning (400, 'a');
    const auto first = nameOf (names.nextFor (text (beginning + "1")));
    const auto second = nameOf (names.nextFor (text (beginning + "2")));
    EXPECT_EQ (first, "R_" + std::string (249, 'a') + ".csv");
    EXPECT_EQ (second, "R_" + std::string (245, 'a') + " (2).csv");
}

TEST (OutputFileNames, tenThousandUnknownCharactersAreNamedAtOnce)
{
    OutputFileNames names ("/out", "R", ".csv");
    juce::String last;

    for (int i = 0; i < 10000; ++i)
        last = names.nextFor (OutputFileNames::noCharacter).getFileName();

    EXPECT_EQ (last, "R_<no char> (10000).csv");
}
