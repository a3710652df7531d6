// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/** The words of a format, from a dictionary as fuzzers read them: a line NAME="WORD" or "WORD" each, with \\, \" and \xNN in it, and
    lines that begin with "#". Ends the program for a line that is none of these. */
[[nodiscard]] std::vector<std::string> wordsOfDictionary (const std::filesystem::path& file);

/** Makes damaged inputs of good ones, the same ones for the same seed on every machine. */
class Mutator final
{
public:
    Mutator (unsigned seed, std::vector<std::string> wordsOfFormat)
        : random (seed),
          words (std::move (wordsOfFormat))
    {
    }

    /** One of the inputs with one to eight faults; made of nothing where there is no input. */
    [[nodiscard]] std::string next (const std::vector<std::string>& inputs);

private:
    [[nodiscard]] std::size_t below (std::size_t limit);
    [[nodiscard]] std::string word();
    [[nodiscard]] std::string strayBytes();
    void damage (std::string& bytes, const std::vector<std::string>& inputs);
    void changeNumber (std::string& bytes);

    std::mt19937 random;
    std::vector<std::string> words;
};
