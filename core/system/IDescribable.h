// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace ZEP::Core
{
/** Something that can tell a person what it is: at length, or in one line of a list. Never deleted through
    this.
*/
class IDescribable
{
public:
    virtual juce::String description() = 0;        ///< At length, for a person; may have several lines.
    virtual juce::String oneLineDescription() = 0; ///< For a line of a menu, a list or a log.

protected:
    ~IDescribable() = default;
};
} // namespace ZEP::Core
