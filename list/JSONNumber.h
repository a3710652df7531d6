// SPDX-License-Identifier: GPL-3.0-only
#pragma once

namespace ZEP::Overmarks
{

/** A float as the number that is written for it in JSON: with no more digits than it needs to come back the same, so that
    7.4 stays 7.4. JSON has no word for infinities and what is no number; they become -1, which is "not set". */
double shortestJSONNumber (float value);

} // namespace ZEP::Overmarks
