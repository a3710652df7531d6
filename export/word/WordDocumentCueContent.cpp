// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/WordDocumentCueContent.h"

#include <utility>

namespace ZEP::Overmarks
{

WordDocumentCueContent::WordDocumentCueContent (
    juce::String charIconFilePathValue, juce::String startTCIconFilePathValue,
    juce::String endTCIconFilePathValue, int charNameFontSizeValue, juce::String charNameValue,
    int cueTextFontSizeValue, ZEP::Core::RichTextString cueTextValue, int cueNotesFontSizeValue,
    ZEP::Core::RichTextString cueNotesValue, int cueEngNotesFontSizeValue,
    ZEP::Core::RichTextString cueEngNotesValue, int reasonStringFontSizeValue, juce::String reasonStringValue,
    int cueNumberFontSizeValue, juce::String cueNumberValue, int forcedNarrativeRegionFontSizeValue,
    juce::String forcedNarrativeRegionValue, int startTCFontSizeValue, juce::String startTCValue,
    int endTCFontSizeValue, juce::String endTCValue)
    : charIconFilePath (std::move (charIconFilePathValue)),
      startTCIconFilePath (std::move (startTCIconFilePathValue)),
      endTCIconFilePath (std::move (endTCIconFilePathValue)),
      charNameFontSize (charNameFontSizeValue),
      charName (std::move (charNameValue)),
      cueTextFontSize (cueTextFontSizeValue),
      cueText (std::move (cueTextValue)),
      cueNotesFontSize (cueNotesFontSizeValue),
      cueNotes (std::move (cueNotesValue)),
      cueEngNotesFontSize (cueEngNotesFontSizeValue),
      cueEngNotes (std::move (cueEngNotesValue)),
      reasonStringFontSize (reasonStringFontSizeValue),
      reasonString (std::move (reasonStringValue)),
      cueNumberFontSize (cueNumberFontSizeValue),
      cueNumber (std::move (cueNumberValue)),
      forcedNarrativeRegionFontSize (forcedNarrativeRegionFontSizeValue),
      forcedNarrativeRegion (std::move (forcedNarrativeRegionValue)),
      startTCFontSize (startTCFontSizeValue),
      startTC (std::move (startTCValue)),
      endTCFontSize (endTCFontSizeValue),
      endTC (std::move (endTCValue))
{
}

WordDocumentCueContent::~WordDocumentCueContent() = default;

void WordDocumentCueContent::setTakes (int numRecordedTakes, int selectedTake, int alternativeTake,
                                       int numberTakesToDisplay, int numberRowsToDisplay)
{
    cueTakes = std::make_unique<WordDocumentCueTakes> (WordDocumentCueTakes {
        numRecordedTakes, selectedTake, alternativeTake, numberTakesToDisplay, numberRowsToDisplay });
}

juce::DynamicObject::Ptr WordDocumentCueContent::toJSONDynamicObject() const
{
    juce::DynamicObject::Ptr object = new juce::DynamicObject();
    object->setProperty ("charIconFilePath", charIconFilePath);
    object->setProperty ("startTCIconFilePath", startTCIconFilePath);
    object->setProperty ("endTCIconFilePath", endTCIconFilePath);
    object->setProperty ("charNameFontSize", charNameFontSize);
    object->setProperty ("charName", charName);
    object->setProperty ("cueTextFontSize", cueTextFontSize);
    object->setProperty ("cueText", juce::var (cueText.toJSONDynamicObject().get()));
    object->setProperty ("cueNotesFontSize", cueNotesFontSize);
    object->setProperty ("cueNotes", juce::var (cueNotes.toJSONDynamicObject().get()));
    object->setProperty ("cueEngNotesFontSize", cueEngNotesFontSize);
    object->setProperty ("cueEngNotes", juce::var (cueEngNotes.toJSONDynamicObject().get()));
    object->setProperty ("reasonStringFontSize", reasonStringFontSize);
    object->setProperty ("reasonString", reasonString);
    object->setProperty ("cueNumberFontSize", cueNumberFontSize);
    object->setProperty ("cueNumber", cueNumber);
    object->setProperty ("forcedNarrativeRegionFontSize", forcedNarrativeRegionFontSize);
    object->setProperty ("forcedNarrativeRegion", forcedNarrativeRegion);
    object->setProperty ("startTCFontSize", startTCFontSize);
    object->setProperty ("startTC", startTC);
    object->setProperty ("endTCFontSize", endTCFontSize);
    object->setProperty ("endTC", endTC);

    if (cueTakes != nullptr)
        object->setProperty ("cueTakes", juce::var (cueTakes->toJSONDynamicObject().get()));

    return object;
}

} // namespace ZEP::Overmarks
