// SPDX-License-Identifier: GPL-3.0-only
// Every command line that README and docs show is run; where they show what it prints, that is what it prints.
#include "overmarks/ProgramFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <utility>
#include <vector>

namespace
{

struct Command
{
    std::string line; ///< as somebody would type it
    std::vector<std::string>
        output;               ///< what the page shows of it, both streams; empty where it shows nothing
    bool showsOutput = false; ///< a "$" stands before it
};

/** A page of the documentation, by its path below the sources. */
struct Page
{
    std::string name;

    friend void PrintTo (const Page& page, std::ostream* out) { *out << page.name; }

    std::vector<std::string> lines() const
    {
        std::ifstream stream (std::string (OVERMARKS_SOURCES "/") + name);
        std::vector<std::string> all;

        for (std::string line; std::getline (stream, line);)
            all.push_back (line);

        return all;
    }

    /** Its command lines: indented, with or without a "$". What is explained behind one stands three blanks off. */
    std::vector<Command> commands() const
    {
        static const std::string indentation = "    ";
        std::vector<Command> found;
        bool isInOutput = false;

        for (const auto& line : lines())
        {
            const bool isCode = line.starts_with (indentation);
            const auto text = isCode ? line.substr (indentation.size()) : std::string();

            if (text.starts_with ("$ ") || text.starts_with ("overmarks "))
            {
                const bool hasPrompt = text.starts_with ("$ ");
                const auto typed = hasPrompt ? text.substr (2) : text;
                found.push_back ({ typed.substr (0, typed.find ("   ")), {}, hasPrompt });
                isInOutput = hasPrompt;
            }
            else if (isInOutput && isCode)
            {
                found.back().output.push_back (text);
            }
            else
            {
                isInOutput = false;
            }
        }

        return found;
    }

    /** Whether its commands follow on each other. */
    bool isSession() const { return name.find ("session") != std::string::npos; }
};

std::vector<Page> pages()
{
    std::vector<Page> all { { "README.md" } };

    for (const auto& entry : std::filesystem::directory_iterator (OVERMARKS_SOURCES "/docs"))
        if (entry.path().extension() == ".md")
            all.push_back ({ "docs/" + entry.path().filename().string() });

    std::sort (all.begin(), all.end(), [] (const auto& a, const auto& b) { return a.name < b.name; });
    return all;
}

class DocumentedCommandsTest : public ProgramTest, public testing::WithParamInterface<Page>
{
protected:
    struct Ran
    {
        int status = -1;
        std::string output; ///< both streams
    };

    /** A folder with the files that the pages speak of. */
    void fill() const
    {
        folder.deleteRecursively();
        folder.createDirectory();
        const juce::File sources (OVERMARKS_SOURCES);
        sources.getChildFile ("examples/data").copyDirectoryTo (folder.getChildFile ("examples/data"));

        if (GetParam().isSession())
            return;

        const auto reel = folder.getChildFile ("examples/data/harbour-lights-reel-2.csv");

        for (const auto* name : { "reel-1.csv", "reel-2.csv", "reel-3.csv" })
            reel.copyFileTo (file (name));

        const auto tracks =
            sources.getChildFile ("tests/data/import/protools/harbour.txt").loadFileAsString();
        write ("reel-2.txt", tracks.replace ("XY7", "AR4").toStdString());
        sources.getChildFile ("tests/data/import/xlsx/harbour.xlsx").copyFileTo (file ("reel-2.xlsx"));

        // A studio's own titles, an assignment of them that is kept, and where shells look for completions.
        for (const auto* name : { "loops-1.csv", "loops-2.csv" })
            write (name, "In,Out,Speaker,Line,Loop #,Mood\n"
                         "01:00:02:00,01:00:04:00,ANNA,Who's there?,12,frightened\n");

        for (const auto* name :
             { ".local/share/bash-completion/completions", ".zsh/functions", ".config/fish/completions" })
            file (name).createDirectory();

        const auto made =
            shell ("overmarks import reel-2.csv -o film.overmarks --origin 02:00:00:00 --quiet && "
                   "overmarks convert film.overmarks film.json --quiet && "
                   "overmarks rows loops-1.csv --map 'Loop #=Cue Number' --map 'Line=Text' --map "
                   "'Speaker=Character' --save-mapping studio --settings studio.settings --quiet > rows.txt");
        EXPECT_EQ (made.status, 0) << made.output;
    }

    Ran shell (const std::string& line) const
    {
        write ("command.sh", line + "\n");
        const auto program = std::filesystem::path (OVERMARKS_PROGRAM).parent_path().string();
        const auto command = "cd '" + folder.getFullPathName().toStdString() + "' && PATH='" + program
                             + "':\"$PATH\" HOME='" + folder.getFullPathName().toStdString()
                             + "' sh command.sh 2>&1 < /dev/null";
        Ran ran;
        auto* const pipe = popen (command.c_str(), "r");
        std::array<char, 4096> piece {};

        for (std::size_t length = 0; (length = std::fread (piece.data(), 1, piece.size(), pipe)) > 0;)
            ran.output.append (piece.data(), length);

        const int status = pclose (pipe);
        ran.status = WIFEXITED (status) ? WEXITSTATUS (status) : -1;
        file ("command.sh").deleteFile();
        return ran;
    }

    /** What a command is to write must not be there yet. */
    void makeWay (const std::string& line) const
    {
        std::istringstream stream (line);
        const std::vector<std::string> words (std::istream_iterator<std::string> (stream), {});
        const auto command = words.size() > 1 ? words[1] : std::string();

        for (std::size_t i = 2; i < words.size(); ++i)
            if ((words[i - 1] == "-o" && command != "set") || (command == "convert" && i == 3))
                if (file (words[i]).existsAsFile())
                    file (words[i]).deleteFile();
    }

    /** A check, a comparison or an import that finds something is no failure of the page. */
    static bool mayFind (const std::string& line)
    {
        return line.find ("overmarks check ") != std::string::npos
               || line.find ("overmarks import harbour-lights") != std::string::npos
               || line.find ("overmarks diff ") != std::string::npos;
    }

    std::string withoutPlace (std::string text) const
    {
        const auto place = folder.getFullPathName().toStdString();

        for (auto at = text.find (place); at != std::string::npos; at = text.find (place, at))
            text.replace (at, place.size(), "/films");

        return text;
    }

    void expectOutput (const Command& command, const Ran& ran) const
    {
        std::string expected;

        for (const auto& line : command.output)
            expected += line + "\n";

        EXPECT_EQ (withoutPlace (ran.output), expected) << command.line;
    }
};

TEST_P (DocumentedCommandsTest, runAndPrintWhatThePageShows)
{
    bool isFilled = false;

    for (const auto& command : GetParam().commands())
    {
        if (! std::exchange (isFilled, GetParam().isSession()))
            fill();
        if (! GetParam().isSession())
            makeWay (command.line);

        const auto ran = shell (command.line);
        EXPECT_TRUE (ran.status == 0 || (ran.status == 1 && mayFind (command.line)))
            << command.line << "\n"
            << ran.status << " " << ran.output;

        if (command.showsOutput)
            expectOutput (command, ran);
    }
}

INSTANTIATE_TEST_SUITE_P (Pages, DocumentedCommandsTest, testing::ValuesIn (pages()),
                          [] (const auto& page)
                          {
                              auto name = page.param.name;
                              std::replace_if (
                                  name.begin(), name.end(), [] (char c) { return ! std::isalnum (c); }, '_');
                              return name;
                          });

TEST (Documents, linksLeadSomewhere)
{
    auto all = pages();
    all.push_back ({ "CONTRIBUTING.md" });
    all.push_back ({ "CHANGELOG.md" });
    int links = 0;

    for (const auto& page : all)
    {
        const auto here = std::filesystem::path (OVERMARKS_SOURCES) / page.name;

        for (const auto& line : page.lines())
            for (auto at = line.find ("]("); at != std::string::npos; at = line.find ("](", at + 1))
            {
                const auto target = line.substr (at + 2, line.find (')', at) - at - 2);

                if (target.starts_with ("http"))
                    continue;

                ++links;
                EXPECT_TRUE (
                    std::filesystem::exists (here.parent_path() / target.substr (0, target.find ('#'))))
                    << page.name << ": " << target;
            }
    }

    EXPECT_GT (links, 20);
}

} // namespace
