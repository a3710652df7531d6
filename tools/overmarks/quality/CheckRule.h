// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace overmarks
{

/** What a quality report looks for. The order is that of the table of rules, and of several findings at one event. */
enum class CheckRule
{
    tcInvalid,
    dropFrameIllegal,
    beforeOrigin,
    endBeforeStart,
    zeroLength,
    tooShort,
    tooLong,
    tooFast,
    overlapSameCharacter,
    noCharacter,
    unknownCharacter,
    emptyText,
    lineCount,
    cueNumberMissing,
    cueNumberDuplicate,
    takesInconsistent,
    nonLatin1,
    dsTakerOverflow,
    spreadsheetFormula
};

inline constexpr std::size_t numberOfCheckRules =
    static_cast<std::size_t> (CheckRule::spreadsheetFormula) + 1;

struct CheckRuleRow
{
    CheckRule rule;
    const char* id;    ///< for --rule and for programs
    const char* words; ///< for people, as a heading
};

/** All rules, in the order of the enumeration. */
const std::array<CheckRuleRow, numberOfCheckRules>& checkRules();

/** Their ids, in the same order. */
std::vector<std::string> checkRuleIds();

const CheckRuleRow& rowOf (CheckRule rule);

using CheckRuleSet = std::set<CheckRule>;

/** The rules that --rule names, or all, without those that --skip names. Each text may be several ids joined by commas.
    Throws WrongUsage for an unknown rule, and if none is left. */
CheckRuleSet chosenCheckRules (const std::vector<std::string>& wanted,
                               const std::vector<std::string>& skipped);

/** Where a rule that measures draws its line. */
struct CheckLimits
{
    double maxCharactersPerSecond = 20.0;
    double minSeconds = 0.2;
    double maxSeconds = 30.0;
    int maxLines = 5;
};

} // namespace overmarks
