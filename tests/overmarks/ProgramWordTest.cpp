// SPDX-License-Identifier: GPL-3.0-only
// Word documents through the program, with shell scripts in the place of docxHandler: what is told when they fail, and what is
// left behind.
#include "overmarks/ProgramWordFixture.h"

#include <gmock/gmock.h>

using nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// ---- writing -------------------------------------------------------------------------------------------------------------

TEST_F (ProgramWordTest, exportWritesADocument)
{
    install (writesDocuments);
    const auto result = start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"], (Names { path ("out/x.docx") }));
    EXPECT_EQ (read ("out/x.docx"), good());
    EXPECT_THAT (found ("out"), ElementsAre ("x.docx"));
}

TEST_F (ProgramWordTest, theDocumentHoldsWhatTheOptionsSay)
{
    install (writesDocuments);
    const auto result = start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--layout", "actor",
                                 "--take-numbers", "--title", "Film", "--studio", "S", "--reel", "R2" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.errors, Not (HasSubstr ("makes no difference")));
    const auto json = ordered_json::parse (read ("resources/WordDocumentJSON_timecode.txt"));
    EXPECT_EQ (json["footer"]["wordLayout"], "Actor Layout");
    EXPECT_EQ (json["frontMatter"]["projectName"], "Film");
    EXPECT_EQ (json["frontMatter"]["episodeReel"], "R2");
    EXPECT_EQ (json["frontMatter"]["charAndActor"], "ANNA (B. Miller), TOM (C. Berg)");
    ASSERT_EQ (json["cueContentList"].size(), 3u);
    EXPECT_EQ (json["cueContentList"][1]["cueText"]["text"], "Who's \"there\"?");
    EXPECT_EQ (json["cueContentList"][1]["startTC"], "01:00:05:12");
    EXPECT_TRUE (json["cueContentList"][0].contains ("cueTakes"));
}

TEST_F (ProgramWordTest, byCharacterEachHasADocument)
{
    install (writesDocuments);
    const auto result =
        start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--by-character", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"], (Names { path ("out/x_ANNA.docx"), path ("out/x_TOM.docx") }));
    EXPECT_EQ (read ("out/x_TOM.docx"), good());
    EXPECT_EQ (read ("resources/runs"), "run\n");
}

TEST_F (ProgramWordTest, combinedAllShareADocument)
{
    install (writesDocuments);
    EXPECT_EQ (
        start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--by-character", "--combine" }).status,
        0);
    EXPECT_THAT (found ("out"), ElementsAre ("x.docx"));
    const auto json = ordered_json::parse (read ("resources/WordDocumentJSON_singlefile.txt"));
    EXPECT_EQ (json["continuousPagesBlockList"].size(), 2u);
}

TEST_F (ProgramWordTest, severalFormatsAreWrittenInOneRun)
{
    install (writesDocuments);
    EXPECT_EQ (start ({ "export", "x.csv", "-o", "out", "--format", "csv,docx,asc" }).status, 0);
    EXPECT_THAT (found ("out"), ElementsAre ("x.asc", "x.csv", "x.docx"));
}

TEST_F (ProgramWordTest, convertWritesADocumentUnderTheGivenName)
{
    install (writesDocuments);
    EXPECT_EQ (start ({ "convert", "x.csv", "out/sheet.docx" }).status, 0);
    EXPECT_EQ (read ("out/sheet.docx"), good());
    EXPECT_EQ (start ({ "convert", "x.csv", "out/sheet.docx" }).status, 1) << "it is there already";
    EXPECT_EQ (start ({ "convert", "x.csv", "out/sheet.docx", "--force" }).status, 0);
}

TEST_F (ProgramWordTest, commasAndOtherSignsOfNamesAndFoldersAreNoObstacle)
{
    install (writesDocuments);
    const juce::String name ("a, \"b\" $(touch x) `y` \\ ; 'z");
    file (name).createDirectory();
    write ("y.csv", "Start TC,Character,Text\n01:00:02:00,\"Smith, J/R\",Hi\n01:00:03:00,$(touch z),Hi\n");
    const auto result = start (
        { "export", "y.csv", "-o", path (name), "--name", "one, two", "--format", "docx", "--by-character" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (found (name), ElementsAre ("one, two_$(touch z).docx", "one, two_Smith  J_R.docx"));
    EXPECT_FALSE (file ("x").exists() || file ("z").exists());
}

TEST_F (ProgramWordTest, aTemporaryFolderWithACommaIsNotUsed)
{
    install (writesDocuments);
    file ("a,b").createDirectory();
    ProgramSurroundings surroundings;
    surroundings.temporaryFolder = path ("a,b");
    EXPECT_EQ (start ({ "export", "x.csv", "-o", "out", "--format", "docx" }, surroundings).status, 0);
    EXPECT_THAT (found ("a,b"), IsEmpty());
    EXPECT_THAT (found ("out"), ElementsAre ("x.docx"));
}

TEST_F (ProgramWordTest, moreCharactersThanACommandLineHoldsAreWrittenInSeveralRuns)
{
    install (writesDocuments);
    std::string list = "Start TC,Character,Text\n";
    for (int i = 0; i < 700; ++i)
        list += "01:00:02:00,Somebody with a long name in a long list number " + std::to_string (1000 + i)
                + ",Hi\n";
    write ("y.csv", list);
    const auto result =
        start ({ "export", "y.csv", "-o", "out", "--format", "docx", "--by-character", "--quiet" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (found ("out").size(), 700u);
    EXPECT_GE (read ("resources/runs").size(), 8u) << "two runs at least";
}

TEST_F (ProgramWordTest, withoutEventsThereIsNoDocumentOfCharacters)
{
    install (writesDocuments);
    write ("y.csv", "Start TC,Text\n");
    const auto result =
        start ({ "export", "y.csv", "-o", "out", "--format", "docx", "--by-character", "--combine" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.errors,
                 HasSubstr ("Nothing to write: without an event there is no document for docx\n"));
    EXPECT_FALSE (file ("resources/runs").exists());
}

TEST_F (ProgramWordTest, aDocumentThatIsTooLargeToBeImportedAgainIsWrittenAndSaid)
{
    install (writesDocuments);
    const auto isSaid = [this] (const std::string& text)
    {
        write ("resources/good.docx", ZEP::Overmarks::Testing::zipped ({ { "word/document.xml", text } }));
        const auto result =
            start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--json", "--force" });
        EXPECT_EQ (result.status, 0) << result.errors;
        EXPECT_EQ (read ("out/x.docx"), good());
        const auto said = result.json()["messages"].get<Names>();
        return std::count (said.begin(), said.end(),
                           path ("out/x.docx")
                               + " is too large to be imported again; what is changed in it has to be "
                                 "brought back by hand")
               == 1;
    };

    constexpr std::size_t mostMarks = 12'000'000;
    EXPECT_FALSE (isSaid (std::string (mostMarks / 2, '<') + std::string (mostMarks / 2, '=')));
    EXPECT_TRUE (isSaid (std::string (mostMarks, '<') + "="));
    EXPECT_FALSE (isSaid (std::string (mostMarks * 2, ' ')));
    EXPECT_TRUE (isSaid (std::string (std::size_t { 256 } << 20U, ' ') + " "));
}

TEST_F (ProgramWordTest, whatTheToolPrintsIsNoData)
{
    install (std::string (writesDocuments) + "\necho noise");
    const auto result = start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--json" });
    EXPECT_TRUE (ordered_json::parse (result.output, nullptr, false).is_object()) << result.output;
    EXPECT_THAT (result.errors, HasSubstr ("noise\n"));
}

TEST_F (ProgramWordTest, progressIsShownOnATerminal)
{
    install ("echo completionLevel=50 > \"$progress\"; sleep 0.5" + std::string (writesDocuments));
    ProgramSurroundings surroundings;
    surroundings.errorsOnTerminal = true;
    const auto result =
        start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--by-character" }, surroundings);
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("Writing [###############...............] 50%"));
}

// ---- writing that fails --------------------------------------------------------------------------------------------------

TEST_F (ProgramWordTest, aMissingToolIsTold)
{
    const auto result = start ({ "export", "x.csv", "-o", "out", "--format", "docx" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors,
                 HasSubstr ("overmarks: Word documents need the program docxHandler, and there is none in "
                            + path ("resources") + "; --resources names its folder\n"));
    EXPECT_THAT (found ("out"), IsEmpty());
}

TEST_F (ProgramWordTest, aToolThatIsNoProgramIsTold)
{
    install (writesDocuments);
    ::chmod (path ("resources/docxHandler").c_str(), 0644);
    const auto result = start ({ "export", "x.csv", "-o", "out", "--format", "docx" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("overmarks: " + path ("resources/docxHandler")
                                           + " is no program that can be run\n"));
}

TEST_F (ProgramWordTest, aToolThatCrashesOrWritesNothingIsTold)
{
    const auto words = "Error writing file to " + path ("out/x.docx") + ": docxHandler broke off";
    EXPECT_EQ (failureOf ("kill -SEGV $$"), words);
    EXPECT_EQ (failureOf ("exit 0"), words);
    EXPECT_EQ (failureOf ("exit 3"), words);
    EXPECT_EQ (failureOf (": > \"$output\""), words) << "an empty file";
    EXPECT_EQ (failureOf ("head -c 60 \"$here/good.docx\" > \"$output\""), words) << "half a file";
    EXPECT_EQ (failureOf ("head -c -1 \"$here/good.docx\" > \"$output\""), words);
    EXPECT_EQ (failureOf ("echo something quite different > \"$output\""), words);
    EXPECT_EQ (failureOf ("mkdir \"$output\""), words);
}

TEST_F (ProgramWordTest, whatTheToolSaysOfAFailureIsTold)
{
    EXPECT_EQ (
        failureOf ("echo completionLevel=3 > \"$progress\"; echo 'Error message = No ink' >> \"$progress\""),
        "Error writing file to " + path ("out/x.docx") + ": No ink");
    EXPECT_EQ (failureOf ("echo 'Error message = No ink' > \"$progress\"", { "--by-character" }),
               "Error writing file to " + path ("out/x_ANNA.docx") + ": No ink");
}

TEST_F (ProgramWordTest, oneDocumentOfSeveralThatIsMissingLeavesNone)
{
    EXPECT_EQ (failureOf ("cp \"$here/good.docx\" \"${output%%,*}\"", { "--by-character" }),
               "Error writing file to " + path ("out/x_TOM.docx") + ": docxHandler broke off");
}

TEST_F (ProgramWordTest, aFailureLeavesTheOldDocumentAndTheOtherFormatsAlone)
{
    install ("exit 1");
    write ("out/x.docx", "old");
    const auto result = start ({ "export", "x.csv", "-o", "out", "--format", "csv,docx", "--force" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (read ("out/x.docx"), "old");
    EXPECT_THAT (found ("out"), ElementsAre ("x.docx"));
}

TEST_F (ProgramWordTest, aFullTemporaryFolderIsTold)
{
    ProgramSurroundings surroundings;
    surroundings.largestFile = 1000;
    EXPECT_EQ (failureOf ("exit 1", {}, surroundings), "Error writing file to " + path ("out/x.docx")
                                                           + ": the temporary folder " + path ("temporary")
                                                           + " is full");
}

TEST_F (ProgramWordTest, aTemporaryFolderThatIsMissingIsTold)
{
    install (writesDocuments);
    ProgramSurroundings surroundings;
    surroundings.temporaryFolder = path ("none");
    const auto result = start ({ "export", "x.csv", "-o", "out", "--format", "docx" }, surroundings);
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("overmarks: Can't write into " + path ("none")
                                           + ": No such file or directory\n"));
}

// ---- reading -------------------------------------------------------------------------------------------------------------

TEST_F (ProgramWordTest, rowsShowsACueSheet)
{
    install (readsOneCue);
    write ("y.docx", "x");
    const auto shown = start ({ "rows", "y.docx", "--json" }).json();
    EXPECT_EQ (shown["type"], 8);
    EXPECT_EQ (shown["userMappingEnabled"], false);
    EXPECT_EQ (shown["error"], "");
    EXPECT_EQ (shown["columnMap"].size(), 10u);
    EXPECT_EQ (shown["rows"][0],
               (Names { "01:00:02:00", "01:00:04:00", "ANNA", "Hello?", "A1", "", "", "", "No", "" }));
}

TEST_F (ProgramWordTest, rowsNamesNoEncodingOfACueSheet)
{
    install (readsOneCue);
    write ("y.docx", "x");
    EXPECT_EQ (start ({ "rows", "y.docx" }).errors, "y.docx: 1 row, read by docxHandler\n");
}

TEST_F (ProgramWordTest, aCueSheetBecomesAProjectAndAnyOtherDocument)
{
    install (readsOneCue);
    write ("y.DOCX", "x");
    EXPECT_EQ (start ({ "convert", "y.DOCX", "out/y.json" }).status, 0);
    EXPECT_EQ (start ({ "import", "y.DOCX", "-o", "out/y.overmarks" }).status, 0);
    EXPECT_EQ (start ({ "convert", "y.DOCX", "out/y.csv" }).status, 0);
    const auto dumped = start ({ "dump", "y.DOCX" });
    EXPECT_EQ (dumped.status, 0) << dumped.errors;
    const auto events = dumped.json()["events"];
    const auto cue = std::find_if (events.begin(), events.end(),
                                   [] (const auto& event) { return event["cueNumber"] == "A1"; });
    ASSERT_NE (cue, events.end());
    EXPECT_EQ ((*cue)["text"]["text"], "Hello?");
    EXPECT_EQ ((*cue)["isForcedNarrative"], false);
}

TEST_F (ProgramWordTest, aCueSheetBecomesACueSheet)
{
    install ("if [ -n \"$input\" ]; then " + std::string (readsOneCue) + "\nelse " + writesDocuments
             + "\nfi");
    write ("y.docx", "x");
    EXPECT_EQ (start ({ "convert", "y.docx", "out/z.docx" }).status, 0);
    EXPECT_EQ (read ("out/z.docx"), good());
}

TEST_F (ProgramWordTest, aCueSheetMayComeThroughStandardInput)
{
    install (readsOneCue + std::string ("\ncp \"$input\" \"$here/got\""));
    const auto result =
        run ({ "list", "-", "--format", "docx", "--json", "--resources", "resources" }, "bytes");
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["events"].size(), 1u);
    EXPECT_EQ (read ("resources/got"), "bytes");
}

TEST_F (ProgramWordTest, anEncodingMakesNoDifferenceAndTheToolRunsOnce)
{
    install (readsOneCue);
    write ("y.docx", "x");
    const auto result = start ({ "list", "y.docx", "--json", "--encoding", "mac-roman" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.json()["events"].size(), 1u);
    EXPECT_THAT (result.errors, HasSubstr ("y.docx: --encoding makes no difference to this list\n"));
    EXPECT_THAT (result.errors, Not (HasSubstr ("read as")));
    EXPECT_EQ (read ("resources/runs"), "run\n");
}

TEST_F (ProgramWordTest, whatTheToolSaysOfAnUnreadableFileIsTold)
{
    install ("echo 'Error message = y.docx is no cue sheet' > \"$progress\"");
    write ("y.docx", "x");
    const auto result = start ({ "list", "y.docx" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("overmarks: y.docx is no cue sheet\n"));
}

TEST_F (ProgramWordTest, aToolThatGivesNoAnswerIsTold)
{
    write ("y.docx", "x");
    for (const auto* work : { "exit 0", "kill -SEGV $$" })
    {
        install (work);
        for (const auto* command : { "list", "rows" })
        {
            const auto result = start ({ command, "y.docx", "--json" });
            EXPECT_EQ (result.status, 1);
            EXPECT_EQ (result.json()["error"],
                       "y.docx: Error reading " + path ("y.docx") + ": docxHandler broke off");
        }
    }
}

TEST_F (ProgramWordTest, readingWithoutAToolIsTold)
{
    write ("y.docx", "x");
    EXPECT_EQ (start ({ "rows", "y.docx", "--json" }).json()["error"],
               "Word documents need the program docxHandler, and there is none in " + path ("resources")
                   + "; --resources names its folder");
}

TEST_F (ProgramWordTest, aBrokenListOfCuesIsAFailureAndNothingIsReplaced)
{
    write ("y.docx", "x");
    for (const auto* work : { "printf '{\"cueList\": [' > \"$json\"", "echo 'not json' > \"$json\"",
                              ": > \"$json\"", "echo '{}' > \"$json\"" })
    {
        install (work);
        write ("out/keep.csv", "precious");
        for (const auto& arguments : { Names { "rows", "y.docx" }, Names { "list", "y.docx" },
                                       Names { "convert", "y.docx", "out/keep.csv", "--force" },
                                       Names { "import", "y.docx", "-o", "out/keep.overmarks", "--force" } })
        {
            auto withJSON = arguments;
            withJSON.emplace_back ("--json");
            const auto result = start (withJSON);
            EXPECT_EQ (result.status, 1) << work << result.output;
            EXPECT_EQ (ordered_json::parse (result.output, nullptr, false),
                       (ordered_json {
                           { "error", "y.docx: What docxHandler has found in it is no list of cues" } }));
        }
        EXPECT_EQ (read ("out/keep.csv"), "precious");
        EXPECT_THAT (found ("out"), ElementsAre ("keep.csv"));
    }
}

TEST_F (ProgramWordTest, aListOfMoreCuesThanAnyHasIsAFailure)
{
    install (R"((printf '{"cueList": [0'; yes ',0' | head -n 3000000 | tr -d '\n'; echo ']}') > "$json")");
    write ("y.docx", "x");
    const auto result = start ({ "convert", "y.docx", "out/y.csv", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (
        result.output,
        "{\n \"error\": \"y.docx: It grows into a table that is too large (more than 2548580 cells)\"\n}\n");
    EXPECT_EQ (result.errors, "");
    EXPECT_THAT (found ("out"), IsEmpty());
}

TEST_F (ProgramWordTest, nobodysListInTheTemporaryFolderIsRead)
{
    install (readsOneCue);
    write ("y.docx", "x");
    write ("planted/WordDocumentJSONImport.txt", "");
    file ("planted").createDirectory();
    write ("planted/WordDocumentJSONImport.txt", R"({"cueList": [{"charName": "PLANTED"}]})");
    write ("planted/P2CcomWordExporter.txt", "Error message = PLANTED");
    ProgramSurroundings surroundings;
    surroundings.temporaryFolder = path ("planted");
    const auto result = start ({ "rows", "y.docx", "--json" }, surroundings);
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.json()["rows"][0][2], "ANNA");
    EXPECT_THAT (found ("planted"), ElementsAre ("P2CcomWordExporter.txt", "WordDocumentJSONImport.txt"));
}

TEST_F (ProgramWordTest, formatsTellsOfCueSheets)
{
    const auto formats = run ({ "formats", "--json" }).json();
    EXPECT_THAT (formats.dump(), HasSubstr ("docx"));
}
