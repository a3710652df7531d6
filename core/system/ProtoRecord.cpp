// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/ProtoRecord.h"

#include "core/text/TextDecoding.h"

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>
#include <string_view>

namespace ZEP::Core
{

namespace
{
constexpr std::string_view replacementCharacter { "\xEF\xBF\xBD" };
} // namespace

std::string ProtoRecord::text (const juce::String& text)
{
    auto bytes = text.toStdString();

    if (ByteSurvey (bytes).isUTF8)
        return bytes;

    // One for one: what has been said about the 5th character stays with the 5th.
    std::string mended;

    for (auto place = text.getCharPointer(); ! place.isEmpty();)
    {
        const auto* start = place.getAddress();
        ++place;
        const std::string_view character (start, static_cast<std::size_t> (place.getAddress() - start));
        mended += ByteSurvey (character).isUTF8 ? character : replacementCharacter;
    }

    return mended;
}

std::string ProtoRecord::newerFields (const google::protobuf::Message& record)
{
    std::string bytes;
    const auto& unknown = record.GetReflection()->GetUnknownFields (record);

    if (! unknown.empty())
        unknown.SerializeToString (&bytes);

    return bytes;
}

void ProtoRecord::addNewerFields (google::protobuf::Message& record, const std::string& newerFields)
{
    if (newerFields.empty())
        return;

    google::protobuf::UnknownFieldSet unknown;
    unknown.ParseFromString (newerFields);
    record.GetReflection()->MutableUnknownFields (&record)->MergeFrom (unknown);
}

} // namespace ZEP::Core
