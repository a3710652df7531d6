// SPDX-License-Identifier: GPL-3.0-only
// Takes the fuzzer's place where there is none: every file on the command line, and every file in a folder there, is one
// input. As with the fuzzer a bad one ends the program.
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

void read (const std::filesystem::path& path)
{
    std::cerr << path.string() << "\n";
    std::ifstream stream (path, std::ios::binary);
    const std::vector<char> bytes { std::istreambuf_iterator<char> (stream), {} };
    LLVMFuzzerTestOneInput (static_cast<const std::uint8_t*> (static_cast<const void*> (bytes.data())),
                            bytes.size());
}

} // namespace

int main (int argumentCount, char** arguments)
{
    for (int i = 1; i < argumentCount; ++i)
    {
        if (! std::filesystem::is_directory (arguments[i]))
        {
            read (arguments[i]);
            continue;
        }

        for (const auto& entry : std::filesystem::recursive_directory_iterator (arguments[i]))
            if (entry.is_regular_file())
                read (entry.path());
    }
}
