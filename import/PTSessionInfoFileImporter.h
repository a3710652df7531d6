// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/PTSessionInfoTrack.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

class PTSessionInfoLineReader;

/** The tracks and clips of a Pro Tools session, ".txt", as its Export Session Info dialog writes them: a row for each clip of the
    chosen tracks, in the order of time.

        column  0         1       2           3     4          5            6      7      8
        title   Start TC  End TC  Cue Number  Text  Character  Char Prefix  Actor  Notes  Reason

    Which tracks is asked while the file is being read, in a window unless chooseTracks says otherwise. So the constructor
    belongs on the message thread, and the application's other work goes on while it waits.

    The rules that are easily missed: a window that is closed without Continue is no failure, it gives no rows and no message;
    and reading again in an encoding that the user has named asks nothing, but decodes the tracks chosen before. Tracks' names
    are read as UTF-8, whatever the encoding. */
class OVERMARKS_API PTSessionInfoFileImporter final : public EventFileImporter
{
public:
    using Tracks = std::vector<std::shared_ptr<PTSessionInfoTrack>>; ///< none of them null

    /** Gives back the tracks to import, of those that the file has, in the order of their list; nothing where nobody can be
        asked, which is a failure. The tracks come with their `selected` set for the cue tracks. */
    using TrackChoice = std::function<std::optional<Tracks> (const Tracks& tracks)>;

    /** Reads the file, with the encoding detected.
        @param reasonNames  names of the user's reasons; the first is UR1 */
    PTSessionInfoFileImporter (const juce::String& path, juce::String& errorMessage,
                               std::vector<juce::String> reasonNames);
    ~PTSessionInfoFileImporter() override;

    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;

    /** The name of a reason by its code, "Clarity (AR4)" for "AR4"; a user reason by the name given to the constructor. Any
        other text, also that of a user reason which has no name there, comes back as it is. */
    [[nodiscard]] juce::String mapDublaneReason (const juce::String& code) const;

    /** Tracks of the file that were left out, since no two empty lines close them. */
    [[nodiscard]] std::size_t numberOfLostTracks() const noexcept { return lostTracks; }

    /** What chooseTracks is to begin with: the window with the list of tracks. Nothing comes back where no window can be opened:
        without a display, without a message loop, and on any other thread than the message thread. */
    static std::optional<Tracks> askWithDialog (const Tracks& tracks);

    /** Asked by every importer of the process; an empty function means askWithDialog. To be set before importers are made. */
    static TrackChoice chooseTracks;

    Tracks selectedTracks;                   ///< the user's choice, kept for reading in another encoding
    std::vector<juce::String> customReasons; ///< names of the user's reasons; the first is UR1

private:
    [[nodiscard]] std::optional<Tracks> readTracks (std::string_view text, bool tellsOfLostTracks,
                                                    juce::String& errorMessage);
    void tellOfLostTracks (const PTSessionInfoLineReader& reader, bool hasWindowsLineEnds) const;
    [[nodiscard]] bool letUserChoose (const Tracks& tracks, juce::String& errorMessage);
    void makeRows();
    [[nodiscard]] juce::String decoded (const std::string& bytes);

    std::size_t lostTracks = 0;
};

} // namespace ZEP::Overmarks
