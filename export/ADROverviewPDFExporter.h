// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/cast/ADRCharacterMap.h"
#include "core/documents/PDFDocument.h"
#include "list/EventArray.h"

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <array>
#include <functional>
#include <memory>
#include <vector>

/** One row of the overview: a character, how much there is to record and how much of it is done. */
struct ADROverviewDataSet
{
    juce::String character; ///< name; "<no char>" where nobody speaks
    juce::String actor;     ///< empty while nobody is cast
    juce::String prefix;    ///< of the cue numbers; may be empty
    int numberOfLines = 0;  ///< ADR cues
    int numberOfCues = 0;   ///< different cue numbers among them
    float doneRatio = 0.0f; ///< from 0 to 1
};

namespace ZEP::Orvelle
{

/** The rows of the cast in its order, with the numbers of EventArray::adrOverviewDataForCharacter() but in one walk through the list. ADR
    cues that nobody speaks get a last row, "<no char>", if there are any. */
[[nodiscard]] OVERMARKS_API std::vector<ADROverviewDataSet> adrOverviewDataSets (
    const ZEP::Overmarks::EventArray& list, const ZEP::Core::ADRCharacterMap& cast);

/** Draws the ADR overview, a table with a row for each character and a total, and opens the finished sheet.

        first page      title, project, people       160 points
        later pages     title                         40
        each page       heading of the table          24
                        rows                          21 each
                        footer                        50

    The rule that is easily missed: the number of pages is found from the height of all rows, and on a long list it can be one
    too small. Rows that find no page are left out, though the total counts them; rowsLeftOut() tells how many.

    One object draws one sheet. Any thread. */
class OVERMARKS_API ADROverviewPDFExporter final
{
public:
    /** @param path  full path of the sheet */
    explicit ADROverviewPDFExporter (const juce::String& path,
                                     ZEP::Core::PaperSize pageSize = ZEP::Core::PaperSize::ofLocale());

    ADROverviewPDFExporter (const ADROverviewPDFExporter&) = delete;
    ADROverviewPDFExporter& operator= (const ADROverviewPDFExporter&) = delete;
    ~ADROverviewPDFExporter();

    /** Draws the sheet, saves it and opens it, whether or not it could be saved; document->saveResult() tells that. */
    void exportPDF (const std::vector<ADROverviewDataSet>& newDataSets, const juce::String& newTitle,
                    const juce::String& newProjectFile, const juce::String& newTimeline,
                    const juce::String& newSoundSupervisor, const juce::String& newStudio);

    /** How many of the characters are on no page, after exportPDF(). */
    [[nodiscard]] int rowsLeftOut() const noexcept { return static_cast<int> (dataSets.size()) - rowsDrawn; }

    /** Shows a finished sheet to the user. */
    using OpenFile = std::function<void (const juce::File&)>;

    /** The default: the system's viewer, started as a process of its own. */
    static void openInViewer (const juce::File& file);

    OpenFile openFile = openInViewer; ///< called once, when the sheet is done

    std::shared_ptr<ZEP::Core::PDFDocument> document; ///< what is drawn on; never null
    juce::String filePath;                            ///< full path of the sheet
    juce::String appVersion;                          ///< in the footer; SystemUtility's
    juce::String title;                               ///< above the table of every page
    juce::String projectFile;                         ///< project's name in the head
    juce::String timeline;                            ///< timeline's name in the head
    juce::String soundSupervisor;                     ///< may be empty
    juce::String studio;                              ///< may be empty
    int currentPage = 0;                              ///< counted from 0
    int numPages = 0;                                 ///< of the whole sheet; may be one too small
    std::vector<ADROverviewDataSet> dataSets;         ///< rows in the order of the table
    juce::Colour lineColour = juce::Colour::fromFloatRGBA (0.59f, 0.59f, 0.59f, 1.0f); ///< of all rules; grey
    /** of the table's head */
    juce::Colour headerColour = juce::Colour::fromFloatRGBA (0.47f, 0.47f, 0.47f, 1.0f);
    juce::Image appIcon; ///< in the footer; may be assigned before exportPDF()

    // Points.
    int firstPageHeaderHeight = 160; ///< title, project, people
    int smallPageHeaderHeight = 40;  ///< title alone
    int footerHeight = 50;           ///< from the lower edge of the page
    int pageMargin = 40;             ///< left and right
    int tableHeaderHeight = 24;      ///< the titles of the columns
    int tableFooterHeight = 24;      ///< the row of the total
    int rowHeight = 21;              ///< of one character
    int headerSpacing = 20;          ///< above and below the table

    std::array<float, 6> columnWidths { 0.25f, 0.25f, 0.1f, 0.08f, 0.08f, 0.24f }; ///< shares of the table
    juce::String appIconIdentifier { "AppIconID" }; ///< the icon's name in the document

private:
    void calculateNumPages();
    void fillTables();
    int drawRows (int headerHeight);
    void addFirstPageHeader (const juce::String& headerTitle, const juce::String& headerProjectFile,
                             const juce::String& headerTimeline, const juce::String& headerSupervisor,
                             const juce::String& headerStudio);
    void addSmallPageHeader (const juce::String& headerTitle);
    void addFooter (const juce::String& text);
    void drawTableHeader (bool firstPage);
    void drawContentTableRow (const ADROverviewDataSet& dataSet, int y);
    void drawTableFooter (int y);
    void drawProgressBar (float ratio, float x, float y, float width, float height);
    void drawLine (float x1, float y1, float x2, float y2);

    [[nodiscard]] float margin() const { return static_cast<float> (pageMargin); }
    [[nodiscard]] float tableWidth() const { return document->getWidth() - 2.0f * margin(); }
    [[nodiscard]] float columnWidth (std::size_t column) const
    {
        return tableWidth() * columnWidths.at (column);
    }

    int rowsDrawn = 0;
};

} // namespace ZEP::Orvelle
