// SPDX-License-Identifier: GPL-3.0-only
// A program that dies while it saves never loses the project.
#include "list/ProjectFile.h"

#include "list/ProjectFileSupport.h"

#include <csignal>
#include <iostream>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

Project projectOf (const juce::String& name, int numberOfCues)
{
    auto project = smallProject (name);
    for (int i = 0; i < numberOfCues; ++i)
        project.list->events.push_back (cue ("A" + juce::String (i), 100 + i));
    return project;
}

/** Saves one project after the other without end, in a process of its own. */
pid_t startSaving (const Project& one, const Project& other, const juce::File& file)
{
    const auto child = ::fork();

    if (child != 0)
        return child;

    for (;;)
        if (ProjectFile::save (one, file).isNotEmpty() || ProjectFile::save (other, file).isNotEmpty())
            ::_exit (1);
}

class ProjectFileCrash : public ProjectFileTest
{
};

TEST_F (ProjectFileCrash, killingAProgramWhileItSavesNeverLosesTheProject)
{
    const auto seed = static_cast<unsigned int> (std::random_device()());
    std::cout << "seed " << seed << "\n";
    std::mt19937 random (seed);
    const auto one = projectOf ("one", 500), other = projectOf ("other", 2000);
    const auto bytesOfOne = bytesOf (one), bytesOfOther = bytesOf (other);
    ASSERT_EQ (save (one), "");
    int cutShort = 0, seenOther = 0;

    for (int round = 0; round < 100; ++round)
    {
        const auto child = startSaving (one, other, file);
        ASSERT_GT (child, 0);
        ::usleep (static_cast<useconds_t> (random() % 40000));
        ::kill (child, SIGKILL);
        int status = 0;
        ::waitpid (child, &status, 0);
        ASSERT_TRUE (WIFSIGNALED (status)) << "saving failed in round " << round << " of seed " << seed;

        Project project;
        ASSERT_EQ (load (project), "") << "round " << round << " of seed " << seed;
        const auto& expected = project.name == "one" ? bytesOfOne : bytesOfOther;
        ASSERT_EQ (folder.bytes ("reel.overmarks") == expected, true)
            << "round " << round << " of seed " << seed;
        seenOther += project.name == "other" ? 1 : 0;

        for (const auto& name : folder.names())
            if (name != "reel.overmarks")
            {
                EXPECT_TRUE (name.starts_with (".reel.overmarks.")) << name;
                std::filesystem::remove (folder.path / name);
                ++cutShort;
            }
    }

    // Else the test has seen nothing.
    EXPECT_GT (cutShort, 0) << "seed " << seed;
    EXPECT_GT (seenOther, 0) << "seed " << seed;
}

} // namespace
} // namespace ZEP::Overmarks::Testing
