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

    juce::String charIconFilePath;                  ///< full path
    juce::String startTCIconFilePath;               ///< full path
    juce::String endTCIconFilePath;                 ///< full path
    int charNameFontSize;                           ///< of `charName`
    juce::String charName;                          ///< as printed; empty for none
    int cueTextFontSize;                            ///< of `cueText`; runs with a size of their own keep it
    ZEP::Core::RichTextString cueText;              ///< what is spoken, with its looks
    int cueNotesFontSize;                           ///< of `cueNotes`
    ZEP::Core::RichTextString cueNotes;             ///< empty for none
    int cueEngNotesFontSize;                        ///< of `cueEngNotes`
    ZEP::Core::RichTextString cueEngNotes;          ///< for the engineer; empty for none
    int reasonStringFontSize;                       ///< of `reasonString`
    juce::String reasonString;                      ///< empty without a reason
    int cueNumberFontSize;                          ///< of `cueNumber`
    juce::String cueNumber;                         ///< as printed
    int forcedNarrativeRegionFontSize;              ///< of `forcedNarrativeRegion`
    juce::String forcedNarrativeRegion;             ///< empty for what is no forced narrative
    int startTCFontSize;                            ///< of `startTC`
    juce::String startTC;                           ///< timecode of the in point, as printed
    int endTCFontSize;                              ///< of `endTC`
    juce::String endTC;                             ///< timecode of the end, as printed
    std::unique_ptr<WordDocumentCueTakes> cueTakes; ///< null: no boxes
};

} // namespace ZEP::Overmarks
