// SPDX-License-Identifier: GPL-3.0-only
#include "quality/CheckReport.h"

#include "ReportFiles.h"
#include "TextTable.h"

#include "core/system/SystemUtility.h"
#include "core/timecode/TCToolbox.h"

#include <algorithm>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Core::SystemUtility;
using ZEP::Core::TCToolbox;

namespace
{

juce::String nameOfCharacter (const Event& event)
{
    const auto character = event.character();
    return character != nullptr ? character->name : juce::String();
}

juce::String todayInWords()
{
    const auto now = juce::Time::getCurrentTime();
    return juce::String (now.getDayOfMonth()) + " " + juce::Time::getMonthName (now.getMonth(), false) + " "
           + juce::String (now.getYear());
}

juce::String rateInWords (const ZEP::Core::_TCDef& def)
{
    const auto name = TCToolbox::rateNameForTCDef (def);
    return (name.isNotEmpty() ? name : juce::String (def.framesPerSecond)) + " frames per second";
}

juce::String limitsInWords (const CheckLimits& limits)
{
    return "at most " + shortNumber (limits.maxCharactersPerSecond) + " characters a second, from "
           + shortNumber (limits.minSeconds) + " to " + shortNumber (limits.maxSeconds) + " seconds, at most "
           + counted (static_cast<std::size_t> (limits.maxLines), "line") + " of text";
}

} // namespace

// ---- for standard output and programs ------------------------------------------------------------------------------------

std::string CheckReport::table() const
{
    constexpr int whole = TextTable::keepsItsWidth;
    TextTable table (std::vector<TextTable::Column> {
        { "Cue" }, { "Start TC", whole }, { "Character", 9, 1 }, { "Rule", whole, 2 }, { "Finding", 30 } });

    for (const auto& finding : result.findings)
        table.addRow ({ finding.event->getCueNumber(), finding.event->getStartTCString(),
                        nameOfCharacter (*finding.event), rowOf (finding.rule).id, finding.message });

    return table.textForStandardOutput();
}

json CheckReport::findings() const
{
    auto list = json::array();

    for (const auto& finding : result.findings)
    {
        json entry; // of many findings, a list in braces would be copied again and again
        entry["rule"] = rowOf (finding.rule).id;
        entry["uuid"] = finding.event->getUuid().toStdString();
        entry["cueNumber"] = finding.event->getCueNumber().toStdString();
        entry["startTC"] = finding.event->getStartTCString().toStdString();
        entry["message"] = finding.message.toStdString();
        list.push_back (std::move (entry));
    }

    return list;
}

std::string CheckReport::csv() const
{
    std::vector<std::vector<juce::String>> rows;
    rows.reserve (result.findings.size());

    for (const auto& finding : result.findings)
    {
        const auto& event = *finding.event;
        rows.push_back ({ event.getCueNumber(), event.getStartTCString(), event.getEndTCString(),
                          nameOfCharacter (event), event.getText().getText(), rowOf (finding.rule).id,
                          rowOf (finding.rule).words, finding.message, event.getUuid() });
    }

    return csvText ({ "Cue Number", "Start TC", "End TC", "Character", "Text", "Rule", "Rule in Words",
                      "Finding", "UUID" },
                    rows);
}

juce::String CheckReport::summary() const
{
    const auto events = counted (result.checkedEvents, "event");
    return result.findings.empty() ? "Nothing was found in " + events
                                   : counted (result.findings.size(), "finding") + " in " + events;
}

// ---- the page ------------------------------------------------------------------------------------------------------------

HTMLPage CheckReport::page() const
{
    HTMLPage page ("Check of " + listName);
    addWhatWasChecked (page);
    page.heading (result.findings.empty() ? juce::String ("Nothing was found") : summary());
    addTotals (page);

    for (const auto& row : checkRules())
        if (countOf (row.rule) > 0)
            addFindings (page, row.rule);

    addProblems (page);
    return page;
}

std::size_t CheckReport::countOf (CheckRule rule) const
{
    return static_cast<std::size_t> (std::count_if (result.findings.begin(), result.findings.end(),
                                                    [rule] (const Finding& finding)
                                                    { return finding.rule == rule; }));
}

void CheckReport::addWhatWasChecked (HTMLPage& page) const
{
    const auto& info = *project.timeInfo;
    page.paragraph (counted (result.checkedEvents, "event") + " at " + rateInWords (info.tcDef)
                    + ", picture from " + TCToolbox::stringFromTCTime (info.timeOrigin, info.tcDef.dropFrame)
                    + ". Checked on " + todayInWords() + " with Overmarks "
                    + SystemUtility::executableVersion() + ".");
    page.paragraph ("Limits: " + limitsInWords (order.limits) + ".");

    if (filter.isNotEmpty())
        page.paragraph ("Only a part of the list: " + filter + ".");
    if (result.disabledEvents > 0)
        page.paragraph (counted (result.disabledEvents, "disabled event") + " left out.");
}

void CheckReport::addTotals (HTMLPage& page) const
{
    std::vector<HTMLPage::Texts> rows;

    for (const auto& row : checkRules())
        if (order.rules.count (row.rule) > 0)
        {
            const auto count = countOf (row.rule);
            rows.push_back ({ row.words, count > 0 ? juce::String (count) : juce::String ("none") });
        }

    page.table ({ "What was looked for", "Findings" }, rows, { 1 });
}

void CheckReport::addFindings (HTMLPage& page, CheckRule rule) const
{
    std::vector<HTMLPage::Texts> rows;

    for (const auto& finding : result.findings)
        if (finding.rule == rule)
            rows.push_back ({ finding.event->getCueNumber(), finding.event->getStartTCString(),
                              nameOfCharacter (*finding.event), finding.event->getText().getText(),
                              finding.message });

    page.heading (juce::String (rowOf (rule).words) + ": " + juce::String (rows.size()));
    page.table ({ "Cue", "Start TC", "Character", "Text", "Finding" }, rows);
}

void CheckReport::addProblems (HTMLPage& page) const
{
    if (result.problems.empty())
        return;

    std::vector<HTMLPage::Texts> rows;

    for (const auto& problem : result.problems)
        rows.push_back ({ problem.row > 0 ? juce::String (problem.row) : juce::String(), problem.column,
                          problem.message });

    page.heading ("What could not be read from the file: " + juce::String (rows.size()));
    page.table ({ "Row", "Column", "Problem" }, rows, { 0 });
}

} // namespace overmarks
