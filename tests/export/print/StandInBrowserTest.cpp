// SPDX-License-Identifier: GPL-3.0-only
// What becomes of printing when the browser isn't one, dies or says nothing.
#include "export/print/StandInBrowser.h"
#include "export/print/BrowserProgram.h"
#include "export/print/PrintSupport.h"
#include "support/ChildProcess.h"
#include "support/FullDisk.h"

#include <fcntl.h>

#include <csignal>
#include <set>

using namespace ExportSupport;
using namespace std::chrono_literals;
using namespace ZEP::Overmarks::Testing;
using testing::HasSubstr;

namespace
{

class StandInBrowserTest : public PrintTest
{
protected:
    StandInBrowserTest()
    {
        patience = 600ms;
        settings->events = events ({ { .words = "Hello" } });
    }

    std::string printWith (const std::string& script)
    {
        useBrowser (script);
        const auto start = std::chrono::steady_clock::now();
        const auto reason = print();
        EXPECT_LT (std::chrono::steady_clock::now() - start, 60s) << "it hangs";
        return reason;
    }
};

const std::string ended = "the browser has ended before the page was printed";
const std::string silent = "the browser doesn't answer";
const std::string garbled = "the browser's answer can't be understood";

TEST_F (StandInBrowserTest, whatAWellBehavedOneHasPrintedIsInItsPlace)
{
    EXPECT_EQ (printWith (browserThat ("", "")), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), "%PDF-1.4 printed");
}

TEST_F (StandInBrowserTest, anOldDocumentIsReplacedByANewOneAndKeptWhenThereIsNone)
{
    folder.write ("Reel 2.pdf", "old");
    EXPECT_EQ (printWith ("exit 3"), ended);
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), "old");
    EXPECT_EQ (printWith (browserThat ("", "")), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), "%PDF-1.4 printed");
    EXPECT_EQ (folder.names(), (std::vector<std::string> { "Reel 2.pdf", "browser" }));
}

TEST_F (StandInBrowserTest, oneThatHangsAtItsStartIsGivenUp)
{
    EXPECT_EQ (printWith ("sleep 1000"), silent);
    EXPECT_FALSE (wasPrinted());
}

TEST_F (StandInBrowserTest, oneThatHangsAnywhereIsGivenUp)
{
    for (const auto& place : places)
        EXPECT_EQ (printWith (browserThat (place, "sleep 1000")), silent) << place;

    EXPECT_FALSE (wasPrinted());
}

TEST_F (StandInBrowserTest, oneThatDiesAnywhereIsTold)
{
    EXPECT_EQ (printWith ("exit 0"), ended);
    EXPECT_EQ (printWith ("kill -SEGV $$"), ended);

    for (const auto& place : places)
        EXPECT_EQ (printWith (browserThat (place, "kill -KILL $$")), ended) << place;

    EXPECT_FALSE (wasPrinted());
}

TEST_F (StandInBrowserTest, itsChildrenEndWithIt)
{
    EXPECT_EQ (printWith ("sleep 1000 " + temporaryFiles.path.string() + " & trap '' TERM HUP INT\n"
                          + browserThat ("AT_PRINT", "sleep 1000")),
               silent); // the end of the test looks for processes
}

TEST_F (StandInBrowserTest, garbageIsTold)
{
    for (const auto* words :
         { "garbage", "[1]", "", "{\"id\":", "7", "{\"id\":\"one\"}", "{\"id\":1,\"result\":7}" })
        EXPECT_EQ (printWith ("printf '%s\\0' '" + std::string (words) + "' >&4; sleep 1000"), garbled)
            << words;
}

TEST_F (StandInBrowserTest, anAnswerWithoutEndFillsNoMemory)
{
    patience = 20s;
    EXPECT_EQ (printWith ("tr '\\0' x </dev/zero >&4"), garbled);
}

TEST_F (StandInBrowserTest, oneThatTalksForEverIsGivenUpInTheEnd)
{
    patience = 100ms;
    EXPECT_EQ (printWith ("while :; do printf '{\"method\":\"x\"}\\0' >&4; sleep 0.01; done"), silent);
}

TEST_F (StandInBrowserTest, oneThatReadsNothingIsGivenUp)
{
    EXPECT_EQ (printWith ("exec 3<&- ; sleep 1000"), silent);
    EXPECT_EQ (printWith ("exec 3<&- 4>&- ; sleep 1000"), ended) << "and no signal ends this process";
}

TEST_F (StandInBrowserTest, endlessComplaintsOnItsStandardErrorHoldUpNothing)
{
    EXPECT_EQ (printWith ("head -c 3000000 /dev/zero >&2\n" + browserThat ("", "")), "");
    EXPECT_EQ (printWith ("yes >&2"), silent);
}

TEST_F (StandInBrowserTest, aRefusalIsToldInTheBrowsersWords)
{
    EXPECT_EQ (
        printWith (browserThat (
            "AT_PRINT",
            "say \"{\\\"id\\\":$id,\\\"error\\\":{\\\"message\\\":\\\"Printing failed\\\"}}\"; continue")),
        "the browser refuses to print: Printing failed");
}

TEST_F (StandInBrowserTest, oneThatRefusesToShutThePageInPrintsNothing)
{
    for (const std::string order :
         { "Fetch.enable", "Browser.setDownloadBehavior", "Inspector.enable", "Page.enable",
           "Page.setLifecycleEventsEnabled", "Emulation.setScriptExecutionDisabled" })
        EXPECT_EQ (
            printWith (replaced (
                browserThat ("", ""), "*Fetch.enable*) : ;;",
                "*" + order
                    + "*) say \"{\\\"id\\\":$id,\\\"error\\\":{\\\"message\\\":\\\"no\\\"}}\"; continue ;;")),
            "the browser refuses to print: no")
            << order;

    EXPECT_FALSE (wasPrinted());
}

TEST_F (StandInBrowserTest, oneThatLoadsThePageWithoutAskingPrintsNothing)
{
    const std::string withoutAsking = "answer $id '{\"loaderId\":\"L\"}'; loaded L; continue";
    EXPECT_EQ (printWith (browserThat ("AT_LOAD", withoutAsking)), "the browser loads pages without asking");

    const auto askingOnce = replaced (browserThat ("", ""), "ask ',\"responseStatusCode\":200'; continue",
                                      "answer $navigation '{\"loaderId\":\"L\"}'; loaded L; continue");
    EXPECT_EQ (printWith (askingOnce), "the browser loads pages without asking");
    EXPECT_FALSE (wasPrinted());
}

TEST_F (StandInBrowserTest, thePageIsPrintedOnceItIsLoadedAndNotAnotherOne)
{
    // What was there before it, another one, and a part that is no end of loading.
    const auto browser = [this] (const std::string& atEnd)
    {
        return "loaded=no\n"
               + replaced (replaced (browserThat ("AT_LOAD", "loaded B"), "loaded L; continue ;;\n",
                                     "loaded A; say '{\"method\":\"Page.lifecycleEvent\",\"sessionId\":\"S\","
                                     "\"params\":{\"name\":\"init\",\"loaderId\":\"L\"}}'; "
                                         + atEnd + " continue ;;\n"),
                           "*Page.printToPDF*) ",
                           "*Page.printToPDF*) echo $loaded >>" + (folder.path / "told").string() + "; ");
    };
    EXPECT_EQ (printWith (browser ("")), silent);
    EXPECT_FALSE (std::filesystem::exists (folder.path / "told"));
    EXPECT_EQ (printWith (browser ("sleep 0.1; loaded=yes; loaded L;")), "");
    EXPECT_EQ (folder.bytes ("told"), "yes\n");
}

TEST_F (StandInBrowserTest, aPageMoreIsAskedForThanASheetMayHaveSoThatItShows)
{
    const auto told = (folder.path / "told").string();
    const auto browser =
        browserThat ("AT_PRINT", R"(pages=${message#*\"pageRanges\":\"1-}; pages=${pages%%\"*}; )"
                                 "printf '%s' $pages >"
                                     + told
                                     + "; "
                                       "sheet=$(printf '/Type /Page %.0s' $(seq $pages))");
    const auto reason = printWith (replaced (browser, "%PDF-1.4 printed", "%PDF-1.4 '\"$sheet\"'"));
    EXPECT_EQ (reason, "the sheet has more than "
                           + std::to_string (std::stoi ("0" + folder.bytes ("told")) - 1) + " pages");
}

TEST_F (StandInBrowserTest, thePagesOfAnotherSessionAreNotThePage)
{
    EXPECT_EQ (printWith (replaced (browserThat ("", ""), "\\\"sessionId\\\":\\\"S\\\",\\\"params\\\"",
                                    "\\\"sessionId\\\":\\\"other\\\",\\\"params\\\"")),
               silent);
}

TEST_F (StandInBrowserTest, aPageThatCrashesIsTold)
{
    EXPECT_EQ (
        printWith (browserThat ("AT_PRINT", "say '{\"method\":\"Inspector.targetCrashed\"}'; sleep 1000")),
        "the browser has given up the page");
}

TEST_F (StandInBrowserTest, aDocumentInBase64ComesOutByteForByte)
{
    const auto answering = [] (const std::string& base64)
    {
        return replaced (browserThat ("", ""), "\"data\":\"%PDF-1.4 printed\"",
                         "\"base64Encoded\":true,\"data\":\"" + base64 + "\"");
    };
    EXPECT_EQ (printWith (answering ("JVBERi0A/v8=")), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), std::string ("%PDF-\0\xfe\xff", 8));
    EXPECT_EQ (printWith (answering ("JVBERi0A/v8A")), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), std::string ("%PDF-\0\xfe\xff\0", 9));
    EXPECT_EQ (printWith (answering ("JVBE*i0A")), garbled);
}

TEST_F (StandInBrowserTest, whatIsNoPDFDocumentIsNotTakenForOne)
{
    EXPECT_EQ (printWith (replaced (browserThat ("", ""), "%PDF-1.4 printed", "<html>")),
               "the browser has printed no PDF document");
    EXPECT_FALSE (wasPrinted());
}

TEST_F (StandInBrowserTest, anEmptyDocumentIsNoMatterOfTheDisk)
{
    EXPECT_EQ (printWith (replaced (browserThat ("", ""), "%PDF-1.4 printed", "")),
               "the browser has printed no PDF document");
    EXPECT_FALSE (wasPrinted());
}

TEST_F (StandInBrowserTest, morePagesThanAListOfThatLengthCanFillAreNotTaken)
{
    const auto printing = [] (int pages)
    {
        return replaced (browserThat ("", ""), "%PDF-1.4 printed",
                         "%PDF-1.4 '$(printf '/Type /Page %.0s' {1.." + std::to_string (pages) + "})'");
    };
    EXPECT_THAT (printWith (printing (1000)),
                 testing::MatchesRegex ("the sheet has more than 1[0-9][0-9] pages"));
    EXPECT_FALSE (wasPrinted());
    EXPECT_EQ (printWith (printing (100)), "");
}

TEST_F (StandInBrowserTest, complaintsThatComeFasterThanTheyAreReadHoldUpNothing)
{
    patience = 100ms;
    EXPECT_EQ (printWith ("for i in 1 2 3 4; do cat /dev/zero >&2 & done; sleep 1000"), silent);
    EXPECT_EQ (printWith ("exec 3<&- 4>&-; for i in 1 2 3 4; do cat /dev/zero >&2 & done; sleep 1000"),
               ended);
}

TEST_F (StandInBrowserTest, afterTheSecondCharacterOneThatHangsIsWaitedForLessLong)
{
    patience = 2000ms;
    useBrowser ("sleep 1000");

    for (const std::string id : { "a", "b", "c", "d", "e" })
    {
        addCharacter (id, id);
        settings->eventsByCharacter[text (id)] = { event ({ .characterID = id, .words = "Hello" }) };
    }

    EventPDFExporter exporter (settings);
    exporter.makePrintAdapter = [this]
    {
        auto adapter = std::make_unique<ZEP_EventPDFExporter>();
        adapter->patience = patience;
        return adapter;
    };
    const CollectedLog log;
    const auto start = std::chrono::steady_clock::now();
    exporter.exportEventsByCharacter();
    const auto duration = std::chrono::steady_clock::now() - start;
    EXPECT_GE (duration, 2 * patience);
    EXPECT_LT (duration, 5 * patience);
    ASSERT_EQ (exporter.printFailures.size(), 5u);

    for (const auto& failure : exporter.printFailures)
        EXPECT_EQ (failure.reason.toStdString(), silent) << failure.file.getFileName();
}

TEST_F (StandInBrowserTest, onlyOneThatSaidNothingWasWaitedForInVain)
{
    EventPDFExporter exporter (settings);
    const auto waitsInVain = [this, &exporter] (const std::string& script)
    {
        useBrowser (script);
        ZEP_EventPDFExporter adapter;
        EXPECT_FALSE (adapter.hasWaitedInVain());
        adapter.patience = 300ms;
        adapter.initWithCallerObject (&exporter);
        EXPECT_NE (adapter.failure(), "");
        return adapter.hasWaitedInVain();
    };
    EXPECT_TRUE (waitsInVain ("sleep 1000"));
    EXPECT_FALSE (waitsInVain ("exit 3"));
}

TEST_F (StandInBrowserTest, whatIsDoneOutOfTurnIsTold)
{
    useBrowser (browserThat ("", ""));
    EventPDFExporter exporter (settings);
    ZEP_EventPDFExporter withoutBrowser;
    withoutBrowser.exportHTMLString ("<p>Hi</p>", path());
    EXPECT_EQ (withoutBrowser.failure(), "no browser was started for the document");

    ZEP_EventPDFExporter forNobody;
    forNobody.initWithCallerObject (nullptr);
    EXPECT_EQ (forNobody.failure(), "nobody has asked for the document");
    forNobody.exportHTMLString ("<p>Hi</p>", path());
    EXPECT_FALSE (wasPrinted());

    ZEP_EventPDFExporter twice;
    twice.initWithCallerObject (&exporter);
    twice.exportHTMLString ("<p>Hi</p>", path());
    EXPECT_EQ (twice.failure(), "");
    twice.exportHTMLString ("<p>Hi</p>", path() + "2");
    EXPECT_EQ (twice.failure(), "no browser was started for the document");
    EXPECT_EQ (folder.names(), (std::vector<std::string> { "Reel 2.pdf", "browser" }));
}

TEST_F (StandInBrowserTest, aProgramThatIsNoneCannotBeStarted)
{
    EXPECT_EQ (printWith (""), ended);
    folder.write ("browser", "no program");
    EXPECT_EQ (print(),
               "the browser " + (folder.path / "browser").string() + " can't be started: Exec format error");
    settings->options[EventExportBrowserKey] = "/nowhere/browser";
    EXPECT_EQ (print(), "the browser /nowhere/browser can't be started: there is no such program");
    settings->options[EventExportBrowserKey] = "no-such-browser";
    EXPECT_EQ (print(), "the browser no-such-browser isn't installed");
}

TEST_F (StandInBrowserTest, aMissingBrowserNamesThePackage)
{
    const std::string path = ::getenv ("PATH");
    ::setenv ("PATH", temporaryFiles.path.c_str(), 1);
    EXPECT_EQ (print(), "no browser is installed to print with; the package chromium-headless-shell has one");
    ::setenv ("PATH", path.c_str(), 1);
}

TEST_F (StandInBrowserTest, theUsualNamesAreSoughtInThePathAndNowhereElse)
{
    const std::string path = ::getenv ("PATH");
    useBrowser ("");
    std::filesystem::create_directory (folder.path / "bin");
    std::filesystem::copy (folder.path / "browser", folder.path / "bin/chromium");
    ::setenv ("PATH", ("relative::" + (folder.path / "bin").string()).c_str(), 1);
    EXPECT_EQ (findBrowser (""), folder.path / "bin/chromium");
    std::filesystem::copy (folder.path / "browser", folder.path / "bin/chromium-headless-shell");
    EXPECT_EQ (findBrowser (""), folder.path / "bin/chromium-headless-shell");
    EXPECT_EQ (findBrowser ("chromium"), folder.path / "bin/chromium");
    ::setenv ("PATH", path.c_str(), 1);
}

TEST_F (StandInBrowserTest, aFullDiskIsToldAndLeavesNothingHalfWritten)
{
    std::filesystem::create_symlink ("/dev/full", folder.path / "Reel 2.pdf");
    EXPECT_EQ (printWith (browserThat ("", "")), "No space left on device");
    std::filesystem::remove (folder.path / "Reel 2.pdf");

    {
        const FullDisk full (4000);
        useBrowser (browserThat ("", ""));
        EXPECT_THAT (print(), HasSubstr ("the page can't be written to " + temporaryFiles.path.string()));
    }

    {
        // The page fits and the document doesn't.
        const FullDisk full (100'000);
        EXPECT_THAT (printWith (replaced (browserThat ("", ""), "\"data\":\"%PDF-1.4 printed\"",
                                          "\"data\":\"%PDF-1.4 '$(printf %0200000d 1)'\"")),
                     HasSubstr ("the disk takes no more temporary files in " + temporaryFiles.path.string()));
    }

    EXPECT_EQ (folder.names(), std::vector<std::string> { "browser" });
}

TEST_F (StandInBrowserTest, aLimitOfFilesIsToldAndNotTheEndOfTheProcess)
{
    useBrowser (browserThat ("", ""));
    EXPECT_THAT (inChildProcess (
                     [this]
                     {
                         const FullDisk full (4000, SIG_DFL);
                         return print();
                     }),
                 HasSubstr ("the page can't be written to " + temporaryFiles.path.string()));
}

TEST_F (StandInBrowserTest, aMissingFolderIsTold)
{
    settings->outputDirectory = folder.directory() + "/nowhere";
    EXPECT_EQ (printWith (browserThat ("", "")), "No such file or directory");
}

TEST_F (StandInBrowserTest, noPlaceForTemporaryFilesIsTold)
{
    ::setenv ("TMPDIR", "/proc/none", 1);
    EXPECT_EQ (print(), "there is no place for temporary files in /proc/none: No such file or directory");
}

TEST_F (StandInBrowserTest, itGetsNoneOfTheApplicationsFilesAndSignals)
{
    // Handed on, were it not closed.
    const int open = ::open ("/dev/null", O_RDONLY);
    constexpr int seven = 7;
    ASSERT_EQ (::dup2 (open, seven), seven);
    std::signal (SIGPIPE, SIG_IGN);
    const auto list = (folder.path / "list").string();
    EXPECT_EQ (printWith ("[ -e /proc/$$/fd/7 ] && echo open >" + list + "\ngrep SigIgn /proc/$$/status >>"
                          + list + "\n" + browserThat ("", "")),
               "");
    std::signal (SIGPIPE, SIG_DFL);
    ::close (seven);
    ::close (open);
    const auto told = folder.bytes ("list");
    ASSERT_TRUE (told.starts_with ("SigIgn:\t")) << told;
    EXPECT_EQ (std::stoull (told.substr (8), nullptr, 16) & (1ull << (SIGPIPE - 1)), 0u) << told;
}

TEST_F (StandInBrowserTest, whatItNeedsIsHandedOnToNoOtherProgramAndClosedInTheEnd)
{
    const auto openFiles = []
    {
        std::set<int> numbers;

        for (const auto& entry : std::filesystem::directory_iterator ("/proc/self/fd"))
            numbers.insert (std::stoi (entry.path().filename().string()));

        return numbers;
    };

    const auto before = openFiles();
    useBrowser (browserThat ("", ""));
    EventPDFExporter exporter (settings);
    int checked = 0;

    {
        ZEP_EventPDFExporter adapter;
        adapter.initWithCallerObject (&exporter);
        ASSERT_EQ (adapter.failure(), "");

        for (const int number : openFiles())
            if (before.count (number) == 0 && ::fcntl (number, F_GETFD) >= 0)
            {
                EXPECT_NE (::fcntl (number, F_GETFD) & FD_CLOEXEC, 0) << number;
                ++checked;
            }
    }

    EXPECT_GE (checked, 2);
    EXPECT_EQ (openFiles(), before);
}

TEST_F (StandInBrowserTest, anApplicationThatDoesNotWaitForItsChildrenPrintsAsWell)
{
    std::signal (SIGCHLD, SIG_IGN);
    EXPECT_EQ (printWith (browserThat ("", "")), "");
    std::signal (SIGCHLD, SIG_DFL);
}

TEST_F (StandInBrowserTest, severalThreadsPrintAtOnce)
{
    useBrowser (browserThat ("", ""));
    patience = 10s;
    std::vector<std::thread> threads;
    std::vector<juce::String> reasons (6);

    for (int i = 0; i < 6; ++i)
        threads.emplace_back (
            [this, i, &reason = reasons[static_cast<std::size_t> (i)]]
            {
                EventPDFExporter exporter (settings);
                ZEP_EventPDFExporter adapter;
                adapter.initWithCallerObject (&exporter);
                adapter.exportHTMLString ("<p>Hi</p>",
                                          (folder.path / (std::to_string (i) + ".pdf")).string());
                reason = adapter.failure();
            });

    for (auto& thread : threads)
        thread.join();

    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ (reasons[static_cast<std::size_t> (i)], "");
        EXPECT_EQ (folder.bytes (std::to_string (i) + ".pdf"), "%PDF-1.4 printed");
    }
}

TEST_F (StandInBrowserTest, whereTheSystemLetsItShutNothingInItIsStartedWithoutThat)
{
    useBrowser ("case \" $* \" in *' --no-sandbox '*) ;; *) echo 'No usable sandbox!' >&2; exit 1 ;; esac\n"
                + browserThat ("", ""));
    std::filesystem::permissions (folder.path, std::filesystem::perms::all);
    std::filesystem::permissions (temporaryFiles.path, std::filesystem::perms::all);
    EXPECT_EQ (inChildProcess ([this] { return becomeOrdinaryUser() ? print() : "no ordinary user"; }), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), "%PDF-1.4 printed");
}

TEST_F (StandInBrowserTest, onlyAnAdministratorsIsStartedWithoutASandboxAtOnce)
{
    const auto told = folder.path / "told";
    useBrowser ("echo \" $* \" >" + told.string() + "\n" + browserThat ("", ""));
    std::filesystem::permissions (folder.path, std::filesystem::perms::all);
    std::filesystem::permissions (temporaryFiles.path, std::filesystem::perms::all);
    EXPECT_EQ (inChildProcess ([this] { return becomeOrdinaryUser() ? print() : "no ordinary user"; }), "");
    EXPECT_THAT (folder.bytes ("told"), HasSubstr (" --headless "));
    EXPECT_THAT (folder.bytes ("told"), testing::Not (HasSubstr ("--no-sandbox")));
}

} // namespace
