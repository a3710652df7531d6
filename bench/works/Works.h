// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <chrono>
#include <optional>
#include <span>
#include <string>

namespace bench
{

/** Which list a work is to be done with. */
struct WorkOrder
{
    juce::File folder; ///< where the lists lie that makeLists() has written
    int rows;          ///< how many rows they have
    juce::File out;    ///< a folder for what the work writes

    juce::String list (const char* name) const { return folder.getChildFile (name).getFullPathName(); }
};

/** What came of it. */
struct WorkDone
{
    double seconds; ///< of the work alone, without what had to be prepared for it

    /** Rows or events that came of it, which shows that it was done; nothing of sheets on paper of ours, which aren't looked at. */
    std::optional<long long> count;
    juce::var details = {}; ///< more figures, for those who ask
};

/** A work of ours, "csv-in"; the least that it could cost, "csv-in.floor"; or another library's, "ttal-in.rapidjson". */
struct Work
{
    const char* name;
    WorkDone (*run) (const WorkOrder&);
};

std::span<const Work> worksOfReading();
std::span<const Work> floorsOfReading();
std::span<const Work> worksOfLists();
std::span<const Work> worksOfWriting();
std::span<const Work> worksOfDocuments();
std::span<const Work> worksOfPlainPaper();
std::span<const Work> worksOfMemory();

/** The height of this process's memory is counted anew from here, where the system allows that. */
void forgetPeak();

/** Lets the allocator join what was freed so far, which it puts off to the next large request otherwise. */
void settleMemory();

/** A line of /proc/self/status, in KiB; 0 where there is none. */
long long memoryInKiB (const std::string& name);

/** How long something takes, without what was needed before. The height of memory begins with what the process has by now, with freed
    memory that the heap has kept. */
template <typename Function>
double secondsOf (Function&& function)
{
    settleMemory();
    forgetPeak();
    const auto start = std::chrono::steady_clock::now();
    function();
    return std::chrono::duration<double> (std::chrono::steady_clock::now() - start).count();
}

/** Ends the program with words: a work that can't be done must not look like a quick one. */
[[noreturn]] void giveUp (const std::string& why);

} // namespace bench
