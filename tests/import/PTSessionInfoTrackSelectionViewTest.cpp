// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoTrackSelectionView.h"

#include "core/system/SystemUtility.h"
#include "support/Environment.h"
#include "support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace ZEP::Overmarks;
using ZEP::Core::SystemUtility;

namespace juce
{

// Only a print that stands in the namespace of its type is found by the test framework.
void PrintTo (const Rectangle<int>& r, std::ostream* out) { *out << r.toString(); }
void PrintTo (const Colour& colour, std::ostream* out) { *out << colour.toDisplayString (true); }

} // namespace juce

namespace
{

using Tracks = PTSessionInfoTrackSelectionView::Tracks;
using Rectangle = juce::Rectangle<int>;

const juce::Colour background (46, 46, 51), strip (83, 83, 92), rowLine (128, 128, 128),
    white (255, 255, 255);

std::shared_ptr<PTSessionInfoTrack> track (const std::string& name)
{
    return std::make_shared<PTSessionInfoTrack> (name);
}

/** Two cue tracks and two others. */
Tracks fourTracks() { return { track ("ANNA {B}"), track ("Music"), track ("TOM {C}"), track ("Foley") }; }

/** The view without a window and without a display. */
class TrackSelectionView : public testing::Test
{
protected:
    ~TrackSelectionView() override { SystemUtility::configure ({}); }

    static std::vector<bool> ticksOf (const Tracks& tracks)
    {
        std::vector<bool> ticks;
        for (const auto& shown : tracks)
            ticks.push_back (shown->selected);
        return ticks;
    }

    /** The component in a row of the list; null where none is shown. */
    static juce::Component* cellOf (PTSessionInfoTrackSelectionView& view, int row)
    {
        return view.listBox.getComponentForRowNumber (row);
    }

    static juce::ToggleButton& toggleOf (PTSessionInfoTrackSelectionView& view, int row)
    {
        return dynamic_cast<juce::ToggleButton&> (*cellOf (view, row)->getChildComponent (0));
    }

    /** What the boxes of the first rows show. */
    static std::vector<bool> boxesOf (PTSessionInfoTrackSelectionView& view)
    {
        std::vector<bool> boxes;
        for (int row = 0; row < view.getNumRows(); ++row)
            boxes.push_back (toggleOf (view, row).getToggleState());
        return boxes;
    }

    static juce::Image pictureOf (juce::Component& component)
    {
        return component.createComponentSnapshot (component.getLocalBounds(), true, 1.0f);
    }

    const Testing::Environment noDisplay { "DISPLAY", ":4000" };
    const juce::ScopedJuceInitialiser_GUI messages;
};

using Ticks = std::vector<bool>;

} // namespace

TEST_F (TrackSelectionView, elementsStandAtTheirPlaces)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    EXPECT_EQ (view.getBounds(), Rectangle (0, 0, 480, 450));
    EXPECT_EQ (view.listBox.getBounds(), Rectangle (20, 20, 440, 330));
    EXPECT_EQ (view.listBox.getRowHeight(), 27);
    EXPECT_EQ (view.selectAllCueTracksButton.getBounds(), Rectangle (42, 365, 125, 20));
    EXPECT_EQ (view.selectAllTracksButton.getBounds(), Rectangle (177, 365, 125, 20));
    EXPECT_EQ (view.deselectAllTracksButton.getBounds(), Rectangle (312, 365, 125, 20));
    EXPECT_EQ (view.continueButton.getBounds(), Rectangle (140, 410, 200, 25));
}

TEST_F (TrackSelectionView, elementsFollowAnotherSize)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    view.setSize (600, 500);
    EXPECT_EQ (view.listBox.getBounds(), Rectangle (20, 20, 560, 380));
    EXPECT_EQ (view.selectAllCueTracksButton.getBounds(), Rectangle (102, 415, 125, 20));
    EXPECT_EQ (view.continueButton.getBounds(), Rectangle (200, 460, 200, 25));
}

TEST_F (TrackSelectionView, elementsHaveTheirNames)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    EXPECT_EQ (view.selectAllCueTracksButton.getButtonText(), "Select All Cue Tracks");
    EXPECT_EQ (view.selectAllTracksButton.getButtonText(), "Select All Tracks");
    EXPECT_EQ (view.deselectAllTracksButton.getButtonText(), "Deselect All Tracks");
    EXPECT_EQ (view.continueButton.getButtonText(), "Continue");
    EXPECT_EQ (view.continueButton.getComponentID(), "AlertBoxBtnBlue");
    EXPECT_EQ (view.listBox.getName(), "");
    EXPECT_EQ (view.listBox.getModel(), &view);
    EXPECT_EQ (toggleOf (view, 0).getButtonText(), "");
}

TEST_F (TrackSelectionView, aRowHasItsBoxAtTheLeft)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    for (int row = 0; row < 4; ++row)
    {
        EXPECT_EQ (toggleOf (view, row).getBounds(), Rectangle (4, 5, 18, 18));
        EXPECT_EQ (view.getLocalArea (cellOf (view, row), cellOf (view, row)->getLocalBounds()),
                   Rectangle (20, 20 + 27 * row, 440, 27));
    }
}

//==============================================================================
TEST_F (TrackSelectionView, groundStripAndListHaveTheirColours)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    const auto picture = pictureOf (view);
    ASSERT_EQ (picture.getBounds(), Rectangle (0, 0, 480, 450));

    struct Point
    {
        int x, y;
        juce::Colour colour;
    };

    for (const auto& [x, y, colour] : std::initializer_list<Point> { { 0, 0, background },
                                                                     { 479, 0, background },
                                                                     { 0, 396, background },
                                                                     { 479, 396, background },
                                                                     { 0, 397, strip },
                                                                     { 479, 397, strip },
                                                                     { 0, 449, strip },
                                                                     { 479, 449, strip },
                                                                     { 19, 20, background },
                                                                     { 20, 19, background },
                                                                     { 460, 349, background },
                                                                     { 459, 350, background },
                                                                     { 20, 349, white },
                                                                     { 459, 349, white },
                                                                     { 20, 20, white },
                                                                     { 459, 20, white } })
        EXPECT_EQ (picture.getPixelAt (x, y), colour) << x << ", " << y;
}

TEST_F (TrackSelectionView, aLineClosesEachRow)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    const auto picture = pictureOf (view);
    for (int row = 0; row < 4; ++row)
        for (const int x : { 20, 23, 240, 459 })
        {
            const int bottom = 20 + 27 * row + 26;
            EXPECT_EQ (picture.getPixelAt (x, bottom), rowLine) << row;
            EXPECT_EQ (picture.getPixelAt (x, bottom + 1), white) << row;
            EXPECT_EQ (picture.getPixelAt (x, bottom - 1), white) << row;
        }
    EXPECT_EQ (picture.getPixelAt (240, 20 + 27 * 5 - 1), white); // no fifth row
}

TEST_F (TrackSelectionView, namesAreWrittenInTheColourOfTheApplication)
{
    struct Application
    {
        int type;
        juce::Colour colour;
    };

    for (const auto& [type, colour] :
         { Application { 1, { 30, 30, 30 } }, Application { 0, { 180, 180, 180 } },
           Application { 7, { 30, 30, 30 } } })
        for (const auto& name : { std::string ("ANNA [A] {B. Müller} (close)"), std::string (300, 'W') })
        {
            SystemUtility::configure ({ type, {}, {}, {} });
            PTSessionInfoTrackSelectionView view ({ track (name) });
            const auto cell = pictureOf (*cellOf (view, 0));

            juce::Image expected (juce::Image::ARGB, 440, 27, true, juce::SoftwareImageType());
            juce::Graphics g (expected);
            g.setColour (colour);
            g.setFont (juce::Font ("Arial Unicode MS", 15.0f, juce::Font::plain));
            g.drawText (juce::String (juce::CharPointer_UTF8 (name.c_str())), 27, 0, 413, 27,
                        juce::Justification::centredLeft, true);

            int inked = 0;
            for (int y = 0; y < 26; ++y)
                for (int x = 22; x < 440; ++x)
                {
                    ASSERT_EQ (cell.getPixelAt (x, y), expected.getPixelAt (x, y)) << x << ", " << y;
                    inked += cell.getPixelAt (x, y).getAlpha() > 0 ? 1 : 0;
                }
            EXPECT_GT (inked, 100);
        }
}

TEST_F (TrackSelectionView, aNameThatDoesNotFitStopsBeforeTheEdge)
{
    PTSessionInfoTrackSelectionView view ({ track (std::string (300, 'W')) });
    const auto cell = pictureOf (*cellOf (view, 0));
    const auto isInked = [&cell] (int fromX, int toX)
    {
        for (int x = fromX; x < toX; ++x)
            for (int y = 0; y < 26; ++y)
                if (cell.getPixelAt (x, y).getAlpha() > 0)
                    return true;
        return false;
    };
    EXPECT_TRUE (isInked (410, 440)); // the ellipsis
    EXPECT_FALSE (isInked (22, 27));  // between box and name
}

TEST_F (TrackSelectionView, aNameOfMegabytesIsDrawnAtOnce)
{
    PTSessionInfoTrackSelectionView view (
        { track (std::string (std::size_t { 8 } << 20, 'W')), track ("A\xc0\x80\xff") });
    EXPECT_TRUE (pictureOf (view).isValid());
}

TEST_F (TrackSelectionView, boxesAndTicksCanBeSeenOnTheWhiteList)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    const auto picture = pictureOf (view);
    const auto darkestOf = [&picture] (int row)
    {
        int darkest = 255;
        for (int y = 0; y < 18; ++y)
            for (int x = 0; x < 18; ++x)
                darkest =
                    std::min<int> (darkest, picture.getPixelAt (20 + 4 + x, 20 + 27 * row + 5 + y).getRed());
        return darkest;
    };
    EXPECT_LT (darkestOf (0), 60);  // a tick
    EXPECT_LT (darkestOf (1), 180); // an empty box
    EXPECT_GT (darkestOf (1), 100);
}

//==============================================================================
TEST_F (TrackSelectionView, boxesShowTheTracksTicks)
{
    auto tracks = fourTracks();
    tracks[1]->selected = true;
    tracks[2]->selected = false;
    PTSessionInfoTrackSelectionView view (tracks);
    EXPECT_EQ (boxesOf (view), (Ticks { true, true, false, false }));
    EXPECT_EQ (view.tracks, tracks);
    EXPECT_TRUE (view.selectedTracks.empty());
}

TEST_F (TrackSelectionView, aTickChangesTheTrackAtOnce)
{
    const auto tracks = fourTracks();
    PTSessionInfoTrackSelectionView view (tracks);
    toggleOf (view, 0).setToggleState (false, juce::sendNotificationSync);
    toggleOf (view, 3).setToggleState (true, juce::sendNotificationSync);
    EXPECT_EQ (ticksOf (tracks), (Ticks { false, false, true, true }));
    EXPECT_TRUE (view.selectedTracks.empty());
}

TEST_F (TrackSelectionView, allCueTracksReplacesTheTicks)
{
    const auto tracks = fourTracks();
    tracks[0]->selected = false;
    tracks[1]->selected = true;
    PTSessionInfoTrackSelectionView view (tracks);
    view.buttonClicked (&view.selectAllCueTracksButton);
    EXPECT_EQ (ticksOf (tracks), (Ticks { true, false, true, false }));
    EXPECT_EQ (boxesOf (view), (Ticks { true, false, true, false }));
}

TEST_F (TrackSelectionView, allCueTracksClearsAListWithoutAny)
{
    const Tracks tracks { track ("Music"), track ("Foley {}") };
    tracks[0]->selected = tracks[1]->selected = true;
    PTSessionInfoTrackSelectionView view (tracks);
    view.buttonClicked (&view.selectAllCueTracksButton);
    EXPECT_EQ (boxesOf (view), (Ticks { false, false }));
}

TEST_F (TrackSelectionView, allAndNoneTickEveryTrackAndNone)
{
    const auto tracks = fourTracks();
    PTSessionInfoTrackSelectionView view (tracks);
    view.buttonClicked (&view.selectAllTracksButton);
    EXPECT_EQ (ticksOf (tracks), Ticks (4, true));
    EXPECT_EQ (boxesOf (view), Ticks (4, true));
    view.buttonClicked (&view.deselectAllTracksButton);
    EXPECT_EQ (ticksOf (tracks), Ticks (4, false));
    EXPECT_EQ (boxesOf (view), Ticks (4, false));
    EXPECT_TRUE (view.selectedTracks.empty());
}

TEST_F (TrackSelectionView, continueKeepsTheTickedTracksInTheOrderOfTheList)
{
    const auto tracks = fourTracks();
    PTSessionInfoTrackSelectionView view (tracks);
    tracks[3]->selected = true;
    tracks[0]->selected = false;
    view.buttonClicked (&view.continueButton);
    EXPECT_EQ (view.selectedTracks, (Tracks { tracks[2], tracks[3] }));

    tracks[3]->selected = false;
    view.buttonClicked (&view.continueButton);
    EXPECT_EQ (view.selectedTracks, (Tracks { tracks[2] }));
}

TEST_F (TrackSelectionView, otherButtonsMeanNothing)
{
    const auto tracks = fourTracks();
    PTSessionInfoTrackSelectionView view (tracks);
    juce::TextButton other;
    view.buttonClicked (&other);
    view.buttonClicked (nullptr);
    EXPECT_EQ (ticksOf (tracks), (Ticks { true, false, true, false }));
    EXPECT_TRUE (view.selectedTracks.empty());
}

TEST_F (TrackSelectionView, anEmptyListHasNoRowsAndContinuesWithNothing)
{
    PTSessionInfoTrackSelectionView view ({});
    EXPECT_EQ (view.getNumRows(), 0);
    for (auto* button : { &view.selectAllCueTracksButton, &view.selectAllTracksButton,
                          &view.deselectAllTracksButton, &view.continueButton })
        view.buttonClicked (button);
    EXPECT_TRUE (view.selectedTracks.empty());
    EXPECT_EQ (pictureOf (view).getPixelAt (240, 30), white);
}

//==============================================================================
TEST_F (TrackSelectionView, aCellIsReusedAndAnyOtherComponentReplaced)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    std::unique_ptr<juce::Component> cell (view.refreshComponentForRow (0, false, nullptr));
    ASSERT_NE (cell, nullptr);
    auto* const first = cell.get();
    cell.reset (view.refreshComponentForRow (1, true, cell.release()));
    EXPECT_EQ (cell.get(), first);
    EXPECT_FALSE (dynamic_cast<juce::ToggleButton*> (cell->getChildComponent (0))->getToggleState());

    const juce::Component::SafePointer<juce::Component> foreign (new juce::Component());
    cell.reset (view.refreshComponentForRow (0, false, foreign.getComponent()));
    EXPECT_EQ (foreign.getComponent(), nullptr);
    EXPECT_TRUE (dynamic_cast<juce::ToggleButton*> (cell->getChildComponent (0))->getToggleState());
}

TEST_F (TrackSelectionView, rowsBeyondTheListHaveNoComponent)
{
    PTSessionInfoTrackSelectionView view (fourTracks());
    EXPECT_EQ (view.refreshComponentForRow (4, false, nullptr), nullptr);
    EXPECT_EQ (view.refreshComponentForRow (-1, false, nullptr), nullptr);

    const juce::Component::SafePointer<juce::Component> cell (
        view.refreshComponentForRow (0, false, nullptr));
    EXPECT_EQ (view.refreshComponentForRow (4, false, cell.getComponent()), nullptr);
    EXPECT_EQ (cell.getComponent(), nullptr);
}

TEST_F (TrackSelectionView, cellsThatAreReusedWhileScrollingShowTheirOwnTrack)
{
    Tracks tracks;
    for (int i = 0; i < 1000; ++i)
    {
        tracks.push_back (track ("TRACK " + std::to_string (i)));
        tracks.back()->selected = i % 3 == 0;
    }

    PTSessionInfoTrackSelectionView view (tracks);
    for (const int row : { 0, 500, 7, 999, 123, 0 })
    {
        view.listBox.scrollToEnsureRowIsOnscreen (row);
        auto& toggle = toggleOf (view, row);
        EXPECT_EQ (toggle.getToggleState(), row % 3 == 0) << row;

        toggle.setToggleState (! toggle.getToggleState(), juce::sendNotificationSync);
        EXPECT_EQ (tracks[static_cast<std::size_t> (row)]->selected, row % 3 != 0) << row;
        toggle.setToggleState (! toggle.getToggleState(), juce::sendNotificationSync);
    }

    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ (tracks[static_cast<std::size_t> (i)]->selected, i % 3 == 0) << i;
}
