// SPDX-License-Identifier: GPL-3.0-only
//   part                              what is read in it
//   _rels/.rels                       Relationship Type, Target: which part is the workbook
//   xl/workbook.xml                   workbookPr date1904; workbookView activeTab; sheet name, state, r:id. Extensions have elements of
//                                     the same names elsewhere, so that these count in their places alone
//   xl/_rels/workbook.xml.rels        Relationship Id, Type, Target: sheets, styles, shared strings, theme
#include "core/documents/WorkbookParts.h"

#include "core/documents/PartXML.h"
#include "core/documents/UnreadableWorkbook.h"
#include "core/documents/WorkbookArchive.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ZEP::Core
{
namespace
{

constexpr auto relationsOfArchive = "_rels/.rels";
constexpr auto partOfBinaryWorkbook = "xl/workbook.bin";
constexpr auto partThatNamesTheKind = "mimetype";
constexpr auto usualWorkbook = "xl/workbook.xml";

struct Relation
{
    std::string id;
    std::string kind; ///< the last word of its type: "worksheet"
    std::string part;
};

using Relations = std::vector<Relation>;

/** A sheet has a part of its own, and so has what a workbook relates to: more of them than an archive may have parts belong to no
    workbook, and a few bytes would ask for millions. */
template <typename List>
void refuseTooMany (const List& list)
{
    if (list.size() >= WorkbookArchive::limits().parts)
        throw UnreadableWorkbook (WorkbookWords::isTooLarge);
}

class RelationsXML final : public PartXML
{
public:
    explicit RelationsXML (std::string partThatRelates) : from (std::move (partThatRelates)) {}

    Relations relations;

private:
    void elementStarts (std::string_view name, const PartAttributes& attributes) override
    {
        if (name != "Relationship" || attributes["TargetMode"] == "External")
            return;

        refuseTooMany (relations);
        const auto type = attributes["Type"];
        relations.push_back ({ std::string (attributes["Id"]),
                               std::string (type.substr (type.find_last_of ('/') + 1)),
                               pathOfTarget (from, std::string (attributes["Target"])) });
    }

    void elementEnds (std::string_view) override {}

    std::string from;
};

constexpr int depthOfProperties = 2;
constexpr int depthOfEntries = 3; ///< of lists: of views, of sheets

/** What stands in the workbook's own part. */
class WorkbookItself final : public PartXML
{
public:
    struct Entry
    {
        SheetEntry sheet;
        std::string relation;
    };

    std::vector<Entry> entries;
    std::optional<int> activeTab;
    bool countsFrom1904 = false;
    bool isWorkbook = false;

private:
    void elementStarts (std::string_view name, const PartAttributes& attributes) override
    {
        if (depth() == 1)
            isWorkbook = name == "workbook";
        else if (name == "workbookPr" && depth() == depthOfProperties)
            countsFrom1904 = attributes.isOn ("date1904", false);
        else if (name == "workbookView" && depth() == depthOfEntries && ! activeTab.has_value())
            activeTab = attributes.number ("activeTab", 0);
        else if (name == "sheet" && depth() == depthOfEntries)
            addSheet (attributes);
    }

    void elementEnds (std::string_view) override {}

    void addSheet (const PartAttributes& attributes)
    {
        refuseTooMany (entries);
        const auto state = attributes["state"];
        Entry entry;
        entry.sheet.name = attributes["name"];
        entry.sheet.isHidden = state == "hidden" || state == "veryHidden";
        entry.relation = attributes["id"];
        entries.push_back (std::move (entry));
    }
};

Relations relationsOf (const WorkbookArchive& archive, const std::string& part,
                       const std::string& relationsPart)
{
    if (! archive.has (relationsPart))
        return {};

    RelationsXML walk (part);
    archive.walkThrough (relationsPart, walk);
    return std::move (walk.relations);
}

std::string relationsPartOf (const std::string& part)
{
    const auto name = part.find_last_of ('/') + 1;
    return part.substr (0, name) + "_rels/" + part.substr (name) + ".rels";
}

std::string partOfKind (const Relations& relations, std::string_view kind)
{
    const auto relation =
        std::find_if (relations.begin(), relations.end(), [=] (const auto& r) { return r.kind == kind; });
    return relation == relations.end() ? std::string() : relation->part;
}

/** Sheets of cells, "worksheet", of charts, dialogues and macros. */
bool leadsToSheet (const Relation& relation) { return relation.kind.ends_with ("sheet"); }

/** The relations that lead to sheets, by their ids; the last one of an id. */
std::unordered_map<std::string_view, const Relation*> relationsOfSheets (const Relations& relations)
{
    std::unordered_map<std::string_view, const Relation*> byId;

    for (const auto& relation : relations)
        if (! relation.id.empty() && leadsToSheet (relation))
            byId[relation.id] = &relation;

    return byId;
}

void leaveFolder (std::string& path)
{
    const auto slash = path.rfind ('/');
    path.resize (slash == std::string::npos ? 0 : slash);
}

/** A path in which "%20" and the like have become the bytes that they stand for. */
std::string withoutPercents (std::string_view path)
{
    std::string plain;

    for (; ! path.empty(); path.remove_prefix (1))
    {
        unsigned char byte = 0;
        const auto* digits = path.data() + 1;

        if (path.front() == '%' && path.size() > 2
            && std::from_chars (digits, digits + 2, byte, 16).ptr == digits + 2)
            path.remove_prefix (2);
        else
            byte = static_cast<unsigned char> (path.front());

        plain += static_cast<char> (byte);
    }

    return plain;
}

/** The path under which the archive has a part; empty if it has none. A target is an address, in which blanks and the like are
    written as "%20", and archives have their parts both under that and under the plain name. */
std::string existing (const WorkbookArchive& archive, const std::string& part)
{
    if (! part.empty() && archive.has (part))
        return part;

    auto plain = withoutPercents (part);
    return ! plain.empty() && archive.has (plain) ? plain : std::string();
}

/** Says what an archive without a workbook is, as far as that helps. */
[[noreturn]] void refuseOtherArchive (const WorkbookArchive& archive)
{
    constexpr std::string_view spreadsheet = "application/vnd.oasis.opendocument.spreadsheet";

    if (archive.has (partThatNamesTheKind)
        && archive.bytesOf (partThatNamesTheKind).starts_with (spreadsheet))
        throw UnreadableWorkbook (WorkbookWords::isOpenDocument);

    throw UnreadableWorkbook (archive.has (partOfBinaryWorkbook) ? WorkbookWords::isBinaryWorkbook
                                                                 : WorkbookWords::isNoWorkbook);
}

std::string findWorkbook (const WorkbookArchive& archive)
{
    auto part =
        existing (archive, partOfKind (relationsOf (archive, {}, relationsOfArchive), "officeDocument"));

    if (part.empty())
        part = existing (archive, usualWorkbook);
    if (part.empty() || part == partOfBinaryWorkbook)
        refuseOtherArchive (archive);

    return part;
}

/** A workbook can't show a hidden sheet in front: the next one that isn't hidden takes its place, one of cells before a chart. */
std::size_t sheetInFront (const std::vector<SheetEntry>& sheets, std::size_t wanted)
{
    const auto first = wanted < sheets.size() ? wanted : 0;

    if (! sheets[first].isHidden)
        return first;

    for (const bool takesCharts : { false, true })
        for (std::size_t i = 0; i < sheets.size(); ++i)
            if (const auto place = (first + i) % sheets.size();
                ! sheets[place].isHidden && (takesCharts || sheets[place].isTable))
                return place;

    return first;
}

} // namespace

std::string pathOfTarget (const std::string& from, const std::string& target)
{
    std::string result;
    const auto path =
        target.starts_with ('/') ? target : from.substr (0, from.find_last_of ('/') + 1) + target;

    for (std::size_t start = 0; start <= path.size();)
    {
        const auto end = std::min (path.find_first_of ("/\\", start), path.size());
        const auto folder = std::string_view (path).substr (start, end - start);
        start = end + 1;

        if (folder == "..")
            leaveFolder (result);
        else if (! folder.empty() && folder != ".")
            result.append (result.empty() ? "" : "/").append (folder);
    }

    return result;
}

WorkbookParts readWorkbookParts (const WorkbookArchive& archive)
{
    const auto workbook = findWorkbook (archive);
    const auto relations = relationsOf (archive, workbook, relationsPartOf (workbook));
    WorkbookItself walk;
    archive.walkThrough (workbook, walk);

    if (! walk.isWorkbook)
        throw UnreadableWorkbook (WorkbookWords::isNoWorkbook);
    if (walk.entries.empty())
        throw UnreadableWorkbook (WorkbookWords::hasNoSheet);

    WorkbookParts parts;
    const auto byId = relationsOfSheets (relations);

    for (auto& [sheet, id] : walk.entries)
    {
        if (const auto found = byId.find (id); found != byId.end())
        {
            sheet.part = existing (archive, found->second->part);
            sheet.isTable = found->second->kind == "worksheet";
        }

        parts.sheets.push_back (std::move (sheet));
    }

    parts.sheetInFront = sheetInFront (parts.sheets, static_cast<std::size_t> (walk.activeTab.value_or (0)));
    parts.countsFrom1904 = walk.countsFrom1904;
    parts.styles = existing (archive, partOfKind (relations, "styles"));
    parts.sharedStrings = existing (archive, partOfKind (relations, "sharedStrings"));
    parts.theme = existing (archive, partOfKind (relations, "theme"));
    return parts;
}

} // namespace ZEP::Core
