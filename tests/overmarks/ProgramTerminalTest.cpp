// SPDX-License-Identifier: GPL-3.0-only
// A terminal obeys what it is sent: a title, a clipboard, keys that nobody has pressed. A cue list comes from a stranger, and so do
// the names of files. Nothing of either commands a terminal, whatever is asked of the program.
#include "overmarks/ProgramWordFixture.h"

#include <optional>
#include <ostream>

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

using Words = std::vector<std::string>;
using nlohmann::ordered_json;

/** A window's title, its clipboard, a link, a clear screen, a bell, a backspace, orders in one character each, turned directions,
    and new lines that only some terminals know. */
const std::string steering =
    "\x1b]0;owned\x07\x1b]52;c;eA==\x07\x1b]8;;http://x\x1b\\\x1b[2J\x08\x0b\x7f\xc2\x85\xc2\x9b"
    "31m\xc2\x9d"
    "0;x\xc2\x9c\xe2\x80\xae\xe2\x81\xa6\xe2\x80\xa8\xe2\x80\xa9\x01";

/** What a terminal obeys in a text; nothing if there is nothing. Lines end as terminals end them. */
std::optional<std::string> orderIn (const std::string& text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const auto byte = [&] (std::size_t offset)
        { return i + offset < text.size() ? static_cast<unsigned char> (text[i + offset]) : 0U; };
        const bool isControl =
            byte (0) == 0x7f
            || (byte (0) < 0x20 && byte (0) != '\n' && ! (byte (0) == '\r' && byte (1) == '\n'));
        const bool isC1 = byte (0) == 0xc2 && byte (1) >= 0x80 && byte (1) < 0xa0;
        const bool turns = byte (0) == 0xe2
                           && ((byte (1) == 0x80 && byte (2) >= 0xa8 && byte (2) <= 0xae)
                               || (byte (1) == 0x81 && byte (2) >= 0xa6 && byte (2) <= 0xa9));

        if (isControl || isC1 || turns)
            return ordered_json (text.substr (i > 40 ? i - 40 : 0, 80))
                .dump (-1, ' ', true, ordered_json::error_handler_t::replace);
    }

    return std::nullopt;
}

ordered_json eventOf (int start, const std::string& character, const std::string& words)
{
    return { { "type", 8 },
             { "uuid", "u" + std::to_string (start) + steering },
             { "cueNumber", "A" + steering },
             { "characterID", character },
             { "startFrameIndex", start },
             { "inPointFrameIndex", start + 10 },
             { "endFrameIndex", start + 12 },
             { "text", { { "text", words } } },
             { "notes", { { "text", "notes" + steering } } },
             { "engineeringNotes", { { "text", "engineering" + steering } } } };
}

/** A project whose every text holds orders. */
ordered_json project (const std::string& words)
{
    return { { "overmarks", 1 },
             { "name", "name" + steering },
             { "userReasons", { "reason" + steering } },
             { "characters",
               { { { "id", "c1" + steering },
                   { "name", "ANNA" + steering },
                   { "prefix", "P" + steering },
                   { "actor", "actor" + steering } } } },
             { "events",
               { eventOf (0, "c1" + steering, words + steering),
                 eventOf (5, "c9" + steering, "=1" + steering), eventOf (40, "c1" + steering, "") } },
             { "documents", { { "title", "title" + steering }, { "studioName", "studio" + steering } } } };
}

class ProgramTerminalTest : public ProgramWordTest
{
protected:
    ProgramTerminalTest()
    {
        setenv ("XDG_DATA_HOME", path ("data").c_str(), 1);
        write (named ("new.json"), project ("Hello").dump());
        write (named ("old.json"), project ("Good bye, all of you").dump());
        write (named ("x.docx"), good());
        const auto quoted = "\"" + steering + "\"";
        write (named ("x.csv"), "Start TC,End TC,Character,Text,Cue Number," + quoted
                                    + ",Enabled\n01:00:02:00," + quoted + "," + quoted + "," + quoted + ","
                                    + quoted + ",x," + quoted + "\nx" + quoted + ",y\n");
        write (named ("x.txt"), "SESSION NAME:\t" + steering + "\nTRACK NAME:\t" + steering + "\n");
        write (named ("broken.json"), "{\"overmarks\": 1, \"" + std::string ("na\x7fme\xc2\x9b") + "\": 2}");
        install (std::string ("printf '\\033]0;owned\\007\\302\\233' >&2; printf '\\033[2J'\n")
                 + "echo 'Error message = \033]0;owned\007' > \"$progress\"; exit 1");
    }

    ~ProgramTerminalTest() override { unsetenv ("XDG_DATA_HOME"); }

    /** The name of a file that somebody has sent. */
    static juce::String named (const std::string& end)
    {
        return juce::String::fromUTF8 (("sent" + steering + end).c_str()).replace ("/", "");
    }

    static Words withNames (Words words)
    {
        for (auto& word : words)
            if (word.starts_with ("@"))
                word = named (word.substr (1)).toStdString();

        return words;
    }
};

struct Command
{
    const char* name;
    Words words; ///< "@x.csv" is a file that somebody has sent
};

void PrintTo (const Command& command, std::ostream* stream) { *stream << command.name; }

class SteeringList : public ProgramTerminalTest, public testing::WithParamInterface<Command>
{
};

TEST_P (SteeringList, commandsNoTerminal)
{
    ProgramSurroundings terminals;
    terminals.terminalWidth = 120;
    terminals.errorsOnTerminal = true;
    terminals.terminalType = "dumb"; // takes no colours of ours either
    terminals.temporaryFolder = path ("temporary");
    const auto shown = run (withNames (GetParam().words), {}, terminals);
    EXPECT_LT (shown.status, 3);
    EXPECT_FALSE ((shown.output + shown.errors).empty());
    EXPECT_EQ (orderIn (shown.output), std::nullopt);
    EXPECT_EQ (orderIn (shown.errors), std::nullopt);
}

TEST_P (SteeringList, commandsNoneBehindAPipeEither)
{
    ProgramSurroundings pipes;
    pipes.temporaryFolder = path ("temporary");
    const auto piped = run (withNames (GetParam().words), {}, pipes);
    EXPECT_EQ (orderIn (piped.output), std::nullopt);
    EXPECT_EQ (orderIn (piped.errors), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P (
    Commands, SteeringList,
    testing::Values (
        Command { "rows", { "rows", "@x.csv" } },
        Command { "rowsAsJSON", { "rows", "@x.csv", "--json", "--rich" } },
        Command { "rowsOfTracks", { "rows", "@x.txt", "--tracks", steering } },
        Command { "rowsOfTracksThatAreThere", { "rows", "@x.txt" } },
        Command { "mapping", { "rows", "@x.csv", "--map", steering + "=Notes" } },
        Command { "mappingOfNothing", { "rows", "@x.csv", "--map", "#9" + steering + "=" + steering } },
        Command { "import", { "import", "@x.csv", "-o", "@made.json" } },
        Command { "importAsJSON", { "import", "@x.csv", "@x.txt", "-o", "made.json", "--json" } },
        Command { "importOfWord", { "import", "@x.docx", "-o", "made.json", "--resources", "resources" } },
        Command { "dump", { "dump", "@new.json" } }, Command { "dumpOfACueList", { "dump", "@x.csv" } },
        Command { "load", { "load", "@new.json", "-o", "@made.overmarks" } },
        Command { "loadOfWhatIsBroken", { "load", "@broken.json", "-o", "made.overmarks" } },
        Command { "list", { "list", "@new.json" } },
        Command { "listAsJSON", { "list", "@new.json", "--json" } },
        Command { "listFiltered", { "list", "@new.json", "--character", steering } },
        Command { "search", { "search", "@new.json", "a" } },
        Command { "searchAsJSON", { "search", "@new.json", "a", "--json" } },
        Command { "diff", { "diff", "@old.json", "@new.json" } },
        Command { "diffAsJSON", { "diff", "@old.json", "@new.json", "--json" } },
        Command { "diffReports",
                  { "diff", "@old.json", "@new.json", "--html", "@d.html", "--csv", "@d.csv" } },
        Command { "check", { "check", "@new.json" } },
        Command { "checkAsJSON", { "check", "@new.json", "--json" } },
        Command { "checkOfACueList", { "check", "@x.csv" } },
        Command { "checkReports", { "check", "@new.json", "--html", "@c.html", "--csv", "@c.csv" } },
        Command { "checkByARule", { "check", "@new.json", "--rule", steering } },
        Command { "set", { "set", "@new.json", "-o", "@made.json", "Notes=" + steering } },
        Command { "setOfNothing", { "set", "@new.json", "-o", "made.json", steering + "=1" } },
        Command { "setWhere", { "set", "@new.json", "-o", "made.json", "--where", steering, "Notes=x" } },
        Command { "export",
                  { "export", "@new.json", "-o", "out", "--format", "csv,ttal,asc", "--by-character" } },
        Command { "exportDry",
                  { "export", "@new.json", "-o", "out", "--format", "csv", "--dry-run", "--json" } },
        Command { "exportOfUnknown", { "export", "@new.json", "-o", "@none", "--format", "csv" + steering } },
        Command { "exportToNowhere", { "export", "@new.json", "-o", "@none", "--format", "csv" } },
        Command { "exportForTaker", { "export", "@new.json", "-o", "out", "--format", "ds-taker" } },
        Command { "exportOfWord",
                  { "export", "@new.json", "-o", "out", "--format", "docx", "--resources", "resources" } },
        Command { "exportWithoutTool",
                  { "export", "@new.json", "-o", "out", "--format", "docx", "--resources", "out" } },
        Command { "exportWithoutBrowser",
                  { "export", "@new.json", "-o", "out", "--format", "pdf", "--browser", steering } },
        Command { "convert", { "convert", "@new.json", "@made.csv" } },
        Command { "convertToUnknown", { "convert", "@new.json", "@made." } },
        Command { "overview", { "overview", "@new.json", "-o", "@sheet.pdf" } },
        Command { "stats", { "stats", "@new.json" } },
        Command { "statsAsJSON", { "stats", "@new.json", "--json" } },
        Command { "statsPage", { "stats", "@new.json", "--html", "@stats.html" } },
        Command { "reasons", { "reasons", "--reasons", steering } },
        Command { "reasonsAsJSON", { "reasons", "--reasons", steering, "--json" } },
        Command { "preferences", { "preferences", "--settings", "@settings" } },
        Command { "preferencesOfUnknown",
                  { "preferences", "--set", steering + "=1", "--settings", "@settings" } },
        Command { "midi",
                  { "midi", "bind", "@new.json", "--uuid", "u0" + steering, "--message", "NoteOn 1 60",
                    "--label", steering } },
        Command { "missingFile", { "list", "@missing.csv" } },
        Command { "missingFileAsJSON", { "list", "@missing.csv", "--json" } },
        Command { "unknownCommand", { steering } },
        Command { "unknownOption", { "list", "@new.json", "--" + steering } },
        Command { "unknownRate", { "list", "@new.json", "--fps", steering } },
        Command { "unknownShell", { "completion", steering } },
        Command { "folderInItsPlace", { "list", "." } }, Command { "noUTF8", { "list", "\xff\x1b[2J" } }),
    [] (const auto& command) { return std::string (command.param.name); });

// ---- and nothing is lost ---------------------------------------------------------------------------------------------------

TEST_F (ProgramTerminalTest, dumpKeepsEveryTextExactly)
{
    const auto dumped = run (withNames ({ "dump", "@new.json" })).json();
    EXPECT_EQ (dumped["name"], "name" + steering);
    EXPECT_EQ (dumped["characters"][0]["name"], "ANNA" + steering);
    EXPECT_EQ (dumped["characters"][0]["id"], "c1" + steering);
    bool isFound = false;

    for (const auto& event : dumped["events"])
        if (event["text"]["text"] == "Hello" + steering)
        {
            isFound = true;
            EXPECT_EQ (event["cueNumber"], "A" + steering);
            EXPECT_EQ (event["notes"]["text"], "notes" + steering);
        }

    EXPECT_TRUE (isFound);
}

TEST_F (ProgramTerminalTest, whatIsDumpedLoadsAsItWas)
{
    write ("dumped.json", run (withNames ({ "dump", "@new.json" })).output);
    ASSERT_EQ (run ({ "load", "dumped.json", "-o", "again.json" }).status, 0);
    EXPECT_EQ (run ({ "dump", "again.json" }).output, read ("dumped.json"));
}

TEST_F (ProgramTerminalTest, delimitedTextKeepsItsSigns)
{
    ASSERT_EQ (run (withNames ({ "check", "@new.json", "--csv", "report.csv" })).status, 1);
    EXPECT_THAT (read ("report.csv"), HasSubstr ("Hello\x1b]0;owned\x07"));
}

TEST_F (ProgramTerminalTest, whatTheToolPrintsIsShownWithoutItsOrders)
{
    const auto result = start (withNames ({ "import", "@x.docx", "-o", "made.json" }));
    EXPECT_EQ (orderIn (result.errors), std::nullopt);
    EXPECT_THAT (result.errors, HasSubstr (" ]0;owned "));
}

TEST_F (ProgramTerminalTest, lettersOfAllScriptsStayInJSON)
{
    write ("x.json", "{\"overmarks\": 1, \"name\": \"Jäger 日本 🎬 “a” – … ⁇ \xe2\x81\xa8\"}");
    EXPECT_THAT (run ({ "dump", "x.json" }).output, HasSubstr ("\"Jäger 日本 🎬 “a” – … ⁇ \\u2068\""));
}

} // namespace
