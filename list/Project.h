// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/cast/ADRCharacterMap.h"
#include "core/timecode/TimeInfo.h"
#include "list/DocumentSettings.h"
#include "list/EventArray.h"

#include <juce_core/juce_core.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** A cue list with all that its events refer to: the time reference, the cast and the names of the user's reasons.

    Characters and reasons are process-wide while one project is open; makeCurrent() puts this project's in place, and every
    operation that needs a character or a reason of an event expects that it has been called. Copies share everything.
    One thread at a time. */
struct OVERMARKS_API Project
{
    juce::String name;                                      ///< for a person; not the file's
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo;          ///< shared with all events; not null
    std::shared_ptr<ZEP::Core::ADRCharacterMap> characters; ///< the cast; not null
    std::vector<juce::String> userReasons;                  ///< up to eight names, UR1 first
    DocumentSettings documents;                             ///< for exports
    std::shared_ptr<EventArray> list;                       ///< not null

    /** What a newer version has stored in the project file and this one doesn't know, to be stored again. The list and its
        events keep theirs themselves. */
    struct NewerFields
    {
        std::string project;                            ///< the project's record
        std::string timeInfo;                           ///< that of the time reference
        std::string timeOrigin;                         ///< that of its origin
        std::string firstFrameOfAction;                 ///< that of its first frame of action
        std::string documents;                          ///< that of the documents
        std::map<juce::String, std::string> characters; ///< under their identifiers
    };

    NewerFields newerFields; ///< empty for a project of this version

    /** A project with nothing but its two fades, which have no times yet. */
    static Project createEmpty (std::shared_ptr<ZEP::Core::TimeInfo> timeInfo);

    /** Makes this project's characters and reasons the process's own. */
    void makeCurrent() const;

    /** A fade of this project that has no time yet. @param type  EventTypeFadeIn or EventTypeFadeOut */
    std::shared_ptr<Event> createFade (EventType type) const;
};

} // namespace ZEP::Overmarks
