// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace DocxHandler
{

/** A package of parts, the ZIP file that a document is, in memory. The same parts give the same bytes at any time. */
class PackageWriter final
{
public:
    PackageWriter();
    PackageWriter (const PackageWriter&) = delete;
    PackageWriter& operator= (const PackageWriter&) = delete;
    ~PackageWriter();

    void add (std::string_view name, std::string content);

    /** The finished package; nothing can be added any more. @param progress  is told the share that is done, 0 to 1 */
    [[nodiscard]] std::string finish (const std::function<void (double)>& progress);

private:
    struct Part
    {
        std::string name;
        std::string content;
    };

    std::vector<Part> parts;
};

} // namespace DocxHandler
