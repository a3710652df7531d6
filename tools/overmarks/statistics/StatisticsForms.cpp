// SPDX-License-Identifier: GPL-3.0-only
#include "statistics/StatisticsForms.h"

#include "ReportFiles.h"
#include "TextTable.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace overmarks
{

namespace
{

// ---- tables ----------------------------------------------------------------------------------------------------------------

/** A table whose numbers stand below each other. */
class NumberTable final
{
public:
    /** @param texts  how many of the table's own columns hold texts; they come first */
    NumberTable (std::vector<TextTable::Column> ownColumns, std::size_t texts)
        : columns (std::move (ownColumns)),
          firstNumber (texts)
    {
        constexpr int whole = TextTable::keepsItsWidth;

        for (const auto& column : { TextTable::Column { "Lines", whole },
                                    { "Cues", whole },
                                    { "Done", whole },
                                    { "Done %", whole, 1 },
                                    { "Words", whole, 2 },
                                    { "Time", whole, 3 },
                                    { "Share", whole, 4 } })
            columns.push_back (column);
    }

    void add (std::vector<juce::String> own, const Statistics& statistics, const Amount& amount)
    {
        for (const auto& text :
             { juce::String (amount.lines), juce::String (amount.cues), juce::String (amount.done),
               percentOf (doneShare (amount)), juce::String (amount.words),
               hoursMinutesSeconds (statistics.secondsOf (amount)),
               percentWithTenth (statistics.shareOf (amount)) })
            own.push_back (text);

        rows.push_back (std::move (own));
    }

    std::string text()
    {
        for (auto i = firstNumber; i < columns.size(); ++i)
            alignRight (i);

        TextTable table (columns);

        for (const auto& row : rows)
            table.addRow (row);

        return table.textForStandardOutput();
    }

private:
    void alignRight (std::size_t column)
    {
        auto widest = columns[column].title.length();

        for (const auto& row : rows)
            widest = std::max (widest, row[column].length());

        columns[column].title = columns[column].title.paddedLeft (' ', widest);

        for (auto& row : rows)
            row[column] = row[column].paddedLeft (' ', widest);
    }

    std::vector<TextTable::Column> columns;
    std::vector<std::vector<juce::String>> rows;
    std::size_t firstNumber;
};

std::string tableOfCharacters (const Statistics& statistics)
{
    NumberTable table ({ { "Character", 9 }, { "Actor", 8, 6 }, { "Prefix", 6, 5 } }, 3);

    for (const auto& character : statistics.characters)
        table.add ({ character.shownName(), character.actor, character.prefix }, statistics,
                   character.amount);

    table.add ({ "Total", {}, {} }, statistics, statistics.total);
    return table.text();
}

std::string tableOfActors (const Statistics& statistics)
{
    NumberTable table ({ { "Actor", 9 }, { "Characters", 10, 5 } }, 2);

    for (const auto& actor : statistics.actors)
        table.add ({ actor.shownName(), statistics.namesOfCharacters (actor) }, statistics, actor.amount);

    return table.text();
}

std::string tableOfReels (const Statistics& statistics)
{
    NumberTable table ({ { "Reel", 6 }, { "From", 11, 6 }, { "To", 11, 7 }, { "Characters", 10, 5 } }, 3);

    for (const auto& reel : statistics.reels)
        table.add ({ reel.shownName, reel.firstStart, reel.lastEnd, juce::String (reel.characters) },
                   statistics, reel.amount);

    return table.text();
}

// ---- JSON ------------------------------------------------------------------------------------------------------------------

json with (json names, const Statistics& statistics, const Amount& amount)
{
    names.update (json { { "lines", amount.lines },
                         { "cues", amount.cues },
                         { "done", amount.done },
                         { "words", amount.words },
                         { "seconds", statistics.secondsOf (amount) },
                         { "frames", amount.frames },
                         { "share", statistics.shareOf (amount) },
                         { "disabled", amount.disabled } });
    return names;
}

json asJSON (const Statistics& statistics, const CharacterWork& character)
{
    auto document = with ({ { "name", character.name.toStdString() },
                            { "actor", character.actor.toStdString() },
                            { "prefix", character.prefix.toStdString() } },
                          statistics, character.amount);
    document["id"] = character.id.toStdString();
    document["reels"] = json::array();

    for (const auto& inReel : character.reels)
        document["reels"].push_back (with ({ { "name", statistics.reels[inReel.reel].name.toStdString() } },
                                           statistics, inReel.amount));

    return document;
}

// ---- CSV -------------------------------------------------------------------------------------------------------------------

/** What a row is about. */
struct Subject
{
    const char* kind;
    juce::String character {};
    juce::String actor {};
    juce::String prefix {};
    juce::String reel {};
};

std::vector<juce::String> rowOf (const Statistics& statistics, const Subject& subject, const Amount& amount)
{
    constexpr int thousandths = 3;
    return { subject.kind,
             subject.character,
             subject.actor,
             subject.prefix,
             subject.reel,
             juce::String (amount.lines),
             juce::String (amount.cues),
             juce::String (amount.done),
             juce::String (amount.words),
             juce::String (statistics.secondsOf (amount), thousandths),
             juce::String (statistics.shareOf (amount), thousandths),
             juce::String (amount.disabled) };
}

} // namespace

std::string statisticsTables (const Statistics& statistics)
{
    auto text = tableOfCharacters (statistics);

    if (! statistics.actors.empty())
        text += "\n" + tableOfActors (statistics);
    if (! statistics.reels.empty())
        text += "\n" + tableOfReels (statistics);

    return text;
}

json statisticsAsJSON (const Statistics& statistics)
{
    json document { { "characters", json::array() },
                    { "actors", json::array() },
                    { "reels", json::array() },
                    { "total", with (json::object(), statistics, statistics.total) } };

    for (const auto& character : statistics.characters)
        document["characters"].push_back (asJSON (statistics, character));

    for (const auto& actor : statistics.actors)
    {
        json names { { "name", actor.name.toStdString() }, { "characters", json::array() } };

        for (const auto place : actor.characters)
            names["characters"].push_back (statistics.characters[place].name.toStdString());

        document["actors"].push_back (with (std::move (names), statistics, actor.amount));
    }

    for (const auto& reel : statistics.reels)
        document["reels"].push_back (with ({ { "name", reel.name.toStdString() },
                                             { "from", reel.firstStart.toStdString() },
                                             { "to", reel.lastEnd.toStdString() },
                                             { "characters", reel.characters } },
                                           statistics, reel.amount));

    return document;
}

std::string statisticsAsCSV (const Statistics& statistics)
{
    std::vector<std::vector<juce::String>> rows;
    const auto add = [&] (const Subject& subject, const Amount& amount)
    { rows.push_back (rowOf (statistics, subject, amount)); };

    for (const auto& character : statistics.characters)
        add ({ "character", character.shownName(), character.actor, character.prefix }, character.amount);

    for (const auto& actor : statistics.actors)
        add ({ "actor", statistics.namesOfCharacters (actor), actor.shownName() }, actor.amount);

    for (const auto& reel : statistics.reels)
        add ({ "reel", {}, {}, {}, reel.shownName }, reel.amount);

    for (const auto& character : statistics.characters)
        for (const auto& inReel : character.reels)
            add ({ "character in reel", character.shownName(), character.actor, character.prefix,
                   statistics.reels[inReel.reel].shownName },
                 inReel.amount);

    add ({ "total" }, statistics.total);
    return csvText ({ "Kind", "Character", "Actor", "Prefix", "Reel", "Lines", "Cues", "Done", "Words",
                      "Seconds", "Share of lines", "Disabled" },
                    rows);
}

} // namespace overmarks
