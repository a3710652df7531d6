// SPDX-License-Identifier: GPL-3.0-only
// The way to what reads workbooks and draws pages. That it is loaded in time is tested with the program.
#include "core/documents/DocumentsLibrary.h"

#include <gtest/gtest.h>

using namespace ZEP::Core;

TEST (DocumentsLibrary, whatIsLinkedAlreadyNeedsNoFile)
{
    const DocumentsLibrary library ("/no/such/library");
    EXPECT_EQ (library.operations(), overmarksDocuments());
    EXPECT_EQ (library.failure(), juce::String());
    EXPECT_TRUE (library.pages (PaperSize::a4())->finish().wasOk());
}

TEST (DocumentsLibrary, isTheSameForAll)
{
    EXPECT_EQ (DocumentsLibrary::loaded().operations(), overmarksDocuments());
    EXPECT_EQ (DocumentsLibrary::loaded().operations(), overmarksDocuments());
}

TEST (DocumentsLibrary, pagesWithoutItSayWhyInTheEnd)
{
    DocumentPages pages ("Why");
    EXPECT_EQ (pages.finish().getErrorMessage(), juce::String ("Why"));
    EXPECT_EQ (pages.bytes(), std::string());
}

TEST (DocumentsLibrary, pagesWithoutItTakeEveryTextForAnEmptyOne)
{
    DocumentPages pages ("Why");
    auto height = 1.0f;
    EXPECT_TRUE (pages.layoutTextForWidth ("Two words", 100.0f, height).empty());
    EXPECT_EQ (height, 0.0f);
    EXPECT_TRUE (pages.lineHeightsForWidth ("Two words", 100.0f).empty());
    EXPECT_EQ (pages.widthOfLine ("Two words"), 0.0f);
    EXPECT_EQ (pages.descent(), 0.0f);
}

TEST (DocumentsLibrary, pagesWithoutItNeverAskForWhatComesAgain)
{
    DocumentPages pages ("Why");
    auto calls = 0;
    pages.drawRepeated ("box", { 0.0f, 0.0f, 10.0f, 10.0f }, [&calls] { ++calls; });
    EXPECT_EQ (calls, 0);
}
