// SPDX-License-Identifier: GPL-3.0-only
// Somebody stops the program while it reads a list that doesn't end.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace
{

/** Makes a file as soon as there is something in a folder. */
class Lookout final
{
public:
    Lookout (const juce::File& folder, const juce::File& sign)
        : thread (
            [this, folder, sign]
            {
                constexpr useconds_t aMoment = 5000;

                while (! isOver && folder.getNumberOfChildFiles (juce::File::findFilesAndDirectories) == 0)
                    usleep (aMoment);

                sign.create();
            })
    {
    }

    Lookout (const Lookout&) = delete;
    Lookout& operator= (const Lookout&) = delete;

    ~Lookout()
    {
        isOver = true;
        thread.join();
    }

private:
    std::atomic<bool> isOver { false };
    std::thread thread;
};

class ProgramStoppedReadingTest : public ProgramTest, public testing::WithParamInterface<int>
{
protected:
    ProgramStoppedReadingTest() { write ("y.csv", threeCues); }

    /** A run that reads what somebody types, who never comes to an end and stops it. */
    ProgramResult stopped (const std::vector<std::string>& call) const
    {
        file ("reading").deleteFile();
        file ("tmp").createDirectory();
        ProgramSurroundings surroundings;
        surroundings.answer = "Start TC,Text\n";
        surroundings.temporaryFolder = path ("tmp");
        surroundings.signals = { GetParam() };
        surroundings.signalsWhen = path ("reading");
        const Lookout lookout (file ("tmp"), file ("reading"));
        return run (call, {}, surroundings);
    }
};

TEST_P (ProgramStoppedReadingTest, readingWithJSONIsAnsweredInOneDocument)
{
    const std::vector<std::vector<std::string>> calls {
        { "list", "-", "--format", "csv", "--json" },
        { "--json", "rows", "-", "--format", "csv" },
        { "diff", "y.csv", "-", "--format", "csv", "--json=true" },
        { "import", "-", "--format", "csv", "-o", "z.json", "--json" },
        { "dump", "-", "--format", "json", "--json" },
    };

    for (const auto& call : calls)
    {
        const auto result = stopped (call);
        EXPECT_EQ (result.status, 1) << call[0];
        EXPECT_EQ (result.output, "{\n \"error\": \"Stopped while the list was read\"\n}\n") << call[0];
        EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "reading", "tmp", "y.csv" })) << call[0];
    }
}

TEST_P (ProgramStoppedReadingTest, readingWithoutJSONEndsByTheSignal)
{
    const auto result = stopped ({ "list", "-", "--format", "csv" });
    EXPECT_EQ (result.status, 128 + GetParam());
    EXPECT_EQ (result.output, "");
    EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "reading", "tmp", "y.csv" }));
}

INSTANTIATE_TEST_SUITE_P (Signals, ProgramStoppedReadingTest, testing::Values (SIGINT, SIGTERM));

} // namespace
