// The control interface.
#include "VlSpool.h"
#include "call_log.h"
#include "document.h"
#include "faults.h"
#include "handles.h"
#include "misuse.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace vlspool {
namespace {

constexpr uint32_t kSuccess = 0;
constexpr uint32_t kRefused = 1;

uint32_t give_text(const std::string& whole, char* text, uint32_t size) {
    if (text && size > 0) {
        const size_t length = std::min<size_t>(whole.size(), size - 1);
        std::memcpy(text, whole.data(), length);
        text[length] = 0;
    }
    return static_cast<uint32_t>(whole.size());
}

template <typename Change>
uint32_t change(Change make) {
    const bool changed = change_document([&make](json& document) {
        make(document);
        return true;
    });
    return changed ? kSuccess : kRefused;
}

}  // namespace
}  // namespace vlspool

using vlspool::json;

uint32_t VlSpool_Reset() {
    const uint32_t result = vlspool::change([](json& document) { document = vlspool::built_in_scenario(); });
    vlsim::clear_faults();
    vlsim::clear_log();
    vlsim::clear_misuse();
    vlsim::set_logging(true);
    return result;
}

uint32_t VlSpool_LoadScenario(const char* text) {
    return vlspool::change([text](json& document) { document = json::parse(text); });
}

uint32_t VlSpool_Set(const char* pointer, const char* text) {
    return vlspool::change(
        [=](json& document) { document[json::json_pointer(pointer)] = json::parse(text); });
}

uint32_t VlSpool_Get(const char* pointer, char* text, uint32_t size) {
    try {
        return vlspool::give_text(vlspool::read_document().at(json::json_pointer(pointer)).dump(), text,
                                  size);
    } catch (const std::exception&) {
        return vlspool::give_text("", text, size);
    }
}

uint32_t VlSpool_CallCount(const char* function) { return vlsim::call_count(function); }

uint32_t VlSpool_GetCall(uint32_t index, char* text, uint32_t size) {
    return vlspool::give_text(vlsim::logged_call(index).value_or(""), text, size);
}

void VlSpool_ClearLog() { vlsim::clear_log(); }

void VlSpool_Fail(const char* function, uint32_t nth, uint32_t error) {
    vlsim::add_fault(function, nth, error);
}

void VlSpool_ClearFaults() { vlsim::clear_faults(); }

uint32_t VlSpool_OpenHandles() { return vlspool::open_handles(); }

uint32_t VlSpool_MisuseCount() { return vlsim::misuse_count(); }

uint32_t VlSpool_GetMisuse(uint32_t index, char* text, uint32_t size) {
    return vlspool::give_text(vlsim::misuse_report(index).value_or(""), text, size);
}

void VlSpool_ClearMisuse() { vlsim::clear_misuse(); }
