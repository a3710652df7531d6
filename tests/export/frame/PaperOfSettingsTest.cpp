// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/PaperOfSettings.h"

#include <gtest/gtest.h>

#include <stdlib.h>

using namespace ZEP::Overmarks;
using ZEP::Core::PaperSize;

namespace
{

PaperSize sizeFor (const char* name)
{
    EventExportSettingsSet settings;

    if (name != nullptr)
        settings.options[EventExportPaperKey] = name;

    return paperOf (settings);
}

} // namespace

TEST (PaperSize, theSettingsChooseThePaper)
{
    EXPECT_EQ (sizeFor ("a4"), (PaperSize { 595, 842 }));
    EXPECT_EQ (sizeFor ("letter"), (PaperSize { 612, 792 }));
}

TEST (PaperSize, withoutAChoiceItIsThatOfThePlace)
{
    EXPECT_EQ (sizeFor (nullptr), PaperSize::ofLocale());
    EXPECT_EQ (sizeFor ("papyrus"), PaperSize::ofLocale());
}

TEST (PaperSize, aPlaceThatSaysNothingHasA4)
{
    const char* before = ::getenv ("LC_ALL");
    const std::string kept = before != nullptr ? before : "";

    for (const auto* locale : { "C", "xx_NOWHERE" })
    {
        ::setenv ("LC_ALL", locale, 1);
        EXPECT_EQ (PaperSize::ofLocale(), PaperSize::a4()) << locale;
    }

    if (before != nullptr)
        ::setenv ("LC_ALL", kept.c_str(), 1);
    else
        ::unsetenv ("LC_ALL");
}

TEST (PaperSize, millimetresBecomeWholePoints)
{
    EXPECT_EQ (PaperSize::ofMillimetres (210, 297), PaperSize::a4());
    EXPECT_EQ (PaperSize::ofMillimetres (216, 279), PaperSize::letter())
        << "which isn't of whole millimetres";
    EXPECT_EQ (PaperSize::ofMillimetres (148, 210), (PaperSize { 420, 595 }));
}

TEST (PaperSize, measuresThatNoSheetHasAreA4)
{
    for (const auto& [width, height] :
         { std::pair { 0, 0 }, std::pair { 210, 0 }, std::pair { -210, 297 }, std::pair { 65535, 297 } })
        EXPECT_EQ (PaperSize::ofMillimetres (width, height), PaperSize::a4());
}
