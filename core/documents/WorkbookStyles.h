// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/CellLook.h"
#include "core/documents/NumberFormat.h"
#include "core/documents/PartXML.h"

#include <map>
#include <string>
#include <vector>

namespace ZEP::Core
{

/** The cell formats of a workbook: the font and the number format that a cell's style number stands for.

    They are read here and not with the library that reads the cells, since that one knows no struck-through text, no colours of
    the theme, and takes what is switched off for switched on.

    Read with take() and finish(); a number without a format means plain text and a number as it is. */
class WorkbookStyles final : public PartXML
{
public:
    /** Refers to the colours, which outlive this object. */
    explicit WorkbookStyles (const WorkbookColours& coloursOfWorkbook) : colours (coloursOfWorkbook) {}

    /** The look of the workbook's plain text. */
    [[nodiscard]] CellLook plainLook() const;

    /** The look of a cell with this style number. */
    [[nodiscard]] const CellLook& lookOf (std::size_t style) const;

    /** How a cell with this style number shows its number. */
    [[nodiscard]] const NumberFormat& formatOf (std::size_t style) const;

private:
    struct CellFormat
    {
        std::size_t font;
        const NumberFormat* numbers;
    };

    void elementStarts (std::string_view name, const PartAttributes& attributes) override;
    void elementEnds (std::string_view name) override;
    void addCellFormat (const PartAttributes& attributes);
    [[nodiscard]] const NumberFormat& formatWithNumber (int number);

    const WorkbookColours& colours;
    std::string section; ///< the open child of the root
    std::vector<CellLook> fonts;
    std::map<int, std::string> codes;    ///< of number formats of the workbook's own
    std::map<int, NumberFormat> formats; ///< in use; addresses last
    std::vector<CellFormat> cellFormats;
    CellLook nothing;
    NumberFormat general;
};

} // namespace ZEP::Core
