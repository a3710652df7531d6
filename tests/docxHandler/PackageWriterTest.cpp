// SPDX-License-Identifier: GPL-3.0-only
#include "PackageWriter.h"

#include "support/ZipArchive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace DocxHandler::Testing
{

using ZEP::Overmarks::Testing::Parts;
using ZEP::Overmarks::Testing::unzipped;

namespace
{

std::string packageOf (
    const Parts& parts, const std::function<void (double)>& progress = [] (double) {})
{
    PackageWriter writer;

    for (const auto& [name, content] : parts)
        writer.add (name, content);

    return writer.finish (progress);
}

/** Bytes that can't be packed into less. */
std::string noise (std::size_t length)
{
    std::mt19937 generator (1);
    std::string bytes (length, '\0');

    for (auto& byte : bytes)
        byte = static_cast<char> (generator());

    return bytes;
}

const Parts parts { { "[Content_Types].xml", "<a/>" },
                    { "word/empty.xml", "" },
                    { "word/document.xml", std::string (3'000'000, 'a') },
                    { "word/media/body1.png", noise (200'000) } };

} // namespace

TEST (PackageWriter, partsComeBackInTheirOrder) { EXPECT_EQ (unzipped (packageOf (parts)), parts); }

TEST (PackageWriter, theSamePartsGiveTheSameBytesAtAnyTime)
{
    using namespace std::string_literals;
    const auto package = packageOf (parts);
    EXPECT_EQ (packageOf (parts), package);
    EXPECT_EQ (package.substr (10, 4), "\0\0\x21\0"s) << "the first part is of 1 January 1980, 0:00";
}

TEST (PackageWriter, whatRepeatsTakesNextToNothing)
{
    EXPECT_LT (packageOf ({ parts[2] }).size(), 10'000U);
    EXPECT_LT (packageOf ({ parts[3] }).size(), 201'000U);
}

TEST (PackageWriter, progressRisesToTheEnd)
{
    std::vector<double> shares;
    static_cast<void> (packageOf (parts, [&shares] (double share) { shares.push_back (share); }));
    ASSERT_FALSE (shares.empty());
    EXPECT_TRUE (std::is_sorted (shares.begin(), shares.end()));
    EXPECT_GT (shares.front(), 0.0);
    EXPECT_EQ (shares.back(), 1.0);
}

TEST (PackageWriter, nothingButEmptyPartsIsAPackageToo)
{
    EXPECT_EQ (unzipped (packageOf ({ { "a", "" } })), (Parts { { "a", "" } }));
}

} // namespace DocxHandler::Testing
