// SPDX-License-Identifier: GPL-3.0-only
#include "export/CueSheetHeader.h"

#include "export/frame/CSVCells.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::string_view titleStart =
    R"(<h1 style="font-size:22px; width: 100%; margin: 0px 0px 20px 0px; ">)";
constexpr std::string_view tableStart = R"(</h1><table style="width:100%; margin-left:0%;">)";
constexpr std::string_view fileStart =
    R"(   <tr>        <td style="width:23%"><b>Project File:</b></td>        <td colspan="3" class="blueBG">)";
constexpr std::string_view fileEnd = "</td>    </tr>";
// The misspelt label is what the stage has on all its older sheets.
constexpr std::string_view castStart =
    R"(    <tr>        <td style="width:23%"><b>Chracters(Actors):</b></td>        <td colspan="3" class="blueBG">)";
constexpr std::string_view castEnd = "</td>    </tr></table>";

using LabelledValue = std::pair<std::string_view, const juce::String*>;

void appendLabelledValue (std::string& page, const LabelledValue& entry)
{
    page += R"(<td style="width:20%"><b>)";
    page += entry.first;
    page += R"(</b></td><td style="width:30%" class="blueBG">)";
    page += utf8 (*entry.second);
    page += "</td>";
}

/** What is known, two to a row. */
void appendKnownValues (std::string& page, const EventExportSettingsSet& settings)
{
    std::vector<LabelledValue> known;

    for (const auto& entry :
         { LabelledValue { "Sound Supervisor", &settings.projectSettings.soundSupervisor },
           { "Produced By", &settings.projectSettings.productionCompany },
           { "Sound Studio", &settings.projectSettings.studioName },
           { "Timeline Name", &settings.timelineSettings.timelineName } })
        if (entry.second->isNotEmpty())
            known.push_back (entry);

    for (std::size_t i = 0; i < known.size(); ++i)
    {
        if (i % 2 == 0)
            page += "<tr>";

        appendLabelledValue (page, known[i]);

        if (i % 2 == 1)
            page += "</tr>";
    }

    if (known.size() % 2 == 1)
        page += "<td></td></tr>";
}

} // namespace

void appendCueSheetHeader (std::string& page, const EventExportSettingsSet& settings,
                           const juce::String& charactersAndActors)
{
    page += titleStart;
    page += utf8 (settings.projectSettings.projectName);
    page += tableStart;

    if (settings.projectSettings.projectFilePath.isNotEmpty())
    {
        page += fileStart;
        page += utf8 (settings.projectSettings.projectFilePath);
        page += fileEnd;
    }

    appendKnownValues (page, settings);
    page += "<tr>";
    appendLabelledValue (page, { "Episode/Reel", &settings.timelineSettings.episodeReel });
    appendLabelledValue (page, { "Picture Version", &settings.timelineSettings.pictureVersion });
    page += "</tr>";
    page += castStart;
    page += utf8 (charactersAndActors);
    page += castEnd;
}

} // namespace ZEP::Overmarks
