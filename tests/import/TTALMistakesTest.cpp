// SPDX-License-Identifier: GPL-3.0-only
// Files that are damaged, incomplete or meant to do harm: what is said of them, and what is left afterwards.
#include "core/text/StringUtil.h"
#include "import/ttal/TTALSupport.h"

using namespace TTALSupport;

namespace
{

constexpr auto cantBeOpened = "The file could not be opened.";
constexpr auto cantBeParsed = "The file content could not be parsed properly.";
constexpr auto invalidRate = "FPS value in metadata block is either not present or set to an invalid value.";

/** A file whose meta block has this in the place of one of its members. */
std::string withMeta (const std::string& member, const std::string& replacement)
{
    return replaced (file (event ({})), member, replacement);
}

} // namespace

TEST_F (TTALImport, aFileThatIsNotThereIsTold)
{
    importPath ((folder.path / "missing.ttal").string(), nullptr);
    EXPECT_EQ (message, cantBeOpened);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (importer->columnMap.size(), 8u);
    EXPECT_EQ (importer->characterMap, nullptr);
    EXPECT_EQ (importer->fps, -1);

    importPath (folder.path.string(), nullptr);
    EXPECT_EQ (message, cantBeOpened);
}

TEST_F (TTALImport, damagedFilesCantBeParsed)
{
    for (const auto* name : { "empty", "truncated", "garbage" })
    {
        importFile (std::string ("ttal/") + name + ".ttal");
        EXPECT_EQ (message, cantBeParsed) << name;
        EXPECT_TRUE (importer->rows.empty()) << name;
        EXPECT_EQ (importer->columnMap.size(), 8u) << name;
        EXPECT_TRUE (importer->jsonRoot.isVoid()) << name;
    }
}

TEST_F (TTALImport, aFileThatBreaksOffAnywhereCantBeParsed)
{
    const auto whole = bytesOfFile (dataFile ("ttal/three_lines.ttal"));
    for (std::size_t length = 0; length < whole.size() - 2; length += 3)
    {
        import (whole.substr (0, length));
        ASSERT_EQ (message, cantBeParsed) << length;
    }
}

TEST_F (TTALImport, aRootThatIsNoObjectCantBeParsed)
{
    for (const auto* text : { "[]", "[{}]", "7", "\"text\"", "null", "   " })
    {
        import (text);
        EXPECT_EQ (message, cantBeParsed) << text;
        EXPECT_TRUE (importer->rows.empty()) << text;
    }
}

TEST_F (TTALImport, endlessNestingCantBeParsed)
{
    import (std::string (1000000, '['));
    EXPECT_EQ (message, cantBeParsed);

    std::string deep;
    for (int i = 0; i < 100000; ++i)
        deep += "{\"events\":";
    import (deep);
    EXPECT_EQ (message, cantBeParsed);

    import (file (event ({ { "styles", std::string (100000, '[') + std::string (100000, ']') } })));
    EXPECT_EQ (message, cantBeParsed);
}

TEST_F (TTALImport, aMarkAndUTF16AreUnderstood)
{
    importFile ("ttal/three_lines.ttal");
    const auto expected = textsOf (importer->rows);
    for (const auto* name : { "ttal/bom.ttal", "ttal/utf16.ttal" })
    {
        importFile (name);
        EXPECT_EQ (message, "") << name;
        EXPECT_EQ (textsOf (importer->rows), expected) << name;
    }
}

TEST_F (TTALImport, theEncodingIsWhatWasReadAndNotWhatWasAskedFor)
{
    const auto encodingOf = [this] (const std::string& bytes)
    {
        import (bytes);
        EXPECT_EQ (message, "");
        importer->parse (message, TextEncodingMacOSRoman);
        return importer->encoding;
    };

    EXPECT_EQ (encodingOf (file (event ({}))), TextEncodingUTF8);
    EXPECT_EQ (encodingOf (file (event ({ { "cue", "\"ä\"" } }))), TextEncodingUTF8);
    EXPECT_EQ (encodingOf ("\xef\xbb\xbf" + file (event ({}))), TextEncodingUTF8);
    EXPECT_EQ (encodingOf (file (event ({ { "cue", "\"\xe4\"" } }))), TextEncodingWindows1252);
    EXPECT_EQ (encodingOf (bytesOfFile (dataFile ("ttal/utf16.ttal"))), TextEncodingUTF16);
}

TEST_F (TTALImport, withoutAMarkUTF16IsNotDetected)
{
    import (bytesOfFile (dataFile ("ttal/utf16.ttal")).substr (2));
    EXPECT_EQ (message, cantBeParsed);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
}

TEST_F (TTALImport, theTextEndsAtItsFirstNUL)
{
    const std::string nul (1, '\0');
    import (withMeta ("FPS_2500", "FPS_" + nul + "2500"));
    EXPECT_EQ (message, cantBeParsed);

    import (file (event ({})) + nul + "anything");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 1u);

    auto utf16 = bytesOfFile (dataFile ("ttal/utf16.ttal"));
    import (utf16 + std::string (2, '\0') + "any");
    EXPECT_EQ (message, "");
    import (utf16.insert (40, std::string (2, '\0')));
    EXPECT_EQ (message, cantBeParsed);
}

TEST_F (TTALImport, textThatIsNoUnicodeIsTakenForWindows1252)
{
    importFile ("ttal/wrong_encoding.ttal");
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 2), "Schönen Abend, Frau Weiß.");
    EXPECT_EQ (cell (1, 2), "Äh …\ndoch? ");
}

TEST_F (TTALImport, aHugeTextIsATextLikeAnyOther)
{
    const std::string huge (5000000, 'x');
    import (file (event ({ { "txt", "\"" + huge + "\"" }, { "cue", "\"" + huge + "\"" } })));
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 2), huge);
    EXPECT_EQ (cell (0, 4), huge);
}

TEST_F (TTALImport, aLongLineAndALongNameComeWhole)
{
    importFile ("ttal/huge_field.ttal");
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 2), std::string (30000, 'x'));
    EXPECT_EQ (cell (0, 3), std::string (30000, 'x'));
}

TEST_F (TTALImport, escapedTextThatIsNoUnicodeIsMadeHarmless)
{
    import (file (event ({ { "txt", R"("a\ud800b")" } })));
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 2), "a\xef\xbf\xbd"
                            "b");
}

// ---- blocks --------------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, missingBlocksAreNamedInTheOrderOfTheFormat)
{
    import ("{}");
    EXPECT_EQ (message,
               "The TTAL file does not contain all mandatory objects. Missing: meta events characters ");
    import ("{" + block ("characters", "") + "}");
    EXPECT_EQ (message, "The TTAL file does not contain all mandatory objects. Missing: meta events ");
    EXPECT_EQ (importer->columnMap.size(), 8u);
}

TEST_F (TTALImport, aFileWithoutACastHasTheRowsOfItsEvents)
{
    import ("{" + meta() + ", " + block ("events", event ({})) + "}");
    EXPECT_EQ (message, "The TTAL file does not contain all mandatory objects. Missing: characters ");
    EXPECT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (cell (0, 3), "");
    EXPECT_EQ (importer->characterMap, nullptr);
}

TEST_F (TTALImport, withoutACastEveryCharacterIsUnknown)
{
    import ("{" + meta() + ", " + block ("events", event ({ { "characterId", "\"c1\"" } })) + "}");
    EXPECT_EQ (message, "The TTAL file does not contain all mandatory objects. Missing: characters "
                        "An event uses a character with ID c1 but no character with this ID exists");
    EXPECT_EQ (cell (0, 3), "c1");
}

TEST_F (TTALImport, aMissingMetaBlockStillResolvesTheCharacters)
{
    import ("{"
            + block ("events", event (
                                   { { "characterId",
                                       "\"c1\"" } }))
            + ", " + block ("characters", R"("c1": {"name": "ANNA"})") + "}");
    EXPECT_EQ (message, "The TTAL file does not contain all mandatory objects. Missing: meta ");
    EXPECT_EQ (cell (0, 3), "ANNA");
}

TEST_F (TTALImport, blocksOfTheWrongKindAreTold)
{
    for (const auto* wrong : { "[]", "7", "null", "\"text\"", "true" })
    {
        const auto cast = block ("characters", "");
        import ("{\"meta\": " + std::string (wrong) + "}");
        EXPECT_EQ (message, "Couldn't parse meta object.") << wrong;
        import ("{" + meta() + ", \"events\": " + wrong + ", " + cast + "}");
        EXPECT_EQ (message, "Couldn't parse events object.") << wrong;
        EXPECT_EQ (importer->characterMap, nullptr) << wrong;
        import ("{" + meta() + ", " + block ("events", event ({})) + ", \"characters\": " + wrong + "}");
        EXPECT_EQ (message, "Couldn't parse characters object.") << wrong;
        EXPECT_EQ (importer->rows.size(), 1u) << wrong;
        EXPECT_NE (importer->characterMap, nullptr) << wrong;
    }
}

TEST_F (TTALImport, theFirstBlockThatFailsEndsTheImport)
{
    import ("{"
            + block ("events", event (
                                   { { "characterId",
                                       "\"c1\"" } }))
            + ", \"meta\": 1, " + block ("characters", R"("c1": {"name": "ANNA"})") + "}");
    EXPECT_EQ (message, "Couldn't parse meta object.");
    EXPECT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (cell (0, 3), "c1");
    EXPECT_EQ (importer->characterMap, nullptr);
}

// ---- meta ----------------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, anUnknownRateIsRefused)
{
    for (const auto* rate : { "\"unsupported\"", "\"FPS_4800\"", "\"fps_2500\"", "25", "null", "\"\"" })
    {
        import (withMeta ("\"FPS_2500\"", rate));
        EXPECT_EQ (message, invalidRate) << rate;
        EXPECT_EQ (importer->fps, -1) << rate;
        EXPECT_TRUE (importer->rows.empty()) << rate;
    }
}

TEST_F (TTALImport, anotherTimeFormatIsRefused)
{
    for (const auto* format : { "\"frames\"", "\"TIMECODE\"", "null", "\"FRAMES \"" })
    {
        import (withMeta ("\"FRAMES\"", format));
        EXPECT_EQ (message, "Unsupported value for 'timeFormat'. Currently, only 'FRAMES' is supported.")
            << format;
    }
}

TEST_F (TTALImport, missingMetaMembersAreNamedInTheOrderOfTheFormat)
{
    import (withMeta ("\"lang\": \"en\", ", ""));
    EXPECT_EQ (message, "Block 'meta' does not contain all mandatory fields. Missing: lang ");
    import (withMeta ("\"fps\": \"FPS_2500\", ", ""));
    EXPECT_EQ (message, "Block 'meta' does not contain all mandatory fields. Missing: fps ");
    import ("{\"meta\": {\"tool\": \"x\"}}");
    EXPECT_EQ (message, "Block 'meta' does not contain all mandatory fields. Missing: fps lang timeFormat ");
}

TEST_F (TTALImport, anEmptyLanguageIsFine)
{
    import (withMeta ("\"en\"", "\"\""));
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->languageCode(), "");
}

// ---- events and characters -------------------------------------------------------------------------------------------------

TEST_F (TTALImport, missingEventMembersAreNamedAndEarlierRowsStay)
{
    import (file (event ({ { "characterId",
                             "\"c1\"" } },
                         "good")
                  + ", "
                  + event ({ { "txt", "" },
                             { "start",
                               "" } },
                           "bad")
                  + ", " + event ({}, "never read")));
    EXPECT_EQ (message, "Event with ID: bad does not contain all mandatory fields. Missing: start txt ");
    EXPECT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (cell (0, 3), "c1");
    EXPECT_EQ (importer->columnMap.size(), 8u);
}

TEST_F (TTALImport, anEventThatIsNoObjectLacksEverything)
{
    for (const auto* wrong : { "[]", "7", "null", "\"text\"", "{}" })
    {
        import (file ("\"e9\": " + std::string (wrong)));
        EXPECT_EQ (
            message,
            "Event with ID: e9 does not contain all mandatory fields. Missing: start end txt characterId ")
            << wrong;
    }
}

TEST_F (TTALImport, stylesOfTheWrongKindAreTold)
{
    for (const auto* wrong : { "{}", "7", "null", "\"bold\"", "true" })
    {
        import (file (event ({}, "good") + ", " + event ({ { "styles", wrong } }, "bad")));
        EXPECT_EQ (message, "Couldn't parse styles of event with ID: bad") << wrong;
        EXPECT_EQ (importer->rows.size(), 1u) << wrong;
    }
    EXPECT_TRUE (importer->richTextAttributesFromStylesObject (juce::var (7)).empty());
    EXPECT_TRUE (importer->richTextAttributesFromStylesObject ({}).empty());
}

TEST_F (TTALImport, aCharacterWithoutANameIsTold)
{
    for (const auto* wrong : { "{}", "{\"Name\": \"x\"}", "7", "null", "[]" })
    {
        import (
            file (event (
                      { { "characterId",
                          "\"c1\"" } }),
                  R"("c1": {"name": "ANNA"}, "c2": )" + std::string (wrong) + R"(, "c3": {"name": "PAUL"})"));
        EXPECT_EQ (message, "Character with ID: c2 does not contain all mandatory fields. Missing: name ")
            << wrong;
        EXPECT_EQ (castOf (*importer), (Texts { "c1=ANNA" })) << wrong;
        EXPECT_EQ (cell (0, 3), "c1") << wrong;
    }
}

TEST_F (TTALImport, rowsBeforeAnUnknownCharacterAreResolved)
{
    const auto with = [] (const char* character, const char* id) {
        return event ({ { "characterId", "\"" + std::string (character) + "\"" } }, id);
    };

    import (file (with ("c1", "a") + ", " + with ("c9", "b") + ", " + with ("c1", "c")));
    EXPECT_EQ (message, "An event uses a character with ID c9 but no character with this ID exists");
    EXPECT_EQ (cell (0, 3), "ANNA");
    EXPECT_EQ (cell (1, 3), "c9");
    EXPECT_EQ (cell (2, 3), "c1");
}
