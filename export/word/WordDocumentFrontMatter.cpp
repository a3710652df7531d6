// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/WordDocumentFrontMatter.h"

namespace ZEP::Overmarks
{

juce::DynamicObject::Ptr WordDocumentFrontMatter::toJSONDynamicObject() const
{
    juce::DynamicObject::Ptr object = new juce::DynamicObject();
    object->setProperty ("fontSize", fontSize);
    object->setProperty ("projectName", projectSettings.projectName);
    object->setProperty ("projectFilePath", projectSettings.projectFilePath);
    object->setProperty ("soundSupervisor", projectSettings.soundSupervisor);
    object->setProperty ("productionCompany", projectSettings.productionCompany);
    object->setProperty ("studioName", projectSettings.studioName);
    object->setProperty ("timelineName", timelineSettings.timelineName);
    object->setProperty ("episodeReel", timelineSettings.episodeReel);
    object->setProperty ("pictureVersion", timelineSettings.pictureVersion);
    object->setProperty ("charAndActor", charAndActor);
    return object;
}

} // namespace ZEP::Overmarks
