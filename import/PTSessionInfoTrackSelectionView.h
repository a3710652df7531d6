// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/PTSessionInfoTrack.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** The list of a session's tracks in which the user ticks those to import: the content of a dialog, 480 by 450 pixels.

        20,20  +----------------------------------------+
               | [x] ANNA [A] {B. Miller}               |   rows of 27 pixels
               | [ ] Music                              |
               +----------------------------------------+
         42,365  (cue tracks)   (all)   (none)              125 by 20 each
        ----------------- 140,410 (Continue) -------------  200 by 25, on a strip from y 397

    A tick changes the track's `selected` at once, in the objects that the caller shares. What the user wants is in
    `selectedTracks`, and only when Continue has ended the dialog; closed in any other way, the ticks mean nothing.

    Everything happens on the message thread. Whoever shows the view owns it. */
class OVERMARKS_API PTSessionInfoTrackSelectionView final : public juce::Component,
                                                            public juce::ListBoxModel,
                                                            public juce::Button::Listener
{
public:
    using Tracks = std::vector<std::shared_ptr<PTSessionInfoTrack>>; ///< none of them null

    static constexpr int kWidth = 480;  ///< pixels
    static constexpr int kHeight = 450; ///< pixels

    explicit PTSessionInfoTrackSelectionView (const Tracks& tracksToShow); ///< Shared with the caller.
    ~PTSessionInfoTrackSelectionView() override;

    void paint (juce::Graphics& g) override; ///< The background and the strip behind Continue.
    void resized() override;                 ///< The buttons stay in the middle.

    int getNumRows() override; ///< One for each track.

    /** Draws nothing: the rows are components. */
    void paintListBoxItem (int row, juce::Graphics& g, int width, int height, bool rowIsSelected) override;

    /** Uses an existing row again. */
    juce::Component* refreshComponentForRow (int row, bool rowIsSelected,
                                             juce::Component* existingComponent) override;

    void buttonClicked (juce::Button* button) override; ///< Calls the operation below that belongs to it.

    /** Ticks the tracks that have an actor, and no others. */
    void onSelectAllCueTracksBtnClicked();
    void onSelectAllTracksBtnClicked(); ///< Ticks every track.
    void onDeselectAllBtnClicked();     ///< Takes all ticks away.

    /** Keeps the ticked tracks in `selectedTracks` and ends the dialog around this view, if there is one. */
    void onContinueButtonClicked();

    juce::ListBox listBox;                                                 ///< the tracks
    juce::TextButton selectAllCueTracksButton { "Select All Cue Tracks" }; ///< those with an actor
    juce::TextButton selectAllTracksButton { "Select All Tracks" };        ///< music and effects too
    juce::TextButton deselectAllTracksButton { "Deselect All Tracks" };    ///< none of them
    juce::TextButton continueButton { "Continue" };                        ///< the only way to a result
    Tracks tracks;                                                         ///< all of them
    Tracks selectedTracks; ///< the result, in the order of the list; empty until Continue

private:
    template <typename IsTicked>
    void tick (IsTicked isTicked);
};

} // namespace ZEP::Overmarks
