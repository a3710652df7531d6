// SPDX-License-Identifier: GPL-3.0-only
#include "CueDraft.h"

#include <utility>

namespace DocxHandler
{

ImportedCue CueDraft::take()
{
    cue.text = text.take();
    cue.notes = notes.take();
    cue.engineeringNotes = engineeringNotes.take();
    return std::move (cue);
}

std::vector<ImportedCue> cuesOf (std::vector<CueDraft> drafts)
{
    std::vector<ImportedCue> cues;
    cues.reserve (drafts.size());

    for (auto& draft : drafts)
        cues.push_back (draft.take());

    return cues;
}

} // namespace DocxHandler
