// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ReasonCellReader.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "import/frame/CellReading.h"

#include <array>

namespace ZEP::Overmarks
{

using Core::ADRCueReasonsManager;

namespace
{

struct Brackets
{
    const char* opening;
    const char* closing;
};

constexpr std::array<Brackets, 2> brackets { { { "(", ")" }, { "[", "]" } } };

} // namespace

ReasonCellReader::ReasonCellReader()
{
    const auto reasons = ADRCueReasonsManager::sharedManager()->allReasons();

    for (const auto& reason : reasons)
        enter (reason.name, reason.code);

    for (const auto& reason : reasons)
    {
        if (reason.code >= ADRCueReasonsManager::firstUserReasonCode)
            enter (reason.name + " (" + reason.codeText + ")", reason.code);
        else
            enter (reason.name.upToLastOccurrenceOf (" (", false, false), reason.code);
    }

    enter ({}, ADRCueReasonsManager::noneCode);
    enter ("SUP", ADRCueReasonsManager::noneCode);
}

std::optional<int> ReasonCellReader::read (const juce::String& text)
{
    const auto [place, isNew] = answers.try_emplace (text);

    if (isNew)
        place->second = find (trimmedText (text));

    return place->second;
}

void ReasonCellReader::enter (const juce::String& name, int code)
{
    codesByName.try_emplace (name.toLowerCase(), code);
}

std::optional<int> ReasonCellReader::find (const juce::String& cell) const
{
    const auto named = codesByName.find (cell.toLowerCase());

    if (named != codesByName.end())
        return named->second;

    const auto code = ADRCueReasonsManager::sharedManager()->codeForCodeText (cell);
    return code != 0 ? std::optional (code) : findByBrackets (cell);
}

std::optional<int> ReasonCellReader::findByBrackets (const juce::String& cell) const
{
    const auto* const manager = ADRCueReasonsManager::sharedManager();

    for (const auto& [opening, closing] : brackets)
    {
        if (! cell.endsWith (closing) || ! cell.contains (opening))
            continue;

        const auto words = cell.upToLastOccurrenceOf (opening, false, false).trim();
        const auto code = manager->codeForCodeText (
            cell.fromLastOccurrenceOf (opening, false, false).dropLastCharacters (1));
        const auto nameHere = code >= ADRCueReasonsManager::firstUserReasonCode
                                  ? manager->getReasonFromInteger (code)
                                  : juce::String();
        const auto nameless = manager->getReasonFromInteger (ADRCueReasonsManager::noneCode);
        const bool isOtherReason = nameHere.isNotEmpty() && nameHere != nameless && words.isNotEmpty()
                                   && ! words.equalsIgnoreCase (nameHere);

        if (code != 0 && ! isOtherReason)
            return code;
    }

    return std::nullopt;
}

} // namespace ZEP::Overmarks
