// SPDX-License-Identifier: GPL-3.0-only
#include "ImportedCue.h"

#include <nlohmann/json.hpp>

namespace DocxHandler
{

namespace
{

using JSON = nlohmann::ordered_json;

/* Flags of a font. A strike has none: it can't be told. */
constexpr int boldFlag = 1;
constexpr int italicFlag = 2;
constexpr int underlinedFlag = 4;

int fontType (const Look& look)
{
    return (look.bold ? boldFlag : 0) | (look.italic ? italicFlag : 0)
           | (look.underlined ? underlinedFlag : 0);
}

JSON richTextJSON (const RichText& text)
{
    auto fonts = JSON::array();
    auto colours = JSON::array();

    for (const auto& run : text.runs)
    {
        if (fontType (run.look) != 0)
            fonts.push_back ({ { "range_start", run.start },
                               { "range_end", run.end },
                               { "font_type", fontType (run.look) } });

        if (run.look.colour != Look().colour)
        {
            const auto channel = [&run] (unsigned int shift) { return (run.look.colour >> shift) & 0xffU; };
            const JSON colour { { "red", channel (16) }, { "green", channel (8) }, { "blue", channel (0) } };
            colours.push_back (
                { { "range_start", run.start }, { "range_end", run.end }, { "colour", colour } });
        }
    }

    return { { "text", text.text }, { "fontAttributeList", fonts }, { "colourAttributeList", colours } };
}

JSON cueJSON (const ImportedCue& cue)
{
    auto json = JSON::object();
    const auto add = [&json] (const char* key, const std::string& value)
    {
        if (! value.empty())
            json[key] = value;
    };

    add ("startTC", cue.inPoint);
    add ("endTC", cue.outPoint);
    add ("charName", cue.character);
    add ("cueNumber", cue.number);
    add ("reason", cue.reason);
    json["text"] = richTextJSON (cue.text);
    json["note"] = richTextJSON (cue.notes);
    json["engineeringNotes"] = richTextJSON (cue.engineeringNotes);
    add ("forcedNarrativeRegion", cue.region);
    return json;
}

} // namespace

std::string cueListJSON (const std::vector<ImportedCue>& cues)
{
    auto list = JSON::array();

    for (const auto& cue : cues)
        list.push_back (cueJSON (cue));

    const JSON document { { "cueList", std::move (list) } };
    return document.dump (-1, ' ', true, JSON::error_handler_t::replace) + "\n";
}

} // namespace DocxHandler
