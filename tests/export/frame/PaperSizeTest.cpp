// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/PaperSize.h"

#include <gtest/gtest.h>

#include <stdlib.h>

using namespace ZEP::Overmarks;

namespace
{

PaperSize sizeFor (const char* name)
{
    EventExportSettingsSet settings;

    if (name != nullptr)
        settings.options[EventExportPaperKey] = name;

    return paperSizeFor (settings);
}

} // namespace

TEST (PaperSize, theSettingsChooseThePaper)
{
    EXPECT_EQ (sizeFor ("a4"), (PaperSize { 595, 842 }));
    EXPECT_EQ (sizeFor ("letter"), (PaperSize { 612, 792 }));
}

TEST (PaperSize, withoutAChoiceItIsThatOfThePlace)
{
    EXPECT_EQ (sizeFor (nullptr), localPaperSize());
    EXPECT_EQ (sizeFor ("papyrus"), localPaperSize());
}

TEST (PaperSize, aPlaceThatSaysNothingHasA4)
{
    const char* before = ::getenv ("LC_ALL");
    const std::string kept = before != nullptr ? before : "";

    for (const auto* locale : { "C", "xx_NOWHERE" })
    {
        ::setenv ("LC_ALL", locale, 1);
        EXPECT_EQ (localPaperSize(), paperA4) << locale;
    }

    if (before != nullptr)
        ::setenv ("LC_ALL", kept.c_str(), 1);
    else
        ::unsetenv ("LC_ALL");
}

TEST (PaperSize, millimetresBecomeWholePoints)
{
    EXPECT_EQ (paperSizeFromMillimetres (210, 297), paperA4);
    EXPECT_EQ (paperSizeFromMillimetres (216, 279), paperLetter) << "which isn't of whole millimetres";
    EXPECT_EQ (paperSizeFromMillimetres (148, 210), (PaperSize { 420, 595 }));
}

TEST (PaperSize, measuresThatNoSheetHasAreA4)
{
    for (const auto& [width, height] :
         { std::pair { 0, 0 }, std::pair { 210, 0 }, std::pair { -210, 297 }, std::pair { 65535, 297 } })
        EXPECT_EQ (paperSizeFromMillimetres (width, height), paperA4);
}
