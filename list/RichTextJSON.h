// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"
#include "list/JSONMember.h"

#include <string>

namespace ZEP::Overmarks
{

/** Rich text in the JSON form of a project: the characters, and the runs that don't look like plain text.

    A run tells what the trade uses: bold, italic, underlined, struck through, height in points, colour. A face that these
    can't tell adds "typeface", "style", "horizontalScale" and "extraKerning". */
class RichTextJSON final
{
public:
    RichTextJSON() = delete;

    /** Appends the text as an object to JSON text. */
    static void append (std::string& jsonText, const ZEP::Core::RichTextString& text);

    /** @param value  an object as append() makes it, or a plain string
        @throws std::invalid_argument with a message for people */
    static ZEP::Core::RichTextString read (const JSONMember& value);
};

} // namespace ZEP::Overmarks
