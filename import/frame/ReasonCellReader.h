// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <map>
#include <optional>
#include <unordered_map>

namespace ZEP::Overmarks
{

/** Finds the cue reason that a cell of a foreign cue list means.

        Clarity (AR4)   the name, as this program writes it; a user reason by its name alone too
        AR4             the code of the trade
        Clearer [AR4]   any words with the code in brackets behind them
        Clarity         the words of a default reason without its code
        None  (empty)   no reason
        SUP             no reason: the mark of a supplement cue, which has the number of the cue before it

    Case and blanks around the text play no part. Names win over codes. The codes UR1 to UR8 mean something
    else in every project, so words in front of them must not differ from this project's name for the code.
    Bare numbers are refused, since programs don't agree on what they count.

    Keeps the names of the reasons and every answer; make one for each import. One thread at a time. */
class ReasonCellReader final
{
public:
    ReasonCellReader();

    /** A code of ADRCueReasonsManager, its noneCode for no reason; nothing for a text that means no reason
        known here. */
    [[nodiscard]] std::optional<int> read (const juce::String& text);

private:
    void enter (const juce::String& name, int code);
    [[nodiscard]] std::optional<int> find (const juce::String& cell) const;
    [[nodiscard]] std::optional<int> findByBrackets (const juce::String& cell) const;

    std::unordered_map<juce::String, int> codesByName; ///< by the name in small letters
    std::map<juce::String, std::optional<int>> answers;
};

} // namespace ZEP::Overmarks
