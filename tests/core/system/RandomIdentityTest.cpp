// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/RandomIdentity.h"

#include <Poco/UUID.h>
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{
using ZEP::Core::randomIdentity;

TEST (RandomIdentity, isTheTextOfARandomUUID)
{
    for (int i = 0; i < 1000; ++i)
    {
        const auto text = randomIdentity().toStdString();
        Poco::UUID uuid;

        ASSERT_TRUE (uuid.tryParse (text)) << text;
        EXPECT_EQ (uuid.toString(), text);
        EXPECT_EQ (uuid.version(), Poco::UUID::UUID_RANDOM);
        EXPECT_EQ (uuid.variant(), 2);
    }
}

TEST (RandomIdentity, isNeverGivenTwice)
{
    std::set<std::string> given;
    for (int i = 0; i < 20000; ++i)
        given.insert (randomIdentity().toStdString());

    EXPECT_EQ (given.size(), 20000u);
}

TEST (RandomIdentity, differsBetweenThreads)
{
    std::array<std::vector<std::string>, 4> taken;
    std::vector<std::thread> threads;
    for (auto& mine : taken)
        threads.emplace_back (
            [&mine]
            {
                for (int i = 0; i < 2000; ++i)
                    mine.push_back (randomIdentity().toStdString());
            });
    for (auto& thread : threads)
        thread.join();

    std::set<std::string> all;
    for (const auto& mine : taken)
        all.insert (mine.begin(), mine.end());
    EXPECT_EQ (all.size(), 8000u);
}

TEST (RandomIdentity, differsBetweenAProcessAndTheOneItForks)
{
    constexpr std::size_t length = 36;
    (void)randomIdentity();
    std::array<int, 2> ends {};
    ASSERT_EQ (pipe (ends.data()), 0);

    const auto child = fork();
    ASSERT_GE (child, 0);
    if (child == 0)
    {
        const auto text = randomIdentity().toStdString();
        _exit (write (ends[1], text.data(), length) == static_cast<ssize_t> (length) ? 0 : 1);
    }

    std::string ofChild (length, '\0');
    EXPECT_EQ (read (ends[0], ofChild.data(), length), static_cast<ssize_t> (length));
    int status = 1;
    waitpid (child, &status, 0);
    close (ends[0]);
    close (ends[1]);

    EXPECT_EQ (status, 0);
    EXPECT_NE (ofChild, randomIdentity().toStdString());
}

} // namespace
