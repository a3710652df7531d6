// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RecentTexts.h"
#include "core/text/WideObject.h"

#include <juce_core/juce_core.h>

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

/** Reads a JSON text from a stranger.

    It accepts what juce::JSON accepts: beyond the standard also a comma behind the last element, single quotes around a
    value, any character but NUL inside of quotes, and text behind the end. Unlike juce::JSON it doesn't call itself for
    what is nested, never looks behind the end of a text that breaks off, puts the two halves of an escaped emoji together,
    and takes a time in proportion to the text whatever stands in it. Half an emoji becomes U+FFFD.

    Of two members with one name the later value counts. Names beyond the first `mostPooledNames` different ones stay out of
    the framework's pool of names. One object reads one text. */
class JSONReader final
{
public:
    static constexpr std::size_t mostPooledNames = 512; ///< the formats know some twenty

    /** How much a text may have say ImportLimits; of one that has more the log is told.
        @returns a value whose objects are Core::WideObject, a void one for a text of blanks, and nothing for what is no
                 JSON, is nested too deeply, or is made of more lists and objects than any cue list */
    [[nodiscard]] static std::optional<juce::var> read (const juce::String& text);

    /** The text of a value: "[Array]" for a list, as the framework has it, and "[Object]" for an object, of which the framework would
        tell its place in memory. */
    [[nodiscard]] static juce::String textOf (const juce::var& value);

private:
    /** An object or a list whose end hasn't been read yet. */
    struct Open
    {
        char end;
        juce::var value;
        juce::ReferenceCountedObjectPtr<Core::WideObject> object; ///< null for a list
        const juce::Identifier* pooledName = nullptr;             ///< of the member that is being read
        juce::String nameApart;                                   ///< if it isn't pooled
    };

    /** The names that may be in the framework's pool: those that come first. It is sorted, so each new name moves the others, and a
        hostile text asks for one with six bytes. */
    class PooledNames final
    {
    public:
        /** Null for a name that stays out of the pool. */
        const juce::Identifier* find (std::string_view name);

    private:
        using Names = std::map<std::string, juce::Identifier, std::less<>>;

        Names names;
        std::array<const Names::value_type*, 64> recent {}; ///< each in the place of its hash
    };

    explicit JSONReader (std::string_view text)
        : rest (text),
          containersAllowed (mostContainers (text.size())),
          containersLeft (containersAllowed)
    {
    }

    static std::size_t mostContainers (std::size_t bytes);

    bool readRoot();
    bool readElement();
    bool readName();
    bool readValue();
    bool enter (char end);
    bool accept (juce::var value);
    void add (juce::var value);
    bool readBehindValue();
    bool readWord (std::string_view word, const juce::var& value);
    bool readNumber();
    std::size_t digitsAt (std::size_t place) const;
    std::optional<std::string_view> readString();
    bool readEscape (std::string& bytes);
    bool readUnicodeEscape (std::string& bytes);
    std::optional<unsigned> takeFourHexDigits();

    [[nodiscard]] bool take (char expected);
    void skipSpace();

    std::string_view rest;
    std::size_t containersAllowed;
    std::size_t containersLeft;
    std::vector<Open> open;
    std::string unescaped; ///< the text that was read last, if it has escapes
    PooledNames pooledNames;
    Core::RecentTexts recentTexts;
    juce::var root;
};

} // namespace ZEP::Overmarks
