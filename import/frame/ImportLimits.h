// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <cstddef>
#include <cstdint>

namespace ZEP::Overmarks
{

/** How much importers take in of a file that comes from a stranger. No cue list comes near these numbers; a damaged or hostile file
    asks for terabytes with a few bytes. An application whose users do meet a limit raises it:

        ImportLimits::limits().bytesOfFile = std::uint64_t { 4 } << 30;

    What goes beyond a limit is told to the log, with the number, and by the importer in its own words. Those of delimited text have
    CSVParser::limits() besides, workbooks ZEP::Core::WorkbookArchive::limits(). What reads Word documents is another program, and
    its limits are fixed.

    One set for the process. Change it only while no file is being read. */
struct OVERMARKS_API ImportLimits
{
    std::uint64_t bytesOfFile = std::uint64_t { 1 } << 30; ///< a larger file isn't read; 1 GB

    /** Cells that the table of a file may have however small it is: a million. One more comes with each four bytes of the file, with
        each eight of a dBase table. */
    std::uint64_t spareCells = std::uint64_t { 1 } << 20;

    /** Objects and lists within each other, of TTAL and of what is found in a Word document. Each level takes some hundred bytes
        of the stack when the values go: with a stack of 8 MB not more than ten thousand. */
    int nestingOfJSON = 64;

    /** Objects and lists that a JSON text may have however small it is, beside one for each sixteen bytes. */
    std::size_t sparePartsOfJSON = std::size_t { 1 } << 16;

    /** Elements within each other, of ADR Studio's XML. The framework calls itself for each: with a stack of 8 MB not
        more than ten thousand. */
    int nestingOfXML = 100;

    /** Elements, attributes and pieces of text that an XML document may have however small it is, beside one for each eight
        bytes. */
    std::size_t sparePartsOfXML = std::size_t { 1 } << 16;

    std::size_t namesOfXML = 2000;    ///< different ones, of elements and attributes
    std::size_t attributesOfXML = 64; ///< of one element
    std::size_t fieldsOfDBase = 4096; ///< of a record; dBase allows 255, others some 2000
    std::int64_t charactersOfWordCues = std::int64_t { 1 } << 28; ///< of all cues in a Word document's text

    /** The limits of all importers of the process, as they stand above unless the application has changed them. */
    static ImportLimits& limits();
};

} // namespace ZEP::Overmarks
