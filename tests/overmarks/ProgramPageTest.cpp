// SPDX-License-Identifier: GPL-3.0-only
// The pages of check, diff and stats are sent to people. Whatever a list says stands in them as words: they have no element and no
// attribute that the page of a harmless list doesn't have, and the words are those of the list.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>
#include <pugixml.hpp>

#include <functional>
#include <random>
#include <set>

using testing::HasSubstr;
using testing::IsSubsetOf;
using testing::Not;

namespace
{

using nlohmann::ordered_json;
using Texts = std::vector<std::string>;

/** Pieces of which somebody would make a page do what it shouldn't. */
const Texts pieces { "<",
                     ">",
                     "\"",
                     "'",
                     "&",
                     "=",
                     "/",
                     "`",
                     ";",
                     "--",
                     "<!--",
                     "-->",
                     "]]>",
                     "<![CDATA[",
                     "<?",
                     "?>",
                     "&lt;",
                     "&#60;",
                     "&#x3c;",
                     "&amp;lt;",
                     "%3C",
                     "</td>",
                     "</tr>",
                     "</table>",
                     "</body>",
                     "</html>",
                     "</style>",
                     "</title>",
                     "</svg>",
                     "</text>",
                     "</figure>",
                     "<script>",
                     "</script>",
                     "<style>",
                     "<svg onload=x>",
                     "<img src=x onerror=y>",
                     "<iframe srcdoc='",
                     "<base href=//x>",
                     "<meta http-equiv=refresh content=0>",
                     "<form action=x>",
                     "<a href='javascript:x'>",
                     " onclick=\"",
                     "' onmouseover='",
                     "\" style=\"",
                     "url(http://x)",
                     "@import",
                     "<b",
                     "<plaintext>",
                     "<textarea>",
                     "<template>",
                     "<object data=x>",
                     "word",
                     " ",
                     "\n",
                     "\t",
                     "é",
                     "日本",
                     "🎬",
                     "\xe2\x80\xae",
                     "\xe2\x80\xa8",
                     "\xc2\xa0",
                     "\x1b[2J",
                     "\x01",
                     "\x7f",
                     "\xc2\x85",
                     "\xef\xbf\xbe" };

class Author final
{
public:
    Author (unsigned int seed, bool isHostile) : random (seed), hostile (isHostile) {}

    /** Never the same twice, and none without a letter. */
    std::string text()
    {
        const auto name = "w" + std::to_string (++number) + "w";

        if (! hostile)
            return texts.emplace_back (name);

        std::string made = name;

        for (int i = 0; i < 6; ++i)
            made += pieces[std::uniform_int_distribution<std::size_t> (0, pieces.size() - 1) (random)];

        return texts.emplace_back (made + "x");
    }

    Texts texts; ///< all that it has written

private:
    std::mt19937 random;
    bool hostile;
    int number = 0;
};

/** Words as a page shows them. */
std::string shown (const std::string& text)
{
    std::string result;

    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const auto byte = static_cast<unsigned char> (text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char> (text[i + 1]) : 0U;

        if (byte == 0xc2 && next >= 0x80 && next < 0xa0)
            ++i;
        else if (byte == '\n' || byte == '\t' || (byte >= 0x20 && byte != 0x7f))
            result += text[i];
    }

    return result;
}

/** A page, read as XML: whatever isn't closed or quoted is a failure. */
class Page final
{
public:
    explicit Page (std::string html)
    {
        // The only elements of the page that have no end.
        for (auto place = html.find ("<meta "); place < html.find ("<title>");
             place = html.find ("<meta ", place + 1))
            html.insert (html.find ('>', place), "/");

        const auto result = document.load_buffer (html.data(), html.size(),
                                                  pugi::parse_default | pugi::parse_ws_pcdata
                                                      | pugi::parse_comments | pugi::parse_pi);
        EXPECT_TRUE (result)
            << result.description() << " at "
            << html.substr (static_cast<std::size_t> (std::max<std::ptrdiff_t> (0, result.offset - 60)), 120);
        collect (document);
    }

    std::set<std::string> parts; ///< "td", "td dir"
    std::string words;           ///< of the whole page

private:
    void collect (pugi::xml_node node)
    {
        if (node.type() == pugi::node_element)
            parts.insert (node.name());
        else if (node.type() != pugi::node_pcdata && node.type() != pugi::node_document)
            parts.insert ("comment or order");

        for (const auto attribute : node.attributes())
            parts.insert (std::string (node.name()) + " " + attribute.name());

        words += node.type() == pugi::node_pcdata ? node.value() : "";

        for (const auto child : node.children())
            collect (child);
    }

    pugi::xml_document document;
};

class ProgramPageTest : public ProgramTest
{
protected:
    static constexpr int cues = 6;

    /** A list in which everything that can be a text is one of the author's, and each event has something to be found. */
    static ordered_json projectBy (Author& author)
    {
        auto characters = ordered_json::array();
        auto events = ordered_json::array();

        for (int i = 0; i < 3; ++i)
            characters.push_back ({ { "id", "c" + std::to_string (i) },
                                    { "name", author.text() },
                                    { "prefix", author.text() },
                                    { "actor", author.text() } });

        for (int i = 0; i < cues; ++i)
            events.push_back ({ { "type", 8 },
                                { "cueNumber", author.text() },
                                { "characterID", "c" + std::to_string (i % 3) },
                                { "startFrameIndex", 100 * i },
                                { "inPointFrameIndex", 100 * i + 10 },
                                { "endFrameIndex", 100 * i + 12 },
                                { "text", author.text() },
                                { "notes", author.text() },
                                { "engineeringNotes", author.text() } });

        return { { "overmarks", 1 },
                 { "name", author.text() },
                 { "userReasons", { author.text() } },
                 { "characters", characters },
                 { "events", events },
                 { "documents", { { "title", author.text() } } } };
    }

    /** Writes the list and has the program make a page. */
    Page pageBy (Author& author, const std::string& listName, std::vector<std::string> command) const
    {
        write (listName, projectBy (author).dump());
        command.insert (command.end(), { "--html", "page.html", "--force" });
        const auto result = run (command);
        EXPECT_LT (result.status, 2) << result.errors;
        return Page (read ("page.html"));
    }

    /** Compares pages of hostile lists with that of a harmless one of the same shape.
        @param appears  whether a text of this number, counted from 0, is on the page */
    void expectWordsAlone (const std::string& listName, const std::vector<std::string>& command,
                           const std::function<bool (const Author&, std::size_t)>& appears) const
    {
        Author plain (0, false);
        const auto usual = pageBy (plain, listName, command);
        EXPECT_GT (usual.parts.size(), 10u);

        for (unsigned int seed = 1; seed <= 25; ++seed)
        {
            Author author (seed, true);
            const auto page = pageBy (author, listName, command);
            EXPECT_THAT (page.parts, IsSubsetOf (usual.parts)) << "seed " << seed;
            int found = 0;

            for (std::size_t i = 0; i < author.texts.size(); ++i)
                if (appears (author, i))
                {
                    ++found;
                    EXPECT_THAT (page.words, HasSubstr (shown (author.texts[i]))) << "seed " << seed;
                }

            EXPECT_GT (found, 2);
        }
    }

    /** The three texts of each character come first. */
    static constexpr std::size_t firstOfCue = 9, textsOfCue = 4,
                                 firstBehindCues = firstOfCue + cues * textsOfCue;

    static bool isInACue (std::size_t i) { return i >= firstOfCue && i < firstBehindCues; }
};

TEST_F (ProgramPageTest, theReportOfACheckHoldsWordsAlone)
{
    expectWordsAlone ("x.json", { "check", "x.json" },
                      [] (const Author&, std::size_t i)
                      {
                          const bool isNameOfCharacter = i < firstOfCue && i % 3 == 0;
                          const bool isNumberOrText = isInACue (i) && (i - firstOfCue) % textsOfCue < 2;
                          return isNameOfCharacter || isNumberOrText;
                      });
}

TEST_F (ProgramPageTest, theReportOfADifferenceHoldsWordsAlone)
{
    write ("old.json", R"({"overmarks": 1})");
    expectWordsAlone ("x.json", { "diff", "old.json", "x.json" },
                      [] (const Author&, std::size_t i)
                      { return isInACue (i) && (i - firstOfCue) % textsOfCue < 2; });
}

TEST_F (ProgramPageTest, whatHasChangedInItHoldsWordsAlone)
{
    // Each text against another one, so that words are marked as gone and as new.
    Author first (77, true);
    write ("old.json", projectBy (first).dump());
    expectWordsAlone ("x.json", { "diff", "old.json", "x.json" },
                      [] (const Author&, std::size_t i)
                      { return isInACue (i) && (i - firstOfCue) % textsOfCue == 0; });
}

TEST_F (ProgramPageTest, thePageOfTheNumbersHoldsWordsAlone)
{
    expectWordsAlone ("x.json", { "stats", "x.json" },
                      [] (const Author&, std::size_t i) { return i < firstOfCue && i % 3 != 1; });
}

TEST_F (ProgramPageTest, theNameOfTheFileIsWords)
{
    for (const auto& name : { "<script>x", "a&lt;b", "\"'>x", "</title>x", "x\x1b[2J" })
    {
        const auto listName = std::string (name) + ".json";
        const auto path = juce::String::fromUTF8 (listName.c_str());

        if (listName.find ('/') == std::string::npos)
            for (const std::string command : { "check", "stats" })
            {
                Author author (1, false);
                const auto page = pageBy (author, path.toStdString(), { command, listName });
                EXPECT_THAT (page.words, HasSubstr (shown (name)));
                EXPECT_THAT (page.parts, Not (testing::Contains ("script")));
            }
    }
}

TEST_F (ProgramPageTest, whatIsSetOnTheCommandLineIsWordsToo)
{
    Author author (1, false);
    const auto page = pageBy (author, "x.json", { "check", "x.json", "--text", "w<script>&\"'" });
    EXPECT_THAT (page.words, HasSubstr ("w<script>&\"'"));
    EXPECT_THAT (page.parts, Not (testing::Contains ("script")));
}

} // namespace
