// SPDX-License-Identifier: GPL-3.0-only
#include "Work.h"

#include "Failure.h"
#include "FileBytes.h"
#include "ImportLimits.h"
#include "ProgressFile.h"
#include "SheetDocument.h"
#include "SheetJSON.h"
#include "WordImport.h"

#include <algorithm>
#include <new>

namespace DocxHandler
{

namespace
{

namespace fs = std::filesystem;

constexpr int finished = 100;

/* The share of each file in the work, by its size. */
std::vector<double> sharesOf (const std::vector<fs::path>& files)
{
    std::vector<double> shares;
    double total = 0.0;

    for (const auto& file : files)
    {
        std::error_code error;
        const auto size = fs::file_size (file, error);
        shares.push_back (error ? 1.0 : 1.0 + static_cast<double> (size));
        total += shares.back();
    }

    for (auto& share : shares)
        share /= total;

    return shares;
}

/* The level stays below 100 until everything is done. */
int levelOf (double share) { return std::min (finished - 1, static_cast<int> (share * finished)); }

void exportDocument (const fs::path& json, const fs::path& output, const Surroundings& surroundings,
                     const std::function<void (double)>& progress)
{
    constexpr double shareOfReading = 0.3;
    const auto sheet = readSheet (json);
    progress (shareOfReading);
    placeFile (output, wordDocument (sheet, surroundings,
                                     [&progress] (double share)
                                     { progress (shareOfReading + share * (1.0 - shareOfReading)); }));
    progress (1.0);
}

std::vector<ImportedCue> cuesNamingFile (const fs::path& file, std::string_view bytes)
{
    try
    {
        return cuesOfWordDocument (bytes);
    }
    catch (const Failure& failure)
    {
        throw Failure (file.filename().string() + " " + failure.what());
    }
}

} // namespace

std::vector<std::string> exportDocuments (const Arguments& arguments)
{
    const auto surroundings = Surroundings::ofEnvironment();
    const auto shares = sharesOf (arguments.json);
    ProgressFile progressFile (arguments.progressFile);
    std::vector<std::string> errors;
    double done = 0.0;

    for (std::size_t i = 0; i < arguments.json.size(); ++i)
    {
        try
        {
            exportDocument (arguments.json[i], arguments.output[i], surroundings,
                            [&] (double share)
                            { progressFile.setLevel (levelOf (done + share * shares[i])); });
        }
        catch (const Failure& failure)
        {
            errors.emplace_back (failure.what());
            progressFile.addError (failure.what());
        }
        catch (const std::bad_alloc&)
        {
            errors.push_back ("Not enough memory to write " + arguments.output[i].string());
            progressFile.addError (errors.back());
        }

        done += shares[i];
    }

    if (errors.empty())
        progressFile.setLevel (finished);

    if (! progressFile.problem().empty())
        errors.push_back (progressFile.problem());

    return errors;
}

std::vector<std::string> importDocument (const Arguments& arguments)
{
    constexpr int readLevel = 90;
    ProgressFile progressFile (arguments.progressFile);
    std::string problem;

    try
    {
        const auto bytes = readFile (arguments.input, ImportLimits::bytesOfFile);
        const auto cues = cuesNamingFile (arguments.input, bytes);
        progressFile.setLevel (readLevel);
        placeFile (arguments.json.front(), cueListJSON (cues), Readers::thisUser);
        progressFile.setLevel (finished);
        return progressFile.problem().empty() ? std::vector<std::string>()
                                              : std::vector { progressFile.problem() };
    }
    catch (const Failure& failure)
    {
        problem = failure.what();
    }
    catch (const std::bad_alloc&)
    {
        problem = "Not enough memory to read " + arguments.input.string();
    }

    progressFile.addError (problem);
    return { problem };
}

} // namespace DocxHandler
