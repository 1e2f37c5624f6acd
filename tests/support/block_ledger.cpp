#include "support/block_ledger.h"

#include <objbase.h>
#include <oleauto.h>
#include <stdlib.h>
#include <string.h>
#include <algorithm>

#include <map>

namespace support {
namespace {

struct Live {
    LeakKind kind;
    size_t order;
    std::string what;
    size_t times;  // a module is loaded more than once
};

struct State {
    std::map<void*, Live> live;
    size_t taken = 0, wrong_frees = 0, allocations = 0;
    size_t every = 0, first = 0, last = 0, since = 0;
};

SRWLOCK g_lock = SRWLOCK_INIT;
State g_state;

class Lock {
public:
    Lock() { AcquireSRWLockExclusive(&g_lock); }
    ~Lock() { ReleaseSRWLockExclusive(&g_lock); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
};

// The functions themselves: this program's own imports may be patched as well.
struct Real {
    template <typename F>
    static void find(F*& slot, const char* dll, const char* name) {
        slot = reinterpret_cast<F*>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(dll), name)));
    }
    Real() {
        find(co_task_free, "ole32.dll", "CoTaskMemFree");
        find(co_task_alloc, "ole32.dll", "CoTaskMemAlloc");
        find(co_task_realloc, "ole32.dll", "CoTaskMemRealloc");
        find(local_free, "kernel32.dll", "LocalFree");
        find(global_free, "kernel32.dll", "GlobalFree");
        find(sys_free, "oleaut32.dll", "SysFreeString");
        find(sys_alloc, "oleaut32.dll", "SysAllocString");
        find(unmap, "kernel32.dll", "UnmapViewOfFile");
        find(free_library, "kernel32.dll", "FreeLibrary");
    }
    decltype(CoTaskMemFree)* co_task_free = nullptr;
    decltype(CoTaskMemAlloc)* co_task_alloc = nullptr;
    decltype(CoTaskMemRealloc)* co_task_realloc = nullptr;
    decltype(LocalFree)* local_free = nullptr;
    decltype(GlobalFree)* global_free = nullptr;
    decltype(SysFreeString)* sys_free = nullptr;
    decltype(SysAllocString)* sys_alloc = nullptr;
    decltype(UnmapViewOfFile)* unmap = nullptr;
    decltype(FreeLibrary)* free_library = nullptr;
};
const Real& real() {
    static const Real functions;
    return functions;
}

bool refuse() {
    const Lock lock;
    State& s = g_state;
    ++s.allocations;
    const size_t nth = ++s.since;
    return (s.every != 0 && nth % s.every == 0) || (s.first != 0 && nth >= s.first && nth <= s.last);
}

template <typename T>
T* note(T* taken, LeakKind kind, std::string what) {
    const DWORD last_error = GetLastError();
    if (taken != nullptr) {
        const Lock lock;
        Live& live = g_state.live[const_cast<void*>(static_cast<const void*>(taken))];
        live = {kind, ++g_state.taken, std::move(what), live.times + 1};
    }
    SetLastError(last_error);
    return taken;
}
template <typename T>
T* note_bytes(T* taken, LeakKind kind, size_t bytes) {
    return note(taken, kind, std::to_string(bytes) + " bytes");
}

bool forget(const void* given_back) {
    const Lock lock;
    if (given_back == nullptr) return true;
    const auto entry = g_state.live.find(const_cast<void*>(given_back));
    if (entry == g_state.live.end()) return false;
    if (--entry->second.times == 0) g_state.live.erase(entry);
    return true;
}
void forget_heap(const void* block) {
    if (forget(block)) return;
    const Lock lock;
    ++g_state.wrong_frees;
}

using enum LeakKind;

void* on_malloc(size_t n) { return refuse() ? nullptr : note_bytes(malloc(n), kHeapBlock, n); }
void* on_calloc(size_t n, size_t m) {
    return refuse() ? nullptr : note_bytes(calloc(n, m), kHeapBlock, n * m);
}
void on_free(void* block) {
    forget_heap(block);
    free(block);
}
// By hand: once realloc has moved a block, not even its old address may be looked up.
void* on_realloc(void* old, size_t n) {
    if (old != nullptr && n == 0) return on_free(old), nullptr;
    void* moved = on_malloc(n);
    if (moved == nullptr || old == nullptr) return moved;
    memcpy(moved, old, std::min(n, _msize(old)));
    on_free(old);
    return moved;
}
char* on_strdup(const char* text) {
    return refuse() ? nullptr : note_bytes(_strdup(text), kHeapBlock, strlen(text) + 1);
}
wchar_t* on_wcsdup(const wchar_t* text) {
    return refuse() ? nullptr : note_bytes(_wcsdup(text), kHeapBlock, 2 * wcslen(text) + 2);
}
void* WINAPI on_heap_alloc(HANDLE heap, DWORD flags, SIZE_T n) {
    return refuse() ? nullptr : note_bytes(HeapAlloc(heap, flags, n), kHeapBlock, n);
}
void* WINAPI on_heap_realloc(HANDLE heap, DWORD flags, void* old, SIZE_T n) {
    if (refuse()) return nullptr;
    void* moved = HeapReAlloc(heap, flags, old, n);
    if (moved != nullptr) forget_heap(old);
    return note_bytes(moved, kHeapBlock, n);
}
BOOL WINAPI on_heap_free(HANDLE heap, DWORD flags, void* block) {
    forget_heap(block);
    return HeapFree(heap, flags, block);
}

void* WINAPI on_task_alloc(SIZE_T n) {
    return refuse() ? nullptr : note_bytes(real().co_task_alloc(n), kTaskBlock, n);
}
void* WINAPI on_task_realloc(void* old, SIZE_T n) {
    if (refuse()) return nullptr;
    void* moved = real().co_task_realloc(old, n);
    if (moved != nullptr || n == 0) forget(old);
    return note_bytes(moved, kTaskBlock, n);
}
void WINAPI on_task_free(void* block) {
    forget(block);
    real().co_task_free(block);
}
HLOCAL WINAPI on_local_alloc(UINT flags, SIZE_T n) {
    return refuse() ? nullptr : static_cast<HLOCAL>(note_bytes(LocalAlloc(flags, n), kLocalBlock, n));
}
HLOCAL WINAPI on_local_free(HLOCAL block) {
    forget(block);
    return real().local_free(block);
}
HGLOBAL WINAPI on_global_alloc(UINT flags, SIZE_T n) {
    return refuse() ? nullptr : static_cast<HGLOBAL>(note_bytes(GlobalAlloc(flags, n), kGlobalBlock, n));
}
HGLOBAL WINAPI on_global_free(HGLOBAL block) {
    forget(block);
    return real().global_free(block);
}
BSTR WINAPI on_sys_alloc(const OLECHAR* text) {
    return refuse() ? nullptr
                    : note_bytes(real().sys_alloc(text), kSystemString, text ? 2 * wcslen(text) : 0);
}
void WINAPI on_sys_free(BSTR text) {
    forget(text);
    real().sys_free(text);
}
void* WINAPI on_map(HANDLE mapping, DWORD access, DWORD high, DWORD low, SIZE_T n) {
    return note_bytes(MapViewOfFile(mapping, access, high, low, n), kView, n);
}
BOOL WINAPI on_unmap(const void* view) {
    forget(view);
    return real().unmap(view);
}

// The helper of delayed imports keeps the system's DLLs: by their full path.
HMODULE note_module(HMODULE loaded, std::string name) {
    char folder[MAX_PATH] = "";
    const UINT length = GetSystemDirectoryA(folder, MAX_PATH);
    const bool of_system = _strnicmp(name.c_str(), folder, length) == 0;
    return of_system ? loaded : note(loaded, kModule, std::move(name));
}
std::string narrow(const wchar_t* text) {
    std::string copy;
    for (; text && *text; ++text) copy += static_cast<char>(*text);
    return copy;
}
HMODULE WINAPI on_load_a(const char* name) { return note_module(LoadLibraryA(name), name); }
HMODULE WINAPI on_load_w(const wchar_t* name) { return note_module(LoadLibraryW(name), narrow(name)); }
HMODULE WINAPI on_load_ex_a(const char* name, HANDLE file, DWORD flags) {
    return note_module(LoadLibraryExA(name, file, flags), name);
}
HMODULE WINAPI on_load_ex_w(const wchar_t* name, HANDLE file, DWORD flags) {
    return note_module(LoadLibraryExW(name, file, flags), narrow(name));
}
BOOL WINAPI on_free_library(HMODULE module) {
    forget(module);
    return real().free_library(module);
}

struct Row {
    const char* name;
    void* replacement;
    bool hand_over;  // the library may hand it to the test, which gives it back itself
};
template <typename F>
Row row(const char* name, F* replacement, bool hand_over = false) {
    return {name, reinterpret_cast<void*>(replacement), hand_over};
}
const std::vector<Row>& rows() {
    static const std::vector<Row> kRows = {
        row("malloc", on_malloc),
        row("calloc", on_calloc),
        row("realloc", on_realloc),
        row("_strdup", on_strdup),
        row("_wcsdup", on_wcsdup),
        row("free", on_free),
        row("HeapAlloc", on_heap_alloc),
        row("HeapReAlloc", on_heap_realloc),
        row("HeapFree", on_heap_free),
        row("CoTaskMemAlloc", on_task_alloc),
        row("CoTaskMemRealloc", on_task_realloc),
        row("CoTaskMemFree", on_task_free, true),
        row("LocalAlloc", on_local_alloc),
        row("LocalFree", on_local_free, true),
        row("GlobalAlloc", on_global_alloc),
        row("GlobalFree", on_global_free, true),
        row("SysAllocString", on_sys_alloc),
        row("SysFreeString", on_sys_free, true),
        row("MapViewOfFile", on_map),
        row("UnmapViewOfFile", on_unmap, true),
        row("LoadLibraryA", on_load_a),
        row("LoadLibraryW", on_load_w),
        row("LoadLibraryExA", on_load_ex_a),
        row("LoadLibraryExW", on_load_ex_w),
        row("FreeLibrary", on_free_library, true),
    };
    return kRows;
}

void give_back(void* thing, LeakKind kind) {
    switch (kind) {
        case kTaskBlock:
            real().co_task_free(thing);
            break;
        case kLocalBlock:
            real().local_free(thing);
            break;
        case kGlobalBlock:
            real().global_free(thing);
            break;
        case kSystemString:
            real().sys_free(static_cast<BSTR>(thing));
            break;
        case kView:
            real().unmap(thing);
            break;
        case kModule:
            real().free_library(static_cast<HMODULE>(thing));
            break;
        default:
            break;  // malloc and HeapAlloc share a kind: a block stays
    }
}

void choose_failures(size_t every, size_t first, size_t last) {
    const Lock lock;
    g_state.every = every;
    g_state.first = first;
    g_state.last = last;
    g_state.since = 0;
}

}  // namespace

BlockLedger::BlockLedger(HMODULE module) {
    g_state = {};
    real();
    HMODULE program = GetModuleHandleA(nullptr);
    for (const Row& r : rows()) {
        if (module) patches_.push_back(std::make_unique<ImportPatch>(module, r.name, r.replacement));
        if (module && module != program && r.hand_over) {
            patches_.push_back(std::make_unique<ImportPatch>(program, r.name, r.replacement));
        }
    }
}

BlockLedger::~BlockLedger() = default;

size_t BlockLedger::live(LeakKind kind) const { return describe(kind).size(); }

size_t BlockLedger::wrong_frees() const {
    const Lock lock;
    return g_state.wrong_frees;
}

size_t BlockLedger::allocations() const {
    const Lock lock;
    return g_state.allocations;
}

std::vector<std::string> BlockLedger::describe(LeakKind kind) const {
    const Lock lock;
    std::map<size_t, const Live*> in_order;
    for (const auto& [thing, live] : g_state.live) {
        if (live.kind == kind) in_order[live.order] = &live;
    }
    std::vector<std::string> lines;
    for (const auto& [order, live] : in_order) lines.insert(lines.end(), live->times, live->what);
    return lines;
}

void BlockLedger::release_all(LeakKind kind) {
    std::vector<void*> things;
    {
        const Lock lock;
        for (const auto& [thing, live] : g_state.live) {
            if (live.kind == kind) things.insert(things.end(), live.times, thing);
        }
        for (void* thing : things) g_state.live.erase(thing);
    }
    for (void* thing : things) give_back(thing, kind);
}

void BlockLedger::fail_every(size_t n) { choose_failures(n, 0, 0); }
void BlockLedger::fail_nth(size_t n) { choose_failures(0, n, n); }
void BlockLedger::fail_from(size_t n) { choose_failures(0, n, SIZE_MAX); }

}  // namespace support
