// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/WordDocumentCueTakes.h"

namespace ZEP::Overmarks
{

juce::DynamicObject::Ptr WordDocumentCueTakes::toJSONDynamicObject() const
{
    juce::DynamicObject::Ptr object = new juce::DynamicObject();
    object->setProperty ("numRecordedTakes", numRecordedTakes);
    object->setProperty ("selectedTake", selectedTake);
    object->setProperty ("alternativeTake", alternativeTake);
    object->setProperty ("numberTakesToDisplay", numberTakesToDisplay);
    object->setProperty ("numberRowsToDisplay", numberRowsToDisplay);
    return object;
}

} // namespace ZEP::Overmarks
