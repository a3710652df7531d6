// SPDX-License-Identifier: GPL-3.0-only
// The numbers of all characters in one walk.
#include "export/ADROverviewPDFExporter.h"
#include "export/frame/OutputFileNames.h"

#include <map>
#include <set>

namespace ZEP::Orvelle
{

using ZEP::Core::ADRCharacter;

namespace
{

struct Counted
{
    int lines = 0;
    int done = 0;
    std::set<juce::String> cueNumbers;
};

ADROverviewDataSet dataSetOf (const ADRCharacter& character, const Counted& counted)
{
    return { character.name,
             character.actor,
             character.prefix,
             counted.lines,
             static_cast<int> (counted.cueNumbers.size()),
             counted.lines > 0 ? static_cast<float> (counted.done) / static_cast<float> (counted.lines)
                               : 0.0f };
}

} // namespace

std::vector<ADROverviewDataSet> adrOverviewDataSets (const ZEP::Overmarks::EventArray& list,
                                                     const ZEP::Core::ADRCharacterMap& cast)
{
    std::map<const ADRCharacter*, Counted> numbers;

    for (const auto& event : list.events)
        if (event->getType() == ZEP::Overmarks::EventTypeADRCue)
        {
            auto& counted = numbers[event->character().get()];
            ++counted.lines;
            counted.done += event->isDone() ? 1 : 0;
            counted.cueNumbers.insert (event->getCueNumber());
        }

    std::vector<ADROverviewDataSet> dataSets;

    for (const auto& character : cast.characters())
        dataSets.push_back (dataSetOf (*character, numbers[character.get()]));

    if (const auto nobodys = numbers.find (nullptr); nobodys != numbers.end())
        dataSets.push_back (
            dataSetOf (ADRCharacter (ZEP::Overmarks::OutputFileNames::noCharacter), nobodys->second));

    return dataSets;
}

} // namespace ZEP::Orvelle
