// SPDX-License-Identifier: GPL-3.0-only
// The stored form of a project, a tessera1::ProtoProject, apart from that of its list.
#include "list/ProjectRecord.h"

#include "core/system/ProtoRecord.h"
#include "core/text/StringUtil.h"
#include "proto/overmarks.pb.h"

#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace ZEP::Overmarks
{

using tessera1::ProtoCharacter;
using tessera1::ProtoDocumentSettings;
using tessera1::ProtoProject;
using tessera1::ProtoTimecode;
using tessera1::ProtoTimeInfo;
using ZEP::Core::_TCTime;
using ZEP::Core::ADRCharacter;
using ZEP::Core::ADRCharacterMap;
using ZEP::Core::ProtoRecord;
using ZEP::Core::StringUtil;
using ZEP::Core::TimeInfo;

namespace
{

// ---- time ----------------------------------------------------------------------------------------------------------------

void fillTimecode (ProtoTimecode& record, const _TCTime& time)
{
    record.set_hours (time.hours);
    record.set_minutes (time.minutes);
    record.set_seconds (time.seconds);
    record.set_frames (time.frames);
    record.set_subframes (time.subFrames);
    record.set_subframesperframe (time.subFramesPerFrame);
    record.set_invalid (time.invalid);
}

/** A number of a record for a field of one byte. */
std::uint8_t oneByte (std::uint32_t stored, const char* name)
{
    if (stored > std::numeric_limits<std::uint8_t>::max())
        throw std::invalid_argument (std::string ("its time reference has ") + std::to_string (stored) + " "
                                     + name);

    return static_cast<std::uint8_t> (stored);
}

_TCTime readTimecode (const ProtoTimecode& record)
{
    _TCTime time;
    time.hours = record.hours();
    time.minutes = record.minutes();
    time.seconds = record.seconds();
    time.frames = record.frames();
    time.subFrames = record.subframes();
    time.invalid = record.invalid();

    if (record.subframesperframe() != 0)
        time.subFramesPerFrame = oneByte (record.subframesperframe(), "subframes in a frame");

    return time;
}

/** Whether it stays where it is when the origin moves. @param info  a copy */
bool hasFirstFrameOfAction (TimeInfo info)
{
    const auto action = info.getFirstFrameOfAction();
    info.timeOrigin.hours ^= 1;
    return info.getFirstFrameOfAction() == action;
}

void fillTimeInfo (ProtoTimeInfo& record, const TimeInfo& info, const Project::NewerFields& newer)
{
    fillTimecode (*record.mutable_timeorigin(), info.timeOrigin);
    ProtoRecord::addNewerFields (*record.mutable_timeorigin(), newer.timeOrigin);

    if (hasFirstFrameOfAction (info))
    {
        fillTimecode (*record.mutable_firstframeofaction(), info.getFirstFrameOfAction());
        ProtoRecord::addNewerFields (*record.mutable_firstframeofaction(), newer.firstFrameOfAction);
    }

    ProtoRecord::addNewerFields (record, newer.timeInfo);
    record.set_frameratenumerator (info.tcDef.frameRateNumerator);
    record.set_frameratedenominator (info.tcDef.frameRateDenominator);
    record.set_framespersecond (info.tcDef.framesPerSecond);
    record.set_dropframe (info.tcDef.dropFrame);
    record.set_rateundefined (info.tcDef.undefined);
}

std::shared_ptr<TimeInfo> readTimeInfo (const ProtoTimeInfo& record)
{
    auto info = std::make_shared<TimeInfo>();
    info->timeOrigin = readTimecode (record.timeorigin());
    info->tcDef.frameRateNumerator = record.frameratenumerator();
    info->tcDef.frameRateDenominator = record.frameratedenominator();
    info->tcDef.framesPerSecond = oneByte (record.framespersecond(), "frames in a second");
    info->tcDef.dropFrame = record.dropframe();
    info->tcDef.undefined = record.rateundefined();

    if (record.has_firstframeofaction())
        info->setFirstFrameOfAction (readTimecode (record.firstframeofaction()));

    return info;
}

// ---- cast ----------------------------------------------------------------------------------------------------------------

void fillCharacters (ProtoProject& record, const Project& project)
{
    const auto& newer = project.newerFields.characters;

    for (const auto& id : project.characters->characterIDs())
    {
        const auto character = project.characters->characterForID (id);
        auto& stored = *record.add_characters();
        stored.set_id (ProtoRecord::text (id));
        stored.set_name (ProtoRecord::text (character->name));
        stored.set_prefix (ProtoRecord::text (character->prefix));
        stored.set_actor (ProtoRecord::text (character->actor));

        if (const auto found = newer.find (id); found != newer.end())
            ProtoRecord::addNewerFields (stored, found->second);
    }
}

void readCharacter (const ProtoCharacter& record, Project& project)
{
    auto character = std::make_shared<ADRCharacter> (StringUtil::fromUTF8 (record.name()));
    character->prefix = StringUtil::fromUTF8 (record.prefix());
    character->actor = StringUtil::fromUTF8 (record.actor());
    const auto storedID = StringUtil::fromUTF8 (record.id());
    // Of two under one identifier the later one would take the first one's place; the cues stay with the first.
    const bool isFree = ! project.characters->contains (storedID);
    const auto id = project.characters->addCharacter (character, isFree, storedID);

    if (auto newer = ProtoRecord::newerFields (record); ! newer.empty())
        project.newerFields.characters[id] = std::move (newer);
}

// ---- documents -----------------------------------------------------------------------------------------------------------

/** Finds the field of a record by the name that the settings' own table gives it. */
struct SettingsFields
{
    static const google::protobuf::FieldDescriptor* named (const char* name)
    {
        return ProtoDocumentSettings::descriptor()->FindFieldByName (name);
    }
};

struct SettingsWriter
{
    ProtoDocumentSettings& record;
    const google::protobuf::Reflection& reflection = *ProtoDocumentSettings::GetReflection();

    void operator() (const char* name, const juce::String& value) const
    {
        reflection.SetString (&record, SettingsFields::named (name), ProtoRecord::text (value));
    }
    void operator() (const char* name, int value) const
    {
        reflection.SetInt32 (&record, SettingsFields::named (name), value);
    }
    void operator() (const char* name, bool value) const
    {
        reflection.SetBool (&record, SettingsFields::named (name), value);
    }
};

struct SettingsReader
{
    const ProtoDocumentSettings& record;
    const google::protobuf::Reflection& reflection = *ProtoDocumentSettings::GetReflection();

    void operator() (const char* name, juce::String& value) const
    {
        value = StringUtil::fromUTF8 (reflection.GetString (record, SettingsFields::named (name)));
    }
    void operator() (const char* name, int& value) const
    {
        value = reflection.GetInt32 (record, SettingsFields::named (name));
    }
    void operator() (const char* name, bool& value) const
    {
        value = reflection.GetBool (record, SettingsFields::named (name));
    }
};

// ---- list ----------------------------------------------------------------------------------------------------------------

void fillMissingFade (ProtoProject& record, const Project& project, EventType type,
                      const std::shared_ptr<Event>& former)
{
    // As the list itself finds its fades: in a damaged file an event may be of several types.
    if (! project.list->eventsWithTypeMask (type).empty())
        return;

    const bool canReturn = former != nullptr && former->getType() == type;
    const auto fade = canReturn ? former : project.createFade (type);
    fade->fillProtoObject (record.mutable_list()->add_events());
}

void fillList (ProtoProject& record, const Project& project)
{
    project.list->fillProtoObject (record.mutable_list());
    fillMissingFade (record, project, EventTypeFadeIn, project.list->fadeInEvent);
    fillMissingFade (record, project, EventTypeFadeOut, project.list->fadeOutEvent);
}

void readList (ProtoProject& record, Project& project)
{
    try
    {
        project.list->initWithProtoObject (record.mutable_list());
    }
    catch (const std::out_of_range&)
    {
        throw std::invalid_argument ("its list has no Fade In or no Fade Out");
    }

    project.list->setTimeInfoForAllEvents (project.timeInfo);
}

} // namespace

void ProjectRecord::fill (ProtoProject& record, const Project& project)
{
    const auto& newer = project.newerFields;
    record.set_formatversion (formatVersion);
    record.set_name (ProtoRecord::text (project.name));
    fillTimeInfo (*record.mutable_timeinfo(), *project.timeInfo, newer);
    fillCharacters (record, project);

    for (const auto& reason : project.userReasons)
        record.add_userreasons (ProtoRecord::text (reason));

    DocumentSettings::visit (project.documents, SettingsWriter { *record.mutable_documentsettings() });
    ProtoRecord::addNewerFields (*record.mutable_documentsettings(), newer.documents);
    fillList (record, project);
    ProtoRecord::addNewerFields (record, newer.project);
}

Project ProjectRecord::read (ProtoProject& record)
{
    auto project = Project::createEmpty (record.has_timeinfo() ? readTimeInfo (record.timeinfo())
                                                               : std::make_shared<TimeInfo>());
    project.name = StringUtil::fromUTF8 (record.name());
    project.newerFields.project = ProtoRecord::newerFields (record);
    project.newerFields.timeInfo = ProtoRecord::newerFields (record.timeinfo());
    project.newerFields.timeOrigin = ProtoRecord::newerFields (record.timeinfo().timeorigin());
    project.newerFields.firstFrameOfAction =
        ProtoRecord::newerFields (record.timeinfo().firstframeofaction());
    project.newerFields.documents = ProtoRecord::newerFields (record.documentsettings());

    for (const auto& character : record.characters())
        readCharacter (character, project);

    for (const auto& reason : record.userreasons())
        project.userReasons.push_back (StringUtil::fromUTF8 (reason));

    DocumentSettings::visit (project.documents, SettingsReader { record.documentsettings() });
    readList (record, project);
    return project;
}

} // namespace ZEP::Overmarks
