// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoTrackSelectionView.h"

#include "core/system/SystemUtility.h"
#include "core/text/StringUtil.h"

#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

// All in pixels.

constexpr int kMargin = 20;           // around the list
constexpr int kHeightBelowList = 100; // without the margin
constexpr int kRowHeight = 27;

constexpr int kBulkButtonWidth = 125, kBulkButtonHeight = 20;
constexpr int kBulkButtonStep = 135;     // from one button to the next
constexpr int kBulkButtonsWidth = 395;   // of all three
constexpr int kBulkButtonsDistance = 15; // from the list

constexpr int kContinueWidth = 200, kContinueHeight = 25;
constexpr int kContinueCentreFromBottom = 28;
constexpr int kStripAboveContinue = 13;

const juce::Colour kBackground (46, 46, 51);
const juce::Colour kStrip (83, 83, 92);

const juce::Rectangle<int> kToggle (4, 5, 18, 18);
constexpr int kNameX = 27;
constexpr float kNameHeight = 15.0f; // of the font
const juce::Colour kRowLine (128, 128, 128);
const juce::Colour kBox (128, 128, 128), kTick (30, 30, 30); // those of the framework are white on white
const juce::Colour kNameInDublane (30, 30, 30);
const juce::Colour kNameInOrvelle (180, 180, 180);

/** More of a name is never seen, and a megabyte would take seconds to draw. */
constexpr std::size_t kMostBytesOfName = 2000;

/** A row of the list: a track with its tick. */
class CheckBoxCell final : public juce::Component, public juce::Button::Listener
{
public:
    CheckBoxCell()
    {
        toggleButton.setBounds (kToggle);
        toggleButton.setColour (juce::ToggleButton::tickDisabledColourId, kBox);
        toggleButton.setColour (juce::ToggleButton::tickColourId, kTick);
        toggleButton.addListener (this);
        addAndMakeVisible (toggleButton);
    }

    ~CheckBoxCell() override { toggleButton.removeListener (this); }

    void show (std::shared_ptr<PTSessionInfoTrack> trackOfRow)
    {
        track = std::move (trackOfRow);
        toggleButton.setToggleState (track->selected, juce::dontSendNotification);
        repaint();
    }

    void paint (juce::Graphics& g) override
    {
        g.setColour (kRowLine);
        g.fillRect (0, getHeight() - 1, getWidth(), 1);

        if (track == nullptr)
            return;

        const auto name = std::string_view (track->name).substr (0, kMostBytesOfName);
        g.setColour (Core::SystemUtility::getApplicationType() != 0 ? kNameInDublane : kNameInOrvelle);
        g.setFont (juce::Font ("Arial Unicode MS", kNameHeight, juce::Font::plain));
        g.drawText (Core::StringUtil::fromUTF8 (name), kNameX, 0, getWidth() - kNameX, getHeight(),
                    juce::Justification::centredLeft, true);
    }

    void buttonClicked (juce::Button* /*button*/) override
    {
        if (track != nullptr)
            track->selected = toggleButton.getToggleState();
    }

private:
    juce::ToggleButton toggleButton;
    std::shared_ptr<PTSessionInfoTrack> track;
};

} // namespace

PTSessionInfoTrackSelectionView::PTSessionInfoTrackSelectionView (const Tracks& tracksToShow)
    : tracks (tracksToShow)
{
    listBox.setModel (this);
    listBox.setRowHeight (kRowHeight);
    listBox.setColour (juce::ListBox::backgroundColourId, juce::Colours::white);
    addAndMakeVisible (listBox);

    for (auto* button :
         { &selectAllCueTracksButton, &selectAllTracksButton, &deselectAllTracksButton, &continueButton })
    {
        button->addListener (this);
        addAndMakeVisible (button);
    }

    continueButton.setComponentID ("AlertBoxBtnBlue"); // the application's look and feel knows it
    setSize (kWidth, kHeight);
}

PTSessionInfoTrackSelectionView::~PTSessionInfoTrackSelectionView() { listBox.setModel (nullptr); }

void PTSessionInfoTrackSelectionView::paint (juce::Graphics& g)
{
    g.fillAll (kBackground);
    const auto top = continueButton.getY() - kStripAboveContinue;
    g.setColour (kStrip);
    g.fillRect (0, top, getWidth(), getHeight() - top);
}

void PTSessionInfoTrackSelectionView::resized()
{
    listBox.setBounds (kMargin, kMargin, getWidth() - 2 * kMargin, getHeight() - kMargin - kHeightBelowList);

    int x = (getWidth() - kBulkButtonsWidth) / 2;
    for (auto* button : { &selectAllCueTracksButton, &selectAllTracksButton, &deselectAllTracksButton })
    {
        button->setBounds (x, listBox.getBottom() + kBulkButtonsDistance, kBulkButtonWidth,
                           kBulkButtonHeight);
        x += kBulkButtonStep;
    }

    continueButton.setSize (kContinueWidth, kContinueHeight);
    continueButton.setCentrePosition (getWidth() / 2, getHeight() - kContinueCentreFromBottom);
}

int PTSessionInfoTrackSelectionView::getNumRows() { return static_cast<int> (tracks.size()); }

void PTSessionInfoTrackSelectionView::paintListBoxItem (int /*row*/, juce::Graphics& /*g*/, int /*width*/,
                                                        int /*height*/, bool /*rowIsSelected*/)
{
}

juce::Component* PTSessionInfoTrackSelectionView::refreshComponentForRow (int row, bool /*rowIsSelected*/,
                                                                          juce::Component* existingComponent)
{
    std::unique_ptr<juce::Component> existing (existingComponent); // the list box hands it over

    if (row < 0 || row >= getNumRows())
        return nullptr;

    if (dynamic_cast<CheckBoxCell*> (existing.get()) == nullptr)
        existing = std::make_unique<CheckBoxCell>();

    static_cast<CheckBoxCell&> (*existing).show (tracks[static_cast<std::size_t> (row)]);
    return existing.release();
}

void PTSessionInfoTrackSelectionView::buttonClicked (juce::Button* button)
{
    if (button == &selectAllCueTracksButton)
        onSelectAllCueTracksBtnClicked();
    else if (button == &selectAllTracksButton)
        onSelectAllTracksBtnClicked();
    else if (button == &deselectAllTracksButton)
        onDeselectAllBtnClicked();
    else if (button == &continueButton)
        onContinueButtonClicked();
}

template <typename IsTicked>
void PTSessionInfoTrackSelectionView::tick (IsTicked isTicked)
{
    for (const auto& track : tracks)
        track->selected = isTicked (*track);

    listBox.updateContent();
}

void PTSessionInfoTrackSelectionView::onSelectAllCueTracksBtnClicked()
{
    tick ([] (const PTSessionInfoTrack& track) { return ! track.actorName.empty(); });
}

void PTSessionInfoTrackSelectionView::onSelectAllTracksBtnClicked()
{
    tick ([] (const PTSessionInfoTrack&) { return true; });
}

void PTSessionInfoTrackSelectionView::onDeselectAllBtnClicked()
{
    tick ([] (const PTSessionInfoTrack&) { return false; });
}

void PTSessionInfoTrackSelectionView::onContinueButtonClicked()
{
    selectedTracks.clear();

    for (const auto& track : tracks)
        if (track->selected)
            selectedTracks.push_back (track);

    if (auto* const dialog = findParentComponentOfClass<juce::DialogWindow>())
        dialog->exitModalState (1);
}

} // namespace ZEP::Overmarks
