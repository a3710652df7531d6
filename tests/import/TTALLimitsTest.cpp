// SPDX-License-Identifier: GPL-3.0-only
// Long lists, large casts and objects with members that nobody knows; and what is left of a file that fails half-way.
#include "import/ttal/TTALSupport.h"

using namespace TTALSupport;

namespace
{

/** Members that no reader knows: "x0": 0, "x1": 1, ... */
std::string unknownMembers (int count, const std::string& name = "x")
{
    std::string members;
    for (int i = 0; i < count; ++i)
        members += "\"" + name + std::to_string (i) + "\": " + std::to_string (i) + ", ";
    return members;
}

/** A file whose events come first. */
std::string eventsBefore (const std::string& metaBlock)
{
    return "{" + block ("events", event ({ { "characterId", "\"c1\"" } })) + ", " + metaBlock + ", "
           + block ("characters", R"("c1": {"name": "ANNA"})") + "}";
}

constexpr int many = 400; // beyond what the framework's objects are searched for

} // namespace

// ---- limits --------------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, aCastOfThousandsLoads)
{
    constexpr int size = 5000;
    std::string cast;
    std::string events;
    for (int i = 0; i < size; ++i)
    {
        const auto id = "character-" + std::to_string (i);
        cast += (i == 0 ? "" : ", ") + block (id, "\"name\": \"NAME " + std::to_string (i) + "\"");
        events += (i == 0 ? "" : ", ")
                  + event ({ { "characterId", "\"" + id + "\"" }, { "dubAnnotations", R"({"text": "n"})" } },
                           "event-" + std::to_string (i));
    }

    for (const auto& blocks : { block ("characters", cast) + ", " + block ("events", events),
                                block ("events", events) + ", " + block ("characters", cast) })
    {
        import ("{" + blocks + ", " + meta() + "}");
        EXPECT_EQ (message, "");
        ASSERT_EQ (importer->rows.size(), static_cast<std::size_t> (size));
        EXPECT_EQ (importer->characterMap->characters().size(), static_cast<std::size_t> (size));
        for (const std::size_t row : { 0u, 255u, 256u, 4999u })
        {
            EXPECT_EQ (cell (row, 3), "NAME " + std::to_string (row));
            EXPECT_EQ (cell (row, 5), "n");
        }
    }
}

TEST_F (TTALImport, membersBehindManyUnknownOnesAreRead)
{
    const auto unknown = unknownMembers (many);
    import (file (
        block ("e1", unknown + R"("start": 0, "end": 25, "txt": "Line.", "cue": "A1", "characterId": "c1", )"
                         + "\"dubAnnotations\": {" + unknown + "\"text\": \"note\"}, " + "\"styles\": [{"
                         + unknown + R"("from": 0, "to": 2, "type": "bold"}])"),
        block ("c1", unknown + R"("name": "ANNA")")));
    EXPECT_EQ (message, "");
    ASSERT_EQ (textsOf (importer->rows),
               (TextTable { { "00:00:00:00", "00:00:00:24", "Line.", "ANNA", "A1", "note", "no", "" } }));
    EXPECT_EQ (looksOf (importer->rows[0][2]), (Texts { "0-2 bold" }));
}

TEST_F (TTALImport, blocksAndMetaMembersBehindManyUnknownOnesAreRead)
{
    const auto unknown = unknownMembers (many);
    const auto whole = file (event ({ { "characterId", "\"c1\"" } }));
    import (replaced ("{" + unknown + whole.substr (1), "\"fps\"", unknown + "\"fps\""));
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->fps, 2);
    EXPECT_EQ (cell (0, 3), "ANNA");
}

TEST_F (TTALImport, eventsOfEverNewMembersAreReadAsAnyOthers)
{
    std::string events;
    for (int i = 0; i < 1000; ++i)
        events += (i == 0 ? "" : ", ")
                  + block ("e" + std::to_string (i), unknownMembers (20, "x" + std::to_string (i) + "-")
                                                         + R"("start": 0, "end": 25, "txt": "Line.", )"
                                                         + R"("characterId": "c1")");
    import (file (events));
    EXPECT_EQ (message, "");
    ASSERT_EQ (importer->rows.size(), 1000u);
    EXPECT_EQ (cell (999, 3), "ANNA");
}

// ---- what stands after a failure -----------------------------------------------------------------------------------------

struct MetaMistake
{
    const char* test;
    std::string meta;
    const char* message;
    int fps;
    const char* language;
};

class TTALMetaMistake : public TTALImport, public testing::WithParamInterface<MetaMistake>
{
};

TEST_P (TTALMetaMistake, leavesTheRowsBeforeWithTheirIdentifiers)
{
    import (eventsBefore ("\"meta\": " + GetParam().meta));
    EXPECT_EQ (message, GetParam().message);
    ASSERT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (cell (0, 2), "Line.");
    EXPECT_EQ (cell (0, 3), "c1");
    EXPECT_EQ (importer->characterMap, nullptr);
    EXPECT_EQ (importer->columnMap.size(), 8u);
    EXPECT_EQ (importer->fps, GetParam().fps);
    EXPECT_EQ (importer->languageCode(), GetParam().language);
}

INSTANTIATE_TEST_SUITE_P (
    Meta, TTALMetaMistake,
    testing::Values (
        MetaMistake { "kind", "[]", "Couldn't parse meta object.", -1, "" },
        MetaMistake { "rate", R"({"lang": "en", "fps": "unsupported", "timeFormat": "FRAMES"})",
                      "FPS value in metadata block is either not present or set to an invalid value.", -1,
                      "en" },
        MetaMistake { "timeFormat", R"({"fps": "FPS_2400", "timeFormat": "frames", "lang": "en"})",
                      "Unsupported value for 'timeFormat'. Currently, only 'FRAMES' is supported.", 1, "" },
        MetaMistake { "missingLanguage", R"({"fps": "FPS_2400", "timeFormat": "FRAMES"})",
                      "Block 'meta' does not contain all mandatory fields. Missing: lang ", 1, "" },
        MetaMistake { "missingRate", R"({"lang": "en", "timeFormat": "FRAMES"})",
                      "Block 'meta' does not contain all mandatory fields. Missing: fps ", -1, "en" },
        MetaMistake { "empty", "{}",
                      "Block 'meta' does not contain all mandatory fields. Missing: fps lang timeFormat ", -1,
                      "" }),
    [] (const auto& rowOfTable) { return rowOfTable.param.test; });

TEST_F (TTALImport, everyMessageIsAddedToWhatWasThere)
{
    const auto known = file (event ({}));
    const std::pair<std::string, std::string> cases[] = {
        { "{", "The file content could not be parsed properly." },
        { "{}", "The TTAL file does not contain all mandatory objects. Missing: meta events characters " },
        { R"({"meta": 1})", "Couldn't parse meta object." },
        { R"({"events": 1})", "Couldn't parse events object." },
        { R"({"characters": 1})", "Couldn't parse characters object." },
        { replaced (known, "FPS_2500", "FPS_1"),
          "FPS value in metadata block is either not present or set to an invalid value." },
        { replaced (known, "\"FRAMES\"", "\"frames\""),
          "Unsupported value for 'timeFormat'. Currently, only 'FRAMES' is supported." },
        { replaced (known, "\"lang\"", "\"language\""),
          "Block 'meta' does not contain all mandatory fields. Missing: lang " },
        { replaced (known, "\"end\"", "\"End\""),
          "Event with ID: e1 does not contain all mandatory fields. Missing: end " },
        { file (event ({ { "styles", "1" } })), "Couldn't parse styles of event with ID: e1" },
        { replaced (known, "\"name\"", "\"Name\""),
          "Character with ID: c1 does not contain all mandatory fields. Missing: name " },
        { file (event ({ { "characterId", "\"c2\"" } })),
          "An event uses a character with ID c2 but no character with this ID exists" },
    };

    for (const auto& [bytes, words] : cases)
    {
        juce::String said ("Before. ");
        TTALEventFileImporter failed (juce::String (folder.file ("list.ttal", bytes)), said, {});
        EXPECT_EQ (said.toStdString(), "Before. " + words);
        failed.parse (said, TextEncodingUnknown);
        EXPECT_EQ (said.toStdString(), "Before. " + words + words);
    }

    juce::String said ("Before. ");
    const TTALEventFileImporter missing (juce::String ((folder.path / "none.ttal").string()), said, {});
    EXPECT_EQ (said, "Before. The file could not be opened.");
}

// ---- rates ---------------------------------------------------------------------------------------------------------------

class TTALRate : public TTALImport, public testing::WithParamInterface<std::pair<const char*, int>>
{
};

TEST_P (TTALRate, isKeptAsItsCode)
{
    import (replaced (file (event ({ { "start", "50" } })), "FPS_2500", GetParam().first));
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->fps, GetParam().second);
    EXPECT_EQ (cell (0, 0), "00:00:02:00");
}

INSTANTIATE_TEST_SUITE_P (Rates, TTALRate,
                          testing::Values (std::pair ("FPS_2397", 0), std::pair ("FPS_2400", 1),
                                           std::pair ("FPS_2500", 2), std::pair ("FPS_2997", 4),
                                           std::pair ("FPS_3000", 5), std::pair ("FPS_5000", 8),
                                           std::pair ("FPS_5994", 10), std::pair ("FPS_6000", 11)),
                          [] (const auto& rowOfTable) { return rowOfTable.param.first; });
