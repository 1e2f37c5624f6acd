// The size of a remote file in words: "4.00 GB (4,294,967,297bytes)".
#include "frame/bounded_text.h"
#include "text/twin.h"
#include "text/wide_text.h"
#include "vlcm/catalogue.h"
#include "vlcm/remote_files.h"
#include "vlcm/text.h"

namespace vl::remotefiles {
namespace {

constexpr uint32_t kBytesWordId = 1217;
constexpr size_t kWordSize = 128;
constexpr size_t kTextSize = 320;  // the longest text: unit, grouped digits, the word twice
constexpr size_t kUtf8Size = 260;
constexpr size_t kDigitsSize = 32;  // 20 digits and a sign

using Word = wchar_t[kWordSize];
using Text = wchar_t[kTextSize];

struct FileSize {
    uint32_t low;
    uint32_t high;
};

constexpr uint32_t kKilo = 1U << 10;
constexpr uint32_t kMega = 1U << 20;
constexpr uint32_t kGiga = 1U << 30;

// Two decimals, exact ties away from zero: the runtimes disagree about ties. The product is exact, for the
// 24 bits of a float, and counts halves of hundredths.
void append_decimal(Text& text, float value, const wchar_t* unit) {
    const auto hundredths = (static_cast<uint64_t>(static_cast<double>(value) * 200) + 1) / 2;
    wchar_t number[kDigitsSize];
    text::format(number, L"%I64u.%02u%s", hundredths / 100, static_cast<unsigned>(hundredths % 100), unit);
    text::append(text, number);
}

// In single precision; the upper half counts four to the gigabyte, in 32 bits.
void append_rounded(Text& text, const FileSize& size, const Word& word) {
    const auto low = static_cast<float>(size.low);
    if (size.high != 0) {
        append_decimal(text, low / static_cast<float>(kGiga) + static_cast<float>(4 * size.high), L" GB");
    } else if (size.low >= kGiga) {
        append_decimal(text, low / static_cast<float>(kGiga), L" GB");
    } else if (size.low >= kMega) {
        append_decimal(text, low / static_cast<float>(kMega), L" MB");
    } else if (size.low >= kKilo) {
        append_decimal(text, low / static_cast<float>(kKilo), L" KB");
    } else {
        text::format(text, L"%d %s", size.low, word);
    }
}

// The exact count. Without an upper half it is printed signed: from 2 GiB on it is negative.
void write_digits(const FileSize& size, char (&digits)[kDigitsSize]) {
    if (size.high != 0) {
        VlCm_U64TOA(size.high, size.low, digits, kDigitsSize);
    } else {
        format_bounded(digits, kDigitsSize, "%d", static_cast<int32_t>(size.low));
    }
}

// A comma before every three characters that have any other before them, be it the sign.
void append_grouped(Text& text, const char* digits) {
    const size_t length = strlen(digits);
    wchar_t grouped[2 * kDigitsSize];
    size_t used = 0;
    for (size_t i = 0; i < length; ++i) {
        if (i != 0 && (length - i) % 3 == 0) grouped[used++] = L',';
        grouped[used++] = static_cast<wchar_t>(digits[i]);
    }
    grouped[used] = 0;
    text::append(text, grouped);
}

void append_detail(Text& text, const FileSize& size, const Word& word) {
    char digits[kDigitsSize];
    write_digits(size, digits);
    text::append(text, L" (");
    append_grouped(text, digits);
    text::append(text, word);
    text::append(text, L")");
}

// The length is the answer even when the text does not fit.
uint32_t write_empty_size(const Word& word, char* buffer, uint32_t room) {
    Text text = L"0 ";
    text::append(text, word);
    text::wide_to_utf8(buffer, room, text);
    return static_cast<uint32_t>(wcslen(text));
}

uint32_t write_size(const FileSize& size, const Word& word, char* buffer, uint32_t room, bool detail) {
    if (size.low == 0 && size.high == 0) return write_empty_size(word, buffer, room);
    Text text = {};
    append_rounded(text, size, word);
    if (detail) append_detail(text, size, word);
    char utf8[kUtf8Size];
    if (!text::wide_to_utf8(utf8, sizeof utf8, text)) return 0;
    const size_t bytes = strlen(utf8);
    if (bytes >= room) return 0;
    memcpy(buffer, utf8, bytes + 1);
    return static_cast<uint32_t>(wcslen(text));
}

// The library is loaded before anything is tested and never freed: each call leaves one reference more.
bool load_word(Word& word) {
    const HMODULE texts = VlCm_GetLangDepResLib(0);
    if (texts == nullptr) return false;
    text::load_string(texts, kBytesWordId, word, kWordSize);
    return true;
}

}  // namespace
}  // namespace vl::remotefiles

using namespace vl;

extern "C" uint32_t VlCm_GetFTPFileSizeString(uint32_t sizeLow, uint32_t sizeHigh, char* buffer,
                                              uint32_t bufferSize, BOOL detail) {
    remotefiles::Word word = {};
    if (!remotefiles::load_word(word) || buffer == nullptr || bufferSize == 0) return 0;
    return remotefiles::write_size({sizeLow, sizeHigh}, word, buffer, bufferSize, detail != FALSE);
}
