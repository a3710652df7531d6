// SPDX-License-Identifier: GPL-3.0-only
// The table of an application's window: rows are the events of the list, columns are keys of EventKeyValueEditor.

#include "Reel.h"
#include "event/EventKeyValueEditor.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <iostream>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using Cells = EventKeyValueEditor;

namespace
{

/** Tables count their columns from 1. */
const juce::String& keyOf (int column)
{
    return column == 1 ? Cells::KV_CueNumber : column == 2 ? Cells::KV_Actor : Cells::KV_Text;
}

class CueTable final : public juce::TableListBoxModel
{
public:
    explicit CueTable (EventArray& listToShow) : list (listToShow) {}

    int getNumRows() override { return static_cast<int> (list.sortedFilteredEvents.size()); }

    juce::String textAt (int row, int column) const
    {
        const auto value = cellsOf (row).getValueForKey (keyOf (column));
        const auto* const text = Poco::AnyCast<RichTextString> (&value);
        return text != nullptr ? text->getText() : Poco::AnyCast<juce::String> (value);
    }

    /** For the editor in a cell: one step of the Edit menu. The list doesn't listen to its events, so it is sorted.
        @returns false for a cell that can't be edited */
    bool setTextAt (int row, int column, const juce::String& text)
    {
        const Poco::Any value = column == 3 ? Poco::Any (RichTextString (text)) : Poco::Any (text);
        const bool accepted = cellsOf (row).setValueForKey (value, keyOf (column), true);
        list.sortContentAndUpdateFilteredEvents();
        return accepted;
    }

    void sortOrderChanged (int column, bool forwards) override
    {
        list.sortKey = keyOf (column);
        list.sortDescending = ! forwards;
        list.sortContentAndUpdateFilteredEvents();
    }

    void paintRowBackground (juce::Graphics&, int, int, int, bool) override {}

    void paintCell (juce::Graphics& g, int row, int column, int width, int height, bool) override
    {
        g.drawText (textAt (row, column), 4, 0, width - 8, height, juce::Justification::centredLeft);
    }

private:
    Cells cellsOf (int row) const { return Cells (list.sortedFilteredEvents.at (std::size_t (row))); }
    EventArray& list;
};

} // namespace

int main (int, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI framework; // needs no display as long as no window is opened
    const auto project = example::openReel (example::fileFromArgument (argv[1]));
    CueTable cues (*project.list);
    juce::TableListBox table ("Cues", &cues);
    for (int column = 1; column <= 3; ++column)
        table.getHeader().addColumn (keyOf (column), column, column == 3 ? 480 : 110);
    table.setSize (710, 220);

    const bool text = cues.setTextAt (2, 3, "Nine, he says.");
    const bool actor = cues.setTextAt (2, 2, "Nobody"); // an actor is the character's
    std::cout << std::boolalpha << "text " << text << ", actor " << actor << "\n";
    table.getHeader().setSortColumnId (1, false);            // downwards, as by two clicks on the title
    juce::MessageManager::getInstance()->stopDispatchLoop(); // when all that is waiting is done
    juce::MessageManager::getInstance()->runDispatchLoop();
    for (int row = 0; row < 10; ++row)
        std::cout << cues.textAt (row, 1) << ": " << cues.textAt (row, 3) << "\n";
    juce::FileOutputStream file (example::fileFromArgument (argv[2]).getChildFile ("cue table.png"));
    const auto picture = table.createComponentSnapshot (table.getLocalBounds());
    return juce::PNGImageFormat().writeImageToStream (picture, file) ? 0 : 1;
}
