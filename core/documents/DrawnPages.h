// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/DocumentPages.h"
#include "core/documents/PageCanvas.h"
#include "core/documents/PageText.h"
#include "core/documents/PaperSize.h"

namespace ZEP::Core
{

/** Draws the pages of a PDFDocument. */
class DrawnPages final : public DocumentPages
{
public:
    explicit DrawnPages (PaperSize paper);

    juce::Result finish() override;
    [[nodiscard]] const std::string& bytes() const override;
    void setTitle (const juce::String& title) override;
    void setCreator (const juce::String& creator) override;
    void setCreationTime (juce::Time time) override;
    void addPage() override;

    void setFont (bool isBold, float fontSize) override;
    [[nodiscard]] float descent() const override;
    void setFillColour (juce::Colour colour) override;
    void setStrokeColour (juce::Colour colour) override;
    void setClip (const juce::Rectangle<float>& rectangle) override;

    void drawLine (float x1, float y1, float x2, float y2, float width, bool hasRoundEnds) override;
    void drawRect (float x, float y, float w, float h, float lineWidth) override;
    void fillRect (float x, float y, float w, float h) override;
    void drawRoundedRect (float x, float y, float w, float h, float lineWidth, float radius) override;
    void drawRepeated (const juce::String& identifier, const juce::Rectangle<float>& place,
                       const std::function<void()>& draw) override;

    void drawText (const juce::String& text, float x, float y) override;
    void drawLines (const juce::String& text, const juce::Rectangle<float>& rectangle,
                    juce::Justification justification, bool isOneLine) override;
    std::vector<juce::String> layoutTextForWidth (const juce::String& text, float width,
                                                  float& height) override;
    [[nodiscard]] std::vector<float> lineHeightsForWidth (const juce::String& text, float width) override;
    [[nodiscard]] float widthOfLine (const juce::String& text) override;

    void setImage (const juce::Image& image, const juce::String& identifier) override;
    void drawImage (const juce::String& identifier, float x, float y, float w, float h) override;

private:
    const PaperSize size;
    juce::Colour fillColour { juce::Colours::black };
    juce::Colour strokeColour { juce::Colours::black };
    PageCanvas canvas;
    PageText texts;
};

} // namespace ZEP::Core
