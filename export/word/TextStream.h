// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <string>

namespace ZEP::Overmarks
{

/** A text that the framework writes to. It writes JSON character by character, and for each of them its own stream in memory makes
    room anew. Refers to the text, which outlives it. */
class TextStream final : public juce::OutputStream
{
public:
    explicit TextStream (std::string& destination) : text (destination) {}

    void flush() override {}
    juce::int64 getPosition() override { return static_cast<juce::int64> (text.size()); }
    bool setPosition (juce::int64) override { return false; }

    bool write (const void* bytes, std::size_t number) override
    {
        text.append (static_cast<const char*> (bytes), number);
        return true;
    }

    bool writeByte (char byte) override
    {
        text += byte;
        return true;
    }

private:
    std::string& text;
};

} // namespace ZEP::Overmarks
