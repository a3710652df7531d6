// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

namespace ZEP::Core
{

/** Tells from its bytes how a text file is encoded.

    Cue lists come from editing rooms all over the world and never say how they were saved. The 8-bit
    encodings can't be told apart from one another: the answer for them is one number, and which of them it is
    stays the caller's decision.
*/
class ZEP_CORE_API TextEncodingDetector final
{
public:
    TextEncodingDetector();
    ~TextEncodingDetector();

    /** Looks at all `length` bytes once and returns one of

        - 0 nothing found: empty or binary
        - 1 8-bit text
        - 2 ASCII
        - 3 UTF-8 with mark, 4 without
        - 5 UTF-16 little endian with mark, 6 without
        - 7 UTF-16 big endian with mark, 8 without */
    [[nodiscard]] int DetectEncoding (const unsigned char* bytes, unsigned long length) const;
};

} // namespace ZEP::Core
