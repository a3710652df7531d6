// SPDX-License-Identifier: GPL-3.0-only
// Names of a stranger's list become names of files: they stay in the folder that the user has named, and none takes another's place.
#include "overmarks/ProgramWordFixture.h"

#include <fstream>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

namespace
{

using nlohmann::ordered_json;

class ProgramNamesTest : public ProgramWordTest
{
protected:
    /** A list with a cue for each character of these names, as film/x.json. */
    void writeList (const Names& characters) const
    {
        auto cast = ordered_json::array();
        auto events = ordered_json::array();

        for (std::size_t i = 0; i < characters.size(); ++i)
        {
            cast.push_back (
                { { "id", "../../id" + std::to_string (i) }, { "name", characters[i] }, { "actor", "../" } });
            const int start = 100 * static_cast<int> (i);
            events.push_back ({ { "type", 8 },
                                { "cueNumber", "N" + std::to_string (i) },
                                { "characterID", "../../id" + std::to_string (i) },
                                { "startFrameIndex", start },
                                { "inPointFrameIndex", start + 50 },
                                { "endFrameIndex", start + 90 },
                                { "text", "words" + std::to_string (i) } });
        }

        file ("film").createDirectory();
        write (
            "film/x.json",
            ordered_json { { "overmarks", 1 },
                           { "name", "../../name" },
                           { "characters", cast },
                           { "events", events },
                           { "documents", { { "title", "../../title" }, { "episodeReel", "/etc/reel" } } } }
                .dump());
    }

    /** What the tool notes of its runs isn't counted. */
    Names everythingBut (const std::string& folderName) const
    {
        Names names;

        for (const auto& name : filesInFolder())
            if (! name.starts_with (folderName + "/") && ! name.starts_with ("resources/"))
                names.push_back (name);

        return names;
    }

    /** Exports by character and returns what is in the folder, having seen that nothing else has changed. */
    Names exported (const std::string& format, std::vector<std::string> options = {}) const
    {
        file ("out").deleteRecursively();
        file ("out").createDirectory();
        const auto before = everythingBut ("out");
        std::vector<std::string> words { "export",         "film/x.json", "-o",  "out",
                                         "--by-character", "--format",    format };
        words.insert (words.end(), options.begin(), options.end());
        const auto result = start (words);
        EXPECT_EQ (result.status, 0) << result.errors;
        EXPECT_THAT (result.output + result.errors, Not (HasSubstr ("\x1b"))) << "names steer no terminal";
        EXPECT_EQ (everythingBut ("out"), before);
        return found ("out");
    }

    static std::string longOne (char last) { return std::string (4000, 'a') + last; }

    const Names hostile { "..",
                          "../../x",
                          "/etc/x",
                          ".",
                          "",
                          " ",
                          "-rf",
                          "~root",
                          ".hidden",
                          "a\\b",
                          "CON",
                          "NUL.txt",
                          "x. ",
                          "x ",
                          "x.",
                          "a:b",
                          "a*?<>|\"b",
                          longOne ('1'),
                          longOne ('2'),
                          "new\nline",
                          "esc\x1b[2J",
                          "$(touch hacked)",
                          "`touch hacked`",
                          "; touch hacked",
                          "%2e%2e%2f",
                          "..\\..\\x",
                          "J\xc3\xa4ger",
                          "x/../../y",
                          "a,b",
                          "%s%n" };
};

class NamesInFormat : public ProgramNamesTest, public testing::WithParamInterface<const char*>
{
};

TEST_P (NamesInFormat, stayInTheFolderAndLoseNothing)
{
    writeList (hostile);
    const auto names = exported (GetParam());
    EXPECT_THAT (names, SizeIs (hostile.size()));

    for (const auto& name : names)
    {
        EXPECT_LE (name.size(), 255u);
        EXPECT_EQ (name.substr (0, 2), "x_") << name;
        EXPECT_GT (file ("out").getChildFile (juce::String::fromUTF8 (name.c_str())).getSize(), 0) << name;
    }

    EXPECT_THAT (names, IsSupersetOf ({ StartsWith ("x_esc\x1b[2J."), StartsWith ("x_new\nline.") }))
        << "nothing but the separator of folders is touched";
    EXPECT_FALSE (file ("hacked").exists());
}

INSTANTIATE_TEST_SUITE_P (Formats, NamesInFormat, testing::Values ("csv", "ttal", "xlsx", "html"));

TEST_F (ProgramNamesTest, drawnSheetsStayInTheFolder)
{
    writeList ({ "../../x", "/etc/x", "x/../../y" });
    EXPECT_THAT (exported ("pdf", { "--engine", "drawn" }),
                 ElementsAre ("x_.._.._x.pdf", "x__etc_x.pdf", "x_x_.._.._y.pdf"));
}

TEST_F (ProgramNamesTest, wordSheetsStayInTheFolder)
{
    install (writesDocuments);
    writeList ({ "../../x", "/etc/x", "$(touch hacked)", "`touch hacked`", "\"; touch hacked; \"", "a,b" });
    EXPECT_THAT (exported ("docx"),
                 testing::UnorderedElementsAre ("x_.._.._x.docx", "x__etc_x.docx", "x_$(touch hacked).docx",
                                                "x_`touch hacked`.docx", "x_\"; touch hacked; \".docx",
                                                "x_a b.docx"));
    EXPECT_FALSE (file ("hacked").exists());
    EXPECT_FALSE (file ("temporary/hacked").exists());
}

TEST_F (ProgramNamesTest, textsOfFixedColumnsAreOneFileWhateverTheNames)
{
    writeList (hostile);
    EXPECT_THAT (exported ("asc,arendis"), ElementsAre ("x.asc", "x.txt"));
}

TEST_F (ProgramNamesTest, takerListsAreOneFileWhateverTheirCueNumbersSay)
{
    writeList ({ "../../x" });
    file ("out").deleteRecursively();
    file ("out").createDirectory();
    ASSERT_EQ (start ({ "export", "film/x.json", "-o", "out", "--format", "ds-taker,euro-taker" }).status, 0);
    EXPECT_THAT (found ("out"), SizeIs (2));

    for (const auto& name : found ("out"))
        EXPECT_EQ (name.substr (0, 1), "x") << name;
}

TEST_F (ProgramNamesTest, neitherNameNorTitleNorReelOfAListNamesAFile)
{
    writeList ({ "ANNA" });
    ASSERT_EQ (start ({ "export", "film/x.json", "-o", "out", "--format", "csv,ttal,asc" }).status, 0);
    EXPECT_THAT (found ("out"), ElementsAre ("x.asc", "x.csv", "x.ttal"));
}

TEST_F (ProgramNamesTest, aNameWithANULIsRefused)
{
    writeList ({ "ANNA" });
    auto text = read ("film/x.json");
    text.replace (text.find ("ANNA"), 4, "AN\\u0000NA/../../x");
    write ("film/x.json", text);

    const auto result = start ({ "export", "film/x.json", "-o", "out", "--by-character", "--format", "csv" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.errors, "overmarks: film/x.json: characters[0].name: the text holds a NUL character\n");
    EXPECT_THAT (found ("out"), IsEmpty());
}

// ---- links -----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramNamesTest, aLinkOfTheUsersOwnIsKeptAndWhatItLeadsToReplaced)
{
    writeList ({ "ANNA" });
    write ("real.csv", "old");
    ASSERT_TRUE (file ("real.csv").createSymbolicLink (file ("out/x.csv"), true));
    EXPECT_EQ (start ({ "export", "film/x.json", "-o", "out", "--format", "csv" }).status, 1)
        << "the file is there";
    EXPECT_EQ (read ("real.csv"), "old");
    ASSERT_EQ (start ({ "export", "film/x.json", "-o", "out", "--format", "csv", "--force" }).status, 0);
    EXPECT_TRUE (file ("out/x.csv").isSymbolicLink());
    EXPECT_THAT (read ("real.csv"), HasSubstr ("words0"));
}

TEST_F (ProgramNamesTest, linksBehindLinksAreKeptAll)
{
    writeList ({ "ANNA" });
    write ("real.json", "old");
    ASSERT_TRUE (file ("real.json").createSymbolicLink (file ("second.json"), true));
    ASSERT_TRUE (file ("second.json").createSymbolicLink (file ("first.json"), true));
    ASSERT_EQ (run ({ "convert", "film/x.json", "first.json", "--force" }).status, 0);
    EXPECT_TRUE (file ("first.json").isSymbolicLink());
    EXPECT_TRUE (file ("second.json").isSymbolicLink());
    EXPECT_THAT (read ("real.json"), HasSubstr ("words0"));
}

/** In a folder of everybody's lies a link that somebody else has put there. Only the administrator can give a link away; for
    anybody else the link is the user's own, and followed. */
TEST_F (ProgramNamesTest, aStrangersLinkInAFolderOfEverybodysIsNotFollowed)
{
    writeList ({ "ANNA" });
    write ("mine", "kept");
    ASSERT_EQ (::chmod (path ("out").c_str(), 01777), 0);

    for (const auto* name : { "out/x.csv", "out/x.json", "out/x.html" })
    {
        ASSERT_TRUE (file ("mine").createSymbolicLink (file (name), true));
        const bool isGiven = ::getuid() == 0;
        ASSERT_EQ (isGiven ? ::lchown (path (name).c_str(), 12345, 12345) : 0, 0);
        const auto extension = file (name).getFileExtension();
        const auto result = extension == ".html" ? run ({ "stats", "film/x.json", "--html", name, "--force" })
                                                 : run ({ "convert", "film/x.json", name, "--force" });
        EXPECT_EQ (result.status, isGiven ? 1 : 0) << name << result.errors;
        EXPECT_EQ (read ("mine") == "kept", isGiven) << name;

        EXPECT_EQ (result.errors.find ("Can't write " + path (name) + ": Permission denied")
                       != std::string::npos,
                   isGiven)
            << name << result.errors;
        EXPECT_TRUE (file (name).isSymbolicLink());
    }
}

TEST_F (ProgramNamesTest, aLineBreakInANameForgesNoMessage)
{
    write ("a\nEverything was saved.dbf", "\x03 no table");
    const auto result = run ({ "list", "a\nEverything was saved.dbf" });
    EXPECT_THAT (result.errors, HasSubstr ("a Everything was saved.dbf"));
    EXPECT_THAT (result.errors, Not (HasSubstr ("\nEverything")));
}

} // namespace
