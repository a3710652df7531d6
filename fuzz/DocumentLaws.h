// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/EventExcelExporter.h"
#include "export/frame/EventExportSettingsSet.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

using Events = ZEP::Overmarks::EventExportSettingsSet::Events;

/** Writes events as every document that needs no other program, and holds what it wrote against what its form promises. */
class DocumentLaws final
{
public:
    /** @param folder  empty; gets the documents */
    DocumentLaws (Events eventsToWrite, std::shared_ptr<ZEP::Core::TimeInfo> time,
                  std::filesystem::path folder);

    void checkAll() const;

private:
    using Settings = std::shared_ptr<ZEP::Overmarks::EventExportSettingsSet>;

    void checkOwnTable() const;
    void checkTakerTables() const;
    void checkTTAL() const;
    void checkWorkbook() const;
    void checkSheets() const;
    void checkWordJSON() const;
    void checkFixedColumns() const;
    void checkByCharacter() const;
    void checkOverview() const;

    [[nodiscard]] bool hasRowsOfOneLine() const;
    [[nodiscard]] bool fitsIntoWorkbook (
        const std::vector<ZEP::Overmarks::EventExcelExporter::Row>& table) const;
    [[nodiscard]] Settings settings (int type, const char* fileName) const;
    [[nodiscard]] std::string written (const char* fileName) const;
    [[nodiscard]] Events readBack (const char* fileName) const;

    Events events;
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo;
    std::filesystem::path directory;
};
