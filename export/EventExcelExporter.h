// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/text/RichTextString.h"
#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** Writes cue lists as workbooks: a heading and a row for each event, in fifteen columns that the importer reads back. The
    text, the notes and the engineering notes keep their looks.

    The rule that is easily missed: an export with a file for each character always ends with success. A file that couldn't be
    written is missing, or is still the old one, and the other files are there; whoever exports has to look. It can't be
    cancelled. The thread of the caller. */
class OVERMARKS_API EventExcelExporter final : public EventExporter
{
public:
    using Events = EventExportSettingsSet::Events;      ///< in the order in which they are written
    using Row = std::vector<ZEP::Core::RichTextString>; ///< fifteen cells

    explicit EventExcelExporter (std::shared_ptr<EventExportSettingsSet> settingsSet); ///< Not null; shared.
    ~EventExcelExporter() override;

    /** A workbook for each character, or one for all; only the latter tells a failure. */
    juce::String exportEventsByCharacter() override;
    juce::String exportEventsByTimecode() override;
    EventExportType type() const override; ///< EventExportTypeExcel.

    /** The heading and a row for each event. */
    std::vector<Row> buildFileContent (const std::vector<std::shared_ptr<Event>>& events);

    /** The heading. Sets `columnKeys`. */
    Row firstLineValues();

    /** A cell of the table, or of the two keys that have no column: KV_Type and KV_Enabled. Empty for any other key. */
    ZEP::Core::RichTextString richTextStringForEventAndColumnKey (std::shared_ptr<Event> event,
                                                                  const juce::String& key);

    std::vector<juce::String> columnKeys; ///< the attribute key of each column

private:
    juce::String writeFile (const Events& events, const juce::File& file);
};

} // namespace ZEP::Overmarks
