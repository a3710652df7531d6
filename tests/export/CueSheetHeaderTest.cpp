// SPDX-License-Identifier: GPL-3.0-only
#include "export/CueSheetHeader.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;

namespace
{

const std::string start = "<h1 style=\"font-size:22px; width: 100%; margin: 0px 0px 20px 0px; \">Film</h1>"
                          "<table style=\"width:100%; margin-left:0%;\">";
const std::string file = "   <tr>        <td style=\"width:23%\"><b>Project File:</b></td>        "
                         "<td colspan=\"3\" class=\"blueBG\">/films/film.overmarks</td>    </tr>";

std::string value (const std::string& label, const std::string& words)
{
    return "<td style=\"width:20%\"><b>" + label + "</b></td><td style=\"width:30%\" class=\"blueBG\">"
           + words + "</td>";
}

std::string end (const std::string& reel, const std::string& version, const std::string& cast)
{
    return "<tr>" + value ("Episode/Reel", reel) + value ("Picture Version", version)
           + "</tr>    <tr>        <td style=\"width:23%\"><b>Chracters(Actors):</b></td>        "
             "<td colspan=\"3\" class=\"blueBG\">"
           + cast + "</td>    </tr></table>";
}

std::string headerOf (const EventExportSettingsSet& settings, const juce::String& cast = {})
{
    std::string page;
    appendCueSheetHeader (page, settings, cast);
    return page;
}

EventExportSettingsSet film()
{
    EventExportSettingsSet settings;
    settings.projectSettings.projectName = "Film";
    return settings;
}

} // namespace

TEST (CueSheetHeader, aProjectOfWhichNothingIsKnownHasTheReelAndTheCastAlone)
{
    EXPECT_EQ (headerOf (film()), start + end ("", "", ""));
}

TEST (CueSheetHeader, theFileOfTheProjectStandsFirst)
{
    auto settings = film();
    settings.projectSettings.projectFilePath = "/films/film.overmarks";
    EXPECT_EQ (headerOf (settings), start + file + end ("", "", ""));
}

TEST (CueSheetHeader, fourKnownValuesFillTwoRowsInTheirOrder)
{
    auto settings = film();
    settings.projectSettings.soundSupervisor = "Sue";
    settings.projectSettings.productionCompany = "Pictures";
    settings.projectSettings.studioName = "Stage 1";
    settings.timelineSettings.timelineName = "Line";
    settings.timelineSettings.episodeReel = "R2";
    settings.timelineSettings.pictureVersion = "v7";
    EXPECT_EQ (headerOf (settings, "Ann (Mary)"),
               start + "<tr>" + value ("Sound Supervisor", "Sue") + value ("Produced By", "Pictures")
                   + "</tr><tr>" + value ("Sound Studio", "Stage 1") + value ("Timeline Name", "Line")
                   + "</tr>" + end ("R2", "v7", "Ann (Mary)"));
}

TEST (CueSheetHeader, threeKnownValuesCloseTheSecondRowWithAnEmptyCell)
{
    auto settings = film();
    settings.projectSettings.soundSupervisor = "Sue";
    settings.projectSettings.studioName = "Stage 1";
    settings.timelineSettings.timelineName = "Line";
    EXPECT_EQ (headerOf (settings),
               start + "<tr>" + value ("Sound Supervisor", "Sue") + value ("Sound Studio", "Stage 1")
                   + "</tr><tr>" + value ("Timeline Name", "Line") + "<td></td></tr>" + end ("", "", ""));
}

TEST (CueSheetHeader, valuesReachThePageAsTheyStand)
{
    auto settings = film();
    settings.projectSettings.productionCompany = "A & <b>B</b>";
    EXPECT_EQ (headerOf (settings),
               start + "<tr>" + value ("Produced By", "A & <b>B</b>") + "<td></td></tr>" + end ("", "", ""));
}
