// SPDX-License-Identifier: GPL-3.0-only
#pragma once

namespace ZEP::Core
{

/** How the bytes of a cue list stand for characters. Stored and compared as a number; a file may hold any. */
enum TextEncoding : int
{
    TextEncodingUnknown = 0, ///< not known yet: to be found from the bytes
    TextEncodingASCII = 1,
    TextEncodingUTF8 = 2,
    TextEncodingUTF16 = 3, ///< either byte order
    TextEncodingMacOSRoman = 4,
    TextEncodingWindows1252 = 5,
    TextEncodingLatin1 = 6
};

} // namespace ZEP::Core
