// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

/** What holds whatever the input is. A law that is broken ends the program as a crash does, and tells its words. */
inline void law (bool holds, const char* words)
{
    if (holds)
        return;

    std::cerr << "This doesn't hold: " << words << std::endl;
    std::abort();
}

/** The bytes of a file; none without one. */
inline std::string contentOf (const std::filesystem::path& file)
{
    std::ifstream stream (file, std::ios::binary);
    return { std::istreambuf_iterator<char> (stream), {} };
}

/** The input as the readers take it. */
inline std::string_view bytesOfInput (const std::uint8_t* data, std::size_t size)
{
    return { static_cast<const char*> (static_cast<const void*> (data)), size };
}
