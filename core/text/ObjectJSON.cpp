// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/ObjectJSON.h"

#include <cstddef>
#include <utility>

namespace ZEP::Core
{

namespace
{

/** A text that the framework writes to. It writes JSON character by character, and for each of them its own stream in memory makes
    room anew. */
class TextStream final : public juce::OutputStream
{
public:
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

    std::string text;
};

std::string withMendedBells (const std::string& json)
{
    std::string mended;
    std::size_t copied = 0;

    // What is escaped is passed over with its backslash, which may be a backslash itself.
    for (auto place = json.find ('\\'); place != std::string::npos; place = json.find ('\\', place + 2))
        if (json.compare (place, 2, "\\a") == 0)
        {
            mended.append (json, copied, place - copied).append ("\\u0007");
            copied = place + 2;
        }

    return mended.append (json, copied);
}

} // namespace

std::string jsonTextOf (juce::DynamicObject& object, bool allOnOneLine)
{
    constexpr int indentLevel = 0, decimalPlaces = 15;
    TextStream stream;
    object.writeAsJSON (stream, indentLevel, allOnOneLine, decimalPlaces);
    const bool mayHoldBells = stream.text.find ("\\a") != std::string::npos;
    return mayHoldBells ? withMendedBells (stream.text) : std::move (stream.text);
}

} // namespace ZEP::Core
