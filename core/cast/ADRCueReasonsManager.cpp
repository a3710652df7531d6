// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCueReasonsManager.h"

#include "core/system/ProcessLifetime.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEP::Core
{
namespace
{
struct NamedReason
{
    const char* codeText;
    const char* name;
};

// The place in the table is the code. The spelling of AR5 is what project files and other programs carry.
constexpr std::array<NamedReason, ADRCueReasonsManager::firstUserReasonCode> namedReasons { {
    { "", "None" },
    { "", "None" },
    { "AR1", "New Line (AR1)" },
    { "AR2", "Line Change (AR2)" },
    { "AR3", "Alt Delivery (AR3)" },
    { "AR4", "Clarity (AR4)" },
    { "AR5", "Pronounciation (AR5)" },
    { "AR6", "Projection (AR6)" },
    { "AR7", "Accent (AR7)" },
    { "AR8", "ADR Continuity (AR8)" },
    { "AR9", "Dialogue Overlap (AR9)" },
    { "AR10", "Breaths/Efforts (AR10)" },
    { "AR11", "Voice Over (AR11)" },
    { "AR12", "Temp ADR (AR12)" },
    { "AR13", "Swearing (AR13)" },
    { "AR14", "Revoice (AR14)" },
    { "AR15", "Foreign Dubbing (AR15)" },
    { "SR1", "Mic Off-Axis (SR1)" },
    { "SR2", "Low Level (SR2)" },
    { "SR3", "Distortion (SR3)" },
    { "SR4", "Wind on Mic (SR4)" },
    { "SR5", "Radio Mic Rustling (SR5)" },
    { "SR6", "Boom Handling (SR6)" },
    { "SR7", "Mic Drop-Out (SR7)" },
    { "SR8", "Mic Interference (SR8)" },
    { "SR9", "Missing Channel (SR9)" },
    { "SR10", "Audible Sound Edit (SR10)" },
    { "SR11", "Incorrect Sync Sound (SR11)" },
    { "SR12", "No Sync Sound (SR12)" },
    { "LR1", "Noisy Background (LR1)" },
    { "LR2", "Camera & Crew (LR2)" },
    { "LR3", "Footsteps (LR3)" },
    { "LR4", "Props (LR4)" },
    { "LR5", "Modern Sounds (LR5)" },
} };

constexpr std::array<const char*, ADRCueReasonsManager::numberOfUserReasons> userCodeTexts {
    "UR1", "UR2", "UR3", "UR4", "UR5", "UR6", "UR7", "UR8"
};

constexpr std::array<std::string_view, 4> supplementCodes { "S", "SUP", "SUPP", "SUPPLEMENT" };

// Names never change, so that an import finds a name without comparing it with all of them.
const std::unordered_map<juce::String, int>& codesByName()
{
    static const ProcessLifetime<std::unordered_map<juce::String, int>> table {
        []
        {
            std::unordered_map<juce::String, int> codes;
            for (int code = ADRCueReasonsManager::noneCode; code < ADRCueReasonsManager::firstUserReasonCode;
                 ++code)
                codes.emplace (namedReasons[static_cast<std::size_t> (code)].name, code);
            return codes;
        }()
    };
    return table.get();
}

// Made once: a long list asks for a name at each row.
const juce::String& nameOf (int code)
{
    static const ProcessLifetime<std::vector<juce::String>> names { []
                                                                    {
                                                                        std::vector<juce::String> all;
                                                                        for (const auto& reason :
                                                                             namedReasons)
                                                                            all.emplace_back (reason.name);
                                                                        return all;
                                                                    }() };
    return names.get()[static_cast<std::size_t> (code)];
}

std::size_t userIndex (int code)
{
    return static_cast<std::size_t> (code - ADRCueReasonsManager::firstUserReasonCode);
}

juce::String nameWithCode (const juce::String& name, int code)
{
    return name + " (" + userCodeTexts[userIndex (code)] + ")";
}
} // namespace

ADRCueReasonsManager::ADRCueReasonsManager() = default;

ADRCueReasonsManager* ADRCueReasonsManager::sharedManager()
{
    static const ProcessLifetime<ADRCueReasonsManager> manager;
    return &manager.get();
}

bool ADRCueReasonsManager::isReasonCodeValid (int code) const { return code >= noneCode && code <= lastCode; }

bool ADRCueReasonsManager::hasName (int code) const
{
    return isReasonCodeValid (code)
           && (code < firstUserReasonCode || userNames[userIndex (code)].isNotEmpty());
}

juce::String ADRCueReasonsManager::getReasonFromInteger (int code) const
{
    if (! hasName (code))
        return nameOf (noneCode);
    return code < firstUserReasonCode ? nameOf (code) : userNames[userIndex (code)];
}

int ADRCueReasonsManager::getReasonFromString (const juce::String& name) const
{
    const auto found = codesByName().find (name);
    if (found != codesByName().end())
        return found->second;

    for (int code = firstUserReasonCode; code <= lastCode; ++code)
        if (hasName (code) && name == userNames[userIndex (code)])
            return code;

    for (int code = firstUserReasonCode; code <= lastCode; ++code)
        if (hasName (code) && name == nameWithCode (userNames[userIndex (code)], code))
            return code;

    return 0;
}

void ADRCueReasonsManager::incrementReasonCounter (int code)
{
    if (isReasonCodeValid (code))
        ++counters[static_cast<std::size_t> (code)];
}

int ADRCueReasonsManager::reasonCount (int code) const
{
    return isReasonCodeValid (code) ? counters[static_cast<std::size_t> (code)] : 0;
}

std::vector<int> ADRCueReasonsManager::codesRankedByUse() const
{
    std::vector<int> codes;
    for (int code = noneCode; code <= lastCode; ++code)
        if (hasName (code))
            codes.push_back (code);

    std::stable_sort (codes.begin(), codes.end(),
                      [this] (int first, int second) { return reasonCount (first) > reasonCount (second); });
    return codes;
}

void ADRCueReasonsManager::resetCounters() { counters.fill (0); }

void ADRCueReasonsManager::setUserReasonNames (const std::vector<juce::String>& names)
{
    for (std::size_t index = 0; index < userNames.size(); ++index)
        userNames[index] = index < names.size() ? names[index].trim() : juce::String();
}

std::vector<juce::String> ADRCueReasonsManager::userReasonNames() const
{
    return { userNames.begin(), userNames.end() };
}

juce::String ADRCueReasonsManager::codeText (int code) const
{
    if (! isReasonCodeValid (code))
        return {};
    return code < firstUserReasonCode ? namedReasons[static_cast<std::size_t> (code)].codeText
                                      : userCodeTexts[userIndex (code)];
}

int ADRCueReasonsManager::codeForCodeText (const juce::String& text) const
{
    const auto wanted = text.trim();
    if (wanted.isEmpty())
        return 0;

    for (int code = noneCode; code <= lastCode; ++code)
        if (wanted.equalsIgnoreCase (codeText (code)))
            return code;
    return 0;
}

std::vector<ADRCueReasonsManager::Reason> ADRCueReasonsManager::allReasons() const
{
    std::vector<Reason> reasons;
    for (int code = noneCode; code <= lastCode; ++code)
        if (hasName (code))
            reasons.push_back ({ code, codeText (code), getReasonFromInteger (code) });
    return reasons;
}

juce::String ADRCueReasonsManager::mapEdiCueReasonCodeToDublaneReason (const juce::String& ediCueCode) const
{
    const auto code = codeForCodeText (ediCueCode);
    if (code != 0)
        return codeText (code);

    const auto wanted = ediCueCode.trim().toUpperCase();
    for (const auto supplement : supplementCodes)
        if (wanted == juce::StringRef (supplement.data()))
            return "SUP";
    return ediCueCode;
}
} // namespace ZEP::Core
