// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/WordDocument.h"

#include <utility>

namespace ZEP::Overmarks
{
namespace
{

template <typename Part>
juce::Array<juce::var> jsonOf (const std::vector<std::shared_ptr<Part>>& parts)
{
    juce::Array<juce::var> list;

    for (const auto& part : parts)
        list.add (juce::var (part->toJSONDynamicObject().get()));

    return list;
}

} // namespace

WordDocument::WordDocument() = default;
WordDocument::~WordDocument() = default;

void WordDocument::setHeader() {}

void WordDocument::setFooter (int fontSize, juce::String appIconFilePath, juce::String currentDate,
                              juce::String appVersion, juce::String wordLayout)
{
    footer = std::make_unique<WordDocumentFooter> (
        WordDocumentFooter { fontSize, std::move (appIconFilePath), std::move (currentDate),
                             std::move (appVersion), std::move (wordLayout) });
}

void WordDocument::setFrontMatter (int fontSize, const EventExportProjectSettings& projectSettings,
                                   const EventExportTimelineSettings& timelineSettings,
                                   juce::String charAndActor)
{
    frontMatter = std::make_unique<WordDocumentFrontMatter> (
        WordDocumentFrontMatter { fontSize, projectSettings, timelineSettings, std::move (charAndActor) });
}

void WordDocument::addCueContent (juce::String charIconFilePath, juce::String startTCIconFilePath,
                                  juce::String endTCIconFilePath, int charNameFontSize, juce::String charName,
                                  int cueTextFontSize, ZEP::Core::RichTextString cueText,
                                  int cueNotesFontSize, ZEP::Core::RichTextString cueNotes,
                                  int cueEngNotesFontSize, ZEP::Core::RichTextString cueEngNotes,
                                  int reasonStringFontSize, juce::String reasonString, int cueNumberFontSize,
                                  juce::String cueNumber, int forcedNarrativeRegionFontSize,
                                  juce::String forcedNarrativeRegion, int startTCFontSize,
                                  juce::String startTC, int endTCFontSize, juce::String endTC)
{
    cueContentList.push_back (std::make_shared<WordDocumentCueContent> (
        std::move (charIconFilePath), std::move (startTCIconFilePath), std::move (endTCIconFilePath),
        charNameFontSize, std::move (charName), cueTextFontSize, std::move (cueText), cueNotesFontSize,
        std::move (cueNotes), cueEngNotesFontSize, std::move (cueEngNotes), reasonStringFontSize,
        std::move (reasonString), cueNumberFontSize, std::move (cueNumber), forcedNarrativeRegionFontSize,
        std::move (forcedNarrativeRegion), startTCFontSize, std::move (startTC), endTCFontSize,
        std::move (endTC)));
}

void WordDocument::addCueContentWithTakes (
    juce::String charIconFilePath, juce::String startTCIconFilePath, juce::String endTCIconFilePath,
    int charNameFontSize, juce::String charName, int cueTextFontSize, ZEP::Core::RichTextString cueText,
    int cueNotesFontSize, ZEP::Core::RichTextString cueNotes, int cueEngNotesFontSize,
    ZEP::Core::RichTextString cueEngNotes, int reasonStringFontSize, juce::String reasonString,
    int cueNumberFontSize, juce::String cueNumber, int forcedNarrativeRegionFontSize,
    juce::String forcedNarrativeRegion, int startTCFontSize, juce::String startTC, int endTCFontSize,
    juce::String endTC, int numRecordedTakes, int selectedTake, int alternativeTake, int numberTakesToDisplay,
    int numberRowsToDisplay)
{
    auto cue = std::make_shared<WordDocumentCueContent> (
        std::move (charIconFilePath), std::move (startTCIconFilePath), std::move (endTCIconFilePath),
        charNameFontSize, std::move (charName), cueTextFontSize, std::move (cueText), cueNotesFontSize,
        std::move (cueNotes), cueEngNotesFontSize, std::move (cueEngNotes), reasonStringFontSize,
        std::move (reasonString), cueNumberFontSize, std::move (cueNumber), forcedNarrativeRegionFontSize,
        std::move (forcedNarrativeRegion), startTCFontSize, std::move (startTC), endTCFontSize,
        std::move (endTC));
    cue->setTakes (numRecordedTakes, selectedTake, alternativeTake, numberTakesToDisplay,
                   numberRowsToDisplay);
    cueContentList.push_back (std::move (cue));
}

void WordDocument::createContinuousPagesBlock()
{
    continuousPagesBlocks.push_back (
        std::make_shared<ContinuousPagesBlock> (std::exchange (cueContentList, {})));
}

juce::DynamicObject::Ptr WordDocument::toJSONDynamicObject() const
{
    juce::DynamicObject::Ptr object = new juce::DynamicObject();

    if (footer != nullptr)
        object->setProperty ("footer", juce::var (footer->toJSONDynamicObject().get()));
    if (frontMatter != nullptr)
        object->setProperty ("frontMatter", juce::var (frontMatter->toJSONDynamicObject().get()));
    if (! continuousPagesBlocks.empty())
        object->setProperty ("continuousPagesBlockList", jsonOf (continuousPagesBlocks));
    if (! cueContentList.empty())
        object->setProperty ("cueContentList", jsonOf (cueContentList));

    return object;
}

} // namespace ZEP::Overmarks
