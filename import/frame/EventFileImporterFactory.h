// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** A kind of cue list that can be imported, for programs that list what there is. */
struct ImportFormat
{
    int type;                     ///< EventFileImporter::type()
    juce::StringArray extensions; ///< with their dots, in small letters
    juce::String name;            ///< for a person
    bool userMapping;             ///< EventFileImporter::userMappingEnabled()
};

/** Chooses the importer of a file.

    The extension alone decides, and the file is not looked at: a table in a ".txt" file goes to the Pro Tools importer, whose
    own checks then tell the user what to do. */
class OVERMARKS_API EventFileImporterFactory final
{
public:
    EventFileImporterFactory() = delete;

    /** Makes the importer, which reads the file at once.
        @param errorMessage   what the importer has to say is added here
        @param customReasons  names of the user's cue reasons, for Pro Tools text
        @param timeInfo       project time, for TTAL
        @returns an empty pointer for an extension that belongs to no importer, with the message untouched; otherwise an importer,
                 also when it has failed */
    static std::shared_ptr<EventFileImporter> fileImporterWithFilepath (
        const juce::String& filePath, juce::String& errorMessage, std::vector<juce::String> customReasons,
        std::shared_ptr<Core::TimeInfo> timeInfo);

    /** All formats, in the order in which their extensions are tried. */
    static const std::vector<ImportFormat>& formats();
};

} // namespace ZEP::Overmarks
