#include "handoff_lists.h"

#include "VlSDK.h"
#include "support/settings_scope.h"

#include <string.h>

#include <algorithm>

namespace {

template <uint32_t (*Send)(const VlSendRecord*, uint32_t)>
uint32_t send_records(const void* list, uint32_t target) {
    return Send(static_cast<const VlSendRecord*>(list), target);
}

template <auto Take>
void* take_records() {
    return Take();
}

uint32_t send_files(const VlSendRecord* list, uint32_t target) {
    return VlCm_SendFilestoBtDevice(list, target, 0, 0);
}

uint32_t send_outlook(const void* list, uint32_t /*target*/) {
    return VlCm_SendContactsToOutLook(static_cast<const VlOutlookContactRecord*>(list));
}

size_t rounded_to_pages(size_t bytes) { return (bytes + kPageBytes - 1) / kPageBytes * kPageBytes; }

constexpr size_t kLink = sizeof(void*);

}  // namespace

const std::array<ListChannel, 4>& list_channels() {
    static const std::array<ListChannel, 4> channels = {{
        {"files",
         "SHARE_MEM_SENDFILE",
         1632,
         1636,
         0x1105,
         0x43020205,
         send_records<send_files>,
         take_records<VlCm_GetFilePathInfo>,
         {},
         "CreateFileMapping VLCM_SHARE_MEM_SENDFILE failed in func VlCm_SendFilestoBtDevice\r\n",
         "CreateFileMapping VLCM_SHARE_MEM_SENDFILE already exist in func VlCm_SendFilestoBtDevice\r\n",
         "MapViewOfFile failed in func VlCm_SendFilestoBtDevice\r\n"},
        {"images",
         "SHARE_MEM_SENDIMAGE",
         1632,
         1636,
         0x111B,
         0x42020205,
         send_records<VlCm_SendImagestoBtDevice>,
         take_records<VlCm_GetImagePathInfo>,
         {"8 VlCm_SendImagestoBtDevice"},
         "CreateFileMapping VLCM_SHARE_MEM_SENDIMAGE failed in func VlCm_SendImagestoBtDevice\r\n",
         "CreateFileMapping VLCM_SHARE_MEM_SENDIMAGE already exist in func VlCm_SendImagestoBtDevice\r\n",
         "MapViewOfFile failed in func VlCm_SendImagestoBtDevice\r\n"},
        {"contacts",
         "SHARE_MEM_CONTACTINFO",
         1632,
         1636,
         0,
         0x60390206,
         send_records<VlCm_SendContactsToMobilePhone>,
         take_records<VlCm_GetContactInfo>,
         {},
         "CreateFileMapping VLCM_SHARE_MEM_SENDFILE failed in func VlCm_SendContactsToMobilePhone\r\n",
         "CreateFileMapping VLCM_SHARE_MEM_SENDFILE already exist in func VlCm_SendContactsToMobilePhone\r\n",
         "MapViewOfFile failed in func VlCm_SendContactsToMobilePhone\r\n"},
        {"outlook",
         "SHARE_MEM_SENDCONTACT",
         1192,
         1200,
         0,
         0x42080205,
         send_outlook,
         take_records<VlCm_GetOutlookContactInfo>,
         {},
         "CreateFileMapping VLCM_SHARE_MEM_SENDCONTACT failed in func VlCm_SendContactsToOutLook\r\n",
         "CreateFileMapping VLCM_SHARE_MEM_SENDCONTACT already exist in func VlCm_SendContactsToOutLook\r\n",
         "MapViewOfFile failed in func VLCM_SHARE_MEM_SENDCONTACT\r\n"},
    }};
    return channels;
}

const ListChannel& list_channel(const std::string& label) {
    const auto& channels = list_channels();
    return *std::find_if(channels.begin(), channels.end(),
                         [&](const ListChannel& channel) { return label == channel.label; });
}

const ListChannel& files() { return list_channel("files"); }
const ListChannel& images() { return list_channel("images"); }
const ListChannel& outlook_contacts() { return list_channel("outlook"); }

RecordList::RecordList(const ListChannel& channel, size_t count)
    : RecordList(channel, count, channel.wake_class) {}

RecordList::RecordList(const ListChannel& channel, size_t count, uint32_t service_class)
    : record_size_(channel.record_size), bytes_(count * record_size_) {
    uint32_t pattern = 1;
    for (unsigned char& byte : bytes_)
        byte = static_cast<unsigned char>((pattern = pattern * 69069 + 1) >> 24);
    link_records(bytes_.data(), count, record_size_);
    if (record_size_ == sizeof(VlSendRecord)) put_word(record(0) + 4, service_class);
}

Bytes RecordList::image() const {
    Bytes records = bytes_;
    for (size_t end = record_size_; end <= records.size(); end += record_size_) {
        memset(&records[end - kLink], 0, kLink);
    }
    const auto count = static_cast<uint32_t>(records.size() / record_size_);
    return section_image(kFreshState, static_cast<uint32_t>(kHeaderBytes + records.size()), count, records);
}

void link_records(unsigned char* records, size_t count, size_t size) {
    for (size_t i = 0; i < count; ++i) {
        unsigned char* next = i + 1 < count ? records + (i + 1) * size : nullptr;
        memcpy(records + (i + 1) * size - kLink, &next, kLink);
    }
}

void put_word(unsigned char* at, uint32_t value) { memcpy(at, &value, sizeof value); }

uint32_t word_at(const Bytes& bytes, size_t offset) {
    uint32_t value = 0;
    memcpy(&value, &bytes.at(offset), sizeof value);
    return value;
}

Bytes section_image(uint32_t state, uint32_t total_size, uint32_t count, const Bytes& records) {
    Bytes image(kHeaderBytes + records.size());
    put_word(&image[0], state);
    put_word(&image[4], total_size);
    put_word(&image[8], count);
    std::copy(records.begin(), records.end(), image.begin() + kHeaderBytes);
    return image;
}

std::vector<Bytes> take_apart(void* list, size_t record_size) {
    std::vector<Bytes> records;
    while (list != nullptr) {
        const auto bytes = static_cast<unsigned char*>(list);
        records.emplace_back(bytes, bytes + record_size - kLink);
        void* next = nullptr;
        memcpy(&next, bytes + record_size - kLink, kLink);
        Btsdk_FreeMemory(list);
        list = next;
    }
    return records;
}

std::vector<Bytes> expected_records(const Bytes& image, size_t record_size, size_t stride) {
    std::vector<Bytes> records;
    const size_t end = rounded_to_pages(image.size());
    const uint32_t count = word_at(image, 8);
    for (size_t k = 0; k < count && kHeaderBytes + k * stride < end; ++k) {
        Bytes record(record_size - kLink);
        const size_t from = std::min(kHeaderBytes + k * stride, image.size());
        const size_t present = std::min(record.size(), image.size() - from);
        std::copy_n(image.begin() + static_cast<ptrdiff_t>(from), present, record.begin());
        records.push_back(record);
    }
    return records;
}

TestSection::TestSection(const char* name, size_t size, DWORD kind)
    : section_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE | kind, 0,
                                  static_cast<DWORD>(size), name)),
      view_(static_cast<unsigned char*>(MapViewOfFile(section_, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, 0))) {}

TestSection::TestSection(const char* name, const Bytes& image) : TestSection(name, image.size()) {
    fill(image);
}

TestSection::~TestSection() {
    UnmapViewOfFile(view_);
    CloseHandle(section_);
}

uint32_t TestSection::state() const {
    uint32_t state = 0;
    memcpy(&state, view_, sizeof state);
    return state;
}

void TestSection::fill(const Bytes& image) const { memcpy(view_, image.data(), image.size()); }

ReadOnlySection::ReadOnlySection(const char* name, const Bytes& image) {
    char folder[MAX_PATH] = "", path[MAX_PATH] = "";
    GetTempPathA(sizeof folder, folder);
    GetTempFileNameA(folder, "ro", 0, path);
    path_ = path;
    support::write_file(path_, std::string(image.begin(), image.end()));
    file_ = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    section_ = CreateFileMappingA(file_, nullptr, PAGE_READONLY, 0, 0, name);
}

ReadOnlySection::~ReadOnlySection() {
    CloseHandle(section_);
    CloseHandle(file_);
    DeleteFileA(path_.c_str());
}

Bytes read_section(const char* name, size_t bytes) {
    const HANDLE section = OpenFileMappingA(FILE_MAP_READ, FALSE, name);
    if (section == nullptr) return {};
    const auto view = static_cast<unsigned char*>(MapViewOfFile(section, FILE_MAP_READ, 0, 0, bytes));
    Bytes content = view != nullptr ? Bytes(view, view + bytes) : Bytes();
    UnmapViewOfFile(view);
    CloseHandle(section);
    return content;
}

void write_state(const char* name, uint32_t state) {
    const HANDLE section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, name);
    void* view = MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, sizeof state);
    memcpy(view, &state, sizeof state);
    UnmapViewOfFile(view);
    CloseHandle(section);
}

bool section_exists(const char* name) {
    const HANDLE section = OpenFileMappingA(FILE_MAP_READ, FALSE, name);
    if (section == nullptr) return false;
    CloseHandle(section);
    return true;
}
