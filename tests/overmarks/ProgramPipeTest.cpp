// SPDX-License-Identifier: GPL-3.0-only
// A pipe with a name, or a link, in the place of the file that is to be written.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <unistd.h>

using testing::HasSubstr;
using testing::StartsWith;
using namespace std::chrono_literals;

namespace
{

class ProgramPipeTest : public ProgramTest
{
protected:
    ProgramPipeTest()
    {
        write ("x.csv", threeCues);
        EXPECT_EQ (::mkfifo (path ("pipe").c_str(), 0600), 0);
    }

    /** A list that is larger than what a pipe holds. */
    static std::string manyLines()
    {
        std::string list = "Start TC,Text\n";
        for (int i = 0; i < 5000; ++i)
            list += "01:00:00:00,A line that is neither long nor short\n";
        return list;
    }

    /** What somebody gets who comes half a second after the program has begun. */
    std::string readByALatecomer (const std::vector<std::string>& arguments, ProgramResult& result) const
    {
        std::string got;
        std::thread reader (
            [&]
            {
                std::this_thread::sleep_for (500ms);
                std::ifstream stream (path ("pipe"), std::ios::binary);
                got.assign (std::istreambuf_iterator<char> (stream), {});
            });
        result = run (arguments);
        reader.join();
        return got;
    }
};

TEST_F (ProgramPipeTest, aReaderWhoComesLaterIsWaitedFor)
{
    ProgramResult result;
    EXPECT_THAT (readByALatecomer ({ "convert", "x.csv", "pipe", "--format", "json" }, result),
                 HasSubstr ("Hello?"));
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (readByALatecomer ({ "convert", "x.csv", "pipe", "--format", "csv" }, result),
                 HasSubstr ("Hello?"));
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (readByALatecomer ({ "convert", "x.csv", "pipe", "--format", "xlsx" }, result),
                 StartsWith ("PK"));
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (readByALatecomer ({ "overview", "x.csv", "-o", "pipe" }, result), StartsWith ("%PDF"));
    EXPECT_EQ (result.status, 0) << result.errors;
    std::filesystem::create_symlink ("pipe", path ("film.overmarks"));
    EXPECT_THAT (readByALatecomer ({ "import", "x.csv", "-o", "film.overmarks" }, result),
                 HasSubstr ("Hello?"));
    EXPECT_EQ (result.status, 0) << result.errors;
}

TEST_F (ProgramPipeTest, whileItWaitsForAReaderItCanBeStopped)
{
    for (const std::string format : { "json", "csv", "xlsx" })
    {
        ProgramSurroundings interrupted;
        interrupted.signals = { SIGINT };
        interrupted.signalsWhen = path ("now");
        std::thread impatience (
            [this]
            {
                std::this_thread::sleep_for (700ms);
                write ("now", "");
            });
        const auto result = run ({ "convert", "x.csv", "pipe", "--format", format }, {}, interrupted);

        impatience.join();

        // On a slow machine it is still at work then.
        EXPECT_TRUE (result.status == 128 + SIGINT
                     || juce::String (result.errors).contains ("Stopped; nothing was written"))
            << format << ": " << result.errors;

        file ("now").deleteFile();
        EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "pipe", "x.csv" })) << format;
    }
}

TEST_F (ProgramPipeTest, stoppedAtAPipeItKeepsWhatIsFinished)
{
    std::filesystem::create_directory (path ("out"));
    write ("out/x.csv", "the older one");
    ASSERT_EQ (::mkfifo (path ("out/x.ttal").c_str(), 0600), 0);
    ProgramSurroundings interrupted;
    interrupted.signals = { SIGTERM };
    interrupted.signalsWhen = path ("now");
    std::thread impatience (
        [this]
        {
            // Both documents are made then, and there is only the pipe left to wait for.
            const auto isMade = [this]
            {
                const auto found = file ("out").findChildFiles (juce::File::findFiles, true, "x.ttal");
                return std::any_of (found.begin(), found.end(),
                                    [] (const juce::File& each) { return each.getSize() > 0; });
            };

            for (int i = 0; i < 5000 && ! isMade(); ++i)
                std::this_thread::sleep_for (20ms);

            std::this_thread::sleep_for (500ms);
            write ("now", "");
        });
    const auto result =
        run ({ "export", "x.csv", "-o", "out", "--force", "--format", "csv,ttal" }, {}, interrupted);
    impatience.join();
    EXPECT_EQ (result.status, 1) << result.errors;
    EXPECT_THAT (result.errors, HasSubstr (path ("out/x.ttal") + " was not written"));
    EXPECT_THAT (result.errors, HasSubstr ("Stopped; what was finished is kept"));
    EXPECT_THAT (read ("out/x.csv"), HasSubstr ("Hello?"));
    EXPECT_EQ (file ("out").getNumberOfChildFiles (juce::File::findFilesAndDirectories), 2);
}

TEST_F (ProgramPipeTest, whileAReaderStallsNothingHasBeenReplacedAndItCanBeEnded)
{
    write ("many.csv", manyLines());
    std::filesystem::create_directory (path ("out"));
    write ("out/many.csv", "the older one");
    ASSERT_EQ (::mkfifo (path ("out/many.ttal").c_str(), 0600), 0);
    const int stalling = ::open (path ("out/many.ttal").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE (stalling, 0);
    ProgramSurroundings interrupted;
    interrupted.signals = { SIGTERM };
    interrupted.signalsWhen = path ("now");
    std::thread impatience (
        [this, stalling]
        {
            int waiting = 0; // bytes in the pipe: the program is writing

            for (int i = 0; i < 5000 && waiting == 0; ++i)
            {
                ::ioctl (stalling, FIONREAD, &waiting);
                std::this_thread::sleep_for (20ms);
            }

            write ("now", "");
        });
    const auto result =
        run ({ "export", "many.csv", "-o", "out", "--force", "--format", "csv,ttal" }, {}, interrupted);
    impatience.join();
    ::close (stalling);
    EXPECT_EQ (result.status, 128 + SIGTERM) << result.errors;
    EXPECT_EQ (read ("out/many.csv"), "the older one");
    EXPECT_EQ (file ("out").getNumberOfChildFiles (juce::File::findFilesAndDirectories), 2);
}

TEST_F (ProgramPipeTest, pipesAreWrittenOneAfterTheOther)
{
    std::filesystem::create_directory (path ("out"));
    std::string first, second;

    for (const auto* name : { "out/x.csv", "out/x.ttal" })
        ASSERT_EQ (::mkfifo (path (name).c_str(), 0600), 0);

    const auto contentOf = [this] (const char* name)
    {
        std::ifstream stream (path (name), std::ios::binary);
        return std::string (std::istreambuf_iterator<char> (stream), {});
    };
    std::thread reader (
        [&]
        {
            first = contentOf ("out/x.csv");
            second = contentOf ("out/x.ttal");
        });
    const auto result = run ({ "export", "x.csv", "-o", "out", "--format", "csv,ttal" });
    reader.join();
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (first, HasSubstr ("Hello?"));
    EXPECT_THAT (second, StartsWith ("{"));
}

TEST_F (ProgramPipeTest, aReaderWhoLeavesIsTold)
{
    write ("many.csv", manyLines());
    for (const std::string format : { "json", "csv" })
    {
        std::thread reader (
            [this]
            {
                const int stream = ::open (path ("pipe").c_str(), O_RDONLY | O_CLOEXEC);
                std::this_thread::sleep_for (300ms);
                ::close (stream);
            });
        EXPECT_EQ (errorOf ({ "convert", "many.csv", "pipe", "--format", format }, 1),
                   "Can't write " + path ("pipe") + ": Broken pipe");
        reader.join();
    }
}

TEST_F (ProgramPipeTest, aLinkInALinkedFolderLeadsWhereTheSystemSaysItDoes)
{
    namespace fs = std::filesystem;
    const fs::path place (path (""));

    for (const auto* name : { "data/out", "data/archive", "home/archive" })
        fs::create_directories (place / name);

    fs::create_symlink (place / "data/out", place / "home/out");

    for (const auto* format : { "json", "csv" })
    {
        const auto name = std::string ("film.") + format;
        fs::create_symlink ("../archive/" + name, place / "data/out" / name);
        write (juce::String ("home/archive/" + name), "another film");
        const auto result = run ({ "convert", "x.csv", "home/out/" + name, "--force" });
        EXPECT_EQ (result.status, 0) << result.errors;
        EXPECT_EQ (read (juce::String ("home/archive/" + name)), "another film");
        EXPECT_THAT (read (juce::String ("data/archive/" + name)), HasSubstr ("Hello?"));
        EXPECT_TRUE (fs::is_symlink (place / "data/out" / name));
    }
}

} // namespace
