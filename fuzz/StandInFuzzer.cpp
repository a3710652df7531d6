// SPDX-License-Identifier: GPL-3.0-only
// fuzz_TARGET [--runs N] [--seed N] [--dictionary FILE] [--keep FILE] FILE|FOLDER...
//
// Takes the fuzzer's place where there is none: every file on the command line, and every file in a folder there, is one input, and
// N more are made by damaging these. As with the fuzzer a bad one ends the program; it is then found in the file of --keep.
#include "Law.h"
#include "Mutator.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

struct Options
{
    unsigned runs = 0;
    unsigned seed = 1;
    std::filesystem::path dictionary;
    std::filesystem::path keep;
    std::vector<std::filesystem::path> files; ///< in the same order on every machine
};

void addFiles (std::vector<std::filesystem::path>& files, const std::filesystem::path& path)
{
    law (std::filesystem::exists (path), "what the command line names is there");

    if (! std::filesystem::is_directory (path))
    {
        files.push_back (path);
        return;
    }

    const auto first = static_cast<std::ptrdiff_t> (files.size());

    for (const auto& entry : std::filesystem::recursive_directory_iterator (path))
        if (entry.is_regular_file())
            files.push_back (entry.path());

    std::sort (files.begin() + first, files.end());
}

Options readCommandLine (const std::vector<std::string>& words)
{
    Options options;

    for (std::size_t i = 0; i < words.size(); ++i)
    {
        if (! words[i].starts_with ("--"))
        {
            addFiles (options.files, words[i]);
            continue;
        }

        law (i + 1 < words.size(), "every option has a value");
        const auto& value = words[i + 1];

        if (words[i] == "--runs")
            options.runs = static_cast<unsigned> (std::stoul (value));
        else if (words[i] == "--seed")
            options.seed = static_cast<unsigned> (std::stoul (value));
        else if (words[i] == "--dictionary")
            options.dictionary = value;
        else if (words[i] == "--keep")
            options.keep = value;
        else
            law (false, "the options are --runs, --seed, --dictionary and --keep");

        ++i;
    }

    return options;
}

void run (const Options& options, const std::string& input)
{
    if (! options.keep.empty())
        std::ofstream (options.keep, std::ios::binary) << input;

    // A block of its own of exactly this size, so that a reader that goes beyond it is caught.
    const std::vector<std::uint8_t> bytes (input.begin(), input.end());
    LLVMFuzzerTestOneInput (bytes.data(), bytes.size());
}

} // namespace

int main (int argumentCount, char** arguments)
{
    constexpr std::size_t longestToDamage = std::size_t { 1 }
                                            << 16; // the others take too long for what they show
    const auto options = readCommandLine ({ arguments + 1, arguments + argumentCount });
    std::vector<std::string> inputs;

    for (const auto& file : options.files)
    {
        std::cerr << file.string() << std::endl;
        auto input = contentOf (file);
        run (options, input);

        if (input.size() <= longestToDamage)
            inputs.push_back (std::move (input));
    }

    Mutator mutator (options.seed, options.dictionary.empty() ? std::vector<std::string>()
                                                              : wordsOfDictionary (options.dictionary));

    for (unsigned i = 0; i < options.runs; ++i)
        run (options, mutator.next (inputs));

    if (! options.keep.empty())
        std::filesystem::remove (options.keep);

    std::cerr << options.files.size() << " files and " << options.runs << " damaged ones were read.\n";
}
