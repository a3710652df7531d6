// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string_view>

namespace ZEP::Core
{
/** Whether bytes have exactly the shape in which SettingsFile writes, so that a torn or hand-damaged file
    never reaches the XML reader, which trusts what it is given.

        file     [declaration] "<PROPERTIES>" {value} "</PROPERTIES>" | [declaration] "<PROPERTIES/>"
        value    "<VALUE" attribute attribute "/>"        the two are name and val, in this order
        text     UTF-8 without "<" and quotes; "&" only in front of a complete reference
*/
class SettingsFileCheck final
{
public:
    [[nodiscard]] static bool isSound (std::string_view bytes);

private:
    explicit SettingsFileCheck (std::string_view bytes) : rest (bytes) {}

    bool file();
    bool declaration();
    bool value();
    bool attribute (std::string_view name);
    bool reference();
    bool take (std::string_view expected);
    void skipSpace();

    std::string_view rest;
};
} // namespace ZEP::Core
