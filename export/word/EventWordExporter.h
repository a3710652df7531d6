// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"
#include "export/frame/EventExporter.h"
#include "export/word/WordDocument.h"

#include <juce_core/juce_core.h>

#include <atomic>
#include <map>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** Writes cue sheets as Word documents, with the help of the program docxHandler of the resource folder: the documents go to it
    as JSON files in the temporary folder, and the export waits until it has ended (DocxHandlerProtocol.h).

    The rule that callers get wrong: both exports return the empty string whatever came of it. Whether a document was written
    shows in the file. And no folder on the way, be it that of the documents or the temporary one, may hold a comma.

    An export by character into a file each calls the delegate from a thread of its own too, while the tool runs. cancel() may be
    called from any thread; the tool stops by itself. Two exports at a time disturb each other unless their processes have
    temporary folders of their own. */
class OVERMARKS_API EventWordExporter final : public EventExporter
{
public:
    explicit EventWordExporter (std::shared_ptr<EventExportSettingsSet> settingsSet); ///< Not null; shared.

    /** Removes the files of the last export from the temporary folder. */
    ~EventWordExporter() override;

    juce::String exportEventsByCharacter() override;
    juce::String exportEventsByTimecode() override;
    EventExportType type() const override; ///< EventExportTypeWord.

    /** Tells the tool to stop, and an export to go no further, nor to begin. Not undone by a new export. */
    void cancel() override;

    /** Does nothing: the documents have no header. */
    void setDocumentHeader();

    /** Gives the document its front matter. @param charAndActor  whose cues it holds */
    void setDocumentFirstPageHeader (const juce::String& charAndActor);

    /** Gives the document its footer, with today's date. */
    void setDocumentFooter();

    /** Appends a cue to the document. */
    void addOneCueContent (std::shared_ptr<Event> event);

    /** Writes the document as JSON, which deleteTemporaryFiles() will remove. Without a document the file is empty, and stays.
        @param suffix  "timecode", "singlefile", or a character's identifier
        @returns the full path */
    juce::String writeAndRegisterJSONFile (juce::String suffix);

    /** Removes the two files of the talk with the tool, and the JSON files written so far. */
    void deleteTemporaryFiles();

    std::vector<juce::String> getComFilePaths() const;     ///< Full paths: from the tool, to the tool.
    std::vector<juce::String> getTmpJSONFilePaths() const; ///< Full paths, in the order of writing.

    std::unique_ptr<WordDocument> wordDocument; ///< under work; null before the first
    std::vector<juce::String> comFilePaths;     ///< from the tool, to the tool; not changed later
    std::vector<juce::String> tmpJSONFilePaths; ///< of this export, until they are removed
    std::atomic<bool> cancelled = false;        ///< set by one thread while others look

private:
    void startTool (const juce::StringArray& jsonFiles, const juce::StringArray& outputFiles) const;

    std::map<juce::String, juce::String> olderFiles; ///< JSON files that couldn't be replaced, and why
};

} // namespace ZEP::Overmarks
