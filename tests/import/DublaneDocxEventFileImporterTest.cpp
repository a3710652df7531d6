// SPDX-License-Identifier: GPL-3.0-only
#include "import/DublaneDocxEventFileImporter.h"

#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/ImportLimits.h"
#include "support/CollectedLog.h"
#include "support/StandInTool.h"
#include "support/Stranger.h"

#include <gmock/gmock.h>

using namespace ZEP::Overmarks;
using ImportSupport::textsOf;
using ImportSupport::TextTable;
using testing::ElementsAre;
using testing::IsEmpty;
using ZEP::Core::RichTextString;
using ZEP::Overmarks::Testing::CollectedLog;
using ZEP::Overmarks::Testing::SharedByAll;
using ZEP::Overmarks::Testing::StandInTool;

namespace
{

using Words = std::vector<std::string>;

constexpr auto progressFile = "P2CcomWordExporter.txt";
constexpr auto listFile = "WordDocumentJSONImport.txt";
constexpr auto oneCue = R"({"cueList": [{"startTC": "01:00:00:00", "charName": "ANNA"}]})";

const Words rowOfOneCue { "01:00:00:00", "--:--:--:--", "ANNA", "", "", "", "", "", "No", "" };

const std::map<juce::String, int> tenColumns { { "Start TC", 0 },          { "End TC", 1 },
                                               { "Character", 2 },         { "Text", 3 },
                                               { "Cue Number", 4 },        { "Notes", 5 },
                                               { "Engineering Notes", 6 }, { "Reason", 7 },
                                               { "Forced Narrative", 8 },  { "FN Region", 9 } };

/** The tool's work: writes a list of cues. */
std::string writing (const std::string& json) { return "cat > \"$json\" <<'END'\n" + json + "\nEND\n"; }

juce::String text (const std::string& utf8) { return juce::String::fromUTF8 (utf8.c_str()); }

/** Limits end with the test. */
struct Unlimited
{
    ~Unlimited() { ImportLimits::limits() = {}; }
};

class DocxImport : public testing::Test
{
protected:
    DublaneDocxEventFileImporter import (const std::string& path = "/lists/reel.docx")
    {
        message = "Before. ";
        return { text (path), message };
    }

    const StandInTool tool { writing (oneCue) };
    const CollectedLog log;
    juce::String message;
};

} // namespace

// ---- the tool ------------------------------------------------------------------------------------------------------------

TEST_F (DocxImport, readsWhatTheToolHasFound)
{
    auto importer = import();
    EXPECT_EQ (tool.words(), (Words { (tool.resources / "docxHandler").string(), "import",
                                      "input=/lists/reel.docx", "json=" + tool.inTemporary (listFile),
                                      "com=" + tool.inTemporary (progressFile) + ","
                                          + tool.inTemporary ("C2PcomWordExporter.txt") }));
    EXPECT_EQ (textsOf (importer.rows), TextTable { rowOfOneCue });
    EXPECT_EQ (importer.columnMap, tenColumns);
    EXPECT_EQ (message, "Before. ");
    EXPECT_EQ (importer.type(), 8);
    EXPECT_FALSE (importer.userMappingEnabled());
    EXPECT_EQ (importer.timeInfo, nullptr);
    EXPECT_EQ (importer.characterMap, nullptr);
    EXPECT_EQ (importer.languageCode(), "");
    EXPECT_EQ (importer.filePath, "/lists/reel.docx");
    EXPECT_EQ (importer.encoding, ZEP::Core::TextEncodingUTF8);
    EXPECT_FALSE (tool.has (listFile));
    EXPECT_THAT (log.lines(), IsEmpty());
}

TEST_F (DocxImport, theFactoryGivesItEveryDocx)
{
    const auto importer =
        EventFileImporterFactory::fileImporterWithFilepath ("/lists/reel.DOCX", message, {}, {});
    EXPECT_NE (std::dynamic_pointer_cast<DublaneDocxEventFileImporter> (importer), nullptr);
    EXPECT_EQ (importer->rows.size(), 1u);
}

TEST_F (DocxImport, aPathOfAnySignsReachesTheTool)
{
    const std::string path = "/lists/a\"b$(touch x)`touch y`\\\n;, !'\xc3\xa4.docx";
    import (path);
    EXPECT_EQ (tool.words().at (2), "input=" + path);
    EXPECT_THAT (tool.folder.names(), ElementsAre ("resources", "temporary"));
}

TEST_F (DocxImport, aListLeftByAnEarlierRunIsReadInThePlaceOfTheDocument)
{
    tool.plant (listFile, R"({"cueList": [{"charName": "OLD"}]})");
    const auto importer = import();
    EXPECT_EQ (tool.runs(), 0);
    EXPECT_EQ (importer.rows.at (0).at (2).getText(), "OLD");
    EXPECT_FALSE (tool.has (listFile));
}

TEST_F (DocxImport, aListOfAnotherUserIsNotReadInThePlaceOfTheDocument)
{
    tool.install ("exit 1");
    tool.plant (listFile, R"({"cueList": [{"charName": "THEIRS"}]})");
    tool.plant (progressFile, "Error message = theirs\n");
    std::filesystem::permissions (tool.temporary, static_cast<std::filesystem::perms> (01777));

    // Only the administrator gives a file away; for anybody else both stay the user's own.
    for (const auto* name : { listFile, progressFile })
        if (::lchown (tool.inTemporary (name).c_str(), SharedByAll::stranger, SharedByAll::stranger) != 0)
        {
            EXPECT_EQ (import().rows.size(), 1u);
            return;
        }

    const auto importer = import();
    EXPECT_EQ (tool.runs(), 1) << "the document is read, as if nothing were there";
    EXPECT_THAT (importer.rows, IsEmpty());
    EXPECT_EQ (message, "Error reading /lists/reel.docx") << "the tool couldn't put its list there";
    EXPECT_TRUE (tool.has (listFile));
}

TEST_F (DocxImport, aListThatIsLargerThanImportersTakeIsToldWithTheNumber)
{
    const std::string list = R"({"cueList": [{"charName": "OLD"}]})";
    const Unlimited afterwards {};

    tool.plant (listFile, list);
    ImportLimits::limits().bytesOfFile = list.size();
    EXPECT_EQ (import().rows.size(), 1u);
    EXPECT_THAT (log.lines(), IsEmpty());

    tool.plant (listFile, list);
    ImportLimits::limits().bytesOfFile = list.size() - 1;
    EXPECT_THAT (import().rows, IsEmpty());
    EXPECT_EQ (message, "Error reading /lists/reel.docx");
    EXPECT_THAT (log.lines(),
                 ElementsAre ("/lists/reel.docx: the list of its cues can't be read: it is larger than "
                              + std::to_string (list.size() - 1) + " bytes"));
}

TEST_F (DocxImport, aListOfMoreCuesThanAnyHasIsToldWithTheNumber)
{
    tool.plant (listFile, R"({"cueList": [{"charName": "OLD"}, {}, {}, {}, {}, {}, {}]})");
    const Unlimited afterwards {};
    ImportLimits::limits().spareCells = 0;
    EXPECT_EQ (import().rows.size(), 1u);
    EXPECT_THAT (log.lines(),
                 ElementsAre ("/lists/reel.docx: it grows into a table that is too large (more than 14 "
                              "cells); the rest is left out"));
}

TEST_F (DocxImport, aLinkOfTheUsersOwnInThePlaceOfTheListIsFollowedAsTheToolDoes)
{
    tool.install (writing (oneCue));
    std::filesystem::create_symlink (tool.temporary / "elsewhere", tool.temporary / listFile);
    const auto importer = import();
    EXPECT_EQ (message, "Before. ");
    EXPECT_EQ (importer.rows.size(), 1u);
    EXPECT_TRUE (tool.has ("elsewhere"));
    EXPECT_FALSE (std::filesystem::is_symlink (tool.temporary / listFile))
        << "else the next import read it again";
}

TEST_F (DocxImport, aPipeInThePlaceOfTheListHoldsNothingUp)
{
    ASSERT_EQ (::mkfifo ((tool.temporary / listFile).c_str(), 0600), 0);
    const auto importer = import();
    EXPECT_THAT (importer.rows, IsEmpty());
    EXPECT_EQ (message, "Error reading /lists/reel.docx");
}

TEST_F (DocxImport, anErrorLineReplacesTheMessageAndTheListStays)
{
    tool.install (writing (oneCue)
                  + "echo completionLevel=10 > \"$progress\"\n"
                    "echo 'Error message = It is no cue sheet' >> \"$progress\"\n"
                    "echo 'Error message = Another' >> \"$progress\"");
    const auto importer = import();
    EXPECT_EQ (message, "It is no cue sheet");
    EXPECT_THAT (importer.rows, IsEmpty());
    EXPECT_THAT (importer.columnMap, IsEmpty());
    EXPECT_TRUE (tool.has (listFile));
    EXPECT_TRUE (tool.has (progressFile));
}

TEST_F (DocxImport, anErrorLineOfAnEarlierRunEndsThisOneToo)
{
    tool.plant (progressFile, "Error message = Old\n");
    const auto importer = import();
    EXPECT_EQ (message, "Old");
    EXPECT_THAT (importer.rows, IsEmpty());
    EXPECT_EQ (tool.runs(), 1);
}

TEST_F (DocxImport, anErrorMarkerWithoutATextIsNoError)
{
    tool.plant (progressFile, "Error message = \n");
    EXPECT_EQ (import().rows.size(), 1u);
    EXPECT_EQ (message, "Before. ");
}

TEST_F (DocxImport, withoutAListTheFileCouldNotBeRead)
{
    for (const auto* work : { "exit 0", "exit 9", "kill -9 $$", "mkdir \"$json\"" })
    {
        tool.install (work);
        const auto importer = import();
        EXPECT_EQ (message, "Error reading /lists/reel.docx") << work;
        EXPECT_THAT (importer.rows, IsEmpty());
        EXPECT_THAT (importer.columnMap, IsEmpty());
    }
}

TEST_F (DocxImport, withoutAToolTheFileCouldNotBeRead)
{
    std::filesystem::remove (tool.resources / "docxHandler");
    testing::internal::CaptureStderr(); // the shell's own words
    const auto importer = import();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ (message, "Error reading /lists/reel.docx");
}

TEST_F (DocxImport, aListThatIsNoneGivesNoMessageButALineOfTheLog)
{
    for (const auto* json : { "", "{", "{}", R"({"cueList": 3})", "\n{\"cueList\": [{}]}" })
    {
        tool.plant (listFile, json);
        const auto importer = import();
        EXPECT_EQ (message, "Before. ") << json;
        EXPECT_THAT (importer.rows, IsEmpty()) << json;
        EXPECT_EQ (importer.columnMap, tenColumns) << json;
        EXPECT_FALSE (tool.has (listFile)) << json;
    }

    EXPECT_EQ (log.lines(),
               Words (5, "/lists/reel.docx: what docxHandler has found in it is no list of cues"));
}

TEST_F (DocxImport, anEmptyListGivesNoMessageAndNoRows)
{
    tool.install (writing (R"({"cueList": []})"));
    const auto importer = import();
    EXPECT_EQ (message, "Before. ");
    EXPECT_THAT (importer.rows, IsEmpty());
    EXPECT_EQ (importer.columnMap, tenColumns);
    EXPECT_FALSE (tool.has (listFile));
    EXPECT_THAT (log.lines(), IsEmpty());
}

TEST_F (DocxImport, onlyTheFirstLineOfTheListCounts)
{
    tool.plant (listFile, std::string (oneCue) + "\r\nnonsense");
    EXPECT_EQ (import().rows.size(), 1u);
}

TEST_F (DocxImport, parsingAgainRunsTheToolAgainAndAddsItsRows)
{
    auto importer = import();
    importer.parse (message, ZEP::Core::TextEncodingMacOSRoman);
    EXPECT_EQ (tool.runs(), 2);
    EXPECT_EQ (importer.rows.size(), 2u);
    EXPECT_EQ (message, "Before. ");
}

TEST_F (DocxImport, bytesThatAreNoTextBecomeSoundText)
{
    tool.plant (listFile, "{\"cueList\": [{\"charName\": \"a\xff\xc0\x80z\"}]}");
    const auto name = import().rows.at (0).at (2).getText();
    EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (name.toRawUTF8(),
                                                        static_cast<int> (name.getNumBytesAsUTF8())));
    EXPECT_TRUE (name.startsWithChar ('a') && name.endsWithChar ('z'));
}

TEST_F (DocxImport, deepNestingIsRefusedAsAMalformedText)
{
    tool.plant (listFile, R"({"cueList": )" + std::string (100000, '['));
    EXPECT_THAT (import().rows, IsEmpty());
    EXPECT_EQ (message, "Before. ");
}

// ---- the text ------------------------------------------------------------------------------------------------------------

namespace
{

const std::string separator = "\xE2\x80\xA8";

/** A cue as it stands in the text. @param number  of the seconds */
std::string cue (int number, const std::string& body = "Hello?")
{
    const auto two = [] (int n) { return (n < 10 ? "0" : "") + std::to_string (n); };
    return "01:00:" + two (number) + ":00" + separator + "01:00:" + two (number + 1) + ":00\nANNA\nA"
           + std::to_string (number) + "\n" + body + "\n";
}

class DocxText : public DocxImport
{
protected:
    DocxText()
    {
        importer.rows.clear();
        importer.columnMap.clear();
    }

    TextTable read (const std::string& utf8)
    {
        importer.rows.clear();
        RichTextString content (text (utf8));
        importer.parseFileContent (content);
        return textsOf (importer.rows);
    }

    Words blocksOf (const std::string& utf8)
    {
        Words blocks;
        for (const auto& block : importer.parseCueBlocks (RichTextString (text (utf8))))
            blocks.push_back (block.getText().toStdString());
        return blocks;
    }

    /** Text, notes, engineering notes and reason of a body. */
    Words optionalOf (const std::string& utf8)
    {
        RichTextString words, notes, engineering;
        juce::String reason;
        importer.parseOptionalTokensFromCueString (RichTextString (text (utf8)), words, notes, engineering,
                                                   reason);
        return { words.getText().toStdString(), notes.getText().toStdString(),
                 engineering.getText().toStdString(), reason.toStdString() };
    }

    DublaneDocxEventFileImporter importer = import();
};

} // namespace

TEST_F (DocxText, eachCueButTheLastIsARowOfEightCells)
{
    EXPECT_EQ (
        read ("Title\f" + cue (1, "Hi\nthere\nNotes\nsoftly\nEng. Notes\nboom\nReason\nNo\nise") + cue (3)),
        (TextTable {
            { "01:00:01:00", "01:00:02:00", "ANNA", "Hi\nthere", "A1", "softly", "boom", "Noise" } }));
    EXPECT_EQ (importer.columnMap, (std::map<juce::String, int> { { "Start TC", 0 },
                                                                  { "End TC", 1 },
                                                                  { "Character", 2 },
                                                                  { "Text", 3 },
                                                                  { "Cue Number", 4 },
                                                                  { "Notes", 5 },
                                                                  { "Engineering Notes", 6 },
                                                                  { "Reason", 7 } }));
}

TEST_F (DocxText, theTitlePageIsCutOffTheText)
{
    RichTextString content ("Title" + juce::String::charToString (12) + "rest"
                            + juce::String::charToString (12) + "x");
    importer.parseFileContent (content);
    EXPECT_EQ (content.getText(), "rest\fx");

    RichTextString whole ("no title page");
    importer.parseFileContent (whole);
    EXPECT_EQ (whole.getText(), "no title page");
}

TEST_F (DocxText, aCueEndsBeforeTheCharacterBeforeTheNext)
{
    EXPECT_EQ (blocksOf ("x" + cue (1) + cue (3) + cue (5)),
               (Words { cue (1).substr (0, cue (1).size() - 1), cue (3).substr (0, cue (3).size() - 1) }));
    EXPECT_THAT (blocksOf (cue (1)), IsEmpty());
    EXPECT_THAT (blocksOf ("no cue"), IsEmpty());
    EXPECT_THAT (blocksOf (""), IsEmpty());
}

TEST_F (DocxText, aCueWithTheTimesOfTheFirstTakesItsPlace)
{
    const auto one = cue (1), two = cue (3);
    // The third has the place of the first: what goes before ends there and is empty, what follows begins there.
    EXPECT_EQ (blocksOf (one + two + one + cue (5)),
               (Words { one.substr (0, one.size() - 1), "", one + two + one.substr (0, one.size() - 1) }));
}

TEST_F (DocxText, cuesMayHaveExactlySoManyCharactersTogether)
{
    const Unlimited afterwards {};
    const auto one = cue (1), two = cue (3);
    const auto all = one + two + cue (5);
    const auto characters = text (one).length() + text (two).length();

    ImportLimits::limits().charactersOfWordCues = characters;
    EXPECT_EQ (blocksOf (all).size(), 2u);
    EXPECT_THAT (log.lines(), IsEmpty());

    ImportLimits::limits().charactersOfWordCues = characters - 1;
    EXPECT_EQ (blocksOf (all).size(), 1u);
    EXPECT_THAT (log.lines(),
                 ElementsAre ("A cue sheet asks for cues of more than " + std::to_string (characters - 1)
                              + " characters together; the rest is left out"));
}

TEST_F (DocxText, looksTravelWithTheirPieces)
{
    RichTextString content (text (cue (1, "Hello?\nNotes\nsoftly") + cue (3)));
    const auto start = content.getText().indexOf ("Hello?");
    content.setFont ({ start, start + 5 }, juce::Font (20.0f, juce::Font::bold));
    const auto notes = content.getText().indexOf ("softly");
    content.setColour ({ notes, notes + 2 }, juce::Colours::red);
    importer.parseFileContent (content);
    const auto& row = importer.rows.at (0);
    ASSERT_EQ (row[3].formattedRuns().size(), 1u);
    EXPECT_EQ (row[3].formattedRuns()[0].range, juce::Range<int> (0, 5));
    EXPECT_TRUE (row[3].formattedRuns()[0].font.isBold());
    ASSERT_EQ (row[5].formattedRuns().size(), 1u);
    EXPECT_EQ (row[5].formattedRuns()[0].colour, juce::Colours::red);
}

TEST_F (DocxText, aCueIsCutAtFiftyBoxes)
{
    std::string grid;
    for (int i = 1; i <= 49; ++i)
        grid += "\n" + std::to_string (i);

    const auto shortened = [this] (const std::string& utf8) {
        return importer.shortenCueStringByTakeNumberBoxes (RichTextString (text (utf8)))
            .getText()
            .toStdString();
    };
    EXPECT_EQ (shortened ("Hi" + grid + "\n50\nrest"), "Hi");
    EXPECT_EQ (shortened ("Hi" + grid), "Hi" + grid);
    EXPECT_EQ (read (cue (1, "Hello?" + grid + "\n50") + cue (3)).at (0).at (3), "Hello?");
    EXPECT_EQ (read (cue (1, "Hello?" + grid) + cue (3)).at (0).at (3), "Hello?" + grid);
    EXPECT_EQ (read (cue (1, "Hi" + grid) + cue (3)).at (0),
               (Words { "01:00:01:00", "01:00:02:00", "", "ANNA", "", "", "", "" }))
        << "a short number and a short line are boxes too";
}

TEST_F (DocxText, theTimesNameAndNumberAreTakenOffTheFront)
{
    juce::String start, end, character, number;
    const auto rest = importer.parseMandatoryTokensFromCueString (
        RichTextString ("01:00:00:00|01:00:01:00|ANNA B\nA1\nHello?\nyou"), start, end, character, number);
    EXPECT_EQ (start, "01:00:00:00");
    EXPECT_EQ (end, "01:00:01:00");
    EXPECT_EQ (character, "ANNA B");
    EXPECT_EQ (number, "A1");
    EXPECT_EQ (rest.getText(), "Hello?\nyou");
}

TEST_F (DocxText, withoutLineFeedsNameAndNumberAreEmptyAndTheTextStays)
{
    juce::String start, end, character ("x"), number ("y");
    const auto rest = importer.parseMandatoryTokensFromCueString (
        RichTextString ("01:00:00:00|01:00:01:00|ANNA"), start, end, character, number);
    EXPECT_EQ (character, "");
    EXPECT_EQ (number, "");
    EXPECT_EQ (rest.getText(), "ANNA");
    EXPECT_EQ (importer.parseMandatoryTokensFromCueString ({}, start, end, character, number).getText(), "");
    EXPECT_EQ (start + end, "");
}

TEST_F (DocxText, theHeadingsSplitTheBodyByTheirNumber)
{
    EXPECT_EQ (optionalOf ("a\nNotes\nb"), (Words { "a", "b", "", "" }));
    EXPECT_EQ (optionalOf ("a\nNotes\nb\nEng. Notes\nc"), (Words { "a", "b", "c", "" }));
    EXPECT_EQ (optionalOf ("a\nNotes\nb\nEng. Notes\nc\nReason\nd\ne\n"), (Words { "a", "b", "c", "de" }));
    EXPECT_EQ (optionalOf ("a\nb"), (Words { "a\nb", "", "", "" }));
    EXPECT_EQ (optionalOf ("\nNotes\n"), (Words { "", "", "", "" }));
}

TEST_F (DocxText, anyOtherHeadingAloneIsTakenForTheNotes)
{
    EXPECT_EQ (optionalOf ("Hello you\nEng. Notes\nboom"), (Words { "", "you\nEng. Notes\nboom", "", "" }));
    EXPECT_EQ (optionalOf ("Hello you\nReason\nNoise"), (Words { "", "you\nReason\nNoise", "", "" }));
}

TEST_F (DocxText, twoHeadingsOfWhichOneIsTheReasonAreCutAtTheMissingPlace)
{
    EXPECT_EQ (optionalOf ("Hello you, there\nNotes\nb\nReason\nd"),
               (Words { "Hello you, there", "", "there\nNotes\nb\nReason\nd", "" }));
    EXPECT_EQ (optionalOf ("Hello you\nEng. Notes\nc\nReason\nd"), (Words { "", "you", "c\nReason\nd", "" }));
}

TEST_F (DocxText, whatHasNoHeadingKeepsItsValue)
{
    RichTextString words ("1"), notes ("2"), engineering ("3");
    juce::String reason ("4");
    importer.parseOptionalTokensFromCueString (RichTextString ("a"), words, notes, engineering, reason);
    EXPECT_EQ (words.getText() + notes.getText() + engineering.getText() + reason, "a234");
    importer.parseOptionalTokensFromCueString (RichTextString ("a\nNotes\nb"), words, notes, engineering,
                                               reason);
    EXPECT_EQ (words.getText() + notes.getText() + engineering.getText() + reason, "ab34");
}

TEST_F (DocxText, readingAddsToTheRowsThatAreThere)
{
    RichTextString content (text (cue (1) + cue (3)));
    importer.parseFileContent (content);
    importer.parseFileContent (content);
    EXPECT_EQ (importer.rows.size(), 2u);
}

TEST_F (DocxText, tenThousandCuesAreRead)
{
    std::string content;
    for (int i = 0; i < 10000; ++i)
    {
        auto next = cue (1);
        const auto number = std::to_string (100000 + i);
        next.replace (0, 5, number.substr (1, 2) + ":" + number.substr (3, 2));
        next.replace (6, 2, number.substr (4, 2));
        content += next;
    }

    const auto start = juce::Time::getMillisecondCounterHiRes();
    EXPECT_EQ (read (content).size(), 9999u);
    EXPECT_LT (juce::Time::getMillisecondCounterHiRes() - start, 20000.0);
}

TEST_F (DocxText, timesThatRepeatDoNotFillTheMemory)
{
    const auto one = cue (1), two = cue (3);
    std::string content (3000, 'x');
    content = one + content;
    for (int i = 0; i < 3000; ++i)
        content += cue (5 + i % 50, std::to_string (i)) + one;

    const auto blocks = importer.parseCueBlocks (RichTextString (text (content)));
    juce::int64 characters = 0;
    for (const auto& block : blocks)
        characters += block.length();
    EXPECT_LE (characters, 1 << 28);
}
