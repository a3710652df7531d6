// SPDX-License-Identifier: GPL-3.0-only
//
// What a word processor makes of our documents. Each of its starts takes seconds, so there are few of these.
#include "ImportSupport.h"
#include "RunDocxHandler.h"

#include <gmock/gmock.h>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::HasSubstr;

/** Has the word processor convert documents of the folder. @returns its exit status */
int convert (const TemporaryFolder& folder, const std::string& format, const std::vector<std::string>& names)
{
    std::vector<std::string> words { "soffice",
                                     "--headless",
                                     "-env:UserInstallation=file://" + (folder.path / "office").string(),
                                     "--convert-to",
                                     format,
                                     "--outdir",
                                     (folder.path / "converted").string() };

    for (const auto& name : names)
        words.push_back ((folder.path / name).string());

    return runProgram (folder, words).status;
}

std::string numberOf (std::size_t cue) { return "R" + std::to_string (100 + cue) + "X"; }

/** Cues of all sizes, each with its number in text, notes and engineering notes. */
std::vector<JSON> numberedCues (std::size_t count)
{
    std::vector<JSON> cues;

    for (std::size_t i = 0; i < count; ++i)
    {
        auto cue = fullCueJSON();
        std::string text;

        for (std::size_t line = 0; line <= i % 9; ++line)
            text += "Line " + std::to_string (line) + " of " + numberOf (i) + "\n";

        cue["cueNumber"] = numberOf (i);
        cue["cueText"] = richJSON (text + "End");
        cue["cueEngNotes"] = richJSON ("Engineer " + numberOf (i));
        cues.push_back (cue);
    }

    return cues;
}

std::vector<std::string> pagesOf (const TemporaryFolder& folder, const std::string& name)
{
    const auto text =
        runProgram (folder, { "pdftotext", "-layout", (folder.path / "converted" / name).string(), "-" })
            .output;
    std::vector<std::string> pages;

    for (std::size_t start = 0; start < text.size();)
    {
        const auto end = std::min (text.find ('\f', start), text.size());
        pages.push_back (text.substr (start, end - start));
        start = end + 1;
    }

    return pages;
}

} // namespace

TEST (Office, aSavedAgainDocumentGivesTheSameCues)
{
    const TemporaryFolder folder;
    const std::string hebrew = "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d, \xd7\xa2\xd7\x95\xd7\x9c\xd7\x9d";
    const std::map<std::string, JSON> sheets {
        { "director.docx", sheetJSON ({ fullCueJSON(), cueJSON() }) },
        { "actor.docx", sheetJSON ({ fullCueJSON(),
                                     cueJSON ({ { "cueText", richJSON (hebrew) }, { "charName", hebrew } }) },
                                   "Actor Layout") },
        { "engineer.docx",
          sheetJSON ({ fullCueJSON(), cueJSON ({ { "cueText", richJSON (std::string (9000, 'x')) } }) },
                     "Engineer Layout") },
        { "combined.docx",
          combinedJSON ({ numberedCues (5),
                          { fullCueJSON(), cueJSON ({ { "cueTakes", takesJSON (31, 27, 3, 50, 2) } }) } }) }
    };
    std::vector<std::string> names;

    for (const auto& [name, json] : sheets)
    {
        folder.write (name, documentOf (json));
        names.push_back (name);
    }

    ASSERT_EQ (convert (folder, "docx", names), 0);

    for (const auto& name : names)
    {
        auto expected = cuesOfWordDocument (folder.bytes (name));
        auto cues = cuesOfWordDocument (folder.bytes ("converted/" + name));

        EXPECT_EQ (cues, expected) << name;
    }
}

TEST (Office, noBlockIsTornAndEveryPageHasItsFooter)
{
    constexpr std::size_t count = 60;
    const TemporaryFolder folder;
    folder.write ("many.docx", documentOf (sheetJSON (numberedCues (count))));
    folder.write ("combined.docx", documentOf (combinedJSON ({ numberedCues (3), { fullCueJSON() }, {} })));
    ASSERT_EQ (convert (folder, "pdf", { "many.docx", "combined.docx" }), 0);

    const auto pages = pagesOf (folder, "many.pdf");
    EXPECT_GT (pages.size(), 5U);

    for (std::size_t i = 0; i < pages.size(); ++i)
    {
        EXPECT_THAT (pages[i],
                     HasSubstr ("Page " + std::to_string (i + 1) + " of " + std::to_string (pages.size())));
        EXPECT_THAT (pages[i], HasSubstr ("Director Layout"));
        EXPECT_THAT (pages[i], HasSubstr ("Engineer R")); // no page without a cue
    }

    for (std::size_t i = 0; i < count; ++i)
    {
        const auto page =
            std::find_if (pages.begin(), pages.end(),
                          [i] (const std::string& text)
                          { return text.find ("Line 0 of " + numberOf (i)) != std::string::npos; });
        ASSERT_NE (page, pages.end()) << i;
        EXPECT_THAT (*page, HasSubstr ("Engineer " + numberOf (i)));
        EXPECT_THAT (*page, HasSubstr ("Line " + std::to_string (i % 9) + " of " + numberOf (i)));
    }

    EXPECT_EQ (pagesOf (folder, "combined.pdf").size(), 3U);
}

} // namespace DocxHandler::Testing
