// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string_view>

/** The fixed pieces of a cue sheet's page. Studios compare their sheets with older ones, so every blank counts. */
namespace ZEP::Overmarks::CueSheetTemplates
{

/** From the document type to the opening of the body, with the whole style sheet. */
extern const std::string_view documentHead;

inline constexpr std::string_view documentEnd = "</body></html>";
inline constexpr std::string_view spaceBelowHeader = R"(<div style="height:30px"></div>)";
inline constexpr std::string_view characterEnd = R"(<p style="page-break-after: always;">&nbsp;</p>)";

} // namespace ZEP::Overmarks::CueSheetTemplates
