// SPDX-License-Identifier: GPL-3.0-only
// The page and the spreadsheet that stats writes.
#include "overmarks/StatsFixture.h"

#include <gmock/gmock.h>
#include <pugixml.hpp>

#include <set>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

using Names = std::vector<std::string>;

class ProgramStatsPageTest : public StatsTest
{
protected:
    /** The page of x.json. */
    std::string page (std::vector<std::string> options = {}) const
    {
        options.insert (options.begin(), { "stats", "x.json", "--html", "x.html", "--force" });
        const auto result = run (options);
        EXPECT_EQ (result.status, 0) << result.errors;
        return read ("x.html");
    }

    static int count (const std::string& text, const std::string& part)
    {
        int number = 0;

        for (auto place = text.find (part); place != std::string::npos; place = text.find (part, place + 1))
            ++number;

        return number;
    }

    /** The picture's panels; each has to be XML in itself. */
    static std::vector<pugi::xml_document> panelsOf (const std::string& html)
    {
        std::vector<pugi::xml_document> panels;
        const std::string start = "<figure class=\"panel\">", end = "</figure>";

        for (auto place = html.find (start); place != std::string::npos; place = html.find (start, place + 1))
        {
            const auto text = html.substr (place, html.find (end, place) + end.size() - place);
            const auto result = panels.emplace_back().load_buffer (text.data(), text.size());
            EXPECT_TRUE (result) << result.description() << "\n" << text;
        }

        return panels;
    }

    static pugi::xml_node svgOf (const pugi::xml_document& panel)
    {
        return panel.child ("figure").child ("svg");
    }

    /** The path of a row's marks. */
    static std::string marks (pugi::xml_node row, const char* look)
    {
        return row.find_child_by_attribute ("path", "class", look).attribute ("d").value();
    }

    /** The names that stand before the rows. */
    static Names rowsOf (const pugi::xml_document& panel)
    {
        Names names;

        for (const auto row : svgOf (panel).children ("g"))
            names.emplace_back (row.child ("text").child_value());

        return names;
    }

    std::vector<Role> castOf (int number) const
    {
        std::vector<Role> cast;

        for (int i = 0; i < number; ++i)
            cast.push_back ({ "c" + std::to_string (i), "CHARACTER " + std::to_string (i) });

        return cast;
    }
};

TEST_F (ProgramStatsPageTest, thePageNeedsNothingElse)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1" } });
    const auto html = page();
    EXPECT_THAT (html, StartsWith ("<!DOCTYPE html>"));
    EXPECT_THAT (html, EndsWith ("</html>\n"));

    for (const auto* part : { "<script", "http:", "https:", "src=", "url(", "<link", "<iframe", "@import" })
        EXPECT_THAT (html, Not (HasSubstr (part)));
}

TEST_F (ProgramStatsPageTest, thePageTellsTheNumbers)
{
    writeList ({ { "c1", "ANNA", "B. Miller", "A" }, { "c2", "TOM" } },
               { { "c1", "1", hour, hour + 50, "a b", true },
                 { "c1", "2", hour + 60, hour + 85 },
                 { "c2", "3", 2 * hour, 2 * hour + 25, {}, true } });
    const auto html = page();
    EXPECT_THAT (html, HasSubstr ("<title>x</title>"));
    EXPECT_THAT (html, HasSubstr ("3 lines, 3 cues, 2 words, 0:00:04 of dialogue"));
    EXPECT_THAT (html, HasSubstr ("2 done (67 %)"));
    EXPECT_THAT (html, HasSubstr ("1 open (33 %)"));

    for (const auto* heading :
         { "Characters against time", "Characters", "Actors", "Reels", "Lines in each reel" })
        EXPECT_THAT (html, HasSubstr (std::string (">") + heading + "</h2>"));

    for (const auto* cell :
         { "B. Miller", "1 (50 %)", "66.7 %", "&lt;no actor&gt;", "01:00:00:00", "02:00:01:00" })
        EXPECT_THAT (html, HasSubstr (std::string (">") + cell + "</td>"));

    EXPECT_THAT (html, HasSubstr ("<strong>Total</strong>"));
}

TEST_F (ProgramStatsPageTest, notesStandOnThePage)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", -1, -1 }, { "c1", "2", 0, 25, {}, false, false } });
    EXPECT_THAT (page(), AllOf (HasSubstr (">1 line is disabled; it is counted</p>"),
                                HasSubstr (">1 line has no time</p>")));
}

TEST_F (ProgramStatsPageTest, namesAreTextAndNothingElse)
{
    const std::string hostile = "<script>alert(1)</script>\"'&<!--]]>\x01\x1b[31m\n</svg></figure>";
    writeList ({ { "c1", hostile, "<img src=x onerror=y>", "</td>" } },
               { { "c1", "</table>-1", 0, 25, "<b>" } });
    const auto html = page ({ "--reels", "cue" });

    for (const auto* part : { "<script", "<img", "<!--", "<b>", "onerror=y>", "\x1b", "\x01" })
        EXPECT_THAT (html, Not (HasSubstr (part)));

    EXPECT_EQ (count (html, "</figure>"), 1);
    EXPECT_EQ (count (html, "</table>"), count (html, "<table>"));
    EXPECT_THAT (html, HasSubstr ("&lt;img src=x onerror=y&gt;"));
    const auto panels = panelsOf (html);
    ASSERT_EQ (panels.size(), 1u);
    EXPECT_THAT (svgOf (panels[0]).child ("g").child ("title").child_value(),
                 StartsWith ("<script>alert(1)</script>\"'&<!--]]>"));
}

TEST_F (ProgramStatsPageTest, theTitleIsTextToo)
{
    write ("<i>.csv", threeCues);
    ASSERT_EQ (run ({ "stats", "<i>.csv", "--html", "x.html" }).status, 0);
    EXPECT_THAT (read ("x.html"), AllOf (HasSubstr ("<title>&lt;i&gt;</title>"), Not (HasSubstr ("<i>"))));
}

// ---- the picture ---------------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsPageTest, openLinesStandAboveAndDoneOnesBelow)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 0, 50, {}, true }, { "c1", "2", 50, 100 } });
    const auto panels = panelsOf (page());
    ASSERT_EQ (panels.size(), 1u);
    const auto row = svgOf (panels[0]).child ("g");
    // The picture of time reaches from column 380 to 1840, the first row from 48 to 88.
    EXPECT_EQ (marks (row, "done"), "M380 75h729");
    EXPECT_EQ (marks (row, "open"), "M1110 61h729");
    EXPECT_STREQ (row.child ("title").child_value(), "ANNA: 1/2 done");
}

TEST_F (ProgramStatsPageTest, aRowOfOneKindHasOnlyThat)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 0, 50 } });
    const auto panels = panelsOf (page());
    const auto row = svgOf (panels.at (0)).child ("g");
    EXPECT_EQ (marks (row, "open"), "M380 61h1459");
    EXPECT_EQ (marks (row, "done"), "");
}

TEST_F (ProgramStatsPageTest, aShortLineIsSeen)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 0, 1 }, { "c1", "2", 500 * 25, 500 * 25 + 1 } });
    const auto panels = panelsOf (page());
    EXPECT_THAT (marks (svgOf (panels.at (0)).child ("g"), "open"), StartsWith ("M380 61h3M"));
}

TEST_F (ProgramStatsPageTest, onlyCharactersWithATimedLineHaveARow)
{
    writeList ({ { "c1", "IDLE" }, { "c2", "TIMELESS" }, { "c3", "ANNA" } },
               { { "c2", "1", -1, -1 }, { "c3", "2" }, { "", "3", 30, 50 } });
    const auto panels = panelsOf (page());
    ASSERT_EQ (panels.size(), 1u);
    EXPECT_EQ (rowsOf (panels[0]), (Names { "ANNA", "<no char>" }));
}

TEST_F (ProgramStatsPageTest, withoutTimesThereIsNoPicture)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", -1, -1 } });
    const auto html = page();
    EXPECT_TRUE (panelsOf (html).empty());
    EXPECT_THAT (html, AllOf (Not (HasSubstr ("against time")), HasSubstr (">ANNA</td>")));
}

TEST_F (ProgramStatsPageTest, anEmptyListHasAPage)
{
    writeList ({}, {});
    EXPECT_THAT (page(),
                 AllOf (HasSubstr ("0 lines, 0 cues"), HasSubstr ("0 done (0 %)"), Not (HasSubstr ("nan"))));
}

TEST_F (ProgramStatsPageTest, manyLinesAreDrawnWhereTheyFall)
{
    std::vector<Line> lines;

    for (int i = 0; i < 20000; ++i)
        lines.push_back ({ "c1", std::to_string (i), i * 9, i * 9 + 5, {}, i % 2 == 0 });

    writeList (castOf (2), lines);
    const auto html = page();
    EXPECT_LT (html.size(), 30000u);
    const auto panels = panelsOf (html);
    EXPECT_LT (count (marks (svgOf (panels.at (0)).child ("g"), "open"), "M"), 500);
}

TEST_F (ProgramStatsPageTest, manyCharactersAreSeveralPanels)
{
    std::vector<Line> lines;

    for (int i = 0; i < 120; ++i)
        lines.push_back ({ "c" + std::to_string (i), "1", i * 30, i * 30 + 25 });

    writeList (castOf (120), lines);
    const auto panels = panelsOf (page());
    ASSERT_EQ (panels.size(), 9u);

    for (const auto& panel : panels)
    {
        const auto rows = static_cast<int> (rowsOf (panel).size());
        EXPECT_TRUE (rows == 13 || rows == 14) << rows;
        EXPECT_EQ (svgOf (panel).attribute ("viewBox").value(),
                   "0 0 2000 " + std::to_string (48 + 40 * rows));
    }

    EXPECT_EQ (rowsOf (panels[8]).back(), "CHARACTER 119");
}

TEST_F (ProgramStatsPageTest, ofTooManyCharactersThoseWithTheMostLinesAreDrawn)
{
    std::vector<Line> lines { { "c0", "x" } };

    for (int i = 0; i < 302; ++i)
        for (int j = 0; j < (i == 5 || i == 300 ? 1 : 2); ++j)
            lines.push_back ({ "c" + std::to_string (i), "1", i * 30, i * 30 + 25 });

    writeList (castOf (302), lines);
    const auto html = page();
    EXPECT_THAT (html, HasSubstr ("2 characters with fewer lines found no room here; the table has all."));
    std::set<std::string> drawn;

    for (const auto& panel : panelsOf (html))
        for (const auto& name : rowsOf (panel))
            drawn.insert (name);

    EXPECT_EQ (drawn.size(), 300u);
    EXPECT_EQ (drawn.count ("CHARACTER 5") + drawn.count ("CHARACTER 300"), 0u);
    EXPECT_THAT (html, HasSubstr (">CHARACTER 300</td>"));
}

TEST_F (ProgramStatsPageTest, longSilencesAreLeftOut)
{
    const auto segments = [this] (int second)
    {
        writeList ({ { "c1", "ANNA" } },
                   { { "c1", "1", hour, hour + 25 }, { "c1", "2", second, second + 25 } });
        const auto panels = panelsOf (page());
        int number = 0;

        for (const auto rect : svgOf (panels.at (0)).children ("rect"))
            number += std::string (rect.attribute ("class").value()) == "time" ? 1 : 0;

        return number;
    };
    EXPECT_EQ (segments (hour + 25 + 600 * 25), 1) << "ten minutes";
    EXPECT_EQ (segments (hour + 25 + 600 * 25 + 1), 2);
    EXPECT_EQ (segments (2 * hour), 2);
}

TEST_F (ProgramStatsPageTest, scatteredLinesLeaveNoPictureOfGaps)
{
    std::vector<Line> lines;

    for (int i = 0; i < 60; ++i)
        lines.push_back ({ "c0", "1", i * hour / 3, i * hour / 3 + 25 });

    writeList (castOf (1), lines);
    const auto panels = panelsOf (page());
    int number = 0;

    for (const auto rect : svgOf (panels.at (0)).children ("rect"))
    {
        ++number;
        EXPECT_LE (rect.attribute ("x").as_int() + rect.attribute ("width").as_int(), 1840);
    }

    EXPECT_LE (number, 9);
}

TEST_F (ProgramStatsPageTest, timecodesStandAboveThePicture)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", hour, hour + 25 },
                                       { "c1", "2", hour + 60 * 25, hour + 61 * 25 },
                                       { "c1", "3", 3 * hour + 50, 3 * hour + 75 } });
    const auto panels = panelsOf (page());
    Names labels;

    for (const auto text : svgOf (panels.at (0)).children ("text"))
        labels.emplace_back (text.child_value());

    EXPECT_EQ (labels, (Names { "01:00:00", "01:00:10", "01:00:20", "01:00:30", "01:00:40", "01:00:50",
                                "03:00:02" }));
}

TEST_F (ProgramStatsPageTest, aLongNameIsCutAndToldWhole)
{
    const std::string name = "THE WOMAN WHO WAITS AT THE BAR FOR A LONG TIME";
    writeList ({ { "c1", name } }, { { "c1", "1" } });
    const auto panels = panelsOf (page());
    EXPECT_EQ (rowsOf (panels.at (0)), Names { "THE WOMAN WHO W\u2026ONG TIME" });
    EXPECT_THAT (svgOf (panels.at (0)).child ("g").child ("title").child_value(), StartsWith (name));
}

TEST_F (ProgramStatsPageTest, manyReelsHaveNoTableAcross)
{
    std::vector<Line> lines;

    for (int i = 0; i < 13; ++i)
        lines.push_back ({ "c0", "R" + std::to_string (i) + "-1", i * 30, i * 30 + 25 });

    writeList (castOf (1), lines);
    EXPECT_THAT (page ({ "--reels", "cue" }),
                 AllOf (HasSubstr (">R12</td>"), Not (HasSubstr ("Lines in each reel"))));
}

// ---- the spreadsheet -----------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsPageTest, theSpreadsheetHasARowForEach)
{
    writeList ({ { "c1", "A \"B\", C", "B. Miller", "A" }, { "c2", "TOM" } },
               { { "c1", "1", hour, hour + 50, "a b", true },
                 { "c2", "2", 2 * hour, 2 * hour + 1, {}, false, false } });
    const auto result = run ({ "stats", "x.json", "--csv", "y.csv", "--quiet" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (
        read ("y.csv"),
        "\xef\xbb\xbf"
        R"("Kind","Character","Actor","Prefix","Reel","Lines","Cues","Done","Words","Seconds","Share of lines","Disabled")"
        "\r\n"
        R"("character","A ""B"", C","B. Miller","A","","1","1","1","2","2.000","0.500","0")"
        "\r\n"
        R"("character","TOM","","","","1","1","0","0","0.040","0.500","1")"
        "\r\n"
        R"("actor","A ""B"", C","B. Miller","","","1","1","1","2","2.000","0.500","0")"
        "\r\n"
        R"("actor","TOM","<no actor>","","","1","1","0","0","0.040","0.500","1")"
        "\r\n"
        R"("reel","","","","01","1","1","1","2","2.000","0.500","0")"
        "\r\n"
        R"("reel","","","","02","1","1","0","0","0.040","0.500","1")"
        "\r\n"
        R"("character in reel","A ""B"", C","B. Miller","A","01","1","1","1","2","2.000","0.500","0")"
        "\r\n"
        R"("character in reel","TOM","","","02","1","1","0","0","0.040","0.500","1")"
        "\r\n"
        R"("total","","","","","2","2","1","2","2.040","1.000","1")"
        "\r\n");
}

// ---- files ---------------------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsPageTest, writtenFilesAreTold)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1" } });
    EXPECT_EQ (stats ({ "--html", "x.html", "--csv", "x.csv" })["files"],
               (Names { path ("x.html"), path ("x.csv") }));
    const auto result = run ({ "stats", "x.json", "--html", "y.html" });
    EXPECT_EQ (result.errors, "Wrote " + path ("y.html") + "\n");
    EXPECT_THAT (result.output, StartsWith ("Character"));
    EXPECT_EQ (filesInFolder(), (Names { "x.csv", "x.html", "x.json", "y.html" }));
}

TEST_F (ProgramStatsPageTest, nothingIsReplacedUnasked)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1" } });
    write ("x.html", "precious");
    EXPECT_THAT (errorOf ({ "stats", "x.json", "--csv", "x.csv", "--html", "x.html" }, 1),
                 HasSubstr ("--force"));
    EXPECT_EQ (read ("x.html"), "precious");
    EXPECT_EQ (filesInFolder(), (Names { "x.html", "x.json" })) << "no table either";
    EXPECT_EQ (run ({ "stats", "x.json", "--html", "x.html", "--force" }).status, 0);
    EXPECT_THAT (read ("x.html"), StartsWith ("<!DOCTYPE html>"));
}

TEST_F (ProgramStatsPageTest, aDryRunWritesNothing)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1" } });
    EXPECT_EQ (stats ({ "--html", "x.html", "--dry-run" })["dryRun"], true);
    EXPECT_EQ (run ({ "stats", "x.json", "--csv", "x.csv", "--dry-run" }).errors,
               "Would write " + path ("x.csv") + "\n");
    EXPECT_EQ (filesInFolder(), Names { "x.json" });
}

TEST_F (ProgramStatsPageTest, placesWhereNoFileCanBeAreRefused)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1" } });
    EXPECT_EQ (errorOf ({ "stats", "x.json", "--html", "-" }, 2),
               "--html names a file; standard output is for the table and for --json");
    EXPECT_EQ (errorOf ({ "stats", "x.json", "--csv", "-" }, 2),
               "--csv names a file; standard output is for the table and for --json");
    EXPECT_EQ (errorOf ({ "stats", "x.json", "--csv", "x.json", "--force" }, 1), "x.json is the list itself");
    EXPECT_EQ (errorOf ({ "stats", "x.json", "--csv", "y", "--html", "./y" }, 2),
               "--html and --csv name the same file");
    EXPECT_THAT (errorOf ({ "stats", "x.json", "--html", "nowhere/y.html" }, 1), HasSubstr ("nowhere"));
    EXPECT_EQ (filesInFolder(), Names { "x.json" });
}

TEST_F (ProgramStatsPageTest, aFullDiskLeavesTheOldPage)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1" } });
    write ("x.html", "precious");
    ProgramSurroundings full;
    full.largestFile = 1024;
    const auto result = run ({ "stats", "x.json", "--html", "x.html", "--force", "--json" }, {}, full);
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.json()["error"].get<std::string>(), StartsWith ("Can't write " + path ("x.html")));
    EXPECT_EQ (read ("x.html"), "precious");
    EXPECT_EQ (filesInFolder(), (Names { "x.html", "x.json" }));
}

} // namespace
