#include "floor.h"

#include <stdio.h>
#include <string.h>
#include <wchar.h>

namespace {

constexpr UINT kBytesWordId = 1217;
constexpr int kWordSize = 128;
constexpr int kUtf8Size = 260;
constexpr int kPartSize = 260;

// The language library stays loaded, as the contract asks.
void load_word(wchar_t (&word)[kWordSize]) {
    LoadStringW(LoadLibraryA("Vl2Res.dll"), kBytesWordId, word, kWordSize);
}

uint32_t write_utf8(const wchar_t* text, char* buffer, uint32_t size) {
    char utf8[kUtf8Size];
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8, kUtf8Size, nullptr, nullptr);
    if (static_cast<uint32_t>(bytes) > size) return 0;
    memcpy(buffer, utf8, static_cast<size_t>(bytes));
    return static_cast<uint32_t>(wcslen(text));
}

}  // namespace

extern "C" uint32_t Floor_SizeText(float kilobytes, char* buffer, uint32_t size) {
    wchar_t word[kWordSize];
    load_word(word);
    wchar_t text[kUtf8Size];
    _snwprintf(text, kUtf8Size, L"%.2f KB", static_cast<double>(kilobytes));
    return write_utf8(text, buffer, size);
}

extern "C" uint32_t Floor_SizeTextWithCount(float gigabytes, const wchar_t* count, char* buffer,
                                            uint32_t size) {
    wchar_t word[kWordSize];
    load_word(word);
    wchar_t text[kUtf8Size];
    _snwprintf(text, kUtf8Size, L"%.2f GB (%s%s)", static_cast<double>(gigabytes), count, word);
    return write_utf8(text, buffer, size);
}

extern "C" uint32_t Floor_TimeText(const FILETIME* file_time, char* buffer, uint32_t size) {
    SYSTEMTIME time;
    FileTimeToSystemTime(file_time, &time);
    char text[2 * kPartSize];
    const int date = GetDateFormatA(LOCALE_USER_DEFAULT, LOCALE_NOUSEROVERRIDE | DATE_SHORTDATE, &time,
                                    nullptr, text, kPartSize);
    text[date - 1] = ' ';
    const int both = date + GetTimeFormatA(LOCALE_USER_DEFAULT, LOCALE_NOUSEROVERRIDE | TIME_NOSECONDS, &time,
                                           nullptr, text + date, kPartSize);
    if (static_cast<uint32_t>(both) > size) return 0;
    memcpy(buffer, text, static_cast<size_t>(both));
    return static_cast<uint32_t>(both - 1);
}

extern "C" uint32_t Floor_TimeTextW(const FILETIME* file_time, wchar_t* buffer, uint32_t size) {
    SYSTEMTIME time;
    FileTimeToSystemTime(file_time, &time);
    wchar_t text[2 * kPartSize];
    const int date = GetDateFormatW(LOCALE_USER_DEFAULT, LOCALE_NOUSEROVERRIDE | DATE_SHORTDATE, &time,
                                    nullptr, text, kPartSize);
    text[date - 1] = L' ';
    const int both = date + GetTimeFormatW(LOCALE_USER_DEFAULT, LOCALE_NOUSEROVERRIDE | TIME_NOSECONDS, &time,
                                           nullptr, text + date, kPartSize);
    if (static_cast<uint32_t>(both) > size) return 0;
    memcpy(buffer, text, static_cast<size_t>(both) * sizeof(wchar_t));
    return static_cast<uint32_t>(both - 1);
}
