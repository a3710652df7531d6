// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Law.h"

#include "core/cast/ADRCharacterMap.h"
#include "core/cast/ADRCueReasonsManager.h"
#include "core/text/RichTextString.h"
#include "core/text/TextDecoding.h"
#include "core/timecode/TCToolbox.h"
#include "event/Event.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <Poco/Logger.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

/** An application that has just started, with nothing in its cast and nobody to read its log. */
inline void startApplication()
{
    static const auto registered = []
    {
        ZEP::Overmarks::UserDefaultsRegistrar::registerUserDefaults();
        Poco::Logger::get ("ZEP").setLevel (0);
        return true;
    }();

    law (registered, "preferences are registered");
    ZEP::Overmarks::Event::setADRCharacterMap (std::make_shared<ZEP::Core::ADRCharacterMap>());
    ZEP::Core::ADRCueReasonsManager::sharedManager()->resetCounters();
    ZEP::Core::ADRCueReasonsManager::sharedManager()->setUserReasonNames ({});
}

/** The time reference of a project. @param rate  "25", "29.97df" and the like  @param origin  timecode of the first frame */
inline std::shared_ptr<ZEP::Core::TimeInfo> timeInfoAt (const char* rate, const char* origin)
{
    using ZEP::Core::TCToolbox;
    return std::make_shared<ZEP::Core::TimeInfo> (TCToolbox::tcDefForRateName (rate).value(),
                                                  TCToolbox::tcTimeFromString (origin));
}

inline juce::String pathText (const std::filesystem::path& path)
{
    return juce::String::fromUTF8 (path.c_str());
}

inline bool isUTF8 (std::string_view bytes) { return ZEP::Core::ByteSurvey (bytes).isUTF8; }

/** Nothing that isn't a text may become one: it would corrupt memory somewhere else, and much later. */
inline void checkText (const juce::String& text)
{
    law (isUTF8 ({ text.toRawUTF8(), text.getNumBytesAsUTF8() }), "a text is sound");
}

/** A sound text whose looks lie within it, in order. */
inline void checkText (const ZEP::Core::RichTextString& text)
{
    const auto& characters = text.getText();
    checkText (characters);
    law (text.length() == characters.length(), "the runs of a text cover it");
    int end = 0;

    for (const auto& run : text.formattedRuns())
    {
        law (run.range.getStart() >= end && ! run.range.isEmpty(), "runs don't overlap and aren't empty");
        end = run.range.getEnd();
    }

    law (end <= text.length(), "no run goes beyond its text");
}
