// SPDX-License-Identifier: GPL-3.0-only
// The window in which the user chooses the tracks of a session.
#include "import/PTSessionInfoFileImporter.h"
#include "import/PTSessionInfoTrackSelectionView.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

namespace ZEP::Overmarks
{
namespace
{

/** Whether a window would come up and its buttons would work. */
bool aWindowCanBeOpened()
{
    const auto* const messages = juce::MessageManager::getInstanceWithoutCreating();
    return messages != nullptr && messages->isThisTheMessageThread() && ! messages->hasStopMessageBeenSent()
           && ! juce::Desktop::getInstance().isHeadless();
}

} // namespace

std::optional<PTSessionInfoFileImporter::Tracks> PTSessionInfoFileImporter::askWithDialog (
    const Tracks& tracks)
{
    if (! aWindowCanBeOpened())
        return std::nullopt;

    const auto view = std::make_shared<PTSessionInfoTrackSelectionView> (tracks);
    juce::DialogWindow::LaunchOptions options;
    options.content.setNonOwned (view.get());
    options.dialogTitle = "Select Tracks to Import";
    options.escapeKeyTriggersCloseButton = true;
    options.useNativeTitleBar = true;
    options.resizable = false;

    const juce::Component::SafePointer<juce::DialogWindow> window (options.launchAsync());

    // A window that gives up a title bar of its own would keep the bar's height and stretch the view.
    window->setContentComponentSize (PTSessionInfoTrackSelectionView::kWidth,
                                     PTSessionInfoTrackSelectionView::kHeight);
    window->centreAroundComponent (nullptr, window->getWidth(), window->getHeight());
    window->runModalLoop();

    // The window deletes itself at the end of its modal state, but not where the application quits before.
    const std::unique_ptr<juce::Component> leftOver (window.getComponent());
    return view->selectedTracks;
}

} // namespace ZEP::Overmarks
