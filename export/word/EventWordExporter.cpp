// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/EventWordExporter.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/Logger.h"
#include "core/system/SystemUtility.h"
#include "core/text/ObjectJSON.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/CellTexts.h"
#include "export/frame/CharacterHeaderText.h"
#include "export/frame/OutputFileNames.h"
#include "export/word/DocxHandlerProtocol.h"
#include "export/word/ProgressBarHelper.h"

#include <cmath>
#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::Logger;
using ZEP::Core::SystemUtility;

namespace
{

const juce::String extension { ".docx" };

// Sizes of the print in points.
constexpr int frontMatterSize = 5;
constexpr int footerSize = 8;
constexpr int charNameSize = 13;
constexpr int cueTextSize = 14;
constexpr int cueTextSizeOfActors = 15;
constexpr int smallSize = 8; // notes, reason, region and times
constexpr int cueNumberSize = 12;

constexpr int takesOfARow = 25;

juce::String resource (const char* name) { return SystemUtility::bundleResourcePath() + "/" + name; }

juce::String reasonOf (const Event& event)
{
    const auto* reasons = ADRCueReasonsManager::sharedManager();
    const auto text = reasons->getReasonFromInteger (event.getReason() + 1);
    return text == "None" ? juce::String() : text;
}

juce::String regionOf (const Event& event)
{
    return event.isForcedNarrative() ? CellTexts::region (event.getForcedNarrativeRegion()) : "";
}

/** The characters of all blocks as the front matter names them. */
juce::String charactersOf (const ByCharacterWalk& walk)
{
    std::vector<std::shared_ptr<ZEP::Core::ADRCharacter>> characters;

    for (const auto& block : walk.blocks())
        characters.push_back (block.character);

    return joinedCharacterHeaderText (characters, { true, false, false });
}

void roundNumbers (juce::var& value);

/** The framework writes as many decimal places as a number has, whatever it is told. */
void roundNumbers (juce::DynamicObject& object)
{
    auto& members = object.getProperties();

    for (int i = 0; i < members.size(); ++i)
        roundNumbers (*members.getVarPointerAt (i));
}

void roundNumbers (juce::var& value)
{
    constexpr double tenths = 10.0;

    if (value.isDouble())
        value = std::round (static_cast<double> (value) * tenths) / tenths;
    else if (auto* list = value.getArray())
        for (auto& element : *list)
            roundNumbers (element);
    else if (auto* object = value.getDynamicObject())
        roundNumbers (*object);
}

} // namespace

EventWordExporter::EventWordExporter (std::shared_ptr<EventExportSettingsSet> settingsSet)
    : EventExporter (std::move (settingsSet)),
      comFilePaths { DocxHandlerProtocol::progressFilePath(), DocxHandlerProtocol::cancelFilePath() }
{
}

EventWordExporter::~EventWordExporter() { deleteTemporaryFiles(); }

EventExportType EventWordExporter::type() const { return EventExportTypeWord; }

juce::String EventWordExporter::exportEventsByTimecode()
{
    deleteTemporaryFiles();
    const auto events = settings->events;
    wordDocument = std::make_unique<WordDocument>();
    setDocumentFooter();
    setDocumentFirstPageHeader (joinedCharacterHeaderTextOfEvents (events, { true, true, true }));

    for (const auto& event : events)
        addOneCueContent (event);

    const OutputFileNames names (settings->outputDirectory, settings->fileName, extension);
    startTool ({ writeAndRegisterJSONFile ("timecode") }, { names.single().getFullPathName() });

    if (delegate != nullptr)
        delegate->progressChanged (this, 1, 1);

    deleteTemporaryFiles();
    return {};
}

juce::String EventWordExporter::exportEventsByCharacter()
{
    deleteTemporaryFiles();
    const ByCharacterWalk walk (*settings, extension, ",");
    const auto joined = walk.isCombined() ? charactersOf (walk) : juce::String();
    juce::StringArray jsonFiles;
    juce::StringArray outputFiles;

    for (const auto& block : walk.blocks())
    {
        if (cancelled)
            return {};

        if (wordDocument == nullptr || ! walk.isCombined())
        {
            wordDocument = std::make_unique<WordDocument>();
            setDocumentFirstPageHeader (
                walk.isCombined() ? joined : characterHeaderText (block.character, { false, false, false }));
            setDocumentFooter();
        }

        for (const auto& event : block.events)
            addOneCueContent (event);

        if (walk.isCombined())
        {
            wordDocument->createContinuousPagesBlock();
            continue;
        }

        jsonFiles.add (writeAndRegisterJSONFile (block.characterID));
        outputFiles.add (block.file.getFullPathName());
    }

    if (walk.isCombined())
    {
        jsonFiles.add (writeAndRegisterJSONFile ("singlefile"));
        outputFiles.add (walk.singleFile().getFullPathName());
    }

    const auto numFiles = jsonFiles.size();
    const auto helper =
        walk.isCombined() ? nullptr : std::make_unique<ProgressBarHelper> (this, delegate, numFiles);
    startTool (jsonFiles, outputFiles);

    if (delegate != nullptr)
        delegate->progressChanged (this, numFiles, numFiles);

    return {};
}

void EventWordExporter::startTool (const juce::StringArray& jsonFiles,
                                   const juce::StringArray& outputFiles) const
{
    // One that comes later is in the file of the word to stop, which nobody removes any more.
    if (cancelled)
        return;

    for (const auto& path : jsonFiles)
        if (const auto older = olderFiles.find (path); older != olderFiles.end())
        {
            Logger::error (path + older->second + ", so docxHandler isn't started");
            return;
        }

    const juce::StringArray comFiles (comFilePaths.data(), static_cast<int> (comFilePaths.size()));
    DocxHandlerProtocol::run (DocxHandlerProtocol::exportCommandLine (jsonFiles, outputFiles, comFiles));
}

void EventWordExporter::cancel()
{
    // In this order: an export that has just begun removes the word, and looks at the flag behind it.
    cancelled = true;
    DocxHandlerProtocol::writeCancel (comFilePaths[1]);
}

void EventWordExporter::setDocumentHeader() {}

void EventWordExporter::setDocumentFirstPageHeader (const juce::String& charAndActor)
{
    if (wordDocument != nullptr)
        wordDocument->setFrontMatter (frontMatterSize, settings->projectSettings, settings->timelineSettings,
                                      charAndActor);
}

void EventWordExporter::setDocumentFooter()
{
    if (wordDocument != nullptr)
        wordDocument->setFooter (
            footerSize, resource ("dbln-app-icon.png"), juce::Time::getCurrentTime().formatted ("%d/%m/%Y"),
            settings->options.at (EventExportAppVersionKey).toString(), exportLayoutName (settings->layout));
}

void EventWordExporter::addOneCueContent (std::shared_ptr<Event> event)
{
    if (wordDocument == nullptr)
        return;

    const auto character = event->character();
    const auto textSize = settings->layout == EventExportLayoutActor ? cueTextSizeOfActors : cueTextSize;
    const auto addWith = [&] (auto operation, auto... takes)
    {
        (wordDocument.get()->*operation) (
            resource ("pdf-export-character-icon.png"), resource ("pdf-export-in-point-icon.png"),
            resource ("pdf-export-out-point-icon.png"), charNameSize,
            character != nullptr ? character->name : juce::String(), textSize,
            event->getText().replaceIllegalASCIICharacters(), smallSize,
            event->getNotes().replaceIllegalASCIICharacters(), smallSize,
            event->getEngineeringNotes().replaceIllegalASCIICharacters(), smallSize, reasonOf (*event),
            cueNumberSize, event->getCueNumber(), smallSize, regionOf (*event), smallSize,
            event->getStartTCString(), smallSize, event->getEndTCString(), takes...);
    };

    if (! settings->showTakeNumbers)
    {
        addWith (&WordDocument::addCueContent);
        return;
    }

    const auto rows = event->getNumRecordedTakes() <= takesOfARow ? 1 : 2;
    addWith (&WordDocument::addCueContentWithTakes, event->getNumRecordedTakes(), event->getSelectedTake(),
             event->getAltTake(), takesOfARow * rows, rows);
}

juce::String EventWordExporter::writeAndRegisterJSONFile (juce::String suffix)
{
    const juce::File file (DocxHandlerProtocol::exportJSONFilePath (suffix));
    auto path = file.getFullPathName();
    std::string json;

    if (wordDocument != nullptr)
    {
        const auto object = wordDocument->toJSONDynamicObject();
        roundNumbers (*object);
        json = Core::jsonTextOf (*object, true);
        tmpJSONFilePaths.push_back (path);
    }

    const auto result = DocxHandlerProtocol::replaceFile (file, json);

    // Else today's document would be made of an older list, or of somebody else's. What is missing the tool tells by itself.
    if (result.failed() && DocxHandlerProtocol::isAStrangers (file))
        olderFiles[path] = " belongs to another user";
    else if (result.failed() && file.exists())
        olderFiles[path] = " can't be replaced (" + result.getErrorMessage() + ")";

    return path;
}

void EventWordExporter::deleteTemporaryFiles()
{
    for (const auto& path : comFilePaths)
        juce::File (path).deleteFile();

    for (const auto& path : tmpJSONFilePaths)
        juce::File (path).deleteFile();

    tmpJSONFilePaths.clear();
    olderFiles.clear();
}

std::vector<juce::String> EventWordExporter::getComFilePaths() const { return comFilePaths; }

std::vector<juce::String> EventWordExporter::getTmpJSONFilePaths() const { return tmpJSONFilePaths; }

} // namespace ZEP::Overmarks
