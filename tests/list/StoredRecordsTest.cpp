// SPDX-License-Identifier: GPL-3.0-only
// Every record as it has once been stored, in its default form and with a value in each field. Files of every version have
// to be readable for ever, so these files are never made again and the values stand here as literals.
//
// A new record, or a new form of one, gets a file of its own:
//     OVERMARKS_NEW_RECORDS=tests/data/records build/dev/bin/test_list --gtest_filter='StoredRecords.*'
// writes those that are missing, and none that is there.
#include "list/ProjectFileSupport.h"

#include "event/EventFields.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace ZEP::Overmarks::Testing
{
namespace
{

using namespace tessera1;
using ZEP::Core::RichTextString;

ProtoRichTextAttribute fullAttribute()
{
    ProtoRichTextAttribute record;
    const auto font = RichTextString::withStrikethrough (
        juce::Font ("Courier New", 18.5f, juce::Font::bold | juce::Font::italic | juce::Font::underlined)
            .withHorizontalScale (0.75f)
            .withExtraKerningFactor (0.125f),
        true);
    RichTextString::applyStringAttributeToProtoObject ({ { 2, 5 }, font, juce::Colour (0x80ff4020) },
                                                       &record);
    return record;
}

void fill (juce::String& field, const std::string& name)
{
    field =
        juce::String (name) + juce::String (juce::CharPointer_UTF8 (" \xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80"));
}

void fill (RichTextString& field, const std::string& name)
{
    juce::String plain;
    fill (plain, name);
    field = RichTextString (plain);
    field.setColour ({ 0, 2 }, juce::Colour (0xffff0000));
    const auto record = fullAttribute();
    field.applyAttributes ({ RichTextString::attributeFromProtoObject (&record) });
}

/** An event with a value in each field, a different one for each number. */
std::shared_ptr<Event> fullEvent()
{
    auto made = std::make_shared<Event>();
    int next = 2;
    EventFields::visit (*made,
                        [&next] (const char* name, auto& field)
                        {
                            using Field = std::decay_t<decltype (field)>;
                            if constexpr (std::is_same_v<Field, bool>)
                                field = std::string (name) != "done";
                            else if constexpr (std::is_same_v<Field, float>)
                                field = 71.5f;
                            else if constexpr (std::is_same_v<Field, EventType>)
                                field = EventTypeFlutter;
                            else if constexpr (std::is_same_v<Field, ForcedNarrativeRegion>)
                                field = ForcedNarrativeRegionLeft;
                            else if constexpr (std::is_same_v<Field, int>)
                                field = ++next;
                            else
                                fill (field, name);
                        });
    return made;
}

std::shared_ptr<Event> doneEvent()
{
    auto made = std::make_shared<Event>();
    setField (*made, "uuid", juce::String ("done"));
    setField (*made, "done", true);
    return made;
}

ProtoTimecode invalidTimecode()
{
    auto project = Project::createEmpty (timeInfoAt ("25"));
    project.timeInfo->timeOrigin = ZEP::Core::TCToolbox::tcTimeFromString ("no timecode");
    return recordIn (bytesOf (project)).timeinfo().timeorigin();
}

Project fullProject()
{
    auto project = Project::createEmpty (timeInfoAt ("29.97df", "01:02:03:04"));
    fill (project.name, "name");
    project.timeInfo->timeOrigin.subFrames = 5;
    project.timeInfo->timeOrigin.subFramesPerFrame = 100;
    project.timeInfo->setFirstFrameOfAction (ZEP::Core::TCToolbox::tcTimeFromString ("10:11:12:13"));
    for (const juce::String id : { "c1", "c2" })
    {
        auto character = std::make_shared<ZEP::Core::ADRCharacter> ("name of " + id);
        character->prefix = "prefix of " + id;
        character->actor = "actor of " + id;
        project.characters->addCharacter (character, true, id);
    }
    project.userReasons = { "Dentist", "", "Aeroplane" };
    int next = 0;
    DocumentSettings::visit (project.documents,
                             [&next] (const char* name, auto& field)
                             {
                                 if constexpr (std::is_same_v<std::decay_t<decltype (field)>, juce::String>)
                                     fill (field, name);
                                 else if constexpr (std::is_same_v<std::decay_t<decltype (field)>, int>)
                                     field = ++next;
                                 else
                                     field = true;
                             });
    setField (*project.list->fadeInEvent, "uuid", juce::String ("fade in"));
    setField (*project.list->fadeOutEvent, "uuid", juce::String ("fade out"));
    project.list->events.push_back (fullEvent());
    project.list->sortKey = "CueNumber";
    project.list->sortDescending = true;
    return project;
}

template <typename Record, typename Object>
Record recordOf (Object& object)
{
    Record record;
    object.fillProtoObject (&record);
    return record;
}

class StoredRecords : public OvermarksTest
{
protected:
    static void SetUpTestSuite()
    {
        if (const char* folderOfRecords = std::getenv ("OVERMARKS_NEW_RECORDS"))
            writeMissing (folderOfRecords);
    }

    static void writeMissing (const std::filesystem::path& folder)
    {
        const auto full = recordIn (bytesOf (fullProject()));
        ProtoRichTextAttribute attribute;
        RichTextString::applyStringAttributeToProtoObject (
            { {}, RichTextString::defaultFont(), juce::Colours::black }, &attribute);
        Event event;
        const auto list = recordIn (bytesOf (Project::createEmpty (std::make_shared<ZEP::Core::TimeInfo>())));
        const std::pair<const char*, std::string> files[] = {
            { "attribute.default.bin", attribute.SerializeAsString() },
            { "attribute.full.bin", fullAttribute().SerializeAsString() },
            { "event.default.bin", recordOf<ProtoOvermark> (event).SerializeAsString() },
            { "event.full.bin", recordOf<ProtoOvermark> (*fullEvent()).SerializeAsString() },
            { "event.done.bin", recordOf<ProtoOvermark> (*doneEvent()).SerializeAsString() },
            { "list.default.bin", list.list().SerializeAsString() },
            { "list.full.bin", full.list().SerializeAsString() },
            { "timecode.default.bin", list.timeinfo().timeorigin().SerializeAsString() },
            { "timecode.full.bin", full.timeinfo().timeorigin().SerializeAsString() },
            { "timecode.invalid.bin", invalidTimecode().SerializeAsString() },
            { "time_info.default.bin", list.timeinfo().SerializeAsString() },
            { "time_info.full.bin", full.timeinfo().SerializeAsString() },
            { "character.default.bin", ProtoCharacter().SerializeAsString() },
            { "character.full.bin", full.characters (0).SerializeAsString() },
            { "document_settings.default.bin", list.documentsettings().SerializeAsString() },
            { "document_settings.full.bin", full.documentsettings().SerializeAsString() },
            { "project.default.bin", list.SerializeAsString() },
            { "project.full.bin", full.SerializeAsString() },
            { "form_1.overmarks", bytesOf (fullProject()) },
        };

        for (const auto& [name, bytes] : files)
            if (! std::filesystem::exists (folder / name))
                std::ofstream (folder / name, std::ios::binary) << bytes;
    }

    /** The record of a file, which this version has to know to its last field. */
    template <typename Record>
    static Record record (const std::string& name)
    {
        Record read;
        EXPECT_TRUE (read.ParseFromString (stored (name))) << name;
        EXPECT_TRUE (read.GetReflection()->GetUnknownFields (read).empty()) << name;
        return read;
    }

    static std::shared_ptr<Event> eventOf (const std::string& name)
    {
        auto read = record<ProtoOvermark> (name);
        auto event = std::make_shared<Event>();
        EXPECT_TRUE (event->initWithProtoObject (&read));
        return event;
    }

    /** The project around one part of a record. */
    static Project projectWith (const ProtoProject& parts)
    {
        ProtoProject whole;
        whole.mutable_list()->ParseFromString (stored ("list.default.bin"));
        whole.MergeFrom (parts);
        return ProjectRecord::read (whole);
    }
};

juce::String utf8 (const char* text) { return juce::String (juce::CharPointer_UTF8 (text)); }

/** The full look as a literal. */
void expectFullLook (const RichTextString::Attribute& run)
{
    EXPECT_EQ (run.range, juce::Range<int> (2, 5));
    EXPECT_EQ (run.colour.getARGB(), 0x80ff4020u);
    EXPECT_EQ (run.font.getTypefaceName(), juce::String ("Courier New"));
    EXPECT_EQ (run.font.getTypefaceStyle(), juce::String ("Bold Italic Strikethrough"));
    EXPECT_EQ (run.font.getHeight(), 18.5f);
    EXPECT_EQ (run.font.getHorizontalScale(), 0.75f);
    EXPECT_EQ (run.font.getExtraKerningFactor(), 0.125f);
    EXPECT_TRUE (run.font.isUnderlined());
    EXPECT_TRUE (RichTextString::isStruckThrough (run.font));
}

void expectFullText (const RichTextString& text, const juce::String& characters)
{
    EXPECT_EQ (text.getText(), characters);
    const auto runs = text.formattedRuns();
    ASSERT_EQ (runs.size(), 2u);
    EXPECT_EQ (runs[0].range, juce::Range<int> (0, 2));
    EXPECT_EQ (runs[0].colour.getARGB(), 0xffff0000u);
    expectFullLook (runs[1]);
}

void expectFullEvent (const Event& event)
{
    EXPECT_EQ (event.getUuid(), utf8 ("uuid ä€😀"));
    EXPECT_EQ (event.getType(), EventTypeFlutter);
    EXPECT_EQ (event.getCueNumber(), utf8 ("cueNumber ä€😀"));
    EXPECT_EQ (event.getCharacterID(), utf8 ("characterID ä€😀"));
    EXPECT_EQ (timesOf (event), "3|4..5");
    EXPECT_EQ (event.getStreamerDuration(), 6);
    EXPECT_EQ (event.getBeatsPerMinute(), 71.5f);
    expectFullText (event.getText(), utf8 ("text ä€😀"));
    expectFullText (event.getNotes(), utf8 ("notes ä€😀"));
    expectFullText (event.getEngineeringNotes(), utf8 ("engineeringNotes ä€😀"));
    EXPECT_TRUE (event.isEnabled());
    EXPECT_FALSE (event.isDone());
    EXPECT_TRUE (event.getStoredFlag());
    EXPECT_TRUE (event.isForcedNarrative());
    EXPECT_EQ (event.getForcedNarrativeRegion(), ForcedNarrativeRegionLeft);
    EXPECT_EQ (event.getRecTrackIndex(), 7);
    EXPECT_EQ (event.getNumRecordedTakes(), 8);
    EXPECT_EQ (event.getSelectedTake(), 9);
    EXPECT_EQ (event.getAltTake(), 10);
    EXPECT_EQ (event.getReason(), 11);
}

void expectFullProject (const Project& project)
{
    EXPECT_EQ (project.name, utf8 ("name ä€😀"));
    EXPECT_EQ (project.userReasons, (std::vector<juce::String> { "Dentist", "", "Aeroplane" }));
    EXPECT_EQ (project.characters->characterIDs(), (std::vector<juce::String> { "c1", "c2" }));
    EXPECT_EQ (project.documents.studioName, utf8 ("studioName ä€😀"));
    EXPECT_EQ (project.list->sortKey, juce::String ("CueNumber"));
    EXPECT_TRUE (project.list->sortDescending);
    ASSERT_EQ (project.list->events.size(), 3u);
    EXPECT_EQ (project.list->fadeInEvent->getUuid(), juce::String ("fade in"));
    EXPECT_EQ (project.list->fadeOutEvent->getUuid(), juce::String ("fade out"));
    expectFullEvent (*project.list->events[2]);
}

// ---- looks of text -------------------------------------------------------------------------------------------------

TEST_F (StoredRecords, theDefaultLook)
{
    const auto stored = record<ProtoRichTextAttribute> ("attribute.default.bin");
    const auto run = RichTextString::attributeFromProtoObject (&stored);
    EXPECT_EQ (run.range, juce::Range<int>());
    EXPECT_EQ (run.font, juce::Font());
    EXPECT_EQ (run.colour.getARGB(), 0xff000000u);
}

TEST_F (StoredRecords, theFullLook)
{
    const auto stored = record<ProtoRichTextAttribute> ("attribute.full.bin");
    expectFullLook (RichTextString::attributeFromProtoObject (&stored));
}

// ---- events and lists ----------------------------------------------------------------------------------------------

TEST_F (StoredRecords, theDefaultEvent)
{
    const auto event = eventOf ("event.default.bin");
    EXPECT_EQ (static_cast<int> (event->getType()), -1);
    EXPECT_EQ (event->getUuid().length(), 36) << "a new one";
    EXPECT_EQ (event->getCueNumber(), juce::String());
    EXPECT_EQ (event->getCharacterID(), juce::String());
    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
    EXPECT_EQ (event->getStreamerDuration(), -1);
    EXPECT_EQ (event->getBeatsPerMinute(), -1.0f);
    EXPECT_EQ (event->getText(), RichTextString());
    EXPECT_EQ (event->getNotes(), RichTextString());
    EXPECT_EQ (event->getEngineeringNotes(), RichTextString());
    EXPECT_TRUE (event->isEnabled());
    EXPECT_FALSE (event->isDone());
    EXPECT_FALSE (event->getStoredFlag());
    EXPECT_FALSE (event->isForcedNarrative());
    EXPECT_EQ (event->getForcedNarrativeRegion(), ForcedNarrativeRegionBottom);
    EXPECT_EQ (event->getRecTrackIndex(), -1);
    EXPECT_EQ (event->getNumRecordedTakes(), 0);
    EXPECT_EQ (event->getSelectedTake(), -1);
    EXPECT_EQ (event->getAltTake(), -1);
    EXPECT_EQ (event->getReason(), 0) << "an unset reason is none";
}

TEST_F (StoredRecords, theFullEvent) { expectFullEvent (*eventOf ("event.full.bin")); }

TEST_F (StoredRecords, theEventThatIsDone)
{
    const auto event = eventOf ("event.done.bin");
    EXPECT_TRUE (event->isDone());
    EXPECT_TRUE (event->isEnabled());
    EXPECT_FALSE (event->getStoredFlag());
    EXPECT_FALSE (event->isForcedNarrative());
    EXPECT_EQ (event->getUuid(), juce::String ("done"));
}

TEST_F (StoredRecords, theDefaultList)
{
    auto stored = record<ProtoOvermarkList> ("list.default.bin");
    EventArray list;
    EXPECT_TRUE (list.initWithProtoObject (&stored));
    ASSERT_EQ (list.events.size(), 2u);
    EXPECT_EQ (list.events[0]->getType(), EventTypeFadeIn);
    EXPECT_EQ (list.events[1]->getType(), EventTypeFadeOut);
    EXPECT_EQ (list.sortKey, juce::String ("StartTCString"));
    EXPECT_FALSE (list.sortDescending);
}

TEST_F (StoredRecords, theFullList)
{
    auto stored = record<ProtoOvermarkList> ("list.full.bin");
    EventArray list;
    EXPECT_TRUE (list.initWithProtoObject (&stored));
    EXPECT_EQ (list.sortKey, juce::String ("CueNumber"));
    EXPECT_TRUE (list.sortDescending);
    ASSERT_EQ (list.events.size(), 3u);
    expectFullEvent (*list.events[2]);
}

// ---- time ----------------------------------------------------------------------------------------------------------

TEST_F (StoredRecords, theDefaultTimecode)
{
    ProtoProject parts;
    *parts.mutable_timeinfo()->mutable_timeorigin() = record<ProtoTimecode> ("timecode.default.bin");
    EXPECT_EQ (projectWith (parts).timeInfo->timeOrigin, ZEP::Core::_TCTime ({ 0, 0, 0, 0, 0, 80, false }));
}

TEST_F (StoredRecords, theFullTimecode)
{
    ProtoProject parts;
    *parts.mutable_timeinfo()->mutable_timeorigin() = record<ProtoTimecode> ("timecode.full.bin");
    EXPECT_EQ (projectWith (parts).timeInfo->timeOrigin, ZEP::Core::_TCTime ({ 1, 2, 3, 4, 5, 100, false }));
}

TEST_F (StoredRecords, theTimecodeThatIsNone)
{
    ProtoProject parts;
    *parts.mutable_timeinfo()->mutable_timeorigin() = record<ProtoTimecode> ("timecode.invalid.bin");
    EXPECT_EQ (projectWith (parts).timeInfo->timeOrigin, ZEP::Core::_TCTime ({ 0, 0, 0, 0, 0, 80, true }));
}

TEST_F (StoredRecords, theDefaultTimeReference)
{
    ProtoProject parts;
    *parts.mutable_timeinfo() = record<ProtoTimeInfo> ("time_info.default.bin");
    const auto info = projectWith (parts).timeInfo;
    EXPECT_EQ (info->tcDef, ZEP::Core::_TCDef ({ false, 25, 1, 25, true }));
    EXPECT_EQ (info->timeOrigin, ZEP::Core::_TCTime ({ 0, 0, 0, 0, 0, 80, false }));
    EXPECT_EQ (info->getFirstFrameOfAction(), info->timeOrigin);
}

TEST_F (StoredRecords, theFullTimeReference)
{
    ProtoProject parts;
    *parts.mutable_timeinfo() = record<ProtoTimeInfo> ("time_info.full.bin");
    const auto info = projectWith (parts).timeInfo;
    EXPECT_EQ (info->tcDef, ZEP::Core::_TCDef ({ true, 30000, 1001, 30, false }));
    EXPECT_EQ (info->timeOrigin, ZEP::Core::_TCTime ({ 1, 2, 3, 4, 5, 100, false }));
    EXPECT_EQ (info->getFirstFrameOfAction(), ZEP::Core::_TCTime ({ 10, 11, 12, 13, 0, 80, false }));
}

// ---- cast and documents --------------------------------------------------------------------------------------------

TEST_F (StoredRecords, theDefaultCharacter)
{
    ProtoProject parts;
    *parts.add_characters() = record<ProtoCharacter> ("character.default.bin");
    const auto project = projectWith (parts);
    ASSERT_EQ (project.characters->characterIDs().size(), 1u);
    EXPECT_EQ (project.characters->characterIDs()[0].length(), 36) << "a new one";
    EXPECT_EQ (project.characters->characters()[0]->name, juce::String());
}

TEST_F (StoredRecords, theFullCharacter)
{
    ProtoProject parts;
    *parts.add_characters() = record<ProtoCharacter> ("character.full.bin");
    const auto character = projectWith (parts).characters->characterForID ("c1");
    ASSERT_NE (character, nullptr);
    EXPECT_EQ (character->name, juce::String ("name of c1"));
    EXPECT_EQ (character->prefix, juce::String ("prefix of c1"));
    EXPECT_EQ (character->actor, juce::String ("actor of c1"));
}

TEST_F (StoredRecords, theDefaultDocumentSettings)
{
    ProtoProject parts;
    *parts.mutable_documentsettings() = record<ProtoDocumentSettings> ("document_settings.default.bin");
    EXPECT_EQ (projectWith (parts).documents, DocumentSettings());
}

TEST_F (StoredRecords, theFullDocumentSettings)
{
    ProtoProject parts;
    *parts.mutable_documentsettings() = record<ProtoDocumentSettings> ("document_settings.full.bin");
    const auto documents = projectWith (parts).documents;
    EXPECT_EQ (documents.title, utf8 ("title ä€😀"));
    EXPECT_EQ (documents.studioName, utf8 ("studioName ä€😀"));
    EXPECT_EQ (documents.soundSupervisor, utf8 ("soundSupervisor ä€😀"));
    EXPECT_EQ (documents.productionCompany, utf8 ("productionCompany ä€😀"));
    EXPECT_EQ (documents.timelineName, utf8 ("timelineName ä€😀"));
    EXPECT_EQ (documents.episodeReel, utf8 ("episodeReel ä€😀"));
    EXPECT_EQ (documents.pictureVersion, utf8 ("pictureVersion ä€😀"));
    EXPECT_EQ (documents.language, utf8 ("language ä€😀"));
    EXPECT_EQ (documents.paper, utf8 ("paper ä€😀"));
    EXPECT_EQ (documents.layout, 1);
    EXPECT_EQ (documents.delimiter, 2);
    EXPECT_TRUE (documents.showTakeNumbers);
    EXPECT_TRUE (documents.byCharacter);
    EXPECT_TRUE (documents.combineIntoSingleFile);
}

// ---- projects and files --------------------------------------------------------------------------------------------

TEST_F (StoredRecords, theDefaultProject)
{
    auto stored = record<ProtoProject> ("project.default.bin");
    EXPECT_EQ (stored.formatversion(), 1);
    const auto project = ProjectRecord::read (stored);
    EXPECT_EQ (project.name, juce::String());
    EXPECT_TRUE (project.timeInfo->tcDef.undefined);
    EXPECT_TRUE (project.characters->characters().empty());
    EXPECT_TRUE (project.userReasons.empty());
    EXPECT_EQ (project.documents, DocumentSettings());
    EXPECT_EQ (project.list->events.size(), 2u);
}

TEST_F (StoredRecords, theFullProject)
{
    auto stored = record<ProtoProject> ("project.full.bin");
    EXPECT_EQ (stored.formatversion(), 1);
    expectFullProject (ProjectRecord::read (stored));
}

TEST_F (StoredRecords, theFileOfFormOne) { expectFullProject (loaded (stored ("form_1.overmarks"))); }

} // namespace
} // namespace ZEP::Overmarks::Testing
