// SPDX-License-Identifier: GPL-3.0-only
#include "export/CueSheetNotes.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "event/EventKeyValueEditor.h"
#include "export/RichTextHTML.h"
#include "export/frame/CellTexts.h"

#include <Poco/Any.h>

#include <string_view>

namespace ZEP::Overmarks
{
namespace
{

using KV = EventKeyValueEditor;

constexpr std::string_view notesLabel = "NOTES";
constexpr std::string_view reasonLabel = "REASON";
constexpr std::string_view regionLabel = "FN REGION";
constexpr std::string_view engineeringNotesLabel = "ENG. NOTES";

constexpr std::string_view rowStart = R"(<div class="cueNotesSectionItemContainer">)";
constexpr std::string_view labelStart =
    R"(    <div class="cueNotesSectionHeaderItem">        <p style="font-size: 10px;"><b>)";
constexpr std::string_view labelEnd = R"(</b></p>    </div>    <div class="cueNotesSectionContentItem")";
constexpr std::string_view narrow = R"( style="width:35%; flex-grow:0")";
constexpr std::string_view contentStart = R"(>        <p style="font-size: 10px;">)";
constexpr std::string_view contentEnd = "</p>    </div>";
constexpr std::string_view rowEnd = "</div>";

/** A label and what is told under it. */
struct Item
{
    std::string_view label;
    std::string content;
};

void appendItem (std::string& page, const Item& item, std::string_view width)
{
    page += labelStart;
    page += item.label;
    page += labelEnd;
    page += width;
    page += contentStart;
    page += item.content;
    page += contentEnd;
}

/** A row of its own; none for an item without content. */
void appendRow (std::string& page, const Item& item)
{
    if (item.content.empty())
        return;

    page += rowStart;
    appendItem (page, item, {});
    page += rowEnd;
}

void appendSharedRow (std::string& page, const Item& first, const Item& second)
{
    page += rowStart;
    appendItem (page, first, narrow);
    appendItem (page, second, {});
    page += rowEnd;
}

std::string reasonOf (const std::shared_ptr<Event>& event)
{
    const auto code = Poco::AnyCast<int> (KV (event).getValueForKey (KV::KV_Reason));
    const auto reason = ZEP::Core::ADRCueReasonsManager::sharedManager()->getReasonFromInteger (code);
    return reason == "None" ? std::string() : reason.toStdString();
}

std::string regionOf (const Event& event)
{
    return event.isForcedNarrative() ? CellTexts::region (event.getForcedNarrativeRegion()) : "";
}

void appendEngineersRow (std::string& page, const std::shared_ptr<Event>& event)
{
    const Item engineeringNotes { engineeringNotesLabel, htmlOfRichText (event->getEngineeringNotes()) };
    const Item reason { reasonLabel, reasonOf (event) };
    const Item region { regionLabel, regionOf (*event) };
    const bool hasEngineeringNotes = ! engineeringNotes.content.empty();
    const bool hasReason = ! reason.content.empty();
    const bool hasRegion = ! region.content.empty();

    // There is room for two.
    if (hasEngineeringNotes && hasReason && hasRegion)
        return;

    if (hasEngineeringNotes && (hasReason || hasRegion))
        appendSharedRow (page, engineeringNotes, hasReason ? reason : region);
    else if (hasReason && hasRegion)
        appendSharedRow (page, reason, region);
    else
        appendRow (page, hasEngineeringNotes ? engineeringNotes : hasReason ? reason : region);
}

} // namespace

void appendCueSheetNotes (std::string& page, const std::shared_ptr<Event>& event, EventExportLayout layout)
{
    appendRow (page, { notesLabel, htmlOfRichText (event->getNotes()) });

    if (layout == EventExportLayoutActor)
        return;

    if (layout == EventExportLayoutDirector)
        appendRow (page, { reasonLabel, reasonOf (event) });
    else
        appendEngineersRow (page, event);
}

} // namespace ZEP::Overmarks
