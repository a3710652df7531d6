// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** The boxes for the numbers of a cue's takes. */
struct OVERMARKS_API WordDocumentCueTakes final
{
    /** Keys in the order of the fields. */
    [[nodiscard]] juce::DynamicObject::Ptr toJSONDynamicObject() const;

    int numRecordedTakes;     ///< as the event counts them
    int selectedTake;         ///< as the event counts them; -1: none
    int alternativeTake;      ///< likewise
    int numberTakesToDisplay; ///< boxes, in all rows
    int numberRowsToDisplay;  ///< over which the boxes are spread
};

} // namespace ZEP::Overmarks
