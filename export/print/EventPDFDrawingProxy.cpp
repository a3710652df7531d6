// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/EventPDFDrawingProxy.h"

#include "event/EventKeyValueEditor.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::PDFDocument;

namespace
{

const juce::Colour lineColour { 118, 118, 118 };
const juce::Colour nameColour { 23, 97, 181 };
const juce::Colour fieldColour { 237, 245, 255 };
const juce::Colour black { 0xff000000 };

constexpr auto regular = PDFDocument::FontTypeRegular;
constexpr auto bold = PDFDocument::FontTypeBold;

constexpr int left = juce::Justification::centredLeft;
constexpr int centre = juce::Justification::centred;
constexpr int block = juce::Justification::bottomLeft;

constexpr float labelSize = 8.0f;    // of labels, notes and the numbers of the takes
constexpr float labelColumn = 63.0f; // from the left edge of the box to the fields
constexpr float fieldInset = 3.0f;   // from the left edge of a field to its text
constexpr float iconsWidth = 20.0f;  // from the divider to the right end of the widest
constexpr float iconsTop = 32.0f;    // from the top of the box to the upper end of the highest
constexpr float iconsHeight = 77.0f; // and to the lower end of the lowest

const juce::Array<juce::var>& listOf (const EventExportSettingsSet& settings, const juce::String& key)
{
    static const juce::Array<juce::var> nothing;
    const auto* const list = settings.options.at (key).getArray();
    return list != nullptr ? *list : nothing;
}

/** The text of a reason as the application's two lists have it, the user's behind the defaults; counted from 1. */
juce::String reasonOf (const std::shared_ptr<Event>& event, const EventExportSettingsSet& settings)
{
    const auto& defaults = listOf (settings, EventExportADRCueDefaultReasonsKey);
    const auto& users = listOf (settings, EventExportADRCueUserReasonsKey);
    const auto code =
        Poco::AnyCast<int> (EventKeyValueEditor (event).getValueForKey (EventKeyValueEditor::KV_Reason));

    if (code >= 1 && code <= defaults.size())
        return defaults[code - 1].toString();
    if (code > defaults.size() && code - defaults.size() <= users.size())
        return users[code - 1 - defaults.size()].toString();

    return {};
}

float cueTextSize (const EventExportSettingsSet& settings)
{
    return settings.layout == EventExportLayoutActor ? 14.0f : 11.0f;
}

} // namespace

const juce::String EventPDFDrawingProxy::kCharacterIconIdentifier { "CharIconIdentifier" };
const juce::String EventPDFDrawingProxy::kInPointIconIdentifier { "InPointIconIdentifier" };
const juce::String EventPDFDrawingProxy::kOutPointIconIdentifier { "OutPointIconIdentifier" };

EventPDFDrawingProxy::EventPDFDrawingProxy (std::shared_ptr<Event> eventToDraw,
                                            std::shared_ptr<PDFDocument> documentToDrawOn,
                                            std::shared_ptr<EventExportSettingsSet> settingsSet)
    : event (std::move (eventToDraw)),
      document (std::move (documentToDrawOn)),
      settings (std::move (settingsSet)),
      reasonText (reasonOf (event, *settings))
{
}

// ---- measuring -------------------------------------------------------------------------------------------------------------

bool EventPDFDrawingProxy::hasEngineeringRow() const
{
    return isLayout (EventExportLayoutEngineer) && event->getEngineeringNotes().length() > 0;
}

bool EventPDFDrawingProxy::hasReasonRow() const
{
    return reasonText != "None"
           && (isLayout (EventExportLayoutDirector) || isLayout (EventExportLayoutEngineer));
}

float EventPDFDrawingProxy::takeBoxSize (float width) const
{
    return numTakeBoxes > 0 ? (width - rightSectionWidth) / static_cast<float> (numTakeBoxes) : 0.0f;
}

float EventPDFDrawingProxy::textWidth (float width) const
{
    return width - rightSectionWidth - 2.0f * padding;
}

float EventPDFDrawingProxy::notesWidth (float width) const { return textWidth (width) - labelColumn; }

float EventPDFDrawingProxy::drawingHeight (float width)
{
    document->setFont (regular, cueTextSize (*settings));

    if (textHeight == 0.0f) // NOLINT: not measured yet
        document->layoutTextForWidth (event->getText().getText(), textWidth (width), textHeight);

    float height = textHeight + 2.0f * padding;
    int rows = 0;

    if (event->getNotes().length() > 0)
    {
        if (notesHeight == 0.0f) // NOLINT
        {
            document->setFont (regular, labelSize);
            document->layoutTextForWidth (event->getNotes().getText(), notesWidth (width), notesHeight);
        }

        height += notesHeight + padding;
        rows = 1;
    }

    // A reason "None" takes the room of a row, though none is drawn.
    const bool mayHaveReason = isLayout (EventExportLayoutDirector) || isLayout (EventExportLayoutEngineer);

    if (hasEngineeringRow() || (mayHaveReason && reasonText.isNotEmpty()))
    {
        height += rowHeight;
        ++rows;
    }

    if (settings->showTakeNumbers)
        height += takeBoxSize (width);

    return std::max (minimumHeight, height + static_cast<float> (rows - 1) * rowSpacing + padding);
}

// ---- drawing ---------------------------------------------------------------------------------------------------------------

void EventPDFDrawingProxy::draw (float x, float y, float width)
{
    const auto height = drawingHeight (width), edge = x + width - rightSectionWidth;

    // Where there is less room than the right section takes, its lines reach beyond the left edge.
    const auto beyond = std::max (0.0f, rightSectionWidth - width);
    const auto down = std::max ({ height, cueNumberHeight, iconsHeight });
    const auto across = std::max ({ 0.0f, width, width - rightSectionWidth + iconsWidth });

    // Icons may hide a part of a cue number, never the other way round.
    const bool isNumberAboveIcons = cueNumberHeight - 2.0f <= iconsTop;

    // Most cues of a list are as high as some other. The name tells all that the frame and its icons depend on, but for their colour.
    document->setStrokeColor (lineColour);
    document->drawRepeated ((isNumberAboveIcons ? "Frame, icons " : "Frame ") + juce::String (width) + " "
                                + juce::String (height) + " " + juce::String (rightSectionWidth) + " "
                                + juce::String (cueNumberHeight),
                            { x - beyond, y - down, beyond + across, down },
                            [this, x, y, width, height, edge, isNumberAboveIcons]
                            {
                                drawFrame (x, y, width, height);

                                if (isNumberAboveIcons)
                                    drawIcons (edge, y);
                            });

    if (isNumberAboveIcons)
    {
        drawCueNumber (edge, y);
        drawNameAndTimes (edge, y);
    }
    else
        drawRightSection (x, y, width, height);

    drawContentSection (x, y, width, height);
}

void EventPDFDrawingProxy::drawFrame (float x, float y, float width, float height)
{
    const auto right = x + width, divider = right - rightSectionWidth;
    document->drawRoundedRect (x, y - height, width, height, 1.0f, 5.0f);
    drawThinLine (divider, y - cueNumberHeight, right, y - cueNumberHeight);
    drawThinLine (divider, y, divider, y - height);
}

void EventPDFDrawingProxy::drawIcons (float edge, float top)
{
    const auto start = edge + 6.0f;
    document->drawImage (kCharacterIconIdentifier, start, top - 46.0f, 14.0f, 14.0f);
    document->drawImage (kInPointIconIdentifier, start, top - 62.0f, 12.0f, 10.0f);
    document->drawImage (kOutPointIconIdentifier, start, top - iconsHeight, 12.0f, 10.0f);
}

void EventPDFDrawingProxy::drawRightSection (float x, float y, float width, float)
{
    const auto edge = x + width - rightSectionWidth;
    drawCueNumber (edge, y);
    document->drawRepeated ("Icons", { edge, y - iconsHeight, iconsWidth, iconsHeight },
                            [this, edge, y] { drawIcons (edge, y); });
    drawNameAndTimes (edge, y);
}

void EventPDFDrawingProxy::drawCueNumber (float edge, float y)
{
    document->setStrokeColor (black);
    drawWhole (
        event->getCueNumber(),
        { edge + padding, y - cueNumberHeight + 2.0f, rightSectionWidth - 2.0f * padding, cueNumberHeight },
        bold, 14.0f);
}

void EventPDFDrawingProxy::drawNameAndTimes (float edge, float y)
{
    document->setFillColor (nameColour);

    if (const auto character = event->character())
    {
        document->setFont (regular, 10.0f);
        document->drawText (character->name, { edge + 23.0f, y - 43.0f, 80.0f, 11.0f }, left);
    }

    document->setFillColor (black);
    drawWhole (event->getStartTCString(), { edge + 23.0f, y - 62.0f, 55.0f, 11.0f }, bold, 10.0f);
    drawWhole (event->getEndTCString(), { edge + 23.0f, y - 76.0f, 55.0f, 11.0f }, bold, 10.0f);
}

/** A time without its frames and half a cue number are wrong ones: where the font is too wide, its letters become smaller. */
void EventPDFDrawingProxy::drawWhole (const juce::String& text, const juce::Rectangle<float>& place,
                                      PDFDocument::FontType font, float size)
{
    constexpr float smallest = 4.0f, step = 0.25f; // few sizes for many texts
    document->setFont (font, size);

    if (const auto width = document->widthOfLine (text); width > place.getWidth())
    {
        const auto fitting = std::floor (size * place.getWidth() / width / step) * step;
        document->setFont (font, std::max (smallest, fitting));
    }

    document->drawText (text, place, left);
}

void EventPDFDrawingProxy::drawContentSection (float x, float y, float width, float height)
{
    float boxSize = 0.0f;

    if (settings->showTakeNumbers)
    {
        drawTakeNumberBoxes (x, y, width, height);
        boxSize = takeBoxSize (width);
    }

    float baseline = boxSize + y - height + padding + 4.0f;

    if (event->getNotes().length() > 0)
    {
        drawNotes (x, baseline, width);
        baseline += notesHeight + padding + 1.0f;
    }

    drawRow (x, baseline, width);
    drawCueText (x, y, width);
}

void EventPDFDrawingProxy::drawNotes (float x, float baseline, float width)
{
    drawLabel ("NOTES: ", x + padding, baseline + notesHeight - padding - 6.0f);
    drawField (x + labelColumn, baseline, width - padding - (rightSectionWidth + labelColumn),
               notesHeight + 2.0f);
    document->setFillColor (black);
    document->setFont (regular, labelSize);
    document->drawMultilineText (
        event->getNotes().getText(),
        { x + labelColumn + fieldInset, baseline - 3.0f, notesWidth (width), notesHeight }, block);
}

void EventPDFDrawingProxy::drawRow (float x, float baseline, float width)
{
    if (hasEngineeringRow() && hasReasonRow())
        drawSharedRow (x, baseline, width);
    else if (hasEngineeringRow())
        drawSingleRow ("ENG. NOTES: ", event->getEngineeringNotes().getText(), x, baseline, width);
    else if (hasReasonRow())
        drawSingleRow ("REASON: ", reasonText, x, baseline, width);
}

void EventPDFDrawingProxy::drawSingleRow (const juce::String& label, const juce::String& text, float x,
                                          float baseline, float width)
{
    drawLabel (label, x + padding, baseline);
    drawField (x + labelColumn, baseline, width - padding - (rightSectionWidth + labelColumn), rowHeight);
    drawRowText (text, x + labelColumn + fieldInset, baseline, textWidth (width));
}

/** The reason on the left, the engineering notes on the right. A long text ends with its rectangle, which reaches beyond the field. */
void EventPDFDrawingProxy::drawSharedRow (float x, float baseline, float width)
{
    constexpr float secondField = 238.0f;

    drawLabel ("REASON: ", x + padding, baseline);
    drawField (x + labelColumn, baseline, 110.0f, rowHeight);
    drawField (x + secondField, baseline, width - padding - (468.0f - rightSectionWidth), rowHeight);
    drawRowText (reasonText, x + labelColumn + fieldInset, baseline, 140.0f);
    drawLabel ("ENG. NOTES: ", x + 181.0f, baseline);
    drawRowText (event->getEngineeringNotes().getText(), x + secondField + fieldInset, baseline,
                 width - padding - 338.0f);
}

void EventPDFDrawingProxy::drawLabel (const juce::String& label, float x, float baseline)
{
    document->setFillColor (black);
    document->setFont (bold, labelSize);
    document->drawText (label, x, baseline);
}

void EventPDFDrawingProxy::drawField (float x, float baseline, float width, float height)
{
    document->setFillColor (fieldColour);
    document->fillRect (x, baseline - 4.0f, width, height);
}

void EventPDFDrawingProxy::drawRowText (const juce::String& text, float x, float baseline, float width)
{
    document->setFillColor (black);
    document->setFont (regular, labelSize);
    document->drawText (text, { x, baseline - 2.0f, width, 10.0f }, left);
}

void EventPDFDrawingProxy::drawCueText (float x, float y, float width)
{
    document->setFont (regular, cueTextSize (*settings));
    document->setFillColor (black);
    document->drawMultilineText (event->getText().getText(),
                                 { x + padding, y - textHeight - padding, textWidth (width), textHeight },
                                 block);
}

void EventPDFDrawingProxy::drawTakeNumberBoxes (float x, float y, float width, float height)
{
    const auto size = takeBoxSize (width), bottom = y - height, top = bottom + size;
    const auto row = width - rightSectionWidth, right = x + row;
    const auto below = std::min (-labelSize, size); // small boxes let their numbers out

    document->setStrokeColor (lineColour);
    document->setFont (regular, labelSize);
    document->drawRepeated (
        "Takes " + juce::String (numTakeBoxes) + " " + juce::String (row),
        { x + std::min (0.0f, row), bottom + below, std::abs (row), std::max (0.0f, size) - below },
        [this, x, bottom, size, right]
        {
            drawThinLine (x, bottom + size, right, bottom + size);
            drawEmptyTakeBoxes (x, bottom, size);
        });

    if (const auto take = event->getSelectedTake(); take >= 0 && take < numTakeBoxes)
    {
        // The first box has the rounded corner of the cue.
        const auto edge = x + static_cast<float> (take) * size, inset = take == 0 ? 1.5f : 0.0f;
        drawThinLine (edge + inset, bottom + inset, edge + size, top);
        drawThinLine (edge, top, edge + size, bottom);
    }
}

void EventPDFDrawingProxy::drawThinLine (float x1, float y1, float x2, float y2)
{
    document->drawLine (x1, y1, x2, y2, 1.0f, PDFDocument::LineCapPlain);
}

void EventPDFDrawingProxy::drawEmptyTakeBoxes (float x, float bottom, float size)
{
    const auto top = bottom + size;
    // All numbers and then all lines: drawn in turn they would take three times as long.
    for (int i = 0; i < numTakeBoxes; ++i)
        document->drawText (juce::String (i + 1),
                            { x + static_cast<float> (i) * size, bottom - 3.0f, size, size }, centre);

    for (int i = 1; i <= numTakeBoxes; ++i)
    {
        const auto edge = x + static_cast<float> (i) * size;
        drawThinLine (edge, bottom, edge, top);
    }
}

} // namespace ZEP::Overmarks
