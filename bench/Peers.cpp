// SPDX-License-Identifier: GPL-3.0-only
#include "Peers.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace bench
{

namespace
{

constexpr auto python = "/usr/bin/python3"; // the machine's own

juce::String quoted (const juce::String& word) { return "'" + word.replace ("'", "'\\''") + "'"; }

struct Close
{
    void operator() (std::FILE* file) const { ::pclose (file); }
};

std::string outputOf (const juce::String& command)
{
    const std::unique_ptr<std::FILE, Close> pipe (::popen (command.toRawUTF8(), "r"));
    std::string output;
    std::array<char, 256> piece;

    while (pipe != nullptr
           && std::fgets (piece.data(), static_cast<int> (piece.size()), pipe.get()) != nullptr)
        output += piece.data();

    return output;
}

/** A line of /proc/self/status, in bytes. */
double memory (std::string_view name)
{
    constexpr double kilobyte = 1024.0;
    std::ifstream status ("/proc/self/status");

    for (std::string line; std::getline (status, line);)
        if (line.starts_with (name) && line[name.size()] == ':')
            return std::stod (line.substr (name.size() + 1)) * kilobyte;

    return 0.0;
}

/** The growth of this process while it works. */
double growth (const std::function<void()>& work)
{
    ::malloc_trim (0);
    std::ofstream ("/proc/self/clear_refs") << 5; // the height is counted anew
    const auto before = memory ("VmRSS");
    work();
    return memory ("VmHWM") - before;
}

} // namespace

void rowsOfAList (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 100000)->Unit (benchmark::kMillisecond);
}

bool pythonHas (const char* module)
{
    const auto question = "import " + juce::String (module) + "; print('yes')";
    return ::access (python, X_OK) == 0
           && outputOf (juce::String (python) + " -c " + quoted (question) + " 2>/dev/null") == "yes\n";
}

void timePython (benchmark::State& state, const char* script, const std::vector<juce::String>& arguments)
{
    auto command =
        juce::String (python) + " " + quoted (juce::String (OVERMARKS_BENCH_FOLDER) + "/peers/" + script);

    for (const auto& argument : arguments)
        command += " " + quoted (argument);

    for (auto _ : state)
    {
        std::istringstream output (outputOf (command));
        double seconds = 0.0;

        if (output >> seconds)
            state.SetIterationTime (seconds);
        else
            return state.SkipWithError (("the peer doesn't work: " + command).toRawUTF8());
    }
}

void notePeak (benchmark::State& state, const std::function<void()>& work)
{
    std::array<int, 2> ends {};

    if (::pipe (ends.data()) != 0)
        return;

    const auto child = ::fork();

    if (child == 0)
    {
        const auto bytes = growth (work);
        const auto written = ::write (ends[1], &bytes, sizeof (bytes));
        ::_exit (written == sizeof (bytes) ? 0 : 1);
    }

    double bytes = 0.0;
    ::close (ends[1]);

    if (::read (ends[0], &bytes, sizeof (bytes)) == sizeof (bytes))
        state.counters["peakBytesPerRow"] = bytes / static_cast<double> (state.range (0));

    ::close (ends[0]);
    ::waitpid (child, nullptr, 0);
}

} // namespace bench
