// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PrintedDocument.h"

#include "export/print/PrintError.h"
#include "support/ChildProcess.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;

namespace
{

class PrintedDocumentTest : public testing::Test
{
protected:
    /** What comes of a document, or why nothing does. */
    std::string moved (const std::vector<std::string>& pieces,
                       PrintedDocument::Limits limits = { .pages = 2 })
    {
        const auto file = folder.file ("sheet.pdf");
        file.deleteFile();

        try
        {
            PrintedDocument document (folder.path, limits);

            for (const auto& piece : pieces)
                document.write (piece);

            document.moveTo (file);
        }
        catch (const PrintError& error)
        {
            EXPECT_FALSE (file.exists());
            return error.what();
        }

        return folder.bytes ("sheet.pdf");
    }

    /** The same in a process of its own, in which no file becomes larger than a thousand bytes. */
    std::string movedWithinALimit (const std::vector<std::string>& pieces)
    {
        return Testing::inChildProcess (
            [&]
            {
                const Testing::FullDisk disk (1000, SIG_DFL);
                return moved (pieces);
            });
    }

    Testing::TemporaryFolder folder;
};

TEST_F (PrintedDocumentTest, aDocumentInPiecesComesOutByteForByte)
{
    EXPECT_EQ (moved ({ "%PDF-1.4 ", "", std::string ("\0\xff", 2), "end" }), std::string ("%PDF-1.4 \0\xff"
                                                                                           "end",
                                                                                           14));
}

TEST_F (PrintedDocumentTest, linksLoseTheirAddressesAndEverythingKeepsItsPlace)
{
    EXPECT_EQ (moved ({ "%PDF-1.4 <</Type /Page /Annots [6 0 R 7 0 R]>> <</S /URI /URI (http://x)>> end" }),
               "%PDF-1.4 <</Type /Page /Annot_ [6 0 R 7 0 R]>> <</S /URI /URI (        )>> end");
    EXPECT_EQ (moved ({ "%PDF- /URI (a\\)b\\\\) /URI () /Annots" }), "%PDF- /URI (      ) /URI () /Annot_");
}

TEST_F (PrintedDocumentTest, linksAndAddressesNeedNotStandTogether)
{
    EXPECT_EQ (moved ({ "%PDF- /Annots [6 0 R]" }), "%PDF- /Annot_ [6 0 R]");
    EXPECT_EQ (moved ({ "%PDF- /URI (http://x)" }), "%PDF- /URI (        )");
    EXPECT_EQ (moved ({ "%PDF- /Annots /Annots /URI (a) /URI (b)" }),
               "%PDF- /Annot_ /Annot_ /URI ( ) /URI ( )");
}

TEST_F (PrintedDocumentTest, whatIsCutOffInTheMiddleOfAWordIsNoPage)
{
    EXPECT_EQ (moved ({ "%PDF- /Type /Page\n/Type /Page\n/Type /Page" }),
               "%PDF- /Type /Page\n/Type /Page\n/Type /Page");
}

TEST_F (PrintedDocumentTest, whatIsPrintedLiesInItsFolderForNobodyElseToRead)
{
    const PrintedDocument document (folder.path, { .pages = 2 });
    ASSERT_EQ (folder.names(), std::vector<std::string> { "printed.pdf" });
    EXPECT_EQ (std::filesystem::status (folder.path / "printed.pdf").permissions(),
               std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F (PrintedDocumentTest, aPlaceThatTakesNoDocumentIsToldWithTheReasonAlone)
{
    std::filesystem::create_directory (folder.path / "sheet.pdf");
    PrintedDocument document (folder.path, { .pages = 2 });
    document.write ("%PDF-");

    try
    {
        document.moveTo (folder.file ("sheet.pdf"));
        FAIL();
    }
    catch (const PrintError& error)
    {
        EXPECT_STREQ (error.what(), "Is a directory");
    }
}

TEST_F (PrintedDocumentTest, anAddressWithoutEndHarmsNothing)
{
    EXPECT_EQ (moved ({ "%PDF- /URI (ab" }), "%PDF- /URI (  ");
    EXPECT_EQ (moved ({ "%PDF- /URI (a\\" }), "%PDF- /URI (  ");
    EXPECT_EQ (moved ({ "%PDF- /URI (" }), "%PDF- /URI (");
}

TEST_F (PrintedDocumentTest, pagesAreCountedAndTheirTreeIsNone)
{
    EXPECT_EQ (moved ({ "%PDF- /Type /Pages /Type /Page\n/Type /Page\n" }),
               "%PDF- /Type /Pages /Type /Page\n/Type /Page\n");
    EXPECT_EQ (moved ({ "%PDF- /Type /Page\n/Type /Page\n/Type /Page\n" }),
               "the sheet has more than 2 pages");
}

TEST_F (PrintedDocumentTest, aDocumentLargerThanItMayBeIsNotWaitedFor)
{
    constexpr std::size_t megabyte = 1 << 20;
    EXPECT_EQ (moved ({ "%PDF-", std::string (megabyte - 5, 'x') }, { .pages = 2, .bytes = megabyte }).size(),
               megabyte);
    EXPECT_EQ (moved ({ "%PDF-", std::string (megabyte, 'x') }, { .pages = 2, .bytes = megabyte }),
               "the printed sheet is larger than 1 MB");
}

TEST_F (PrintedDocumentTest, whatIsNoDocumentIsNone)
{
    for (const std::string bytes : { "", "x", "%PDF", "<html>%PDF-1.4" })
        EXPECT_EQ (moved ({ bytes }), "the browser has printed no PDF document");
}

TEST_F (PrintedDocumentTest, aFolderThatIsGoneIsTold)
{
    try
    {
        PrintedDocument document (folder.path / "none", { .pages = 2 });
        document.moveTo (folder.file ("sheet.pdf"));
        FAIL();
    }
    catch (const PrintError& error)
    {
        EXPECT_EQ (error.what(),
                   "the disk takes no more temporary files in " + (folder.path / "none").string());
    }
}

TEST_F (PrintedDocumentTest, aLimitOfFilesIsToldAndNotTheEndOfTheProcess)
{
    const auto told = "the disk takes no more temporary files in " + folder.path.string();
    EXPECT_EQ (movedWithinALimit ({ "%PDF-1.4 " + std::string (2000, 'x') }), told);
    EXPECT_EQ (movedWithinALimit ({ "%PDF-1.4 ", std::string (200'000, 'x') }), told);
}

} // namespace
