// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCToolbox.h"

#include <juce_core/juce_core.h>

#include <optional>

namespace ZEP::Overmarks::TTAL
{

/*  A TTAL file is one JSON object with three members, each of them an object:

        meta        tool          program that wrote the file; not read
                    fps           name of the frame rate, see rateName()
                    lang          language of the text, may be empty
                    timeFormat    always FRAMES
        events      one member an event, under its identifier:
                    start         first frame
                    end           frame behind the last one
                    cue           cue number
                    txt           the line
                    type          fn on a forced narrative, absent on any other event
                    rgn           top, left, right or bottom; goes with type
                    styles        list of {from, to, type}: characters of txt, to exclusive, bold or italic
                    characterId   a member's name in characters, or kNullCharacter
                    dubAnnotations   {types, text}: an empty list, and the notes
        characters  one member a character, under its identifier:
                    name

    Frames are counted from the picture's time origin when a file is read and from the first frame of action when it is
    written. Members may stand in any order; unknown ones are passed over. */

inline constexpr const char* kMeta = "meta";
inline constexpr const char* kEvents = "events";
inline constexpr const char* kCharacters = "characters";

inline constexpr const char* kTool = "tool";
inline constexpr const char* kFps = "fps";
inline constexpr const char* kLang = "lang";
inline constexpr const char* kTimeFormat = "timeFormat";
inline constexpr const char* kFrames = "FRAMES";

inline constexpr const char* kStart = "start";
inline constexpr const char* kEnd = "end";
inline constexpr const char* kCue = "cue";
inline constexpr const char* kTxt = "txt";
inline constexpr const char* kType = "type";
inline constexpr const char* kForcedNarrative = "fn";
inline constexpr const char* kRgn = "rgn";
inline constexpr const char* kTop = "top";
inline constexpr const char* kLeft = "left";
inline constexpr const char* kRight = "right";
inline constexpr const char* kBottom = "bottom";
inline constexpr const char* kStyles = "styles";
inline constexpr const char* kCharacterId = "characterId";
inline constexpr const char* kDubAnnotations = "dubAnnotations";

inline constexpr const char* kFrom = "from";
inline constexpr const char* kTo = "to";
inline constexpr const char* kBold = "bold";
inline constexpr const char* kItalic = "italic";

inline constexpr const char* kTypes = "types";
inline constexpr const char* kText = "text";

inline constexpr const char* kName = "name";

/** The identifier of nobody. */
inline constexpr const char* kNullCharacter = "00000000-0000-0000-0000-000000000000";

/** The name under which a frame rate is written; "unsupported" for a rate that the format doesn't have. Drop-frame isn't
    told apart. */
[[nodiscard]] juce::String rateName (Core::FrameRateCode code);

/** The rate of a name. At 29.97 and 59.94 it is the drop-frame one. */
[[nodiscard]] std::optional<Core::FrameRateCode> rateNamed (const juce::String& name);

} // namespace ZEP::Overmarks::TTAL
