#include "call_census.h"

#include <stddef.h>
#include <string.h>

#include <algorithm>
#include <iterator>

namespace bench {
namespace {

bool is_one_of(const std::string& name, const char* const* first, const char* const* last) {
    return std::any_of(first, last, [&](const char* listed) { return name == listed; });
}

bool allocates(const std::string& function) {
    constexpr const char* kNames[] = {"malloc",       "calloc",         "realloc",
                                      "HeapAlloc",    "LocalAlloc",     "GlobalAlloc",
                                      "VirtualAlloc", "CoTaskMemAlloc", "Btsdk_MallocMemory"};
    return is_one_of(function, std::begin(kNames), std::end(kNames));
}

bool copies(const std::string& function) {
    constexpr const char* kNames[] = {"memcpy", "memmove"};
    return is_one_of(function, std::begin(kNames), std::end(kNames));
}

}  // namespace

// Numbers and the code that counts; the code finds its numbers relative to itself.
struct CallCensus::Counter {
    uint64_t calls;
    uint64_t third_arguments;  // their sum: the size, in functions that copy
    void* target;
    uint8_t code[24];

    void assemble(bool adds_third_argument) {
        uint8_t* at = code;
        at = emit(at, {0x48, 0xFF, 0x05}, &calls);                                     // inc qword [calls]
        if (adds_third_argument) at = emit(at, {0x4C, 0x01, 0x05}, &third_arguments);  // add [...], r8
        emit(at, {0xFF, 0x25}, &target);                                               // jmp [target]
    }

private:
    static uint8_t* emit(uint8_t* at, std::initializer_list<uint8_t> operation, const void* operand) {
        at = std::copy(operation.begin(), operation.end(), at);
        const auto distance = static_cast<int32_t>(static_cast<const uint8_t*>(operand) - (at + 4));
        memcpy(at, &distance, sizeof distance);
        return at + sizeof distance;
    }
};

CallCensus::CallCensus(HMODULE module)
    : slots_(import_slots(module)),
      counters_(static_cast<Counter*>(VirtualAlloc(nullptr, slots_.size() * sizeof(Counter),
                                                   MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE))) {
    for (size_t i = 0; i < slots_.size(); ++i) {
        counters_[i].target = *slots_[i].address;
        counters_[i].assemble(copies(slots_[i].function));
        write_slot(slots_[i].address, counters_[i].code);
    }
}

CallCensus::~CallCensus() {
    for (size_t i = 0; i < slots_.size(); ++i) write_slot(slots_[i].address, counters_[i].target);
    VirtualFree(counters_, 0, MEM_RELEASE);
}

Counts CallCensus::counts() const {
    Counts sum;
    for (size_t i = 0; i < slots_.size(); ++i) {
        const Counter& counter = counters_[i];
        if (counter.calls == 0) continue;
        if (slots_[i].dll != "msvcrt.dll") sum.platform_calls += counter.calls;
        if (slots_[i].dll == "vlsdk.dll") sum.stack_calls += counter.calls;
        if (allocates(slots_[i].function)) sum.allocations += counter.calls;
        sum.bytes_copied += counter.third_arguments;
        if (!sum.calls.empty()) sum.calls += ", ";
        sum.calls += slots_[i].function + " " + std::to_string(counter.calls);
    }
    return sum;
}

}  // namespace bench
