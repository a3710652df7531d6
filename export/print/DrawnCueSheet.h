// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/documents/PDFDocument.h"
#include "export/frame/EventExportSettingsSet.h"
#include "export/print/EventPDFDrawingProxy.h"

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <functional>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

class DrawnSheetHeading;

/** A cue sheet on paper: the cues as boxes one below the other, with a heading on top and a footer on every page.

        30   margin; on later pages the title, and whom the page is for
             heading of the part, on its first page
             cues, 8 points apart
        24   footer: icon, version, date and time, layout, "Page: 2/7"
        20   margin

    A part is what goes to one person: a whole list, or the cues of one character. Each begins on a page of its own. A cue is never split but
    where it is taller than a page: it begins on a fresh one then, and goes on from line to line over as many as it takes.

    The rule that is easily missed: nothing is on the pages before draw(), which needs to know how many there are. The thread of
    its document. */
class OVERMARKS_API DrawnCueSheet final
{
public:
    using Events = EventExportSettingsSet::Events; ///< in the order in which they are drawn

    /** The settings' options need both lists of reasons; addReasons() puts them there. */
    DrawnCueSheet (std::shared_ptr<ZEP::Core::PDFDocument> documentToDrawOn,
                   std::shared_ptr<EventExportSettingsSet> settingsSet);

    DrawnCueSheet (const DrawnCueSheet&) = delete;
    DrawnCueSheet& operator= (const DrawnCueSheet&) = delete;
    ~DrawnCueSheet();

    /** Lays out one part.
        @param characters   for its heading
        @param isCharacter  whether the part is one character's, so that each of its pages says so */
    void addPart (const juce::String& characters, const Events& events, bool isCharacter);

    /** Draws all pages. Once. */
    void draw();

    /** Of all parts. */
    [[nodiscard]] int numberOfPages() const noexcept { return static_cast<int> (pages.size()); }

    /** Asked before each cue; true ends the work, and the pages are not to be used. */
    std::function<bool()> isCancelled;

    /** The footer's picture; none by default. */
    juce::Image appIcon;

    /** Puts the process's cue reasons where the options have none. */
    static void addReasons (EventExportSettingsSet& settings);

private:
    /** A cue on a page, or as much of it as the page takes. */
    struct Slice
    {
        std::shared_ptr<EventPDFDrawingProxy> cue;
        float top;    ///< on the page, from the bottom
        float offset; ///< from the top of the cue to the top of the slice
        float height;
        bool isWhole;
        bool isLast; ///< of its cue
    };

    struct Page
    {
        std::shared_ptr<DrawnSheetHeading> heading; ///< null but on the first page of a part
        juce::String whom;                          ///< on the right of later pages
        std::vector<Slice> slices;
    };

    void addPage (const juce::String& whom);
    void add (const std::shared_ptr<EventPDFDrawingProxy>& cue, const juce::String& whom);
    void addTall (const std::shared_ptr<EventPDFDrawingProxy>& cue, float height, const juce::String& whom);
    std::vector<float> cutsOf (const EventPDFDrawingProxy& cue, float height) const;
    void drawPage (const Page& page) const;
    void drawSlice (const Slice& slice) const;
    void drawRunningHead (const juce::String& whom) const;
    void drawFooter (int number) const;
    [[nodiscard]] bool mustEnd() const { return isCancelled != nullptr && isCancelled(); }

    std::shared_ptr<ZEP::Core::PDFDocument> document;
    std::shared_ptr<EventExportSettingsSet> settings;
    juce::String dateAndTime;
    float width; ///< of cues and headings
    std::vector<Page> pages;
    float place = 0.0f; ///< where the next cue of the last page begins
};

} // namespace ZEP::Overmarks
