// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/MacOSRomanEncoding.h"

#include <Poco/MacRomanEncoding.h>
#include <Poco/String.h>
#include <algorithm>
#include <array>

namespace ZEP::Core
{

namespace
{

constexpr std::array<const char*, 6> names { "MacRoman",    "Mac OS Roman", "macintosh",
                                             "x-mac-roman", "csMacintosh",  "mac" };

const Poco::MacRomanEncoding& printableCharacters()
{
    static const Poco::MacRomanEncoding encoding;
    return encoding;
}

constexpr bool isControlCode (int character)
{
    return (character >= 0 && character < 0x20) || character == 0x7F;
}

struct Characters
{
    Characters()
    {
        for (int i = 0; i < 256; ++i)
            map[i] = isControlCode (i) ? i : printableCharacters().characterMap()[i];
    }

    Poco::TextEncoding::CharacterMap map {};
};

const Characters& characters()
{
    static const Characters all;
    return all;
}

} // namespace

macOSRomanEncoding::macOSRomanEncoding() = default;
macOSRomanEncoding::~macOSRomanEncoding() = default;

const char* macOSRomanEncoding::canonicalName() const { return names.front(); }

bool macOSRomanEncoding::isA (const std::string& encodingName) const
{
    return std::any_of (names.begin(), names.end(),
                        [&encodingName] (const char* name)
                        { return Poco::icompare (encodingName, name) == 0; });
}

const Poco::TextEncoding::CharacterMap& macOSRomanEncoding::characterMap() const { return characters().map; }

int macOSRomanEncoding::convert (const unsigned char* bytes) const { return characters().map[*bytes]; }

int macOSRomanEncoding::convert (int character, unsigned char* bytes, int length) const
{
    if (! isControlCode (character))
        return printableCharacters().convert (character, bytes, length);

    if (bytes != nullptr && length > 0)
        *bytes = static_cast<unsigned char> (character);

    return 1;
}

int macOSRomanEncoding::queryConvert (const unsigned char* bytes, int length) const
{
    return length > 0 ? characters().map[*bytes] : -1;
}

int macOSRomanEncoding::sequenceLength (const unsigned char* /*bytes*/, int length) const
{
    return length > 0 ? 1 : -1;
}

} // namespace ZEP::Core
