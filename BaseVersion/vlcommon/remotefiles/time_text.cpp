// The time of a remote file in words: date and time of day as the user's language writes them.
#include "text/twin.h"
#include "vlcm/remote_files.h"

namespace vl::remotefiles {
namespace {

constexpr size_t kPartSize = 260;

constexpr DWORD kDateFlags = LOCALE_NOUSEROVERRIDE | DATE_SHORTDATE;
constexpr DWORD kTimeFlags = LOCALE_NOUSEROVERRIDE | TIME_NOSECONDS;

bool format_date(const SYSTEMTIME& time, char (&text)[kPartSize]) {
    return GetDateFormatA(LOCALE_USER_DEFAULT, kDateFlags, &time, nullptr, text, kPartSize) != 0;
}
bool format_date(const SYSTEMTIME& time, wchar_t (&text)[kPartSize]) {
    return GetDateFormatW(LOCALE_USER_DEFAULT, kDateFlags, &time, nullptr, text, kPartSize) != 0;
}
bool format_time(const SYSTEMTIME& time, char (&text)[kPartSize]) {
    return GetTimeFormatA(LOCALE_USER_DEFAULT, kTimeFlags, &time, nullptr, text, kPartSize) != 0;
}
bool format_time(const SYSTEMTIME& time, wchar_t (&text)[kPartSize]) {
    return GetTimeFormatW(LOCALE_USER_DEFAULT, kTimeFlags, &time, nullptr, text, kPartSize) != 0;
}

// The time stays as the remote device gave it: no conversion to local time.
template <typename Char>
uint32_t write_time(const FILETIME* file_time, Char* buffer, uint32_t size) {
    if (file_time == nullptr || buffer == nullptr || size == 0) return 0;
    SYSTEMTIME time{};
    if (!FileTimeToSystemTime(file_time, &time)) return 0;
    Char date[kPartSize];
    Char clock[kPartSize];
    if (!format_date(time, date) || !format_time(time, clock)) return 0;
    const size_t date_length = text::length_of(date);
    const size_t clock_length = text::length_of(clock);
    const size_t length = date_length + 1 + clock_length;
    if (length >= size) return 0;
    memcpy(buffer, date, date_length * sizeof(Char));
    buffer[date_length] = ' ';
    memcpy(buffer + date_length + 1, clock, (clock_length + 1) * sizeof(Char));
    return static_cast<uint32_t>(length);
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
