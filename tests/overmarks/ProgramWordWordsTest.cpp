// SPDX-License-Identifier: GPL-3.0-only
// What the program says of failures of docxHandler: once, with the right reason, and of nothing that is gone by then.
#include "overmarks/ProgramWordFixture.h"

#include <gmock/gmock.h>

#include <csignal>

using testing::HasSubstr;

namespace
{

/** A failure as docxHandler tells it: in the progress file, and on standard error. */
std::string failsWith (const std::string& message)
{
    return "echo \"Error message = " + message + "\" > \"$progress\"; echo \"docxHandler: " + message
           + "\" >&2; exit 1";
}

} // namespace

TEST_F (ProgramWordTest, aFailureOfReadingIsToldOnce)
{
    write ("y.docx", "x");
    install (failsWith ("y.docx is empty"));
    EXPECT_EQ (start ({ "list", "y.docx" }).errors, "overmarks: y.docx is empty\n");
    EXPECT_EQ (start ({ "list", "y.docx", "--quiet" }).errors, "overmarks: y.docx is empty\n");
    EXPECT_EQ (start ({ "list", "y.docx", "--json" }).errors, "");
    EXPECT_EQ (start ({ "rows", "y.docx", "--quiet" }).errors, "y.docx is empty\n");
    EXPECT_EQ (start ({ "list", path ("y.docx") }).errors, "overmarks: " + path ("y.docx") + " is empty\n");
}

TEST_F (ProgramWordTest, aFailureOfStandardInputNamesNoFile)
{
    install (failsWith ("${input##*/} is empty"));
    EXPECT_EQ (run ({ "list", "-", "--format", "docx", "--resources", "resources" }).errors,
               "overmarks: Standard input is empty\n");
}

TEST_F (ProgramWordTest, aFailureOfWritingIsToldOnceWithoutThePlaceWhereTheDocumentWasMade)
{
    install (failsWith ("Can't be written (No space left on device): $output"));
    EXPECT_EQ (start ({ "export", "x.csv", "-o", "out", "--format", "docx", "--quiet" }).errors,
               "overmarks: Error writing file to " + path ("out/x.docx")
                   + ": Can't be written (No space left on device)\n");
}

TEST_F (ProgramWordTest, aFailureOfAnotherDocumentNamesIt)
{
    EXPECT_EQ (failureOf (failsWith ("Is a folder: ${output#*,}"), { "--by-character" }),
               "Error writing file to " + path ("out/x_ANNA.docx")
                   + ": Is a folder: " + path ("out/x_TOM.docx"));
}

TEST_F (ProgramWordTest, aFailureInTheTemporaryFolderNamesTheOneThatStays)
{
    write ("y.docx", "x");
    install (failsWith ("Can't be written (No space left on device): $json"));
    EXPECT_EQ (start ({ "list", "y.docx" }).errors,
               "overmarks: y.docx: Can't be written (No space left on device): a temporary file in "
                   + path ("temporary") + "\n");
}

TEST_F (ProgramWordTest, whatTheToolSaysBesidesIsKept)
{
    write ("y.docx", "x");
    install ("echo odd >&2; " + failsWith ("y.docx is empty"));
    EXPECT_EQ (start ({ "list", "y.docx" }).errors, "odd\novermarks: y.docx is empty\n");
}

TEST_F (ProgramWordTest, aFullTemporaryFolderIsToldOfReadingToo)
{
    write ("y.docx", "x");
    install ("exit 1");
    ProgramSurroundings surroundings;
    surroundings.largestFile = 1000;
    EXPECT_EQ (start ({ "list", "y.docx", "--json" }, surroundings).json()["error"],
               "y.docx: Error reading " + path ("y.docx") + ": the temporary folder " + path ("temporary")
                   + " is full");
}

TEST_F (ProgramWordTest, aToolThatSpoilsItsOrderIsNoFullFolder)
{
    EXPECT_EQ (failureOf ("echo nonsense > \"$json\"; exit 1"),
               "Error writing file to " + path ("out/x.docx") + ": docxHandler broke off");
}

TEST_F (ProgramWordTest, aStopBeforeTheToolListensIsSaidAgain)
{
    install (R"sh(
touch "$here/started"
sleep 0.5
stale=$(tr -d '\0' < "$cancel")
while [ "$(tr -d '\0' < "$cancel")" = "$stale" ]; do sleep 0.05; done
echo cancelled > "$here/end")sh");
    write ("y.docx", "x");
    const auto result = start ({ "rows", "y.docx" }, stoppedBy ({ SIGINT }));
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("overmarks: Stopped; y.docx was not read\n"));
    EXPECT_EQ (read ("resources/end"), "cancelled\n");
}
