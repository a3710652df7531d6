// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/DrawnSheetHeading.h"

#include <algorithm>
#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::PDFDocument;

namespace
{

constexpr auto regular = PDFDocument::FontTypeRegular;
constexpr auto bold = PDFDocument::FontTypeBold;
constexpr int topLeft = juce::Justification::topLeft;

const juce::Colour black { 0xff000000 };
const juce::Colour fieldColour { 237, 245, 255 };

constexpr float titleSize = 22.0f, textSize = 9.5f;
constexpr float inset = 5.0f; // between the edges of a field and its text
constexpr float gap = 4.0f;   // between fields
constexpr float labelShare = 0.2f;
constexpr float belowTitle = 12.0f, belowTable = 18.0f;
constexpr std::size_t mostTitleLines = 2, mostFieldLines = 3, mostCharacterLines = 14;

float rowHeight (const auto& row)
{
    float height = 0.0f;

    for (const auto& field : row)
        height = std::max (height, field.textHeight);

    return height + 2.0f * inset;
}

} // namespace

DrawnSheetHeading::DrawnSheetHeading (PDFDocument& documentToDrawOn, const EventExportSettingsSet& settings,
                                      const juce::String& characters, float widthOfHeading)
    : document (documentToDrawOn),
      width (widthOfHeading)
{
    const auto& project = settings.projectSettings;
    const auto& timeline = settings.timelineSettings;
    document.setFont (bold, titleSize);
    title = fitted (project.projectName, width, mostTitleLines, titleHeight);
    totalHeight = titleHeight > 0.0f ? titleHeight + belowTitle : 0.0f;

    if (project.projectFilePath.isNotEmpty())
        add ({ field ("Project File", project.projectFilePath, true) });

    Row row;

    for (const auto& [label, text] : std::initializer_list<std::pair<const char*, const juce::String&>> {
             { "Sound Supervisor", project.soundSupervisor },
             { "Produced By", project.productionCompany },
             { "Sound Studio", project.studioName },
             { "Timeline Name", timeline.timelineName } })
    {
        if (text.isNotEmpty())
            row.push_back (field (label, text, false));

        if (row.size() == 2)
            add (std::exchange (row, {}));
    }

    if (! row.empty())
        add (std::move (row));

    add ({ field ("Episode/Reel", timeline.episodeReel, false),
           field ("Picture Version", timeline.pictureVersion, false) });
    add ({ field ("Characters (Actors)", characters, true) });
    totalHeight += belowTable;
}

DrawnSheetHeading::Field DrawnSheetHeading::field (const juce::String& label, const juce::String& text,
                                                   bool isWide) const
{
    const auto labelWidth = width * labelShare;
    const auto textWidth = (isWide ? width : (width - gap) / 2.0f) - labelWidth;
    Field made { label, {}, labelWidth, textWidth, 0.0f };
    float emptyHeight = 0.0f;
    document.setFont (regular, textSize);
    made.text = fitted (text, textWidth - 2.0f * inset, isWide ? mostCharacterLines : mostFieldLines,
                        made.textHeight);
    document.layoutTextForWidth (label, 0.0f, emptyHeight);
    made.textHeight = std::max (made.textHeight, emptyHeight);
    return made;
}

juce::String DrawnSheetHeading::fitted (const juce::String& text, float textWidth, std::size_t mostLines,
                                        float& height) const
{
    const auto fits = [&] (const juce::String& words)
    { return document.layoutTextForWidth (words, textWidth, height).size() <= mostLines; };

    if (fits (text))
        return text;

    const auto start = [&text] (int length)
    { return text.substring (0, length).trimEnd() + juce::String::fromUTF8 ("…"); };

    // The longest start of the text with which there is room for the sign. More letters than this are on no heading.
    int most = 0;

    for (int step = 4096; step > 0; step /= 2)
        if (fits (start (most + step)))
            most += step;

    const auto shown = start (most);
    fits (shown); // for the height
    return shown;
}

void DrawnSheetHeading::add (Row row)
{
    totalHeight += rowHeight (row) + gap;
    rows.push_back (std::move (row));
}

void DrawnSheetHeading::draw (float x, float y) const
{
    document.setFillColor (black);
    document.setFont (bold, titleSize);
    document.drawMultilineText (title, { x, y - titleHeight, width, titleHeight }, topLeft);
    auto top = titleHeight > 0.0f ? y - titleHeight - belowTitle : y;

    for (const auto& row : rows)
    {
        const auto height = rowHeight (row);
        auto left = x;

        for (const auto& each : row)
        {
            drawField (each, left, top, height);
            left += (width + gap) / 2.0f;
        }

        top -= height + gap;
    }
}

void DrawnSheetHeading::drawField (const Field& field, float x, float y, float height) const
{
    const auto left = x + field.labelWidth;
    document.setFillColor (fieldColour);
    document.fillRect (left, y - height, field.textWidth, height);
    document.setFillColor (black);
    document.setFont (bold, textSize);
    document.drawMultilineText (field.label, { x, y - height, field.labelWidth, height - inset }, topLeft);
    document.setFont (regular, textSize);
    document.drawMultilineText (
        field.text, { left + inset, y - height, field.textWidth - 2.0f * inset, height - inset }, topLeft);
}

} // namespace ZEP::Overmarks
