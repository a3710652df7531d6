// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace ExportSupport
{

/** Expects a document to be, byte by byte, what is checked in as tests/data/export/<name>, such as "asc/cues.asc".

    With OVERMARKS_WRITE_GOLDEN_FILES in the environment the document is written there instead, and the test is skipped:
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
        GTEST_SKIP() << path << " was written";
    }

    std::ifstream stream (path, std::ios::binary);
    ASSERT_TRUE (stream.is_open()) << path << " is missing; scripts/golden writes it";
    EXPECT_EQ (document, std::string (std::istreambuf_iterator<char> (stream), {})) << path;
}

} // namespace ExportSupport
