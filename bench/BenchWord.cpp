// SPDX-License-Identifier: GPL-3.0-only
// Word cue sheets, made and read back by the docx tool as its callers start it: a process for each document, its start included.
#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

using JSON = nlohmann::ordered_json;

/** A folder with a sheet of so many cues, "sheet.json". */
class SheetFolder final
{
public:
    explicit SheetFolder (long cues)
    {
        auto pattern = (std::filesystem::temp_directory_path() / "overmarks-bench-XXXXXX").string();
        path = ::mkdtemp (pattern.data());
        auto list = JSON::array();

        for (long i = 0; i < cues; ++i)
            list.push_back (cue (i));

        std::ofstream (path / "sheet.json") << JSON { { "cueContentList", list } };
    }

    SheetFolder (const SheetFolder&) = delete;
    SheetFolder& operator= (const SheetFolder&) = delete;
    ~SheetFolder() { std::filesystem::remove_all (path); }

    std::string operator/ (const char* name) const { return (path / name).string(); }

private:
    static JSON rich (const std::string& text) { return { { "text", text }, { "runs", JSON::array() } }; }

    static JSON cue (long number)
    {
        return { { "charName", "ANNA" },
                 { "cueText", rich ("Where have you been all night? I called everyone we know.") },
                 { "cueNotes", rich ("Softer than the guide, she has been crying.") },
                 { "cueEngNotes", rich ("Use the lavalier.") },
                 { "cueNumber", "R1-" + std::to_string (number) },
                 { "startTC", "01:00:07:01" },
                 { "endTC", "01:00:11:07" },
                 { "cueTakes",
                   { { "numRecordedTakes", 5 },
                     { "selectedTake", 2 },
                     { "alternativeTake", 0 },
                     { "numberTakesToDisplay", 25 },
                     { "numberRowsToDisplay", 1 } } } };
    }

    std::filesystem::path path;
};

/** Runs a program, which has nothing to say. @returns whether it has done its work */
bool run (std::vector<std::string> words, rusage& usage)
{
    std::vector<char*> arguments;

    for (auto& word : words)
        arguments.push_back (word.data());

    arguments.push_back (nullptr);
    posix_spawn_file_actions_t silence;
    ::posix_spawn_file_actions_init (&silence);
    ::posix_spawn_file_actions_addopen (&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    pid_t child = 0;
    int status = 1;
    const auto isStarted =
        ::posix_spawn (&child, arguments.front(), &silence, nullptr, arguments.data(), environ) == 0;
    ::posix_spawn_file_actions_destroy (&silence);
    return isStarted && ::wait4 (child, &status, 0, &usage) == child && status == 0;
}

/** Runs the tool and notes the most memory that it had, for each cue. */
bool runTool (benchmark::State& state, std::vector<std::string> words)
{
    rusage usage {};
    words.insert (words.begin(), OVERMARKS_DOCX_HANDLER);

    if (! run (words, usage))
        return false;

    constexpr double kilobyte = 1024.0;
    state.counters["peakBytesPerRow"] =
        kilobyte * static_cast<double> (usage.ru_maxrss) / static_cast<double> (state.range (0));
    return true;
}

void writeDocx (benchmark::State& state)
{
    const SheetFolder folder (state.range (0));

    for (auto _ : state)
        if (! runTool (state,
                       { "export", "json=" + (folder / "sheet.json"), "output=" + (folder / "sheet.docx") }))
            return state.SkipWithError ("the document can't be written");

    state.SetItemsProcessed (state.iterations() * state.range (0));
}
BENCHMARK (writeDocx)->Arg (1000)->Arg (2000)->Arg (10000)->UseRealTime()->Unit (benchmark::kMillisecond);

void readDocx (benchmark::State& state)
{
    const SheetFolder folder (state.range (0));

    if (! runTool (state,
                   { "export", "json=" + (folder / "sheet.json"), "output=" + (folder / "sheet.docx") }))
        return state.SkipWithError ("the document can't be written");

    for (auto _ : state)
        if (! runTool (state,
                       { "import", "input=" + (folder / "sheet.docx"), "json=" + (folder / "read.json") }))
            return state.SkipWithError ("the document can't be read");

    state.SetItemsProcessed (state.iterations() * state.range (0));
}
BENCHMARK (readDocx)->Arg (1000)->Arg (2000)->UseRealTime()->Unit (benchmark::kMillisecond);

constexpr auto python = "/usr/bin/python3";

/** The same cells by a library that writes them from a script; its start counts too, and is little beside the rest. */
void writeWithPythonDocx (benchmark::State& state)
{
    const SheetFolder folder (state.range (0));
    rusage usage {};

    for (auto _ : state)
        if (! run ({ python, OVERMARKS_BENCH_FOLDER "/peers/word_sheet.py", folder / "sheet.json",
                     folder / "peer.docx" },
                   usage))
            return state.SkipWithError ("the peer doesn't work");

    state.SetItemsProcessed (state.iterations() * state.range (0));
}

/** Where the peer is installed it stands below ours in the table. */
const bool hasPeer = []
{
    rusage usage {};
    const auto isInstalled = run ({ python, "-c", "import docx" }, usage);

    if (isInstalled)
        benchmark::RegisterBenchmark ("writeDocx|python-docx", writeWithPythonDocx)
            ->Arg (1000) // takes a minute
            ->Iterations (1)
            ->UseRealTime()
            ->Unit (benchmark::kMillisecond);

    return isInstalled;
}();

} // namespace
