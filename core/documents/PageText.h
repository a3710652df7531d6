// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <pango/pangocairo.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEP::Core
{

/** Gives back what the text library hands out. */
struct GObjectRelease
{
    void operator() (gpointer object) const { g_object_unref (object); }
};

/** A text that has been shaped and broken into lines, to be drawn any number of times. */
struct ShapedText
{
    struct Line
    {
        PangoLayoutLine* shape; ///< owned by the layout
        float width;            ///< points, without the blanks at the end
        float ascent;           ///< points above the baseline
        float descent;          ///< points below it
        bool isRightToLeft;     ///< its paragraph is read from the right
    };

    std::unique_ptr<PangoLayout, GObjectRelease> layout;
    std::vector<Line> lines; ///< from the top
    float width = 0.0f;      ///< of the widest line
    float height = 0.0f;     ///< of all of them

    /** The letters of a line, without the blanks at its end. */
    [[nodiscard]] juce::String lineText (std::size_t index) const;
};

/** How texts look in one document: the fonts, and the shapes of the texts that came lately.

    Shaping is what takes the time of a page, and a cue sheet says the same over and over: the numbers of the takes, labels, names. A
    text that came before in the same font and width is there at once. One thread; each object has its own map of fonts. */
class PageText final
{
public:
    PageText();

    PageText (const PageText&) = delete;
    PageText& operator= (const PageText&) = delete;
    ~PageText();

    void setFont (bool isBold, float size);

    using FontKey = std::pair<bool, float>; ///< whether it is bold, and its size

    [[nodiscard]] const FontKey& font() const noexcept { return current; }

    /** Points, positive. */
    [[nodiscard]] float ascent() const { return fonts.at (current).ascent; }
    [[nodiscard]] float descent() const { return fonts.at (current).descent; }

    using Shape = std::shared_ptr<const ShapedText>;

    /** One line, its breaks as blanks. @param widest  points; a longer line ends in "…"; infinite for no limit */
    [[nodiscard]] Shape oneLine (const juce::String& text, float widest);

    /** Lines of at most this width, and no line for an empty text. What is longer than thirty pages of print, or taller than they are, ends in
        "…", and the log tells so once. @param width  points; not positive: the text's breaks only */
    [[nodiscard]] Shape paragraph (const juce::String& text, float width);

private:
    struct Font
    {
        std::shared_ptr<PangoFontDescription> description;
        float ascent = 0.0f;
        float descent = 0.0f;
    };

    struct Key
    {
        bool operator== (const Key&) const = default;

        FontKey font;
        bool isOneLine;
        int width; ///< in units of the library
        std::string text;
    };

    /** Most texts of a sheet come in one font and width. */
    struct HashOfText
    {
        std::size_t operator() (const Key& key) const noexcept { return std::hash<std::string>() (key.text); }
    };

    Font fontFor (const FontKey& key) const;
    Shape remembered (Key key);
    Shape shapedToFit (Key key) const;
    Shape shaped (const Key& key) const;
    void setLines (ShapedText& text, bool isOneLine) const;
    void makeRoom (std::size_t bytes);

    std::unique_ptr<PangoFontMap, GObjectRelease> fontMap;
    std::unique_ptr<PangoContext, GObjectRelease> context;
    std::map<FontKey, Font> fonts;
    FontKey current { false, 12.0f };
    std::unordered_map<Key, Shape, HashOfText> recent;
    std::deque<const Key*> inOrder; ///< the oldest first
    std::size_t rememberedBytes = 0;
};

/** The text as it can be shown: no control characters but tab and line feed, every kind of line break as a line feed or, in one line,
    as a blank; nothing that is no character. What is longer than a text on paper can be ends in "…". */
[[nodiscard]] std::string showableText (const juce::String& text, bool isOneLine);

} // namespace ZEP::Core
