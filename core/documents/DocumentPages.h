// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Core
{

/** The pages of a PDFDocument, in its measures: what draws them is loaded with the first document (DocumentsLibrary).

    By itself an object draws nothing, measures every text as an empty one and can't be finished. That is what a document is left with
    where the drawing can't be loaded. */
class DocumentPages
{
public:
    /** @param wordsOfFailure  why nothing is drawn */
    explicit DocumentPages (juce::String wordsOfFailure = {}) : failure (std::move (wordsOfFailure)) {}

    DocumentPages (const DocumentPages&) = delete;
    DocumentPages& operator= (const DocumentPages&) = delete;
    virtual ~DocumentPages() = default;

    /** Ends the document; a second call does nothing. @returns the reason of the first failure since the beginning, if there was one */
    virtual juce::Result finish() { return juce::Result::fail (failure); }

    /** The whole file, after finish(). */
    [[nodiscard]] virtual const std::string& bytes() const { return nothing; }

    virtual void setTitle (const juce::String&) {}
    virtual void setCreator (const juce::String&) {}
    virtual void setCreationTime (juce::Time) {}
    virtual void addPage() {}

    virtual void setFont (bool /*isBold*/, float /*size*/) {}
    [[nodiscard]] virtual float descent() const { return 0.0f; }
    virtual void setFillColour (juce::Colour) {}
    virtual void setStrokeColour (juce::Colour) {}
    virtual void setClip (const juce::Rectangle<float>&) {}

    virtual void drawLine (float /*x1*/, float /*y1*/, float /*x2*/, float /*y2*/, float /*width*/,
                           bool /*hasRoundEnds*/)
    {
    }
    virtual void drawRect (float /*x*/, float /*y*/, float /*w*/, float /*h*/, float /*lineWidth*/) {}
    virtual void fillRect (float /*x*/, float /*y*/, float /*w*/, float /*h*/) {}
    virtual void drawRoundedRect (float /*x*/, float /*y*/, float /*w*/, float /*h*/, float /*lineWidth*/,
                                  float /*radius*/)
    {
    }
    virtual void drawRepeated (const juce::String& /*identifier*/, const juce::Rectangle<float>& /*place*/,
                               const std::function<void()>& /*draw*/)
    {
    }

    virtual void drawText (const juce::String&, float /*x*/, float /*y*/) {}
    /** @param isOneLine  else as many as it takes */
    virtual void drawLines (const juce::String&, const juce::Rectangle<float>&, juce::Justification,
                            bool /*isOneLine*/)
    {
    }
    virtual std::vector<juce::String> layoutTextForWidth (const juce::String&, float /*width*/, float& height)
    {
        height = 0.0f;
        return {};
    }
    [[nodiscard]] virtual std::vector<float> lineHeightsForWidth (const juce::String&, float /*width*/)
    {
        return {};
    }
    [[nodiscard]] virtual float widthOfLine (const juce::String&) { return 0.0f; }

    virtual void setImage (const juce::Image&, const juce::String& /*identifier*/) {}
    virtual void drawImage (const juce::String& /*identifier*/, float /*x*/, float /*y*/, float /*w*/,
                            float /*h*/)
    {
    }

private:
    const juce::String failure;
    const std::string nothing;
};

} // namespace ZEP::Core
