// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"
#include "XMLText.h"

namespace DocxHandler
{

/** The text's characters as runs of a paragraph: line breaks and tabs as elements of their own, a run for each look. A text of
    the usual height has the field's size, other heights are larger or smaller in proportion.
    @param styleSize  what the paragraph's style gives, in half points; only what differs is written */
void writeRuns (XMLText& xml, const SizedRichText& text, int styleSize);

void writeRuns (XMLText& xml, const SizedText& text, int styleSize);

/** One run of a text that is ours: a label, a number. */
void writeWords (XMLText& xml, std::string_view words);

} // namespace DocxHandler
