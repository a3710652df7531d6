// SPDX-License-Identifier: GPL-3.0-only
//
// One object: "footer", "frontMatter", "continuousPagesBlockList" (each {"cueContentList"}) and "cueContentList", each of them
// only where there is something in it. A rich text is {"text", "runs": [{"start", "end", "bold", "italic", "underlined",
// "struckThrough", "height", "colour"}]}; positions count characters, the colour is eight hexadecimal digits, alpha first.
#include "SheetJSON.h"

#include "CharacterText.h"
#include "Failure.h"
#include "FileBytes.h"
#include "MendedJSON.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

namespace DocxHandler
{

namespace
{

using JSON = nlohmann::json;

constexpr int deepest = 32;
constexpr std::uintmax_t largestFile = std::uintmax_t { 512 } << 20U;

const JSON& member (const JSON& object, const char* key)
{
    static const JSON nothing;

    if (! object.is_object())
        return nothing;

    const auto found = object.find (key);
    return found == object.end() ? nothing : *found;
}

std::string textAt (const JSON& object, const char* key)
{
    const auto& value = member (object, key);
    return value.is_string() ? value.get<std::string>() : std::string();
}

double numberAt (const JSON& object, const char* key, double otherwise)
{
    const auto& value = member (object, key);
    return value.is_number() ? value.get<double>() : otherwise;
}

int intAt (const JSON& object, const char* key, int otherwise = 0)
{
    constexpr double largest = 1e9;
    return static_cast<int> (std::clamp (numberAt (object, key, otherwise), -largest, largest));
}

bool flagAt (const JSON& object, const char* key)
{
    const auto& value = member (object, key);
    return value.is_boolean() && value.get<bool>();
}

std::uint32_t colourAt (const JSON& object, const char* key)
{
    const auto digits = textAt (object, key);
    std::uint32_t value = 0;
    const auto* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars (digits.data(), end, value, 16);
    return error == std::errc() && stop == end ? value : Look().colour;
}

Run runFrom (const JSON& json)
{
    const auto position = [&json] (const char* key)
    { return static_cast<std::size_t> (std::max (intAt (json, key), 0)); };

    Run run { position ("start"), position ("end"), {} };
    run.look.bold = flagAt (json, "bold");
    run.look.italic = flagAt (json, "italic");
    run.look.underlined = flagAt (json, "underlined");
    run.look.struckThrough = flagAt (json, "struckThrough");
    run.look.height = numberAt (json, "height", Look::usualHeight);
    run.look.colour = colourAt (json, "colour");
    return run;
}

/* Runs may overlap or lie outside the text in a file that somebody else has written. */
std::vector<Run> tidied (std::vector<Run> runs, std::size_t length)
{
    std::stable_sort (runs.begin(), runs.end(),
                      [] (const Run& a, const Run& b) { return a.start < b.start; });
    std::size_t covered = 0;

    for (auto& run : runs)
    {
        run.start = std::max (run.start, covered);
        run.end = std::min (run.end, length);
        covered = std::max (covered, run.end);
    }

    std::erase_if (runs, [] (const Run& run) { return run.start >= run.end; });
    return runs;
}

RichText richTextAt (const JSON& object, const char* key)
{
    const auto& json = member (object, key);
    RichText result;

    if (json.is_string()) // plain text will do
        result.text = json.get<std::string>();
    else
        result.text = textAt (json, "text");

    for (const auto& run : member (json, "runs"))
        result.runs.push_back (runFrom (run));

    result.runs = tidied (std::move (result.runs), countCharacters (result.text));
    return result;
}

std::optional<Takes> takesFrom (const JSON& json)
{
    if (! json.is_object())
        return {};

    return Takes { intAt (json, "numRecordedTakes"), intAt (json, "selectedTake", -1),
                   intAt (json, "alternativeTake", -1), intAt (json, "numberTakesToDisplay"),
                   intAt (json, "numberRowsToDisplay") };
}

SheetCue cueFrom (const JSON& json)
{
    const auto sized = [&json] (const char* sizeKey, const char* key) {
        return SizedText { intAt (json, sizeKey), textAt (json, key) };
    };
    const auto sizedRich = [&json] (const char* sizeKey, const char* key) {
        return SizedRichText { intAt (json, sizeKey), richTextAt (json, key) };
    };

    return { textAt (json, "charIconFilePath"),
             textAt (json, "startTCIconFilePath"),
             textAt (json, "endTCIconFilePath"),
             sized ("charNameFontSize", "charName"),
             sizedRich ("cueTextFontSize", "cueText"),
             sizedRich ("cueNotesFontSize", "cueNotes"),
             sizedRich ("cueEngNotesFontSize", "cueEngNotes"),
             sized ("reasonStringFontSize", "reasonString"),
             sized ("cueNumberFontSize", "cueNumber"),
             sized ("forcedNarrativeRegionFontSize", "forcedNarrativeRegion"),
             sized ("startTCFontSize", "startTC"),
             sized ("endTCFontSize", "endTC"),
             takesFrom (member (json, "cueTakes")) };
}

/* A block without cues gives no page. */
void addBlock (Sheet& sheet, const JSON& cues)
{
    std::vector<SheetCue> block;

    for (const auto& cue : cues)
        if (cue.is_object())
            block.push_back (cueFrom (cue));

    if (! block.empty())
        sheet.blocks.push_back (std::move (block));
}

SheetFooter footerFrom (const JSON& json)
{
    return { intAt (json, "fontSize"), textAt (json, "appIconFilePath"), textAt (json, "currentDate"),
             textAt (json, "appVersion"), textAt (json, "wordLayout") };
}

SheetFrontMatter frontMatterFrom (const JSON& json)
{
    return { intAt (json, "fontSize"),           textAt (json, "projectName"),
             textAt (json, "projectFilePath"),   textAt (json, "soundSupervisor"),
             textAt (json, "productionCompany"), textAt (json, "studioName"),
             textAt (json, "timelineName"),      textAt (json, "episodeReel"),
             textAt (json, "pictureVersion"),    textAt (json, "charAndActor") };
}

bool isTooDeep (std::string_view json)
{
    int depth = 0;
    bool isInText = false;

    for (std::size_t place = 0; place < json.size(); ++place)
    {
        const auto c = json[place];

        if (c == '"')
            isInText = ! isInText;
        else if (isInText && c == '\\')
            ++place;
        else if (! isInText && (c == '{' || c == '['))
            ++depth;
        else if (! isInText && (c == '}' || c == ']'))
            --depth;

        if (depth > deepest)
            return true;
    }

    return false;
}

JSON parsed (std::string_view text)
{
    if (isTooDeep (text))
        throw Failure ("The cue sheet's JSON is nested too deeply");

    try
    {
        return JSON::parse (mendedJSON (text));
    }
    catch (const JSON::exception&)
    {
        throw Failure ("The cue sheet is no JSON");
    }
}

} // namespace

Sheet sheetFromJSON (std::string_view text)
{
    const auto json = parsed (text);

    if (! json.is_object())
        throw Failure ("The cue sheet's JSON is no object");

    Sheet sheet;

    if (const auto& footer = member (json, "footer"); footer.is_object())
        sheet.footer = footerFrom (footer);

    if (const auto& frontMatter = member (json, "frontMatter"); frontMatter.is_object())
        sheet.frontMatter = frontMatterFrom (frontMatter);

    for (const auto& block : member (json, "continuousPagesBlockList"))
        addBlock (sheet, member (block, "cueContentList"));

    sheet.combined = member (json, "continuousPagesBlockList").is_array();
    addBlock (sheet, member (json, "cueContentList"));
    return sheet;
}

Sheet readSheet (const std::filesystem::path& file)
{
    const auto bytes = readFile (file, largestFile);

    try
    {
        return sheetFromJSON (bytes);
    }
    catch (const Failure& failure)
    {
        throw Failure (std::string (failure.what()) + ": " + file.string());
    }
}

} // namespace DocxHandler
