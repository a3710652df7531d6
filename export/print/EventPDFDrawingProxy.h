// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/documents/PDFDocument.h"
#include "event/Event.h"
#include "export/frame/EventExportSettingsSet.h"

#include <juce_core/juce_core.h>

#include <memory>

namespace ZEP::Overmarks
{

/** One cue as a box on a drawn page: what is said on the left, who says it and when on the right.

        +-----------------------------------------+-------------+
        | cue text                                | cue number  |
        |                                         +-------------+
        | NOTES:   ...                            | character   |
        | REASON:  ...                            | in          |
        |  1 |  2 |  3 | ... takes ...  | 23 | 24 | out         |
        +-----------------------------------------+-------------+

    Make one for each event, ask drawingHeight() whether the box still fits the page, and draw it. All measures are points, y grows
    upwards. The icons have to be registered in the document under the identifiers below before the first box is drawn.

    The rule that is easily missed: a proxy measures its texts once. An event that changes after that needs a new proxy. Takes count
    from 0 here: box 1 is crossed out for a selected take of 0.

    The thread of its document. */
class OVERMARKS_API EventPDFDrawingProxy final
{
public:
    /** @throws std::out_of_range unless the settings' options hold both lists of reasons */
    EventPDFDrawingProxy (std::shared_ptr<Event> eventToDraw,
                          std::shared_ptr<ZEP::Core::PDFDocument> documentToDrawOn,
                          std::shared_ptr<EventExportSettingsSet> settingsSet);

    /** The height of the box at this width. */
    float drawingHeight (float width);

    /** Draws the box, its top left corner at the point. */
    void draw (float x, float y, float width);

    /** The cue number, the character and the times. The box has its top left corner at the point. */
    void drawRightSection (float x, float y, float width, float height);

    /** The texts, and the boxes of the takes where the settings ask for them. */
    void drawContentSection (float x, float y, float width, float height);

    /** The row of boxes for the takes along the lower edge. */
    void drawTakeNumberBoxes (float x, float y, float width, float height);

    static const juce::String kCharacterIconIdentifier; ///< of the picture before the name
    static const juce::String kInPointIconIdentifier;   ///< of the picture before the in point
    static const juce::String kOutPointIconIdentifier;  ///< of the picture before the end

    std::shared_ptr<Event> event;                     ///< never null
    std::shared_ptr<ZEP::Core::PDFDocument> document; ///< never null; drawn on
    std::shared_ptr<EventExportSettingsSet> settings; ///< never null; layout and reasons
    juce::String reasonText;                          ///< name of the cue's reason; may be empty
    float textHeight = 0.0f;                          ///< of the laid-out cue text; 0: not measured yet
    float notesHeight = 0.0f;                         ///< of the laid-out notes; 0: not measured yet
    float rightSectionWidth = 115.0f;                 ///< of the column on the right
    float cueNumberHeight = 26.0f;                    ///< of the box at the top right
    float rowHeight = 13.0f;                          ///< of the row for reason and engineering notes
    float rowSpacing = 3.0f;                          ///< between two texts
    float padding = 5.0f;                             ///< between a text and the box's edge
    float minimumHeight = 84.0f;                      ///< the box is never lower
    int numTakeBoxes = 24;                            ///< of a row, left of the right section

private:
    bool isLayout (EventExportLayout layout) const { return settings->layout == layout; }
    bool hasReasonRow() const;
    bool hasEngineeringRow() const;
    float takeBoxSize (float width) const;
    float textWidth (float width) const;
    float notesWidth (float width) const;
    void drawNotes (float x, float baseline, float width);
    void drawRow (float x, float baseline, float width);
    void drawSingleRow (const juce::String& label, const juce::String& text, float x, float baseline,
                        float width);
    void drawSharedRow (float x, float baseline, float width);
    void drawField (float x, float baseline, float width, float height);
    void drawLabel (const juce::String& label, float x, float baseline);
    void drawRowText (const juce::String& text, float x, float baseline, float width);
    void drawWhole (const juce::String& text, const juce::Rectangle<float>& place,
                    ZEP::Core::PDFDocument::FontType font, float size);
    void drawCueText (float x, float y, float width);
    void drawFrame (float x, float y, float width, float height);
    void drawIcons (float edge, float top);
    void drawCueNumber (float edge, float y);
    void drawNameAndTimes (float edge, float y);
    void drawThinLine (float x1, float y1, float x2, float y2);
    void drawEmptyTakeBoxes (float x, float bottom, float size);
};

} // namespace ZEP::Overmarks
