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

/** Whether what stands between two timecodes says no more than that the one goes on until the other: nothing, a dash, an arrow,
    "to". */
[[nodiscard]] bool meansUntil (std::string_view between);

/** The timecodes of a text that holds nothing else, but for dashes, arrows and words such as "to"; none if it says more. */
[[nodiscard]] std::vector<std::string> timecodesAlone (std::string_view text);

/** The time of a list that counts no frames, "1:02:03", with none: "1:02:03:00"; empty for any other text. */
[[nodiscard]] std::string timecodeOfSeconds (std::string_view text);

/** Whether a text is a timecode and nothing else, or the dashes that stand for none. */
[[nodiscard]] bool isTimecode (std::string_view text);

} // namespace DocxHandler
