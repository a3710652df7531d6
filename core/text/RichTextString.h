// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>
#include <vector>

namespace ZEP::Core
{

/** Text with character attributes: what an actor reads, with what the dialogue editor marked in it.

    The runs of the base class always cover the whole text without a gap, so a plain text has one run too, of
    the default font in opaque black. Ask isPlain() or formattedRuns() for attributes, never
    getNumAttributes(). Trap: setText() of the base class keeps the runs of the old text; for a fresh plain
    text assign a new RichTextString. Another: setFont() and setColour() of the base class take an empty range
    for the whole run around it.

    Values are copied freely. No display is needed and no typeface is loaded. One object belongs to one thread
    at a time; different objects may share a font across threads.
*/
class ZEP_CORE_API RichTextString : public juce::AttributedString
{
public:
    using Attribute = juce::AttributedString::Attribute; ///< a run: its range, font and colour

    RichTextString() = default;

    /** Plain text without attributes. Implicit on purpose: any text is a rich text. */
    RichTextString (const juce::String& plainText);
    RichTextString (juce::String&& plainText); ///< The same of a text that nobody else needs.

    /** The text, attributes and layout settings of a text of the framework. */
    explicit RichTextString (const juce::AttributedString& other);

    RichTextString (const RichTextString& other);                    ///< Copies text and runs.
    RichTextString (RichTextString&&) noexcept = default;            ///< The other one needs a new value.
    RichTextString& operator= (const RichTextString& other);         ///< Replaces text and runs.
    RichTextString& operator= (RichTextString&&) noexcept = default; ///< The other one needs a new value.
    virtual ~RichTextString();

    /** Number of characters, without counting through the text. */
    [[nodiscard]] int length() const noexcept;

    /** Same text and same formatted runs; line spacing, justification and the like play no part. */
    [[nodiscard]] bool operator== (const RichTextString& other) const;

    /** From character `start` to the end; the attributes still cover the same characters. */
    [[nodiscard]] RichTextString substring (int start) const;

    /** From character `start` up to, not including, `end`. Positions outside the text stop at its ends. */
    [[nodiscard]] RichTextString substring (int start, int end) const;

    /** Every `from` replaced by `to`, attributes following the moved characters. The new text takes the
        look of the first character that it replaces. */
    [[nodiscard]] RichTextString replace (juce::StringRef from, juce::StringRef to,
                                          bool ignoreCase = false) const;

    /** What StringUtil::replaceIllegalASCIICharacters() does, keeping the attributes. */
    [[nodiscard]] RichTextString replaceIllegalASCIICharacters() const;

    /** The runs that differ from the default font in opaque black, from left to right, none empty,
        neighbours of one look as one. */
    [[nodiscard]] std::vector<Attribute> formattedRuns() const;

    /** Whether there is no formatted run. */
    [[nodiscard]] bool isPlain() const;

    /** {"text": ..., "runs": [{"start", "end", "bold", "italic", "underlined", "struckThrough", "height",
        "colour"}]} with the formatted runs; height in points, colour as eight hexadecimal digits, alpha
        first. */
    [[nodiscard]] juce::DynamicObject::Ptr toJSONDynamicObject() const;

    /** Adds one attribute from a tessera1::ProtoRichTextAttribute. What lies outside the text is ignored,
        so the text has to be there first. */
    void applyProtoTextAttribute (void* protoRichTextAttribute);

    /** The attribute that a tessera1::ProtoRichTextAttribute holds, its range not yet clipped to a text.
        Sizes that no font can have become those of the default font. */
    [[nodiscard]] static Attribute attributeFromProtoObject (const void* protoRichTextAttribute);

    /** Adds many attributes at once, a later one over an earlier one, in a time that grows with their
        number and the text's length alone. What lies outside the text is ignored. */
    void applyAttributes (const std::vector<Attribute>& added);

    /** Writes one attribute into a tessera1::ProtoRichTextAttribute. */
    static void applyStringAttributeToProtoObject (const Attribute& attribute, void* protoRichTextAttribute);

    /** The font of unformatted text, one for the process. */
    [[nodiscard]] static const juce::Font& defaultFont();

    /** Whether a font stands for struck-through text: its typeface style holds the word "Strikethrough". */
    [[nodiscard]] static bool isStruckThrough (const juce::Font& font);

    /** The font with or without the strike. Set it last: the font's own bold and italic setters write the
        style anew. */
    [[nodiscard]] static juce::Font withStrikethrough (juce::Font font, bool struckThrough);
};

} // namespace ZEP::Core
