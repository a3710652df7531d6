// SPDX-License-Identifier: GPL-3.0-only
// Stands in for a library for documents of another version, of which nothing but the version may be looked at.

namespace
{

struct Operations
{
    const char* version;
};

constexpr Operations operations { "0.0.1-older" };

} // namespace

extern "C" __attribute__ ((visibility ("default"))) const Operations* overmarksDocuments();

const Operations* overmarksDocuments() { return &operations; }
