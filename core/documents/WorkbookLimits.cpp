// SPDX-License-Identifier: GPL-3.0-only
// The limits of workbooks, which an application may set before anything that reads one is loaded.
#include "core/documents/WorkbookArchive.h"

namespace ZEP::Core
{

WorkbookArchive::Limits& WorkbookArchive::limits()
{
    static Limits current;
    return current;
}

} // namespace ZEP::Core
