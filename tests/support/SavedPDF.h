// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PDFDocument.h"
#include "support/PrintedPDF.h"
#include "support/ReadPDF.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace ZEP::Overmarks::Testing
{

/** The darkest point of a part of a file's first page, the part's corner at the lower left. @returns 0 for black, 255 for white */
inline int darkestOf (const juce::File& file, const juce::Rectangle<float>& part)
{
    const PrintedPDF pdf (file.getFullPathName().toStdString());
    const auto top = pdf.height() - static_cast<double> (part.getBottom());
    return static_cast<int> (
        pdf.darkest (0, part.getX(), top, part.getRight(), top + static_cast<double> (part.getHeight())));
}

/** A document on A4 that a test draws and reads back once it is saved. */
class SavedPDF : public testing::Test
{
protected:
    /** Ends the document. */
    ReadPDF saved()
    {
        document.saveToPath();
        EXPECT_TRUE (document.saveResult().wasOk()) << document.saveResult().getErrorMessage();
        return ReadPDF (file());
    }

    /** Saves the document and looks at its first page. @param part  its corner at the lower left
        @returns the darkest point there, 0 for black, 255 for white */
    int darkest (const juce::Rectangle<float>& part)
    {
        saved();
        return darkestOf (file(), part);
    }

    juce::File file() const { return folder.file ("sheet.pdf"); }

    TemporaryFolder folder;
    ZEP::Core::PDFDocument document { file().getFullPathName(), ZEP::Core::PaperSize::a4() };
};

} // namespace ZEP::Overmarks::Testing
