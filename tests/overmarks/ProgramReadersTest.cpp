// SPDX-License-Identifier: GPL-3.0-only
// The program with lists of formats other than delimited text.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace
{

std::string dataFile (const std::string& name) { return OVERMARKS_TEST_DATA "/import/" + name; }

struct FormatCase
{
    const char* name;
    const char* file;
    int type;
    bool mapsColumns;
    std::size_t rows;
    ordered_json secondCue; // start, end, text, cue number
};

class ProgramReaders : public ProgramTest, public testing::WithParamInterface<FormatCase>
{
protected:
    const std::string list = dataFile (GetParam().file);
};

} // namespace

TEST_P (ProgramReaders, rowsShowsTheTable)
{
    const auto document = run ({ "rows", list, "--json" }).json();
    EXPECT_EQ (document["type"], GetParam().type);
    EXPECT_EQ (document["userMappingEnabled"], GetParam().mapsColumns);
    EXPECT_EQ (document["error"], "");
    EXPECT_EQ (document["rows"].size(), GetParam().rows);

    const auto shown = run ({ "rows", list });
    EXPECT_EQ (shown.status, 0);
    EXPECT_THAT (shown.output, HasSubstr ("Start TC"));
    EXPECT_THAT (shown.errors, HasSubstr (std::to_string (GetParam().rows) + " rows"));
}

TEST_P (ProgramReaders, importAndListGiveTheCues)
{
    const auto imported = run ({ "import", list, "-o", "p.json" });
    EXPECT_EQ (imported.status, 0) << imported.errors;

    for (const auto& source : { std::string ("p.json"), list })
    {
        const auto events = run ({ "list", source, "--json" }).json()["events"];
        ASSERT_GE (events.size(), 2u) << source;
        EXPECT_EQ (ordered_json ({ events[1]["startTC"], events[1]["endTC"], events[1]["text"]["text"],
                                   events[1]["cueNumber"] }),
                   GetParam().secondCue)
            << source;
    }
}

TEST_P (ProgramReaders, convertWritesDelimitedText)
{
    EXPECT_EQ (run ({ "convert", list, "out.csv" }).status, 0);
    EXPECT_THAT (read ("out.csv"), HasSubstr ("\"" + GetParam().secondCue[0].get<std::string>() + "\""));
}

INSTANTIATE_TEST_SUITE_P (
    Formats, ProgramReaders,
    testing::Values (
        FormatCase {
            "SubRip", "srt/harbour.srt", 3, false, 3, { "00:00:04:05", "00:00:05:24", "Who says so?", "2" } },
        FormatCase {
            "EBU", "stl/harbour.stl", 4, false, 5, { "01:00:04:05", "01:00:05:24", "Who says so?", "" } },
        FormatCase { "textSTL",
                     "textstl/harbour.stl",
                     4,
                     false,
                     3,
                     { "00:00:04:05", "00:00:05:24", "Who says so, and why?", "" } },
        FormatCase { "ProTools",
                     "protools/utf8.txt",
                     0,
                     false,
                     2,
                     { "01:00:05:00", "01:00:06:00", "Überhaupt nicht schön!", "W0002" } },
        FormatCase { "dBase", "dbf/harbour.dbf", 1, true, 5, { "01:00:02:10", "01:00:03:12", "", "H1" } }),
    [] (const auto& rowOfTable) { return rowOfTable.param.name; });

TEST_F (ProgramTest, theFormatsThatCanBeReadAreListed)
{
    const auto formats = run ({ "formats", "--json" }).json()["formats"];
    std::vector<std::string> extensions;

    for (const auto& format : formats)
        if (format["reads"] == true)
            extensions.push_back (format["extensions"]);

    EXPECT_THAT (extensions, testing::IsSupersetOf ({ ".txt", ".srt", ".stl", ".dbf" }));
}

TEST_F (ProgramTest, aFileWithoutCuesIsAProblemAlsoWhereTheFormatHasNoWordsForIt)
{
    const std::map<std::string, std::string> files {
        { "x.srt", "\n" }, { "x.stl", "" }, { "x.dbf", "" }, { "x.txt", "T R A C K  L I S T I N G\n" }
    };

    for (const auto& [name, bytes] : files)
    {
        write (name, bytes);
        const auto result = run ({ "import", name, "-o", "p.json", "--force" });
        EXPECT_EQ (result.status, 1) << name;
        EXPECT_THAT (result.errors, HasSubstr (name + ": no cues were found in it\n"));
        EXPECT_TRUE (file ("p.json").existsAsFile()) << name;
    }
}

TEST_F (ProgramTest, aDBaseTableOfTitlesAloneIsAProblem)
{
    for (const auto* name : { "dbf/fields_only.dbf", "dbf/no_end_of_fields.dbf", "dbf/header_only.dbf" })
    {
        const auto result = run ({ "import", dataFile (name), "-o", "p.json", "--force" });
        EXPECT_EQ (result.status, 1) << name;
        EXPECT_THAT (result.errors, HasSubstr (std::string (name) + ": no cues were found in it\n"));
    }
}

TEST_F (ProgramTest, delimitedTextOfTitlesAloneIsAnEmptyList)
{
    const auto result = run ({ "import", dataFile ("csv/titles_only.csv"), "-o", "p.json" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, Not (HasSubstr ("no cues were found")));
}

TEST_F (ProgramTest, aDBaseTableWithoutAKnownFieldIsRefusedUnlessAColumnIsNamed)
{
    using namespace std::string_literals;
    const auto field = [] (const std::string& name)
    { return (name + std::string (16 - name.size(), '\0')) + "\x4" + std::string (15, '\0'); };
    write ("x.dbf", "\x3"s + std::string (7, '\0') + "\x61"s + std::string (23, '\0') + field ("ROLE")
                        + field ("TAKE") + "\r ANNAA1   PAULA2  \x1a");
    const auto refused = run ({ "import", "x.dbf", "-o", "p.json" });
    EXPECT_EQ (refused.status, 1);
    EXPECT_THAT (refused.errors,
                 HasSubstr ("x.dbf: no field has a name that is known for a time or a text; --map "
                            "\"HEADER=TITLE\" tells what a field holds\n"));
    EXPECT_FALSE (file ("p.json").exists());

    const auto mapped = run ({ "list", "x.dbf", "--json", "--map", "ROLE=Character" });
    EXPECT_EQ (mapped.json()["events"].size(), 2u);
    EXPECT_EQ (mapped.json()["events"][0]["character"], "ANNA");
}

TEST_F (ProgramTest, whatIsNoFileOfAProjectIsRefused)
{
    write ("x.csv", threeCues);
    EXPECT_THAT (run ({ "import", "x.csv", "-o", "film" }).errors,
                 HasSubstr ("film: a project has the extension .overmarks, or .json for its JSON form"));
    EXPECT_THAT (
        run ({ "import", "x.csv", "-o", "-" }).errors,
        HasSubstr ("-o: a project is a file; overmarks dump writes its JSON form to standard output"));
    EXPECT_THAT (run ({ "convert", "x.csv", "-", "--format", "csv" }).errors,
                 HasSubstr ("convert writes a file; overmarks dump writes JSON to standard output"));
    EXPECT_FALSE (file ("film").exists());
    EXPECT_FALSE (file ("-").exists());
}

TEST_F (ProgramTest, oneEventIsCountedAsOne)
{
    write ("x.csv", "Start TC,Text\n01:00:00:00,Hello?\n");
    EXPECT_THAT (run ({ "list", "x.csv" }).errors, HasSubstr ("\n1 event\n"));
    EXPECT_THAT (run ({ "search", "x.csv", "hello" }).errors, HasSubstr ("\n1 result\n"));
    write ("y.csv", threeCues);
    EXPECT_THAT (run ({ "list", "y.csv" }).errors, HasSubstr ("\n3 events\n"));
}

TEST_F (ProgramTest, aFileInUTF16IsAProblemSinceItsRowsMayBeLost)
{
    using namespace std::string_literals;
    write ("x.csv", "\xff\xfeT\0e\0x\0t\0,\0N\0o\0t\0e\0s\0\n\0x\0,\0y\0\n\0"s);
    const auto result = run ({ "import", "x.csv", "-o", "p.json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors,
                 HasSubstr ("x.csv: rows of a file in UTF-16 may be lost; save it as UTF-8\n"));
}

TEST_F (ProgramTest, whatAReaderLeavesOutIsSaidOnStandardError)
{
    const auto cutOff = run ({ "list", dataFile ("srt/no_line_end.srt"), "--json" });
    EXPECT_EQ (cutOff.json()["events"].size(), 2u);
    EXPECT_THAT (cutOff.errors,
                 HasSubstr ("the last subtitle has no line break behind its text and is left out"));
}

TEST_F (ProgramTest, anEncodingIsNamedForSubtitles)
{
    const auto result =
        run ({ "rows", dataFile ("srt/wrong_encoding.srt"), "--json", "--encoding", "windows-1252" });
    EXPECT_EQ (result.json()["encoding"], 5);
    EXPECT_EQ (result.json()["rows"][0][2], "Schönen Abend, Frau Weiß.");
}

TEST_F (ProgramTest, starsOfSubtitlesBecomeLineBreaksWhenAsked)
{
    const auto list = dataFile ("srt/harbour.srt");
    const auto textOf = [&] (const std::vector<std::string>& options)
    {
        std::vector<std::string> arguments { "list", list, "--json", "--application", "orvelle" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        return run (arguments).json()["events"][0]["text"]["text"];
    };
    EXPECT_EQ (textOf ({}), "The harbour is closed.**Go home, captain.");
    EXPECT_EQ (textOf ({ "--line-breaks" }), "The harbour is closed.\nGo home, captain.");
}

TEST_F (ProgramTest, aColumnOfADBaseTableIsAssigned)
{
    const auto events =
        run ({ "list", dataFile ("dbf/harbour.dbf"), "--json", "--map", "ROLE=Character" }).json()["events"];
    EXPECT_EQ (events[2]["character"], "ANNA");
}
