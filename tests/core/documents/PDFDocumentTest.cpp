// SPDX-License-Identifier: GPL-3.0-only
// Pages, shapes, images and the file; texts are in PDFDocumentTextTest.cpp.
#include "core/documents/PDFDocument.h"

#include "core/system/SystemUtility.h"
#include "support/ChildProcess.h"
#include "support/CollectedLog.h"
#include "support/FullDisk.h"
#include "support/SavedPDF.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <limits>
#include <sys/stat.h>
#include <thread>

namespace
{

using testing::ElementsAre;
using ZEP::Core::PaperSize;
using ZEP::Core::PDFDocument;
using namespace ZEP::Overmarks::Testing;

constexpr auto plain = PDFDocument::LineCapPlain;
constexpr auto roundEnd = PDFDocument::LineCapRound;
constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinite = std::numeric_limits<float>::infinity();

const juce::Colour black { 0xff000000 };
const juce::Colour blue { 23, 97, 181 };

class PDFDocumentTest : public SavedPDF
{
};

/** What a child process with these surroundings finds as the usual paper. */
std::string paperWith (const std::vector<std::pair<const char*, std::string>>& surroundings)
{
    return inChildProcess (
        [&]
        {
            for (const auto* name : { "LC_ALL", "LC_PAPER", "LANG" })
                ::unsetenv (name);
            for (const auto& [name, value] : surroundings)
                ::setenv (name, value.c_str(), 1);

            const auto size = PaperSize::ofLocale();
            return std::to_string (size.width) + " " + std::to_string (size.height);
        });
}

/** A folder of locales with one, whose paper has this size in millimetres. */
void writeLocale (const TemporaryFolder& folder, const std::string& name, char width, char height)
{
    std::filesystem::create_directory (folder.path / name);
    const std::string head { "\x12\x11\x03\x20\x03\0\0\0\x14\0\0\0\x18\0\0\0\x1c\0\0\0", 20 };
    // 256 millimetres are added to the height.
    folder.write (name + "/LC_PAPER",
                  head + std::string { height, 1, 0, 0, width, 0, 0, 0 } + std::string ("UTF-8", 6));
}

// ---- pages ---------------------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTest, aNewDocumentHasOneEmptyPage)
{
    const auto pdf = saved();
    ASSERT_EQ (pdf.pages.size(), 1u);
    EXPECT_TRUE (pdf.page().words.empty());
    EXPECT_TRUE (pdf.page().lines.empty() && pdf.page().fills.empty() && pdf.page().outlines.empty());
}

TEST_F (PDFDocumentTest, anAddedPageBecomesTheTargetOfDrawingAndMayStayEmpty)
{
    document.drawText ("first", 100, 100);
    document.addPage();
    document.addPage();
    document.drawText ("third", 100, 100);
    document.addPage();
    const auto pdf = saved();
    ASSERT_EQ (pdf.pages.size(), 4u);
    EXPECT_EQ (pdf.page (0).count ("first"), 1);
    EXPECT_TRUE (pdf.page (1).words.empty());
    EXPECT_EQ (pdf.page (2).count ("third"), 1);
    EXPECT_TRUE (pdf.page (3).words.empty());
}

TEST_F (PDFDocumentTest, thePageHasTheSizeThatWasAskedFor)
{
    EXPECT_EQ (document.getWidth(), 595.0f);
    EXPECT_EQ (document.getHeight(), 842.0f);
    EXPECT_EQ (saved().page().height, 842.0f);

    PDFDocument letter (folder.file ("letter.pdf").getFullPathName(), PaperSize::letter());
    EXPECT_EQ (letter.getWidth(), 612.0f);
    EXPECT_EQ (letter.getHeight(), 792.0f);
    letter.saveToPath();
    const ReadPDF pdf (folder.file ("letter.pdf"));
    EXPECT_EQ (pdf.page().width, 612.0f);
    EXPECT_EQ (pdf.page().height, 792.0f);
}

TEST_F (PDFDocumentTest, withoutASizeItIsTheLocales)
{
    const PDFDocument usual (folder.file ("usual.pdf").getFullPathName());
    EXPECT_EQ (usual.getWidth(), PaperSize::ofLocale().width);
    EXPECT_EQ (usual.getHeight(), PaperSize::ofLocale().height);
}

TEST (PDFPageSize, aLocaleThatSaysNothingHasA4)
{
    EXPECT_EQ (paperWith ({}), "595.000000 842.000000");
    EXPECT_EQ (paperWith ({ { "LC_ALL", "C" } }), "595.000000 842.000000");
    EXPECT_EQ (paperWith ({ { "LC_ALL", "xx_YY.nowhere" } }), "595.000000 842.000000");
}

TEST (PDFPageSize, theUsersPaperCounts)
{
    const TemporaryFolder locales;
    writeLocale (locales, "en_XX.UTF-8", static_cast<char> (216), 279 - 256); // letter
    writeLocale (locales, "en_YY.UTF-8", static_cast<char> (216), 356 - 256); // legal
    const std::string path = locales.path.string();
    EXPECT_EQ (paperWith ({ { "LOCPATH", path }, { "LC_PAPER", "en_XX.UTF-8" } }), "612.000000 792.000000");
    EXPECT_EQ (paperWith ({ { "LOCPATH", path }, { "LC_ALL", "en_YY.UTF-8" } }), "612.000000 1009.000000");
}

TEST (PDFPageSize, aPaperThatNobodyHasIsA4)
{
    const TemporaryFolder locales;
    writeLocale (locales, "en_XX.UTF-8", 3, 23);
    EXPECT_EQ (paperWith ({ { "LOCPATH", locales.path.string() }, { "LC_ALL", "en_XX.UTF-8" } }),
               "595.000000 842.000000");
}

// ---- what is known of it -------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTest, withoutWordsItIsNamedAfterItsFileAndItsProgram)
{
    const auto before = juce::Time::currentTimeMillis() / 1000;
    const auto pdf = saved();
    EXPECT_EQ (pdf.title(), "sheet");
    EXPECT_EQ (pdf.creator(), "Overmarks " + ZEP::Core::SystemUtility::executableVersion().toStdString());
    EXPECT_NEAR (static_cast<double> (pdf.creationTime()), static_cast<double> (before), 60.0);
}

TEST_F (PDFDocumentTest, titleCreatorAndTimeCanBeGiven)
{
    const auto time = juce::Time (2024, 1, 29, 13, 37, 11, 500, false);
    document.setTitle (juce::String::fromUTF8 ("Der Häfen – Гавань\nII"));
    document.setCreator ("Orvelle 2");
    document.setCreationTime (time);
    const auto pdf = saved();
    EXPECT_EQ (pdf.title(), "Der Häfen – Гавань II");
    EXPECT_EQ (pdf.creator(), "Orvelle 2");
    EXPECT_EQ (pdf.creationTime(), time.toMilliseconds() / 1000);
}

// ---- shapes --------------------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTest, aLineGoesFromPointToPointInTheColourOfStrokes)
{
    document.setStrokeColor (blue);
    document.setFillColor (juce::Colours::red);
    document.drawLine (10, 20, 110, 220.5f, 2.5f, plain);
    document.drawLine (30, 40, 50, 40, 7, roundEnd);
    const auto page = saved().page();
    ASSERT_EQ (page.lines.size(), 2u);
    EXPECT_TRUE (page.hasLine (10, 20, 110, 220.5f, 2.5f, blue));
    EXPECT_FALSE (page.lines[0].isRound);
    EXPECT_TRUE (page.hasLine (30, 40, 50, 40, 7, blue));
    EXPECT_TRUE (page.lines[1].isRound);
}

TEST_F (PDFDocumentTest, aLineOfNoWidthIsTheThinnestOne)
{
    document.drawLine (10, 20, 110, 20, 0, plain);
    const auto page = saved().page();
    EXPECT_TRUE (page.hasLine (10, 20, 110, 20, 0.25f, black));
}

TEST_F (PDFDocumentTest, rectanglesStandOnTheirLowerLeftCorner)
{
    document.setStrokeColor (blue);
    document.setFillColor (juce::Colours::red);
    document.drawRect (40, 500, 515, 24, 1.5f);
    document.fillRect (162, 745, 393, 22);
    const auto page = saved().page();
    EXPECT_EQ (page.outlines.size(), 1u);
    EXPECT_EQ (page.fills.size(), 1u);
    EXPECT_TRUE (page.hasOutline ({ 40, 500, 515, 24 }, 1.5f, blue));
    EXPECT_TRUE (page.hasFill ({ 162, 745, 393, 22 }, juce::Colours::red));
}

TEST_F (PDFDocumentTest, roundedCornersStayInsideTheRectangle)
{
    document.setStrokeColor (blue);
    document.drawRoundedRect (40, 500, 515, 84, 1, 5);
    document.drawRoundedRect (40, 300, 100, 20, 1, 500);
    document.drawRoundedRect (40, 200, 100, 20, 1, 0);
    const auto page = saved().page();
    ASSERT_EQ (page.outlines.size(), 3u);
    EXPECT_TRUE (page.hasOutline ({ 40, 500, 515, 84 }, 1, blue));
    EXPECT_TRUE (page.outlines[0].isRounded);
    EXPECT_TRUE (page.hasOutline ({ 40, 300, 100, 20 }, 1, blue));
    EXPECT_TRUE (page.outlines[1].isRounded);
    EXPECT_TRUE (page.hasOutline ({ 40, 200, 100, 20 }, 1, blue));
    EXPECT_FALSE (page.outlines[2].isRounded);
}

TEST_F (PDFDocumentTest, coloursStayInForceOverPages)
{
    document.setStrokeColor (blue);
    document.setFillColor (juce::Colours::red);
    document.addPage();
    document.fillRect (1, 2, 3, 4);
    document.drawLine (1, 2, 30, 40, 1, plain);
    const auto page = saved().page (1);
    EXPECT_TRUE (page.hasFill ({ 1, 2, 3, 4 }, juce::Colours::red));
    EXPECT_TRUE (page.hasLine (1, 2, 30, 40, 1, blue));
}

TEST_F (PDFDocumentTest, shapesThatCannotBeAreNotDrawnAndHarmNothing)
{
    for (const auto odd : { nan, infinite, -infinite, 3.0e38f })
    {
        document.drawLine (odd, 1, 2, 3, 1, plain);
        document.drawLine (1, 1, 2, odd, 1, roundEnd);
        document.drawLine (1, 1, 2, 3, odd, plain);
        document.drawRect (1, odd, 2, 3, 1);
        document.drawRect (1, 1, 2, 3, odd);
        document.fillRect (1, 1, odd, 3);
        document.drawRoundedRect (1, 1, 2, odd, 1, 5);
        document.drawImage ("icon", odd, 1, 2, 3);
        document.setClip ({ 1, 1, odd, 3 });
    }

    document.fillRect (100, 100, -50, 10);
    document.fillRect (100, 100, 50, 0);
    document.drawRect (100, 100, 0, 10, 1);
    document.fillRect (1, 2, 3, 4);
    const auto page = saved().page();
    EXPECT_EQ (page.lines.size() + page.outlines.size(), 0u);
    EXPECT_EQ (page.fills.size(), 1u);
}

// ---- images --------------------------------------------------------------------------------------------------------------

juce::Image picture (int width, int height, juce::Image::PixelFormat format = juce::Image::ARGB)
{
    juce::Image image (format, width, height, true);
    image.setPixelAt (0, 0, juce::Colour (0x80ff8000));
    return image;
}

TEST_F (PDFDocumentTest, anImageFillsItsRectangle)
{
    document.setImage (picture (140, 117), "in", false);
    document.drawImage ("in", 456, 600, 12, 10);
    const auto page = saved().page();
    ASSERT_EQ (page.pictures.size(), 1u);
    EXPECT_TRUE (page.hasPicture ({ 456, 600, 12, 10 }));
}

TEST_F (PDFDocumentTest, imagesOfAllKindsAreTaken)
{
    int x = 0;

    for (const auto format : { juce::Image::ARGB, juce::Image::RGB, juce::Image::SingleChannel })
    {
        document.setImage (picture (3, 2, format), "image", false);
        document.drawImage ("image", static_cast<float> (x += 20), 100, 10, 10);
    }

    EXPECT_EQ (saved().page().pictures.size(), 3u);
}

TEST_F (PDFDocumentTest, theFlagOfAnImageMakesNoDifference)
{
    document.setImage (picture (3, 2), "image", true);
    document.drawImage ("image", 10, 100, 10, 10);
    EXPECT_TRUE (saved().page().hasPicture ({ 10, 100, 10, 10 }));
}

TEST_F (PDFDocumentTest, anImageWithoutPixelsOrUnknownDrawsNothing)
{
    document.setImage ({}, "AppIconID", false);
    document.drawImage ("AppIconID", 38, 24, 20, 20);
    document.drawImage ("nobody", 38, 24, 20, 20);
    EXPECT_TRUE (saved().page().pictures.empty());
}

TEST_F (PDFDocumentTest, aLaterImageTakesTheIdentifier)
{
    document.setImage (picture (3, 2), "icon", false);
    document.setImage ({}, "icon", false);
    document.drawImage ("icon", 38, 24, 20, 20);
    EXPECT_TRUE (saved().page().pictures.empty());
}

TEST_F (PDFDocumentTest, anImageIsStoredOnceHoweverOftenItIsDrawn)
{
    document.setImage (picture (140, 140), "icon", false);

    for (int i = 0; i < 60; ++i)
    {
        document.drawImage ("icon", 38, static_cast<float> (i * 10), 14, 14);

        if (i % 20 == 19)
            document.addPage();
    }

    const auto pdf = saved();
    EXPECT_EQ (pdf.page (2).pictures.size(), 20u);
    EXPECT_EQ (pdf.numberOfImages(), 1);
}

// ---- what comes again ----------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTest, whatComesAgainStandsAtEachPlaceAndIsDrawnOnce)
{
    int drawn = 0;
    document.setFont (PDFDocument::FontTypeRegular, 10);
    const auto drawBox = [this, &drawn] (float x, float y)
    {
        const auto draw = [this, &drawn, x, y]
        {
            ++drawn;
            document.drawText ("take", x + 5, y + 5);
            document.drawLine (x, y, x, y + 20, 1, plain);
        };
        document.drawRepeated ("box", { x, y, 40, 20 }, draw);
    };
    drawBox (100, 700);
    drawBox (300, 200);
    document.addPage();
    drawBox (50, 500);
    EXPECT_EQ (drawn, 1);

    const auto pdf = saved();
    EXPECT_EQ (pdf.page (0).count ("take"), 2);
    EXPECT_EQ (pdf.page (1).count ("take"), 1);
    EXPECT_NEAR (pdf.page (0).word ("take", 0).x, 105, 0.5);
    EXPECT_NEAR (pdf.page (0).word ("take", 1).x, 305, 0.5);
    EXPECT_NEAR (pdf.page (1).word ("take").x, 55, 0.5);
    EXPECT_EQ (pdf.page (0).lines.size(), 2u);
    EXPECT_TRUE (pdf.page (0).hasLine (100, 700, 100, 720, 1, black));
    EXPECT_TRUE (pdf.page (0).hasLine (300, 200, 300, 220, 1, black));
    EXPECT_TRUE (pdf.page (1).hasLine (50, 500, 50, 520, 1, black));
}

TEST_F (PDFDocumentTest, inAnotherSizeOrUnderAnotherNameItIsDrawnAnew)
{
    int drawn = 0;
    const auto count = [&drawn] { ++drawn; };
    document.drawRepeated ("box", { 10, 10, 40, 20 }, count);
    document.drawRepeated ("box", { 10, 50, 40, 30 }, count);
    EXPECT_EQ (drawn, 2);
    document.drawRepeated ("frame", { 10, 90, 40, 20 }, count);
    EXPECT_EQ (drawn, 3);
    document.drawRepeated ("frame", { 10, 90, nan, 20 }, count);
    document.drawRepeated ("frame", { 10, 90, 40, 0 }, count);
    EXPECT_EQ (drawn, 3);
    EXPECT_TRUE (saved().page().lines.empty());
}

TEST_F (PDFDocumentTest, inOtherColoursOrAnotherFontItIsDrawnAnewAndThoseStay)
{
    int drawn = 0;
    const auto draw = [this, &drawn]
    {
        ++drawn;
        document.drawLine (10, 10, 50, 10, 1, plain);
        document.drawText ("take", 10, 10);
    };
    const auto again = [this, &draw] { document.drawRepeated ("box", { 10, 10, 40, 20 }, draw); };
    again();
    again();
    EXPECT_EQ (drawn, 1);
    document.setStrokeColor (juce::Colours::red);
    again();
    EXPECT_EQ (drawn, 2);
    document.setFillColor (juce::Colours::red);
    again();
    EXPECT_EQ (drawn, 3);
    document.setFont (PDFDocument::FontTypeBold, 9);
    again();
    again();
    EXPECT_EQ (drawn, 4);
    document.drawLine (100, 100, 140, 100, 1, plain);
    const auto pdf = saved();
    EXPECT_TRUE (pdf.page().hasLine (10, 10, 50, 10, 1, black));
    EXPECT_TRUE (pdf.page().hasLine (10, 10, 50, 10, 1, juce::Colours::red));
    EXPECT_TRUE (pdf.page().hasLine (100, 100, 140, 100, 1, juce::Colours::red));
}

TEST_F (PDFDocumentTest, anImageMayBeRegisteredWhileWhatComesAgainIsDrawn)
{
    const auto draw = [this]
    {
        document.setImage (juce::Image (juce::Image::ARGB, 2, 2, true), "icon", false);
        document.drawImage ("icon", 10, 10, 20, 20);
    };
    document.drawRepeated ("icons", { 10, 10, 20, 20 }, draw);
    document.drawRepeated ("icons", { 10, 50, 20, 20 }, draw);
    EXPECT_EQ (saved().page().pictures.size(), 2u);
}

TEST_F (PDFDocumentTest, aLaterImageIsSeenInWhatComesAgain)
{
    const auto draw = [this] { document.drawImage ("icon", 10, 10, 20, 20); };
    document.drawRepeated ("icons", { 10, 10, 20, 20 }, draw);
    document.setImage (juce::Image (juce::Image::ARGB, 2, 2, true), "icon", false);
    document.drawRepeated ("icons", { 10, 10, 20, 20 }, draw);
    EXPECT_EQ (saved().page().pictures.size(), 1u);
}

TEST_F (PDFDocumentTest, aLimitOfThePageHoldsForWhatComesAgainToo)
{
    const auto draw = [this] { document.drawLine (100, 110, 140, 110, 1, plain); };
    document.setClip ({ 90, 90, 60, 15 });
    document.drawRepeated ("line", { 100, 100, 40, 20 }, draw); // drawn as a whole, shown below the line
    document.setClip ({});
    document.drawRepeated ("line", { 100, 300, 40, 20 }, draw);
    const auto pdf = saved();
    EXPECT_FALSE (pdf.page().hasLine (100, 110, 140, 110, 1, black));
    EXPECT_TRUE (pdf.page().hasLine (100, 310, 140, 310, 1, black));
}

TEST_F (PDFDocumentTest, whatReachesBeyondItsPlaceIsNotSeen)
{
    const auto draw = [this]
    {
        document.drawLine (100, 110, 140, 110, 1, plain);
        document.drawLine (100, 90, 140, 90, 1, plain);
        document.drawLine (100, 120, 140, 120, 1, plain); // on the edge
    };
    document.drawRepeated ("lines", { 100, 100, 40, 20 }, draw);
    const auto pdf = saved();
    EXPECT_TRUE (pdf.page().hasLine (100, 110, 140, 110, 1, black));
    EXPECT_FALSE (pdf.page().hasLine (100, 90, 140, 90, 1, black));
    EXPECT_TRUE (pdf.page().hasLine (100, 120, 140, 120, 1, black));
}

// ---- the file ------------------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTest, nothingIsWrittenBeforeItIsSaved)
{
    document.drawText ("x", 10, 10);
    document.addPage();
    EXPECT_TRUE (document.saveResult().failed());
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (PDFDocumentTest, anOldFileIsReplacedAsAWhole)
{
    folder.write ("sheet.pdf", "old");
    ::chmod (folder.file ("sheet.pdf").getFullPathName().toRawUTF8(), 0640);
    saved();
    EXPECT_EQ (folder.bytes ("sheet.pdf").substr (0, 5), "%PDF-");
    EXPECT_THAT (folder.names(), ElementsAre ("sheet.pdf"));
    struct stat status
    {
    };
    ::stat (folder.file ("sheet.pdf").getFullPathName().toRawUTF8(), &status);
    EXPECT_EQ (status.st_mode & 0777u, 0640u);
}

TEST_F (PDFDocumentTest, savingTwiceWritesTheSameAndDrawingInBetweenIsLost)
{
    document.drawText ("kept", 100, 100);
    saved();
    const auto first = folder.bytes ("sheet.pdf");
    document.drawText ("lost", 100, 100);
    document.drawLine (1, 2, 3, 4, 1, plain);
    document.fillRect (1, 2, 3, 4);
    document.setClip ({ 1, 2, 3, 4 });
    document.addPage();
    saved();
    EXPECT_EQ (folder.bytes ("sheet.pdf"), first);
}

TEST_F (PDFDocumentTest, aFolderThatIsMissingIsToldAndNotShownTwice)
{
    const auto path = folder.directory() + "/nowhere/sheet.pdf";
    const CollectedLog log;
    PDFDocument lost (path);
    lost.saveToPath();
    const auto words = "Can't write " + path + ": No such file or directory";
    EXPECT_EQ (lost.saveResult().getErrorMessage(), words);
    EXPECT_TRUE (log.lines().empty()) << "whoever saves tells it in words of his own";
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (PDFDocumentTest, aFullDiskLeavesTheOldFile)
{
    folder.write ("sheet.pdf", "precious");
    const CollectedLog log;
    {
        const FullDisk disk (300);
        document.drawText ("x", 10, 10);
        document.saveToPath();
    }
    const auto words = "Can't write " + folder.file ("sheet.pdf").getFullPathName() + ": File too large";
    EXPECT_EQ (document.saveResult().getErrorMessage(), words);
    EXPECT_TRUE (log.lines().empty());
    EXPECT_EQ (folder.bytes ("sheet.pdf"), "precious");
    EXPECT_THAT (folder.names(), ElementsAre ("sheet.pdf"));
    saved(); // there is room again
}

TEST_F (PDFDocumentTest, aPathIntoAFolderIsAFailure)
{
    std::filesystem::create_directory (folder.path / "sheet.pdf");
    const CollectedLog log;
    document.saveToPath();
    EXPECT_TRUE (document.saveResult().failed());
    EXPECT_TRUE (log.lines().empty());
}

// ---- threads -------------------------------------------------------------------------------------------------------------

TEST (PDFDocumentThreads, differentDocumentsAreDrawnAtOnce)
{
    const TemporaryFolder folder;
    std::vector<std::thread> threads;

    for (int number = 0; number < 4; ++number)
        threads.emplace_back (
            [&folder, number]
            {
                for (int round = 0; round < 3; ++round)
                {
                    const auto name = std::to_string (number) + "-" + std::to_string (round) + ".pdf";
                    PDFDocument document (folder.file (name).getFullPathName());

                    for (int page = 0; page < 3; ++page)
                    {
                        document.addPage();
                        document.setFont (PDFDocument::FontTypeBold, 11);
                        document.drawMultilineText (juce::String::fromUTF8 ("word Слово كلمة ")
                                                        + juce::String (number),
                                                    { 10, 10, 60, 100 }, juce::Justification::topLeft);
                    }

                    document.saveToPath();
                }
            });

    for (auto& thread : threads)
        thread.join();

    for (const auto& name : folder.names())
        EXPECT_EQ (ReadPDF (folder.file (name)).page (3).count (name.substr (0, 1)), 1) << name;

    EXPECT_EQ (folder.names().size(), 12u);
}

} // namespace
