// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Core
{
/** What the library has to say to a person who looks for a fault. A message is one line: what would begin another
    one or command a terminal, in the name of a file for example, is replaced.

    It goes to the Poco::Logger "ZEP". If the application hasn't made that logger before the first message, it
    is made here: with the channel of the root logger or, without one, standard error, and for errors only.
    The application may attach a channel and change the level at any time. Any thread.
*/
class ZEP_CORE_API Logger final
{
public:
    Logger() = delete;

    /** For the developer; not shown by default. */
    static void debug (const juce::String& text);

    /** For whoever runs the program. */
    static void error (const juce::String& text);
};
} // namespace ZEP::Core
