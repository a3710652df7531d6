// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ImportedCue.h"
#include "WordContent.h"

namespace DocxHandler
{

/** A cue that is still being read. Its texts are put together here, since a line that is added to a text must not cost as much as
    the text is long: a cell may be followed by any number of rows that belong to it. */
struct CueDraft
{
    ImportedCue cue; ///< whose texts are empty as yet
    RichTextBuilder text;
    RichTextBuilder notes;
    RichTextBuilder engineeringNotes;

    /** The whole cue; the draft is done with. */
    [[nodiscard]] ImportedCue take();
};

/** The cues of some drafts, which are done with. */
[[nodiscard]] std::vector<ImportedCue> cuesOf (std::vector<CueDraft> drafts);

} // namespace DocxHandler
