// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <nlohmann/json.hpp>

namespace ZEP::Overmarks
{

/** Rich text in the JSON form of a project: the characters, and the runs that don't look like plain text.

    A run tells what the trade uses: bold, italic, underlined, struck through, height in points, colour. A face that these
    can't tell adds "typeface", "style", "horizontalScale" and "extraKerning". */
class RichTextJSON final
{
public:
    RichTextJSON() = delete;

    static nlohmann::ordered_json write (const ZEP::Core::RichTextString& text);

    /** @param value  an object as write() makes it, or a plain string
        @param place  where the value stands, for the messages
        @throws std::invalid_argument with a message for people */
    static ZEP::Core::RichTextString read (const nlohmann::ordered_json& value, const std::string& place);
};

} // namespace ZEP::Overmarks
