// SPDX-License-Identifier: GPL-3.0-only
#include "list/LineCount.h"

namespace ZEP::Overmarks
{

void LineCount::add (const Event& event)
{
    if (! isLine (event))
        return;

    ++numberOfLines;
    numberOfDone += event.isDone() ? 1 : 0;
    cueNumbers.insert (event.getCueNumber());
}

float LineCount::doneRatio() const noexcept
{
    return numberOfLines > 0 ? static_cast<float> (numberOfDone) / static_cast<float> (numberOfLines) : 0.0f;
}

} // namespace ZEP::Overmarks
