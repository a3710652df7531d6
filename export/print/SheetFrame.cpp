// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/SheetFrame.h"

#include "export/print/BrowserPage.h"
#include "export/print/PageRequests.h"

#include <string_view>

namespace ZEP::Overmarks
{
namespace
{

/** The places around a page where a style could write. */
constexpr std::string_view placesInTheMargins[] = {
    "top-left-corner",  "top-left",      "top-center",   "top-right",
    "top-right-corner", "right-top",     "right-middle", "right-bottom",
    "left-top",         "left-middle",   "left-bottom",  "bottom-left-corner",
    "bottom-left",      "bottom-center", "bottom-right", "bottom-right-corner"
};

std::string points (int length) { return std::to_string (length) + "pt "; }

std::string rulesOfPages (const PrintLayout& layout)
{
    auto rules = "all:initial!important;page-orientation:upright!important;size:" + points (layout.paperWidth)
                 + points (layout.paperHeight) + "!important;margin:" + points (layout.top)
                 + points (layout.right) + points (layout.bottom) + points (layout.left) + "!important;";

    for (const auto place : placesInTheMargins)
        rules += "@" + std::string (place) + "{content:none!important}";

    return "@page{" + rules + "}";
}

} // namespace

std::string frameOfSheet (const PrintLayout& layout)
{
    // The browser is told the encoding and what the page may do along with the page too (PageRequests.cpp), and now and then forgets
    // it before it reads the first line.
    //
    // Of rules that are marked as important those of the first layer win, whatever others are marked with and however closely
    // they are aimed. And the first title of a document is its title.
    //
    // A cue that is torn apart between two pages can't be read out, and one word without an end must not make the whole sheet
    // small. Labels keep their words whole, however long the text beside them. A line of Arabic or Hebrew is set from the right:
    // from the left its full stop would stand at the wrong end.
    return "<!DOCTYPE html><meta charset=\"utf-8\"><meta http-equiv=\"Content-Security-Policy\" "
           "content=\""
           + std::string (policyOfPages) + "\"><title>Dublane - Event List</title><style>@layer sheet{"
           + rulesOfPages (layout)
           + ".oneCueOuterContainer{break-inside:avoid!important}"
             "p{overflow-wrap:anywhere!important;unicode-bidi:plaintext!important}"
             ".cueNotesSectionHeaderItem>p{overflow-wrap:normal!important}}</style>";
}

} // namespace ZEP::Overmarks
