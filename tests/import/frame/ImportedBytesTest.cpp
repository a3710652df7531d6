// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ImportedBytes.h"

#include "import/ImportSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using ImportSupport::TemporaryFolder;

namespace
{

std::string replaced (std::string text, std::string_view sought, std::string_view replacement)
{
    replaceEach (text, sought, replacement);
    return text;
}

std::vector<std::string> linesOf (std::string_view text)
{
    std::vector<std::string> all;
    TextLines lines (text);
    std::string_view line;
    while (lines.next (line))
    {
        all.emplace_back (line);
        EXPECT_EQ (lines.lineNumber(), all.size());
    }
    return all;
}

} // namespace

TEST (ImportedBytes, aFileComesWholeWithItsZeros)
{
    const TemporaryFolder folder;
    const std::string bytes ("a\0\r\n\xff", 5);
    EXPECT_EQ (bytesOfFile (folder.file ("list", bytes)), bytes);
    EXPECT_EQ (bytesOfFile (folder.file ("empty", "")), "");
    EXPECT_EQ (contentOfFile (folder.file ("list", bytes)), bytes);
    EXPECT_EQ (contentOfFile (folder.file ("empty", "")), std::string());
}

TEST (ImportedBytes, whatIsNoOrdinaryFileHasNoBytesAndIsNeverWaitedFor)
{
    const TemporaryFolder folder;
    const auto pipe = (folder.path / "pipe").string();
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);

    for (const auto& path : { pipe, folder.path.string(), (folder.path / "missing").string(), std::string() })
    {
        EXPECT_FALSE (isOrdinaryFile (path)) << path;
        EXPECT_EQ (bytesOfFile (path), "") << path;
        EXPECT_FALSE (contentOfFile (path).has_value()) << path;
    }
}

TEST (ImportedBytes, aFileWithAForeignNameIsFound)
{
    const TemporaryFolder folder;
    const auto path = folder.file ("Überfahrt 夜.srt", "x");
    EXPECT_EQ (bytesOfFile (juce::String::fromUTF8 (path.c_str())), "x");
}

TEST (ImportedBytes, everyOccurrenceIsReplacedOnceFromLeftToRight)
{
    EXPECT_EQ (replaced ("a\r\nb\r\n", "\r\n", "\n"), "a\nb\n");
    EXPECT_EQ (replaced ("\r\r\n", "\r\n", "\n"), "\r\n");
    EXPECT_EQ (replaced ("aaa", "aa", "a"), "aa");
    EXPECT_EQ (replaced ("x\ny", "\n", "**"), "x**y");
    EXPECT_EQ (replaced ("<i>", "<i>", ""), "");
    EXPECT_EQ (replaced ("nothing here", "<i>", ""), "nothing here");
    EXPECT_EQ (replaced ("<i>a</i><i></i>b<i>", "<i>", ""), "a</i></i>b");
    EXPECT_EQ (replaced ("<<i>i><i", "<i>", ""), "<i><i");
    EXPECT_EQ (replaced ("ab-ab", "ab", "ba"), "ba-ba");
    EXPECT_EQ (replaced ("", "<i>", ""), "");
    EXPECT_EQ (replaced ("abc", "", "-"), "abc");
}

TEST (ImportedBytes, aLineEndAtTheEndBeginsALastEmptyLine)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ (linesOf ("a\nb"), (Lines { "a", "b" }));
    EXPECT_EQ (linesOf ("a\nb\n"), (Lines { "a", "b", "" }));
    EXPECT_EQ (linesOf ("\n"), (Lines { "", "" }));
    EXPECT_EQ (linesOf (""), (Lines { "" }));
    EXPECT_EQ (linesOf ("a\r\nb"), (Lines { "a\r", "b" }));
}
