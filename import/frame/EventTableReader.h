// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/frame/CastCollector.h"
#include "import/frame/CellReading.h"
#include "import/frame/EventRowReader.h"
#include "import/frame/ReasonCellReader.h"
#include "import/frame/TimeCellReader.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace ZEP::Overmarks
{

/** One reading of one table: what EventRowReader does. The columns and the preferences are looked up once, so
    that a row costs no more than its cells. Make one for each table. */
class EventTableReader final
{
public:
    using Row = std::vector<Core::RichTextString>;
    using Rows = std::vector<Row>;

    /** @param fileCast  cast of the file, or null; see CastCollector. The casts must outlive this. */
    EventTableReader (std::shared_ptr<Core::TimeInfo> projectTime, Core::ADRCharacterMap& projectCast,
                      const Core::ADRCharacterMap* fileCast, EventRowReaderOptions chosen);

    /** One of these is to be called, once. */
    [[nodiscard]] EventRowResult read (const Rows& table, const std::map<juce::String, int>& columnMap,
                                       int firstRow);
    [[nodiscard]] EventRowResult readAndEmpty (Rows& table, const std::map<juce::String, int>& columnMap,
                                               int firstRow);

private:
    /** The columns that are read, in the order of their titles. */
    enum class Column : std::size_t;
    static constexpr std::size_t numberOfColumns = 18;

    /** Where a row says that its event is. */
    struct Place
    {
        std::optional<int> inPoint; ///< frame index; nothing for an event without a time
        std::optional<int> end;     ///< frame index, not before the in point; nothing for the default length
    };

    static const juce::String& titleOf (Column column);
    void assignColumns (const std::map<juce::String, int>& columnMap);

    [[nodiscard]] const Core::RichTextString* cellOf (Column column) const;
    [[nodiscard]] const juce::String& textOf (Column column) const;
    [[nodiscard]] bool isBlankRow() const;
    void report (Column column, const juce::String& message,
                 EventRowProblemKind kind = EventRowProblemKind::other);

    template <typename Value, typename Reading>
    [[nodiscard]] Value valueOf (Column column, Value ofEmptyCell, Reading&& reading, const char* complaint);

    template <typename Table, typename Done>
    EventRowResult readRows (Table& table, const std::map<juce::String, int>& columnMap, int firstRow,
                             Done done);
    void readRow();
    [[nodiscard]] EventType readType();
    [[nodiscard]] Place readPlace();
    [[nodiscard]] std::optional<int> readTime (Column column, bool& unreadable);
    [[nodiscard]] int readDuration (EventType type);
    std::optional<int> endOfFlutter (int inPoint, int duration);
    [[nodiscard]] std::shared_ptr<Event> createEvent (EventType type);
    [[nodiscard]] std::shared_ptr<Event> createPlaced (EventType type, const Place& place, float tempo,
                                                       int duration) const;
    void readTexts (Event& event) const;
    void readFlags (Event& event);
    void readNumbers (Event& event);
    void readCharacter (Event& event);

    std::shared_ptr<Core::TimeInfo> timeInfo;
    EventRowReaderOptions options;
    TimeCellReader times;
    ReasonCellReader reasons;
    CastCollector cast;
    bool streamersInBars;

    std::array<int, numberOfColumns> cellIndices {}; ///< for each column; -1 for none
    const Row* row = nullptr;
    int rowIndex = 0;
    EventRowResult result;
};

} // namespace ZEP::Overmarks
