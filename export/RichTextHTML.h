// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/text/RichTextString.h"

#include <string>

namespace ZEP::Overmarks
{

/** A rich text as HTML in UTF-8: a span for each run that differs from plain text, "<br />" for a line feed.

    The rule that is easily missed: nothing else is changed, so that the marks of HTML in a cue's text reach the page. Whoever
    shows the page must not trust it. */
[[nodiscard]] OVERMARKS_API std::string htmlOfRichText (const ZEP::Core::RichTextString& text);

} // namespace ZEP::Overmarks
