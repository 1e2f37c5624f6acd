#include "support/import_patch.h"

#include <delayimp.h>
#include <string.h>

namespace support {
namespace {

template <typename T>
T* at(HMODULE module, DWORD rva) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + rva);
}

const IMAGE_OPTIONAL_HEADER& header_of(HMODULE module) {
    const DWORD header = static_cast<DWORD>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew);
    return at<IMAGE_NT_HEADERS>(module, header)->OptionalHeader;
}

bool inside(HMODULE module, const void* address) {
    const auto base = reinterpret_cast<const char*>(module);
    const auto where = static_cast<const char*>(address);
    return where >= base && where < base + header_of(module).SizeOfImage;
}

void write(void** slot, void* value) {
    DWORD old = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &old);
    *slot = value;
    VirtualProtect(slot, sizeof *slot, old, &old);
}

std::map<std::string, void*>& run_time_rows() {
    static std::map<std::string, void*> rows;
    return rows;
}

FARPROC WINAPI answer_run_time(HMODULE module, LPCSTR name) {
    if (reinterpret_cast<ULONG_PTR>(name) > 0xFFFF) {  // else an ordinal
        const auto row = run_time_rows().find(name);
        if (row != run_time_rows().end()) return reinterpret_cast<FARPROC>(row->second);
    }
    return GetProcAddress(module, name);
}

}  // namespace

HMODULE library_under_test() {
    HMODULE library = GetModuleHandleA("VlCommon.dll");
    return library ? library : GetModuleHandleA(nullptr);
}

ImportPatch::ImportPatch(HMODULE module, const char* function, void* replacement)
    : module_(module), function_(function) {
    walk_imports(replacement);
    walk_delayed(replacement);
}

ImportPatch::~ImportPatch() {
    for (const Slot& slot : slots_) write(slot.address, slot.restored);
}

void* ImportPatch::original_address() const {
    if (slots_.empty()) return nullptr;
    const Slot& slot = slots_.front();
    if (slot.dll == nullptr || !inside(module_, slot.restored)) return slot.restored;
    return reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(slot.dll), function_.c_str()));
}

void ImportPatch::patch_names(const IMAGE_THUNK_DATA* name, void** slot, const char* dll, void* replacement) {
    for (; name->u1.AddressOfData != 0; ++name, ++slot) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
        const auto entry = at<IMAGE_IMPORT_BY_NAME>(module_, static_cast<DWORD>(name->u1.AddressOfData));
        if (function_ != reinterpret_cast<const char*>(entry->Name)) continue;
        slots_.push_back({slot, *slot, dll});
        write(slot, replacement);
    }
}

void ImportPatch::walk_imports(void* replacement) {
    const auto& where = header_of(module_).DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (where.VirtualAddress == 0) return;
    for (auto d = at<IMAGE_IMPORT_DESCRIPTOR>(module_, where.VirtualAddress); d->Name != 0; ++d) {
        patch_names(at<IMAGE_THUNK_DATA>(module_, d->OriginalFirstThunk), at<void*>(module_, d->FirstThunk),
                    nullptr, replacement);
    }
}

void ImportPatch::walk_delayed(void* replacement) {
    const auto& where = header_of(module_).DataDirectory[IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT];
    if (where.VirtualAddress == 0) return;
    for (auto d = at<ImgDelayDescr>(module_, where.VirtualAddress); d->rvaDLLName != 0; ++d) {
        patch_names(at<IMAGE_THUNK_DATA>(module_, d->rvaINT), at<void*>(module_, d->rvaIAT),
                    at<const char>(module_, d->rvaDLLName), replacement);
    }
}

ProcAddressPatch::ProcAddressPatch(HMODULE module, std::map<std::string, void*> rows)
    : patch_(module, "GetProcAddress", answer_run_time) {
    run_time_rows() = std::move(rows);
}

}  // namespace support
