// SPDX-License-Identifier: GPL-3.0-only
// The numbers of all characters in one walk.
#include "export/ADROverviewPDFExporter.h"
#include "export/frame/OutputFileNames.h"
#include "list/LineCount.h"

#include <map>

namespace ZEP::Orvelle
{

using ZEP::Core::ADRCharacter;
using ZEP::Overmarks::LineCount;

namespace
{

ADROverviewDataSet dataSetOf (const ADRCharacter& character, const LineCount& count)
{
    return {
        character.name, character.actor, character.prefix, count.lines(), count.cues(), count.doneRatio()
    };
}

} // namespace

std::vector<ADROverviewDataSet> adrOverviewDataSets (const ZEP::Overmarks::EventArray& list,
                                                     const ZEP::Core::ADRCharacterMap& cast)
{
    std::map<const ADRCharacter*, LineCount> numbers;

    for (const auto& event : list.events)
        if (LineCount::isLine (*event))
            numbers[event->character().get()].add (*event);

    std::vector<ADROverviewDataSet> dataSets;

    for (const auto& character : cast.characters())
        dataSets.push_back (dataSetOf (*character, numbers[character.get()]));

    if (const auto nobodys = numbers.find (nullptr); nobodys != numbers.end())
        dataSets.push_back (
            dataSetOf (ADRCharacter (ZEP::Overmarks::OutputFileNames::noCharacter), nobodys->second));

    return dataSets;
}

} // namespace ZEP::Orvelle
