// SPDX-License-Identifier: GPL-3.0-only
// compare_works --make FOLDER ROWS        writes the lists that are compared into a folder
// compare_works --list                    the names of the works, a line each
// compare_works WORK FOLDER ROWS OUT      does one of them, and prints its seconds, the height of memory and what shows that
//                                         it was done, as JSON
#include "SeasonLists.h"
#include "Works.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace bench
{

void forgetPeak() { std::ofstream ("/proc/self/clear_refs") << 5; }

void settleMemory()
{
    constexpr std::size_t large =
        65536; // a request that the small pieces aren't looked through for, but are joined before
    void* volatile memory = std::malloc (large); // a compiler leaves out what nobody could see
    std::free (memory);
}

long long memoryInKiB (const std::string& name)
{
    std::ifstream status ("/proc/self/status");

    for (std::string line; std::getline (status, line);)
        if (line.starts_with (name + ":"))
            return std::stoll (line.substr (name.size() + 1));

    return 0;
}

void giveUp (const std::string& why)
{
    std::fprintf (stderr, "compare_works: %s\n", why.c_str());
    std::_Exit (1);
}

} // namespace bench

namespace
{

std::vector<bench::Work> allWorks()
{
    std::vector<bench::Work> works;

    for (const auto& some :
         { bench::worksOfReading(), bench::floorsOfReading(), bench::worksOfLists(), bench::worksOfWriting(),
           bench::worksOfDocuments(), bench::worksOfPlainPaper(), bench::worksOfMemory() })
        works.insert (works.end(), some.begin(), some.end());

    return works;
}

/** Of this process, or of one that it has started. */
long long peakInKiB()
{
    rusage children {};
    ::getrusage (RUSAGE_CHILDREN, &children);
    return std::max (bench::memoryInKiB ("VmHWM"), static_cast<long long> (children.ru_maxrss));
}

void doWork (const bench::Work& work, const bench::WorkOrder& order)
{
    const auto done = work.run (order);
    auto* const answer = new juce::DynamicObject;
    const juce::var json (answer);
    answer->setProperty ("work", work.name);
    answer->setProperty ("seconds", done.seconds);
    answer->setProperty ("peakKiB", peakInKiB());

    if (done.count)
        answer->setProperty ("count", *done.count);
    if (! done.details.isVoid())
        answer->setProperty ("details", done.details);

    std::puts (juce::JSON::toString (json, true).toRawUTF8());
}

juce::File fileAt (const std::string& path)
{
    return juce::File::getCurrentWorkingDirectory().getChildFile (path);
}

} // namespace

int main (int argumentCount, char** arguments)
{
    const std::vector<std::string> words (arguments + 1, arguments + argumentCount);

    if (words.size() == 3 && words[0] == "--make")
    {
        bench::makeLists (fileAt (words[1]), std::stoi (words[2]));
        return 0;
    }

    for (const auto& work : allWorks())
        if (words.size() == 1 && words[0] == "--list")
            std::puts (work.name);
        else if (words.size() == 4 && words[0] == work.name)
        {
            doWork (work, { fileAt (words[1]), std::stoi (words[2]), fileAt (words[3]) });
            std::fflush (stdout);
            std::_Exit (0); // what was read needn't be put away
        }

    if (words.size() == 1 && words[0] == "--list")
        return 0;

    bench::giveUp ("no such work, or not its words: WORK FOLDER ROWS OUT, or --make FOLDER ROWS, or --list");
}
