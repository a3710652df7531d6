// SPDX-License-Identifier: GPL-3.0-only
#include "statistics/StatisticsPage.h"

#include "Session.h"
#include "statistics/WorkPicture.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace overmarks
{

namespace
{

using Row = std::vector<std::string>;

// More reels than this don't fit the width of a page.
constexpr std::size_t mostReelsInATable = 12;

// Two colours that all kinds of colour blindness tell apart, one dark and one light.
constexpr std::string_view style = R"(
svg .done { fill: #0072b2; stroke: none; }
svg .open { fill: #e69f00; stroke: none; }
svg .hatch { fill: none; stroke: #5a3e00; stroke-width: 2; }
svg text { font-size: 22px; fill: #1c1c1c; }
svg .time { fill: #f2f2f2; }
svg .tick { fill: none; stroke: #c4c4c4; stroke-width: 2; }
svg .base { fill: none; stroke: #9a9a9a; stroke-width: 1; }
svg .apart { fill: none; stroke: #fff; stroke-width: 6; }
svg path.open { fill: none; stroke: #d98200; stroke-width: 12; }
svg path.done { fill: none; stroke: #0072b2; stroke-width: 12; }
svg.bar { display: block; width: 7.5rem; height: .75rem; margin-top: .3rem; }
svg.all { display: block; width: 100%; height: 1.6rem; }
svg.key { display: inline-block; width: 1.5rem; height: .75rem; margin-left: 1rem; vertical-align: baseline; }
svg.key:first-child { margin-left: 0; }
.panel { margin: .6rem 0 1rem; overflow-x: auto; break-inside: avoid; }
.panel svg { display: block; width: 100%; min-width: 50rem; }
td.number { white-space: nowrap; overflow-wrap: normal; }
@media print {
  @page { size: landscape; }
  .panel svg { min-width: 0; }
  .panel { overflow: visible; }
}
)";

std::string cell (juce::int64 number) { return std::to_string (number); }

std::string bold (const std::string& html) { return html.empty() ? html : "<strong>" + html + "</strong>"; }

/** The cells that all tables have: lines, cues, done and so on. */
Row cellsOf (const Statistics& statistics, const Amount& amount)
{
    const auto done = amount.lines > 0
                          ? juce::String (amount.done) + " (" + percentOf (doneShare (amount)) + ")"
                          : juce::String ("0");
    return { cell (amount.lines),
             cell (amount.cues),
             HTMLPage::escaped (done),
             amount.lines > 0 ? WorkPicture::bar (amount) : std::string(),
             cell (amount.words),
             HTMLPage::escaped (hoursMinutesSeconds (statistics.secondsOf (amount))),
             HTMLPage::escaped (percentWithTenth (statistics.shareOf (amount))) };
}

HTMLPage::Texts titles (std::initializer_list<const char*> own)
{
    HTMLPage::Texts result (own.begin(), own.end());

    for (const auto* title : { "Lines", "Cues", "Done", "Progress", "Words", "Time", "Share of lines" })
        result.emplace_back (title);

    return result;
}

/** The columns of numbers behind so many columns of texts. */
std::set<std::size_t> numbersBehind (std::size_t own)
{
    return { own, own + 1, own + 2, own + 4, own + 5, own + 6 };
}

Row rowOf (std::initializer_list<juce::String> own, Row numbers)
{
    Row row;

    for (const auto& text : own)
        row.push_back (HTMLPage::escaped (text));

    for (auto& number : numbers)
        row.push_back (std::move (number));

    return row;
}

void addPicture (HTMLPage& page, const Statistics& statistics)
{
    const WorkPicture picture (statistics);

    if (picture.getPanels().empty())
        return;

    page.heading ("Characters against time");
    page.paragraph (
        "Open lines stand above the line of a character, done ones below it. On the right: done/all lines. "
        "Ten minutes and more in which nobody speaks may be left out; a white gap stands there.");

    for (const auto& panel : picture.getPanels())
        page.raw (panel);

    if (const auto leftOut = picture.getRowsLeftOut(); leftOut > 0)
        page.paragraph (counted (leftOut, "character")
                        + " with fewer lines found no room here; the table has all.");
}

void addCharacters (HTMLPage& page, const Statistics& statistics)
{
    std::vector<Row> rows;

    for (const auto& character : statistics.characters)
        rows.push_back (rowOf ({ character.shownName(), character.actor, character.prefix },
                               cellsOf (statistics, character.amount)));

    auto total = rowOf ({ "Total", {}, {} }, cellsOf (statistics, statistics.total));

    for (auto& totalCell : total)
        if (totalCell.find ("<svg") == std::string::npos)
            totalCell = bold (totalCell);

    rows.push_back (std::move (total));
    page.heading ("Characters");
    page.tableOfMarkup (titles ({ "Character", "Actor", "Prefix" }), rows, numbersBehind (3));
}

void addActors (HTMLPage& page, const Statistics& statistics)
{
    std::vector<Row> rows;

    for (const auto& actor : statistics.actors)
        rows.push_back (rowOf ({ actor.shownName(), statistics.namesOfCharacters (actor) },
                               cellsOf (statistics, actor.amount)));

    page.heading ("Actors");
    page.tableOfMarkup (titles ({ "Actor", "Characters" }), rows, numbersBehind (2));
}

void addReels (HTMLPage& page, const Statistics& statistics)
{
    if (statistics.reels.empty())
        return;

    std::vector<Row> rows;

    for (const auto& reel : statistics.reels)
        rows.push_back (
            rowOf ({ reel.shownName, reel.firstStart, reel.lastEnd, juce::String (reel.characters) },
                   cellsOf (statistics, reel.amount)));

    auto numbers = numbersBehind (4);
    numbers.insert (3);
    page.heading ("Reels");
    page.tableOfMarkup (titles ({ "Reel", "From", "To", "Characters" }), rows, numbers);
}

/** Who is needed for which reel. */
void addLinesInReels (HTMLPage& page, const Statistics& statistics)
{
    const auto number = statistics.reels.size();

    if (number < 2 || number > mostReelsInATable)
        return;

    HTMLPage::Texts columns { "Character" };
    std::set<std::size_t> numbers;

    for (const auto& reel : statistics.reels)
    {
        numbers.insert (columns.size());
        columns.push_back (reel.shownName);
    }

    std::vector<HTMLPage::Texts> rows;

    for (const auto& character : statistics.characters)
    {
        auto& row = rows.emplace_back (columns.size());
        row.front() = character.shownName();

        for (const auto& inReel : character.reels)
            row[inReel.reel + 1] = juce::String (inReel.amount.lines);
    }

    page.heading ("Lines in each reel");
    page.table (columns, rows, numbers);
}

juce::String summary (const Statistics& statistics)
{
    const auto& total = statistics.total;
    const auto many = [] (juce::int64 number, const char* thing)
    { return counted (static_cast<std::size_t> (number), thing); };
    return many (total.lines, "line") + ", " + many (total.cues, "cue") + ", " + many (total.words, "word")
           + ", " + hoursMinutesSeconds (statistics.secondsOf (total)) + " of dialogue";
}

} // namespace

HTMLPage statisticsPage (const Statistics& statistics, const juce::String& nameOfList)
{
    HTMLPage page (nameOfList.isEmpty() ? juce::String ("Untitled") : nameOfList);
    page.style (style);
    page.paragraph (summary (statistics));
    page.raw (WorkPicture::legend (statistics.total));

    for (const auto& note : notesOn (statistics))
        page.paragraph (note);

    addPicture (page, statistics);
    addCharacters (page, statistics);
    addActors (page, statistics);
    addReels (page, statistics);
    addLinesInReels (page, statistics);
    return page;
}

} // namespace overmarks
