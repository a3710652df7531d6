// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <Poco/TextEncoding.h>

namespace ZEP::Core
{

/** Mac OS Roman, for Poco::TextConverter: what older workstations of the trade save their text as.

    Control codes stay what they are, so that tabs and line breaks of a file survive a conversion. Stateless;
    one object may serve any number of threads.
*/
class ZEP_CORE_API macOSRomanEncoding final : public Poco::TextEncoding
{
public:
    macOSRomanEncoding();
    ~macOSRomanEncoding() override;

    [[nodiscard]] const char* canonicalName() const override;                ///< The first of its names.
    [[nodiscard]] bool isA (const std::string& encodingName) const override; ///< In upper or lower case.
    [[nodiscard]] const CharacterMap& characterMap() const override;         ///< All 256 have a character.
    int convert (const unsigned char* bytes) const override;                 ///< The character of one byte.
    /** 1, or 0 without a byte for it. */
    int convert (int character, unsigned char* bytes, int length) const override;
    int queryConvert (const unsigned char* bytes, int length) const override;   ///< -1 without a byte.
    int sequenceLength (const unsigned char* bytes, int length) const override; ///< 1, or -1.
};

} // namespace ZEP::Core
