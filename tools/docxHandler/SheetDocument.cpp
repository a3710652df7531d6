// SPDX-License-Identifier: GPL-3.0-only
#include "SheetDocument.h"

#include "PackageWriter.h"
#include "SheetStyles.h"

namespace DocxHandler
{

namespace
{

void addPictures (PackageWriter& package, const Icons& icons)
{
    for (const auto* picture : icons.shown())
        package.add ("word/" + picture->partName, picture->bytes);
}

} // namespace

std::string wordDocument (const Sheet& sheet, const Surroundings& surroundings,
                          const std::function<void (double)>& progress)
{
    constexpr double shareOfLayout = 0.6; // of the time; the rest goes into packing
    const auto hasFooter = sheet.footer.has_value();
    Icons icons ("body");
    Icons footerIcons ("footer");
    PackageWriter package;

    auto body = documentPart (sheet, surroundings.paper, icons,
                              [&progress] (double share) { progress (share * shareOfLayout); });

    package.add ("[Content_Types].xml", contentTypesPart (hasFooter));
    package.add ("_rels/.rels", packageRelationsPart());
    package.add ("docProps/core.xml", corePropertiesPart (sheet, surroundings));
    package.add ("docProps/app.xml", applicationPropertiesPart (sheet));
    package.add ("word/document.xml", std::move (body));
    package.add ("word/_rels/document.xml.rels", documentRelationsPart (icons, hasFooter));
    package.add ("word/styles.xml", stylesPart (sheet, surroundings.language));
    package.add ("word/settings.xml", settingsPart (surroundings.language));
    package.add ("word/fontTable.xml", fontTablePart());

    if (hasFooter)
    {
        package.add ("word/footer1.xml", footerPart (*sheet.footer, surroundings.paper, footerIcons));
        package.add ("word/_rels/footer1.xml.rels", footerRelationsPart (footerIcons));
    }

    addPictures (package, icons);
    addPictures (package, footerIcons);
    return package.finish ([&progress] (double share)
                           { progress (shareOfLayout + share * (1.0 - shareOfLayout)); });
}

} // namespace DocxHandler
