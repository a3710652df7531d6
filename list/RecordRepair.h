// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <string_view>

namespace google::protobuf
{
class Descriptor;
} // namespace google::protobuf

namespace ZEP::Overmarks
{

/** Mends stored records that the library of the records refuses as a whole because one text in them is not UTF-8. Any thread. */
class RecordRepair final
{
public:
    RecordRepair() = delete;

    /** The bytes of the record with each wrong sequence in a text replaced by U+FFFD.
        @param bytes  a record of the message
        @returns nothing that can be read if the bytes are no such record for another reason */
    [[nodiscard]] static std::string withValidText (const google::protobuf::Descriptor& message,
                                                    std::string_view bytes);
};

} // namespace ZEP::Overmarks
