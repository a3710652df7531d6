// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

/** Builds a text whose columns are told by their places alone. All widths are bytes; lines end in CR LF. */
class OVERMARKS_API FixedWidthText final
{
public:
    /** The start of a text, filled up with blanks.
        @param most   what is longer loses its end
        @param width  of the column with its blanks; not below `most` */
    void column (std::string_view bytes, std::size_t most, std::size_t width);

    void blanks (std::size_t number); ///< As many blanks, none included.

    /** The text as it stands. */
    void text (std::string_view bytes);

    void endLine(); ///< CR and LF.

    [[nodiscard]] const std::string& bytes() const noexcept { return all; } ///< All that was written so far.

private:
    std::string all;
};

/** A text cut into pieces of one length, the last one perhaps shorter; none for an empty text. The text must outlive them. */
[[nodiscard]] OVERMARKS_API std::vector<std::string_view> piecesOf (std::string_view bytes,
                                                                    std::size_t length);

/** A text without any occurrence of `sought`, from left to right: what only comes together by the removal stays. */
[[nodiscard]] OVERMARKS_API std::string without (std::string_view bytes, std::string_view sought);

} // namespace ZEP::Overmarks
