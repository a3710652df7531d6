// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** What stands at the foot of each page of a Word document. */
struct OVERMARKS_API WordDocumentFooter final
{
    /** Keys in the order of the fields. */
    [[nodiscard]] juce::DynamicObject::Ptr toJSONDynamicObject() const;

    int fontSize;                 ///< points
    juce::String appIconFilePath; ///< full path of a PNG file
    juce::String currentDate;     ///< as it is printed
    juce::String appVersion;      ///< as it is printed
    juce::String wordLayout;      ///< as it is printed
};

} // namespace ZEP::Overmarks
