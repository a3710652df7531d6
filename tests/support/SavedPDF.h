// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PDFDocument.h"
#include "support/ReadPDF.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace ZEP::Overmarks::Testing
{

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

    juce::File file() const { return folder.file ("sheet.pdf"); }

    TemporaryFolder folder;
    ZEP::Core::PDFDocument document { file().getFullPathName(), ZEP::Core::PaperSize::a4() };
};

} // namespace ZEP::Overmarks::Testing
