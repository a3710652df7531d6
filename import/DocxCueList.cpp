// SPDX-License-Identifier: GPL-3.0-only
#include "import/DocxCueList.h"

#include "core/text/WideObject.h"
#include "import/frame/JSONReader.h"
#include "import/frame/TableBudget.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace ZEP::Overmarks
{

using Core::RichTextString;
using Core::WideObject;

namespace
{

constexpr float fontHeight = 16.0f; // the file tells styles, not sizes
constexpr auto noTimecode = "--:--:--:--";

/** Lists and objects are no texts: docxHandler writes none of them where a text belongs. */
juce::String textOf (const juce::var& cue, const char* name, const juce::String& ifAbsent = {})
{
    const auto value = WideObject::valueOf (cue, name, ifAbsent);
    return value.isObject() ? juce::String() : JSONReader::textOf (value); // a list is an object too
}

/** A number as a whole one, which stops at the ends of its range. */
juce::int64 wholeNumber (const juce::var& value)
{
    if (! value.isDouble())
        return static_cast<juce::int64> (value);

    constexpr double beyond = 1e15;
    const auto number = static_cast<double> (value);
    return std::isnan (number) ? 0 : static_cast<juce::int64> (std::clamp (number, -beyond, beyond));
}

int position (const juce::var& run, const char* name)
{
    constexpr juce::int64 lowest = std::numeric_limits<int>::min();
    constexpr juce::int64 highest = std::numeric_limits<int>::max();
    return static_cast<int> (std::clamp (wholeNumber (WideObject::valueOf (run, name)), lowest, highest));
}

juce::Range<int> rangeOf (const juce::var& run)
{
    const auto start = position (run, "range_start");
    return { start, std::max (start, position (run, "range_end")) };
}

juce::Font fontOf (const juce::var& run)
{
    constexpr juce::int64 styles = juce::Font::bold | juce::Font::italic | juce::Font::underlined;
    return { fontHeight, static_cast<int> (wholeNumber (WideObject::valueOf (run, "font_type")) & styles) };
}

juce::Colour colourOf (const juce::var& run)
{
    const auto colour = WideObject::valueOf (run, "colour");
    const auto part = [&colour] (const char* name)
    { return static_cast<juce::uint8> (wholeNumber (WideObject::valueOf (colour, name)) & 0xff); };
    return { part ("red"), part ("green"), part ("blue") };
}

/** The runs of one list, each character under the last that covers it.

    The framework's own way, one run after the other over all that were there before, takes a time that grows with the square of
    their number, and takes a run without characters for all of the text around it. */
class Layer final
{
public:
    /** @param list  no list at all is one without runs  @param length  of the text, in characters */
    Layer (const juce::var& list, int length)
        : runs (list),
          covering (static_cast<std::size_t> (length), none)
    {
        if (! hasRuns())
            return;

        nextBare.resize (covering.size() + 1);
        std::iota (nextBare.begin(), nextBare.end(), std::size_t { 0 });

        for (int i = runs.size(); --i >= 0;)
            cover (i, rangeOf (runs[i]).getIntersectionWith ({ 0, length }));
    }

    bool hasRuns() const { return runs.isArray() && runs.size() > 0; }

    /** The number of the run over a character; -1 without one. */
    int at (int character) const { return covering[static_cast<std::size_t> (character)]; }

    const juce::var& run (int number) const { return runs[number]; }

private:
    static constexpr int none = -1;

    /** Covers what no later run has covered yet, so that no character is visited twice. */
    void cover (int number, juce::Range<int> range)
    {
        if (range.isEmpty())
            return;

        const auto end = static_cast<std::size_t> (range.getEnd());

        for (auto i = bareFrom (static_cast<std::size_t> (range.getStart())); i < end; i = bareFrom (i))
        {
            covering[i] = number;
            nextBare[i] = i + 1;
        }
    }

    std::size_t bareFrom (std::size_t place)
    {
        while (nextBare[place] != place)
        {
            nextBare[place] = nextBare[nextBare[place]];
            place = nextBare[place];
        }

        return place;
    }

    const juce::var runs;
    std::vector<int> covering;
    std::vector<std::size_t> nextBare;
};

DocxCueList::Row rowOf (const juce::var& cue)
{
    const auto region = DocxCueList::regionOf (textOf (cue, "forcedNarrativeRegion"));
    const auto rich = [&cue] (const char* name)
    { return DocxCueList::richTextOf (WideObject::valueOf (cue, name)); };

    return { textOf (cue, "startTC", noTimecode),
             textOf (cue, "endTC", noTimecode),
             textOf (cue, "charName"),
             rich ("text"),
             textOf (cue, "cueNumber"),
             rich ("note"),
             rich ("engineeringNotes"),
             textOf (cue, "reason"),
             juce::String (region.isEmpty() ? "No" : "Yes"),
             region };
}

} // namespace

const juce::StringArray& DocxCueList::titles()
{
    static const juce::StringArray names { "Start TC",         "End TC",   "Character",         "Text",
                                           "Cue Number",       "Notes",    "Engineering Notes", "Reason",
                                           "Forced Narrative", "FN Region" };
    return names;
}

DocxCueList::Outcome DocxCueList::addRows (const juce::String& json, std::vector<Row>& rows)
{
    const auto root = JSONReader::read (json);
    const auto list = root.has_value() ? WideObject::valueOf (*root, "cueList") : juce::var();

    if (! list.isArray())
        return Outcome::noCueList;

    TableBudget budget (json.getNumBytesAsUTF8());

    for (const auto& cue : *list.getArray())
    {
        if (! budget.takeRow (numberOfColumns))
            return Outcome::cutOff;

        rows.push_back (rowOf (cue));
    }

    return Outcome::whole;
}

RichTextString DocxCueList::richTextOf (const juce::var& value)
{
    RichTextString result (textOf (value, "text"));
    const auto length = result.length();
    const Layer fonts (WideObject::valueOf (value, "fontAttributeList"), length);
    const Layer colours (WideObject::valueOf (value, "colourAttributeList"), length);

    if (! fonts.hasRuns() && ! colours.hasRuns())
        return result;

    std::vector<RichTextString::Attribute> attributes;

    for (int start = 0, end = 0; start < length; start = end)
    {
        const auto font = fonts.at (start);
        const auto colour = colours.at (start);

        for (end = start + 1; end < length && fonts.at (end) == font && colours.at (end) == colour;)
            ++end;

        if (font >= 0 || colour >= 0)
            attributes.emplace_back (juce::Range<int> (start, end),
                                     font < 0 ? RichTextString::defaultFont() : fontOf (fonts.run (font)),
                                     colour < 0 ? juce::Colours::black : colourOf (colours.run (colour)));
    }

    result.applyAttributes (attributes);
    return result;
}

juce::String DocxCueList::regionOf (const juce::String& text)
{
    for (const auto* region : { "Left", "Right", "Top", "Bottom" })
        if (text.containsIgnoreCase (region))
            return region;

    return text.isEmpty() ? "" : "Bottom";
}

} // namespace ZEP::Overmarks
