// SPDX-License-Identifier: GPL-3.0-only
#include "SeasonLists.h"

#include "LibraryWorkbook.h"
#include "Works.h"

#include "core/timecode/TCToolbox.h"
#include "import/CSVEventFileImporter.h"
#include "import/frame/EventRowReader.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <utility>

namespace bench
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

constexpr int framesPerSecond = 25;
constexpr int framesBetweenCues = 8; // a million cues end before hour 100
constexpr int framesOfCue = 50;
constexpr int numberOfCharacters = 40;
constexpr int firstFrame = 60 * 60 * framesPerSecond;

const SeasonRow titles { "Start TC",          "End TC", "Text",       "Character",
                         "Char Prefix",       "Actor",  "Cue Number", "Notes",
                         "Engineering Notes", "Reason", "Done" };

std::string twoDigits (int number)
{
    return { static_cast<char> ('0' + number / 10 % 10), static_cast<char> ('0' + number % 10) };
}

std::string timecode (int frame)
{
    const auto seconds = frame / framesPerSecond;
    return twoDigits (seconds / 3600) + ":" + twoDigits (seconds / 60 % 60) + ":" + twoDigits (seconds % 60)
           + ":" + twoDigits (frame % framesPerSecond);
}

std::string sentence (std::mt19937& random)
{
    static constexpr const char* words[] = { "harbour",  "light",   "never", "again", "boat", "listen",
                                             "tomorrow", "captain", "water", "home",  "fear", "slowly" };
    std::string text;

    for (int i = 0; i < 7; ++i)
        text += (i > 0 ? " " : "") + std::string (words[random() % std::size (words)]);

    return text + ".";
}

std::string csvOf (const std::vector<SeasonRow>& rows)
{
    std::string file;
    const auto add = [&file] (const SeasonRow& row, bool quotesTexts)
    {
        for (std::size_t i = 0; i < row.size(); ++i)
        {
            const bool isQuoted = quotesTexts && (i == 2 || i == 7);
            file += (i > 0 ? "," : "") + std::string (isQuoted ? "\"" : "") + row[i] + (isQuoted ? "\"" : "");
        }

        file += '\n';
    };

    add (titles, false);
    for (const auto& row : rows)
        add (row, true);

    return file;
}

/** With the line breaks of Windows, which not every reader can do without. */
std::string srtOf (const std::vector<SeasonRow>& rows)
{
    const auto time = [] (const std::string& text) { return text.substr (0, 8) + ",480"; };
    std::string file;

    for (std::size_t i = 0; i < rows.size(); ++i)
        file += std::to_string (i + 1) + "\r\n" + time (rows[i][0]) + " --> " + time (rows[i][1]) + "\r\n<i>"
                + rows[i][2] + "</i>\r\n\r\n";

    return file;
}

std::string filledUp (const std::string& text, std::size_t length, char filler)
{
    std::string filled (length, filler);
    std::copy_n (text.begin(), std::min (length, text.size()), filled.begin());
    return filled;
}

/** Blocks of 128 bytes behind a head of 1024. The head counts them in five digits, so there are 99 999 at most. */
std::string ebuOf (const std::vector<SeasonRow>& rows)
{
    constexpr std::size_t most = 99999;
    const auto number = std::min (rows.size(), most);
    const auto digits = std::to_string (100000 + number).substr (1);
    // Code page, disk format, Latin display, Latin characters; the counts of blocks, subtitles and groups.
    auto file = filledUp (filledUp ("850STL25.01000"
                                    "0009",
                                    238, ' ')
                              + digits + digits + "001",
                          1024, ' ');
    const auto time = [] (const std::string& text)
    {
        std::string bytes;
        for (std::size_t i = 0; i < 11; i += 3)
            bytes += static_cast<char> ((text[i] - '0') * 10 + text[i + 1] - '0');
        return bytes;
    };

    for (std::size_t i = 0; i < number; ++i)
        file += std::string { '\0', static_cast<char> (i & 0xff), static_cast<char> (i >> 8 & 0xff), '\xff',
                              '\0' }
                + time (rows[i][0]) + time (rows[i][1]) + std::string { 20, 2, 0 }
                + filledUp (rows[i][2], 112, '\x8f');

    return file;
}

/** A small table for each cue, for programs that make documents of such texts. */
std::string markdownOf (const std::vector<SeasonRow>& rows)
{
    std::string file;

    for (const auto& row : rows)
        file += "| " + row[2] + " | " + row[6] + " |\n|---|---|\n| NOTES " + row[7] + " | " + row[3] + " "
                + row[0] + " " + row[1] + " |\n\n";

    return file;
}

std::string littleEndian (std::size_t number, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char> (number >> 8 * i & 0xff);
    return text;
}

std::string dbfOf (const std::vector<SeasonRow>& rows)
{
    static const std::pair<const char*, std::size_t> fields[] = {
        { "TC_IN", 11 },   { "TC_OUT", 11 }, { "SUBTITLE", 64 }, { "ROLE", 13 },
        { "PREFIX", 4 },   { "ACTOR", 9 },   { "TAKE", 8 },      { "NOTES", 64 },
        { "ENGNOTES", 8 }, { "REASON", 14 }, { "DONE", 3 }
    };
    std::size_t record = 1;
    for (const auto& field : fields)
        record += field.second;

    // Version, a date that is always the same, the numbers of records and bytes.
    auto file = filledUp (std::string { 3, 126, 1, 2 } + littleEndian (rows.size(), 4)
                              + littleEndian (32 + 32 * std::size (fields) + 1, 2) + littleEndian (record, 2),
                          32, '\0');
    for (const auto& [name, length] : fields)
        file += filledUp (filledUp (filledUp (name, 11, '\0') + "C", 16, '\0') + static_cast<char> (length),
                          32, '\0');
    file += '\r';

    for (const auto& row : rows)
    {
        file += ' ';
        for (std::size_t i = 0; i < row.size(); ++i)
            file += filledUp (row[i], fields[i].second, ' ');
    }

    return file + '\x1a';
}

std::string ttalOf (const std::vector<SeasonRow>& rows)
{
    std::string text =
        R"({"meta": {"tool": "x", "fps": "FPS_2500", "lang": "en", "timeFormat": "FRAMES"}, "events": {)";

    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        const auto start = static_cast<int> (i) * framesBetweenCues;
        const auto number = std::to_string (i + 100000000);
        text += (i > 0 ? ",\n\"" : "\n\"") + ("5e0a1c2d-0000-4000-8000-000" + number) + R"(": {"start": )"
                + std::to_string (start) + R"(, "end": )" + std::to_string (start + framesOfCue)
                + R"(, "cue": ")" + rows[i][6] + R"(", "txt": ")" + rows[i][2]
                + R"(", "styles": [{"from": 0, "to": 5, "type": "bold"}], "characterId": "c)"
                + rows[i][4].substr (1) + R"(", "dubAnnotations": {"types": [], "text": ")" + rows[i][7]
                + "\"}}";
    }

    text += "}, \"characters\": {";

    for (int i = 0; i < numberOfCharacters; ++i)
        text += (i > 0 ? ", \"c" : "\"c") + std::to_string (i) + R"(": {"name": "CHARACTER )"
                + std::to_string (i) + "\"}";

    return text + "}}";
}

void write (const juce::File& file, const std::string& bytes)
{
    if (! file.replaceWithData (bytes.data(), bytes.size()))
        giveUp (file.getFullPathName().toStdString() + " can't be written");
}

} // namespace

std::vector<SeasonRow> seasonRows (int number)
{
    std::mt19937 random (11);
    std::vector<SeasonRow> rows;

    for (int i = 0; i < number; ++i)
    {
        const auto frame = firstFrame + i * framesBetweenCues;
        const auto who = std::to_string (random() % numberOfCharacters);
        auto text = sentence (random);
        const auto cue = "R" + std::to_string (random() % 8 + 1) + " " + std::to_string (random() % 5000);
        auto notes = sentence (random);
        rows.push_back ({ timecode (frame), timecode (frame + framesOfCue), std::move (text),
                          "CHARACTER " + who, "C" + who, "Actor " + who, cue, std::move (notes), "",
                          "Clarity (AR4)", random() % 2 == 0 ? "Yes" : "No" });
    }

    return rows;
}

void makeLists (const juce::File& folder, int rows)
{
    folder.createDirectory();
    auto list = seasonRows (rows);
    write (folder.getChildFile ("list.csv"), csvOf (list));
    write (folder.getChildFile ("list.srt"), srtOf (list));
    write (folder.getChildFile ("list.stl"), ebuOf (list));
    write (folder.getChildFile ("list.dbf"), dbfOf (list));
    write (folder.getChildFile ("list.ttal"), ttalOf (list));
    write (folder.getChildFile ("list.md"), markdownOf (list));

    // A sheet of Excel ends there.
    if (constexpr int most = 1048576; rows < most)
    {
        std::vector<std::vector<PlainCell>> cells;
        const auto add = [&cells] (const SeasonRow& row)
        {
            cells.emplace_back();
            for (const auto& cell : row)
                cells.back().push_back ({ { cell, false } });
        };
        add (titles);
        for (const auto& row : list)
            add (row);
        writeWithLibrary (folder.getChildFile ("list.xlsx").getFullPathName(), cells,
                          WorkbookMemory::wholeSheet);
    }

    // Not std::shuffle, which every library does in its own way.
    std::mt19937 random (5);
    for (auto i = list.size(); i > 1; --i)
        std::swap (list[i - 1], list[random() % i]);

    write (folder.getChildFile ("shuffled.csv"), csvOf (list));
}

Project projectOfTable (const juce::String& path)
{
    UserDefaultsRegistrar::registerUserDefaults();
    auto project = Project::createEmpty (std::make_shared<TimeInfo> (
        *TCToolbox::tcDefForRateName ("25"), TCToolbox::tcTimeFromString ("00:00:00:00")));
    project.makeCurrent();

    juce::String error;
    CSVEventFileImporter importer (path, error);
    const auto read = EventRowReader (project.timeInfo, project.characters).readAndEmpty (importer);

    if (error.isNotEmpty() || ! read.problems.empty())
        giveUp (path.toStdString() + " can't be read: " + error.toStdString());

    for (const auto& event : read.events)
        project.list->addEvent (event, false);

    return project;
}

} // namespace bench
