// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/word/ContinuousPagesBlock.h"
#include "export/word/WordDocumentCueContent.h"
#include "export/word/WordDocumentFooter.h"
#include "export/word/WordDocumentFrontMatter.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** What one Word document is to show, on its way to docxHandler, which alone knows how such a file is made.

    A document by timecode holds its cues in `cueContentList`; one of several characters has a block for each, and the cues of
    a block count only after createContinuousPagesBlock(). One thread. */
class OVERMARKS_API WordDocument final
{
public:
    WordDocument();
    ~WordDocument();

    WordDocument (const WordDocument&) = delete;
    WordDocument& operator= (const WordDocument&) = delete;

    /** Does nothing: the documents have no header. */
    void setHeader();

    /** Gives the document a footer: size in points, icon by its full path, the rest as it is printed. */
    void setFooter (int fontSize, juce::String appIconFilePath, juce::String currentDate,
                    juce::String appVersion, juce::String wordLayout);

    /** Gives the document its front matter; the size in points. */
    void setFrontMatter (int fontSize, const EventExportProjectSettings& projectSettings,
                         const EventExportTimelineSettings& timelineSettings, juce::String charAndActor);

    /** Appends a cue without boxes for takes. */
    void addCueContent (juce::String charIconFilePath, juce::String startTCIconFilePath,
                        juce::String endTCIconFilePath, int charNameFontSize, juce::String charName,
                        int cueTextFontSize, ZEP::Core::RichTextString cueText, int cueNotesFontSize,
                        ZEP::Core::RichTextString cueNotes, int cueEngNotesFontSize,
                        ZEP::Core::RichTextString cueEngNotes, int reasonStringFontSize,
                        juce::String reasonString, int cueNumberFontSize, juce::String cueNumber,
                        int forcedNarrativeRegionFontSize, juce::String forcedNarrativeRegion,
                        int startTCFontSize, juce::String startTC, int endTCFontSize, juce::String endTC);

    /** Appends a cue with boxes for its takes. */
    void addCueContentWithTakes (juce::String charIconFilePath, juce::String startTCIconFilePath,
                                 juce::String endTCIconFilePath, int charNameFontSize, juce::String charName,
                                 int cueTextFontSize, ZEP::Core::RichTextString cueText, int cueNotesFontSize,
                                 ZEP::Core::RichTextString cueNotes, int cueEngNotesFontSize,
                                 ZEP::Core::RichTextString cueEngNotes, int reasonStringFontSize,
                                 juce::String reasonString, int cueNumberFontSize, juce::String cueNumber,
                                 int forcedNarrativeRegionFontSize, juce::String forcedNarrativeRegion,
                                 int startTCFontSize, juce::String startTC, int endTCFontSize,
                                 juce::String endTC, int numRecordedTakes, int selectedTake,
                                 int alternativeTake, int numberTakesToDisplay, int numberRowsToDisplay);

    /** Makes a block of the cues that have been added since the last one. */
    void createContinuousPagesBlock();

    /** "footer", "frontMatter", "continuousPagesBlockList", "cueContentList", each only if there is something in it. */
    [[nodiscard]] juce::DynamicObject::Ptr toJSONDynamicObject() const;

    std::unique_ptr<WordDocumentFooter> footer;                               ///< null for none
    std::unique_ptr<WordDocumentFrontMatter> frontMatter;                     ///< null for none
    std::vector<std::shared_ptr<ContinuousPagesBlock>> continuousPagesBlocks; ///< one for each character
    std::vector<std::shared_ptr<WordDocumentCueContent>> cueContentList;      ///< since the last block
};

} // namespace ZEP::Overmarks
