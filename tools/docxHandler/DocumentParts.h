// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Icons.h"
#include "Paper.h"
#include "Sheet.h"

#include <ctime>
#include <functional>
#include <string>

namespace DocxHandler
{

/** What surrounds a document, from the machine that makes it. */
struct Surroundings
{
    Paper paper;
    std::string language = "en-US";
    std::time_t now = 0;

    /** Paper and language of the environment's locale; the present time, or that of SOURCE_DATE_EPOCH. */
    [[nodiscard]] static Surroundings ofEnvironment();
};

/** The language tag of a locale's name: "de-DE" for "de_DE.UTF-8"; "en-US" for one that names no language. */
[[nodiscard]] std::string languageOfLocale (std::string_view locale);

/** The part word/document.xml. @param progress  is told the share that is done, 0 to 1, now and then */
[[nodiscard]] std::string documentPart (const Sheet& sheet, const Paper& paper, Icons& icons,
                                        const std::function<void (double)>& progress);

/** The part word/footer1.xml: the application's icon and version, layout and date, page of pages. */
[[nodiscard]] std::string footerPart (const SheetFooter& footer, const Paper& paper, Icons& icons);

[[nodiscard]] std::string contentTypesPart (bool hasFooter);
[[nodiscard]] std::string packageRelationsPart();
[[nodiscard]] std::string documentRelationsPart (const Icons& icons, bool hasFooter);
[[nodiscard]] std::string footerRelationsPart (const Icons& icons);
[[nodiscard]] std::string settingsPart (std::string_view language);
[[nodiscard]] std::string fontTablePart();
[[nodiscard]] std::string corePropertiesPart (const Sheet& sheet, const Surroundings& surroundings);
[[nodiscard]] std::string applicationPropertiesPart (const Sheet& sheet);

} // namespace DocxHandler
