// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <locale.h>

namespace ZEP::Core
{

/** What the environment says of the user's place, without changing the locale of the process, which belongs to the
    application. Any thread. */
class UserLocale final
{
public:
    /** @param categories  a mask such as LC_PAPER_MASK  @param name  of another locale than the environment's */
    explicit UserLocale (int categories, const char* name = "")
        : locale (::newlocale (categories, name, nullptr))
    {
    }

    UserLocale (const UserLocale&) = delete;
    UserLocale& operator= (const UserLocale&) = delete;

    ~UserLocale()
    {
        if (exists())
            ::freelocale (locale);
    }

    /** False where the environment names a locale that isn't installed. */
    [[nodiscard]] bool exists() const noexcept { return locale != nullptr; }

    [[nodiscard]] locale_t get() const noexcept { return locale; }

private:
    locale_t locale;
};

} // namespace ZEP::Core
