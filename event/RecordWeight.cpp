// SPDX-License-Identifier: GPL-3.0-only
#include "event/RecordWeight.h"

#include "proto/midi.pb.h"
#include "proto/overmarks.pb.h"

#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/wire_format_lite.h>

#include <cstdint>

namespace ZEP::Overmarks
{

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::internal::WireFormatLite;
using google::protobuf::io::CodedInputStream;

namespace
{

constexpr std::uint64_t weightOfText = 64, weightOfNewerField = 64;

std::uint64_t weightOf (const Descriptor* record)
{
    if (record == tessera1::ProtoOvermark::descriptor())
        return RecordWeight::weightOfEvent;
    if (record == tessera1::ProtoRichTextAttribute::descriptor())
        return RecordWeight::weightOfRun;
    if (record == tessera1::ProtoCharacter::descriptor())
        return RecordWeight::weightOfCharacter;

    if (record == tessera1::ProtoMIDITriggerEvent::descriptor())
        return RecordWeight::weightOfTrigger; // which makes an event even if none is stored

    return 0; // stands once in the project
}

/** Walks over the fields of a record as they stand in the bytes. */
class Scales final
{
public:
    Scales (std::string_view bytes, const Descriptor& kindOfRecord, std::uint64_t spareMemory)
        : kind (kindOfRecord),
          input (reinterpret_cast<const std::uint8_t*> (bytes.data()), static_cast<int> (bytes.size())),
          most (RecordWeight::mostOf (bytes.size(), spareMemory))
    {
    }

    RecordWeight::Finding weigh()
    {
        if (walk (&kind, 0) && input.ConsumedEntireMessage())
            return RecordWeight::Finding::fits;

        return total > most ? RecordWeight::Finding::tooHeavy : RecordWeight::Finding::unintelligible;
    }

private:
    /** Up to the end of the record, or of the group. @param record  null inside what a newer version has stored
        @param group  number of the group; 0 for a record. @returns false at what can't be read, and at once when it is too much */
    bool walk (const Descriptor* record, int group)
    {
        while (const auto tag = input.ReadTag())
        {
            if (WireFormatLite::GetTagWireType (tag) == WireFormatLite::WIRETYPE_END_GROUP)
                return group != 0 && WireFormatLite::GetTagFieldNumber (tag) == group;
            if (! takeField (record, tag) || total > most)
                return false;
        }

        return group == 0;
    }

    bool takeField (const Descriptor* record, std::uint32_t tag)
    {
        const auto number = WireFormatLite::GetTagFieldNumber (tag);
        const auto wireType = WireFormatLite::GetTagWireType (tag);
        const auto* field = record != nullptr ? record->FindFieldByNumber (number) : nullptr;
        const bool isKnown = field != nullptr
                             && wireType
                                    == WireFormatLite::WireTypeForFieldType (
                                        static_cast<WireFormatLite::FieldType> (field->type()));

        if (isKnown && field->type() == FieldDescriptor::TYPE_MESSAGE)
            return takeRecord (field->message_type());

        if (! isKnown)
            total += weightOfNewerField;
        else if (field->is_repeated())
            total += weightOfText;

        if (wireType == WireFormatLite::WIRETYPE_START_GROUP)
            return takeGroup (number);

        return WireFormatLite::SkipField (&input, tag);
    }

    bool takeRecord (const Descriptor* record)
    {
        std::uint32_t length = 0;
        total += weightOf (record);

        if (! input.ReadVarint32 (&length) || length > static_cast<std::uint32_t> (input.BytesUntilLimit()))
            return false;

        const auto outer = input.PushLimit (static_cast<int> (length));
        const bool isRead = walk (record, 0) && input.ConsumedEntireMessage();
        input.PopLimit (outer);
        return isRead;
    }

    bool takeGroup (int number)
    {
        if (! input.IncrementRecursionDepth())
            return false;

        const bool isRead = walk (nullptr, number);
        input.DecrementRecursionDepth();
        return isRead;
    }

    const Descriptor& kind;
    CodedInputStream input;
    std::uint64_t most;
    std::uint64_t total = 0;
};

} // namespace

RecordWeight::Finding RecordWeight::of (std::string_view record, const Descriptor& kind,
                                        std::uint64_t spareMemory)
{
    return Scales (record, kind, spareMemory).weigh();
}

} // namespace ZEP::Overmarks
