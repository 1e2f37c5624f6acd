#include "printer_record.h"

#include "frame/frame.h"
#include "frame/settings.h"
#include "printer_file.h"
#include "spooler.h"

#include <algorithm>
#include <memory>
#include <new>

namespace vl::printers {
namespace {

constexpr char kRecords[] = "QVN_PRINTER_BDADDR_MAP";
constexpr char kLengths[] = "QVN_PRINTER_STRU_LEN";
constexpr size_t kTexts = 4;
constexpr size_t kTextSize = sizeof VlPrinterRecord{}.printerName;

using Bytes = std::unique_ptr<char[]>;

Bytes new_bytes(size_t size) { return Bytes(new (std::nothrow) char[size]()); }

// The record's texts in their stored order, which is that of the record.
const char* text_at(const VlPrinterRecord& record, size_t slot) {
    return reinterpret_cast<const char*>(&record) + slot * kTextSize;
}
char* text_at(VlPrinterRecord& record, size_t slot) {
    return reinterpret_cast<char*>(&record) + slot * kTextSize;
}

size_t length_at(const VlPrinterRecord& record, size_t slot) {
    return bounded_length(text_at(record, slot), kTextSize - 1);
}

uint32_t stored_length_of(const VlPrinterRecord& record) {
    size_t length = kTexts + 1;  // a terminator each, and one more
    for (size_t slot = 0; slot < kTexts; ++slot) length += length_at(record, slot);
    return static_cast<uint32_t>(length);
}

// `stored` is zeroed: the terminators are there.
void pack(char* stored, const VlPrinterRecord& record) {
    for (size_t slot = 0; slot < kTexts; ++slot) {
        const size_t length = length_at(record, slot);
        memcpy(stored, text_at(record, slot), length);
        stored += length + 1;
    }
}

// An empty text takes no slot, so the texts behind it move up; two empty texts in a row end the record.
void unpack(VlPrinterRecord& record, const char* stored, size_t size) {
    const char* const end = stored + size;
    bool after_empty = false;
    for (size_t slot = 0; stored < end && slot < kTexts;) {
        const size_t length = bounded_length(stored, static_cast<size_t>(end - stored));
        if (length == 0 && after_empty) return;
        if (length != 0) copy_bounded(text_at(record, slot++), std::min(kTextSize, length + 1), stored);
        after_empty = length == 0;
        stored += length + 1;
    }
}

void store(const AddressText& key, char* bytes, uint32_t size) {
    const PathBuffer file = printer_file();
    char length[12];
    format_bounded(length, sizeof length, "%d", static_cast<int>(size));
    Btsdk_WritePrivateProfileStruct(kRecords, key.text, bytes, size, file.text());
    Btsdk_WritePrivateProfileString(kLengths, key.text, length, file.text());
}

// What is stored for the device; `size` 0: nothing, or nothing that can be read.
Bytes stored_bytes(const AddressText& key, uint32_t& size) {
    constexpr int kLargest = 1024 * 1024;  // beyond it the file is damaged
    const PathBuffer file = printer_file();
    const int length = settings::read_number(kLengths, key.text, 0, file);
    size = length < 1 || length > kLargest ? 0 : static_cast<uint32_t>(length);
    Bytes bytes = size != 0 ? new_bytes(size) : nullptr;
    if (!bytes || !Btsdk_GetPrivateProfileStruct(kRecords, key.text, bytes.get(), size, file.text())) {
        size = 0;
    }
    return bytes;
}

}  // namespace

VlPrinterRecord record_of(const PRINTER_INFO_2A& printer) {
    VlPrinterRecord record{};
    const char* const texts[kTexts] = {printer.pPrinterName, printer.pDriverName, printer.pPortName,
                                       printer.pPrintProcessor};
    for (size_t slot = 0; slot < kTexts; ++slot) {
        copy_bounded(text_at(record, slot), kTextSize, or_empty(texts[slot]));
    }
    return record;
}

BOOL write_record(const uint8_t* address, const VlPrinterRecord* record, uint32_t* stored_length) {
    TraceScope scope("hlp_WriteMyPrinterInfo");
    if (address == nullptr || record == nullptr) return FALSE;
    const uint32_t size = stored_length_of(*record);
    const Bytes bytes = new_bytes(size);
    if (!bytes) return TRUE;  // callers are told of success all the same
    pack(bytes.get(), *record);
    store(address_text(address), bytes.get(), size);
    if (stored_length != nullptr) *stored_length = size;
    return TRUE;
}

BOOL read_record(const uint8_t* address, VlPrinterRecord* record) {
    TraceScope scope("hlp_GetMyPrinterInfo");
    if (address == nullptr || record == nullptr) return FALSE;
    uint32_t size = 0;
    const Bytes bytes = stored_bytes(address_text(address), size);
    if (size == 0) return FALSE;
    unpack(*record, bytes.get(), size);
    return TRUE;
}

Entry find_entry(const uint8_t* address) {
    constexpr uint32_t kFirstSize = 128;
    constexpr uint32_t kLastSize = 1024 * 1024;  // no settings file keeps a longer text
    const PathBuffer file = printer_file();
    const AddressText key = address_text(address);
    for (uint32_t size = kFirstSize;; size *= 2) {
        const Bytes entry = new_bytes(size);
        if (!entry) return Entry::kUnknown;
        const uint32_t length =
            Btsdk_GetPrivateProfileString(kRecords, key.text, "", entry.get(), size, file.text());
        if (length < size - 2 || size == kLastSize) return length != 0 ? Entry::kPresent : Entry::kAbsent;
    }
}

void remove_record(const uint8_t* address) {
    const PathBuffer file = printer_file();
    const AddressText key = address_text(address);
    Btsdk_WritePrivateProfileString(kRecords, key.text, nullptr, file.text());
    Btsdk_WritePrivateProfileString(kLengths, key.text, nullptr, file.text());
}

}  // namespace vl::printers

using namespace vl;

extern "C" BOOL VlCm_WriteMyPrinterInfo(const uint8_t* address, const VlPrinterRecord* record,
                                        uint32_t* storedLength) {
    return printers::write_record(address, record, storedLength);
}

extern "C" BOOL VlCm_GetMyPrinterInfo(const uint8_t* address, VlPrinterRecord* record) {
    return printers::read_record(address, record);
}
