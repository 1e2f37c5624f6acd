// The time of a remote file in words: date and time of day as the user's language writes them.
#include "vlcm/remote_files.h"

#include <string.h>

namespace vl::remotefiles {
namespace {

constexpr size_t kPartSize = 260;

constexpr DWORD kDateFlags = LOCALE_NOUSEROVERRIDE | DATE_SHORTDATE;
constexpr DWORD kTimeFlags = LOCALE_NOUSEROVERRIDE | TIME_NOSECONDS;

// Each gives the length of the text with its terminator, or 0.
int format_date(const SYSTEMTIME& time, char (&text)[kPartSize]) {
    return GetDateFormatA(LOCALE_USER_DEFAULT, kDateFlags, &time, nullptr, text, kPartSize);
}
int format_date(const SYSTEMTIME& time, wchar_t (&text)[kPartSize]) {
    return GetDateFormatW(LOCALE_USER_DEFAULT, kDateFlags, &time, nullptr, text, kPartSize);
}
int format_time(const SYSTEMTIME& time, char (&text)[kPartSize]) {
    return GetTimeFormatA(LOCALE_USER_DEFAULT, kTimeFlags, &time, nullptr, text, kPartSize);
}
int format_time(const SYSTEMTIME& time, wchar_t (&text)[kPartSize]) {
    return GetTimeFormatW(LOCALE_USER_DEFAULT, kTimeFlags, &time, nullptr, text, kPartSize);
}

// The time stays as the remote device gave it: no conversion to local time.
template <typename Char>
uint32_t write_time(const FILETIME* file_time, Char* buffer, uint32_t size) {
    if (file_time == nullptr || buffer == nullptr || size == 0) return 0;
    SYSTEMTIME time;
    if (!FileTimeToSystemTime(file_time, &time)) return 0;
    Char date[kPartSize];
    Char clock[kPartSize];
    const auto date_size = static_cast<uint32_t>(format_date(time, date));
    if (date_size == 0) return 0;
    const auto clock_size = static_cast<uint32_t>(format_time(time, clock));
    if (clock_size == 0 || date_size + clock_size > size) return 0;
    date[date_size - 1] = ' ';  // in the place of the terminator
    memcpy(buffer, date, date_size * sizeof(Char));
    memcpy(buffer + date_size, clock, clock_size * sizeof(Char));
    return date_size + clock_size - 1;
}

}  // namespace
}  // namespace vl::remotefiles

extern "C" uint32_t VlCm_GetFTPFileTimeString(const FILETIME* fileTime, char* buffer, uint32_t bufferSize) {
    return vl::remotefiles::write_time(fileTime, buffer, bufferSize);
}

extern "C" uint32_t VlCm_GetFTPFileTimeStringW(const FILETIME* fileTime, wchar_t* buffer,
                                               uint32_t bufferSize) {
    return vl::remotefiles::write_time(fileTime, buffer, bufferSize);
}
