// SPDX-License-Identifier: GPL-3.0-only
#include "CueTextReader.h"

#include "CharacterText.h"
#include "TimecodeText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace DocxHandler
{

namespace
{

constexpr char32_t lineSeparator = 0x2028;

bool isBlank (const RichText& line) { return trimmed (line.text).empty(); }

bool hasDigit (std::string_view text) { return text.find_first_of ("0123456789") != std::string_view::npos; }

bool isDigitsAlone (std::string_view text)
{
    return ! text.empty() && text.find_first_not_of ("0123456789") == std::string_view::npos;
}

std::size_t lengthOf (const RichText& text) { return countCharacters (text.text); }

/* The runs of the characters from `start` to `end`, for the text that these make. */
void addRuns (RichText& to, const RichText& from, std::size_t start, std::size_t end)
{
    auto run = std::partition_point (from.runs.begin(), from.runs.end(),
                                     [start] (const Run& candidate) { return candidate.end <= start; });

    for (; run != from.runs.end() && run->start < end; ++run)
        to.runs.push_back (
            { std::max (run->start, start) - start, std::min (run->end, end) - start, run->look });
}

RichText part (const RichText& text, std::size_t start, std::size_t end)
{
    std::size_t place = 0;
    std::size_t position = 0;
    const auto byteOf = [&] (std::size_t wanted)
    {
        for (; position < wanted && place < text.text.size(); ++position)
            static_cast<void> (nextCharacter (text.text, place));

        return place;
    };

    const auto first = byteOf (start);
    RichText result { text.text.substr (first, byteOf (end) - first), {} };
    addRuns (result, text, start, end);
    return result;
}

/* A line that begins a cue, or two. */
struct CueStart
{
    std::string inPoint;
    std::string outPoint;
    std::string before; ///< the number, in some lists
    RichText behind;
    std::size_t lines = 1;
    bool isSubtitle = false; ///< with an arrow between the timecodes: no names there
};

std::string cut (const std::string& text, const FoundTimecode& found)
{
    return text.substr (found.start, found.end - found.start);
}

bool looksLikeNumber (std::string_view text)
{
    constexpr std::size_t longestNumber = 20;
    const auto number = trimmed (text);
    return countCharacters (number) <= longestNumber && hasDigit (number)
           && number.find (' ') == std::string_view::npos;
}

/* What may stand before the timecodes that begin a cue: nothing, a number, or a word for them. A sentence may not. */
std::optional<std::string> numberBefore (std::string_view text)
{
    const auto before = trimmed (text);
    const auto words = wordsAlone (before);
    constexpr std::array namesOfTimecodes { "", "tc", "in", "tcin", "timecode", "\xd0\xa2\xd0\x9a" };

    if (std::find (namesOfTimecodes.begin(), namesOfTimecodes.end(), words) != namesOfTimecodes.end())
        return std::string();

    const auto isCue = words.starts_with ("cue") && before.size() > 3;
    return looksLikeNumber (isCue ? before.substr (3) : before) ? std::optional (std::string (before))
                                                                : std::nullopt;
}

std::optional<CueStart> pairInLine (const RichText& line)
{
    const auto found = findTimecodes (line.text);

    if (found.size() < 2)
        return {};

    const std::string_view text (line.text);
    const auto between = text.substr (found[0].end, found[1].start - found[0].end);
    const auto number = numberBefore (text.substr (0, found[0].start));

    if (! number || ! meansUntil (between))
        return {};

    const auto textStart = std::min (text.find_first_not_of (" \t", found[1].end), text.size());
    const auto behind = countCharacters (text.substr (0, textStart));
    const auto hasArrow = between.find ("->") != std::string_view::npos
                          || between.find ("\xe2\x86\x92") != std::string_view::npos;
    return CueStart { cut (line.text, found[0]),
                      cut (line.text, found[1]),
                      *number,
                      part (line, behind, lengthOf (line)),
                      1,
                      hasArrow };
}

std::optional<CueStart> cueStartAt (const std::vector<RichText>& lines, std::size_t place)
{
    const auto isTimecodeLine = [&lines] (std::size_t i)
    { return i < lines.size() && isTimecode (lines[i].text); };

    if (isTimecodeLine (place) && isTimecodeLine (place + 1))
        return CueStart { std::string (trimmed (lines[place].text)),
                          std::string (trimmed (lines[place + 1].text)),
                          {},
                          {},
                          2,
                          false };

    return pairInLine (lines[place]);
}

bool looksLikeName (const RichText& line)
{
    constexpr std::size_t longestName = 40;
    const auto name = trimmed (line.text);
    return lengthOf (line) <= longestName
           && std::string_view (".?!,;").find (name.back()) == std::string_view::npos;
}

bool isSmallLetter (char32_t c)
{
    return (c >= 'a' && c <= 'z') || (c >= 0xdf && c <= 0xff && c != 0xf7) // of Latin letters,
           || (c >= 0x3b1 && c <= 0x3c9) || (c >= 0x430 && c <= 0x45f);    // of Greek and Cyrillic ones
}

/* In lists names stand in capitals. */
bool isInCapitals (std::string_view text)
{
    auto hasLetter = false;

    for (std::size_t place = 0; place < text.size();)
    {
        const auto c = nextCharacter (text, place);

        if (isSmallLetter (c))
            return false;

        hasLetter = hasLetter || (c >= 'A' && c <= 'Z') || c >= 0xc0;
    }

    return hasLetter;
}

RichText joined (std::vector<RichText>::const_iterator first, std::vector<RichText>::const_iterator last)
{
    RichTextBuilder text;

    for (auto line = first; line != last; ++line)
    {
        if (line != first)
            text.append ("\n", {});

        text.append (*line);
    }

    return text.take();
}

/* Spoken text, with name and number before it where they are there: the name in capitals, or any with a number below it. */
void readBody (ImportedCue& cue, const std::vector<RichText>& lines, bool mayNameCharacter)
{
    const auto filled =
        std::count_if (lines.begin(), lines.end(), [] (const RichText& line) { return ! isBlank (line); });
    const auto skipBlank = [&lines] (std::vector<RichText>::const_iterator line)
    {
        return std::find_if (line, lines.end(),
                             [] (const RichText& candidate) { return ! isBlank (candidate); });
    };
    auto line = skipBlank (lines.begin());
    const auto hasNumberBelow = [&] { return filled >= 3 && looksLikeNumber (skipBlank (line + 1)->text); };

    if (mayNameCharacter && filled >= 2 && looksLikeName (*line)
        && (isInCapitals (line->text) || hasNumberBelow()))
    {
        cue.character = trimmed (line->text);
        line = skipBlank (line + 1);

        if (filled >= 3 && cue.number.empty() && looksLikeNumber (line->text))
        {
            cue.number = trimmed (line->text);
            line = skipBlank (line + 1);
        }
    }

    auto end = lines.end();

    while (end > line && isBlank (*(end - 1)))
        --end;

    cue.text = joined (line, end);
}

void readSection (ImportedCue& cue, Field heading, const std::vector<RichText>& lines, bool mayNameCharacter)
{
    auto end = lines.end();

    while (end > lines.begin() && isBlank (*(end - 1)))
        --end;

    auto text = joined (lines.begin(), end);

    if (heading == Field::none)
        readBody (cue, lines, mayNameCharacter);
    else if (heading == Field::notes)
        cue.notes = std::move (text);
    else if (heading == Field::engineeringNotes)
        cue.engineeringNotes = std::move (text);
    else
        (heading == Field::reason ? cue.reason : cue.region) = onOneLine (trimmed (text.text));
}

/* What a line announces that holds a label and at most a colon or a full stop behind it. Somebody may say "Reason?" or
   "Note!" in a text. */
Field headingIn (std::string_view line)
{
    constexpr std::size_t placeOfFullStop = 3; // in "Eng. Notes"
    constexpr auto lettersAndBlanks = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz ";
    std::string words (trimmed (line));

    if (words.ends_with (':') || words.ends_with ('.'))
        words.pop_back();
    if (words.find ('.') == placeOfFullStop)
        words.erase (placeOfFullStop, 1);

    return words.find_first_not_of (lettersAndBlanks) == std::string::npos ? fieldOfLabel (words)
                                                                           : Field::none;
}

void readContent (ImportedCue& cue, const std::vector<RichText>& lines, bool mayNameCharacter)
{
    auto heading = Field::none;
    std::vector<RichText> section;

    for (const auto& line : lines)
    {
        const auto next = headingIn (line.text);

        if (next == Field::none)
        {
            section.push_back (line);
            continue;
        }

        readSection (cue, std::exchange (heading, next), section, mayNameCharacter);
        section.clear();
    }

    readSection (cue, heading, section, mayNameCharacter);
}

class RunningTextReader final
{
public:
    void read (const std::vector<RichText>& lines)
    {
        for (std::size_t i = 0; i < lines.size();)
        {
            auto start = cueStartAt (lines, i);

            if (! start)
            {
                if (! isOpen)
                    content.clear(); // only what stands right above the first cue may be its number

                content.push_back (lines[i]);

                ++i;
                continue;
            }

            auto number = takeNumberFromEnd (*start);
            finish();
            begin (std::move (*start), std::move (number));
            i += cues.back().lines;
        }

        finish();
    }

    std::vector<ImportedCue> result()
    {
        std::vector<ImportedCue> read;

        for (auto& cue : cues)
            read.push_back (std::move (cue.cue));

        return read;
    }

private:
    struct OpenCue
    {
        ImportedCue cue;
        std::size_t lines;
        bool mayNameCharacter;
    };

    /* Words beside the timecodes are a name in capitals, or the text has begun. */
    static bool mayName (const CueStart& start)
    {
        return ! start.isSubtitle && (isBlank (start.behind) || isInCapitals (start.behind.text));
    }

    /* In subtitles the number stands on a line of its own above the timecodes. */
    std::string takeNumberFromEnd (const CueStart& start)
    {
        const auto number = content.empty() ? std::string() : std::string (trimmed (content.back().text));

        if (! start.before.empty() || ! isDigitsAlone (number) || (isOpen && content.size() < 2))
            return start.before;

        content.pop_back();
        return number;
    }

    void begin (CueStart start, std::string number)
    {
        ImportedCue cue;
        cue.inPoint = std::move (start.inPoint);
        cue.outPoint = std::move (start.outPoint);
        cue.number = std::move (number);
        cues.push_back ({ std::move (cue), start.lines, mayName (start) });
        content.clear();
        isOpen = true;

        if (! isBlank (start.behind))
            content.push_back (std::move (start.behind));
    }

    void finish()
    {
        if (isOpen)
            readContent (cues.back().cue, content, cues.back().mayNameCharacter);
    }

    std::vector<OpenCue> cues;
    std::vector<RichText> content;
    bool isOpen = false;
};

} // namespace

std::vector<RichText> linesOf (const RichText& text)
{
    std::vector<RichText> lines;
    std::size_t start = 0;
    std::size_t position = 0;
    std::size_t startOfLine = 0;

    for (std::size_t place = 0; place < text.text.size();)
    {
        const auto before = place;
        const auto c = nextCharacter (text.text, place);

        if (c == '\n' || c == lineSeparator)
        {
            lines.push_back ({ text.text.substr (startOfLine, before - startOfLine), {} });
            addRuns (lines.back(), text, start, position);
            startOfLine = place;
            start = position + 1;
        }

        ++position;
    }

    lines.push_back ({ text.text.substr (startOfLine), {} });
    addRuns (lines.back(), text, start, position);
    return lines;
}

std::vector<ImportedCue> readRunningText (const std::vector<RichText>& paragraphs)
{
    std::vector<RichText> lines;

    for (const auto& paragraph : paragraphs)
        for (auto& line : linesOf (paragraph))
            lines.push_back (std::move (line));

    RunningTextReader reader;
    reader.read (lines);
    return reader.result();
}

} // namespace DocxHandler
