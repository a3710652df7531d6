// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/print/PageRequests.h"

#include <nlohmann/json.hpp>

namespace ZEP::Overmarks
{

struct PageRequests::Reply
{
    const char* method;
    nlohmann::json parameters;
};

} // namespace ZEP::Overmarks
