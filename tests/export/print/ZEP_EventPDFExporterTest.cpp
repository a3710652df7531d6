// SPDX-License-Identifier: GPL-3.0-only
// Printing with the browser that is installed.
#include "export/print/ZEP_EventPDFExporter.h"

#include "core/system/SystemUtility.h"
#include "export/print/PrintSupport.h"
#include "support/ChildProcess.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cmath>

using namespace ExportSupport;
using namespace std::chrono_literals;
using namespace ZEP::Overmarks::Testing;
using testing::HasSubstr;
using testing::Not;
using ZEP::Core::SystemUtility;

namespace
{

constexpr double tolerance = 1.0;
constexpr unsigned int blueBackground = 0xecf5ff, greenBox = 0x1b9c39, yellowBox = 0xffcc00,
                       footerGrey = 0x555555, iconBlue = 0x2568b9;

class PrintedSheetTest : public PrintTest
{
protected:
    void addCues (int number)
    {
        for (int i = 0; i < number; ++i)
            settings->events.push_back (event ({ .cueNumber = "N" + std::to_string (i),
                                                 .in = oneHour + 100 * i,
                                                 .end = oneHour + 100 * i + 50,
                                                 .words = "Hello there" }));
    }

    PrintedPDF printed()
    {
        EXPECT_EQ (print(), "");
        return PrintedPDF (path());
    }

    /** The processes of the browser that is printing, whose command line says this. */
    std::vector<pid_t> processesOfBrowser (const std::string& word) const
    {
        std::vector<pid_t> found;

        for (const auto process : browserProcesses())
        {
            std::ifstream stream ("/proc/" + std::to_string (process) + "/cmdline", std::ios::binary);

            if (std::string (std::istreambuf_iterator<char> (stream), {}).find (word) != std::string::npos)
                found.push_back (process);
        }

        return found;
    }

    /** Prints a long list and kills what the word tells of the browser as soon as it is there. @returns the failure */
    std::string printWhileKilling (const std::string& word)
    {
        addCues (3000);
        std::atomic<bool> isDone { false };
        std::atomic<int> killed { 0 };
        std::thread killer (
            [&]
            {
                while (! isDone)
                {
                    // Not in its first moment: it shall have begun, and be more than the script that starts it.
                    std::this_thread::sleep_for (killed > 0 || processesOfBrowser (word).empty() ? 10ms
                                                                                                 : 700ms);

                    for (const auto process : processesOfBrowser (word))
                        killed += ::kill (process, SIGKILL) == 0 ? 1 : 0;
                }
            });
        const auto reason = print();
        isDone = true;
        killer.join();
        EXPECT_GT (killed, 0);
        return reason;
    }
};

void expectCentre (const PrintedPDF::Word& first, const PrintedPDF::Word& last, double centre)
{
    EXPECT_NEAR ((first.left + last.right) / 2, centre, tolerance) << first.text;
}

} // namespace

TEST_F (PrintedSheetTest, theFooterHasItsItemsInTheirPlacesOnA4)
{
    addCues (1);
    const auto document = printed();
    ASSERT_EQ (document.pages(), 1);
    EXPECT_NEAR (document.width(), 595, tolerance);
    EXPECT_NEAR (document.height(), 842, tolerance);

    const double x = 30, w = 595 - 60, bandTop = 842 - 44, textTop = 842 - 35, bottom = 842 - 20;
    const auto version = document.word (0, SystemUtility::executableVersion().toStdString());
    const auto page = document.word (0, "Page:");
    const auto number = document.word (0, "1/1");
    EXPECT_NEAR (version.left, x + 28, tolerance);
    EXPECT_NEAR (number.right, x + w - 4, tolerance);
    EXPECT_NEAR (page.top, number.top, 0.5);
    expectCentre (document.word (0, "Director"), document.word (0, "Layout"), x + 130 + (w - 28) / 2);

    for (const auto& word : { version, page, number, document.word (0, "Director") })
    {
        EXPECT_NEAR (word.top, textTop, tolerance) << word.text;
        EXPECT_LT (word.bottom, bottom) << word.text;
    }

    // Date and time: two words between the version and the layout's name.
    std::vector<PrintedPDF::Word> middle;

    for (const auto& word : document.words (0))
        if (word.top > bandTop && word.left > version.right
            && word.right < document.word (0, "Director").left)
            middle.push_back (word);

    ASSERT_FALSE (middle.empty());
    expectCentre (middle.front(), middle.back(), x + w / 2);

    EXPECT_EQ (document.colourAt (0, x + 100, bandTop), footerGrey) << "the line above it";
    EXPECT_NE (document.colourAt (0, x + 2, bandTop), footerGrey);
    EXPECT_NE (document.colourAt (0, x + w - 6, bandTop), footerGrey);
    EXPECT_NE (document.colourAt (0, x + 12, bottom - 8), 0xffffffu) << "the icon";
}

TEST_F (PrintedSheetTest, theFooterIsWholeOnEveryPage)
{
    addCues (10);
    const auto document = printed();
    ASSERT_EQ (document.pages(), 2);

    for (int page = 0; page < 2; ++page)
    {
        const double bandTop = 842 - 44, bottom = 842 - 20;
        EXPECT_EQ (document.colourAt (page, 130, bandTop), footerGrey) << "the line";
        EXPECT_NE (document.colourAt (page, 42, bottom - 8), 0xffffffu) << "the icon";
        std::vector<std::string> items;

        for (const auto& word : document.words (page))
            if (word.top > bandTop)
                items.push_back (word.text);

        EXPECT_THAT (items,
                     testing::IsSupersetOf ({ SystemUtility::executableVersion().toStdString(),
                                              std::string ("Page:"), std::string ("Director"),
                                              std::string ("Layout"), std::to_string (page + 1) + "/2" }));
        EXPECT_THAT (items, testing::Contains (testing::MatchesRegex (".*[0-9]+[:.][0-9]+.*"))) << "the time";
        EXPECT_GE (items.size(), 7u) << "and the date";
    }
}

TEST_F (PrintedSheetTest, letterPaperHasItsMeasuresAndMargins)
{
    settings->options[EventExportPaperKey] = "letter";
    addCues (1);
    const auto document = printed();
    EXPECT_NEAR (document.width(), 612, tolerance);
    EXPECT_NEAR (document.height(), 792, tolerance);
    EXPECT_NEAR (document.word (0, "1/1").right, 612 - 30 - 4, tolerance);
    EXPECT_NEAR (document.word (0, "1/1").top, 792 - 35, tolerance);
}

TEST_F (PrintedSheetTest, everyPageHasItsNumberAndNothingStandsInTheMarginsOrTheBand)
{
    addCues (40);
    const auto document = printed();
    ASSERT_GT (document.pages(), 3);

    for (int page = 0; page < document.pages(); ++page)
    {
        const auto number = std::to_string (page + 1) + "/" + std::to_string (document.pages());
        EXPECT_EQ (document.word (page, number).text, number);

        for (const auto& word : document.words (page))
        {
            EXPECT_GE (word.top, 30) << word.text;
            EXPECT_GE (word.left, 30) << word.text;
            EXPECT_LE (word.right, 595 - 30) << word.text;
            EXPECT_TRUE (word.bottom <= 842 - 44 || word.top >= 842 - 36) << word.text;
        }
    }

    EXPECT_THAT (document.text(), HasSubstr ("N39"));
}

TEST_F (PrintedSheetTest, noCueIsTornApart)
{
    addCues (40);
    expectWholeCues (printed());
}

TEST_F (PrintedSheetTest, labelsStayWholeBesideTheLongestNotes)
{
    juce::String notes;

    for (int i = 0; i < 24; ++i)
        notes << "the actor turns away from the window and speaks softly to the child ";

    auto long1 = event ({ .cueNumber = "N1", .words = "Hello", .notes = notes.toStdString() });
    settings->events = { long1 };
    const auto words = printed().words (0);
    EXPECT_TRUE (
        std::any_of (words.begin(), words.end(), [] (const auto& word) { return word.text == "NOTES"; }));
}

/** The words of a page with their places, for whoever has to find out why a test failed. */
std::string everyWord (const std::vector<PrintedPDF::Word>& words)
{
    std::ostringstream told;

    for (const auto& word : words)
        told << word.text << " " << word.left << " to " << word.right << "\n";

    return told.str();
}

TEST_F (PrintedSheetTest, linesOfArabicAreSetFromTheRight)
{
    settings->events = { event ({ .cueNumber = "N1", .words = "\u0645\u0631\u062d\u0628\u0627 Mary" }) };
    const auto sheet = printed();
    const auto words = sheet.words (0);
    const auto isArabic = [] (char byte) { return static_cast<unsigned char> (byte) >= 0xd8; };
    const auto arabic = std::find_if (words.begin(), words.end(),
                                      [&] (const auto& word)
                                      { return std::any_of (word.text.begin(), word.text.end(), isArabic); });
    ASSERT_NE (arabic, words.end());
    EXPECT_GT (arabic->left, sheet.word (0, "Mary").right) << everyWord (words);
}

TEST_F (PrintedSheetTest, backgroundsIconsAndColoursArePrinted)
{
    settings->showTakeNumbers = true;
    addCues (1);
    settings->events[0]->setNumRecordedTakes (4);
    settings->events[0]->setSelectedTake (2);
    settings->events[0]->setAltTake (4);
    const auto document = printed();

    for (const auto colour : { blueBackground, greenBox, yellowBox, iconBlue, footerGrey })
        EXPECT_TRUE (document.hasColour (0, colour)) << std::hex << colour;
}

TEST_F (PrintedSheetTest, theIconsAreFoundWhateverTheirFolderIsCalled)
{
    const auto odd = folder.path / "100% 1 \xC3\xBC";
    std::filesystem::copy (SystemUtility::bundleResourcePath().toStdString(), odd);
    SystemUtility::Configuration configuration;
    configuration.resourcePath = text (odd.string());
    SystemUtility::configure (configuration);
    addCues (1);
    EXPECT_TRUE (printed().hasColour (0, iconBlue));
    SystemUtility::configure ({});
}

TEST_F (PrintedSheetTest, withoutIconsTheSheetIsPrintedAllTheSame)
{
    SystemUtility::Configuration configuration;
    configuration.resourcePath = "/nowhere";
    SystemUtility::configure (configuration);
    addCues (1);
    EXPECT_THAT (printed().text(), HasSubstr ("Hello there"));
    SystemUtility::configure ({});
}

TEST_F (PrintedSheetTest, anOddFolderOfTemporaryFilesHarmsNothing)
{
    const auto odd = temporaryFiles.path / "100% #1 \xC3\xBC? 'x' *";
    std::filesystem::create_directory (odd);
    ::setenv ("TMPDIR", odd.c_str(), 1);
    addCues (1);
    EXPECT_THAT (printed().text(), HasSubstr ("Hello there"));
    EXPECT_TRUE (std::filesystem::is_empty (odd));
    std::filesystem::remove (odd);
}

TEST_F (PrintedSheetTest, theFooterNamesEachLayout)
{
    for (const auto& [layout, name] :
         { std::pair { EventExportLayoutDirector, "Director" }, std::pair { EventExportLayoutActor, "Actor" },
           std::pair { EventExportLayoutEngineer, "Engineer" } })
    {
        settings->layout = layout;
        settings->events.clear();
        addCues (1);
        EXPECT_EQ (printed().word (0, name).text, name);
    }
}

TEST_F (PrintedSheetTest, textsOfAnyScriptAreLetters)
{
    const std::string words = "Gr\xC3\xBC\xC3\x9F \xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82";
    EXPECT_EQ (printText (words), "");
    EXPECT_THAT (PrintedPDF (path()).text(), HasSubstr (words));
}

TEST_F (PrintedSheetTest, itPrintsOnAnyThread)
{
    addCues (1);
    std::string reason = "not printed";
    std::thread ([&] { reason = print(); }).join();
    EXPECT_EQ (reason, "");
    EXPECT_TRUE (PrintedPDF (path()).isValid());
}

TEST_F (PrintedSheetTest, anOrdinaryUserPrintsToo)
{
    addCues (1);
    std::filesystem::permissions (folder.path, std::filesystem::perms::all);
    std::filesystem::permissions (temporaryFiles.path, std::filesystem::perms::all);
    EXPECT_EQ (inChildProcess ([this] { return becomeOrdinaryUser() ? print() : "no ordinary user"; }), "");
    EXPECT_THAT (PrintedPDF (path()).text(), HasSubstr ("Hello there"));
}

TEST_F (PrintedSheetTest, aBrowserThatIsKilledMidwayIsTold)
{
    EXPECT_EQ (printWhileKilling ("--remote-debugging-pipe"),
               "the browser has ended before the page was printed");
    EXPECT_FALSE (wasPrinted());
}

TEST_F (PrintedSheetTest, aPageWhoseProcessIsKilledIsTold)
{
    EXPECT_NE (printWhileKilling ("--type=renderer"), "");
    EXPECT_FALSE (wasPrinted());
}

TEST_F (PrintedSheetTest, longWordsAreNoReasonToShrinkTheSheet)
{
    addCues (1);
    const auto usual = printed().word (0, "Hello");
    settings->events.push_back (event ({ .words = std::string (400, 'W') }));
    const auto beside = printed().word (0, "Hello");
    EXPECT_NEAR (beside.bottom - beside.top, usual.bottom - usual.top, 0.1);
}
