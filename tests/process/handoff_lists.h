// Channels, lists and sections as bytes of the agreed layout, told a second time for the tests.
#pragma once

#include "VlCommon.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

using Bytes = std::vector<unsigned char>;
using Sizes = std::vector<size_t>;

constexpr uint32_t kFreshState = 0x10000001;
constexpr uint32_t kTakenState = 2;
constexpr size_t kHeaderBytes = 12;
constexpr size_t kPageBytes = 4096;

struct ListChannel {
    const char* label;
    const char* section;
    size_t record_size;
    size_t stride;        // by which a receiver reads what the 64-bit library wrote
    uint32_t wake_class;  // a service class that wakes the receiver
    uint32_t message;     // by which it is woken
    uint32_t (*send)(const void* list, uint32_t target);
    void* (*take)();
    std::vector<std::string> own_scopes;  // as entered
    std::string creation_failed;
    std::string already_exists;
    std::string map_failed;
};

// Files, images, contacts to a phone, Outlook contacts.
const std::array<ListChannel, 4>& list_channels();
const ListChannel& list_channel(const std::string& label);
const ListChannel& files();
const ListChannel& images();
const ListChannel& outlook_contacts();

// A caller's list: one array, every byte of a pattern that differs from record to record.
class RecordList {
public:
    RecordList(const ListChannel& channel, size_t count);
    RecordList(const ListChannel& channel, size_t count, uint32_t service_class);

    [[nodiscard]] const void* first() const { return bytes_.data(); }
    [[nodiscard]] unsigned char* record(size_t index) { return &bytes_[index * record_size_]; }
    // The section that the list makes.
    [[nodiscard]] Bytes image() const;

private:
    size_t record_size_;
    Bytes bytes_;
};

// Links `count` records of `size` bytes that lie one behind the other.
void link_records(unsigned char* records, size_t count, size_t size);

void put_word(unsigned char* at, uint32_t value);
uint32_t word_at(const Bytes& bytes, size_t offset);

// The header and `records` as a section holds them.
Bytes section_image(uint32_t state, uint32_t total_size, uint32_t count, const Bytes& records);

// A received list, without its links; frees it.
std::vector<Bytes> take_apart(void* list, size_t record_size);
// What a receiver makes of a section: records without their links.
std::vector<Bytes> expected_records(const Bytes& image, size_t record_size, size_t stride);

// A section of a channel's name that the test makes, mapped.
class TestSection {
public:
    // kind: SEC_RESERVE commits nothing.
    TestSection(const char* name, size_t size, DWORD kind = 0);
    TestSection(const char* name, const Bytes& image);
    ~TestSection();
    TestSection(const TestSection&) = delete;
    TestSection& operator=(const TestSection&) = delete;

    [[nodiscard]] unsigned char* view() const { return view_; }
    [[nodiscard]] uint32_t state() const;
    void fill(const Bytes& image) const;

private:
    HANDLE section_;
    unsigned char* view_;
};

// A section that cannot be mapped for writing: that of a file opened for reading only.
class ReadOnlySection {
public:
    ReadOnlySection(const char* name, const Bytes& image);
    ~ReadOnlySection();
    ReadOnlySection(const ReadOnlySection&) = delete;
    ReadOnlySection& operator=(const ReadOnlySection&) = delete;

private:
    std::string path_;
    HANDLE file_;
    HANDLE section_;
};

// The first bytes of a section that somebody else holds open; empty when there is none.
Bytes read_section(const char* name, size_t bytes);
void write_state(const char* name, uint32_t state);
bool section_exists(const char* name);
