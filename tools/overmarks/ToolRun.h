// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace overmarks
{

class TemporaryPlace;

/** What a run of docxHandler needs around it.

    The library and the tool talk through files of fixed names in the temporary folder. While this object lives, that is a folder
    of this run's own that nobody else may enter, so that two runs never disturb each other and nothing is read that somebody
    has put there. It is gone at the end, also after a failure or when somebody stops the program.

    SIGINT, SIGTERM and SIGHUP don't end the program meanwhile (StopSignals.h). Made on the main thread, one at a time, before other
    threads begin. */
class ToolRun final
{
public:
    /** Throws CommandFailure if there is no tool, or no place for temporary files. */
    ToolRun();

    ToolRun (const ToolRun&) = delete;
    ToolRun& operator= (const ToolRun&) = delete;
    ~ToolRun();

    const juce::File& getFolder() const noexcept;

    /** Does the work, which starts the tool and waits for it. What the tool prints goes to standard error in the end.
        @param cancel  tells the tool to stop; called from another thread */
    void whileItWorks (const std::function<void()>& cancel, const std::function<void()>& work);

    /** Of what the tool and the library have printed, lines that end with this are left out: the user is told in other ways. */
    void leaveOut (const juce::String& message);

    /** Whether the folder takes any more. */
    bool hasRoom() const;

    /** A message of the tool in which nothing is named that is gone before anybody can look. */
    juce::String withoutOwnFolder (const juce::String& message) const;

    /** Throws CommandFailure if somebody has stopped the program. @param undone  what has not been done then */
    void throwIfStopped (const juce::String& undone) const;

private:
    void relay() const;

    std::unique_ptr<TemporaryPlace> place;
    std::string printed; ///< by the tool and the library, while they were at work
    std::vector<juce::String> toldOtherwise;
};

} // namespace overmarks
