// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookCheck.h"

#include <expat.h>
#include <zip.h>

#include <memory>
#include <new>
#include <string_view>

namespace ZEP::Core
{

namespace
{

constexpr auto firstSheet = "xl/worksheets/sheet1.xml";
constexpr int bytesAtOnce = 1 << 16;

template <auto function>
struct Calls
{
    template <typename Pointer>
    void operator() (Pointer* pointer) const
    {
        function (pointer);
    }
};

using Archive = std::unique_ptr<zip_t, Calls<zip_discard>>;
using Part = std::unique_ptr<zip_file_t, Calls<zip_fclose>>;
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, Calls<XML_ParserFree>>;

/** Counts what a sheet holds while it is parsed. */
class Counter final
{
public:
    explicit Counter (XML_Parser parser)
    {
        XML_SetUserData (parser, this);
        XML_SetElementHandler (parser, begin, end);
        XML_SetCharacterDataHandler (parser, characters);
    }

    WorksheetContent content;

private:
    static Counter& counter (void* self) { return *static_cast<Counter*> (self); }

    static void begin (void* self, const XML_Char* name, const XML_Char**)
    {
        const std::string_view element (name);
        counter (self).content.cells += element == "c" ? 1U : 0U;
        counter (self).isInText = element == "t";
    }

    static void end (void* self, const XML_Char*) { counter (self).isInText = false; }

    static void characters (void* self, const XML_Char*, int length)
    {
        if (counter (self).isInText)
            counter (self).content.bytesOfText += static_cast<std::size_t> (length);
    }

    bool isInText = false;
};

Archive archiveIn (std::string_view bytes)
{
    auto* const source = zip_source_buffer_create (bytes.data(), bytes.size(), 0, nullptr);

    if (source == nullptr)
        throw std::bad_alloc();

    Archive archive (zip_open_from_source (source, ZIP_RDONLY, nullptr));

    if (archive == nullptr)
        zip_source_free (source);

    return archive;
}

/** Whether a part could be read to its end and is XML. */
bool parses (XML_Parser parser, zip_file_t& part)
{
    for (;;)
    {
        auto* const piece = XML_GetBuffer (parser, bytesAtOnce);

        if (piece == nullptr)
            throw std::bad_alloc();

        const auto length = zip_fread (&part, piece, bytesAtOnce);

        if (length < 0
            || XML_ParseBuffer (parser, static_cast<int> (length), length == 0 ? 1 : 0) != XML_STATUS_OK)
            return false;

        if (length == 0)
            return true;
    }
}

bool isWhole (zip_t& archive, zip_uint64_t index, const WorksheetContent& content)
{
    const Part part (zip_fopen_index (&archive, index, 0));
    const Parser parser (XML_ParserCreate (nullptr));

    if (parser == nullptr)
        throw std::bad_alloc();

    if (std::string_view (zip_get_name (&archive, index, 0)) != firstSheet)
        return part != nullptr && parses (parser.get(), *part);

    const Counter counter (parser.get());
    return part != nullptr && parses (parser.get(), *part) && counter.content == content;
}

} // namespace

bool isWholeWorkbook (std::string_view bytes, const WorksheetContent& content)
{
    const auto archive = archiveIn (bytes);

    if (archive == nullptr || zip_name_locate (archive.get(), firstSheet, 0) < 0)
        return false;

    const auto parts = static_cast<zip_uint64_t> (zip_get_num_entries (archive.get(), 0));

    for (zip_uint64_t i = 0; i < parts; ++i)
        if (! isWhole (*archive, i, content))
            return false;

    return true;
}

} // namespace ZEP::Core
