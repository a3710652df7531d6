// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/word/WordDocumentCueContent.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** The cues of one character in a document of several: they begin on a page of their own. */
struct OVERMARKS_API ContinuousPagesBlock final
{
    using CueContents = std::vector<std::shared_ptr<WordDocumentCueContent>>; ///< none of them null

    explicit ContinuousPagesBlock (CueContents cueContents); ///< May be given no cues.

    /** An object with the list of the cues, without any key if there are none. */
    [[nodiscard]] juce::DynamicObject::Ptr toJSONDynamicObject() const;

    CueContents cueContentList; ///< in the order of the document
};

} // namespace ZEP::Overmarks
