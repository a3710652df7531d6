// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>

/** What a Word document may have at most to be read. Nothing limits what is written: whoever writes a sheet looks here whether
    it can be read back. */
namespace DocxHandler::ImportLimits
{

inline constexpr std::uint64_t bytesOfFile = std::uint64_t { 256 } << 20U;
inline constexpr std::uint64_t bytesOfText = std::uint64_t { 256 }
                                             << 20U; ///< of the part with the text, unpacked

/** Signs "<" and "=" in that part. An element of four bytes takes sixty-four once it is parsed, so that the size of the text alone
    bounds nothing. */
inline constexpr std::int64_t marksOfText = 12'000'000;

} // namespace DocxHandler::ImportLimits
