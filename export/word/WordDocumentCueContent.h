// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/text/RichTextString.h"
#include "export/word/WordDocumentCueTakes.h"

#include <juce_core/juce_core.h>

#include <memory>

namespace ZEP::Overmarks
{

/** A cue as it stands in a Word document. Sizes are points. */
struct OVERMARKS_API WordDocumentCueContent final
{
    /** The fields in their order, all but the takes. */
    WordDocumentCueContent (juce::String charIconFilePathValue, juce::String startTCIconFilePathValue,
                            juce::String endTCIconFilePathValue, int charNameFontSizeValue,
                            juce::String charNameValue, int cueTextFontSizeValue,
                            ZEP::Core::RichTextString cueTextValue, int cueNotesFontSizeValue,
                            ZEP::Core::RichTextString cueNotesValue, int cueEngNotesFontSizeValue,
                            ZEP::Core::RichTextString cueEngNotesValue, int reasonStringFontSizeValue,
                            juce::String reasonStringValue, int cueNumberFontSizeValue,
                            juce::String cueNumberValue, int forcedNarrativeRegionFontSizeValue,
                            juce::String forcedNarrativeRegionValue, int startTCFontSizeValue,
                            juce::String startTCValue, int endTCFontSizeValue, juce::String endTCValue);
    ~WordDocumentCueContent();

    WordDocumentCueContent (const WordDocumentCueContent&) = delete;
    WordDocumentCueContent& operator= (const WordDocumentCueContent&) = delete;

    /** Gives the cue boxes for its takes, or others than it had. */
    void setTakes (int numRecordedTakes, int selectedTake, int alternativeTake, int numberTakesToDisplay,
                   int numberRowsToDisplay);

    /** Keys in the order of the fields. "cueTakes" is missing without takes. */
    [[nodiscard]] juce::DynamicObject::Ptr toJSONDynamicObject() const;

    juce::String charIconFilePath;
    juce::String startTCIconFilePath;
    juce::String endTCIconFilePath;
    int charNameFontSize;
    juce::String charName;
    int cueTextFontSize;
    ZEP::Core::RichTextString cueText;
    int cueNotesFontSize;
    ZEP::Core::RichTextString cueNotes;
    int cueEngNotesFontSize;
    ZEP::Core::RichTextString cueEngNotes;
    int reasonStringFontSize;
    juce::String reasonString; ///< empty without a reason
    int cueNumberFontSize;
    juce::String cueNumber;
    int forcedNarrativeRegionFontSize;
    juce::String forcedNarrativeRegion; ///< empty for what is no forced narrative
    int startTCFontSize;
    juce::String startTC;
    int endTCFontSize;
    juce::String endTC;
    std::unique_ptr<WordDocumentCueTakes> cueTakes; ///< null: no boxes
};

} // namespace ZEP::Overmarks
