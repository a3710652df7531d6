// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <string>

namespace google::protobuf
{
class Message;
} // namespace google::protobuf

namespace ZEP::Core
{

/** What all stored records have in common: how text gets into them, and what becomes of fields that a newer version has
    put there.

    A record whose text is not UTF-8 can be written but never read again, so text gets into a record through text() alone.
    Any thread. */
class ZEP_CORE_API ProtoRecord final
{
public:
    ProtoRecord() = delete;

    /** The text as strict UTF-8: half of a surrogate pair and the like, which a string may hold, become U+FFFD. */
    [[nodiscard]] static std::string text (const juce::String& text);

    /** The fields of the record whose numbers this version doesn't know, in their stored form; empty without one. */
    [[nodiscard]] static std::string newerFields (const google::protobuf::Message& record);

    /** Puts what newerFields() has given into a record again. */
    static void addNewerFields (google::protobuf::Message& record, const std::string& newerFields);
};

} // namespace ZEP::Core
