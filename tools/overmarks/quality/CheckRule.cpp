// SPDX-License-Identifier: GPL-3.0-only
#include "quality/CheckRule.h"

#include "Session.h"
#include "Suggestion.h"

#include <optional>

namespace overmarks
{

namespace
{

using Table = std::array<CheckRuleRow, numberOfCheckRules>;

constexpr Table table { {
    { CheckRule::tcInvalid, "tc-invalid", "Timecode missing or unreadable" },
    { CheckRule::dropFrameIllegal, "drop-frame-illegal", "Timecode that drop-frame counting leaves out" },
    { CheckRule::beforeOrigin, "before-origin", "Before the picture begins" },
    { CheckRule::endBeforeStart, "end-before-start", "Ends before it begins" },
    { CheckRule::zeroLength, "zero-length", "Without any length" },
    { CheckRule::tooShort, "too-short", "Very short" },
    { CheckRule::tooLong, "too-long", "Very long" },
    { CheckRule::tooFast, "too-fast", "Too much text for the time" },
    { CheckRule::overlapSameCharacter, "overlap-same-character", "Two cues of one character at a time" },
    { CheckRule::noCharacter, "no-character", "Without a character" },
    { CheckRule::unknownCharacter, "unknown-character", "Character is not in the cast" },
    { CheckRule::emptyText, "empty-text", "Without text" },
    { CheckRule::lineCount, "line-count", "Too many lines of text" },
    { CheckRule::cueNumberMissing, "cue-number-missing", "Without a cue number" },
    { CheckRule::cueNumberDuplicate, "cue-number-duplicate", "Cue number used more than once" },
    { CheckRule::takesInconsistent, "takes-inconsistent", "Takes that contradict each other" },
    { CheckRule::nonLatin1, "non-latin1", "Letters that some documents can't hold" },
    { CheckRule::dsTakerOverflow, "ds-taker-overflow", "Too many lines in a cue for DS Taker" },
    { CheckRule::spreadsheetFormula, "spreadsheet-formula", "Cells that a spreadsheet would run" },
} };

constexpr bool isInOrder()
{
    for (std::size_t i = 0; i < table.size(); ++i)
        if (static_cast<std::size_t> (table[i].rule) != i)
            return false;

    return true;
}

static_assert (isInOrder(), "a row is found by its number");

CheckRule ruleNamed (const std::string& option, const juce::String& name)
{
    for (const auto& row : table)
        if (name.equalsIgnoreCase (row.id))
            return row.rule;

    refuseValue (option, name.toStdString(), checkRuleIds());
}

CheckRuleSet rulesIn (const std::string& option, const std::vector<std::string>& lists)
{
    CheckRuleSet rules;

    for (const auto& list : lists)
        for (const auto& name : juce::StringArray::fromTokens (juce::String (list), ",", {}))
            if (const auto id = name.trim(); id.isNotEmpty())
                rules.insert (ruleNamed (option, id));

    if (! lists.empty() && rules.empty())
        throw WrongUsage (option + " names no rule");

    return rules;
}

} // namespace

const Table& checkRules() { return table; }

std::vector<std::string> checkRuleIds()
{
    std::vector<std::string> all;

    for (const auto& row : table)
        all.emplace_back (row.id);

    return all;
}

const CheckRuleRow& rowOf (CheckRule rule) { return table[static_cast<std::size_t> (rule)]; }

CheckRuleSet chosenCheckRules (const std::vector<std::string>& wanted,
                               const std::vector<std::string>& skipped)
{
    auto rules = rulesIn ("--rule", wanted);

    if (rules.empty())
        for (const auto& row : table)
            rules.insert (row.rule);

    for (const auto rule : rulesIn ("--skip", skipped))
        rules.erase (rule);

    if (rules.empty())
        throw WrongUsage ("--skip leaves no rule to check");

    return rules;
}

} // namespace overmarks
