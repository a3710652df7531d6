// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/ProtoRecord.h"

#include "core/text/StringUtil.h"
#include "core/text/TextDecoding.h"

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

namespace ZEP::Core
{

std::string ProtoRecord::text (const juce::String& text)
{
    auto bytes = text.toStdString();

    if (ByteSurvey (bytes).isUTF8)
        return bytes;

    return StringUtil::fromUTF8 (bytes).toStdString();
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
