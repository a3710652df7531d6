// SPDX-License-Identifier: GPL-3.0-only
// What the browser is told, and in which order: what a page may do has to be settled before it is loaded.
#include "export/print/PrintSupport.h"
#include "export/print/StandInBrowser.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>

using namespace ExportSupport;
using namespace std::chrono_literals;
using nlohmann::json;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace
{

class BrowserOrdersTest : public PrintTest
{
protected:
    /** Does that too whenever it is told something. */
    void useBrowserThatNotes (const std::string& script)
    {
        useBrowser (
            replaced (script, "-d '' message <&3; do",
                      "-d '' message <&3; do printf '%s\\n' \"$message\" >>" + pathOf ("orders") + ";"));
    }

    std::string pathOf (const std::string& name) const { return (folder.path / name).string(); }

    std::vector<json> orders() const
    {
        std::vector<json> found;
        std::istringstream lines (folder.bytes ("orders"));

        for (std::string line; std::getline (lines, line);)
            found.push_back (json::parse (line));

        return found;
    }

    json order (const std::string& method) const
    {
        for (const auto& each : orders())
            if (each.value ("method", std::string()) == method)
                return each;

        return json::object();
    }

    /** Prints a page of HTML. @returns why that failed, or the empty string */
    std::string printPage (const std::string& html)
    {
        EventPDFExporter exporter (settings);
        ZEP_EventPDFExporter adapter;
        adapter.patience = patience.count() > 0 ? patience : 10'000ms;
        adapter.initWithCallerObject (&exporter);
        adapter.exportHTMLString (html, path());
        ownTime = adapter.browsersOwnTime();
        return adapter.failure().toStdString();
    }

    std::chrono::duration<double> ownTime {};
};

TEST_F (BrowserOrdersTest, aPageIsShutInBeforeItIsLoadedAndPrintedWhenItIsThere)
{
    useBrowserThatNotes (browserThat ("", ""));
    ASSERT_EQ (printPage ("<p>Hi</p>"), "");
    const char* expected[] = { "Target.createTarget",
                               "Target.attachToTarget",
                               "Fetch.enable",
                               "Browser.setDownloadBehavior",
                               "Inspector.enable",
                               "Page.enable",
                               "Page.setLifecycleEventsEnabled",
                               "Emulation.setScriptExecutionDisabled",
                               "Page.navigate",
                               "Fetch.continueRequest",
                               "Fetch.continueResponse",
                               "Page.printToPDF",
                               "IO.read" };
    const auto told = orders();
    ASSERT_EQ (told.size(), std::size (expected));

    for (std::size_t i = 0; i < told.size(); ++i)
    {
        EXPECT_EQ (told[i]["method"], expected[i]) << i;
        EXPECT_EQ (told[i]["id"], static_cast<int> (i) + 1);

        // Of the whole browser are those before there is a page, and those that are to hold for all of its frames.
        const bool isOfBrowser = i < 4 || i == 9 || i == 10;
        EXPECT_EQ (told[i].value ("sessionId", std::string()), isOfBrowser ? "" : "S") << expected[i];
    }
}

TEST_F (BrowserOrdersTest, scriptsDownloadsAndUnaskedRequestsAreForbidden)
{
    useBrowserThatNotes (browserThat ("", ""));
    ASSERT_EQ (printPage ("<p>Hi</p>"), "");
    EXPECT_EQ (order ("Target.createTarget")["params"], (json { { "url", "about:blank" } }));
    EXPECT_EQ (order ("Target.attachToTarget")["params"],
               (json { { "targetId", "T" }, { "flatten", true } }));
    EXPECT_EQ (order ("Browser.setDownloadBehavior")["params"], (json { { "behavior", "deny" } }));
    EXPECT_EQ (order ("Emulation.setScriptExecutionDisabled")["params"], (json { { "value", true } }));
    EXPECT_EQ (order ("Page.setLifecycleEventsEnabled")["params"], (json { { "enabled", true } }));
    const auto patterns = order ("Fetch.enable")["params"]["patterns"];
    const auto page = order ("Page.navigate")["params"]["url"].get<std::string>();
    ASSERT_EQ (patterns.size(), 2u);
    EXPECT_EQ (patterns[0]["urlPattern"], "*");
    const auto ofPage = patterns[1]["urlPattern"].get<std::string>();
    EXPECT_THAT (ofPage, MatchesRegex ("\\*/overmarks-print-[A-Za-z0-9]+/page\\.html"));
    EXPECT_EQ (page, "file://" + temporaryFiles.path.string() + ofPage.substr (1));
}

TEST_F (BrowserOrdersTest, thePaperIsThatOfTheSettingsWithRoomForTheFooter)
{
    const std::pair<const char*, std::pair<double, double>> papers[] = { { "a4", { 595, 842 } },
                                                                         { "letter", { 612, 792 } } };

    for (const auto& [name, size] : papers)
    {
        std::filesystem::remove (folder.path / "orders");
        settings->options[EventExportPaperKey] = name;
        useBrowserThatNotes (browserThat ("", ""));
        ASSERT_EQ (printPage ("<p>Hi</p>"), "");
        const auto told = order ("Page.printToPDF")["params"];
        const auto points = [&told] (const char* key) { return told.value (key, 0.0) * 72; };
        EXPECT_NEAR (points ("paperWidth"), size.first, 0.01);
        EXPECT_NEAR (points ("paperHeight"), size.second, 0.01);
        EXPECT_NEAR (points ("marginTop"), 30, 0.01);
        EXPECT_NEAR (points ("marginLeft"), 30, 0.01);
        EXPECT_NEAR (points ("marginRight"), 30, 0.01);
        EXPECT_NEAR (points ("marginBottom"), 20 + 24, 0.01);
        EXPECT_EQ (told["landscape"], false);
        EXPECT_EQ (told["printBackground"], true) << "or no field is blue";
        EXPECT_EQ (told["generateTaggedPDF"], false);
        EXPECT_EQ (told["displayHeaderFooter"], true);
        EXPECT_EQ (told["headerTemplate"], "<span></span>") << "or the browser writes one of its own";
        EXPECT_THAT (told["footerTemplate"].get<std::string>(),
                     HasSubstr ("Page: <span class=\"pageNumber\">"));
        EXPECT_EQ (told["transferMode"], "ReturnAsStream");
    }
}

TEST_F (BrowserOrdersTest, aSheetMayHaveAHundredPagesAndOneMoreForEachTwoHundredBytes)
{
    for (const auto& [bytes, pages] : { std::pair (10, 100), std::pair (199, 100), std::pair (200, 101),
                                        std::pair (20'000, 200), std::pair (20'099, 200) })
    {
        std::filesystem::remove (folder.path / "orders");
        useBrowserThatNotes (browserThat ("", ""));
        ASSERT_EQ (printPage (std::string (static_cast<std::size_t> (bytes), 'x')), "");
        EXPECT_EQ (order ("Page.printToPDF")["params"]["pageRanges"], "1-" + std::to_string (pages + 1))
            << bytes;
    }
}

TEST_F (BrowserOrdersTest, aDocumentIsFetchedInPiecesOfAMegabyteUntilItsEnd)
{
    useBrowserThatNotes (replaced (browserThat ("AT_READ", "n=$((n+1)); [ $n = 3 ] && end=true || end=false"),
                                   "{\"data\":\"%PDF-1.4 printed\",\"eof\":true}",
                                   "{\"data\":\"%PDF-'$n' \",\"eof\":'$end'}"));
    ASSERT_EQ (printPage ("<p>Hi</p>"), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), "%PDF-1 %PDF-2 %PDF-3 ");
    EXPECT_EQ (order ("IO.read")["params"], (json { { "handle", "1" }, { "size", 1048576 } }));
}

TEST_F (BrowserOrdersTest, aPieceThatDoesNotSayWhetherMoreFollowsIsTheLast)
{
    useBrowserThatNotes (replaced (browserThat ("", ""), ",\"eof\":true", ""));
    ASSERT_EQ (printPage ("<p>Hi</p>"), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), "%PDF-1.4 printed");
}

TEST_F (BrowserOrdersTest, thePageLiesInAFolderOfItsOwnForNobodyElseToRead)
{
    useBrowserThatNotes (
        browserThat ("AT_LOAD", "file=${message#*file://}; file=${file%%\\\"*}; cp \"$file\" "
                                    + pathOf ("page") + "; stat -c %a \"$file\" >" + pathOf ("rights")
                                    + "; ls -la \"${file%/*}\" >" + pathOf ("beside")));
    ASSERT_EQ (printPage ("<p>Hi</p>"), "");
    EXPECT_EQ (folder.bytes ("rights"), "600\n");
    EXPECT_THAT (folder.bytes ("page"), testing::StartsWith ("<!DOCTYPE html>"));
    EXPECT_THAT (folder.bytes ("page"), testing::EndsWith ("</style><p>Hi</p>"));
}

TEST_F (BrowserOrdersTest, anAddressHasWhateverIsNoPlainLetterInHexadecimalDigits)
{
    const auto odd = temporaryFiles.path / "a b%c#d?e-f_g.h~\xc3\xa4";
    std::filesystem::create_directory (odd);
    ::setenv ("TMPDIR", odd.c_str(), 1);
    useBrowserThatNotes (browserThat ("", ""));
    printPage ("<p>Hi</p>");
    ::setenv ("TMPDIR", temporaryFiles.path.c_str(), 1);
    std::filesystem::remove (odd);
    EXPECT_THAT (order ("Page.navigate")["params"]["url"].get<std::string>(),
                 testing::StartsWith ("file://" + temporaryFiles.path.string()
                                      + "/a%20b%25c%23d%3Fe-f_g.h%7E%C3%A4/overmarks-print-"));
}

TEST_F (BrowserOrdersTest, aPageThatCannotBeLoadedIsToldInTheBrowsersWords)
{
    useBrowserThatNotes (
        browserThat ("AT_LOAD", "answer $id '{\"errorText\":\"net::ERR_FILE_NOT_FOUND\"}'; continue"));
    EXPECT_EQ (printPage ("<p>Hi</p>"), "the browser can't load the page: net::ERR_FILE_NOT_FOUND");
}

TEST_F (BrowserOrdersTest, aRefusalWithoutWordsIsToldWithoutWords)
{
    for (const std::string error : { "7", "{}", "\"no\"" })
    {
        useBrowserThatNotes (
            browserThat ("AT_PRINT", "say '{\"id\":'$id',\"error\":" + error + "}'; continue"));
        EXPECT_EQ (printPage ("<p>Hi</p>"), "the browser refuses to print: ");
    }
}

TEST_F (BrowserOrdersTest, aPageThatIsTakenAwayIsTold)
{
    useBrowserThatNotes (
        browserThat ("AT_PRINT", "say '{\"method\":\"Target.detachedFromTarget\"}'; sleep 1000"));
    EXPECT_EQ (printPage ("<p>Hi</p>"), "the browser has given up the page");
}

TEST_F (BrowserOrdersTest, theBrowsersOwnTimeIsThatOfLoadingAndOfPrinting)
{
    useBrowserThatNotes (replaced (browserThat ("AT_SHOWN", "sleep 0.2"), "*Page.printToPDF*) ",
                                   "*Page.printToPDF*) sleep 0.3; "));
    ASSERT_EQ (printPage ("<p>Hi</p>"), "");
    EXPECT_GE (ownTime.count(), 0.5);
    EXPECT_LT (ownTime.count(), 60);
}

TEST_F (BrowserOrdersTest, aLargePageIsWaitedForLonger)
{
    patience = 600ms;
    useBrowserThatNotes (browserThat ("AT_SHOWN", "sleep 1"));
    EXPECT_EQ (printPage (std::string (30'000, 'x')), "");
}

TEST_F (BrowserOrdersTest, aPageThatIsNotAsLargeAsThatIsNot)
{
    patience = 600ms;
    useBrowserThatNotes (browserThat ("AT_SHOWN", "sleep 1"));
    EXPECT_EQ (printPage (std::string (29'999, 'x')), "the browser doesn't answer");
}

} // namespace
