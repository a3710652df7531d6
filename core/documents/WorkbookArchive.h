// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace ZEP::Core
{

class PartXML;

/** The parts of a workbook's file, which is a ZIP archive from a stranger.

    The archive's directory is judged before anything is inflated: how many parts there are, how large they say they become, and how
    many times their packed size that is. What a part says of its size is held against what comes out of it. Nothing is ever
    written to a path.

    Every failure is a UnreadableWorkbook. One archive belongs to one thread. */
class WorkbookArchive final
{
public:
    /** What an archive may come to. */
    struct Limits
    {
        std::uint64_t parts = 10000;                             ///< files in the archive, folders included
        std::uint64_t bytesOfPart = std::uint64_t { 512 } << 20; ///< inflated size of a single part
        std::uint64_t bytes = std::uint64_t { 1 } << 30;         ///< of all parts
        std::uint64_t ratio = 200; ///< inflated to packed, of an archive that isn't small; 0 is the same as 1
        std::uint64_t smallBytes = std::uint64_t { 32 } << 20; ///< inflated: up to here any ratio is fine
        std::uint64_t cells = std::uint64_t { 16 } << 20;      ///< of a sheet's table, empty ones among them

        /** Cells that a table may have however small its sheet is, beside one for each four bytes of the sheet; never more than
            `cells`. The same goes for runs of formatted text. */
        std::uint64_t spareCells = std::uint64_t { 2 } << 20;
        int nesting = 64; ///< elements of XML within each other
    };

    /** The limits of all workbooks that the process reads, as they stand above unless the application has changed them. Change
        them only while no workbook is being read. An application links nothing else of this class. */
    static ZEP_CORE_API Limits& limits();

    /** Opens a file and judges it within limits(). */
    explicit WorkbookArchive (const juce::String& path);
    ~WorkbookArchive();

    /** Whether there is such a part. Upper and lower case are one, as they are for spreadsheet programs. */
    [[nodiscard]] bool has (const std::string& part) const;

    /** How many bytes a part has, as the archive's directory says; a part of other bytes can't be read to its end. */
    [[nodiscard]] std::uint64_t sizeOf (const std::string& part) const;

    /** Hands out the bytes of a part piece by piece, from the front. */
    void read (const std::string& part, const std::function<void (std::string_view)>& take) const;

    /** The bytes of a part. */
    [[nodiscard]] std::string bytesOf (const std::string& part) const;

    /** Walks through the XML of a part, from beginning to end. */
    void walkThrough (const std::string& part, PartXML& walk) const;

private:
    struct Zip;

    void judgeContent() const;

    std::unique_ptr<Zip> zip;
};

} // namespace ZEP::Core
