// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PDFDocument.h"
#include "export/frame/EventExportSettingsSet.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace ZEP::Overmarks
{

/** What stands above the first cue of a drawn sheet: the project's title, and a table of who makes it, from which picture, for whom.

    Texts wrap; one that would fill the page by itself ends in "…". Measured when it is made. */
class DrawnSheetHeading final
{
public:
    /** @param characters  the names, with their actors, that the sheet is for
        @param width       points */
    DrawnSheetHeading (ZEP::Core::PDFDocument& documentToDrawOn, const EventExportSettingsSet& settings,
                       const juce::String& characters, float width);

    /** Points. */
    [[nodiscard]] float height() const noexcept { return totalHeight; }

    /** Draws it, its top left corner at the point. */
    void draw (float x, float y) const;

private:
    struct Field
    {
        juce::String label;
        juce::String text;
        float labelWidth;
        float textWidth;
        float textHeight;
    };

    using Row = std::vector<Field>;

    Field field (const juce::String& label, const juce::String& text, bool isWide) const;
    juce::String fitted (const juce::String& text, float textWidth, std::size_t mostLines,
                         float& height) const;
    void add (Row row);
    void drawField (const Field& field, float x, float y, float height) const;

    ZEP::Core::PDFDocument& document;
    float width;
    juce::String title;
    float titleHeight = 0.0f;
    std::vector<Row> rows;
    float totalHeight = 0.0f;
};

} // namespace ZEP::Overmarks
