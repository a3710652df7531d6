// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/DocxHandlerProtocol.h"

#include "support/CollectedLog.h"
#include "support/StandInTool.h"

#include <gmock/gmock.h>

#include <set>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Overmarks::Testing;
namespace Protocol = ZEP::Overmarks::DocxHandlerProtocol;

namespace
{

using Words = std::vector<std::string>;

juce::String text (const std::string& utf8) { return juce::String::fromUTF8 (utf8.c_str()); }

std::string nameOf (const juce::String& path) { return juce::File (path).getFileName().toStdString(); }

} // namespace

// ---- places --------------------------------------------------------------------------------------------------------------

TEST (DocxHandlerProtocol, theToolLiesInTheResourceFolder)
{
    const StandInTool tool;
    EXPECT_EQ (Protocol::toolPath().toStdString(), (tool.resources / "docxHandler").string());
}

TEST (DocxHandlerProtocol, itsFilesLieInTheTemporaryFolder)
{
    const StandInTool tool;
    EXPECT_EQ (Protocol::progressFilePath().toStdString(), tool.inTemporary ("P2CcomWordExporter.txt"));
    EXPECT_EQ (Protocol::cancelFilePath().toStdString(), tool.inTemporary ("C2PcomWordExporter.txt"));
    EXPECT_EQ (Protocol::importJSONFilePath().toStdString(), tool.inTemporary ("WordDocumentJSONImport.txt"));
    EXPECT_EQ (Protocol::exportJSONFilePath ("timecode").toStdString(),
               tool.inTemporary ("WordDocumentJSON_timecode.txt"));
}

TEST (DocxHandlerProtocol, harmlessIdentifiersStandUnchangedInAFilesName)
{
    for (const std::string id : { "", "singlefile", "6f1c0a2e-8a57-4d0e-9a39-0c1c0f1d2e3f", "..", "a b",
                                  "$(touch x)", "\"`\\", "\n", "-rf", "J\xc3\xa4ger", "\xf0\x9f\x8e\xac" })
        EXPECT_EQ (nameOf (Protocol::exportJSONFilePath (text (id))), "WordDocumentJSON_" + id + ".txt");
}

TEST (DocxHandlerProtocol, noIdentifierLeavesTheTemporaryFolderOrBreaksAListOfPaths)
{
    const StandInTool tool;
    EXPECT_EQ (nameOf (Protocol::exportJSONFilePath ("../../etc/passwd")),
               "WordDocumentJSON_..%2F..%2Fetc%2Fpasswd.txt");
    EXPECT_EQ (nameOf (Protocol::exportJSONFilePath ("/a,b%2F")), "WordDocumentJSON_%2Fa%2Cb%252F.txt");

    for (const auto* id : { "/../../x", "x/../..", "/", "//", "a/..", "../WordDocumentJSONImport" })
        EXPECT_EQ (juce::File (Protocol::exportJSONFilePath (id)).getParentDirectory().getFullPathName(),
                   text (tool.temporary.string()));
}

TEST (DocxHandlerProtocol, differentIdentifiersHaveDifferentFiles)
{
    const std::string longOne (400, 'x');
    std::set<juce::String> paths;
    const Words ids { "a/b", "a%2Fb", "a,b", "a%2Cb", "a%252Fb", longOne, longOne + "y", longOne + "/" };

    for (const auto& id : ids)
        paths.insert (Protocol::exportJSONFilePath (text (id)));

    EXPECT_EQ (paths.size(), ids.size());
}

TEST (DocxHandlerProtocol, aLongIdentifierIsCutToWhatAFileCanBeCalled)
{
    std::string umlauts;
    while (umlauts.size() < 400)
        umlauts += "\xc3\xa4";

    const std::string longestUnchanged (255 - 21, 'x');
    EXPECT_EQ (nameOf (Protocol::exportJSONFilePath (text (longestUnchanged))),
               "WordDocumentJSON_" + longestUnchanged + ".txt");

    for (const auto& id : { longestUnchanged + "x", umlauts, "x" + umlauts, std::string (400, '/') })
    {
        const auto name = nameOf (Protocol::exportJSONFilePath (text (id)));
        EXPECT_LE (name.size(), 255u);
        EXPECT_GE (name.size(), 254u);
        EXPECT_TRUE (name.ends_with (".txt"));
        EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (name.c_str(), static_cast<int> (name.size())));
    }
}

// ---- command lines -------------------------------------------------------------------------------------------------------

TEST (DocxHandlerProtocol, theCommandLineOfAnExportHasItsPartsInQuotes)
{
    const StandInTool tool;
    EXPECT_EQ (Protocol::exportCommandLine ({ "/t/a.txt", "/t/b.txt" }, { "/o/a.docx", "/o/b.docx" },
                                            { "/t/in.txt", "/t/out.txt" })
                   .toStdString(),
               "\"" + (tool.resources / "docxHandler").string()
                   + R"(" "export" "json=/t/a.txt,/t/b.txt" "output=/o/a.docx,/o/b.docx" )"
                     R"("com=/t/in.txt,/t/out.txt")");
}

TEST (DocxHandlerProtocol, withoutDocumentsTwoEmptyPartsStandInTheCommandLine)
{
    const StandInTool tool;
    EXPECT_EQ (Protocol::exportCommandLine ({}, {}, { "/t/in.txt", "/t/out.txt" }).toStdString(),
               "\"" + (tool.resources / "docxHandler").string()
                   + R"(" "export" "" "" "com=/t/in.txt,/t/out.txt")");
}

TEST (DocxHandlerProtocol, theCommandLineOfAnImportHasItsPartsInQuotes)
{
    const StandInTool tool;
    EXPECT_EQ (
        Protocol::importCommandLine ("/c/a, b.docx", "/t/j.txt", { "/t/in.txt", "/t/out.txt" }).toStdString(),
        "\"" + (tool.resources / "docxHandler").string()
            + R"(" "import" "input=/c/a, b.docx" "json=/t/j.txt" "com=/t/in.txt,/t/out.txt")");
}

TEST (DocxHandlerProtocol, fourCharactersAreEscapedForTheShell)
{
    EXPECT_TRUE (Protocol::importCommandLine ("\\\"$`!'*?;&|<>(){}~#%\n\t ", {}, {})
                     .contains ("\"input=\\\\\\\"\\$\\`!'*?;&|<>(){}~#%\n\t \""));
}

class HostileNames : public testing::TestWithParam<std::string>
{
};

TEST_P (HostileNames, reachTheToolAsTheyAreAndRunNothing)
{
    const StandInTool tool;
    const auto name = tool.folder.path.string() + "/" + GetParam();
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path (tool.folder.path);
    Protocol::run (Protocol::exportCommandLine ({ text (name) }, { text (name + ".docx") },
                                                { text (name + "1"), text (name + "2") }));
    EXPECT_EQ (tool.words(), (Words { (tool.resources / "docxHandler").string(), "export", "json=" + name,
                                      "output=" + name + ".docx", "com=" + name + "1," + name + "2" }));

    Protocol::run (Protocol::importCommandLine (text (name), text (name + ".txt"), {}));
    EXPECT_EQ (tool.words(), (Words { (tool.resources / "docxHandler").string(), "import", "input=" + name,
                                      "json=" + name + ".txt", "" }));
    std::filesystem::current_path (before);

    EXPECT_EQ (tool.folder.names(), (Words { "resources", "temporary" })) << "nothing else may have run";
    EXPECT_EQ (tool.runs(), 2);
}

TEST_P (HostileNames, mayBeThoseOfTheToolsOwnFolder)
{
    const StandInTool tool ({}, GetParam());
    Protocol::run (Protocol::importCommandLine ("a.docx", "j.txt", { "1", "2" }));
    EXPECT_EQ (tool.words(), (Words { (tool.resources / "docxHandler").string(), "import", "input=a.docx",
                                      "json=j.txt", "com=1,2" }));
    EXPECT_EQ (tool.folder.names().size(), 2u);
}

INSTANTIATE_TEST_SUITE_P (DocxHandlerProtocol, HostileNames,
                          testing::Values ("plain", "with blank", "\"", "a\"b\"c", "\"; touch x; \"",
                                           "$(touch x)", "`touch x`", "$HOME", "${IFS}", "$((1+1))", "$$",
                                           "\\", "\\\\", "\\\"", "\\$(touch x)", "\\`touch x\\`", "a\\",
                                           "a\nb", "\n", "\\\nb", "a\n touch x\n", "a\rb", "a\tb", "!", "!!",
                                           "!touch", "a;touch x", "-rf", "--help", "a&b", "a|touch x", "a>x",
                                           "<x", "*", "?", "[a-z]", "{a,b}", "~", "~root", "#a", "'",
                                           "'$(touch x)'", "%s%n", "\x01\x7f", "J\xc3\xa4ger",
                                           "\xe6\x97\xa5\xe6\x9c\xac", "\xf0\x9f\x8e\xac", "\xe2\x80\xa8"));

TEST (DocxHandlerProtocol, aToolThatIsMissingOrFailsIsNoMatterHere)
{
    const StandInTool tool ("exit 3");
    const CollectedLog log;
    Protocol::run (Protocol::importCommandLine ("a.docx", "j.txt", {}));
    EXPECT_EQ (tool.runs(), 1);

    tool.install ("kill -9 $$");
    Protocol::run (Protocol::importCommandLine ("a.docx", "j.txt", {}));
    EXPECT_EQ (tool.runs(), 2);

    std::filesystem::remove (tool.resources / "docxHandler");
    Protocol::run (Protocol::importCommandLine ("a.docx", "j.txt", {}) + " 2> /dev/null");
    EXPECT_EQ (tool.runs(), 2);
    EXPECT_TRUE (log.lines().empty());
}

TEST (DocxHandlerProtocol, aCommandLineThatNoSystemTakesIsLogged)
{
    const StandInTool tool;
    const CollectedLog log;
    const std::string longest (static_cast<std::size_t> (Protocol::longestCommandLine)
                                   - Protocol::importCommandLine ({}, {}, {}).getNumBytesAsUTF8(),
                               'x');
    Protocol::run (Protocol::importCommandLine (text (longest), {}, {}));
    EXPECT_EQ (tool.runs(), 1);
    EXPECT_TRUE (log.lines().empty());

    Protocol::run (Protocol::importCommandLine (text (longest + "x"), {}, {}));
    EXPECT_EQ (tool.runs(), 1);
    EXPECT_EQ (log.lines(),
               (Words { "docxHandler can't be started for so many documents at once: the command "
                        "line of 131072 bytes is too long" }));
}

// ---- the files of the talk -----------------------------------------------------------------------------------------------

TEST (DocxHandlerProtocol, cancellingAppendsAWordALineFeedAndAZeroByte)
{
    const StandInTool tool;
    const std::string once ("cancel\n\0", 8);
    EXPECT_TRUE (Protocol::writeCancel (Protocol::cancelFilePath()));
    EXPECT_EQ (tool.bytes ("C2PcomWordExporter.txt"), once);
    EXPECT_TRUE (Protocol::writeCancel (Protocol::cancelFilePath()));
    EXPECT_EQ (tool.bytes ("C2PcomWordExporter.txt"), once + once);
    EXPECT_FALSE (Protocol::writeCancel (text (tool.inTemporary ("none/x"))));
}

TEST (DocxHandlerProtocol, aLevelStandsBehindItsNameAndOneEqualsSign)
{
    const std::vector<std::pair<std::string, std::optional<int>>> table {
        { "completionLevel=0", 0 },
        { "completionLevel=50", 50 },
        { "completionLevel=100", 100 },
        { "completionLevel= 7", 7 },
        { "completionLevel=7%", 7 },
        { "completionLevel=", 0 }, // whoever looks while it is written
        { "completionLevel=x", 0 },
        { "completionLevel=-5", -5 },
        { "completionLevel=99999999999999999999", 999999999 },
        { "completionLevel", std::nullopt },
        { "completionLevel=1=2", std::nullopt },
        { "completionLevel==2", std::nullopt },
        { "completionlevel=2", std::nullopt },
        { " completionLevel=2", std::nullopt },
        { "completionLevel =2", std::nullopt },
        { "=2", std::nullopt },
        { "", std::nullopt },
        { "Error message = x", std::nullopt },
    };

    for (const auto& [line, level] : table)
        EXPECT_EQ (Protocol::levelOfLine (text (line)), level) << line;
}

TEST (DocxHandlerProtocol, onlyTheFirstLineOfAFileCounts)
{
    const StandInTool tool;
    const auto first = [&tool] (const std::string& bytes)
    {
        tool.plant ("x", bytes);
        return Protocol::firstLineOf (juce::File (text (tool.inTemporary ("x"))));
    };

    EXPECT_EQ (first ("a\nb\n"), juce::String ("a"));
    EXPECT_EQ (first ("a\r\nb"), juce::String ("a"));
    EXPECT_EQ (first ("\nb"), juce::String());
    EXPECT_EQ (first (""), juce::String());
    EXPECT_EQ (first (std::string (1 << 20, 'x'))->length(), 4096);
    EXPECT_EQ (first ("\xff\xc0\x80 a")->fromLastOccurrenceOf (" ", false, false), "a");
    EXPECT_EQ (Protocol::firstLineOf (juce::File (text (tool.inTemporary ("none")))), std::nullopt);
}

TEST (DocxHandlerProtocol, neverWaitsForAPipeInThePlaceOfAFile)
{
    const StandInTool tool;
    ASSERT_EQ (::mkfifo (tool.inTemporary ("P2CcomWordExporter.txt").c_str(), 0600), 0);
    EXPECT_EQ (Protocol::firstLineOf (juce::File (Protocol::progressFilePath())), std::nullopt);
    EXPECT_EQ (Protocol::errorIn (juce::File (Protocol::progressFilePath())), std::nullopt);
}

TEST (DocxHandlerProtocol, theFirstLineThatTellsOfAnErrorIsTakenWithoutItsMarker)
{
    const StandInTool tool;
    const std::vector<std::pair<std::string, std::optional<juce::String>>> table {
        { "Error message = It broke", "It broke" },
        { "completionLevel=10\nError message = One\nError message = Two\n", "One" },
        { "Error message = One\r\nmore", "One" },
        { "now: Error message = One", "now: One" },
        { "Error message = Error message = ", "Error message = " },
        { "Error message = J\xc3\xa4ger", text ("J\xc3\xa4ger") },
        { "Error message = \nError message = x", "x" }, // a marker alone tells nothing
        { "Error message = ", std::nullopt },
        { "error message = x", std::nullopt },
        { "Error message: x", std::nullopt },
        { "completionLevel=100", std::nullopt },
        { "", std::nullopt },
    };

    for (const auto& [bytes, error] : table)
    {
        tool.plant ("P2CcomWordExporter.txt", bytes);
        EXPECT_EQ (Protocol::errorIn (juce::File (Protocol::progressFilePath())), error) << bytes;
    }

    std::filesystem::remove (tool.temporary / "P2CcomWordExporter.txt");
    EXPECT_EQ (Protocol::errorIn (juce::File (Protocol::progressFilePath())), std::nullopt);
}

TEST (DocxHandlerProtocol, anErrorIsSoughtInTheFirstMegabyteAndNoFurther)
{
    const StandInTool tool;
    const auto errorBehind = [&tool] (std::size_t bytes)
    {
        tool.plant ("P2CcomWordExporter.txt", std::string (bytes, '\n') + "Error message = x");
        return Protocol::errorIn (juce::File (Protocol::progressFilePath()));
    };

    EXPECT_EQ (errorBehind ((1 << 20) - 17), juce::String ("x"));
    EXPECT_EQ (errorBehind ((1 << 20) - 16), std::nullopt);
}

TEST (DocxHandlerProtocol, whatIsWrittenForTheToolIsForNobodyElseToRead)
{
    const StandInTool tool;
    const auto rightsOf = [&tool] (const std::string& name)
    { return static_cast<unsigned> (std::filesystem::status (tool.temporary / name).permissions()); };

    EXPECT_TRUE (Protocol::writeCancel (Protocol::cancelFilePath()));
    EXPECT_EQ (rightsOf ("C2PcomWordExporter.txt"), 0600u);
    EXPECT_TRUE (Protocol::replaceFile (juce::File (Protocol::exportJSONFilePath ("x")), "{}").wasOk());
    EXPECT_EQ (rightsOf ("WordDocumentJSON_x.txt"), 0600u);
}

TEST (DocxHandlerProtocol, theWordToStopIsNotWrittenIntoAFileThatHasAnotherNameToo)
{
    const StandInTool tool;
    tool.plant ("precious", "kept");
    std::filesystem::create_hard_link (tool.temporary / "precious",
                                       tool.temporary / "C2PcomWordExporter.txt");
    EXPECT_FALSE (Protocol::writeCancel (Protocol::cancelFilePath()));
    EXPECT_EQ (tool.bytes ("precious"), "kept");
}
