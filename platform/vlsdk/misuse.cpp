#include "misuse.h"

#include "locks.h"

#include <algorithm>
#include <vector>

namespace vlsim {
namespace {

SRWLOCK lock = SRWLOCK_INIT;
std::vector<std::string> reports;

}  // namespace

void report_misuse(const char* operation, const std::string& what) {
    const Exclusive held(lock);
    reports.push_back(std::string(operation) + ": " + what);
}

void clear_misuse() {
    const Exclusive held(lock);
    reports.clear();
}

uint32_t misuse_count() {
    const Shared held(lock);
    return static_cast<uint32_t>(reports.size());
}

std::optional<std::string> misuse_report(uint32_t index) {
    const Shared held(lock);
    if (index >= reports.size()) return std::nullopt;
    return reports[index];
}

bool present(const char* operation, const char* parameter, const void* pointer) {
    if (!pointer) report_misuse(operation, std::string("null ") + parameter);
    return pointer != nullptr;
}

void expect_zeroed(const char* operation, const void* record, size_t size,
                   std::initializer_list<InputField> inputs) {
    const auto* bytes = static_cast<const uint8_t*>(record);
    for (size_t at = 0; at < size; ++at) {
        const bool input = std::any_of(inputs.begin(), inputs.end(), [at](const InputField& field) {
            return at >= field.offset && at < field.offset + field.size;
        });
        if (bytes[at] == 0 || input) continue;
        report_misuse(operation, "record not zeroed at offset " + std::to_string(at));
        return;
    }
}

}  // namespace vlsim
