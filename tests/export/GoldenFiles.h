// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace ExportSupport
{

/** The bytes of a document as it has to be: "asc/cues.asc". */
inline std::string goldenFile (const std::string& name)
{
    std::ifstream stream (OVERMARKS_TEST_DATA "/export/" + name, std::ios::binary);
    EXPECT_TRUE (stream.is_open()) << name;
    return { std::istreambuf_iterator<char> (stream), {} };
}

} // namespace ExportSupport
