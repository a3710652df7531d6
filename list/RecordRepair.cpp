// SPDX-License-Identifier: GPL-3.0-only
#include "list/RecordRepair.h"

#include "core/text/StringUtil.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/dynamic_message.h>
#include <google/protobuf/stubs/logging.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

namespace
{

std::string mended (const std::string& text) { return ZEP::Core::StringUtil::fromUTF8 (text).toStdString(); }

void mendField (Message& message, const FieldDescriptor* field);

void mendTexts (Message& message)
{
    std::vector<const FieldDescriptor*> present;
    message.GetReflection()->ListFields (message, &present);

    for (const auto* field : present)
        mendField (message, field);
}

void mendField (Message& message, const FieldDescriptor* field)
{
    const auto& reflection = *message.GetReflection();
    const bool isText = field->type() == FieldDescriptor::TYPE_STRING;
    const bool isRecord = field->type() == FieldDescriptor::TYPE_MESSAGE;

    if (! field->is_repeated())
    {
        if (isText)
            reflection.SetString (&message, field, mended (reflection.GetString (message, field)));
        else if (isRecord)
            mendTexts (*reflection.MutableMessage (&message, field));

        return;
    }

    for (int i = 0; i < reflection.FieldSize (message, field); ++i)
    {
        if (isText)
            reflection.SetRepeatedString (&message, field, i,
                                          mended (reflection.GetRepeatedString (message, field, i)));
        else if (isRecord)
            mendTexts (*reflection.MutableRepeatedMessage (&message, field, i));
    }
}

} // namespace

std::string RecordRepair::withValidText (const google::protobuf::Descriptor& message, std::string_view bytes)
{
    const google::protobuf::LogSilencer silence; // it would write to standard error
    // Only the newer form of schemas asks for UTF-8: the same schema in the older one reads everything.
    google::protobuf::FileDescriptorProto schema;
    message.file()->CopyTo (&schema);
    schema.set_syntax ("proto2");
    google::protobuf::DescriptorPool pool;
    const auto* tolerantFile = pool.BuildFile (schema);
    const auto* tolerant = pool.FindMessageTypeByName (message.full_name());

    if (tolerantFile == nullptr || tolerant == nullptr)
        return std::string (bytes);

    google::protobuf::DynamicMessageFactory factory;
    const std::unique_ptr<Message> record (factory.GetPrototype (tolerant)->New());

    if (! record->ParseFromArray (bytes.data(), static_cast<int> (bytes.size())))
        return std::string (bytes);

    mendTexts (*record);
    return record->SerializeAsString();
}

} // namespace ZEP::Overmarks
