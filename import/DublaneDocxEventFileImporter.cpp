// SPDX-License-Identifier: GPL-3.0-only
#include "import/DublaneDocxEventFileImporter.h"

#include "core/system/Logger.h"
#include "core/text/StringUtil.h"
#include "export/word/DocxHandlerProtocol.h"
#include "import/CueSheetText.h"
#include "import/DocxCueList.h"
#include "import/RichTextSlicer.h"
#include "import/frame/ImportLimits.h"
#include "import/frame/TableBudget.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace ZEP::Overmarks
{

using Core::RichTextString;

namespace
{

constexpr int columnsOfText = 8;
constexpr int timecodeLength = 11;

const juce::String notesHeading { "\nNotes\n" };
const juce::String engineeringNotesHeading { "\nEng. Notes\n" };
const juce::String reasonHeading { "\nReason\n" };

/** The text up to the first line feed, which goes with it. Without a line feed there is none. */
juce::String takeLine (RichTextString& cue)
{
    const auto end = cue.getText().indexOfChar ('\n');
    const auto line = cue.substring (0, end).getText();
    cue = cue.substring (end + 1);
    return line;
}

juce::String takeTimecode (RichTextString& cue)
{
    const auto timecode = cue.substring (0, timecodeLength).getText();
    cue = cue.substring (timecodeLength + 1);
    return timecode;
}

} // namespace

DublaneDocxEventFileImporter::DublaneDocxEventFileImporter (const juce::String& path,
                                                            juce::String& errorMessage)
    : EventFileImporter (path, errorMessage, {})
{
    parse (errorMessage, Core::TextEncodingUTF8);
}

DublaneDocxEventFileImporter::~DublaneDocxEventFileImporter() = default;

bool DublaneDocxEventFileImporter::userMappingEnabled() const { return false; }

int DublaneDocxEventFileImporter::type() { return 8; }

void DublaneDocxEventFileImporter::parse (juce::String& errorMessage, Core::TextEncoding /*textEncoding*/)
{
    namespace Protocol = DocxHandlerProtocol;
    const juce::File list (Protocol::importJSONFilePath());

    // A list that another user has put there is none of this document's.
    if (! list.exists() || Protocol::isAStrangers (list))
        Protocol::run (Protocol::importCommandLine (
            filePath, list.getFullPathName(), { Protocol::progressFilePath(), Protocol::cancelFilePath() }));

    if (const auto error = Protocol::errorIn (juce::File (Protocol::progressFilePath())))
    {
        errorMessage = *error;
        return;
    }

    const auto most = ImportLimits::limits().bytesOfFile;
    const auto bytes = Protocol::contentOf (list, most);

    if (! bytes.has_value())
    {
        if (std::cmp_greater (list.getSize(), most))
            Core::Logger::error (filePath + ": the list of its cues can't be read: it is larger than "
                                 + juce::String (most) + " bytes");

        errorMessage = "Error reading " + filePath;
        return;
    }

    assignColumns (DocxCueList::numberOfColumns);
    const auto json = Core::StringUtil::fromUTF8 (std::string_view (*bytes).substr (0, bytes->find ('\n')));
    outcome = DocxCueList::addRows (json, rows);
    refusal.clear();

    if (outcome == DocxCueList::Outcome::noCueList)
        Core::Logger::error (filePath + ": what docxHandler has found in it is no list of cues");
    else if (outcome == DocxCueList::Outcome::cutOff)
    {
        refusal = TableBudget (json.getNumBytesAsUTF8()).wordsOfRefusal();
        Core::Logger::error (filePath + ": " + refusal + restIsLeftOut);
    }

    list.deleteFile();
}

void DublaneDocxEventFileImporter::assignColumns (int number)
{
    for (int column = 0; column < number; ++column)
        columnMap[DocxCueList::titles()[column]] = column;
}

void DublaneDocxEventFileImporter::parseFileContent (RichTextString& content)
{
    content = content.substring (content.getText().indexOfChar ('\f') + 1);
    const auto cues = parseCueBlocks (content);
    assignColumns (columnsOfText);

    TableBudget budget (content.getText().getNumBytesAsUTF8());

    for (const auto& cue : cues)
    {
        if (! budget.takeRow (columnsOfText))
        {
            Core::Logger::error ("A cue sheet: " + budget.wordsOfRefusal() + restIsLeftOut);
            break;
        }

        juce::String startTC, endTC, character, cueNumber, reason;
        RichTextString text, notes, engineeringNotes;
        const auto body = parseMandatoryTokensFromCueString (shortenCueStringByTakeNumberBoxes (cue), startTC,
                                                             endTC, character, cueNumber);
        parseOptionalTokensFromCueString (body, text, notes, engineeringNotes, reason);
        rows.push_back ({ startTC, endTC, character, text, cueNumber, notes, engineeringNotes, reason });
    }
}

std::vector<RichTextString> DublaneDocxEventFileImporter::parseCueBlocks (const RichTextString& content)
{
    const auto starts = cueStarts (content.getText());
    const RichTextSlicer slicer (content);
    std::vector<RichTextString> blocks;
    // Repeated timecodes let the cues of a text overlap, so that a small text asks for endless ones.
    const auto mostCharacters = ImportLimits::limits().charactersOfWordCues;
    auto charactersLeft = mostCharacters;

    for (std::size_t i = 1; i < starts.size(); ++i)
    {
        charactersLeft -= std::max (starts[i] - starts[i - 1], 0);

        if (charactersLeft < 0)
        {
            Core::Logger::error ("A cue sheet asks for cues of more than " + juce::String (mostCharacters)
                                 + " characters together" + restIsLeftOut);
            break;
        }

        blocks.push_back (slicer.slice (starts[i - 1], starts[i] - 1));
    }

    return blocks;
}

RichTextString DublaneDocxEventFileImporter::shortenCueStringByTakeNumberBoxes (const RichTextString& cue)
{
    const auto boxes = takeBoxesStart (cue.getText());
    return boxes.has_value() ? cue.substring (0, *boxes) : cue;
}

RichTextString DublaneDocxEventFileImporter::parseMandatoryTokensFromCueString (RichTextString cue,
                                                                                juce::String& startTC,
                                                                                juce::String& endTC,
                                                                                juce::String& character,
                                                                                juce::String& cueNumber)
{
    startTC = takeTimecode (cue);
    endTC = takeTimecode (cue);
    character = takeLine (cue);
    cueNumber = takeLine (cue);
    return cue;
}

void DublaneDocxEventFileImporter::parseOptionalTokensFromCueString (const RichTextString& cue,
                                                                     RichTextString& text,
                                                                     RichTextString& notes,
                                                                     RichTextString& engineeringNotes,
                                                                     juce::String& reason)
{
    // A heading that is missing has the place -1: what is cut there is what comes out.
    const auto notesPlace = cue.getText().indexOf (notesHeading);
    const auto engineeringNotesPlace = cue.getText().indexOf (engineeringNotesHeading);
    const auto reasonPlace = cue.getText().indexOf (reasonHeading);
    const std::array places { notesPlace, engineeringNotesPlace, reasonPlace };
    const auto headings = std::count_if (places.begin(), places.end(), [] (int place) { return place >= 0; });

    if (headings == 0)
    {
        Core::Logger::debug (
            "No optional tokens found, will read event until end. This may break with take number boxes");
        text = cue;
        return;
    }

    const auto behindNotes = notesPlace + notesHeading.length();
    const auto behindEngineeringNotes = engineeringNotesPlace + engineeringNotesHeading.length();
    text = cue.substring (0, notesPlace);
    notes = headings == 1 ? cue.substring (behindNotes) : cue.substring (behindNotes, engineeringNotesPlace);

    if (headings == 2)
        engineeringNotes = cue.substring (behindEngineeringNotes);

    if (headings == 3)
    {
        engineeringNotes = cue.substring (behindEngineeringNotes, reasonPlace);
        reason = cue.getText().substring (reasonPlace + reasonHeading.length()).removeCharacters ("\n");
    }
}

} // namespace ZEP::Overmarks
