// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PrintedDocument.h"

#include "core/system/WholeFile.h"
#include "export/print/PrintError.h"

#include <algorithm>
#include <string>

namespace ZEP::Overmarks
{

using std::string_view;

namespace
{

// Browsers of this family compress what stands on a page, and nothing of what describes it.
constexpr string_view annotations = "/Annots";
constexpr string_view addressOfLink = "/URI (";

constexpr mode_t rightsOfFile = 0600;

/** Calls for the place behind each mark. */
template <typename Action>
void forEachPlaceBehind (string_view mark, string_view document, Action action)
{
    for (auto at = document.find (mark); at != string_view::npos; at = document.find (mark, at + mark.size()))
        action (at + mark.size());
}

std::size_t pagesOf (string_view document)
{
    std::size_t pages = 0;
    forEachPlaceBehind ("/Type /Page", document,
                        [&] (std::size_t place)
                        { pages += place < document.size() && document[place] != 's' ? 1 : 0; });
    return pages;
}

/** The end of a text in parentheses; those within it have a backslash before them. */
std::size_t endOfText (string_view document, std::size_t start)
{
    auto place = start;

    while (place < document.size() && document[place] != ')')
        place += document[place] == '\\' ? 2 : 1;

    return std::min (place, document.size());
}

/** The document with its pages' links under a name that means nothing, and blanks for their addresses. Everything keeps its place,
    as the document's own table of places demands. */
std::string withoutLinks (string_view document)
{
    std::string result (document);

    forEachPlaceBehind (annotations, document, [&result] (std::size_t place) { result[place - 1] = '_'; });
    forEachPlaceBehind (addressOfLink, document,
                        [&] (std::size_t place)
                        {
                            const auto end = endOfText (document, place);
                            result.replace (place, end - place, end - place, ' ');
                        });
    return result;
}

void writeWhole (const juce::File& file, string_view bytes)
{
    if (const auto result = ZEP::Core::WholeFile::write (file, bytes); result.failed())
        throw PrintError (result.getErrorMessage()
                              .fromFirstOccurrenceOf (file.getFullPathName() + ": ", false, false)
                              .toStdString());
}

} // namespace

PrintedDocument::PrintedDocument (const std::filesystem::path& folder, Limits limitsOfDocument)
    : limitsToKeep (limitsOfDocument),
      path (folder / "printed.pdf"),
      temporary (path, O_WRONLY | O_CREAT | O_TRUNC, rightsOfFile)
{
}

void PrintedDocument::write (string_view bytes)
{
    written += bytes.size();

    if (written > limitsToKeep.bytes)
        throw PrintError ("the printed sheet is larger than " + std::to_string (limitsToKeep.bytes >> 20)
                          + " MB");

    requireRoom (temporary.write (bytes));
}

void PrintedDocument::requireRoom (bool isThere) const
{
    if (! isThere)
        throw PrintError ("the disk takes no more temporary files in " + path.parent_path().string());
}

void PrintedDocument::moveTo (const juce::File& file)
{
    requireRoom (temporary.isOpen() && temporary.close());
    const auto name = path.string();
    const juce::MemoryMappedFile mapped (
        juce::File (juce::String::fromUTF8 (name.data(), static_cast<int> (name.size()))),
        juce::MemoryMappedFile::readOnly);

    // Nothing can be mapped of an empty file either.
    const string_view bytes (static_cast<const char*> (mapped.getData()),
                             mapped.getData() != nullptr ? mapped.getSize() : 0);

    if (! bytes.starts_with ("%PDF-"))
        throw PrintError ("the browser has printed no PDF document");

    if (pagesOf (bytes) > limitsToKeep.pages)
        throw PrintError ("the sheet has more than " + std::to_string (limitsToKeep.pages) + " pages");

    if (bytes.find (annotations) != string_view::npos || bytes.find (addressOfLink) != string_view::npos)
        writeWhole (file, withoutLinks (bytes));
    else
        writeWhole (file, bytes);
}

} // namespace ZEP::Overmarks
