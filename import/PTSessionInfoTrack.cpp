// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoTrack.h"

#include "core/text/StringUtil.h"

#include <algorithm>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

constexpr char kBlank = ' ';
constexpr auto kNowhere = std::string::npos;

/** A part of a name between two brackets. */
struct BracketedPart
{
    /** @param close  place of the closing bracket; the part exists only if that stands behind the opening one */
    BracketedPart (const std::string& name, char openingBracket, std::size_t close)
        : opener (name.find (openingBracket))
    {
        if (opener != kNowhere && close != kNowhere && opener < close)
            content = name.substr (opener + 1, close - opener - 1);
        else
            opener = kNowhere;
    }

    std::size_t opener; ///< kNowhere if there is no such part
    std::string content;
};

std::string withoutLeadingBlanks (const std::string& text)
{
    const auto first = text.find_first_not_of (kBlank);
    return first == kNowhere ? text : text.substr (first);
}

std::string withoutTrailingBlanks (const std::string& text)
{
    const auto last = text.find_last_not_of (kBlank);
    return last == kNowhere ? text : text.substr (0, last + 1);
}

std::string withoutBlanksAround (const std::string& text)
{
    const auto first = text.find_first_not_of (kBlank);
    return first == kNowhere ? std::string() : withoutTrailingBlanks (text.substr (first));
}

} // namespace

void PTSessionInfoRegion::setRegionName (const std::string& name)
{
    const BracketedPart reasonPart (name, '[', name.find (']'));
    const BracketedPart notesPart (name, '{', name.rfind ('}'));

    regionName = name;
    text = withoutTrailingBlanks (name.substr (0, std::min (reasonPart.opener, notesPart.opener)));
    notes = notesPart.content;
    reason = reasonPart.content;
}

void PTSessionInfoRegion::setStartTC (std::string& time)
{
    time = withoutLeadingBlanks (time);
    startTC = time;
}

void PTSessionInfoRegion::setEndTC (std::string& time)
{
    time = withoutLeadingBlanks (time);
    endTC = time;
}

PTSessionInfoTrack::PTSessionInfoTrack (std::string fullName) : name (std::move (fullName))
{
    const BracketedPart prefix (name, '[', name.rfind (']'));
    const BracketedPart actor (name, '{', name.rfind ('}'));
    const BracketedPart comment (name, '(', name.rfind (')'));

    characterName =
        withoutBlanksAround (name.substr (0, std::min ({ prefix.opener, actor.opener, comment.opener })));
    charPrefix = prefix.content;
    actorName = actor.content;
    selected = ! actorName.empty();
}

juce::String textOfSessionTime (std::string_view bytes)
{
    auto encoding = Core::TextEncodingLatin1;
    return Core::StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);
}

} // namespace ZEP::Overmarks
