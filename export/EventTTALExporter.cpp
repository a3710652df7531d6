// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventTTALExporter.h"

#include "core/system/SystemUtility.h"
#include "core/text/ObjectJSON.h"
#include "core/text/WideObject.h"
#include "core/timecode/TCToolbox.h"
#include "export/TTALActionTime.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/OutputFile.h"
#include "export/frame/OutputFileNames.h"
#include "list/TTALFormat.h"

#include <limits>
#include <optional>
#include <set>
#include <utility>

namespace ZEP::Overmarks
{

using Core::ADRCharacterMap;
using Core::TCToolbox;
using Core::TimeInfo;

namespace
{

const juce::String extension { ".ttal" };

using Object = juce::ReferenceCountedObjectPtr<juce::DynamicObject>;

Object newObject() { return new juce::DynamicObject(); }

/** Frames from the time origin to the first frame of action. */
int framesToAction (const std::shared_ptr<TimeInfo>& timeInfo)
{
    const auto time = timeInfo != nullptr ? *timeInfo : TimeInfo();
    const auto span =
        TCToolbox::subtractTCTimes (time.timeOrigin, time.getFirstFrameOfAction(), time.tcDef, nullptr);
    return TCToolbox::convertToAbsoluteFrames (span, time.tcDef);
}

/** The frame behind the last one of an event. */
int frameBehind (int lastFrame)
{
    return lastFrame == std::numeric_limits<int>::max() ? lastFrame : lastFrame + 1;
}

juce::String characterIdOf (const Event& event)
{
    const auto character = event.character();
    return character != nullptr
               ? Event::getADRCharacterMap()->characterIDForCharacterWithName (character->name)
               : juce::String (TTAL::kNullCharacter);
}

juce::var annotationsOf (const Event& event)
{
    const auto annotations = newObject();
    annotations->setProperty (TTAL::kTypes, juce::Array<juce::var>());
    annotations->setProperty (TTAL::kText, event.getNotes().getText());
    return annotations.get();
}

} // namespace

EventTTALExporter::EventTTALExporter (std::shared_ptr<EventExportSettingsSet> settingsSet)
    : EventExporter (std::move (settingsSet))
{
}

EventTTALExporter::~EventTTALExporter() = default;

EventExportType EventTTALExporter::type() const { return EventExportTypeTTAL; }

juce::String EventTTALExporter::exportEventsByTimecode()
{
    const auto events = settings->events;
    return writeEventsToTTALFile (
        events, OutputFileNames (settings->outputDirectory, settings->fileName, extension).single());
}

juce::String EventTTALExporter::exportEventsByCharacter()
{
    const ByCharacterWalk walk (*settings, extension);

    if (walk.isCombined())
    {
        Events joined;

        for (const auto& [id, events] : settings->eventsByCharacter)
            joined.insert (joined.end(), events.begin(), events.end());

        return writeEventsToTTALFile (joined, walk.singleFile());
    }

    return walk.writeFiles (*this, ByCharacterWalk::AfterFailure::stop,
                            [this] (const auto& block)
                            { return writeEventsToTTALFile (block.events, block.file); });
}

juce::String EventTTALExporter::writeEventsToTTALFile (const Events& events, const juce::File& file)
{
    if (events.empty())
        return {};

    OutputFile output (file);
    std::string json;

    {
        const auto timeInfo = events.front()->getTimeInfo();
        const TTALActionTime actionTime (events, framesToAction (timeInfo));
        const auto root = newObject();
        root->setProperty (TTAL::kMeta, buildMetaBlock (timeInfo, settings->timelineSettings.language));
        root->setProperty (TTAL::kEvents, buildEventsBlock (events));
        root->setProperty (TTAL::kCharacters, buildCharactersBlock());
        json = Core::jsonTextOf (*root, false);
    }

    output.write (json.data(), json.size());

    if (output.finish())
        return {};

    return "Error writing file to " + file.getFullPathName();
}

juce::var EventTTALExporter::buildMetaBlock (std::shared_ptr<TimeInfo> timeInfo, const juce::String& language)
{
    const auto def = timeInfo != nullptr ? timeInfo->tcDef : Core::_TCDef();
    const auto rate =
        static_cast<float> (def.frameRateNumerator) / static_cast<float> (def.frameRateDenominator);

    const auto meta = newObject();
    meta->setProperty (TTAL::kTool, "Dublane " + Core::SystemUtility::executableVersion());
    meta->setProperty (TTAL::kFps, TTAL::rateName (TCToolbox::timecodeFramerateFromFPS (rate, false)));
    meta->setProperty (TTAL::kLang, language);
    meta->setProperty (TTAL::kTimeFormat, TTAL::kFrames);
    return meta.get();
}

juce::var EventTTALExporter::buildEventsBlock (const Events& events)
{
    const auto cast = Event::getADRCharacterMap();
    std::optional<ADRCharacterMap::NamesAtRest> namesAtRest;
    const juce::ReferenceCountedObjectPtr<Core::WideObject> block (new Core::WideObject());
    std::set<juce::String> taken;

    if (cast != nullptr)
        namesAtRest.emplace (*cast);

    for (const auto& event : events)
    {
        auto id = event->getUuid();

        // A second member of the same name would take the place of the first, and one without a name can't be read.
        while (id.isEmpty() || ! taken.insert (id).second)
            id = juce::Uuid().toDashedString();

        block->setMember (id, buildEvent (event));
    }

    return block.get();
}

juce::var EventTTALExporter::buildEvent (const std::shared_ptr<Event>& event)
{
    const auto object = newObject();
    object->setProperty (TTAL::kStart, event->getInPointFrameIndex());
    object->setProperty (TTAL::kEnd, frameBehind (event->getEndFrameIndex()));
    object->setProperty (TTAL::kCue, event->getCueNumber());
    object->setProperty (TTAL::kTxt, event->getText().getText());

    if (event->isForcedNarrative())
    {
        object->setProperty (TTAL::kType, TTAL::kForcedNarrative);
        object->setProperty (TTAL::kRgn, TTALStringForForcedNarrativeRegion (event));
    }
    else
    {
        addTextStylesObject (event->getText(), object);
    }

    object->setProperty (TTAL::kCharacterId, characterIdOf (*event));
    object->setProperty (TTAL::kDubAnnotations, annotationsOf (*event));
    return object.get();
}

juce::var EventTTALExporter::buildCharactersBlock()
{
    const auto cast = Event::getADRCharacterMap();
    const juce::ReferenceCountedObjectPtr<Core::WideObject> block (new Core::WideObject());

    if (cast == nullptr)
        return block.get();

    const ADRCharacterMap::NamesAtRest namesAtRest (*cast);

    for (const auto& character : cast->characters())
    {
        const auto object = newObject();
        object->setProperty (TTAL::kName, character->name);
        block->setMember (cast->characterIDForCharacterWithName (character->name), object.get());
    }

    return block.get();
}

void EventTTALExporter::addTextStylesObject (const Core::RichTextString& text, Object eventObject)
{
    juce::Array<juce::var> styles;

    for (const auto& run : text.formattedRuns())
    {
        if (! run.font.isBold() && ! run.font.isItalic())
            continue;

        const auto style = newObject();
        style->setProperty (TTAL::kFrom, run.range.getStart());
        style->setProperty (TTAL::kTo, run.range.getEnd());
        style->setProperty (TTAL::kType, run.font.isBold() ? TTAL::kBold : TTAL::kItalic);
        styles.add (style.get());
    }

    eventObject->setProperty (TTAL::kStyles, styles);
}

juce::String EventTTALExporter::TTALStringForForcedNarrativeRegion (std::shared_ptr<Event> event)
{
    switch (event->getForcedNarrativeRegion())
    {
        case ForcedNarrativeRegionTop: return TTAL::kTop;
        case ForcedNarrativeRegionLeft: return TTAL::kLeft;
        case ForcedNarrativeRegionRight: return TTAL::kRight;
        case ForcedNarrativeRegionBottom: break;
    }

    return TTAL::kBottom;
}

} // namespace ZEP::Overmarks
