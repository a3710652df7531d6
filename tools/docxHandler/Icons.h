// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "XMLText.h"

#include <map>
#include <string>
#include <vector>

namespace DocxHandler
{

/** The pictures of one document, each of them in it once however often it is shown. A picture that can't be read is left out:
    a sheet without icons is still a sheet. */
class Icons final
{
public:
    /** Where a document part lists what it refers to, and the name by which it does. */
    struct Picture
    {
        std::string bytes;    ///< of a PNG file; empty if there is no picture
        std::string relation; ///< "rIdImage1", within the part that shows it
        std::string partName; ///< "media/body1.png"
        int width = 0;        ///< in pixels
        int height = 0;
    };

    /** @param partsName  begins the names of the pictures, "body" gives "media/body1.png" */
    explicit Icons (std::string partsName) : name (std::move (partsName)) {}

    /** A run that shows the picture of a file, `height` points high; nothing if there is none. @returns whether it shows it */
    bool write (XMLText& xml, const std::string& file, double height, std::string_view description);

    /** Those that have been shown, in the order of their numbers. */
    [[nodiscard]] std::vector<const Picture*> shown() const;

private:
    const Picture& pictureOf (const std::string& file);

    std::string name;
    std::map<std::string, Picture> pictures;
    int lastNumber = 0;
    int lastDrawing = 0;
};

} // namespace DocxHandler
