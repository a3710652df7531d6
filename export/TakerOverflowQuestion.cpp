// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/Logger.h"
#include "export/EventCSVExporter.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace ZEP::Overmarks
{
namespace
{

/** Whether a box would come up and its buttons would work. */
bool someoneCanAnswer()
{
    const auto* const messages = juce::MessageManager::getInstanceWithoutCreating();

    if (messages == nullptr || messages->hasStopMessageBeenSent())
        return false;

    // From another thread the box waits for the application's loop; without an application nobody is known to run one.
    const bool loopRuns =
        messages->isThisTheMessageThread() || juce::JUCEApplicationBase::getInstance() != nullptr;
    return loopRuns && ! juce::Desktop::getInstance().isHeadless();
}

} // namespace

bool EventCSVExporter::askWithMessageBox (const juce::String& title, const juce::String& text)
{
    if (someoneCanAnswer())
        return juce::NativeMessageBox::showOkCancelBox (juce::MessageBoxIconType::InfoIcon, title, text);

    ZEP::Core::Logger::error (title + ": no file was written, since nobody can be asked. " + text);
    return false;
}

} // namespace ZEP::Overmarks
