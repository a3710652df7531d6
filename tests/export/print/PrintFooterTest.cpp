// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PrintFooter.h"

#include <gtest/gtest.h>

#include <stdlib.h>
#include <time.h>

using namespace ZEP::Overmarks;

namespace
{

PrintLayout a4()
{
    PrintLayout layout;
    layout.paperWidth = 595;
    layout.paperHeight = 842;
    layout.top = 30;
    layout.bottom = 44;
    layout.left = 30;
    layout.right = 30;
    return layout;
}

bool holds (const std::string& text, const std::string& part)
{
    return text.find (part) != std::string::npos;
}

} // namespace

TEST (PrintFooter, eachItemHasItsRectangle)
{
    const auto html = PrintFooter { "1.2", "now", "Actor Layout", "icon" }.html (a4());
    EXPECT_TRUE (holds (html, "left:34.00pt;top:797.50pt;width:523.00pt;height:1.00pt;"))
        << "the line: " << html;
    EXPECT_TRUE (holds (html, "left:34.00pt;top:806.00pt;width:16.00pt;height:16.00pt;"));
    EXPECT_TRUE (
        holds (html, "left:58.00pt;top:807.00pt;width:507.00pt;height:15.00pt;text-align:left\">1.2<"));
    EXPECT_TRUE (
        holds (html, "left:30.00pt;top:807.00pt;width:535.00pt;height:15.00pt;text-align:center\">now<"));
    EXPECT_TRUE (
        holds (html, "left:30.00pt;top:807.00pt;width:531.00pt;height:15.00pt;text-align:right\">Page: <"));
    EXPECT_TRUE (holds (
        html, "left:160.00pt;top:807.00pt;width:507.00pt;height:15.00pt;text-align:center\">Actor Layout<"));
}

TEST (PrintFooter, textsAreSmallGreyAndOfOneLine)
{
    const auto html = PrintFooter { "1.2", "now", "Actor Layout", "icon" }.html (a4());
    EXPECT_TRUE (html.starts_with (
        "<div style=\"position:absolute;left:0;top:0;font:9pt/11pt Arial,sans-serif;color:#555;"
        "white-space:nowrap;-webkit-print-color-adjust:exact\"><div style="))
        << html;
    EXPECT_TRUE (html.ends_with (">Actor Layout</div></div>"));
    EXPECT_TRUE (holds (html, "height:1.00pt;background:#555\"></div>")) << "a line is a narrow area";
    EXPECT_TRUE (holds (html, "text-align:right\">Page: <span class=\"pageNumber\"></span>/<span "
                              "class=\"totalPages\"></span></div>"));
}

TEST (PrintFooter, theIconStandsInThePageItself)
{
    EXPECT_TRUE (holds (PrintFooter { "1", "2", "3", "icon" }.html (a4()),
                        "height:16.00pt;\"><img style=\"display:block;width:16pt;height:16pt\" "
                        "src=\"data:image/png;base64,aWNvbg==\"></div>"));
}

TEST (PrintFooter, marginsThatDifferMoveWhatStandsBetweenThem)
{
    auto layout = a4();
    layout.left = 50;
    layout.right = 20;
    layout.bottom = 60;
    const auto html = PrintFooter { "1.2", "now", "Actor Layout", "icon" }.html (layout);
    EXPECT_TRUE (
        holds (html, "left:50.00pt;top:791.00pt;width:525.00pt;height:15.00pt;text-align:center\">now<"))
        << html;
    EXPECT_TRUE (holds (html, "left:54.00pt;top:781.50pt;width:513.00pt;height:1.00pt;"));
}

TEST (PrintFooter, withoutAnIconThereIsNoPicture)
{
    EXPECT_FALSE (holds (PrintFooter { "1", "2", "3", "" }.html (a4()), "<img"));
}

TEST (PrintFooter, aVersionCannotSayAnythingInHTML)
{
    const auto html = PrintFooter { "<b>&amp;", "", "", "" }.html (a4());
    EXPECT_TRUE (holds (html, ">&lt;b>&amp;amp;<"));
}

TEST (PrintFooter, dateAndTimeAreShortAndThoseOfThePlace)
{
    const auto set = [] (const char* name, const char* value)
    { value != nullptr ? ::setenv (name, value, 1) : ::unsetenv (name); };
    const char* zone = ::getenv ("TZ");
    const char* locale = ::getenv ("LC_ALL");
    const std::string keptZone = zone != nullptr ? zone : "", keptLocale = locale != nullptr ? locale : "";
    set ("TZ", "UTC-2");
    set ("LC_ALL", "C");
    ::tzset();
    EXPECT_EQ (shortDateAndTime (1'000'000'000), "09/09/01, 03:46");
    set ("LC_ALL", "xx_NOWHERE");
    EXPECT_EQ (shortDateAndTime (1'000'000'000), "09/09/01, 03:46") << "as without a place";
    set ("TZ", zone != nullptr ? keptZone.c_str() : nullptr);
    set ("LC_ALL", locale != nullptr ? keptLocale.c_str() : nullptr);
    ::tzset();
}
