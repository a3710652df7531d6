// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/ContinuousPagesBlock.h"

#include <utility>

namespace ZEP::Overmarks
{

ContinuousPagesBlock::ContinuousPagesBlock (CueContents cueContents)
    : cueContentList (std::move (cueContents))
{
}

juce::DynamicObject::Ptr ContinuousPagesBlock::toJSONDynamicObject() const
{
    juce::DynamicObject::Ptr object = new juce::DynamicObject();
    juce::Array<juce::var> cues;

    for (const auto& cue : cueContentList)
        cues.add (juce::var (cue->toJSONDynamicObject().get()));

    if (! cues.isEmpty())
        object->setProperty ("cueContentList", cues);

    return object;
}

} // namespace ZEP::Overmarks
