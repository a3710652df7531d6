// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/DrawnCueSheet.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/SystemUtility.h"
#include "export/print/BinaryData.h"
#include "export/print/DrawnSheetHeading.h"

#include <algorithm>
#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::PDFDocument;

namespace
{

constexpr auto regular = PDFDocument::FontTypeRegular;

const juce::Colour black { 0xff000000 };
const juce::Colour footerColour { 0xff555555 };

constexpr float sideMargin = 30.0f, topMargin = 30.0f, bottomMargin = 20.0f;
constexpr float footerHeight = 24.0f, aboveFooter = 8.0f;
constexpr float runningHeadHeight = 18.0f;
constexpr float betweenCues = 8.0f;
constexpr float footerSize = 9.0f;
constexpr float lowestPlace = bottomMargin + footerHeight + aboveFooter;

const juce::String appIconIdentifier { "AppIcon" };

void registerIcon (PDFDocument& document, const juce::String& identifier, const char* data, int size)
{
    document.setImage (juce::ImageFileFormat::loadFrom (data, static_cast<std::size_t> (size)), identifier,
                       false);
}

juce::Array<juce::var> reasonNames (int firstCode, int lastCode)
{
    juce::Array<juce::var> names;

    for (int code = firstCode; code <= lastCode; ++code)
        names.add (ADRCueReasonsManager::sharedManager()->getReasonFromInteger (code));

    return names;
}

} // namespace

void DrawnCueSheet::addReasons (EventExportSettingsSet& settings)
{
    constexpr auto firstUser = ADRCueReasonsManager::firstUserReasonCode;
    settings.options.emplace (EventExportADRCueDefaultReasonsKey,
                              reasonNames (ADRCueReasonsManager::noneCode, firstUser - 1));
    settings.options.emplace (EventExportADRCueUserReasonsKey,
                              reasonNames (firstUser, ADRCueReasonsManager::lastCode));
}

DrawnCueSheet::DrawnCueSheet (std::shared_ptr<PDFDocument> documentToDrawOn,
                              std::shared_ptr<EventExportSettingsSet> settingsSet)
    : document (std::move (documentToDrawOn)),
      settings (std::move (settingsSet)),
      dateAndTime (juce::Time::getCurrentTime().toString (true, true, false, true)),
      width (document->getWidth() - 2.0f * sideMargin)
{
    registerIcon (*document, EventPDFDrawingProxy::kCharacterIconIdentifier,
                  BinaryData::pdfexportcharactericon_png, BinaryData::pdfexportcharactericon_pngSize);
    registerIcon (*document, EventPDFDrawingProxy::kInPointIconIdentifier,
                  BinaryData::pdfexportinpointicon_png, BinaryData::pdfexportinpointicon_pngSize);
    registerIcon (*document, EventPDFDrawingProxy::kOutPointIconIdentifier,
                  BinaryData::pdfexportoutpointicon_png, BinaryData::pdfexportoutpointicon_pngSize);

    if (settings->projectSettings.projectName.isNotEmpty())
        document->setTitle (settings->projectSettings.projectName);
}

DrawnCueSheet::~DrawnCueSheet() = default;

// ---- layout ----------------------------------------------------------------------------------------------------------------

void DrawnCueSheet::addPage (const juce::String& whom)
{
    pages.push_back ({ nullptr, whom, {} });
    place = document->getHeight() - topMargin - runningHeadHeight;
}

void DrawnCueSheet::addPart (const juce::String& characters, const Events& events, bool isCharacter)
{
    const auto whom = isCharacter ? characters : juce::String();
    addPage (whom);
    pages.back().heading = std::make_shared<DrawnSheetHeading> (*document, *settings, characters, width);
    place = document->getHeight() - topMargin - pages.back().heading->height();

    for (const auto& event : events)
    {
        if (mustEnd())
            return;

        add (std::make_shared<EventPDFDrawingProxy> (event, document, settings), whom);
    }
}

void DrawnCueSheet::add (const std::shared_ptr<EventPDFDrawingProxy>& cue, const juce::String& whom)
{
    const auto height = cue->drawingHeight (width);

    // No page is empty here: it has a heading or a cue.
    if (place - height < lowestPlace)
        addPage (whom);

    if (place - height < lowestPlace)
        return addTall (cue, height, whom);

    pages.back().slices.push_back ({ cue, place, 0.0f, height, true, true });
    place -= height + betweenCues;
}

/** A cue that is taller than a page, from the top of a fresh one. */
void DrawnCueSheet::addTall (const std::shared_ptr<EventPDFDrawingProxy>& cue, float height,
                             const juce::String& whom)
{
    const auto cuts = cutsOf (*cue, height);

    for (float offset = 0.0f; offset < height;)
    {
        if (offset > 0.0f)
            addPage ((whom.isEmpty() ? whom : whom + ", ") + cue->event->getCueNumber() + " (continued)");

        const auto room = std::max (betweenCues, place - lowestPlace);
        const auto behind = std::upper_bound (cuts.begin(), cuts.end(), offset + room);
        auto end =
            behind != cuts.begin() && *std::prev (behind) > offset ? *std::prev (behind) : offset + room;
        end = offset + room >= height ? height : end;
        pages.back().slices.push_back ({ cue, place, offset, end - offset, false, end >= height });
        place -= end - offset + betweenCues;
        offset = end;
    }
}

/** Where a cue may be cut without cutting a line: distances from its top, growing. */
std::vector<float> DrawnCueSheet::cutsOf (const EventPDFDrawingProxy& cue, float height) const
{
    std::vector<float> cuts;
    const auto addLines = [this, &cuts] (const juce::String& text, float textWidth, float top)
    {
        for (const auto lineHeight : document->lineHeightsForWidth (text, textWidth))
            cuts.push_back (top += lineHeight);
    };

    const auto textWidth = width - cue.rightSectionWidth - 2.0f * cue.padding;
    document->setFont (regular, settings->layout == EventExportLayoutActor ? 14.0f : 11.0f);
    addLines (cue.event->getText().getText(), textWidth, cue.padding);

    if (cue.event->getNotes().length() > 0)
    {
        const auto boxes = settings->showTakeNumbers
                               ? (width - cue.rightSectionWidth) / static_cast<float> (cue.numTakeBoxes)
                               : 0.0f;
        document->setFont (regular, 8.0f);
        addLines (cue.event->getNotes().getText(), textWidth - 63.0f,
                  height - boxes - cue.padding - 1.0f - cue.notesHeight);
    }

    std::sort (cuts.begin(), cuts.end());
    return cuts;
}

// ---- drawing ---------------------------------------------------------------------------------------------------------------

void DrawnCueSheet::draw()
{
    document->setImage (appIcon, appIconIdentifier, false);

    for (std::size_t i = 0; i < pages.size(); ++i)
    {
        if (mustEnd())
            return;
        if (i > 0)
            document->addPage();

        drawPage (pages[i]);
        drawFooter (static_cast<int> (i) + 1);
    }
}

void DrawnCueSheet::drawPage (const Page& page) const
{
    if (page.heading != nullptr)
        page.heading->draw (sideMargin, document->getHeight() - topMargin);
    else
        drawRunningHead (page.whom);

    for (const auto& slice : page.slices)
    {
        document->setFillColor (black);
        drawSlice (slice);
    }
}

void DrawnCueSheet::drawSlice (const Slice& slice) const
{
    if (slice.isWhole)
        return slice.cue->draw (sideMargin, slice.top, width);

    // The outline of the box reaches half a point beyond it. Where the cue is cut, letters of the next line would be seen there.
    constexpr float line = 1.0f;
    const auto above = slice.offset > 0.0f ? 0.0f : line;
    const auto below = slice.isLast ? line : 0.0f;
    document->setClip ({ sideMargin - line, slice.top - slice.height - below, width + 2.0f * line,
                         slice.height + below + above });
    slice.cue->draw (sideMargin, slice.top + slice.offset, width);
    document->setClip ({});
}

void DrawnCueSheet::drawRunningHead (const juce::String& whom) const
{
    const auto y = document->getHeight() - topMargin - footerSize;
    const auto half = width / 2.0f - betweenCues;
    document->setFont (regular, footerSize);
    document->setFillColor (footerColour);
    document->drawText (settings->projectSettings.projectName, { sideMargin, y, half, footerSize },
                        juce::Justification::centredLeft);
    document->drawText (whom, { sideMargin + width - half, y, half, footerSize },
                        juce::Justification::centredRight);
}

void DrawnCueSheet::drawFooter (int number) const
{
    const auto x = sideMargin, y = bottomMargin;
    const auto page = "Page: " + juce::String (number) + "/" + juce::String (numberOfPages());
    document->setFont (regular, footerSize);
    document->setFillColor (footerColour);
    document->setStrokeColor (footerColour);
    document->drawLine (x + 4.0f, y + footerHeight, x + width - 8.0f, y + footerHeight, 0.0f,
                        PDFDocument::LineCapPlain);
    document->drawImage (appIconIdentifier, x + 4.0f, y, 16.0f, 16.0f);
    document->drawText (ZEP::Core::SystemUtility::executableVersion(), { x + 28.0f, y, width - 28.0f, 15.0f },
                        juce::Justification::centredLeft);
    document->drawText (dateAndTime, { x, y, width, 15.0f }, juce::Justification::centred);
    document->drawText (page, { x, y, width - 4.0f, 15.0f }, juce::Justification::centredRight);
    document->drawText (exportLayoutName (settings->layout), { x + 130.0f, y, width - 28.0f, 15.0f },
                        juce::Justification::centred);
}

} // namespace ZEP::Overmarks
