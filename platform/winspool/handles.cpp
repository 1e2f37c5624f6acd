#include "handles.h"

#include "../locks.h"
#include "misuse.h"

#include <map>

namespace vlspool {
namespace {

constexpr uintptr_t kFirst = 0x00510000;  // no value that a kernel handle has
constexpr uintptr_t kStep = 0x10;

SRWLOCK lock = SRWLOCK_INIT;
std::map<uintptr_t, OpenedPrinter> handles;
uintptr_t next_value = kFirst;  // none is used twice

}  // namespace

HANDLE new_handle(const std::string& name, ACCESS_MASK access) {
    const locks::Exclusive held(lock);
    next_value += kStep;
    handles[next_value] = {name, access};
    return reinterpret_cast<HANDLE>(next_value);
}

std::optional<OpenedPrinter> printer_of(const char* function, HANDLE handle) {
    {
        const locks::Shared held(lock);
        const auto found = handles.find(reinterpret_cast<uintptr_t>(handle));
        if (found != handles.end()) return found->second;
    }
    vlsim::report_misuse(function, handle ? "no open printer" : "null printer");
    SetLastError(ERROR_INVALID_HANDLE);
    return std::nullopt;
}

void drop_handle(HANDLE handle) {
    const locks::Exclusive held(lock);
    handles.erase(reinterpret_cast<uintptr_t>(handle));
}

uint32_t open_handles() {
    const locks::Shared held(lock);
    return static_cast<uint32_t>(handles.size());
}

}  // namespace vlspool
