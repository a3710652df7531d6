// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/SettingsFileCheck.h"

#include "core/text/TextDecoding.h"

#include <algorithm>
#include <charconv>

namespace ZEP::Core
{
namespace
{
constexpr std::string_view space = " \t\r\n";
constexpr unsigned highestCodePoint = 0x10ffff;
} // namespace

bool SettingsFileCheck::isSound (std::string_view bytes)
{
    const ByteSurvey survey (bytes);
    return survey.isUTF8 && ! survey.hasZero() && SettingsFileCheck (bytes).file();
}

bool SettingsFileCheck::file()
{
    if (! declaration())
        return false;

    skipSpace();
    if (! take ("<PROPERTIES/>"))
    {
        if (! take ("<PROPERTIES>"))
            return false;
        for (skipSpace(); ! take ("</PROPERTIES>"); skipSpace())
            if (! value())
                return false;
    }
    skipSpace();
    return rest.empty();
}

bool SettingsFileCheck::declaration()
{
    if (! take ("<?xml "))
        return true;
    const auto end = rest.find ("?>");
    if (end == std::string_view::npos || rest.substr (0, end).find_first_of ("<>&") != std::string_view::npos)
        return false;
    rest.remove_prefix (end + 2);
    return true;
}

bool SettingsFileCheck::value()
{
    if (! take ("<VALUE") || ! attribute ("name") || ! attribute ("val"))
        return false;
    skipSpace();
    return take ("/>");
}

bool SettingsFileCheck::attribute (std::string_view name)
{
    const auto before = rest.size();
    skipSpace();
    if (rest.size() == before || ! take (name) || ! take ("=\""))
        return false;

    while (! rest.empty())
    {
        if (take ("\""))
            return true;
        if (rest.front() == '<')
            return false;
        if (rest.front() != '&')
            rest.remove_prefix (1);
        else if (! reference())
            return false;
    }
    return false;
}

bool SettingsFileCheck::reference()
{
    for (const std::string_view name : { "&amp;", "&lt;", "&gt;", "&quot;", "&apos;" })
        if (take (name))
            return true;

    if (! take ("&#"))
        return false;
    unsigned codePoint = 0;
    const auto [end, error] = std::from_chars (rest.data(), rest.data() + rest.size(), codePoint);
    if (error != std::errc() || codePoint == 0 || codePoint > highestCodePoint
        || (codePoint >= 0xd800 && codePoint <= 0xdfff))
        return false;
    rest.remove_prefix (static_cast<std::size_t> (end - rest.data()));
    return take (";");
}

bool SettingsFileCheck::take (std::string_view expected)
{
    if (! rest.starts_with (expected))
        return false;
    rest.remove_prefix (expected.size());
    return true;
}

void SettingsFileCheck::skipSpace()
{
    rest.remove_prefix (std::min (rest.find_first_not_of (space), rest.size()));
}
} // namespace ZEP::Core
