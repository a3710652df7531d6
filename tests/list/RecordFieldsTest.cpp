// SPDX-License-Identifier: GPL-3.0-only
// The numbers and types of all fields of the stored records. Files of every version have to be readable for ever, so a line is
// added here, and none is changed or taken away: a field that is gone keeps its number as a reserved one.
#include "list/ProjectFileSupport.h"

#include <gmock/gmock.h>
#include <google/protobuf/descriptor.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

using namespace tessera1;
using google::protobuf::FieldDescriptor;

const std::vector<std::string> storedFields {
    "ProtoRichTextAttribute 1 int32 rangeStart",
    "ProtoRichTextAttribute 2 int32 rangeEnd",
    "ProtoRichTextAttribute 3 string typefaceName",
    "ProtoRichTextAttribute 4 string typefaceStyle",
    "ProtoRichTextAttribute 5 float height",
    "ProtoRichTextAttribute 6 bool underlined",
    "ProtoRichTextAttribute 7 float horizontalScale",
    "ProtoRichTextAttribute 8 float extraKerning",
    "ProtoRichTextAttribute 9 uint32 colour",
    "ProtoOvermark 1 repeated ProtoRichTextAttribute textAttributes",
    "ProtoOvermark 2 repeated ProtoRichTextAttribute notesAttributes",
    "ProtoOvermark 3 repeated ProtoRichTextAttribute engineeringNotesAttributes",
    "ProtoOvermark 4 string text",
    "ProtoOvermark 5 string cueNumber",
    "ProtoOvermark 6 string notes",
    "ProtoOvermark 7 string engineeringNotes",
    "ProtoOvermark 8 string characterID",
    "ProtoOvermark 9 string uuid",
    "ProtoOvermark 10 int32 type",
    "ProtoOvermark 11 int32 startFrameIndex",
    "ProtoOvermark 12 int32 inPointFrameIndex",
    "ProtoOvermark 13 int32 endFrameIndex",
    "ProtoOvermark 14 int32 streamerDuration",
    "ProtoOvermark 15 float beatsPerMinute",
    "ProtoOvermark 16 bool enabled",
    "ProtoOvermark 17 bool storedFlag",
    "ProtoOvermark 18 bool done",
    "ProtoOvermark 19 bool isForcedNarrative",
    "ProtoOvermark 20 int32 recTrackIndex",
    "ProtoOvermark 21 int32 numRecordedTakes",
    "ProtoOvermark 22 int32 reason",
    "ProtoOvermark 23 int32 selectedTake",
    "ProtoOvermark 24 int32 altTake",
    "ProtoOvermark 25 int32 forcedNarrativeRegion",
    "ProtoOvermarkList 1 repeated ProtoOvermark events",
    "ProtoOvermarkList 2 string sortKey",
    "ProtoOvermarkList 3 bool sortDescending",
    "ProtoTimecode 1 int32 hours",
    "ProtoTimecode 2 int32 minutes",
    "ProtoTimecode 3 int32 seconds",
    "ProtoTimecode 4 int32 frames",
    "ProtoTimecode 5 uint32 subFrames",
    "ProtoTimecode 6 uint32 subFramesPerFrame",
    "ProtoTimecode 7 bool invalid",
    "ProtoTimeInfo 1 ProtoTimecode timeOrigin",
    "ProtoTimeInfo 2 ProtoTimecode firstFrameOfAction",
    "ProtoTimeInfo 3 uint32 frameRateNumerator",
    "ProtoTimeInfo 4 uint32 frameRateDenominator",
    "ProtoTimeInfo 5 uint32 framesPerSecond",
    "ProtoTimeInfo 6 bool dropFrame",
    "ProtoTimeInfo 7 bool rateUndefined",
    "ProtoCharacter 1 string id",
    "ProtoCharacter 2 string name",
    "ProtoCharacter 3 string prefix",
    "ProtoCharacter 4 string actor",
    "ProtoDocumentSettings 1 string title",
    "ProtoDocumentSettings 2 string studioName",
    "ProtoDocumentSettings 3 string soundSupervisor",
    "ProtoDocumentSettings 4 string productionCompany",
    "ProtoDocumentSettings 5 string timelineName",
    "ProtoDocumentSettings 6 string episodeReel",
    "ProtoDocumentSettings 7 string pictureVersion",
    "ProtoDocumentSettings 8 string language",
    "ProtoDocumentSettings 9 string paper",
    "ProtoDocumentSettings 10 int32 layout",
    "ProtoDocumentSettings 11 int32 delimiter",
    "ProtoDocumentSettings 12 bool showTakeNumbers",
    "ProtoDocumentSettings 13 bool byCharacter",
    "ProtoDocumentSettings 14 bool combineIntoSingleFile",
    "ProtoProject 1 int32 formatVersion",
    "ProtoProject 2 string name",
    "ProtoProject 3 ProtoTimeInfo timeInfo",
    "ProtoProject 4 repeated ProtoCharacter characters",
    "ProtoProject 5 repeated string userReasons",
    "ProtoProject 6 ProtoDocumentSettings documentSettings",
    "ProtoProject 7 ProtoOvermarkList list",
};

std::string lineOf (const FieldDescriptor& field)
{
    const auto* record = field.message_type();
    return field.containing_type()->name() + " " + std::to_string (field.number()) + " "
           + (field.is_repeated() ? "repeated " : "")
           + (record != nullptr ? record->name() : field.type_name()) + " " + field.name();
}

TEST (RecordFields, keepTheirNumbersAndTypesForEver)
{
    const auto& schema = *tessera1::ProtoProject::descriptor()->file();
    std::vector<std::string> fields;

    for (int i = 0; i < schema.message_type_count(); ++i)
        for (int j = 0; j < schema.message_type (i)->field_count(); ++j)
            fields.push_back (lineOf (*schema.message_type (i)->field (j)));

    EXPECT_THAT (fields, ::testing::ElementsAreArray (storedFields));
}

TEST (RecordFields, haveNeitherEnumerationsNorAlternativesNorSubstitutes)
{
    // A value of an enumeration or of one of several alternatives that a newer version adds would be lost on the way.
    const auto& schema = *tessera1::ProtoProject::descriptor()->file();
    EXPECT_EQ (schema.enum_type_count(), 0);
    EXPECT_EQ (schema.extension_count(), 0);

    for (int i = 0; i < schema.message_type_count(); ++i)
    {
        EXPECT_EQ (schema.message_type (i)->enum_type_count(), 0);
        EXPECT_EQ (schema.message_type (i)->oneof_decl_count(), 0);
        EXPECT_EQ (schema.message_type (i)->nested_type_count(), 0);
    }
}

/** Which fields of each record stand in a message, and that this version knows all that stands there. */
void note (const google::protobuf::Message& message, std::set<std::string>& fields)
{
    const auto& reflection = *message.GetReflection();
    EXPECT_TRUE (reflection.GetUnknownFields (message).empty()) << message.GetTypeName();
    std::vector<const google::protobuf::FieldDescriptor*> present;
    reflection.ListFields (message, &present);
    for (const auto* field : present)
    {
        fields.insert (field->full_name());
        if (field->message_type() == nullptr)
            continue;
        if (! field->is_repeated())
            note (reflection.GetMessage (message, field), fields);
        else
            for (int i = 0; i < reflection.FieldSize (message, field); ++i)
                note (reflection.GetRepeatedMessage (message, field, i), fields);
    }
}

TEST (RecordFields, areAllHeldByTheFullForms)
{
    // A field that is added gets a new file beside the old ones, and its value above.
    struct FullForm
    {
        const char* file;
        const google::protobuf::Message* message;
        const char* isFalse; ///< the one field that is not there, and the file that has it
        const char* fileOfIt;
    };
    for (const auto& [file, message, isFalse, fileOfIt] :
         { FullForm { "attribute.full.bin", &ProtoRichTextAttribute::default_instance(), "", "" },
           FullForm { "event.full.bin", &ProtoOvermark::default_instance(), "done", "event.done.bin" },
           FullForm { "list.full.bin", &ProtoOvermarkList::default_instance(), "", "" },
           FullForm { "timecode.full.bin", &ProtoTimecode::default_instance(), "invalid",
                      "timecode.invalid.bin" },
           FullForm { "time_info.full.bin", &ProtoTimeInfo::default_instance(), "rateUndefined",
                      "time_info.default.bin" },
           FullForm { "character.full.bin", &ProtoCharacter::default_instance(), "", "" },
           FullForm { "document_settings.full.bin", &ProtoDocumentSettings::default_instance(), "", "" },
           FullForm { "project.full.bin", &ProtoProject::default_instance(), "", "" } })
    {
        const auto fieldsIn = [&message = message] (const char* name)
        {
            const std::unique_ptr<google::protobuf::Message> read (message->New());
            EXPECT_TRUE (read->ParseFromString (stored (name))) << name;
            std::set<std::string> fields;
            note (*read, fields);
            return fields;
        };
        const auto full = fieldsIn (file);
        const auto& record = *message->GetDescriptor();
        for (int i = 0; i < record.field_count(); ++i)
        {
            const auto& field = *record.field (i);
            const bool mayBeMissing = field.name() == isFalse;
            EXPECT_EQ (full.contains (field.full_name()), ! mayBeMissing) << file << " " << field.name();
            EXPECT_EQ (mayBeMissing && ! fieldsIn (fileOfIt).contains (field.full_name()), false) << fileOfIt;
        }
    }
}

TEST (RecordFields, areAllHeldByTheFileOfFormOne)
{
    std::set<std::string> fields;
    note (recordIn (stored ("form_1.overmarks")), fields);
    const auto& schema = *ProtoProject::descriptor()->file();
    for (int i = 0; i < schema.message_type_count(); ++i)
        for (int j = 0; j < schema.message_type (i)->field_count(); ++j)
        {
            const auto& name = schema.message_type (i)->field (j)->full_name();
            const bool isFalse = name == "tessera1.ProtoOvermark.done"
                                 || name == "tessera1.ProtoTimecode.invalid"
                                 || name == "tessera1.ProtoTimeInfo.rateUndefined";
            EXPECT_EQ (fields.contains (name), ! isFalse) << name;
        }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
