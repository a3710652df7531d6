// SPDX-License-Identifier: GPL-3.0-only
// Where everything of a drawn sheet's heading stands. What is told there: DrawnCueSheetTest.cpp.
#include "export/print/DrawnSheetHeading.h"

#include "export/print/DrawnCueSupport.h"

using namespace ExportSupport;

namespace
{

/** A heading on an A4 page: its top left corner is at (30, 812), and it is 535 wide. */
class DrawnSheetHeadingTest : public ExportTest
{
protected:
    DrawnSheetHeadingTest()
    {
        settings->projectSettings = { "/films/harbour.overmarks", "Harbour", "Studio7", "Doe", "Lighthouse" };
        settings->timelineSettings = { "Timeline4", "Reel3", "v12", {}, {} };
    }

    PDFPage drawn (const juce::String& characters = "ANNA")
    {
        document =
            std::make_shared<PDFDocument> (folder.file ("sheet.pdf").getFullPathName(), PaperSize::a4());
        const DrawnSheetHeading heading (*document, *settings, characters, w);
        height = heading.height();
        heading.draw (x, y);
        document->saveToPath();
        return ReadPDF (folder.file ("sheet.pdf")).page();
    }

    float heightOf (const std::string& words, PDFDocument::FontType font, float size, float width) const
    {
        float measured = 0;
        document->setFont (font, size);
        document->layoutTextForWidth (text (words), width, measured);
        return measured;
    }

    float lineHeight() const { return heightOf ("x", regular, 9.5f, 0); }

    /** How many of the lines "1", "2", ... of a text are shown. */
    static int linesShown (const PDFPage& page)
    {
        int lines = 0;

        while (page.count (std::to_string (lines + 1)) > 0
               || page.count (std::to_string (lines + 1) + "…") > 0)
            ++lines;

        return lines;
    }

    static juce::String numberedLines()
    {
        juce::StringArray lines;

        for (int i = 1; i <= 30; ++i)
            lines.add (juce::String (i));

        return lines.joinIntoString ("\n");
    }

    static constexpr float x = 30, y = 812, w = 535, label = 107, column = 269.5f;
    std::shared_ptr<PDFDocument> document;
    float height = 0; ///< of the heading that was drawn
};

/** From the top, and those of a row from the left. */
std::vector<PDFPage::Box> fieldsOf (const PDFPage& page)
{
    auto fields = page.fills;
    std::sort (fields.begin(), fields.end(),
               [] (const auto& a, const auto& b)
               { return std::abs (a.y - b.y) > 1 ? a.y > b.y : a.x < b.x; });
    return fields;
}

TEST_F (DrawnSheetHeadingTest, theTitleStandsLargeAndBoldInTheUpperLeftCorner)
{
    const auto title = drawn().word ("Harbour");
    document->setFont (bold, 22);
    EXPECT_NEAR (title.x, x, 0.5);
    EXPECT_NEAR (title.top, y, 0.5);
    EXPECT_NEAR (title.top - title.bottom, heightOf ("Harbour", bold, 22, 0), 0.5);
    EXPECT_NEAR (title.right - title.x, document->widthOfLine ("Harbour"), 0.5);
}

TEST_F (DrawnSheetHeadingTest, fieldsAreAsBlueAsThoseOfTheCuesAndStandFourPointsApart)
{
    const auto fields = fieldsOf (drawn());
    ASSERT_EQ (fields.size(), 8u) << "file, four that are known, reel and version, cast";
    const auto high = lineHeight() + 10;
    auto top = y - heightOf ("Harbour", bold, 22, 0) - 12;
    const std::size_t rowOfField[] = { 0, 1, 1, 2, 2, 3, 3, 4 };

    for (std::size_t i = 0; i < fields.size(); ++i)
    {
        EXPECT_EQ (fields[i].colour, fieldBlue) << i;
        EXPECT_NEAR (fields[i].h, high, 0.1) << i;
        EXPECT_NEAR (fields[i].y + fields[i].h, top - static_cast<float> (rowOfField[i]) * (high + 4), 0.1)
            << i;
    }
}

TEST_F (DrawnSheetHeadingTest, fieldsEndAtTheRightMarginAndTwoOfARowAreAsWideAsEachOther)
{
    const auto fields = fieldsOf (drawn());
    ASSERT_EQ (fields.size(), 8u);

    for (const std::size_t i : { 0u, 7u })
    {
        EXPECT_NEAR (fields[i].x, x + label, 0.1) << i;
        EXPECT_NEAR (fields[i].w, w - label, 0.1) << i;
    }

    for (const std::size_t i : { 1u, 3u, 5u })
    {
        EXPECT_NEAR (fields[i].x, x + label, 0.1) << i;
        EXPECT_NEAR (fields[i].w, (w - 4) / 2 - label, 0.1) << i;
        EXPECT_NEAR (fields[i + 1].x, x + column + label, 0.1) << i;
        EXPECT_NEAR (fields[i + 1].x + fields[i + 1].w, x + w, 0.1) << i;
    }
}

TEST_F (DrawnSheetHeadingTest, eachFieldHasItsLabelBesideItAndItsTextFivePointsWithin)
{
    const auto page = drawn();
    const auto fields = fieldsOf (page);
    ASSERT_EQ (fields.size(), 8u);
    const std::pair<const char*, const char*> words[] = { { "Project", "/films/harbour.overmarks" },
                                                          { "Sound", "Doe" },
                                                          { "Produced", "Lighthouse" },
                                                          { "Sound", "Studio7" },
                                                          { "Timeline", "Timeline4" },
                                                          { "Episode/Reel", "Reel3" },
                                                          { "Picture", "v12" },
                                                          { "Characters", "ANNA" } };

    for (std::size_t i = 0; i < fields.size(); ++i)
    {
        const auto beside = page.word (words[i].first, i == 3 ? 1 : 0);
        const auto within = page.word (words[i].second);
        EXPECT_NEAR (beside.x, fields[i].x - label, 0.5) << i;
        EXPECT_NEAR (within.x, fields[i].x + 5, 0.5) << i;
        EXPECT_NEAR (within.top, fields[i].y + fields[i].h - 5, 0.5) << i;
        EXPECT_NEAR (within.top - within.bottom, lineHeight(), 0.5) << i;
        EXPECT_NEAR (beside.top, within.top, 0.5) << i;
        EXPECT_LE (beside.right, fields[i].x) << i;
    }
}

TEST_F (DrawnSheetHeadingTest, labelsAreBoldAndAllLettersBlack)
{
    const auto page = drawn();
    document->setFont (bold, 9.5f);
    const auto wanted = document->widthOfLine ("Episode/Reel");
    document->setFont (regular, 9.5f);
    ASSERT_GT (wanted, document->widthOfLine ("Episode/Reel") + 1);
    EXPECT_NEAR (page.word ("Episode/Reel").right - page.word ("Episode/Reel").x, wanted, 0.3);
    EXPECT_NEAR (page.word ("Timeline4").right - page.word ("Timeline4").x,
                 document->widthOfLine ("Timeline4"), 0.3);

    for (const auto& colour : page.textColours)
        EXPECT_EQ (colour, black);
}

TEST_F (DrawnSheetHeadingTest, theFirstCueStandsEighteenPointsBelowTheSpaceOfTheLastField)
{
    const auto last = fieldsOf (drawn()).back();
    EXPECT_NEAR (y - height, last.y - 4 - 18, 0.1);
}

TEST_F (DrawnSheetHeadingTest, withoutATitleTheTableBeginsAtTheTop)
{
    settings->projectSettings.projectName = {};
    const auto page = drawn();
    const auto fields = fieldsOf (page);
    ASSERT_EQ (fields.size(), 8u);
    EXPECT_NEAR (fields.front().y + fields.front().h, y, 0.1);
    EXPECT_NEAR (y - height, fields.back().y - 4 - 18, 0.1);
}

TEST_F (DrawnSheetHeadingTest, ofThreeThatAreKnownTheThirdHasARowOfItsOwn)
{
    settings->timelineSettings.timelineName = {};
    const auto fields = fieldsOf (drawn());
    ASSERT_EQ (fields.size(), 7u);
    EXPECT_NEAR (fields[1].y, fields[2].y, 0.1);
    EXPECT_LT (fields[3].y, fields[2].y - 10);
    EXPECT_NEAR (fields[3].w, (w - 4) / 2 - label, 0.1) << "as wide as those above it";
    EXPECT_LT (fields[4].y, fields[3].y - 10);
    EXPECT_NEAR (fields[4].y, fields[5].y, 0.1);
}

TEST_F (DrawnSheetHeadingTest, aRowIsAsHighAsTheHigherOfItsTwoFields)
{
    for (auto* longer :
         { &settings->timelineSettings.episodeReel, &settings->timelineSettings.pictureVersion })
    {
        const auto kept = std::exchange (*longer, "one\ntwo");
        const auto fields = fieldsOf (drawn());
        ASSERT_EQ (fields.size(), 8u);
        EXPECT_NEAR (fields[5].h, 2 * lineHeight() + 10, 0.1);
        EXPECT_NEAR (fields[6].h, 2 * lineHeight() + 10, 0.1);
        EXPECT_NEAR (fields[7].y + fields[7].h, fields[5].y - 4, 0.1);
        *longer = kept;
    }
}

TEST_F (DrawnSheetHeadingTest, anEmptyFieldIsAsHighAsOneOfALine)
{
    settings->timelineSettings = {};
    const auto fields = fieldsOf (drawn ({}));

    for (const auto& field : fields)
        EXPECT_NEAR (field.h, lineHeight() + 10, 0.1);
}

TEST_F (DrawnSheetHeadingTest, textsEndWithinTheirFields)
{
    const auto line = juce::String::repeatedString ("l", 3000);
    settings->projectSettings.projectFilePath = line;
    settings->projectSettings.soundSupervisor = line;
    settings->timelineSettings.pictureVersion = line;
    const auto page = drawn();
    const auto fields = fieldsOf (page);
    ASSERT_EQ (fields.size(), 8u);
    int found = 0;

    for (const std::size_t i : { 0u, 1u, 6u })
    {
        float right = 0;

        for (const auto& word : page.words)
            if (word.text.starts_with ("lll") && word.top < fields[i].y + fields[i].h
                && word.bottom > fields[i].y && word.x > fields[i].x && word.x < fields[i].x + 10)
            {
                right = std::max (right, word.right);
                ++found;
            }

        EXPECT_LE (right, fields[i].x + fields[i].w - 5 + 0.1f) << i;
        EXPECT_GT (right, fields[i].x + fields[i].w - 5 - 3) << i << ": and use the width";
    }

    EXPECT_GT (found, 3);
}

TEST_F (DrawnSheetHeadingTest, aTitleHasTwoLinesAtMostAndUsesTheWidth)
{
    settings->projectSettings.projectName = numberedLines();
    auto page = drawn();
    settings->projectSettings.projectName = juce::String::repeatedString ("l", 3000);
    EXPECT_EQ (page.count ("1"), 1);
    EXPECT_EQ (page.count ("2…"), 1);
    page = drawn();
    int lines = 0;

    for (const auto& word : page.words)
        if (word.text.starts_with ("lll"))
        {
            ++lines;
            EXPECT_LE (word.right, x + w + 0.1f);
            EXPECT_GT (word.right, x + w - 8);
        }

    EXPECT_EQ (lines, 2);
}

TEST_F (DrawnSheetHeadingTest, aFieldBesideAnotherHasThreeLinesAtMostAndOneAloneFourteen)
{
    settings->projectSettings.projectName = "Harbour";
    settings->projectSettings.soundSupervisor = numberedLines();
    EXPECT_EQ (linesShown (drawn()), 3);
    settings->projectSettings.soundSupervisor = "Doe";
    EXPECT_EQ (linesShown (drawn (numberedLines())), 14);
    settings->projectSettings.projectFilePath = numberedLines();
    EXPECT_EQ (linesShown (drawn()), 14);
}

TEST_F (DrawnSheetHeadingTest, aTextThatJustFitsHasNoSignThatItGoesOn)
{
    settings->projectSettings.soundSupervisor = "1\n2\n3";
    EXPECT_EQ (drawn().count ("3"), 1);
}

TEST_F (DrawnSheetHeadingTest, whatIsShownOfALongTextIsItsLongestStartThatFits)
{
    for (int length = 1; length <= 60; ++length)
    {
        // One line of so many letters, and one that is too many.
        settings->projectSettings.soundSupervisor =
            "1\n2\n" + juce::String::repeatedString ("i", length) + "\nover";
        const auto page = drawn();
        const auto wanted = std::string (static_cast<std::size_t> (length), 'i') + "…";
        document->setFont (regular, 9.5f);

        if (document->widthOfLine (text (wanted)) < (w - 4) / 2 - label - 10)
        {
            EXPECT_EQ (page.count (wanted), 1) << length;
        }
    }
}

} // namespace
