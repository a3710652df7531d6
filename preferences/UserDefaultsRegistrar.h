// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

namespace ZEP::Overmarks
{
/** Makes the defaults of all preferences known to the preference store.

    The application calls this once at its start, before it makes any event: an event takes its length,
    preroll and tempo from there. What the user stored stays, and a second call changes nothing.
*/
class OVERMARKS_API UserDefaultsRegistrar final
{
public:
    UserDefaultsRegistrar() = delete;

    static void registerUserDefaults(); ///< Before the first event is made.
};
} // namespace ZEP::Overmarks
