// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ImportLimits.h"

namespace ZEP::Overmarks
{

ImportLimits& ImportLimits::limits()
{
    static ImportLimits current;
    return current;
}

} // namespace ZEP::Overmarks
