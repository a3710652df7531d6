// SPDX-License-Identifier: GPL-3.0-only
#include "comparison/ChangeReport.h"

#include "DisplayWidth.h"
#include "ReportFiles.h"
#include "Session.h"

#include "list/ProjectJSON.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

// ---- table ---------------------------------------------------------------------------------------------------------------

/** The cells before the change itself, which stands last and is never cut. */
using Cells = std::array<juce::String, 4>;

Cells cellsOf (const ChangeRow& row) { return { row.kind, row.cue, row.start, row.character }; }

juce::String asUTF8 (const std::string& text) { return juce::CharPointer_UTF8 (text.c_str()); }

std::string shown (const TextPiece& piece, bool colours)
{
    const auto text = printable (asUTF8 (piece.text)).toStdString();

    switch (piece.kind)
    {
        case TextPiece::Kind::kept: return text;
        case TextPiece::Kind::removed:
            return colours ? "\033[31m[-" + text + "-]\033[0m" : "[-" + text + "-]";
        case TextPiece::Kind::added: return colours ? "\033[32m{+" + text + "+}\033[0m" : "{+" + text + "+}";
    }

    return text;
}

std::string lineOf (const Cells& cells, const std::array<int, 4>& widths, const std::string& change)
{
    std::string line;

    for (std::size_t i = 0; i < cells.size(); ++i)
        if (widths[i] > 0)
            line += fitted (printable (cells[i]), widths[i]).toStdString() + "  ";

    line += change;
    line.erase (line.find_last_not_of (' ') + 1);
    return line + "\n";
}

// ---- JSON ----------------------------------------------------------------------------------------------------------------

/** The events as JSON objects, each without a line break in it, under their addresses. */
class EventObjects final
{
public:
    EventObjects (const ListChanges& changes, const ComparedEvent* ListChange::*side, const Project& project)
    {
        std::vector<const ComparedEvent*> compared;

        for (const auto& change : changes.all())
            if (change.*side != nullptr && (compared.empty() || compared.back() != change.*side))
                compared.push_back (change.*side);

        EventArray::Events events;

        for (const auto* one : compared)
            events.push_back (one->event);

        project.makeCurrent();
        text = ProjectJSON::shownEvents (events);
        take (compared);
    }

    std::string_view of (const ComparedEvent* event) const
    {
        return event != nullptr ? objects.at (event) : std::string_view ("null");
    }

private:
    /** Each event has a line of its own, since a text's line breaks are escaped. */
    void take (const std::vector<const ComparedEvent*>& compared)
    {
        auto next = compared.begin();

        for (std::size_t begin = 0; begin < text.size() && next != compared.end();)
        {
            const auto end = std::min (text.find ('\n', begin), text.size());
            auto line = std::string_view (text).substr (begin, end - begin);
            begin = end + 1;
            line.remove_prefix (std::min (line.find_first_not_of (' '), line.size()));

            if (line.size() > 1 && line.starts_with ("{\""))
                objects[*next++] = line.substr (0, line.rfind ('}') + 1);
        }
    }

    std::string text;
    std::map<const ComparedEvent*, std::string_view> objects;
};

json namesOfFields (const ListChange& change)
{
    auto names = json::array();

    for (const auto* field : change.fields)
        names.push_back (field->name);

    return names;
}

// ---- rows of a spreadsheet -----------------------------------------------------------------------------------------------

juce::String valueIn (const ComparedEvent* event, juce::String (*value) (const ComparedEvent&))
{
    return event != nullptr ? value (*event) : juce::String();
}

/** What has changed besides the times and the text, which have columns of their own. */
juce::String detailsOf (const ListChange& change)
{
    juce::StringArray details;

    if (change.kind == ChangeKind::other)
        for (const auto* field : change.fields)
            details.add (juce::String (field->words) + ": " + field->value (*change.old) + " -> "
                         + field->value (*change.now));

    return details.joinIntoString ("; ");
}

std::vector<juce::String> csvRow (const ListChange& change, const ZEP::Core::_TCDef& def)
{
    std::vector<juce::String> row { juce::String (nameOf (change.kind)) };
    const auto add = [&] (juce::String (*value) (const ComparedEvent&))
    {
        row.push_back (valueIn (change.old, value));
        row.push_back (valueIn (change.now, value));
    };
    add ([] (const ComparedEvent& e) { return e.event->getCueNumber(); });
    add ([] (const ComparedEvent& e) { return e.character; });
    add ([] (const ComparedEvent& e) { return e.event->getStartTCString(); });
    add ([] (const ComparedEvent& e) { return e.event->getEndTCString(); });
    row.push_back (change.shift.value_or (0) != 0 ? shiftText (*change.shift, def) : juce::String());
    row.push_back (change.longer.value_or (0) != 0 ? shiftText (*change.longer, def) : juce::String());
    add ([] (const ComparedEvent& e) { return e.event->getText().getText(); });
    row.push_back (detailsOf (change));
    return row;
}

// ---- page ----------------------------------------------------------------------------------------------------------------

std::string markup (const TextPieces& pieces)
{
    std::string html;

    for (const auto& piece : pieces)
    {
        const auto text = HTMLPage::escaped (asUTF8 (piece.text));

        switch (piece.kind)
        {
            case TextPiece::Kind::kept: html += text; break;
            case TextPiece::Kind::removed: html += "<del>" + text + "</del>"; break;
            case TextPiece::Kind::added: html += "<ins>" + text + "</ins>"; break;
        }
    }

    return html;
}

} // namespace

std::string changeTable (const ListChanges& changes, bool colours)
{
    const Cells titles { "Kind", "Cue", "Start TC", "Character" };
    const auto rows = changeRows (changes);
    std::array<int, 4> widths {};
    constexpr int widest = 30;

    for (const auto& row : rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            if (const int width = displayWidth (printable (cellsOf (row)[i])); width > 0)
                widths[i] = std::max ({ widths[i], std::min (width, widest), displayWidth (titles[i]) });

    auto table = rows.empty() ? std::string() : lineOf (titles, widths, "Change");

    for (const auto& row : rows)
    {
        std::string change;

        for (const auto& piece : row.change)
            change += shown (piece, colours);

        table += lineOf (cellsOf (row), widths, change);
    }

    return table;
}

std::string changesAsJSON (const ListChanges& changes, const json& members)
{
    const EventObjects olds (changes, &ListChange::old, changes.old.project);
    const EventObjects news (changes, &ListChange::now, changes.now.project);
    const auto& def = changes.now.project.timeInfo->tcDef;
    std::string text = "{\n \"changes\": [";
    const char* separator = "\n  ";

    for (const auto& change : changes.all())
    {
        text += std::exchange (separator, ",\n  ");
        text += "{\"kind\": \"" + nameOf (change.kind) + "\",\n   \"old\": ";
        text.append (olds.of (change.old)).append (",\n   \"new\": ").append (news.of (change.now));
        text += ",\n   \"fields\": " + namesOfFields (change).dump();

        if (change.shift.has_value())
            text += ",\n   \"shift\": \"" + shiftText (*change.shift, def).toStdString()
                    + "\", \"shiftFrames\": " + std::to_string (*change.shift)
                    + ", \"longerFrames\": " + std::to_string (change.longer.value_or (0));

        text += "}";
    }

    text += changes.all().empty() ? "]" : "\n ]";

    for (const auto& [name, value] : members.items())
        text +=
            ",\n " + json (name).dump() + ": " + value.dump (-1, ' ', false, json::error_handler_t::replace);

    return text + "\n}";
}

std::string changesAsCSV (const ListChanges& changes)
{
    std::vector<std::vector<juce::String>> rows;

    for (const auto& change : changes.all())
        rows.push_back (csvRow (change, changes.now.project.timeInfo->tcDef));

    return csvText ({ "Kind", "Old Cue Number", "New Cue Number", "Old Character", "New Character",
                      "Old Start TC", "New Start TC", "Old End TC", "New End TC", "Moved By", "Longer By",
                      "Old Text", "New Text", "Other Changes" },
                    rows);
}

HTMLPage changePage (const ListChanges& changes, const juce::String& oldName, const juce::String& newName,
                     const std::vector<juce::String>& remarks)
{
    HTMLPage page ("What has changed");
    page.style ("del { color: #8a1010; background: #fbe3e3; } ins { color: #0d5a1c; background: #ddf4e0; }");
    page.paragraph ("Old: " + oldName + "\nNew: " + newName);
    page.paragraph (summaryText (changes));

    for (const auto& remark : remarks)
        page.paragraph (remark);

    std::vector<std::vector<std::string>> rows;

    for (const auto& row : changeRows (changes))
    {
        std::vector<std::string> cells;

        for (const auto& cell : cellsOf (row))
            cells.push_back (HTMLPage::escaped (cell));

        cells.push_back (markup (row.change));
        rows.push_back (std::move (cells));
    }

    if (! rows.empty())
        page.tableOfMarkup ({ "Kind", "Cue", "Start TC", "Character", "Change" }, rows);

    return page;
}

} // namespace overmarks
