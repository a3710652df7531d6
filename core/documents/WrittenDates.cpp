// SPDX-License-Identifier: GPL-3.0-only
//   yyyy-mm-ddThh:mm:ss.fff      the date, or the time and its T, or the seconds or their fraction may be missing; a blank may stand
//                                in place of the T
//   ...Z, ...+hh:mm, ...-hh:mm   the zone behind a time: passed over, since a cell shows the clock where it was written
#include "core/documents/WrittenDates.h"

#include "core/documents/PartXML.h"
#include "core/documents/WorkbookStyles.h"

#include <chrono>
#include <cmath>
#include <optional>

namespace ZEP::Core
{
namespace
{

constexpr int msOfDay = 86400000;
constexpr int msOfSecond = 1000;

/** Day and time of a workbook. */
struct Moment
{
    int day = 0;
    int ms = 0;
};

/** Takes a number of two digits from the front; -1 if there is none. */
int takeTwoDigits (std::string_view& text)
{
    const auto number = text.size() < 2 ? -1 : wholeNumber (text.substr (0, 2));
    text.remove_prefix (number < 0 ? 0 : 2);
    return number;
}

bool take (std::string_view& text, char sign)
{
    const bool isThere = text.starts_with (sign);
    text.remove_prefix (isThere ? 1 : 0);
    return isThere;
}

/** @returns -1 for what isn't digits */
int msOfFraction (std::string_view digits)
{
    const auto number = wholeNumber (digits);

    if (number < 0)
        return -1;

    return static_cast<int> (
        std::lround (number * std::pow (10.0, -static_cast<double> (digits.size())) * msOfSecond));
}

std::optional<int> msOfTime (std::string_view text)
{
    const auto hours = takeTwoDigits (text);
    const auto minutes = take (text, ':') ? takeTwoDigits (text) : -1;
    const auto seconds = take (text, ':') ? takeTwoDigits (text) : 0;
    const auto fraction = take (text, '.') ? msOfFraction (text) : text.empty() ? 0 : -1;

    if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 59 || fraction < 0)
        return std::nullopt;

    return ((hours * 60 + minutes) * 60 + seconds) * msOfSecond + fraction;
}

/** A written date without the zone behind its time. */
std::string_view withoutZone (std::string_view written)
{
    constexpr std::size_t lengthOfOffset = 6; // +01:00
    constexpr int mostHours = 14;

    if (written.find (':') == std::string_view::npos)
        return written;
    if (written.ends_with ('Z'))
        return written.substr (0, written.size() - 1);
    if (written.size() < lengthOfOffset)
        return written;

    auto offset = written.substr (written.size() - lengthOfOffset);

    if (! take (offset, '+') && ! take (offset, '-'))
        return written;

    const auto hours = takeTwoDigits (offset);
    const auto minutes = take (offset, ':') ? takeTwoDigits (offset) : -1;
    const bool isZone = hours >= 0 && hours <= mostHours && minutes >= 0 && minutes <= 59;
    return isZone ? written.substr (0, written.size() - lengthOfOffset) : written;
}

/** The day as a workbook counts it. */
std::optional<int> dayOfDate (std::string_view text, bool countsFrom1904)
{
    using namespace std::chrono;
    constexpr sys_days dayOfTimes (1899y / December / 30);

    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;

    const auto parts = { wholeNumber (text.substr (0, 4)), wholeNumber (text.substr (5, 2)),
                         wholeNumber (text.substr (8, 2)) };
    const auto* part = parts.begin();
    const year_month_day date { year (part[0]), month (static_cast<unsigned> (part[1])),
                                std::chrono::day (static_cast<unsigned> (part[2])) };

    if (part[0] < 0 || part[1] < 0 || part[2] < 0 || ! date.ok())
        return std::nullopt;
    if (sys_days (date) == dayOfTimes)
        return 0;

    const sys_days first = countsFrom1904                                   ? sys_days (1904y / January / 1)
                           : sys_days (date) < sys_days (1900y / March / 1) ? sys_days (1899y / December / 31)
                                                                            : dayOfTimes;
    const auto day = static_cast<int> ((sys_days (date) - first).count());
    return day < 0 ? std::nullopt : std::optional (day);
}

std::optional<Moment> momentOf (std::string_view written, bool countsFrom1904)
{
    const auto between = written.find_first_of ("T ");
    const bool isTime = between == std::string_view::npos && written.find (':') != std::string_view::npos;
    const auto date = isTime ? std::string_view() : written.substr (0, between);
    const auto time = isTime                              ? written
                      : between == std::string_view::npos ? std::string_view()
                                                          : written.substr (between + 1);
    const auto day = date.empty() ? std::optional (0) : dayOfDate (date, countsFrom1904);
    const auto ms = between == std::string_view::npos && ! isTime ? std::optional (0) : msOfTime (time);

    if (written.empty() || ! day.has_value() || ! ms.has_value())
        return std::nullopt;

    return Moment { *day, *ms };
}

} // namespace

WrittenDates::WrittenDates (const WorkbookStyles& stylesOfWorkbook, bool daysCountFrom1904)
    : styles (stylesOfWorkbook),
      countsFrom1904 (daysCountFrom1904),
      date ("yyyy-mm-dd"),
      dateAndTime ("yyyy-mm-dd hh:mm:ss"),
      dateAndFraction ("yyyy-mm-dd hh:mm:ss.000")
{
}

std::string WrittenDates::shown (std::string_view written, std::size_t style) const
{
    const auto moment = momentOf (withoutZone (written), countsFrom1904);

    if (! moment.has_value())
        return std::string (written);

    const auto& own = styles.formatOf (style);
    const auto& format = own.showsTime()                       ? own
                         : moment->ms % msOfSecond != 0        ? dateAndFraction
                         : moment->ms == 0 && moment->day != 0 ? date
                                                               : dateAndTime;
    return format.shown (moment->day + static_cast<double> (moment->ms) / msOfDay, countsFrom1904);
}

} // namespace ZEP::Core
