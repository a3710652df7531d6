// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace DocxHandler
{

/** How a stretch of text looks. */
struct Look
{
    static constexpr double usualHeight = 14.0; ///< of text that nobody has formatted

    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckThrough = false;
    double height = usualHeight;
    std::uint32_t colour = 0xff000000; ///< alpha first

    bool operator== (const Look&) const = default;
};

/** A stretch of characters that look alike. Positions count characters, not bytes; `end` is exclusive. */
struct Run
{
    std::size_t start = 0;
    std::size_t end = 0;
    Look look;

    bool operator== (const Run&) const = default;
};

/** Text in UTF-8 with the runs that look other than plain text, from left to right, none overlapping. */
struct RichText
{
    std::string text;
    std::vector<Run> runs;

    bool operator== (const RichText&) const = default;
};

/** The takes of a cue and the boxes that are printed for them. Takes are counted from 0, -1 is none. */
struct Takes
{
    int recorded = 0;
    int selected = -1;
    int alternative = -1;
    int boxes = 0;
    int rows = 0;
};

/** A text of one look and the size it is printed in, in points. */
struct SizedText
{
    int size = 0;
    std::string text;
};

struct SizedRichText
{
    int size = 0;
    RichText text;
};

/** One cue as the sheet shows it. The sheet is given all of it in every layout. */
struct SheetCue
{
    std::string characterIcon;
    std::string inPointIcon;
    std::string outPointIcon;
    SizedText character;
    SizedRichText text;
    SizedRichText notes;
    SizedRichText engineeringNotes;
    SizedText reason;
    SizedText number;
    SizedText region;
    SizedText inPoint;
    SizedText outPoint;
    std::optional<Takes> takes;
};

struct SheetFooter
{
    int size = 0;
    std::string icon;
    std::string date;
    std::string version;
    std::string layout;
};

struct SheetFrontMatter
{
    int size = 0;
    std::string projectName;
    std::string projectFile;
    std::string soundSupervisor;
    std::string productionCompany;
    std::string studio;
    std::string timeline;
    std::string episodeReel;
    std::string pictureVersion;
    std::string charactersAndActors;
};

/** What one document is to show. The cues of each block begin on a page of their own. */
struct Sheet
{
    std::optional<SheetFooter> footer;
    std::optional<SheetFrontMatter> frontMatter;
    std::vector<std::vector<SheetCue>> blocks;

    /** Whether the blocks are those of a combined document, one for each character. */
    bool combined = false;
};

} // namespace DocxHandler
