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
        { "csv", EventExportTypeCSV, ownTemplate, ".csv", "Cue list as a table, all columns" },
        { "ds-taker", EventExportTypeCSV, dsTakerTemplate, ".csv",
          "Table for DS Taker: one row a cue number" },
        { "euro-taker", EventExportTypeCSV, euroTakerTemplate, ".csv",
          "Table for EuroTaker: the heading alone" },
    };
    return formats;
}

const DocumentFormat& documentFormat (const std::string& name)
{
    std::vector<std::string> known;

    for (const auto& format : documentFormats())
    {
        if (format.name == name)
            return format;

        known.push_back (format.name);
    }

    std::string choices;

    for (const auto& choice : known)
        choices += (choices.empty() ? "" : ", ") + choice;

    throw WrongUsage ("\"" + name + "\" is no document that can be written; there are " + choices + "."
                      + didYouMean (name, known));
}

} // namespace overmarks
