// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace ZEP::Overmarks
{

/** Opens a file for a stream of the standard library, which by itself would wait for a pipe for ever. The stream is that of any
    open file: it can be sought, asked for its place, and closed. A read that fails leaves it bad().

    @param path    as the system knows it
    @param stream  a closed one; it stays closed, with its failbit set, on failure
    @param length  the bytes that the system knows of; 0 for a file of the system itself, which knows only when it is read
    @returns false for what the system doesn't open, and for anything but an ordinary file */
[[nodiscard]] bool openOrdinaryFile (const std::string& path, std::ifstream& stream, std::uint64_t& length);

/** Whether a stream that has come to the end of its file found it before this place: somebody has cut the file, and half a list
    would pass for the whole of it. */
[[nodiscard]] bool hasEndedBefore (std::uint64_t length, std::ifstream& stream);

} // namespace ZEP::Overmarks
