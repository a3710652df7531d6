// SPDX-License-Identifier: GPL-3.0-only
// Linked to the test programs by scripts/mutate: which break is switched on, and which switches each test comes by.
#include <gtest/gtest.h>

#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

extern "C"
{
    unsigned char* mutation_reached = nullptr;
    int mutation_active = -1;
}

namespace
{

constexpr std::size_t numberOfSwitches = 1 << 16;

// Before any constructor of the sources, some of which come by a switch; shared with the processes that a test forks.
__attribute__ ((constructor (101))) void prepareSwitches()
{
    void* place = mmap (nullptr, numberOfSwitches, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED)
        std::abort();

    mutation_reached = static_cast<unsigned char*> (place);
    if (const char* active = std::getenv ("MUTATION_ACTIVE"))
        mutation_active = std::atoi (active);
}

/** Writes a line for each test: name, result, milliseconds, numbers of the switches. */
class ReachWriter final : public testing::EmptyTestEventListener
{
public:
    explicit ReachWriter (std::FILE* fileToWrite) : file (fileToWrite) {}

    // What was come by since the last test belongs to the start of the program, or to the preparation of a suite.
    void OnTestStart (const testing::TestInfo& info) override
    {
        if (isFirst)
            write ("*", "*", true, 0);
        else if (suite != info.test_suite_name())
            write (info.test_suite_name(), "*", true, 0);

        isFirst = false;
        suite = info.test_suite_name();
        std::fill_n (mutation_reached, numberOfSwitches, static_cast<unsigned char> (0));
    }

    void OnTestEnd (const testing::TestInfo& info) override
    {
        write (info.test_suite_name(), info.name(), info.result()->Passed(), info.result()->elapsed_time());
        std::fill_n (mutation_reached, numberOfSwitches, static_cast<unsigned char> (0));
    }

private:
    void write (const char* suiteName, const char* name, bool passed, long long milliseconds)
    {
        std::fprintf (file, "%s.%s\t%s\t%lld\t", suiteName, name, passed ? "passed" : "failed", milliseconds);

        for (std::size_t number = 0; number < numberOfSwitches; ++number)
            if (mutation_reached[number] != 0)
                std::fprintf (file, "%zu ", number);

        std::fputc ('\n', file);
        std::fflush (file);
    }

    std::FILE* file;
    std::string suite;
    bool isFirst = true;
};

const bool isListening = []
{
    if (const char* path = std::getenv ("MUTATION_REACH"))
        if (std::FILE* file = std::fopen (path, "a"))
            testing::UnitTest::GetInstance()->listeners().Append (
                std::make_unique<ReachWriter> (file).release());
    return true;
}();

} // namespace
