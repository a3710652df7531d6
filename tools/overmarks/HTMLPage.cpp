// SPDX-License-Identifier: GPL-3.0-only
#include "HTMLPage.h"

#include "OutputFile.h"

#include <utility>

namespace overmarks
{

namespace
{

// A browser that believes a piece of dialogue to be more than a text still loads and runs nothing.
constexpr std::string_view head = R"(<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; img-src data:">
)";

constexpr std::string_view usualStyle = R"(
:root { color-scheme: light; }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1.5rem; max-width: 75rem; background: #fff; color: #1c1c1c;
  font: 15px/1.45 "Helvetica Neue", Arial, "Liberation Sans", sans-serif; }
h1 { margin: 0 0 1rem; font-size: 1.6rem; }
h2 { margin: 2rem 0 .5rem; font-size: 1.15rem; break-after: avoid; }
p { margin: .4rem 0; white-space: pre-line; }
h1, h2, p { overflow-wrap: anywhere; unicode-bidi: isolate; }
svg, img { max-width: 100%; height: auto; }
table { width: 100%; margin: .6rem 0 1.4rem; border-collapse: collapse; font-variant-numeric: tabular-nums; }
th, td { padding: .35rem .6rem; border-bottom: 1px solid #d5d5d5; text-align: start; vertical-align: top; }
th { border-bottom: 2px solid #777; white-space: nowrap; }
td { white-space: pre-line; overflow-wrap: anywhere; unicode-bidi: isolate; }
th.number, td.number { text-align: end; }
td.whole { white-space: nowrap; }
tbody tr:nth-child(even) { background: #f6f6f6; }
@media screen and (max-width: 40rem) {
  body { padding: .8rem; }
  table, tbody, tr, td { display: block; width: 100%; }
  thead { display: none; }
  tr { padding: .4rem 0; border-bottom: 2px solid #777; }
  td, td.number { padding: .1rem .4rem; border: 0; text-align: start; white-space: pre-line; }
  td:empty { display: none; }
  td::before { content: attr(data-title) "\a0\a0"; color: #666; font-size: .85em; }
}
@media print {
  @page { margin: 14mm; }
  body { max-width: none; padding: 0; font-size: 9.5pt; }
  thead { display: table-header-group; }
  tr { break-inside: avoid; }
  tbody tr:nth-child(even) { background: none; }
}
)";

/** What stands for a character in HTML; null where it stands for itself. */
const char* entityOf (char character)
{
    switch (character)
    {
        case '&': return "&amp;";
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '"': return "&quot;";
        case '\'': return "&#39;";
    }

    return nullptr;
}

/** C0 but tab and line feed, DEL and C1: no page may hold them. */
bool isLeftOut (juce::juce_wchar character)
{
    return (character < 0x20 && character != '\t' && character != '\n')
           || (character >= 0x7f && character < 0xa0);
}

/** A timecode, a cue number or a name is not to be torn apart by a column that is a little too narrow. */
bool staysWhole (const std::string& html)
{
    constexpr std::size_t most = 20;
    return html.size() <= most && html.find ('\n') == std::string::npos;
}

std::string openingTag (const std::string& title, bool isNumber, bool isWhole)
{
    return "<td dir=\"auto\" data-title=\"" + title + "\""
           + (isNumber  ? " class=\"number\">"
              : isWhole ? " class=\"whole\">"
                        : ">");
}

} // namespace

HTMLPage::HTMLPage (const juce::String& pageTitle) : title (escaped (pageTitle)) {}

void HTMLPage::heading (const juce::String& words)
{
    body += "<h2 dir=\"auto\">" + escaped (words) + "</h2>\n";
}

void HTMLPage::paragraph (const juce::String& words)
{
    body += "<p dir=\"auto\">" + escaped (words) + "</p>\n";
}

void HTMLPage::table (const Texts& columns, const std::vector<Texts>& rows,
                      const std::set<std::size_t>& numbers)
{
    std::vector<std::vector<std::string>> cells;
    cells.reserve (rows.size());

    for (const auto& row : rows)
    {
        auto& escapedRow = cells.emplace_back();

        for (const auto& cell : row)
            escapedRow.push_back (escaped (cell));
    }

    tableOfMarkup (columns, cells, numbers);
}

void HTMLPage::tableOfMarkup (const Texts& columns, const std::vector<std::vector<std::string>>& rows,
                              const std::set<std::size_t>& numbers)
{
    std::vector<std::string> titles;
    body += "<table>\n<thead><tr>";

    for (std::size_t column = 0; column < columns.size(); ++column)
    {
        titles.push_back (escaped (columns[column]));
        body += numbers.count (column) > 0 ? "<th scope=\"col\" class=\"number\">" : "<th scope=\"col\">";
        body += titles.back() + "</th>";
    }

    body += "</tr></thead>\n<tbody>\n";

    for (const auto& row : rows)
    {
        body += "<tr>";

        for (std::size_t column = 0; column < row.size() && column < titles.size(); ++column)
            body += openingTag (titles[column], numbers.count (column) > 0, staysWhole (row[column]))
                    + row[column] + "</td>";

        body += "</tr>\n";
    }

    body += "</tbody>\n</table>\n";
}

void HTMLPage::raw (std::string_view html) { body.append (html).append ("\n"); }

void HTMLPage::style (std::string_view css) { styles.append (css).append ("\n"); }

std::string HTMLPage::text() const
{
    std::string page ("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n");
    page.reserve (body.size() + 4096);
    page.append (head).append ("<title>").append (title).append ("</title>\n");
    page.append ("<style>").append (usualStyle).append (styles).append ("</style>\n</head>\n<body>\n");
    page.append ("<h1 dir=\"auto\">").append (title).append ("</h1>\n").append (body);
    return page.append ("</body>\n</html>\n");
}

void HTMLPage::write (const juce::File& file) const { writeWholeFile (file, text()); }

std::string HTMLPage::escaped (const juce::String& text)
{
    std::string html;
    html.reserve (text.getNumBytesAsUTF8());

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
    {
        const auto* const first = p.getAddress();
        const auto character = p.getAndAdvance();

        if (isLeftOut (character))
        {
            // Old files end their lines with a carriage return alone.
            if (character == '\r' && *p != '\n')
                html += '\n';

            continue;
        }

        if (const auto* const entity = character < 0x80 ? entityOf (static_cast<char> (character)) : nullptr)
            html += entity;
        else
            html.append (first, static_cast<std::size_t> (p.getAddress() - first));
    }

    return html;
}

} // namespace overmarks
