// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TCToolbox.h"
#include "import/ImportSupport.h"
#include "import/TTALEventFileImporter.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/** TTAL files made of their parts, and what an importer found in them. */
namespace TTALSupport
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using namespace ImportSupport;

using Texts = std::vector<std::string>;

inline std::shared_ptr<TimeInfo> timeInfoAt (const char* origin)
{
    return std::make_shared<TimeInfo> (_TCDef { false, 25, 1, 25, false },
                                       TCToolbox::tcTimeFromString (origin));
}

inline std::string replaced (std::string text, const std::string& sought, const std::string& replacement)
{
    const auto place = text.find (sought);
    EXPECT_NE (place, std::string::npos) << sought;
    return place == std::string::npos ? text : text.replace (place, sought.size(), replacement);
}

/** "name": {members} */
inline std::string block (const std::string& name, const std::string& members)
{
    return "\"" + name + "\": {" + members + "}";
}

inline std::string meta()
{
    return block ("meta", R"("fps": "FPS_2500", "lang": "en", "timeFormat": "FRAMES")");
}

/** An event of one second that says "Line."; each of the members replaces or adds one, an empty value takes one away. */
inline std::string event (const std::vector<std::pair<std::string, std::string>>& members,
                          const std::string& id = "e1")
{
    std::vector<std::pair<std::string, std::string>> all {
        { "start", "0" },
        { "end", "25" },
        { "txt", "\"Line.\"" },
        { "characterId", "\"00000000-0000-0000-0000-000000000000\"" },
    };

    for (const auto& [name, value] : members)
    {
        std::erase_if (all, [&n = name] (const auto& member) { return member.first == n; });
        if (! value.empty())
            all.emplace_back (name, value);
    }

    std::string text;
    for (const auto& [name, value] : all)
        text += (text.empty() ? "" : ", ") + ("\"" + name + "\": " + value);

    return block (id, text);
}

/** A whole file. */
inline std::string file (const std::string& events,
                         const std::string& characters = R"("c1": {"name": "ANNA"})")
{
    return "{" + meta() + ", " + block ("events", events) + ", " + block ("characters", characters) + "}";
}

/** The formatted runs of a text: "0-8 bold". */
inline Texts looksOf (const RichTextString& text)
{
    Texts looks;
    for (const auto& run : text.formattedRuns())
        looks.push_back (std::to_string (run.range.getStart()) + "-" + std::to_string (run.range.getEnd())
                         + (run.font.isBold() ? " bold" : "") + (run.font.isItalic() ? " italic" : ""));
    return looks;
}

/** The cast: "identifier=name". */
inline Texts castOf (const TTALEventFileImporter& importer)
{
    Texts found;
    for (const auto& id : importer.characterMap->characterIDs())
        found.push_back ((id + "=" + importer.characterMap->characterForID (id)->name).toStdString());
    return found;
}

class TTALImport : public testing::Test
{
protected:
    TTALEventFileImporter& importPath (const std::string& path, const std::shared_ptr<TimeInfo>& time)
    {
        message.clear();
        importer = std::make_unique<TTALEventFileImporter> (path, message, time);
        return *importer;
    }

    /** Imports a file that comes with the tests. */
    TTALEventFileImporter& importFile (const std::string& name,
                                       const std::shared_ptr<TimeInfo>& time = timeInfoAt ("00:00:00:00"))
    {
        return importPath (dataFile (name), time);
    }

    /** Imports a file with these bytes. */
    TTALEventFileImporter& import (const std::string& bytes,
                                   const std::shared_ptr<TimeInfo>& time = timeInfoAt ("00:00:00:00"))
    {
        return importPath (folder.file ("list.ttal", bytes), time);
    }

    [[nodiscard]] std::string cell (std::size_t row, std::size_t column) const
    {
        return importer->rows.at (row).at (column).getText().toStdString();
    }

    /** What the styles make of "Line." */
    Texts looks (const std::string& styles)
    {
        import (file (event ({ { "styles", "[" + styles + "]" } })));
        return importer->rows.size() == 1 ? looksOf (importer->rows[0][2]) : Texts { message.toStdString() };
    }

    TemporaryFolder folder;
    juce::String message;
    std::unique_ptr<TTALEventFileImporter> importer;
};

} // namespace TTALSupport
