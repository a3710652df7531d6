// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <exception>
#include <memory>
#include <string_view>

struct XML_ParserStruct;

namespace ZEP::Core
{

/** The attributes of an element, by their names without a prefix. Views last as long as the call that got them. */
class PartAttributes final
{
public:
    /** Not copied; ends with null. */
    explicit PartAttributes (const char** namesAndValues) : list (namesAndValues) {}

    /** Empty where there is none. */
    [[nodiscard]] std::string_view operator[] (std::string_view name) const;
    /** Or empty. */
    [[nodiscard]] bool has (std::string_view name) const { return operator[] (name).data() != nullptr; }

    /** A whole number of zero or more; `otherwise` where there is none, or anything else. */
    [[nodiscard]] int number (std::string_view name, int otherwise) const;

    /** Whether a switch is on: "1" or "true". */
    [[nodiscard]] bool isOn (std::string_view name, bool otherwise) const;

private:
    const char** list;
};

/** A walk through the XML of a workbook's part, from beginning to end, for a class that knows what stands in it.

    Elements are told by their names without a prefix, since programs choose prefixes as they like. A part that isn't
    well-formed, has a document type, or nests its elements deeper than any workbook does, is a UnreadableWorkbook: as
    WorkbookArchive::limits() say. One walk goes over one part. */
class PartXML
{
public:
    PartXML();
    virtual ~PartXML();

    PartXML (const PartXML&) = delete;
    PartXML& operator= (const PartXML&) = delete;

    /** Takes the next bytes of the part. */
    void take (std::string_view bytes);

    /** Tells that all bytes have been taken. */
    void finish();

protected:
    /** Not called for prefixes. */
    virtual void elementStarts (std::string_view name, const PartAttributes& attributes) = 0;
    virtual void elementEnds (std::string_view name) = 0; ///< Comes for empty elements too.

    /** A piece of text; comments, entities and the like cut a text in pieces. */
    virtual void textComes (std::string_view text);

    /** How many elements are open, the one that starts or ends included. */
    [[nodiscard]] int depth() const noexcept { return nesting; }

private:
    struct Callbacks;
    struct Free
    {
        void operator() (XML_ParserStruct* parserToFree) const;
    };

    void take (std::string_view bytes, bool isLast);

    std::unique_ptr<XML_ParserStruct, Free> parser;
    std::exception_ptr failure;
    int nesting = 0;
};

/** The whole number that a text stands for; -1 for anything else, and for one of more than nine digits. */
[[nodiscard]] int wholeNumber (std::string_view text);

} // namespace ZEP::Core
