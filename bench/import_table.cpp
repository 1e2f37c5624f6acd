#include "import_table.h"

#include <ctype.h>
#include <delayimp.h>

#include <algorithm>

namespace bench {
namespace {

class Image {
public:
    explicit Image(HMODULE module) : base_(reinterpret_cast<char*>(module)) {}

    template <typename T>
    [[nodiscard]] T* at(DWORD rva) const {
        return reinterpret_cast<T*>(base_ + rva);
    }
    // Null when the image has no such table.
    template <typename T>
    [[nodiscard]] T* table(unsigned index) const {
        const auto header = at<IMAGE_NT_HEADERS>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
        const DWORD rva = header->OptionalHeader.DataDirectory[index].VirtualAddress;
        return rva == 0 ? nullptr : at<T>(rva);
    }

private:
    char* base_;
};

std::string lower_case(const char* text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    return result;
}

bool is_code(const void* address) {
    MEMORY_BASIC_INFORMATION region;
    if (VirtualQuery(address, &region, sizeof region) == 0) return false;
    constexpr DWORD kExecutable =
        PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    return (region.Protect & kExecutable) != 0;
}

void add_functions(const Image& image, const char* dll, const IMAGE_THUNK_DATA* name, void** slot,
                   std::vector<ImportSlot>& slots) {
    for (; name->u1.AddressOfData != 0; ++name, ++slot) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal) || !is_code(*slot)) continue;
        const auto entry = image.at<IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(name->u1.AddressOfData));
        slots.push_back({lower_case(dll), reinterpret_cast<const char*>(entry->Name), slot});
    }
}

}  // namespace

std::vector<ImportSlot> import_slots(HMODULE module) {
    const Image image(module);
    std::vector<ImportSlot> slots;
    auto ordinary = image.table<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (; ordinary != nullptr && ordinary->Name != 0; ++ordinary) {
        add_functions(image, image.at<char>(ordinary->Name),
                      image.at<IMAGE_THUNK_DATA>(ordinary->OriginalFirstThunk),
                      image.at<void*>(ordinary->FirstThunk), slots);
    }
    auto delayed = image.table<ImgDelayDescr>(IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT);
    for (; delayed != nullptr && delayed->rvaDLLName != 0; ++delayed) {
        add_functions(image, image.at<char>(delayed->rvaDLLName), image.at<IMAGE_THUNK_DATA>(delayed->rvaINT),
                      image.at<void*>(delayed->rvaIAT), slots);
    }
    return slots;
}

std::vector<std::string> imported_modules(HMODULE module) {
    const Image image(module);
    std::vector<std::string> names;
    auto ordinary = image.table<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (; ordinary != nullptr && ordinary->Name != 0; ++ordinary) {
        names.push_back(lower_case(image.at<char>(ordinary->Name)));
    }
    std::sort(names.begin(), names.end());
    return names;
}

void write_slot(void** slot, void* function) {
    DWORD old = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &old);
    *slot = function;
    VirtualProtect(slot, sizeof *slot, old, &old);
}

}  // namespace bench
