// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PartXML.h"

#include "core/documents/UnreadableWorkbook.h"
#include "core/documents/WorkbookArchive.h"

#include <expat.h>

#include <new>
#include <utility>

namespace ZEP::Core
{
namespace
{

constexpr std::size_t mostDigits = 9;

std::string_view withoutPrefix (std::string_view name) { return name.substr (name.find (':') + 1); }

} // namespace

std::string_view PartAttributes::operator[] (std::string_view name) const
{
    for (auto place = list; place[0] != nullptr; place += 2)
        if (withoutPrefix (place[0]) == name)
            return place[1];

    return {};
}

int PartAttributes::number (std::string_view name, int otherwise) const
{
    const auto number = wholeNumber (operator[] (name));
    return number < 0 ? otherwise : number;
}

bool PartAttributes::isOn (std::string_view name, bool otherwise) const
{
    const auto value = operator[] (name);
    return value.empty() ? otherwise : value == "1" || value == "true" || value == "on";
}

int wholeNumber (std::string_view text)
{
    if (text.empty() || text.size() > mostDigits)
        return -1;

    int number = 0;

    for (const char digit : text)
    {
        if (digit < '0' || digit > '9')
            return -1;

        number = number * 10 + (digit - '0');
    }

    return number;
}

/** Exceptions wait while the parser, which knows nothing of them, is on its way out. */
struct PartXML::Callbacks
{
    template <typename Work>
    static void guarded (void* walk, Work work) noexcept
    {
        auto& self = *static_cast<PartXML*> (walk);

        if (self.failure != nullptr)
            return;

        try
        {
            work (self);
        }
        catch (...)
        {
            self.failure = std::current_exception();
            XML_StopParser (self.parser.get(), XML_FALSE);
        }
    }

    [[noreturn]] static void refuse() { throw UnreadableWorkbook (WorkbookWords::isDamaged); }

    static void XMLCALL start (void* walk, const XML_Char* name, const XML_Char** attributes)
    {
        guarded (walk,
                 [=] (PartXML& self)
                 {
                     if (++self.nesting > WorkbookArchive::limits().nesting)
                         throw UnreadableWorkbook (WorkbookWords::isTooDeep);

                     self.elementStarts (withoutPrefix (name), PartAttributes (attributes));
                 });
    }

    static void XMLCALL end (void* walk, const XML_Char* name)
    {
        guarded (walk,
                 [=] (PartXML& self)
                 {
                     self.elementEnds (withoutPrefix (name));
                     --self.nesting;
                 });
    }

    static void XMLCALL text (void* walk, const XML_Char* characters, int length)
    {
        guarded (walk,
                 [=] (PartXML& self) {
                     self.textComes ({ characters, static_cast<std::size_t> (length) });
                 });
    }

    static void XMLCALL documentType (void* walk, const XML_Char*, const XML_Char*, const XML_Char*, int)
    {
        guarded (walk, [] (PartXML&) { refuse(); });
    }
};

PartXML::PartXML() : parser (XML_ParserCreate (nullptr))
{
    if (parser == nullptr)
        throw std::bad_alloc();

    XML_SetUserData (parser.get(), this);
    XML_SetElementHandler (parser.get(), Callbacks::start, Callbacks::end);
    XML_SetCharacterDataHandler (parser.get(), Callbacks::text);
    XML_SetStartDoctypeDeclHandler (parser.get(), Callbacks::documentType);
}

PartXML::~PartXML() = default;

void PartXML::Free::operator() (XML_ParserStruct* parserToFree) const { XML_ParserFree (parserToFree); }

void PartXML::take (std::string_view bytes)
{
    constexpr std::size_t mostAtOnce = std::size_t { 1 } << 24;

    for (; bytes.size() > mostAtOnce; bytes.remove_prefix (mostAtOnce))
        take (bytes.substr (0, mostAtOnce), false);

    take (bytes, false);
}

void PartXML::finish() { take ({}, true); }

void PartXML::take (std::string_view bytes, bool isLast)
{
    const auto status = XML_Parse (parser.get(), bytes.data(), static_cast<int> (bytes.size()),
                                   isLast ? XML_TRUE : XML_FALSE);

    if (failure != nullptr)
        std::rethrow_exception (std::exchange (failure, nullptr));
    if (status == XML_STATUS_OK)
        return;
    if (XML_GetErrorCode (parser.get()) == XML_ERROR_NO_MEMORY)
        throw std::bad_alloc();

    Callbacks::refuse();
}

void PartXML::textComes (std::string_view) {}

} // namespace ZEP::Core
