// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/TextDecoding.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZEP::Core;

TEST (PlainASCII, isEveryByteFrom1To127)
{
    std::string bytes;

    for (int byte = 1; byte < 128; ++byte)
    {
        bytes += static_cast<char> (byte);
        EXPECT_TRUE (isPlainASCII (bytes)) << byte;
        EXPECT_TRUE (isPlainASCII (std::string (1, static_cast<char> (byte)))) << byte;
    }

    EXPECT_TRUE (isPlainASCII ({}));
}

TEST (PlainASCII, isNothingWithAnotherByteWhereverItStands)
{
    for (std::size_t length = 1; length < 40; ++length)
        for (std::size_t place = 0; place < length; ++place)
            for (const char other : { '\0', '\x80', '\xff' })
            {
                std::string bytes (length, 'x');
                bytes[place] = other;
                EXPECT_FALSE (isPlainASCII (bytes)) << length << " bytes, " << place;
            }
}

/** The bytes around are none of its own. */
TEST (PlainASCII, endsWhereItEnds)
{
    for (std::size_t length = 0; length < 40; ++length)
    {
        const auto bytes = '\xff' + std::string (length, 'x') + '\xff';
        EXPECT_TRUE (isPlainASCII (std::string_view (bytes).substr (1, length))) << length;
    }
}
