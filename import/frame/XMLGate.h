// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <string_view>

namespace ZEP::Overmarks
{

/** Lets an XML document from a stranger through to the framework's reader, or not.

    That reader believes what it is given: it calls itself for each element within another, runs for ever on some processing
    instructions, reads behind the end of a text that breaks off, and opens the file that a document type names. So a strict
    parser goes over the document first, and what it takes for well-formed is handed on as the root element alone, without
    document type, comments and processing instructions.

    A document type may stand there and name what it wants: nothing is opened. But a document that declares entities or
    attributes, or uses an entity that isn't of XML itself, doesn't pass, and neither does one of hardly anything but tags, or
    one of ever new names: that reader keeps all names of the process in one sorted list, and each new one moves the others.

    What that reader takes or not as the process's language goes, or misreads, is written in plainer words: each byte above 127
    in the name of an element or an attribute becomes "_", and numbers of characters lose their leading zeros. */
class XMLGate final
{
public:
    XMLGate() = delete;

    /** How much a document may have say ImportLimits; of one that has more the log is told.
        @param document  in UTF-8, whatever encoding it claims to have
        @returns the root element; null for a document that isn't well-formed or doesn't pass */
    [[nodiscard]] static std::unique_ptr<juce::XmlElement> rootOf (std::string_view document);
};

} // namespace ZEP::Overmarks
