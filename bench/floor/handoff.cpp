#include "VlSDK.h"
#include "floor.h"

#include <string.h>

namespace {

constexpr char kSection[] = "SHARE_MEM_SENDFILE";
constexpr char kAgentTitle[] = "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}";
constexpr uint32_t kTaken = 2;
constexpr size_t kStride = sizeof(VlSendRecord) + 4;  // of a receiver

struct Header {
    uint32_t state;
    uint32_t total_size;
    uint32_t count;
};

}  // namespace

extern "C" uint32_t Floor_SendFiles(const VlSendRecord* records, uint32_t count) {
    if (Btsdk_IsBluetoothReady() != 1) return VLCM_STACK_NOT_READY;
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    FindWindowA(nullptr, kAgentTitle);
    const Header header{0x10000001, static_cast<uint32_t>(sizeof header + count * sizeof *records), count};
    HANDLE section =
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, header.total_size, kSection);
    void* view = MapViewOfFile(section, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, 0);
    if (view == nullptr) return VLCM_RESOURCE_FAILURE;
    memcpy(view, &header, sizeof header);
    memcpy(static_cast<char*>(view) + sizeof header, records, count * sizeof *records);
    UnmapViewOfFile(view);
    CloseHandle(section);
    return VLCM_OK;
}

extern "C" VlSendRecord* Floor_GetFiles() {
    HANDLE section = OpenFileMappingA(FILE_MAP_READ | FILE_MAP_WRITE, FALSE, kSection);
    void* view = MapViewOfFile(section, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, 0);
    if (view == nullptr) return nullptr;
    auto header = static_cast<Header*>(view);
    header->state = kTaken;
    auto from = reinterpret_cast<const char*>(header + 1);
    VlSendRecord* first = nullptr;
    VlSendRecord** link = &first;
    for (uint32_t left = header->count; left != 0; --left, from += kStride) {
        *link = static_cast<VlSendRecord*>(Btsdk_MallocMemory(sizeof(VlSendRecord)));
        memcpy(*link, from, sizeof(VlSendRecord));
        link = &(*link)->next;
        *link = nullptr;
    }
    UnmapViewOfFile(view);
    CloseHandle(section);
    return first;
}
