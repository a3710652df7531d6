// SPDX-License-Identifier: GPL-3.0-only
#include "export/ADROverviewPDFExporter.h"

#include "core/system/SystemUtility.h"

#include <cmath>
#include <iomanip>
#include <limits>
#include <numeric>
#include <sstream>

#include <unistd.h>

namespace ZEP::Orvelle
{

using ZEP::Core::PaperSize;
using ZEP::Core::PDFDocument;

namespace
{

const juce::Colour black { 0xff000000 };
const juce::Colour white { 0xffffffff };

constexpr auto regular = PDFDocument::FontTypeRegular;
constexpr auto bold = PDFDocument::FontTypeBold;

constexpr int left = juce::Justification::centredLeft;
constexpr int bottomLeft = juce::Justification::bottomLeft;

const std::array<juce::String, 6> columnTitles {
    "Character", "Actor", "Prefix", "Lines", "Cues", "Progress"
};

constexpr std::size_t progressColumn = 5;

juce::Colour grey (float brightness)
{
    return juce::Colour::fromFloatRGBA (brightness, brightness, brightness, 1.0f);
}

/** Cut towards zero; 0 for what is no number, and never beyond what an int holds. */
int cutToInt (float value)
{
    constexpr auto most = 2.0e9f;
    return std::isnan (value) ? 0 : static_cast<int> (std::clamp (value, -most, most));
}

/** "66 %"; "nan %" for the share of nothing. */
juce::String percentText (float ratio)
{
    if (std::isnan (ratio))
        return "nan %"; // the system would write its sign as well

    std::ostringstream text;
    text << std::fixed << std::setprecision (0) << ratio * 100.0f;
    return juce::String (text.str()) + " %";
}

} // namespace

ADROverviewPDFExporter::ADROverviewPDFExporter (const juce::String& path, PaperSize pageSize)
    : document (std::make_shared<PDFDocument> (path, pageSize)),
      filePath (path),
      appVersion (ZEP::Core::SystemUtility::executableVersion())
{
}

ADROverviewPDFExporter::~ADROverviewPDFExporter() { document.reset(); }

void ADROverviewPDFExporter::openInViewer (const juce::File& file)
{
    // The framework hands the path to a shell in double quotes, and starts what is marked as a program.
    const auto path = file.getFullPathName();

    if (path.containsAnyOf ("\"\\$`") || ::access (path.toRawUTF8(), X_OK) == 0)
        juce::Process::openDocument (
            juce::URL (file).toString (false).replace ("$", "%24").replace ("`", "%60"), {});
    else
        file.startAsProcess ("");
}

void ADROverviewPDFExporter::exportPDF (const std::vector<ADROverviewDataSet>& newDataSets,
                                        const juce::String& newTitle, const juce::String& newProjectFile,
                                        const juce::String& newTimeline,
                                        const juce::String& newSoundSupervisor, const juce::String& newStudio)
{
    appVersion = ZEP::Core::SystemUtility::executableVersion();
    document->setImage (appIcon, appIconIdentifier, false);
    dataSets = newDataSets;
    title = newTitle;
    projectFile = newProjectFile;
    timeline = newTimeline;
    soundSupervisor = newSoundSupervisor;
    studio = newStudio;

    if (title.isNotEmpty())
        document->setTitle (title);

    calculateNumPages();
    fillTables();
    document->saveToPath();

    if (openFile)
        openFile (juce::File (filePath));
}

// ---- pages -----------------------------------------------------------------------------------------------------------------

void ADROverviewPDFExporter::calculateNumPages()
{
    const auto pageHeight = document->getHeight();
    const auto spaceBelow = [this, pageHeight] (int headerHeight)
    {
        return static_cast<int> (pageHeight
                                 - static_cast<float> (headerHeight + footerHeight + 2 * headerSpacing));
    };

    const auto needed = static_cast<juce::int64> (tableHeaderHeight) + tableFooterHeight
                        + static_cast<juce::int64> (dataSets.size()) * rowHeight;
    const auto spaceOfLaterPage = tableHeaderHeight + spaceBelow (smallPageHeaderHeight);
    numPages = 1;

    // Paper without room for a row has no number of pages.
    for (auto excess = needed - spaceBelow (firstPageHeaderHeight); excess > 0 && spaceOfLaterPage > 0;
         excess -= spaceOfLaterPage)
        ++numPages;
}

void ADROverviewPDFExporter::fillTables()
{
    addFirstPageHeader (title, projectFile, timeline, soundSupervisor, studio);
    addFooter (appVersion);
    rowsDrawn = 0;
    int y = 0;

    for (int page = 0; page < numPages; ++page)
    {
        if (page > 0)
        {
            document->addPage();
            ++currentPage;
            addSmallPageHeader (title);
            addFooter (appVersion);
        }

        drawTableHeader (page == 0);
        y = drawRows (page == 0 ? firstPageHeaderHeight : smallPageHeaderHeight);
    }

    drawTableFooter (y - tableFooterHeight + rowHeight);
}

/** @returns where a further row would stand */
int ADROverviewPDFExporter::drawRows (int headerHeight)
{
    const auto pageHeight = document->getHeight();
    const auto space =
        static_cast<int> (pageHeight - static_cast<float> (headerHeight + footerHeight + 2 * headerSpacing));
    const int rowsFit = (space - tableHeaderHeight) / rowHeight;
    int y = static_cast<int> (
        pageHeight - static_cast<float> (headerSpacing + headerHeight + tableHeaderHeight + rowHeight));

    for (int row = 0; row < rowsFit && rowsLeftOut() > 0; ++row)
    {
        drawContentTableRow (dataSets[static_cast<std::size_t> (rowsDrawn)], y);
        ++rowsDrawn;
        y -= rowHeight;
    }

    return y;
}

void ADROverviewPDFExporter::addFirstPageHeader (const juce::String& headerTitle,
                                                 const juce::String& headerProjectFile,
                                                 const juce::String& headerTimeline,
                                                 const juce::String& headerSupervisor,
                                                 const juce::String& headerStudio)
{
    const auto w = document->getWidth(), h = document->getHeight(), m = margin();
    document->setFont (bold, 32.0f);
    document->setStrokeColor (black);
    document->setFillColor (black);
    document->drawText (headerTitle, { m, h - 60.0f, w - 2.0f * m, 40.0f }, bottomLeft);

    document->setFont (bold, 12.0f);
    document->drawText ("Project File", m, h - 90.0f);
    document->drawText ("Timeline", m, h - 117.0f);
    document->drawText ("Sound Supervisor", m, h - 142.0f);
    document->drawText ("Studio", 340.0f, h - 142.0f);

    const auto d = document->getCurrentFontDescent();
    document->setFillColor (juce::Colour::fromFloatRGBA (0.925f, 0.957f, 1.0f, 1.0f));
    document->fillRect (162.0f, h - 94.0f - d, w - 162.0f - m, 22.0f);
    document->fillRect (162.0f, h - 120.0f - d, w - 162.0f - m, 22.0f);
    document->fillRect (162.0f, h - 146.0f - d, 170.0f, 22.0f);
    document->fillRect (388.0f, h - 146.0f - d, w - 388.0f - m, 22.0f);

    document->setFillColor (black);
    document->setFont (regular, 12.0f);
    document->drawText (headerProjectFile, { 168.0f, h - 90.0f, w - m - 168.0f, 22.0f }, bottomLeft);
    document->drawText (headerTimeline, { 168.0f, h - 117.0f, w - m - 168.0f, 22.0f }, bottomLeft);
    document->drawText (headerSupervisor, { 168.0f, h - 142.0f, w - m - 168.0f, 22.0f }, bottomLeft);
    document->drawText (headerStudio, { 394.0f, h - 142.0f, w - m - 394.0f, 22.0f }, bottomLeft);
}

void ADROverviewPDFExporter::addSmallPageHeader (const juce::String& headerTitle)
{
    document->setFont (bold, 16.0f);
    document->setStrokeColor (black);
    document->setFillColor (black);
    document->drawText (
        headerTitle,
        { margin(), document->getHeight() - 40.0f, document->getWidth() - 2.0f * margin(), 40.0f },
        bottomLeft);
}

void ADROverviewPDFExporter::addFooter (const juce::String& text)
{
    const auto w = document->getWidth(), m = margin();
    const juce::Rectangle<float> band { m + 25.0f, 30.0f, w - 2.0f * m - 25.0f, 30.0f };
    document->drawLine (m, 50.0f, w - m, 50.0f, 0.0f, PDFDocument::LineCapPlain);
    document->drawImage (appIconIdentifier, m - 2.0f, 24.0f, 20.0f, 20.0f);
    document->setFont (regular, 10.0f);
    document->drawText (text, m + 25.0f, 30.0f);
    document->drawText (juce::Time::getCurrentTime().toString (true, true, false, true), band,
                        juce::Justification::centredBottom);
    document->drawText ("Page " + juce::String (currentPage + 1) + " of " + juce::String (numPages), band,
                        juce::Justification::bottomRight);
}

// ---- the table -------------------------------------------------------------------------------------------------------------

void ADROverviewPDFExporter::drawLine (float x1, float y1, float x2, float y2)
{
    document->drawLine (x1, y1, x2, y2, 1.0f, PDFDocument::LineCapPlain);
}

void ADROverviewPDFExporter::drawTableHeader (bool firstPage)
{
    const auto height = static_cast<float> (tableHeaderHeight);
    const auto headerHeight = firstPage ? firstPageHeaderHeight : smallPageHeaderHeight;
    const auto y = static_cast<float> (static_cast<int> (
        document->getHeight() - static_cast<float> (headerSpacing + headerHeight + tableHeaderHeight)));

    document->setStrokeColor (lineColour);
    document->setFillColor (headerColour);
    document->fillRect (margin(), y, tableWidth(), height);
    document->drawRect (margin(), y, tableWidth(), height, 1.0f);
    float x = margin();

    for (std::size_t column = 0; column < columnTitles.size(); ++column)
    {
        const auto width = columnWidth (column);
        document->setStrokeColor (white);
        document->setFillColor (white);
        document->setFont (bold, 10.0f);
        document->drawText (columnTitles.at (column), { x + 5.0f, y, width - 5.0f, height }, left);
        document->setStrokeColor (lineColour);

        if (column > 0)
            drawLine (x, y, x, y + height);

        x += width;
    }
}

void ADROverviewPDFExporter::drawContentTableRow (const ADROverviewDataSet& dataSet, int y)
{
    const auto percent = cutToInt (dataSet.doneRatio * 100.0f);
    const std::array<juce::String, progressColumn> texts { dataSet.character, dataSet.actor, dataSet.prefix,
                                                           juce::String (dataSet.numberOfLines),
                                                           juce::String (dataSet.numberOfCues) };
    const auto bottom = static_cast<float> (y), height = static_cast<float> (rowHeight);
    const auto rightEdge = document->getWidth() - margin();
    float x = margin();

    for (std::size_t column = 0; column < columnTitles.size(); ++column)
    {
        const auto width = columnWidth (column);
        document->setFont (regular, 10.0f);
        document->setStrokeColor (lineColour);
        document->setFillColor (black);

        if (column != progressColumn)
            document->drawText (texts.at (column), { x + 5.0f, bottom, width - 5.0f, height }, left);
        else
            drawProgressBar (static_cast<float> (percent) / 100.0f, x, bottom, width, height);

        drawLine (x, bottom, x, bottom + height);
        x += width;
    }

    // The bar leaves white behind: no row is boxed in on its right or from the next one.
    drawLine (rightEdge, bottom, rightEdge, bottom + height);
    drawLine (margin(), bottom, rightEdge, bottom);
}

void ADROverviewPDFExporter::drawTableFooter (int y)
{
    const auto sum = [this] (auto start, auto member)
    {
        return std::accumulate (dataSets.begin(), dataSets.end(), start,
                                [member] (auto total, const ADROverviewDataSet& dataSet)
                                { return total + dataSet.*member; });
    };

    const auto bottom = static_cast<float> (y), height = static_cast<float> (tableFooterHeight);
    const auto width = tableWidth();
    document->setStrokeColor (lineColour);
    document->setFillColor (grey (0.81f));
    document->fillRect (margin(), bottom, width, height);
    document->drawRect (margin(), bottom, width, height, 1.0f);
    document->setFont (bold, 10.0f);
    document->setFillColor (black);
    document->drawText ("Total", { margin() + 5.0f, bottom, width, height }, left);

    const auto cell = [&] (float x, float share, juce::int64 number)
    {
        drawLine (x, bottom, x, bottom + height);
        document->drawText (juce::String (number), { x + 5.0f, bottom, share * width - 5.0f, height }, left);
    };

    // The widths of the two columns of numbers are taken crosswise; they are equal.
    const auto lines = margin() + (columnWidths[0] + columnWidths[1] + columnWidths[2]) * width;
    const auto cues = lines + columnWidths[4] * width;
    const auto progress = cues + columnWidths[3] * width;
    cell (lines, columnWidths[4], sum (juce::int64 { 0 }, &ADROverviewDataSet::numberOfLines));
    cell (cues, columnWidths[3], sum (juce::int64 { 0 }, &ADROverviewDataSet::numberOfCues));
    drawLine (progress, bottom, progress, bottom + height);
    drawProgressBar (sum (0.0f, &ADROverviewDataSet::doneRatio) / static_cast<float> (dataSets.size()),
                     progress, bottom, width * columnWidths[progressColumn], height);
}

void ADROverviewPDFExporter::drawProgressBar (float ratio, float x, float y, float width, float height)
{
    const auto thickness = static_cast<float> (rowHeight - 14);
    const auto start = x + 7.0f + thickness / 2.0f;
    const auto end = x + 7.0f - thickness / 2.0f + width * 0.75f - 14.0f;
    const auto middle = y + 7.0f + thickness / 2.0f;

    document->setStrokeColor (grey (0.93f));
    document->drawLine (start, middle, end, middle, thickness, PDFDocument::LineCapRound);
    document->setStrokeColor (juce::Colour::fromFloatRGBA (0.0f, 0.58f, 1.0f, 1.0f));
    document->drawLine (start, middle, start + (end - start) * ratio, middle, thickness,
                        PDFDocument::LineCapRound);

    document->setFont (regular, 10.0f);
    document->setStrokeColor (white);
    document->drawText (percentText (ratio), { x + width * 0.75f, y, width, height }, left);
}

} // namespace ZEP::Orvelle
