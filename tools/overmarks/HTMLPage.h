// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace overmarks
{

/** A page that is sent to somebody: one file that needs nothing else, neither scripts nor the network, and is read on a screen, on a
    phone and on paper.

    Whatever comes from a cue list has to be escaped, and every operation but raw() and style() does that: a line of dialogue is never a
    part of the page itself. */
class HTMLPage final
{
public:
    using Texts = std::vector<juce::String>;

    /** @param title  the page's own heading, and its name in the browser */
    explicit HTMLPage (const juce::String& title);

    /** A heading below the title. */
    void heading (const juce::String& text);

    /** Line breaks of the text stay. */
    void paragraph (const juce::String& text);

    /** A table, its columns' titles again on each sheet of paper; on a phone a block for each row.
        @param rows     cells beyond the last column are left out
        @param numbers  indices of the columns that stand flush right */
    void table (const Texts& columns, const std::vector<Texts>& rows,
                const std::set<std::size_t>& numbers = {});

    /** The same, with cells that are HTML already: escaped() texts and markup of the caller's own. */
    void tableOfMarkup (const Texts& columns, const std::vector<std::vector<std::string>>& rows,
                        const std::set<std::size_t>& numbers = {});

    /** HTML as it stands. */
    void raw (std::string_view html);

    /** Further rules of style. */
    void style (std::string_view css);

    /** The page. */
    std::string text() const;

    /** Writes the page; nobody ever sees half of it. Whether a file may be replaced was asked before. Throws CommandFailure. */
    void write (const juce::File& file) const;

    /** A text as HTML shows it, between tags and in attributes; control characters but tabs and line breaks are left out. */
    static std::string escaped (const juce::String& text);

private:
    std::string title;
    std::string styles;
    std::string body;
};

} // namespace overmarks
