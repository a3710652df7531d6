// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoFileImporter.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/Logger.h"
#include "core/text/StringUtil.h"
#include "import/PTSessionInfoLines.h"
#include "import/PrefixCueNumbers.h"
#include "import/frame/ImportedBytes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ZEP::Overmarks
{

using Core::ADRCueReasonsManager;
using Core::StringUtil;

namespace
{

constexpr std::string_view kHeading = "T R A C K  L I S T I N G";

constexpr auto kNoSessionInfo =
    "The file doesn't contain valid Pro Tools session info data. If you're trying to import comma-separated "
    "values, please use the file extension '.csv'";
constexpr auto kNoTimecode =
    "The file's time format is not set to timecode.This is required for Orvelle to parse the content "
    "properly.Please make sure to select 'Timecode' as time format in the Pro Tools Export Session Info "
    "dialog";
constexpr auto kNobodyToAsk =
    "The tracks to import can't be chosen, since no window can be opened to ask for them";

/** The columns in the order of their cells. */
constexpr std::array kColumns { "Start TC",    "End TC", "Cue Number", "Text",  "Character",
                                "Char Prefix", "Actor",  "Notes",      "Reason" };
static_assert (kColumns.size() == PTSessionInfoLineReader::kColumns);

/** The file from its track listing on; nothing if it has none. */
std::optional<std::string> trackListingOf (const juce::String& path)
{
    auto bytes = bytesOfFile (path);
    const auto heading = bytes.find (kHeading);
    if (heading == bytes.npos)
        return std::nullopt;

    bytes.erase (0, heading);
    return bytes;
}

/** What all rows of a track share. */
struct TrackTexts
{
    explicit TrackTexts (const PTSessionInfoTrack& track)
        : character (StringUtil::fromUTF8 (track.characterName)),
          prefix (StringUtil::fromUTF8 (track.charPrefix)),
          actor (StringUtil::fromUTF8 (track.actorName))
    {
    }

    juce::String character;
    juce::String prefix;
    juce::String actor;
};

/** A clip on its way to its row. */
struct Cue
{
    juce::String start;
    const PTSessionInfoRegion* clip;
    std::shared_ptr<const TrackTexts> track;
};

std::vector<Cue> cuesInOrderOfTime (const PTSessionInfoFileImporter::Tracks& tracks)
{
    std::vector<Cue> cues;
    for (const auto& track : tracks)
    {
        const auto texts = std::make_shared<const TrackTexts> (*track);
        for (const auto& clip : track->regions)
            cues.push_back ({ textOfSessionTime (clip->startTC), clip.get(), texts });
    }

    std::stable_sort (cues.begin(), cues.end(),
                      [] (const Cue& first, const Cue& second) { return first.start < second.start; });
    return cues;
}

/** What follows a line break at the end of the text is no further line. */
std::string_view withoutFinalLineBreak (std::string_view text)
{
    return text.ends_with ('\n') ? text.substr (0, text.size() - 1) : text;
}

bool endsLinesAsWindowsDoes (std::string_view text)
{
    const auto first = text.find ('\n');

    if (first == text.npos)
        return false;

    for (auto end = first; end != text.npos; end = text.find ('\n', end + 1))
        if (end == 0 || text[end - 1] != '\r')
            return false;

    return true;
}

/** A line of the log has no room for more. */
juce::String beginningOf (const juce::String& name)
{
    constexpr int most = 80;
    return name.length() > most ? name.substring (0, most) + "..." : name;
}

} // namespace

PTSessionInfoFileImporter::TrackChoice PTSessionInfoFileImporter::chooseTracks = askWithDialog;

PTSessionInfoFileImporter::PTSessionInfoFileImporter (const juce::String& path, juce::String& errorMessage,
                                                      std::vector<juce::String> reasonNames)
    : EventFileImporter (path, errorMessage, {}),
      customReasons (std::move (reasonNames))
{
    parse (errorMessage, Core::TextEncodingUnknown);
}

PTSessionInfoFileImporter::~PTSessionInfoFileImporter() = default;

bool PTSessionInfoFileImporter::userMappingEnabled() const { return false; }

int PTSessionInfoFileImporter::type() { return 0; }

void PTSessionInfoFileImporter::parse (juce::String& errorMessage, Core::TextEncoding textEncoding)
{
    rows.clear();
    lostTracks = 0;
    auto listing = trackListingOf (filePath);
    if (! listing.has_value())
    {
        errorMessage += kNoSessionInfo;
        return;
    }

    const bool isFirstReading = textEncoding == Core::TextEncodingUnknown;
    encoding = isFirstReading ? detectEncoding (*listing) : textEncoding;

    const auto tracks = readTracks (*listing, isFirstReading, errorMessage);
    if (! tracks.has_value() || (isFirstReading && ! letUserChoose (*tracks, errorMessage)))
        return;

    makeRows();

    columnMap.clear();
    for (std::size_t column = 0; column < kColumns.size(); ++column)
        columnMap[kColumns[column]] = static_cast<int> (column);
}

std::optional<PTSessionInfoFileImporter::Tracks> PTSessionInfoFileImporter::readTracks (
    std::string_view text, bool tellsOfLostTracks, juce::String& errorMessage)
{
    using Outcome = PTSessionInfoLineReader::Outcome;

    PTSessionInfoLineReader reader (text.size());
    TextLines lines (withoutFinalLineBreak (text));
    std::string_view line;
    auto outcome = Outcome::goesOn;

    while (outcome == Outcome::goesOn && lines.next (line))
        outcome = reader.take (line);

    // A track that Windows' line ends leave open takes the markers behind it for clips, whose times can't be right.
    reader.finish();
    lostTracks = reader.numberOfLostTracks();
    const bool hasWindowsLineEnds = endsLinesAsWindowsDoes (text);
    if (tellsOfLostTracks && reader.numberOfLostTracks() > 0
        && (outcome == Outcome::goesOn || hasWindowsLineEnds))
        tellOfLostTracks (reader, hasWindowsLineEnds);

    if (outcome == Outcome::goesOn)
        return reader.tracks();

    if (outcome == Outcome::tooMuch)
        Core::Logger::error (filePath + ": " + reader.wordsOfRefusal());

    errorMessage += outcome == Outcome::startIsNoTimecode ? kNoTimecode : kNoSessionInfo;
    return std::nullopt;
}

void PTSessionInfoFileImporter::tellOfLostTracks (const PTSessionInfoLineReader& reader,
                                                  bool hasWindowsLineEnds) const
{
    juce::String words = ": tracks without two empty lines behind them are left out ("
                         + juce::String (reader.numberOfLostTracks()) + ", the first is \""
                         + beginningOf (StringUtil::fromUTF8 (reader.firstLostTrack()).trim()) + "\")";
    if (hasWindowsLineEnds)
        words += "; the file has Windows line ends, between which no line is empty";
    Core::Logger::error (filePath + words);
}

bool PTSessionInfoFileImporter::letUserChoose (const Tracks& tracks, juce::String& errorMessage)
{
    auto chosen = chooseTracks != nullptr ? chooseTracks (tracks) : askWithDialog (tracks);
    if (! chosen.has_value())
    {
        errorMessage += kNobodyToAsk;
        return false;
    }

    std::erase (*chosen, nullptr);
    selectedTracks = std::move (*chosen);
    return true;
}

void PTSessionInfoFileImporter::makeRows()
{
    const auto cues = cuesInOrderOfTime (selectedTracks);
    PrefixCueNumbers numbers;
    rows.reserve (cues.size());

    for (const auto& cue : cues)
    {
        const auto reason =
            mapDublaneReason (ADRCueReasonsManager::sharedManager()->mapEdiCueReasonCodeToDublaneReason (
                decoded (cue.clip->reason)));

        auto& row = rows.emplace_back();
        row.reserve (kColumns.size());
        row.emplace_back (cue.start);
        row.emplace_back (textOfSessionTime (cue.clip->endTC));
        row.emplace_back (numbers.next (cue.track->prefix, reason));
        row.emplace_back (decoded (cue.clip->text));
        row.emplace_back (cue.track->character);
        row.emplace_back (cue.track->prefix);
        row.emplace_back (cue.track->actor);
        row.emplace_back (decoded (cue.clip->notes));
        row.emplace_back (reason);
    }
}

juce::String PTSessionInfoFileImporter::decoded (const std::string& bytes)
{
    return StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);
}

juce::String PTSessionInfoFileImporter::mapDublaneReason (const juce::String& code) const
{
    const auto* const reasons = ADRCueReasonsManager::sharedManager();
    const auto number = reasons->codeForCodeText (code);
    if (number == 0 || reasons->codeText (number) != code)
        return code;

    if (number < ADRCueReasonsManager::firstUserReasonCode)
        return reasons->getReasonFromInteger (number);

    const auto index = static_cast<std::size_t> (number - ADRCueReasonsManager::firstUserReasonCode);
    return index < customReasons.size() ? customReasons[index] + " (" + code + ")" : code;
}

} // namespace ZEP::Overmarks
