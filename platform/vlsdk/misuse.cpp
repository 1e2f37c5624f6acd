#include "misuse.h"

#include "../locks.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace vlsim {
namespace {

constexpr size_t kLargestRecord = 288;

SRWLOCK lock = SRWLOCK_INIT;
std::vector<std::string> reports;

}  // namespace

void report_misuse(const char* operation, const std::string& what) {
    const locks::Exclusive held(lock);
    reports.push_back(std::string(operation) + ": " + what);
}

void clear_misuse() {
    const locks::Exclusive held(lock);
    reports.clear();
}

uint32_t misuse_count() {
    const locks::Shared held(lock);
    return static_cast<uint32_t>(reports.size());
}

std::optional<std::string> misuse_report(uint32_t index) {
    const locks::Shared held(lock);
    if (index >= reports.size()) return std::nullopt;
    return reports[index];
}

bool present(const char* operation, const char* parameter, const void* pointer) {
    if (!pointer) report_misuse(operation, std::string("null ") + parameter);
    return pointer != nullptr;
}

void expect_zeroed(const char* operation, const void* record, size_t size,
                   std::initializer_list<InputField> inputs) {
    static constexpr std::array<uint8_t, kLargestRecord> kZero{};
    std::array<uint8_t, kLargestRecord> rest;
    std::memcpy(rest.data(), record, size);
    for (const InputField& field : inputs) std::memset(rest.data() + field.offset, 0, field.size);
    if (std::memcmp(rest.data(), kZero.data(), size) == 0) return;
    const auto* const dirty =
        std::find_if(rest.data(), rest.data() + size, [](uint8_t byte) { return byte; });
    report_misuse(operation, "record not zeroed at offset " + std::to_string(dirty - rest.data()));
}

}  // namespace vlsim
