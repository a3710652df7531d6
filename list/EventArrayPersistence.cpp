// SPDX-License-Identifier: GPL-3.0-only
// The stored form of a list, a tessera1::ProtoOvermarkList.
#include "core/system/ProtoRecord.h"
#include "core/text/StringUtil.h"
#include "event/EventKeyValueEditor.h"
#include "list/EventArray.h"
#include "proto/overmarks.pb.h"

namespace ZEP::Overmarks
{

using tessera1::ProtoOvermarkList;
using ZEP::Core::ProtoRecord;

void EventArray::fillProtoObject (void* proto)
{
    auto& list = *static_cast<ProtoOvermarkList*> (proto);
    list.set_sortkey (ProtoRecord::text (sortKey));
    list.set_sortdescending (sortDescending);

    for (const auto& event : events)
        event->fillProtoObject (list.add_events());

    ProtoRecord::addNewerFields (list, newerFields);
}

bool EventArray::initWithProtoObject (void* proto)
{
    auto& list = *static_cast<ProtoOvermarkList*> (proto);
    events.clear();
    events.reserve (static_cast<std::size_t> (list.events_size()));
    sortKey = ZEP::Core::StringUtil::fromUTF8 (list.sortkey());
    sortDescending = list.sortdescending();
    newerFields = ProtoRecord::newerFields (list);

    if (sortKey.isEmpty())
        sortKey = EventKeyValueEditor::KV_StartTCString;

    for (auto& stored : *list.mutable_events())
    {
        auto event = std::make_shared<Event>();
        event->initWithProtoObject (&stored);
        events.push_back (std::move (event));
    }

    adoptFades (*this);
    return true;
}

} // namespace ZEP::Overmarks
