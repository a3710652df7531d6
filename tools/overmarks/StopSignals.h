// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <string>

namespace overmarks
{

/** What happens at SIGINT, SIGTERM and SIGHUP as long as there is something on the disk that has to go first.

    While an object lives, however many there are, the signals are taken on a thread of its own: one of them removes the folders
    of this run and ends the program, unless somebody has asked for patience. Signals that are ignored from the start, as
    under nohup, stay ignored. A signal is never lost: one that nobody has told of ends the program with the last object.
    On the main thread, before other threads begin. */
class StopSignals final
{
public:
    StopSignals();
    StopSignals (const StopSignals&) = delete;
    StopSignals& operator= (const StopSignals&) = delete;
    ~StopSignals();

    /** Makes a folder that nobody else may enter. @param start  of its path, which ends in six random signs
        Throws CommandFailure if its own folder can't be written to. */
    juce::File makeFolder (const juce::String& start) const;

    /** Removes such a folder with all that is in it. */
    void removeFolder (const juce::File& folder) const;

    /** Whether a signal has come. The caller tells the user of it. Any thread. */
    bool haveCome() const;

    /** Throws WorkStopped if a signal has come. @param undone  what has not been done then */
    void throwIfStopped (const juce::String& undone) const;

    /** While it lives the first signal waits, since the work will soon ask throwIfStopped(), or must not be broken off. */
    class Patience final
    {
    public:
        explicit Patience (const StopSignals& stopSignals);
        Patience (const Patience&) = delete;
        Patience& operator= (const Patience&) = delete;
        ~Patience();

    private:
        const StopSignals& signals;
    };

    /** While it lives, a signal that ends the program is answered on standard output, and the exit status is 1. Nobody else may write
        there meanwhile. Within another one it changes nothing. */
    class Answer final
    {
    public:
        /** @param text  whole lines */
        Answer (const StopSignals& stopSignals, const std::string& text);
        Answer (const Answer&) = delete;
        Answer& operator= (const Answer&) = delete;
        ~Answer();

    private:
        const StopSignals& signals;
        bool isOutermost;
    };

    /** While another program works for this one. The first signal calls `cancel`, again and again and from another thread; the
        next one, or three seconds, end that program and all that it has started. */
    void whileToolWorks (std::function<void()> cancel, const std::function<void()>& work) const;

private:
    class Watch;
    std::shared_ptr<Watch> watch;
};

} // namespace overmarks
