// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace DocxHandler
{

/** A timecode within a text. */
struct FoundTimecode
{
    std::size_t start = 0;
    std::size_t end = 0;
};

/** The timecodes of a text from left to right: hh:mm:ss:ff, or with ";", "." or "," before the frames or milliseconds. */
[[nodiscard]] std::vector<FoundTimecode> findTimecodes (std::string_view text);

/** Whether a text is a timecode and nothing else, or the dashes that stand for none. */
[[nodiscard]] bool isTimecode (std::string_view text);

} // namespace DocxHandler
