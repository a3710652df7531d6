// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

/** EBU subtitle files, built byte by byte. */
namespace EBUSupport
{

using FourBytes = std::array<std::uint8_t, 4>;

/** A head that promises so many blocks, given as the five bytes of its field. */
inline std::string head (const std::string& promised)
{
    std::string bytes (1024, ' ');
    bytes.replace (0, 11, "850STL25.01");
    bytes.replace (238, 5, promised);
    return bytes;
}

/** A block of 128 bytes, the rest of its text field unused. */
inline std::string block (FourBytes in, FourBytes out, const std::string& text)
{
    std::string bytes (128, '\0');
    std::copy (in.begin(), in.end(), bytes.begin() + 5);
    std::copy (out.begin(), out.end(), bytes.begin() + 9);
    std::fill (bytes.begin() + 16, bytes.end(), '\x8f');
    return bytes.replace (16, text.size(), text);
}

} // namespace EBUSupport
