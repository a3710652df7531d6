// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct zip;
struct zip_stat;

namespace DocxHandler
{

/** A package of parts that comes from a stranger. What all its parts claim to become is judged before anything is inflated, and not
    believed then: no part is inflated beyond the size that it may have, and nothing is ever written to a path. Refusals are Failures whose words go on after the file's name: "is
    encrypted". */
class PackageReader final
{
public:
    /** @param bytes  stay the caller's and have to outlive the reader */
    explicit PackageReader (std::string_view bytes);

    [[nodiscard]] bool has (const std::string& part) const;

    /** The bytes of a part; empty if there is no such part. */
    [[nodiscard]] std::string read (const std::string& part, std::size_t largest) const;

private:
    struct ArchiveDiscard
    {
        void operator() (zip* archive) const noexcept;
    };

    void judgeContent (std::uint64_t bytesOfPackage) const;
    [[nodiscard]] struct zip_stat stateOf (std::uint64_t index) const;

    std::unique_ptr<zip, ArchiveDiscard> archive;
};

} // namespace DocxHandler
