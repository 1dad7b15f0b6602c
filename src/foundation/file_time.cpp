// SPDX-License-Identifier: MIT
#include "foundation/file_utils.h"

#include "foundation/platform.h"

#include <chrono>
#include <cstdio>

namespace Quenza::FileUtils {

String getFileTimeText(const String& path) {
    i64 seconds = 0;
    if (!PlatformUtils::fileTime(path, seconds))
        throw FileUtilsExcep("Could not find file '" + path + "'");
    return fileTimeToString(seconds);
}

String fileTimeToString(i64 seconds) {
    using namespace std::chrono;
    static const char* const DAYS[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const MONTHS[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const sys_seconds time{std::chrono::seconds(seconds)};
    const sys_days day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    char text[64];
    std::snprintf(text, sizeof text, "%s, %02u %s %04d %02d:%02d:%02d", DAYS[weekday(day).c_encoding()],
                  unsigned(date.day()), MONTHS[unsigned(date.month()) - 1], int(date.year()),
                  int(clock.hours().count()), int(clock.minutes().count()), int(clock.seconds().count()));
    return text;
}

} // namespace Quenza::FileUtils
