// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/RichTextString.h"

#include "core/system/ProtoRecord.h"
#include "core/text/StringUtil.h"
#include "core/text/TextDecoding.h"
#include "proto/overmarks.pb.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

namespace ZEP::Core
{

namespace
{

using Attribute = RichTextString::Attribute;

const juce::Colour opaqueBlack { 0xff000000 };
constexpr const char* strikeWord = "Strikethrough";

/* The framework writes the plain style in two ways, depending on how a font was made. */
bool isRegularStyle (const juce::String& style)
{
    return style.isEmpty() || style == "Regular" || style == juce::Font::getDefaultStyle();
}

bool looksLike (const juce::Font& a, const juce::Font& b)
{
    if (a == b)
        return true;

    const auto style = b.getTypefaceStyle();
    return isRegularStyle (style) && isRegularStyle (a.getTypefaceStyle())
           && a.withTypefaceStyle (style) == b;
}

bool looksLike (const Attribute& a, const Attribute& b)
{
    return a.colour == b.colour && looksLike (a.font, b.font);
}

bool isFormatted (const Attribute& attribute)
{
    return ! attribute.range.isEmpty()
           && (attribute.colour != opaqueBlack
               || ! looksLike (attribute.font, RichTextString::defaultFont()));
}

/* The framework counts, compares and copies each time it is given a text, and makes room for eight runs with the first one, also in every
   copy. A table has a million plain cells of one run each, so this names its private members, which the language allows where a template is
   instantiated: a cell takes a third less memory for it, and less time. */
using Runs = juce::ArrayBase<Attribute, juce::DummyCriticalSection>;

template <auto characters, auto runs, auto values>
struct PrivateMembers
{
    friend juce::String& charactersOf (juce::AttributedString& text) { return text.*characters; }
    friend Runs& runsOf (juce::AttributedString& text) { return text.*runs.*values; }
};

juce::String& charactersOf (juce::AttributedString& text);
Runs& runsOf (juce::AttributedString& text);
template struct PrivateMembers<&juce::AttributedString::text, &juce::AttributedString::attributes,
                               &juce::Array<Attribute>::values>;

/* The only run of every plain text, but for its length. */
const Attribute& plainRun()
{
    static const Attribute run; // opaque black, as the framework has it
    return run;
}

/* What the framework tells by decoding, which nearly no text needs. */
int numberOfCharacters (const juce::String& text)
{
    const std::string_view bytes (text.toRawUTF8());
    return isPlainASCII (bytes) ? static_cast<int> (bytes.size()) : text.length();
}

juce::String textBetween (juce::CharPointer_UTF8 start, juce::CharPointer_UTF8 end)
{
    return start == end ? juce::String() : juce::String (start, end);
}

/* Collects pieces of text with their look from left to right and makes a rich text of them.

   Adding runs to an attributed string one by one takes a time that grows with the square of their number,
   since every step looks at all runs for equal neighbours. Pieces are therefore joined by halves. */
class PieceCollector
{
public:
    void add (const juce::String& text, const juce::Font& font, juce::Colour colour)
    {
        if (text.isEmpty())
            return;

        if (pieces.empty() || pieces.back().colour != colour || ! looksLike (pieces.back().font, font))
            pieces.push_back ({ 0, font, colour });

        bytes.append (text.toRawUTF8(), text.getNumBytesAsUTF8());
        pieces.back().end = bytes.size();
    }

    /* The pieces as one text, with the layout settings of `model`. */
    [[nodiscard]] RichTextString joined (const RichTextString& model) const
    {
        RichTextString result (model);
        result.clear();

        if (! pieces.empty())
            result.append (joined (0, pieces.size()));

        return result;
    }

private:
    struct Piece
    {
        std::size_t end; // in bytes, behind the last
        juce::Font font;
        juce::Colour colour;
    };

    [[nodiscard]] juce::AttributedString joined (std::size_t first, std::size_t last) const
    {
        juce::AttributedString result;

        if (last - first > 1)
        {
            const auto middle = std::midpoint (first, last);
            result = joined (first, middle);
            result.append (joined (middle, last));
            return result;
        }

        const auto& piece = pieces[first];
        const auto start = first == 0 ? 0 : pieces[first - 1].end;
        result.append (textBetween (juce::CharPointer_UTF8 (bytes.data() + start),
                                    juce::CharPointer_UTF8 (bytes.data() + piece.end)),
                       piece.font, piece.colour);
        return result;
    }

    std::string bytes;
    std::vector<Piece> pieces;
};

/* Calls `visit (attribute, text of the run)` for each run from left to right. */
template <typename Visitor>
void forEachRun (const RichTextString& text, Visitor&& visit)
{
    auto end = text.getText().getCharPointer();

    for (int i = 0; i < text.getNumAttributes(); ++i)
    {
        const auto& attribute = text.getAttribute (i);
        const auto start = end;
        end += attribute.range.getLength();
        visit (attribute, textBetween (start, end));
    }
}

juce::var jsonOfRun (const Attribute& run)
{
    juce::DynamicObject::Ptr object = new juce::DynamicObject();
    object->setProperty ("start", run.range.getStart());
    object->setProperty ("end", run.range.getEnd());
    object->setProperty ("bold", run.font.isBold());
    object->setProperty ("italic", run.font.isItalic());
    object->setProperty ("underlined", run.font.isUnderlined());
    object->setProperty ("struckThrough", RichTextString::isStruckThrough (run.font));
    object->setProperty ("height", run.font.getHeight());
    object->setProperty (
        "colour", juce::String::toHexString (static_cast<int> (run.colour.getARGB())).paddedLeft ('0', 8));
    return object.get();
}

juce::Font fontOf (const tessera1::ProtoRichTextAttribute& stored)
{
    const auto family = StringUtil::fromUTF8 (stored.typefacename());
    const auto style = StringUtil::fromUTF8 (stored.typefacestyle());
    const auto isUsable = [] (float value) { return std::isfinite (value) && value > 0.0F; };

    juce::Font font (family, style.isEmpty() ? juce::Font::getDefaultStyle() : style,
                     isUsable (stored.height()) ? stored.height()
                                                : RichTextString::defaultFont().getHeight());
    font.setUnderline (stored.underlined());

    if (isUsable (stored.horizontalscale()))
        font.setHorizontalScale (stored.horizontalscale());

    if (std::isfinite (stored.extrakerning()))
        font.setExtraKerningFactor (stored.extrakerning());

    return font;
}

/* For each character the number of the last attribute that covers it, -1 where none does. The attributes
   are laid on from the last to the first, each filling only what is still bare, so that no character is
   visited twice. */
std::vector<int> lastAttributeOfEachCharacter (const std::vector<Attribute>& attributes, int length)
{
    std::vector<int> result (static_cast<std::size_t> (length), -1);
    std::vector<int> nextBare (static_cast<std::size_t> (length) + 1);
    std::iota (nextBare.begin(), nextBare.end(), 0);

    const auto bareFrom = [&nextBare] (int place)
    {
        auto& next = nextBare;
        const auto at = [&next] (int i) -> int& { return next[static_cast<std::size_t> (i)]; };

        while (at (place) != place)
        {
            at (place) = at (at (place));
            place = at (place);
        }

        return place;
    };

    for (auto i = static_cast<int> (attributes.size()); --i >= 0;)
    {
        const auto range = attributes[static_cast<std::size_t> (i)].range.getIntersectionWith ({ 0, length });

        if (range.isEmpty())
            continue;

        for (auto place = bareFrom (range.getStart()); place < range.getEnd(); place = bareFrom (place))
        {
            result[static_cast<std::size_t> (place)] = i;
            nextBare[static_cast<std::size_t> (place)] = place + 1;
        }
    }

    return result;
}

} // namespace

RichTextString::RichTextString (const juce::String& plainText) : RichTextString (juce::String (plainText)) {}

RichTextString::RichTextString (juce::String&& plainText)
{
    if (plainText.isEmpty())
        return;

    auto& runs = runsOf (*this);
    runs.setAllocatedSize (1);
    runs.add (plainRun());
    runs[0].range.setEnd (numberOfCharacters (plainText));
    charactersOf (*this) = std::move (plainText);
}

RichTextString::RichTextString (const juce::AttributedString& other) : juce::AttributedString (other) {}

RichTextString::RichTextString (const RichTextString& other) : juce::AttributedString (other)
{
    runsOf (*this).setAllocatedSize (getNumAttributes());
}

RichTextString& RichTextString::operator= (const RichTextString& other)
{
    return *this = RichTextString (other);
}

RichTextString::~RichTextString() = default;

int RichTextString::length() const noexcept
{
    const auto runs = getNumAttributes();
    return runs > 0 ? getAttribute (runs - 1).range.getEnd() : 0;
}

bool RichTextString::operator== (const RichTextString& other) const
{
    if (getText() != other.getText())
        return false;

    if (isPlain() || other.isPlain())
        return isPlain() && other.isPlain();

    const auto runs = formattedRuns();
    const auto otherRuns = other.formattedRuns();

    return std::equal (runs.begin(), runs.end(), otherRuns.begin(), otherRuns.end(),
                       [] (const Attribute& a, const Attribute& b)
                       { return a.range == b.range && looksLike (a, b); });
}

RichTextString RichTextString::substring (int start) const { return substring (start, length()); }

RichTextString RichTextString::substring (int start, int end) const
{
    if (start <= 0 && end >= length())
        return *this;

    const auto wanted = juce::Range<int> (std::max (start, 0), std::max (end, 0));
    PieceCollector pieces;

    forEachRun (*this,
                [&] (const Attribute& run, const juce::String& runText)
                {
                    const auto part = run.range.getIntersectionWith (wanted) - run.range.getStart();

                    if (! part.isEmpty())
                        pieces.add (runText.substring (part.getStart(), part.getEnd()), run.font, run.colour);
                });

    return pieces.joined (*this);
}

RichTextString RichTextString::replace (juce::StringRef from, juce::StringRef to, bool ignoreCase) const
{
    if (from.isEmpty() || (ignoreCase ? getText().indexOfIgnoreCase (from) : getText().indexOf (from)) < 0)
        return *this;

    const juce::String replacement (to);
    const auto fromLength = from.length();
    PieceCollector pieces;
    auto place = getText().getCharPointer();
    auto pieceStart = place;
    int index = 0;
    int run = 0;

    const auto finishPiece = [&]
    {
        if (run < getNumAttributes())
            pieces.add (textBetween (pieceStart, place), getAttribute (run).font, getAttribute (run).colour);

        pieceStart = place;
    };

    while (! place.isEmpty())
    {
        if (getAttribute (run).range.getEnd() <= index)
        {
            finishPiece();
            ++run;
            continue;
        }

        const auto difference = ignoreCase ? place.compareIgnoreCaseUpTo (from.text, fromLength)
                                           : place.compareUpTo (from.text, fromLength);

        if (difference != 0)
        {
            ++place;
            ++index;
            continue;
        }

        finishPiece();
        pieces.add (replacement, getAttribute (run).font, getAttribute (run).colour);
        place += fromLength;
        index += fromLength;
        pieceStart = place;
    }

    finishPiece();
    return pieces.joined (*this);
}

RichTextString RichTextString::replaceIllegalASCIICharacters() const
{
    if (! StringUtil::hasIllegalASCIICharacters (getText()))
        return *this;

    PieceCollector pieces;

    forEachRun (*this, [&pieces] (const Attribute& run, const juce::String& runText)
                { pieces.add (StringUtil::replaceIllegalASCIICharacters (runText), run.font, run.colour); });

    return pieces.joined (*this);
}

std::vector<RichTextString::Attribute> RichTextString::formattedRuns() const
{
    std::vector<Attribute> runs;

    for (int i = 0; i < getNumAttributes(); ++i)
    {
        const auto& run = getAttribute (i);

        if (! isFormatted (run))
            continue;

        if (! runs.empty() && runs.back().range.getEnd() == run.range.getStart()
            && looksLike (runs.back(), run))
            runs.back().range.setEnd (run.range.getEnd());
        else
            runs.push_back (run);
    }

    return runs;
}

bool RichTextString::isPlain() const
{
    for (int i = 0; i < getNumAttributes(); ++i)
        if (isFormatted (getAttribute (i)))
            return false;

    return true;
}

juce::DynamicObject::Ptr RichTextString::toJSONDynamicObject() const
{
    juce::Array<juce::var> runs;

    for (const auto& run : formattedRuns())
        runs.add (jsonOfRun (run));

    juce::DynamicObject::Ptr object = new juce::DynamicObject();
    object->setProperty ("text", getText());
    object->setProperty ("runs", runs);
    return object;
}

void RichTextString::applyProtoTextAttribute (void* protoRichTextAttribute)
{
    if (protoRichTextAttribute == nullptr)
        return;

    const auto attribute = attributeFromProtoObject (protoRichTextAttribute);
    const auto range = attribute.range.getIntersectionWith ({ 0, length() });

    if (range.isEmpty()) // the framework would take it for the whole run around it
        return;

    setFont (range, attribute.font);
    setColour (range, attribute.colour);
}

RichTextString::Attribute RichTextString::attributeFromProtoObject (const void* protoRichTextAttribute)
{
    const auto& stored = *static_cast<const tessera1::ProtoRichTextAttribute*> (protoRichTextAttribute);
    const auto start = std::max (stored.rangestart(), 0);

    return { { start, std::max (stored.rangeend(), start) },
             fontOf (stored),
             juce::Colour (stored.colour()) };
}

void RichTextString::applyAttributes (const std::vector<Attribute>& added)
{
    if (added.empty() || length() == 0)
        return;

    const auto lookOf = lastAttributeOfEachCharacter (added, length());
    PieceCollector pieces;

    forEachRun (*this,
                [&] (const Attribute& run, const juce::String& runText)
                {
                    auto end = runText.getCharPointer();

                    for (auto place = run.range.getStart(); place < run.range.getEnd();)
                    {
                        const auto start = end;
                        const auto number = lookOf[static_cast<std::size_t> (place)];

                        for (;
                             place < run.range.getEnd() && lookOf[static_cast<std::size_t> (place)] == number;
                             ++place)
                            ++end;

                        const auto& look = number < 0 ? run : added[static_cast<std::size_t> (number)];
                        pieces.add (textBetween (start, end), look.font, look.colour);
                    }
                });

    *this = pieces.joined (*this);
}

void RichTextString::applyStringAttributeToProtoObject (const Attribute& attribute,
                                                        void* protoRichTextAttribute)
{
    if (protoRichTextAttribute == nullptr)
        return;

    auto& stored = *static_cast<tessera1::ProtoRichTextAttribute*> (protoRichTextAttribute);
    const auto& font = attribute.font;
    const auto family = font.getTypefaceName();
    const auto style = font.getTypefaceStyle();

    stored.set_rangestart (attribute.range.getStart());
    stored.set_rangeend (attribute.range.getEnd());
    stored.set_typefacename (
        family == juce::Font::getDefaultSansSerifFontName() ? std::string() : ProtoRecord::text (family));
    stored.set_typefacestyle (style == juce::Font::getDefaultStyle() ? std::string()
                                                                     : ProtoRecord::text (style));
    stored.set_height (font.getHeight());
    stored.set_underlined (font.isUnderlined());
    stored.set_horizontalscale (font.getHorizontalScale());
    stored.set_extrakerning (font.getExtraKerningFactor());
    stored.set_colour (attribute.colour.getARGB());
}

const juce::Font& RichTextString::defaultFont() { return plainRun().font; }

bool RichTextString::isStruckThrough (const juce::Font& font)
{
    return font.getTypefaceStyle().containsWholeWordIgnoreCase (strikeWord);
}

juce::Font RichTextString::withStrikethrough (juce::Font font, bool struckThrough)
{
    if (isStruckThrough (font) == struckThrough)
        return font;

    const auto style = font.getTypefaceStyle();

    if (struckThrough)
        return font.withTypefaceStyle ((isRegularStyle (style) ? juce::String ("Regular") : style) + " "
                                       + strikeWord);

    juce::StringArray words;
    words.addTokens (style, true);
    words.removeString (strikeWord, true);
    words.removeEmptyStrings();
    const auto rest = words.joinIntoString (" ");

    return font.withTypefaceStyle (isRegularStyle (rest) ? juce::Font::getDefaultStyle() : rest);
}

} // namespace ZEP::Core
