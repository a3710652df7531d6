// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/WordDocumentFooter.h"

namespace ZEP::Overmarks
{

juce::DynamicObject::Ptr WordDocumentFooter::toJSONDynamicObject() const
{
    juce::DynamicObject::Ptr object = new juce::DynamicObject();
    object->setProperty ("fontSize", fontSize);
    object->setProperty ("appIconFilePath", appIconFilePath);
    object->setProperty ("currentDate", currentDate);
    object->setProperty ("appVersion", appVersion);
    object->setProperty ("wordLayout", wordLayout);
    return object;
}

} // namespace ZEP::Overmarks
