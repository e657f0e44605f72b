#include "repository/creation_date.h"

#include <chrono>

#include "repository/names.h"
#include "repository/repository_errors.h"

namespace zelvo {

namespace {

// Whether there is such a day and such a minute; mktime would take what follows for 31 April.
bool isRealTime(const std::tm& time) {
    const std::chrono::year_month_day day(
        std::chrono::year(time.tm_year + 1900),
        std::chrono::month(static_cast<unsigned>(time.tm_mon + 1)),
        std::chrono::day(static_cast<unsigned>(time.tm_mday)));
    return day.ok() && time.tm_hour < 24 && time.tm_min < 60;
}

}  // namespace

std::string GetDateString(long time) {
    const std::time_t seconds = time;
    std::tm parts = {};
    char text[11] = {};
    if (localtime_r(&seconds, &parts) == nullptr ||
        std::strftime(text, sizeof text, "%y%m%d%H%M", &parts) == 0) {
        return ZERO_DATE;
    }
    return text;
}

void CreationDateMixin::SetDateTimeStr(const std::string& text) {
    if (text == ZERO_DATE) {
        date_time = 0;
        return;
    }
    const auto pair = [&](std::size_t at) { return (text[at] - '0') * 10 + text[at + 1] - '0'; };
    std::tm time = {};
    if (IsLabel(text)) {
        // The century is that of strptime (POSIX).
        time.tm_year = pair(0) + (pair(0) < 69 ? 100 : 0);
        time.tm_mon = pair(2) - 1;
        time.tm_mday = pair(4);
        time.tm_hour = pair(6);
        time.tm_min = pair(8);
        time.tm_isdst = -1;
    }
    if (!isRealTime(time)) {
        throw EXC(RepositoryError) % ("date '" + text + "' has wrong format");
    }
    date_time = std::mktime(&time);
}

}  // namespace zelvo
