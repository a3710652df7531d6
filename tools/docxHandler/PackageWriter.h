// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct zip;
struct zip_source;

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
    struct SourceRelease
    {
        void operator() (zip_source* source) const noexcept;
    };
    struct ArchiveDiscard
    {
        void operator() (zip* archive) const noexcept;
    };

    std::deque<std::string> contents; ///< kept until finish(), each in its place
    std::unique_ptr<zip_source, SourceRelease> bytes;
    std::unique_ptr<zip, ArchiveDiscard> archive;
};

} // namespace DocxHandler
