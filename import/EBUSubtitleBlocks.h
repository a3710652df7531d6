// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCTime.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace ZEP::Overmarks
{

/* A subtitle file as EBU Tech 3264 (EBU N19) lays it out: a head, the General Subtitle Information block of 1024 bytes, and
   Text and Timing Information blocks of 128 bytes. There are no unset values but that of the text field.

    block  offset  length  field
    GSI         3       3  DFC, Disk Format Code: "STL"; the frame rate around it is not used
    GSI       238       5  TNB, Total Number of TTI Blocks: digits in ASCII
    TTI         5       4  TCI, Time Code In: hours, minutes, seconds, frames, one byte each
    TTI         9       4  TCO, Time Code Out: the same
    TTI        16     112  TF, Text Field: see EBUTextField.h; 8F where it is unused

   Not read: code page, display standard, subtitle and extension numbers, cumulative status, position, justification,
   comment flag. */
namespace EBUSubtitles
{

inline constexpr std::size_t kLengthOfGSI = 1024;
inline constexpr std::size_t kLengthOfTTI = 128;
inline constexpr std::size_t kLengthToTellFormat = 12; ///< the first bytes of a file, more than enough

using GSI = std::array<char, kLengthOfGSI>;
using TTI = std::array<char, kLengthOfTTI>;

/** Whether a file is an EBU file, told by its first bytes. */
[[nodiscard]] bool isDiskFormatCode (std::string_view firstBytes);

/** TNB: how many blocks the head promises, which may be more or fewer than there are. 0 where it holds no number. */
[[nodiscard]] int totalNumberOfBlocks (const GSI& head);

/** TCI and TCO. Any bytes are taken as they are; whether such a frame exists is for the reader of the cue list to say. */
[[nodiscard]] Core::_TCTime timeCodeIn (const TTI& block);
[[nodiscard]] Core::_TCTime timeCodeOut (const TTI& block);

/** TF, all of its 112 bytes. A view into the block. */
[[nodiscard]] std::string_view textField (const TTI& block);

} // namespace EBUSubtitles
} // namespace ZEP::Overmarks
