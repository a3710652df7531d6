// SPDX-License-Identifier: GPL-3.0-only
// The stored form of an event, a tessera1::ProtoOvermark. Its field names are those of the event's own table of stored
// fields, so that the two are matched by name, once per process.
#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/ProtoRecord.h"
#include "core/system/RandomIdentity.h"
#include "core/system/UserDefaults.h"
#include "core/text/StringUtil.h"
#include "event/Event.h"
#include "event/EventFields.h"
#include "preferences/PreferenceKeys.h"
#include "proto/overmarks.pb.h"

#include <google/protobuf/reflection.h>

#include <algorithm>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace ZEP::Overmarks
{

using google::protobuf::FieldDescriptor;
using google::protobuf::Reflection;
using tessera1::ProtoOvermark;
using tessera1::ProtoRichTextAttribute;
using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::ProtoRecord;
using ZEP::Core::randomIdentity;
using ZEP::Core::RichTextString;
using ZEP::Core::StringUtil;
using ZEP::Core::UserDefaults;

namespace
{

/** Where the fields of an event stand in its record, in the order of the event's table. */
struct RecordField
{
    const FieldDescriptor* value = nullptr;
    const FieldDescriptor* attributes = nullptr; ///< the looks of a rich text; null for every other field
};

const std::vector<RecordField>& recordFields()
{
    static const auto fields = []
    {
        std::vector<RecordField> found;
        const Event anyEvent;
        EventFields::visit (anyEvent,
                            [&found] (const std::string& name, const auto&)
                            {
                                const auto* record = ProtoOvermark::descriptor();
                                found.push_back ({ record->FindFieldByName (name),
                                                   record->FindFieldByName (name + "Attributes") });
                            });
        return found;
    }();
    return fields;
}

/** Writes one field of an event after the other into its record. */
class RecordWriter
{
public:
    explicit RecordWriter (ProtoOvermark& recordToFill) : record (recordToFill) {}

    template <typename Value>
    void operator() (const char*, const Value& value)
    {
        write (*next++, value);
    }

private:
    void write (const RecordField& field, const juce::String& value)
    {
        reflection->SetString (&record, field.value, ProtoRecord::text (value));
    }

    void write (const RecordField& field, const RichTextString& value)
    {
        write (field, value.getText());

        for (const auto& attribute : value.formattedRuns())
            RichTextString::applyStringAttributeToProtoObject (
                attribute, reflection->AddMessage (&record, field.attributes));
    }

    void write (const RecordField& field, bool value) { reflection->SetBool (&record, field.value, value); }
    void write (const RecordField& field, float value) { reflection->SetFloat (&record, field.value, value); }
    void write (const RecordField& field, int value) { reflection->SetInt32 (&record, field.value, value); }

    ProtoOvermark& record;
    const Reflection* reflection = ProtoOvermark::GetReflection();
    std::vector<RecordField>::const_iterator next = recordFields().begin();
};

/** The NULs of a stored text, which no string can hold: what stands behind one moves up. */
class LeftOutCharacters
{
public:
    explicit LeftOutCharacters (const std::string& text)
    {
        if (text.find ('\0') == std::string::npos)
            return;

        int place = 0;

        for (const auto byte : text)
        {
            if (byte == '\0')
                places.push_back (place);

            const bool beginsCharacter = (static_cast<unsigned char> (byte) & 0xC0U) != 0x80U;
            place += beginsCharacter ? 1 : 0;
        }
    }

    /** Where the characters of a range of the stored text stand in the string. */
    juce::Range<int> follow (juce::Range<int> range) const
    {
        return { moved (range.getStart()), moved (range.getEnd()) };
    }

private:
    int moved (int place) const
    {
        return place
               - static_cast<int> (std::lower_bound (places.begin(), places.end(), place) - places.begin());
    }

    std::vector<int> places; ///< from left to right
};

/** Reads one field of an event after the other from its record. */
class RecordReader
{
public:
    explicit RecordReader (const ProtoOvermark& recordToRead) : record (recordToRead) {}

    template <typename Value>
    void operator() (const char*, Value& value)
    {
        read (*next++, value);
    }

private:
    void read (const RecordField& field, juce::String& value)
    {
        std::string scratch;
        value = StringUtil::fromUTF8 (reflection->GetStringReference (record, field.value, &scratch));
    }

    void read (const RecordField& field, RichTextString& value)
    {
        std::string scratch;
        const auto& characters = reflection->GetStringReference (record, field.value, &scratch);
        value = RichTextString (StringUtil::fromUTF8 (characters));

        const LeftOutCharacters leftOut (characters);
        std::vector<RichTextString::Attribute> attributes;

        for (const auto& stored :
             reflection->GetRepeatedFieldRef<ProtoRichTextAttribute> (record, field.attributes))
        {
            attributes.push_back (RichTextString::attributeFromProtoObject (&stored));
            attributes.back().range = leftOut.follow (attributes.back().range);
        }

        value.applyAttributes (attributes);
    }

    void read (const RecordField& field, bool& value) { value = reflection->GetBool (record, field.value); }
    void read (const RecordField& field, float& value) { value = reflection->GetFloat (record, field.value); }
    void read (const RecordField& field, int& value) { value = reflection->GetInt32 (record, field.value); }

    template <typename Enumeration>
    requires std::is_enum_v<Enumeration>
    void read (const RecordField& field, Enumeration& value)
    {
        value = static_cast<Enumeration> (reflection->GetInt32 (record, field.value));
    }

    const ProtoOvermark& record;
    const Reflection* reflection = ProtoOvermark::GetReflection();
    std::vector<RecordField>::const_iterator next = recordFields().begin();
};

} // namespace

void Event::fillProtoObject (void* message)
{
    auto& record = *static_cast<ProtoOvermark*> (message);
    EventFields::visit (*this, RecordWriter (record));
    ProtoRecord::addNewerFields (record, newerFields);
}

bool Event::initWithProtoObject (void* message)
{
    const juce::ScopedValueSetter<bool> bypass (undoBypass, true, false);
    const auto& record = *static_cast<const ProtoOvermark*> (message);
    EventFields::visit (*this, RecordReader (record));
    newerFields = ProtoRecord::newerFields (record);

    const auto* reasons = ADRCueReasonsManager::sharedManager();

    if (reason == std::numeric_limits<int>::max() || ! reasons->isReasonCodeValid (reason + 1))
        reason = reasons->getReasonFromString ("None") - 1;

    if (uuid.isEmpty())
        uuid = randomIdentity();

    applicationFlagA = applicationFlagB = true;
    timeReference = UserDefaults::getIntForKey (StreamerReferenceUnitPrefKey);
    return true;
}

} // namespace ZEP::Overmarks
