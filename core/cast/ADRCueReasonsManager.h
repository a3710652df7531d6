// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <array>
#include <vector>

namespace ZEP::Core
{
/** Why a line has to be recorded again: the trade's table of cue reasons, and how often each was given in
    this session.

    Codes: 0 is unset; 1 is "None"; 2 to 16 are AR1 to AR15 (artistic), 17 to 28 SR1 to SR12 (sound), 29 to 33
    LR1 to LR5 (location); 34 to 41 are UR1 to UR8, which the application may name. An event stores the code
    minus one.

    A user reason is valid also while it has no name, since a project may have been made with names that are
    not set here; it then reads "None". One object for the process, never destroyed; no lock.
*/
class ZEP_CORE_API ADRCueReasonsManager final
{
public:
    static constexpr int noneCode = 1; ///< valid, unlike 0: somebody chose that there is no reason
    static constexpr int firstUserReasonCode = 34;                                 ///< UR1
    static constexpr int lastCode = 41;                                            ///< UR8
    static constexpr int numberOfUserReasons = lastCode - firstUserReasonCode + 1; ///< UR1 to UR8: how many

    /** A line of the table: its code, the trade's short form ("AR4", empty for none), and its name ("Clarity
        (AR4)").
    */
    struct Reason
    {
        int code = 0;          ///< 0 for unset
        juce::String codeText; ///< as in print; "None" has none
        juce::String name;     ///< what a menu shows
    };

    static ADRCueReasonsManager* sharedManager(); ///< Never null, never destroyed.

    ADRCueReasonsManager (const ADRCueReasonsManager&) = delete;
    ADRCueReasonsManager& operator= (const ADRCueReasonsManager&) = delete;

    /** True for 1 to 41. */
    [[nodiscard]] bool isReasonCodeValid (int code) const;

    /** The name of the reason. "None" for an unknown code and for a user reason without a name. */
    [[nodiscard]] juce::String getReasonFromInteger (int code) const;

    /** The code of the reason with exactly this name; 0, which is unset, if there is none. A user reason is
        also found by its name followed by " (UR1)" to " (UR8)". Of equal names the lowest code counts, so
        "None" is always 1.
    */
    [[nodiscard]] int getReasonFromString (const juce::String& name) const;

    /** Counts one more use. A code that is not valid counts nothing. */
    void incrementReasonCounter (int code);

    /** The uses counted since the start or the last resetCounters(); 0 for a code that is not valid. */
    [[nodiscard]] int reasonCount (int code) const;

    /** The codes of allReasons(), most used first; equally used ones in the order of their codes. */
    [[nodiscard]] std::vector<int> codesRankedByUse() const;

    void resetCounters(); ///< All reasons count as unused again; their names stay.

    /** Names UR1 onwards. White space around a name is cut off. Missing and blank names leave their reasons
        unnamed; names beyond the eighth are dropped.
    */
    void setUserReasonNames (const std::vector<juce::String>& names);

    /** Always eight names; the empty string where there is none. */
    [[nodiscard]] std::vector<juce::String> userReasonNames() const;

    /** The short form: "AR4", "UR1"; empty for 1 and for codes that are not valid. */
    [[nodiscard]] juce::String codeText (int code) const;

    /** The way back, ignoring case and blanks around the text; 0 for anything else. */
    [[nodiscard]] int codeForCodeText (const juce::String& text) const;

    /** What a user can choose from, in the order of the codes: "None", the defaults, and the user reasons
        that have names.
    */
    [[nodiscard]] std::vector<Reason> allReasons() const;

    /** A reason code as the EdiCue exchange writes it, in the form of this table.

        Codes of the table, user reasons included, come back in upper case without the blanks around them;
        "S", "SUP", "SUPP" and "SUPPLEMENT", a supplement to the cue before, become "SUP". Case and
        surrounding blanks don't matter. Anything else comes back as given.
    */
    [[nodiscard]] juce::String mapEdiCueReasonCodeToDublaneReason (const juce::String& ediCueCode) const;

private:
    template <typename Object>
    friend class ProcessLifetime;

    ADRCueReasonsManager();

    [[nodiscard]] bool hasName (int code) const;

    std::array<juce::String, numberOfUserReasons> userNames;
    std::array<int, lastCode + 1> counters {};
};
} // namespace ZEP::Core
