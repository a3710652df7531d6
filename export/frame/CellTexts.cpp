// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/CellTexts.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "event/EventKeyValueEditor.h"

#include <Poco/Any.h>

#include <algorithm>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;
using ZEP::Core::ADRCueReasonsManager;

const char* CellTexts::yesOrNo (bool flag) noexcept { return flag ? "Yes" : "No"; }

const char* CellTexts::region (ForcedNarrativeRegion region) noexcept
{
    switch (region)
    {
        case ForcedNarrativeRegionBottom: return "Bottom";
        case ForcedNarrativeRegionTop: return "Top";
        case ForcedNarrativeRegionLeft: return "Left";
        case ForcedNarrativeRegionRight: break;
    }

    return "Right";
}

juce::String CellTexts::duration (const std::shared_ptr<Event>& event)
{
    return Poco::AnyCast<juce::String> (KV (event).getValueForKey (KV::KV_DurationTCString));
}

juce::String CellTexts::reason (const std::shared_ptr<Event>& event)
{
    // The event has one less than the code. A damaged project may hold any number.
    const auto code = std::min (event->getReason(), ADRCueReasonsManager::lastCode) + 1;
    return ADRCueReasonsManager::sharedManager()->getReasonFromInteger (code);
}

} // namespace ZEP::Overmarks
