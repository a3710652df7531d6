// SPDX-License-Identifier: GPL-3.0-only
#include "WordImport.h"

#include "CueBlockReader.h"
#include "CueTableReader.h"
#include "CueTextReader.h"
#include "Failure.h"
#include "ImportLimits.h"
#include "PackageReader.h"
#include "WordStyles.h"

#include <algorithm>
#include <filesystem>
#include <functional>

namespace DocxHandler
{

namespace
{

constexpr std::size_t largestStyles = std::size_t { 16 } << 20U;
constexpr std::size_t largestRelations =
    std::size_t { 16 } << 20U; ///< some programs list each picture for every place where it is shown

/* The name of the part that a relation of this kind leads to, from a part in `folder`. */
std::string targetOf (const PackageReader& package, const std::string& relationsPart,
                      const std::string& folder, std::string_view kind)
{
    auto bytes = package.read (relationsPart, largestRelations);

    if (bytes.empty())
        return {};

    pugi::xml_document relations;
    parseXMLPart (relations, bytes);

    for (const auto& relation : relations.document_element().children())
    {
        const std::string_view type = relation.attribute ("Type").value();

        if (! type.ends_with (kind)
            || std::string_view (relation.attribute ("TargetMode").value()) == "External")
            continue;

        const std::string target = relation.attribute ("Target").value();
        const auto path = target.starts_with ('/') ? target.substr (1) : folder + target;
        return std::filesystem::path (path).lexically_normal().generic_string();
    }

    return {};
}

WordContent readContent (const PackageReader& package)
{
    auto document = targetOf (package, "_rels/.rels", "", "/officeDocument");

    if (! package.has (document))
        document = "word/document.xml";

    if (! package.has (document))
        throw Failure ("is no Word document");

    const auto nameStart = document.rfind ('/') + 1; // 0 where there is no folder
    const auto folder = document.substr (0, nameStart);
    const auto relations = folder + "_rels/" + document.substr (nameStart) + ".rels";
    const auto styles = targetOf (package, relations, folder, "/styles");

    return readWordContent (package.read (document, ImportLimits::bytesOfText),
                            package.read (styles, largestStyles));
}

using TableReader = std::function<std::vector<ImportedCue> (const Table&)>;

std::vector<ImportedCue> cuesOfTables (const WordContent& content, const TableReader& read)
{
    std::vector<ImportedCue> cues;

    for (const auto& block : content.blocks)
        if (const auto* table = std::get_if<Table> (&block))
            for (auto& cue : read (*table))
                cues.push_back (std::move (cue));

    return cues;
}

std::vector<ImportedCue> cuesOfTitledTables (const WordContent& content)
{
    std::vector<const Table*> tables;

    for (const auto& block : content.blocks)
        if (const auto* table = std::get_if<Table> (&block))
            tables.push_back (table);

    return readTitledTables (tables);
}

/* Those of our blocks; a block that has lost its styles counts among others that have theirs. */
std::vector<ImportedCue> cuesOfBlocks (const WordContent& content)
{
    const auto isOurs = std::any_of (content.blocks.begin(), content.blocks.end(),
                                     [] (const auto& block)
                                     {
                                         const auto* table = std::get_if<Table> (&block);
                                         return table != nullptr && holdsCueBlocks (*table);
                                     });

    if (! isOurs)
        return {};

    return cuesOfTables (content,
                         [] (const Table& table)
                         {
                             // A table within a text is read as that text.
                             return ! table.isPartOfCell
                                            && (holdsCueBlocks (table) || looksLikeCueBlocks (table))
                                        ? readCueBlocks (table)
                                        : std::vector<ImportedCue>();
                         });
}

std::vector<ImportedCue> cuesOfBlocksByShape (const WordContent& content)
{
    return cuesOfTables (
        content, [] (const Table& table)
        { return looksLikeCueBlocks (table) ? readCueBlocks (table) : std::vector<ImportedCue>(); });
}

std::vector<ImportedCue> cuesOfText (const WordContent& content)
{
    std::vector<RichText> paragraphs;

    for (const auto& block : content.blocks)
    {
        if (const auto* paragraph = std::get_if<Paragraph> (&block))
            paragraphs.push_back (paragraph->text);
        else
            for (const auto& row : std::get<Table> (block).rows)
                for (const auto& cell : row.cells)
                    for (const auto& inCell : cell.paragraphs)
                        if (! inCell.isNested) // its own table follows
                            paragraphs.push_back (inCell.text);
    }

    return readRunningText (paragraphs);
}

} // namespace

std::vector<ImportedCue> cuesOfContent (const WordContent& content)
{
    using Reader = std::function<std::vector<ImportedCue> (const WordContent&)>;
    const Reader timecodeTables = [] (const WordContent& all)
    { return cuesOfTables (all, readTimecodeTable); };

    for (const auto& read : { Reader (cuesOfBlocks), Reader (cuesOfTitledTables),
                              Reader (cuesOfBlocksByShape), timecodeTables, Reader (cuesOfText) })
        if (auto cues = read (content); ! cues.empty())
            return cues;

    return {};
}

std::vector<ImportedCue> cuesOfWordDocument (std::string_view bytes)
{
    const PackageReader package (bytes);
    auto cues = cuesOfContent (readContent (package));

    if (cues.empty())
        throw Failure ("holds no cues");

    return cues;
}

} // namespace DocxHandler
