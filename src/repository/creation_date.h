// The date of a backup or of a file of it.
#pragma once

#include <ctime>
#include <string>

namespace zelvo {

// The ten digits "%y%m%d%H%M" (strftime, POSIX) of a time, seconds since the epoch, in local time.
std::string GetDateString(long time);

// Base of records that carry a date.
class CreationDateMixin {
  public:
    // time: seconds since the epoch.
    void SetDateTime(long time) { date_time = time; }
    void SetDateTime(const CreationDateMixin& other) { date_time = other.date_time; }
    // text: in the form of GetDateString. Raises RepositoryError for another form.
    void SetDateTimeStr(const std::string& text);

    std::time_t GetDateTime() const { return date_time; }
    std::string GetDateTimeStr() const { return GetDateString(date_time); }

  protected:
    std::time_t date_time = 0;
};

}  // namespace zelvo
