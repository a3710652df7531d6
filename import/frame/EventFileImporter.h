// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/cast/ADRCharacterMap.h"
#include "core/text/RichTextString.h"
#include "core/text/TextEncoding.h"
#include "core/timecode/TimeInfo.h"

#include <juce_core/juce_core.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** A foreign cue list, read: a table of cells, and which column holds what.

    An importer reads its file while it is being constructed, and makes no events: turning rows into events is the next step,
    after the user has seen the message and, where userMappingEnabled() says so, corrected the columns.

    The rules that callers get wrong: the message is appended to, never cleared, and a message that isn't empty means that the
    table is not to be used; rows need not be of equal length, so test a column index against the row; and with a user mapping
    the CSV and Excel importers keep the titles of the file as row 0.

    Held by std::shared_ptr. No locks: one importer belongs to one thread. No file stays open. */
class OVERMARKS_API EventFileImporter
{
public:
    /** Stores the path and the time reference and reads nothing: a derived class parses as the last thing that its own
        constructor does. */
    EventFileImporter (const juce::String& path, juce::String& errorMessage,
                       std::shared_ptr<Core::TimeInfo> projectTime);

    EventFileImporter (const EventFileImporter&) = delete;
    EventFileImporter& operator= (const EventFileImporter&) = delete;
    virtual ~EventFileImporter();

    /** Reads the file into `rows` and `columnMap`. May be called again, with the encoding that the user chose.
        @param errorMessage  what went wrong is added here; give a fresh one for every call
        @param encoding      how the bytes of the file are to be read; TextEncodingUnknown lets the importer find out */
    virtual void parse (juce::String& errorMessage, Core::TextEncoding encoding) = 0;

    /** Whether the user may assign the columns: `columnMap` is a proposal then, else it is complete. */
    [[nodiscard]] virtual bool userMappingEnabled() const = 0;

    /** The number that names the format (EventFileImporterFactory::formats()). Applications store it. */
    [[nodiscard]] virtual int type() = 0;

    /** Language of the file's text as the file names it; empty where the format doesn't say. */
    [[nodiscard]] virtual juce::String languageCode();

    /** What a control for assigning columns offers: "- unused -", then every key of a column map. Filled by the first call,
        which has to come from the thread that makes importers. */
    static std::vector<juce::String>& columnTitles();

    /** How the bytes of a whole text file are encoded, TextEncodingUnknown if nothing is found. A byte order mark is cut off
        the text. UTF-16 is one answer for both byte orders. */
    static Core::TextEncoding detectEncoding (std::string& text);

    juce::String filePath;                               ///< as given to the constructor
    std::vector<std::vector<Core::RichTextString>> rows; ///< the table: rows of cells
    std::map<juce::String, int> columnMap; ///< column title to index of a cell in a row; -1: no column
    Core::TextEncoding encoding;           ///< how the file was read
    std::shared_ptr<Core::TimeInfo>
        timeInfo; ///< project time, for the formats whose times need it; else empty
    std::shared_ptr<Core::ADRCharacterMap>
        characterMap; ///< cast of the file, for the formats that have one; else empty
};

} // namespace ZEP::Overmarks
