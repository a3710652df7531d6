// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/RecentTexts.h"

#include "core/text/TextDecoding.h"

#include <cstring>
#include <functional>

namespace ZEP::Core
{
namespace
{

bool isSame (const char* known, std::string_view bytes)
{
    return std::strncmp (known, bytes.data(), bytes.size()) == 0 && known[bytes.size()] == 0;
}

} // namespace

juce::String RecentTexts::textOf (std::string_view strictUTF8)
{
    if (strictUTF8.empty() || strictUTF8.size() > mostBytes)
        return textFromStrictUTF8 (strictUTF8);

    auto& text = texts[std::hash<std::string_view>() (strictUTF8) % places];

    if (! isSame (text.toRawUTF8(), strictUTF8))
        text = textFromStrictUTF8 (strictUTF8);

    return text;
}

} // namespace ZEP::Core
