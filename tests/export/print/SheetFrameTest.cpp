// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/SheetFrame.h"

#include "export/print/BrowserPage.h"

#include <gmock/gmock.h>

namespace
{
using testing::HasSubstr;
using testing::StartsWith;
using ZEP::Overmarks::frameOfSheet;
using ZEP::Overmarks::PrintLayout;

std::string a4()
{
    PrintLayout layout;
    layout.paperWidth = 595;
    layout.paperHeight = 842;
    return frameOfSheet (layout);
}

TEST (SheetFrame, saysTheEncodingBeforeAnythingElseSoThatNoneIsGuessed)
{
    EXPECT_THAT (a4(), StartsWith ("<!DOCTYPE html><meta charset=\"utf-8\">"));
}

TEST (SheetFrame, letsThePageLoadPicturesOfItsFolderAndStylesOfItsOwnAndRunNothing)
{
    EXPECT_THAT (a4(),
                 HasSubstr ("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                            "img-src file:; style-src 'unsafe-inline'\">"));
}

TEST (SheetFrame, saysThePolicyBeforeThereIsAnythingThatItCouldComeTooLateFor)
{
    EXPECT_LT (a4().find ("Content-Security-Policy"), a4().find ("<style>"));
}

TEST (SheetFrame, leavesTheMarginsEmptyAllAround)
{
    for (const std::string edge : { "top", "bottom" })
        for (const std::string place : { "-left-corner", "-left", "-center", "-right", "-right-corner" })
            EXPECT_THAT (a4(), HasSubstr ("@" + edge + place + "{content:none!important}"));

    for (const std::string edge : { "left", "right" })
        for (const std::string place : { "-top", "-middle", "-bottom" })
            EXPECT_THAT (a4(), HasSubstr ("@" + edge + place + "{content:none!important}"));
}

TEST (SheetFrame, setsTheMarginsFromTheTopToTheRightAndRound)
{
    PrintLayout layout;
    layout.top = 31;
    layout.right = 32;
    layout.bottom = 44;
    layout.left = 33;
    EXPECT_THAT (frameOfSheet (layout), HasSubstr ("margin:31pt 32pt 44pt 33pt !important"));
}

TEST (SheetFrame, itsRulesStandInALayerAheadOfThePagesOwnAndInsideOfOneStyle)
{
    EXPECT_THAT (
        a4(), HasSubstr ("<title>Dublane - Event List</title><style>@layer sheet{@page{all:initial!important;"
                         "page-orientation:upright!important;"));
    EXPECT_THAT (a4(),
                 testing::EndsWith ("@bottom-right-corner{content:none!important}}"
                                    ".oneCueOuterContainer{break-inside:avoid!important}"
                                    "p{overflow-wrap:anywhere!important;unicode-bidi:plaintext!important}"
                                    ".cueNotesSectionHeaderItem>p{overflow-wrap:normal!important}}</style>"));
}

TEST (SheetFrame, setsThePaperSoThatNoStyleOfAPageChangesIt)
{
    EXPECT_THAT (a4(), HasSubstr ("size:595pt 842pt !important"));
}

} // namespace
