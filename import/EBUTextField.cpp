// SPDX-License-Identifier: GPL-3.0-only
#include "import/EBUTextField.h"

#include "core/text/StringUtil.h"

#include <algorithm>
#include <string>

namespace ZEP::Overmarks
{
namespace
{

constexpr char kUnusedSpace = '\x8f';

/** A text in UTF-16, up to its first zero unit: its other halves of zero are letters. */
juce::String decodedUnits (std::string_view field)
{
    std::string bytes (field);
    std::replace (bytes.begin(), bytes.end(), kUnusedSpace, '\0');

    std::size_t end = 0;
    while (end + 2 <= bytes.size() && (bytes[end] != 0 || bytes[end + 1] != 0))
        end += 2;

    auto encoding = Core::TextEncodingUTF16;
    return Core::StringUtil::stringWithTextEncoding (bytes.data(), end, encoding);
}

} // namespace

bool canDecodeEBUText (Core::TextEncoding encoding)
{
    return encoding == Core::TextEncodingASCII || encoding == Core::TextEncodingUTF8
           || encoding == Core::TextEncodingUTF16 || encoding == Core::TextEncodingWindows1252
           || encoding == Core::TextEncodingLatin1;
}

juce::String decodedEBUText (std::string_view field, Core::TextEncoding encoding)
{
    if (! canDecodeEBUText (encoding))
        return {};
    if (encoding == Core::TextEncodingUTF16)
        return decodedUnits (field);

    const auto used = field.substr (0, field.find (kUnusedSpace));
    const auto text = used.substr (0, used.find ('\0'));

    if (encoding == Core::TextEncodingUTF8)
        return Core::StringUtil::fromUTF8 (text);

    // The character of a byte's own code is what Latin-1 says.
    auto named = encoding == Core::TextEncodingASCII ? Core::TextEncodingLatin1 : encoding;
    return Core::StringUtil::stringWithTextEncoding (text.data(), text.size(), named);
}

} // namespace ZEP::Overmarks
