// SPDX-License-Identifier: GPL-3.0-only
#pragma once

namespace ZEP::Core
{
/** Something that is stored in the project file as a record of its own.

    The message is the generated object of the record that belongs to the class, and only that one: it comes
    untyped, so that headers need none of the generated code. It stays the caller's.
*/
class IProtobufSerializable
{
public:
    /** Takes over what the record says; false if it can't be used. */
    virtual bool initWithProtoObject (void* message) = 0;

    virtual void fillProtoObject (void* message) = 0; ///< Writes everything to be stored into the record.

    virtual ~IProtobufSerializable() = default;
};
} // namespace ZEP::Core
