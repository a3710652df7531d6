// SPDX-License-Identifier: GPL-3.0-only
// The window in which the tracks of a session are chosen, on a display of its own.
#include "import/ImportSupport.h"
#include "import/PTSessionInfoFileImporter.h"
#include "import/PTSessionInfoTrackSelectionView.h"
#include "import/protools/SessionSupport.h"
#include "import/protools/WindowUser.h"
#include "support/Environment.h"
#include "support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <thread>

using namespace ZEP::Overmarks;
using namespace SessionSupport;
using Names = std::vector<std::string>;

namespace
{

constexpr auto nobodyToAsk =
    "The tracks to import can't be chosen, since no window can be opened to ask for them";

/** The dialog that is open now, and what someone does to it. */
class OpenDialog final
{
public:
    OpenDialog (juce::DialogWindow& windowThatIsOpen, const WindowUser& userOfWindow)
        : window (windowThatIsOpen),
          view (dynamic_cast<PTSessionInfoTrackSelectionView&> (*window.getContentComponent())),
          user (userOfWindow)
    {
    }

    void click (juce::Component& component) const
    {
        const auto centre = window.getLocalPoint (&component, component.getLocalBounds().getCentre());
        user.click (native(), centre.x, centre.y);
    }

    void clickBox (int row) const
    {
        click (*view.listBox.getComponentForRowNumber (row)->getChildComponent (0));
    }

    bool hasTick (int row) const { return view.tracks.at (static_cast<std::size_t> (row))->selected; }

    void pressEscape() const { user.pressEscape (native()); }
    void close() const { user.close (native()); }
    std::string title() const { return user.titleOf (native()); }

    juce::DialogWindow& window;
    PTSessionInfoTrackSelectionView& view;

private:
    void* native() const { return window.getWindowHandle(); }

    const WindowUser& user;
};

/** Something that is done, and how to know that the program has followed. */
struct Step
{
    std::function<void (OpenDialog&)> does;
    std::function<bool (OpenDialog&)> isDone; ///< empty for the step that ends the dialog
};

/** Takes the steps while the dialog keeps its caller waiting. */
class Visit final : private juce::Timer
{
public:
    Visit (const WindowUser& userOfWindow, std::vector<Step> stepsToTake)
        : user (userOfWindow),
          steps (std::move (stepsToTake))
    {
        startTimer (10);
    }

    ~Visit() override { EXPECT_EQ (taken, steps.size()) << "steps that were taken"; }

private:
    void timerCallback() override
    {
        auto* const window =
            dynamic_cast<juce::DialogWindow*> (juce::Component::getCurrentlyModalComponent());

        if (window == nullptr)
            return;

        if (++ticks > mostTicks)
        {
            ADD_FAILURE() << "the dialog is still open after step " << taken;
            window->exitModalState (0);
            stopTimer();
            return;
        }

        if (! window->isShowing() || ! user.sees (window->getWindowHandle()))
            return;

        // What the program asks the server may hide waiting events from its loop until the next one comes.
        user.nudge (window->getWindowHandle());
        OpenDialog dialog (*window, user);

        if (taken > 0 && steps[taken - 1].isDone != nullptr && ! steps[taken - 1].isDone (dialog))
            return;

        if (taken < steps.size())
            steps[taken++].does (dialog);
    }

    static constexpr int mostTicks = 1500;

    const WindowUser& user;
    std::vector<Step> steps;
    std::size_t taken = 0;
    int ticks = 0;
};

/** A program with windows on a display of its own. */
class TrackDialog : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE (display.isUp()) << "these tests need Xvfb"; }

    /** Imports a session and takes the steps while its tracks are asked for. */
    std::unique_ptr<PTSessionInfoFileImporter> import (const std::string& file, std::vector<Step> steps)
    {
        const Visit visit (user, std::move (steps));
        return std::make_unique<PTSessionInfoFileImporter> (ImportSupport::dataFile ("protools/" + file),
                                                            message, std::vector<juce::String>());
    }

    static Step clickBox (int row, bool tickThen)
    {
        return { [row] (OpenDialog& dialog) { dialog.clickBox (row); },
                 [row, tickThen] (OpenDialog& dialog) { return dialog.hasTick (row) == tickThen; } };
    }

    /** Clicks a button and waits for the ticks of harbour.txt. */
    static Step clickButton (juce::TextButton PTSessionInfoTrackSelectionView::*button,
                             const std::vector<bool>& ticksThen)
    {
        return { [button] (OpenDialog& dialog) { dialog.click (dialog.view.*button); },
                 [ticksThen] (OpenDialog& dialog)
                 {
                     std::vector<bool> ticks;
                     for (const auto& track : dialog.view.tracks)
                         ticks.push_back (track->selected);
                     return ticks == ticksThen;
                 } };
    }

    static Step clickContinue()
    {
        return { [] (OpenDialog& dialog) { dialog.click (dialog.view.continueButton); }, {} };
    }

    using View = PTSessionInfoTrackSelectionView;

    const Testing::VirtualDisplay display;
    const Testing::Environment onDisplay { "DISPLAY", display.name().c_str() };
    const Testing::WindowedProgram program;
    const WindowUser user { display.name() }; // there before the program, as a window manager is
    const juce::ScopedJuceInitialiser_GUI messages;
    juce::String message;
};

const std::string anna = "ANNA [A] {B. Miller} (close mic)", captain = "CAPTAIN {C. Berg} [C]",
                  music = "Music (stereo)", spare = "Spare";

} // namespace

TEST_F (TrackDialog, isAWindowOfItsOwnWithTheView)
{
    import ("harbour.txt",
            { { [] (OpenDialog& dialog)
                {
                    EXPECT_EQ (dialog.title(), "Select Tracks to Import");
    EXPECT_EQ (dialog.window.getName(), "Select Tracks to Import");
    EXPECT_TRUE (dialog.window.isUsingNativeTitleBar());
    EXPECT_FALSE (dialog.window.isResizable());
    EXPECT_EQ (dialog.view.getBounds(), juce::Rectangle<int> (0, 0, 480, 450));
    EXPECT_EQ (dialog.window.getLocalBounds(), juce::Rectangle<int> (0, 0, 480, 450));
    EXPECT_EQ (dialog.view.getNumRows(), 4);
    dialog.click (dialog.view.continueButton);
}
, {}
}
});
}

TEST_F (TrackDialog, continueImportsTheCueTracks)
{
    const auto importer = import ("harbour.txt", { clickContinue() });
    EXPECT_EQ (namesOf (importer->selectedTracks), (Names { anna, captain }));
    EXPECT_EQ (importer->rows.size(), 6u);
    EXPECT_EQ (message, "");
    EXPECT_EQ (juce::ModalComponentManager::getInstance()->getNumModalComponents(), 0);
    EXPECT_EQ (juce::Desktop::getInstance().getNumComponents(), 0);
}

TEST_F (TrackDialog, aCueTrackThatLosesItsTickIsLeftOut)
{
    const auto importer = import ("harbour.txt", { clickBox (0, false), clickContinue() });
    EXPECT_EQ (namesOf (importer->selectedTracks), (Names { captain }));
    EXPECT_EQ (importer->rows.size(), 3u);
}

TEST_F (TrackDialog, aClickIntoTheNameTicksNothing)
{
    const auto importer =
        import ("harbour.txt", { { [] (OpenDialog& dialog)
                                   { dialog.click (*dialog.view.listBox.getComponentForRowNumber (0)); },
                                   {} },
                                 clickBox (2, true),
                                 clickContinue() });
    EXPECT_EQ (namesOf (importer->selectedTracks), (Names { anna, captain, music }));
}

TEST_F (TrackDialog, theButtonsTickManyAtOnce)
{
    const auto importer =
        import ("harbour.txt", { clickButton (&View::selectAllTracksButton, { true, true, true, true }),
                                 clickButton (&View::deselectAllTracksButton, { false, false, false, false }),
                                 clickBox (3, true),
                                 clickButton (&View::selectAllCueTracksButton, { true, true, false, false }),
                                 clickButton (&View::selectAllTracksButton, { true, true, true, true }),
                                 clickBox (1, false), clickContinue() });
    EXPECT_EQ (namesOf (importer->selectedTracks), (Names { anna, music, spare }));
    EXPECT_EQ (importer->rows.size(), 4u);
}

TEST_F (TrackDialog, continueWithNothingTickedGivesNoRowsAndNoMessage)
{
    const auto importer =
        import ("harbour.txt", { clickButton (&View::deselectAllTracksButton, { false, false, false, false }),
                                 clickContinue() });
    EXPECT_TRUE (importer->selectedTracks.empty());
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (message, "");
}

TEST_F (TrackDialog, theCloseBoxGivesNoRowsAndNoMessage)
{
    const auto importer =
        import ("harbour.txt", { clickBox (2, true), { [] (OpenDialog& dialog) { dialog.close(); }, {} } });
    EXPECT_TRUE (importer->selectedTracks.empty());
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (message, "");
    EXPECT_EQ (juce::Desktop::getInstance().getNumComponents(), 0);
}

TEST_F (TrackDialog, theEscapeKeyGivesNoRowsAndNoMessage)
{
    const auto importer =
        import ("harbour.txt", { { [] (OpenDialog& dialog) { dialog.pressEscape(); }, {} } });
    EXPECT_TRUE (importer->selectedTracks.empty());
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (message, "");
    EXPECT_EQ (juce::Desktop::getInstance().getNumComponents(), 0);
}

TEST_F (TrackDialog, anEmptyListIsShownToo)
{
    const auto importer = import ("garbage.txt", { { [] (OpenDialog& dialog)
                                                     {
                                                         EXPECT_EQ (dialog.view.getNumRows(), 0);
                                                         dialog.click (dialog.view.continueButton);
                                                     },
                                                     {} } });
    EXPECT_TRUE (importer->selectedTracks.empty());
    EXPECT_EQ (message, "");
}

TEST_F (TrackDialog, readingAgainInAnotherEncodingOpensNoWindow)
{
    const auto importer = import ("wrong_encoding.txt", { clickContinue() });
    importer->parse (message, ZEP::Core::TextEncodingWindows1252);
    EXPECT_EQ (importer->rows.size(), 2u);
    EXPECT_EQ (importer->rows[0][7].getText(), juce::CharPointer_UTF8 ("m\xc3\xbc"
                                                                       "de"));
}

TEST_F (TrackDialog, aFileThatIsNoSessionOpensNoWindow)
{
    import ("table.txt", {});
    EXPECT_TRUE (message.isNotEmpty());
}

TEST_F (TrackDialog, onAnotherThreadNobodyCanBeAsked)
{
    std::thread (
        [this]
        {
            const PTSessionInfoFileImporter importer (ImportSupport::dataFile ("protools/harbour.txt"),
                                                      message, {});
            EXPECT_TRUE (importer.rows.empty());
        })
        .join();
    EXPECT_EQ (message, nobodyToAsk);
}

TEST_F (TrackDialog, anApplicationThatQuitsMeanwhileIsNotKeptWaiting)
{
    const auto importer =
        import ("harbour.txt",
                { { [] (OpenDialog&) { juce::MessageManager::getInstance()->stopDispatchLoop(); }, {} } });
    EXPECT_TRUE (importer->selectedTracks.empty());
    EXPECT_EQ (juce::Desktop::getInstance().getNumComponents(), 0);
}

TEST (TrackDialogWithoutADisplay, saysThatNobodyCanBeAsked)
{
    const Testing::Environment noDisplay ("DISPLAY", ":4000");
    const juce::ScopedJuceInitialiser_GUI messages;
    juce::String message;
    const PTSessionInfoFileImporter importer (ImportSupport::dataFile ("protools/harbour.txt"), message, {});
    EXPECT_EQ (message, nobodyToAsk);
    EXPECT_TRUE (importer.rows.empty());
}
