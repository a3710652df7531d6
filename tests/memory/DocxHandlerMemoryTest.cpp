// SPDX-License-Identifier: GPL-3.0-only
// What is said of a Word document when the memory is full.
#include "Work.h"
#include "memory/MemoryBudget.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace ZEP::Overmarks::Testing
{
namespace
{

TEST (DocxHandlerMemory, aSheetThatTheMemoryIsTooSmallForLeavesTheOthers)
{
    const TemporaryFolder folder;
    folder.write ("a.txt", "");
    std::filesystem::resize_file (folder.path / "a.txt",
                                  std::uintmax_t { 400 } << 20U); // of nothing, on the disk
    folder.write ("b.txt", R"({"cueContentList":[{"charName":"ANNA"}]})");
    DocxHandler::Arguments arguments;
    arguments.mode = DocxHandler::Mode::exportDocuments;
    arguments.json = { folder.path / "a.txt", folder.path / "b.txt" };
    arguments.output = { folder.path / "a.docx", folder.path / "b.docx" };
    arguments.progressFile = folder.path / "p.txt";

    const auto errors = [&]
    {
        const MemoryBudget budget (std::size_t { 100 } << 20U);
        return DocxHandler::exportDocuments (arguments);
    }();

    const auto words = "Not enough memory to write " + arguments.output[0].string();
    EXPECT_THAT (errors, ::testing::ElementsAre (words));
    EXPECT_EQ (folder.bytes ("p.txt"), "completionLevel=99\nError message = " + words + "\n");
    EXPECT_FALSE (std::filesystem::exists (arguments.output[0]));
    EXPECT_TRUE (std::filesystem::exists (arguments.output[1]));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
