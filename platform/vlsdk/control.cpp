// The control interface.
#include "VlSim.h"
#include "call_log.h"
#include "document.h"
#include "faults.h"
#include "home_folder.h"
#include "live.h"
#include "misuse.h"
#include "state.h"

#include <windows.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vlsim {
namespace {

constexpr uint32_t kSuccess = 0;
constexpr uint32_t kRefused = 1;

std::atomic<uint32_t> epoch{0};

uint32_t give_text(const std::string& whole, char* text, uint32_t size) {
    if (text && size > 0) {
        const size_t length = std::min<size_t>(whole.size(), size - 1);
        std::memcpy(text, whole.data(), length);
        text[length] = 0;
    }
    return static_cast<uint32_t>(whole.size());
}

uint32_t give_text(const std::optional<std::string>& whole, char* text, uint32_t size) {
    return give_text(whole.value_or(std::string()), text, size);
}

template <typename Change>
uint32_t change(Change make) {
    return change_document([&make](json& document) {
        make(document);
        return true;
    })
               ? kSuccess
               : kRefused;
}

uint32_t load(const std::string& text) {
    return change([&text](json& document) { document = json::parse(text); });
}

std::wstring wide(const char* utf8) {
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8, -1, nullptr, 0);
    std::wstring text(static_cast<size_t>(std::max(length, 1)), 0);
    MultiByteToWideChar(CP_UTF8, 0, utf8, -1, text.data(), length);
    text.pop_back();
    return text;
}

std::string narrow(const std::wstring& text) {
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(std::max(length, 1)), 0);
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, utf8.data(), length, nullptr, nullptr);
    utf8.pop_back();
    return utf8;
}

std::string inbox_folder(BtHandle handle) {
    const State state;
    const Device* const device = state->devices.find(handle);
    if (!device) return {};
    std::string name = address_value(device->address).get<std::string>();
    std::replace(name.begin(), name.end(), ':', '-');
    const std::wstring folder = home_folder() + L"\\inbox\\" + wide(name.c_str());
    std::error_code failed;
    std::filesystem::create_directories(folder, failed);
    return failed ? std::string() : narrow(folder);
}

std::string value_text(const char* pointer) {
    std::string text;
    read_document([&](const json& document) {
        const json::json_pointer place(pointer ? pointer : "");
        if (document.contains(place)) text = document.at(place).dump();
    });
    return text;
}

}  // namespace

uint32_t current_epoch() { return epoch.load(); }
void start_epoch() { ++epoch; }

}  // namespace vlsim

uint32_t VlSim_Reset() {
    vlsim::clear_faults();
    vlsim::clear_log();
    vlsim::clear_misuse();
    vlsim::start_epoch();
    vlsim::set_logging(true);
    return vlsim::load(vlsim::built_in_scenario());
}

uint32_t VlSim_LoadScenario(const char* json) { return json ? vlsim::load(json) : vlsim::kRefused; }

uint32_t VlSim_LoadScenarioFile(const char* path) {
    if (!path) return vlsim::kRefused;
    std::ifstream stream(std::filesystem::path(vlsim::wide(path)), std::ios::binary);
    if (!stream) return vlsim::kRefused;
    return vlsim::load(std::string(std::istreambuf_iterator<char>(stream), {}));
}

uint32_t VlSim_Patch(const char* json) {
    if (!json) return vlsim::kRefused;
    return vlsim::change([json](vlsim::json& document) { document.merge_patch(vlsim::json::parse(json)); });
}

uint32_t VlSim_Set(const char* pointer, const char* json) {
    if (!pointer || !json) return vlsim::kRefused;
    return vlsim::change([=](vlsim::json& document) {
        document[vlsim::json::json_pointer(pointer)] = vlsim::json::parse(json);
    });
}

uint32_t VlSim_Get(const char* pointer, char* json, uint32_t size) {
    try {
        return vlsim::give_text(vlsim::value_text(pointer), json, size);
    } catch (const std::exception&) {  // not a pointer at all
        return 0;
    }
}

uint32_t VlSim_GetInboxFolder(uint32_t device, char* path, uint32_t size) {
    return vlsim::give_text(vlsim::inbox_folder(device), path, size);
}

uint32_t VlSim_CallCount(const char* operation) { return vlsim::call_count(operation); }

uint32_t VlSim_GetCall(uint32_t index, char* text, uint32_t size) {
    return vlsim::give_text(vlsim::logged_call(index), text, size);
}

void VlSim_ClearLog() { vlsim::clear_log(); }

void VlSim_SetLogging(uint32_t on) { vlsim::set_logging(on != 0); }

void VlSim_Fail(const char* operation, uint32_t nth, uint32_t code) {
    vlsim::add_fault(operation, nth, code);
}

void VlSim_Hook(const char* operation, void* function) { vlsim::set_hook(operation, function); }

void VlSim_ClearFaults() { vlsim::clear_faults(); }

uint32_t VlSim_MisuseCount() { return vlsim::misuse_count(); }

uint32_t VlSim_GetMisuse(uint32_t index, char* text, uint32_t size) {
    return vlsim::give_text(vlsim::misuse_report(index), text, size);
}

void VlSim_ClearMisuse() { vlsim::clear_misuse(); }

uint32_t VlSim_LiveCount(uint32_t kind) {
    switch (kind) {
        case VLSIM_ENUMERATIONS:
            return vlsim::live_enumerations();
        case VLSIM_BLOCKS:
            return vlsim::live_blocks();
        case VLSIM_KEYS:
            return vlsim::live_keys();
        case VLSIM_FILES:
            return vlsim::live_files();
        default:
            return 0;
    }
}
