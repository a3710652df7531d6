// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentFormats.h"

#include "Session.h"
#include "Suggestion.h"

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

constexpr int ownTemplate = 0, dsTakerTemplate = 1, euroTakerTemplate = 2;

} // namespace

const std::vector<DocumentFormat>& documentFormats()
{
    static const std::vector<DocumentFormat> formats {
        { "csv",
          EventExportTypeCSV,
          ownTemplate,
          ".csv",
          "Cue list as a table, all columns",
          { "--by-character", "--combine", "--delimiter" } },
        { "ds-taker",
          EventExportTypeCSV,
          dsTakerTemplate,
          ".csv",
          "Table for DS Taker: one row a cue number",
          { "--by-character", "--combine", "--delimiter", "--yes" } },
        { "euro-taker",
          EventExportTypeCSV,
          euroTakerTemplate,
          ".csv",
          "Table for EuroTaker: the heading alone",
          { "--by-character", "--combine", "--delimiter" } },
    };
    return formats;
}

const DocumentFormat& documentFormat (const std::string& name, const std::vector<std::string>& furtherNames)
{
    std::vector<std::string> known;

    for (const auto& format : documentFormats())
    {
        if (format.name == name)
            return format;

        known.push_back (format.name);
    }

    known.insert (known.end(), furtherNames.begin(), furtherNames.end());
    throw WrongUsage ("\"" + juce::String (name) + "\" is no format that can be written; there are "
                      + joined (known) + "." + didYouMean (name, known));
}

} // namespace overmarks
