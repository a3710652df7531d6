// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "support/XMLTree.h"
#include "support/ZipArchive.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace ExportSupport
{

/** Expects a document to be, byte by byte, what is checked in as tests/data/export/<name>, such as "asc/cues.asc".

    With OVERMARKS_WRITE_GOLDEN_FILES in the environment the document is written there first, and then read again like any other:
    scripts/golden does that, and what has changed is looked at before it is checked in. */
inline void expectGoldenFile (const std::string& name, const std::string& document)
{
    const std::filesystem::path path (OVERMARKS_TEST_DATA "/export/" + name);

    if (std::getenv ("OVERMARKS_WRITE_GOLDEN_FILES") != nullptr)
    {
        std::filesystem::create_directories (path.parent_path());
        std::ofstream stream (path, std::ios::binary);
        stream << document << std::flush;
        ASSERT_TRUE (stream.good()) << path;
    }

    std::ifstream stream (path, std::ios::binary);
    ASSERT_TRUE (stream.is_open()) << path << " is missing; scripts/golden writes it";
    EXPECT_EQ (document, std::string (std::istreambuf_iterator<char> (stream), {})) << path;
}

/** The same for a document that is an archive of XML: compared, and checked in, as the lines of its parts, so that a difference can
    be read. The parts that the writing library fills by itself are left out. */
inline void expectGoldenParts (const std::string& name, const std::string& document)
{
    std::string lines;

    for (const auto& [part, content] : ZEP::Overmarks::Testing::unzipped (document))
        if (! part.starts_with ("docProps/") && ! part.starts_with ("xl/theme/"))
            lines += "==== " + part + "\n" + ZEP::Overmarks::Testing::linesOf (content);

    expectGoldenFile (name, lines);
}

} // namespace ExportSupport
