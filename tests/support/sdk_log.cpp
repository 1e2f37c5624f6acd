#include "support/sdk_log.h"

#include "VlSim.h"

namespace support {
namespace {

using Reader = uint32_t (*)(uint32_t, char*, uint32_t);

std::vector<std::string> read_all(uint32_t count, Reader reader) {
    std::vector<std::string> lines;
    for (uint32_t i = 0; i < count; ++i) {
        std::string text(reader(i, nullptr, 0) + 1, '\0');
        reader(i, text.data(), static_cast<uint32_t>(text.size()));
        text.pop_back();
        lines.push_back(text);
    }
    return lines;
}

}  // namespace

std::vector<std::string> sdk_calls() { return read_all(VlSim_CallCount(nullptr), VlSim_GetCall); }

std::vector<std::string> sdk_calls(const char* operation) {
    std::vector<std::string> chosen;
    const std::string start = std::string(operation) + "(";
    for (const std::string& call : sdk_calls()) {
        if (call.rfind(start, 0) == 0) chosen.push_back(call);
    }
    return chosen;
}

std::vector<std::string> sdk_operations() {
    std::vector<std::string> names;
    for (const std::string& call : sdk_calls()) names.push_back(call.substr(0, call.find('(')));
    return names;
}

void clear_sdk_log() { VlSim_ClearLog(); }

std::vector<std::string> sdk_misuse() { return read_all(VlSim_MisuseCount(), VlSim_GetMisuse); }

}  // namespace support
