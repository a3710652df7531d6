// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/cast/ADRCharacterMap.h"
#include "core/system/IDescribable.h"
#include "core/system/IProtobufSerializable.h"
#include "core/text/RichTextString.h"
#include "core/timecode/TimeInfo.h"
#include "event/EventType.h"

#include <juce_graphics/juce_graphics.h>

#include <cstddef>
#include <memory>
#include <string>

namespace ZEP::Overmarks
{

/** One thing on the picture's timeline: a line of dialogue to be re-recorded, a streamer, a flutter, a marker or a fade.

    All times are frame indices counted from the project's time origin; -1 means not set. What is called the start of an
    event in a cue list, its "Start TC", is the in point; the start frame is where the streamer before it begins:

        ADR cue        start         in point            end
                         |--streamer---|------line---------|
        Streamer       start         in point = end
                         |--streamer---|
        Marker         start = in point                  end
        Flutter        start = in point      end = in point + frames
        Fade           start = in point = end

    Every setter makes one undo step and tells of the change, unless setUndoBypass() or setNotificationsSuppressed() say
    otherwise. The rule that is easily missed: a list does not listen to its events, so whoever changes one sorts the list
    afterwards (EventArray::sortContentAndUpdateFilteredEvents()).

    An event is held by a std::shared_ptr; the undoable path needs one. It has no lock: one thread at a time. */
class OVERMARKS_API Event final : public ZEP::Core::IProtobufSerializable,
                                  public std::enable_shared_from_this<Event>,
                                  public ZEP::Core::IDescribable
{
public:
    /** An empty event without type, time and identity; what a stored event is loaded into. */
    Event();

    /** A copy with a new identity. It keeps its cue number but not its chosen takes nor its forced narrative. */
    Event (const Event& other);

    /** As the copy constructor, but this event also keeps its own cue number. */
    Event& operator= (const Event& other);

    /** The usual way to make an event. The start frame is not given: it follows from the in point and the type.
        @param inPointFrameIndex  frames from the time origin; -1 for an event without a time
        @param endFrameIndex      frames; -1 takes the default length of the type
        @param beatsPerMinute     tempo of a streamer in bars; -1.0 for none
        @param streamerDuration   coded duration, see setStreamerDuration(); -1 takes the preference */
    static std::shared_ptr<Event> create (EventType type, std::shared_ptr<ZEP::Core::TimeInfo> timeInfo,
                                          int inPointFrameIndex, int endFrameIndex, float beatsPerMinute,
                                          int streamerDuration);

    /** Replaces this event by a stored one. @param message  a tessera1::ProtoOvermark*. @returns true always.
        No undo step, no notification; the indices are taken as they stand and the time reference has to be set after it.
        Fields that only a newer version knows are kept, and stored again; a copy of the event doesn't get them. */
    bool initWithProtoObject (void* message) override;

    /** Stores this event. @param message  a tessera1::ProtoOvermark* made by the caller. */
    void fillProtoObject (void* message) override;

    ~Event() override;

    /** Cue number, character, text (cut to 17 characters) and start, for a line in a menu or a log. */
    juce::String oneLineDescription() override;

    /** Type and duration in words, "ADR Cue, 3 seconds". The unit follows the preference, not this event. */
    juce::String description() override;

    /** Back to the empty state; the identity, the takes, the reason and the flags of notification and undo stay. */
    void resetAllVariables();

    // ---- what it is and says ----------------------------------------------------------------------------------------
    /** A UUID in lower case, kept for life; a copy gets its own. Empty until the event is made or loaded. */
    const juce::String& getUuid() const noexcept { return uuid; }
    EventType getType() const noexcept { return type; }                     ///< A single bit; see EventType.
    const juce::String& getCueNumber() const noexcept { return cueNumber; } ///< Free text; may be empty.
    const juce::String& getCharacterID() const noexcept { return characterID; } ///< In the cast; empty: none.
    const ZEP::Core::RichTextString& getText() const noexcept { return text; } ///< Line, or a marker's label.
    const ZEP::Core::RichTextString& getNotes() const noexcept { return notes; } ///< For the studio.
    /** For the recordist. */
    const ZEP::Core::RichTextString& getEngineeringNotes() const noexcept { return engineeringNotes; }
    bool isEnabled() const noexcept { return enabled; }                 ///< Takes part in playback.
    bool isDone() const noexcept { return done; }                       ///< Has been recorded.
    bool isForcedNarrative() const noexcept { return forcedNarrative; } ///< Shown in all languages.
    /** Where on the picture a forced narrative is shown. */
    ForcedNarrativeRegion getForcedNarrativeRegion() const noexcept { return forcedNarrativeRegion; }
    int getReason() const noexcept { return reason; } ///< Code of ADRCueReasonsManager minus one.
    int getRecTrackIndex() const noexcept { return recTrackIndex; } ///< Recording track from 0; -1: none.
    int getNumRecordedTakes() const noexcept { return numRecordedTakes; } ///< 0 before the first.
    int getSelectedTake() const noexcept { return selectedTake; }         ///< Counted from 0; -1 for none.
    /** Counted from 0; -1 for none. */
    int getAltTake() const noexcept { return altTake; }

    /** The name of the type; "Fade Out" for everything that is no other type. */
    juce::String typeString() const;

    /** The character from the process-wide map, or null without one. */
    std::shared_ptr<ZEP::Core::ADRCharacter> character() const;

    static std::shared_ptr<ZEP::Core::ADRCharacterMap> getADRCharacterMap(); ///< Null without a project.
    static void setADRCharacterMap (std::shared_ptr<ZEP::Core::ADRCharacterMap> map); ///< Null: no project.

    void setText (const ZEP::Core::RichTextString& newText);   ///< What no format holds is replaced.
    void setNotes (const ZEP::Core::RichTextString& newNotes); ///< As setText().
    void setEngineeringNotes (const ZEP::Core::RichTextString& newNotes); ///< As setText().
    void setCharacterID (const juce::String& newID); ///< Key of the character map, unchecked; empty for none.
    void setCueNumber (const juce::String& newNumber); ///< Free text; what no format holds is replaced.
    /** @param newReason  code of ADRCueReasonsManager minus one. Above 0 it counts as one more use of that reason. */
    void setReason (int newReason);
    void setDone (bool isNowDone);                                   ///< Has been recorded.
    void setEnabled (bool isNowEnabled);                             ///< Takes part in playback.
    void setRecTrackIndex (int newIndex);                            ///< Recording track from 0; -1: none.
    void setNumRecordedTakes (int newNumber);                        ///< From 0; the chosen takes stay.
    void setSelectedTake (int newTake);                              ///< From 0; -1 for none. Unchecked.
    void setAltTake (int newTake);                                   ///< From 0; -1 for none. Unchecked.
    void setIsForcedNarrative (bool isNowForcedNarrative);           ///< Region and text stay.
    void setForcedNarrativeRegion (ForcedNarrativeRegion newRegion); ///< Kept for other events too.

    // ---- when it is -------------------------------------------------------------------------------------------------

    int getStartFrameIndex() const noexcept { return startFrameIndex; }     ///< -1: not set.
    int getInPointFrameIndex() const noexcept { return inPointFrameIndex; } ///< -1: not set.
    int getEndFrameIndex() const noexcept { return endFrameIndex; }         ///< -1: not set.
    int getStreamerDuration() const noexcept { return streamerDuration; }   ///< Coded; -1: not set.
    /** Unit of a streamer: 1 seconds, 0 bars, -1 not set. */
    int getTimeReference() const noexcept { return timeReference; }
    float getBeatsPerMinute() const noexcept { return beatsPerMinute; } ///< -1.0 but for a streamer in bars.
    /** Shared by all events of the project; null until one is set. */
    const std::shared_ptr<ZEP::Core::TimeInfo>& getTimeInfo() const noexcept { return timeInfo; }

    /** Plain assignment of the project's time reference: no undo step, no notification, the frame indices stay. */
    void setTimeInfo (std::shared_ptr<ZEP::Core::TimeInfo> newTimeInfo);

    /** Timecode of the in point; dashes without any time. */
    juce::String getStartTCString() const;
    /** Timecode of the end; dashes without any time. */
    juce::String getEndTCString() const;

    /** The text of getStartTCString() without making a string, for sorting many events.
        @param destination  at least ZEP::Core::TCToolbox::longestTimecode characters. @returns the number written */
    std::size_t writeStartTC (char* destination) const;
    /** The text of getEndTCString(), likewise. */
    std::size_t writeEndTC (char* destination) const;

    /** Moves the in point. A text that is no timecode takes the event's time away and makes two undo steps; the same
        value makes a step too. */
    void setStartTCString (const juce::String& timecode);
    /** Sets the end, never before the in point. A text that is no timecode takes the event's time away. */
    void setEndTCString (const juce::String& timecode);

    /** Length of the streamer in frames. Fills an unset duration from the preferences, so it writes to the event. */
    int getStreamerDurationInFrames();

    /** @param duration      streamer in seconds and ADR cue: code 1, 2, 3, 5, 267 or 333 for that many seconds (267 is 2.67);
                             streamer in bars: 1, 2 or 4; flutter: 1, 4, 8 or 12 frames
        @param updateTiming  whether start and end follow. With false and undo in force nothing happens at all. */
    void setStreamerDuration (int duration, bool updateTiming);

    /** The tempo as a whole number, "--" for none. */
    juce::String beatsPerMinuteString() const;
    /** Takes whole numbers from 21 to 299 and ignores everything else; the same value makes a step too. */
    void setBeatsPerMinuteString (const juce::String& tempo);

    /** @param resetContent  also clears what belongs to the old type: duration, end, character and text. */
    void setType (EventType newType, bool resetContent);

    void fillMissingVariableTimeReference(); ///< An unset unit is taken from the preferences.
    void fillMissingVariableBPM(); ///< In bars, an unset tempo is the preferences'; else there is none.
    void fillMissingVariableStartEndFrameIndex(); ///< From the in point; nothing without any time.
    /** The three above in their order. @param send  whether the timing notification follows, suppressed or not. */
    void fillMissingVariablesAndSendChangedNotification (bool send);

    /** Whether the event's times hang together. @param errorMessage  set to the reason when they don't. */
    bool validate (juce::String& errorMessage) const;

    // ---- how changes are made and told -------------------------------------------------------------------------------

    /** While true, setters write directly, without an undo step. For imports. */
    void setUndoBypass (bool shouldBypass) noexcept { undoBypass = shouldBypass; }
    bool isUndoBypassed() const noexcept { return undoBypass; } ///< False at first.

    /** While true, setters tell nobody. */
    void setNotificationsSuppressed (bool shouldSuppress) noexcept
    {
        notificationsSuppressed = shouldSuppress;
    }
    bool areNotificationsSuppressed() const noexcept { return notificationsSuppressed; } ///< False at first.

    /** Sends EventAttributeDidChangeNotification unless notifications are suppressed. */
    void notifyChangeIfEnabled();

    // ---- carried for the list and the applications -------------------------------------------------------------------

    /** Asks the memory for what sorting and filtering look at. A long list does so some events ahead; it would wait for each of them
        otherwise. Changes nothing. */
    void fetch() const noexcept
    {
        __builtin_prefetch (&enabled);
        __builtin_prefetch (&cueNumber);
        __builtin_prefetch (&text.getText());
        asm volatile(""); // a compiler leaves out what seems to do nothing
    }

    /** Whether the event is listed only as a neighbour of what the filter looks for. Written by the list. */
    bool isHiddenByFilter() const noexcept { return hiddenByFilter; }
    void setHiddenByFilter (bool shouldBeHidden) noexcept { hiddenByFilter = shouldBeHidden; } ///< By lists.

    bool getStoredFlag() const noexcept { return storedFlag; }           ///< The application's; it is stored.
    void setStoredFlag (bool newFlag) noexcept { storedFlag = newFlag; } ///< No undo, no news.
    bool getApplicationFlagA() const noexcept { return applicationFlagA; } ///< The application's; not stored.
    void setApplicationFlagA (bool newFlag) noexcept { applicationFlagA = newFlag; } ///< No undo, no news.
    bool getApplicationFlagB() const noexcept { return applicationFlagB; }           ///< Likewise.
    void setApplicationFlagB (bool newFlag) noexcept { applicationFlagB = newFlag; } ///< No undo, no news.
    juce::Colour getDisplayColour() const noexcept { return displayColour; } ///< The application's own.
    void setDisplayColour (juce::Colour newColour) noexcept { displayColour = newColour; } ///< Without undo.

private:
    friend struct EventFields;

    struct FrameIndices;
    enum class News;

    template <typename Change, typename... Values>
    void change (const char* undoName, News news, Change makeChange, Values Event::*... saved);
    template <typename Value>
    void changeField (Value Event::*field, Value newValue, const char* undoName);
    void setRichText (ZEP::Core::RichTextString Event::*field, const ZEP::Core::RichTextString& newText,
                      const char* undoName);

    void announce (News news);
    void sendTimingNews();
    template <typename NotificationClass>
    void post();

    void copyAllButCueNumber (const Event& other);
    juce::String durationText() const;
    std::size_t writeTimecode (int frameIndex, char* destination) const;
    int framesPerSecond() const noexcept;
    FrameIndices indicesForInPoint (int newInPoint);
    void changeIndices (const char* undoName, const FrameIndices& newIndices);
    int streamerFramesInBars() const;
    int streamerFramesInSeconds() const;
    void deriveStreamer();
    void deriveMarker();
    void deriveFlutter();
    void deriveADRCue();

    // What lists are ordered and filtered by stands together, in two or three lines of the cache; see fetch().
    bool enabled = true;
    bool done = false;
    bool hiddenByFilter = false;
    bool forcedNarrative = false;
    int numRecordedTakes = 0;
    int streamerDuration = -1;
    int recTrackIndex = -1;
    int reason = -1;
    float beatsPerMinute = -1.0f;
    EventType type = eventTypeUnset;
    int startFrameIndex = -1;
    int endFrameIndex = -1;
    int inPointFrameIndex = -1;
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo;
    juce::String cueNumber;
    juce::String characterID;
    ZEP::Core::RichTextString text;

    ZEP::Core::RichTextString notes;
    ZEP::Core::RichTextString engineeringNotes;
    juce::String uuid;
    int selectedTake = -1;
    int altTake = -1;
    int timeReference = -1;
    ForcedNarrativeRegion forcedNarrativeRegion = ForcedNarrativeRegionBottom;
    bool notificationsSuppressed = false;
    bool undoBypass = false;
    bool applicationFlagA = true;
    bool applicationFlagB = true;
    bool storedFlag = false;
    std::string newerFields; ///< what a newer version has stored with this event, kept for it
    juce::Colour displayColour = juce::Colours::transparentBlack;
};

} // namespace ZEP::Overmarks
