// SPDX-License-Identifier: GPL-3.0-only
#include "list/Project.h"

#include "core/cast/ADRCueReasonsManager.h"

#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::ADRCharacterMap;
using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::TimeInfo;

Project Project::createEmpty (std::shared_ptr<TimeInfo> timeInfo)
{
    Project project;
    project.timeInfo = std::move (timeInfo);
    project.characters = std::make_shared<ADRCharacterMap>();
    project.list = std::make_shared<EventArray> (project.createFade (EventTypeFadeIn),
                                                 project.createFade (EventTypeFadeOut));
    return project;
}

void Project::makeCurrent() const
{
    Event::setADRCharacterMap (characters);
    ADRCueReasonsManager::sharedManager()->setUserReasonNames (userReasons);
}

std::shared_ptr<Event> Project::createFade (EventType type) const
{
    return Event::create (type, timeInfo, -1, -1, -1.0f, -1);
}

} // namespace ZEP::Overmarks
