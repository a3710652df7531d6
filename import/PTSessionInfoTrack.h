// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

/** A clip on a track of a Pro Tools session: one cue, whose name carries the line, a note and a reason code.

        Who says so? {whisper} [AR4]
        text          notes     reason

    Notes and reason may stand in either order, and each may be missing. All fields hold the bytes of the file in the file's own
    encoding, so that they can be decoded anew when the user names another one. */
class OVERMARKS_API PTSessionInfoRegion final
{
public:
    /** Takes a clip's name apart.

        reason  between the first "[" and the first "]"; none where either is missing or the "]" stands first
        notes   between the first "{" and the last "}", likewise
        text    what stands before these, without the blanks at its end. A text of blanks alone stays as it is */
    void setRegionName (const std::string& name);

    /** Each cuts the blanks off the beginning of the time and keeps it; those at its end stay, and so does a time of blanks
        alone. */
    void setStartTC (std::string& time);
    void setEndTC (std::string& time); ///< As setStartTC(), for the end.

    std::string regionName; ///< as it stands in the file
    std::string startTC;    ///< as in the file, not checked
    std::string endTC;      ///< likewise
    std::string text;       ///< the line; empty for none
    std::string notes;      ///< without its braces
    std::string reason;     ///< code without its brackets: "AR4"
};

/** A track of a Pro Tools session: a character with its lines, as the track's name tells.

        ANNA           [A]         {B. Miller}  (close mic)
        characterName  charPrefix  actorName    dropped

    The three parts in brackets may stand in any order, and each may be missing. A track with an actor is a cue track. Tracks
    are shared between the importer and the window that lets the user choose. */
class OVERMARKS_API PTSessionInfoTrack final
{
public:
    /** Takes a track's name apart. Each part reaches from the first of its opening brackets to the last of its closing ones,
        and doesn't exist where either is missing or the closing one stands first. */
    explicit PTSessionInfoTrack (std::string fullName);

    std::string name;          ///< the whole name, as the user knows the track
    std::string characterName; ///< without blanks at its end
    std::string charPrefix;    ///< without brackets; empty for none
    std::string actorName;     ///< without braces; empty for no cue track
    std::vector<std::shared_ptr<PTSessionInfoRegion>> regions; ///< the clips in the order of the file
    bool selected; ///< whether the track is to be imported; a cue track is, to begin with
};

/** The text of a time cell: each byte is a character. */
[[nodiscard]] juce::String textOfSessionTime (std::string_view bytes);

} // namespace ZEP::Overmarks
