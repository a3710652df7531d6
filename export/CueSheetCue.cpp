// SPDX-License-Identifier: GPL-3.0-only
#include "export/CueSheetCue.h"

#include "core/system/SystemUtility.h"
#include "export/CueSheetNotes.h"
#include "export/CueSheetTakeBoxes.h"
#include "export/RichTextHTML.h"
#include "export/frame/CSVCells.h"

#include <string_view>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::string_view cueStart =
    R"(<div class="oneCueOuterContainer">    <div class="oneCueOuterContainerLeft">        <div class="textAreaContainer">)";
constexpr std::string_view textStart = R"(<p style="margin:10px;">)";
constexpr std::string_view actorsTextStart = R"(<p style="margin:10px; font-size:16px;">)";
constexpr std::string_view textEnd = "</p>        </div>";
constexpr std::string_view detailsStart =
    R"(    </div>    <div class="oneCueOuterContainerRight">        <div class="cueDetailsContainer">            <div class="cueDetailsCueNumber">)";
constexpr std::string_view characterIconStart =
    R"(</div>            <div class="cueDetailsCharActorTC">                <div class="cueDetailsIconLabelContainer">                    <div class="cueDetailsIcon">                        <img width="16" src="file://)";
constexpr std::string_view characterStart =
    R"("/>                    </div>                    <div class="cueDetailsLabel">                        <p style="font-size: 12px; color:#2568B9; font-weight:bold;">)";
constexpr std::string_view inPointIconStart =
    R"(</p>                    </div>                </div>                <div class="cueDetailsIconLabelContainer">                    <div class="cueDetailsIcon">                       <img width="14" src="file://)";
constexpr std::string_view timeStart =
    R"("/>                    </div>                    <div class="cueDetailsLabel">                        <p style="font-size: 12px;">)";
constexpr std::string_view outPointIconStart =
    R"(</p>                    </div>                </div>                <div class="cueDetailsIconLabelContainer" style="margin-top:0px;">                    <div class="cueDetailsIcon">                        <img width="14" src="file://)";
constexpr std::string_view cueEnd =
    "</p>                    </div>                </div>            </div>        </div>   </div></div>";

void appendDetails (std::string& page, const Event& event)
{
    const auto iconFolder = ZEP::Core::SystemUtility::bundleResourcePath().toStdString() + "/";
    const auto character = event.character();

    page += detailsStart;
    page += utf8 (event.getCueNumber());
    page += characterIconStart;
    page += iconFolder + CueSheetIcons::character;
    page += characterStart;

    if (character != nullptr)
        page += utf8 (character->name);

    page += inPointIconStart;
    page += iconFolder + CueSheetIcons::inPoint;
    page += timeStart;
    page += utf8 (event.getStartTCString());
    page += outPointIconStart;
    page += iconFolder + CueSheetIcons::outPoint;
    page += timeStart;
    page += utf8 (event.getEndTCString());
    page += cueEnd;
}

} // namespace

void appendCue (std::string& page, const std::shared_ptr<Event>& event,
                const EventExportSettingsSet& settings)
{
    page += cueStart;
    page += settings.layout == EventExportLayoutActor ? actorsTextStart : textStart;
    page += htmlOfRichText (event->getText().replaceIllegalASCIICharacters());
    page += textEnd;
    appendCueSheetNotes (page, event, settings.layout);

    if (settings.showTakeNumbers)
        appendTakeNumberBoxes (page, *event);

    appendDetails (page, *event);
}

} // namespace ZEP::Overmarks
