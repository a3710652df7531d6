// SPDX-License-Identifier: GPL-3.0-only
// Somebody stops the program while it, or docxHandler, is at work on Word documents.
#include "overmarks/ProgramWordFixture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>

using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;

class EachStop : public ProgramWordTest, public testing::WithParamInterface<int>
{
};

TEST_P (EachStop, cancelsTheToolAndLeavesNothing)
{
    EXPECT_EQ (failureOf (waitsForCancel, {}, stoppedBy ({ GetParam() })),
               "Stopped; no Word document was written");
    EXPECT_EQ (read ("resources/end"), "cancelled\n");
}

TEST_P (EachStop, cancelsReadingToo)
{
    install (waitsForCancel);
    write ("y.docx", "x");
    const auto result = start ({ "rows", "y.docx" }, stoppedBy ({ GetParam() }));
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("overmarks: Stopped; y.docx was not read\n"));
    EXPECT_EQ (read ("resources/end"), "cancelled\n");
}

INSTANTIATE_TEST_SUITE_P (ProgramWordTest, EachStop, testing::Values (SIGINT, SIGTERM, SIGHUP));

TEST_F (ProgramWordTest, aToolThatDoesNotHeedIsKilled)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ (failureOf (waitsForEver, { "--by-character" }, stoppedBy ({ SIGINT })),
               "Stopped; no Word document was written");
    EXPECT_LT (std::chrono::steady_clock::now() - start, std::chrono::seconds (60));
}

TEST_F (ProgramWordTest, theSecondSignalKillsAToolAtOnce)
{
    EXPECT_EQ (failureOf (waitsForEver, {}, stoppedBy ({ SIGINT, SIGINT })),
               "Stopped; no Word document was written");
}

TEST_F (ProgramWordTest, aStopBehindTheToolsWorkIsNeitherLostNorLeavesAnything)
{
    std::string list = "Start TC,Character,Text\n";
    for (int i = 0; i < 20000; ++i)
        list += "01:00:02:00,ANNA,Hello?\n";
    write ("x.csv", list);

    for (const auto* moment : { "0", "0.02", "0.05", "0.1" })
    {
        file ("resources/started").deleteFile();
        install (std::string (writesDocuments) + "\n(sleep " + moment
                 + "; touch \"$here/started\") > /dev/null 2>&1 &");
        const auto result =
            start ({ "export", "x.csv", "-o", "out", "--format", "docx,xlsx" }, stoppedBy ({ SIGTERM }));
        EXPECT_TRUE (result.status == 1 || result.status == 128 + SIGTERM) << moment << " " << result.status;

        // What was finished before is kept, and nothing else.
        for (const auto& name : found ("out"))
            EXPECT_THAT (name, AnyOf ("x.docx", "x.xlsx")) << moment;

        if (file ("out/x.docx").exists())
        {
            EXPECT_EQ (read ("out/x.docx"), good());
        }

        file ("out").deleteRecursively();
        file ("out").createDirectory();
    }
}

TEST_F (ProgramWordTest, signalsThatAreIgnoredStayIgnored)
{
    install ("touch \"$here/started\"; sleep 1" + std::string (writesDocuments));
    auto* const before = std::signal (SIGHUP, SIG_IGN); // the program inherits it
    const auto result =
        start ({ "export", "x.csv", "-o", "out", "--format", "docx" }, stoppedBy ({ SIGHUP }));
    std::signal (SIGHUP, before);
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (read ("out/x.docx"), good());
}

TEST_F (ProgramWordTest, standardInputIsKeptWhereNobodyElseLooks)
{
    install (readsOneCue + std::string ("\nstat -c %a \"$input\" \"${input%/*}\" > \"$here/modes\""));
    ProgramSurroundings surroundings;
    surroundings.temporaryFolder = path ("temporary");
    EXPECT_EQ (
        run ({ "list", "-", "--format", "docx", "--resources", "resources" }, "bytes", surroundings).status,
        0);
    EXPECT_EQ (read ("resources/modes"), "600\n700\n");
    EXPECT_THAT (found ("temporary"), IsEmpty());
}

TEST_F (ProgramWordTest, aStopWhileStandardInputIsReadLeavesNothing)
{
    ProgramSurroundings surroundings;
    surroundings.answer = "Start TC,Text\n"; // and no end
    surroundings.signalsWhen = path ("temporary");
    surroundings.signals = { 0, SIGTERM }; // a third of a second later
    EXPECT_EQ (start ({ "list", "-", "--format", "csv" }, surroundings).status, 128 + SIGTERM);
}
