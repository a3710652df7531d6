// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/SingleByteText.h"

#include <Poco/Latin1Encoding.h>
#include <Poco/TextConverter.h>
#include <Poco/UTF8Encoding.h>

#include <algorithm>
#include <utility>

namespace ZEP::Overmarks
{

std::string singleByteText (std::string utf8, const Poco::TextEncoding& target)
{
    // Most lists are ASCII and need no conversion.
    if (std::none_of (utf8.begin(), utf8.end(), [] (char c) { return static_cast<unsigned char> (c) > 127; }))
        return utf8;

    std::string bytes;
    Poco::TextConverter (Poco::UTF8Encoding(), target, '?').convert (utf8, bytes);
    return bytes;
}

std::string latin1Text (std::string utf8)
{
    static const Poco::Latin1Encoding latin1;
    return singleByteText (std::move (utf8), latin1);
}

} // namespace ZEP::Overmarks
