#include "operation.h"

#include "../locks.h"
#include "call_log.h"
#include "faults.h"
#include "misuse.h"

#include <windows.h>

#include <cstring>

namespace vlsim {
namespace {

SRWLOCK lock = SRWLOCK_INIT;           // faults and hooks
Operation* first_operation = nullptr;  // complete before the first call, never changed afterwards
const DWORD hook_slot = TlsAlloc();    // the thread's innermost InsideHook

Operation* find(const char* caller, const char* name) {
    for (Operation* each = first_operation; each && name; each = each->next) {
        if (std::strcmp(each->name, name) == 0) return each;
    }
    report_misuse(caller, std::string("there is no operation ") + (name ? name : "null"));
    return nullptr;
}

bool any_watched() {
    if (logging()) return true;
    for (const Operation* each = first_operation; each; each = each->next) {
        if (!each->faults.empty() || each->hook.load()) return true;
    }
    return false;
}

}  // namespace

std::atomic<bool> watched{false};

Operation::Operation(const char* exported_name) : name(exported_name), next(first_operation) {
    first_operation = this;
}

std::optional<uint32_t> striking_fault(Operation& called) {
    const locks::Exclusive held(lock);
    std::optional<uint32_t> code;
    for (auto fault = called.faults.begin(); fault != called.faults.end();) {
        if (fault->remaining == 0) {
            code = fault++->code;
        } else if (--fault->remaining == 0) {
            code = fault->code;
            fault = called.faults.erase(fault);
        } else {
            ++fault;
        }
    }
    return code;
}

InsideHook::InsideHook(const Operation& hooked)
    : hooked_(&hooked), outer_(static_cast<InsideHook*>(TlsGetValue(hook_slot))) {
    TlsSetValue(hook_slot, this);
}

InsideHook::~InsideHook() { TlsSetValue(hook_slot, outer_); }

void* active_hook(const Operation& called) {
    void* const hook = called.hook.load();
    if (!hook) return nullptr;
    const DWORD last_error = GetLastError();  // TlsGetValue clears it
    const auto* inside = static_cast<InsideHook*>(TlsGetValue(hook_slot));
    SetLastError(last_error);
    for (; inside; inside = inside->outer_) {
        if (inside->hooked_ == &called) return nullptr;
    }
    return hook;
}

void update_watched() {
    const locks::Exclusive held(lock);
    watched.store(any_watched());
}

void add_fault(const char* name, uint32_t nth, uint32_t code) {
    Operation* const failing = find("VlSim_Fail", name);
    if (!failing) return;
    {
        const locks::Exclusive held(lock);
        failing->faults.push_back({nth, code});
    }
    update_watched();
}

void set_hook(const char* name, void* function) {
    Operation* const hooked = find("VlSim_Hook", name);
    if (!hooked) return;
    hooked->hook.store(function);
    update_watched();
}

void clear_faults() {
    {
        const locks::Exclusive held(lock);
        for (Operation* each = first_operation; each; each = each->next) {
            each->faults.clear();
            each->hook.store(nullptr);
        }
    }
    update_watched();
}

}  // namespace vlsim
