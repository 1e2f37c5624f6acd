// The state of adapter, services and devices in words.
#include "frame/stack_state.h"
#include "frame/trace.h"
#include "language_library.h"
#include "live_state.h"
#include "vlcm/states.h"

namespace vl::presentation {
namespace {

constexpr uint32_t kConnectedId = 1813;
constexpr uint32_t kIdleId = 1814;
constexpr uint32_t kPairedId = 1842;
constexpr uint32_t kNotReadyId = 1843;
constexpr size_t kWorkSize = 100;
constexpr size_t kDeviceWorkSize = 200;

uint32_t adapter_text_id() {
    if (!is_bluetooth_ready()) return kNotReadyId;
    return has_connection() ? kConnectedId : kIdleId;
}

uint32_t local_service_text_id(BtHandle server) {
    if (!is_bluetooth_ready()) return kNotReadyId;
    switch (server_status(server)) {
        case kServerConnected:
            return kConnectedId;
        case kServerIdle:
            return kIdleId;
        default:
            return kNotReadyId;
    }
}

uint32_t remote_service_text_id(BtHandle shortcut) {
    if (!is_bluetooth_ready()) return kNotReadyId;
    return is_connected_service(shortcut) ? kConnectedId : kIdleId;
}

constexpr const char* separator(const char*) { return ", "; }
constexpr const wchar_t* separator(const wchar_t*) { return L", "; }

// While Bluetooth is off a remote device reads as idle, and never as paired.
template <typename Char>
void load_device_text(const LanguageLibrary& texts, BtHandle device, Char (&work)[kDeviceWorkSize]) {
    const bool ready = is_bluetooth_ready();
    texts.load(ready && is_connected_device(device) ? kConnectedId : kIdleId, work);
    if (!ready || !is_paired_device(device)) return;
    Char paired[kWorkSize] = {};
    texts.load(kPairedId, paired);
    text::append(work, separator(work));
    text::append(work, static_cast<const Char*>(paired));
}

// load(texts, work) puts the state's text into the zeroed work buffer.
template <size_t work_size, typename Char, typename Load>
BOOL hand_out_text(Char* buffer, uint32_t size, Load load) {
    Char work[work_size] = {};
    {
        const LanguageLibrary texts;
        if (!texts) {
            trace_line("error!!! Can not load resource library.\r\n");
            return FALSE;
        }
        load(texts, work);
    }
    const size_t length = text::length_of(work);
    if (length >= size) {
        trace_line("error!!! The given buffer is not enough.\r\n");
        return FALSE;
    }
    memcpy(buffer, work, (length + 1) * sizeof(Char));
    return TRUE;
}

template <typename Char>
BOOL adapter_text(Char* buffer, uint32_t size) {
    if (buffer == nullptr) return FALSE;
    return hand_out_text<kWorkSize>(buffer, size, [](const LanguageLibrary& texts, Char(&work)[kWorkSize]) {
        texts.load(adapter_text_id(), work);
    });
}

template <typename Char>
BOOL local_service_text(BtHandle server, Char* buffer, uint32_t size) {
    if (server == 0 || buffer == nullptr) return FALSE;
    return hand_out_text<kWorkSize>(buffer, size, [=](const LanguageLibrary& texts, Char(&work)[kWorkSize]) {
        texts.load(local_service_text_id(server), work);
    });
}

template <typename Char>
BOOL remote_service_text(BtHandle shortcut, Char* buffer, uint32_t size) {
    if (shortcut == 0 || buffer == nullptr) return FALSE;
    return hand_out_text<kWorkSize>(buffer, size, [=](const LanguageLibrary& texts, Char(&work)[kWorkSize]) {
        texts.load(remote_service_text_id(shortcut), work);
    });
}

template <typename Char>
BOOL remote_device_text(BtHandle device, Char* buffer, uint32_t size) {
    if (device == 0 || buffer == nullptr) return FALSE;
    return hand_out_text<kDeviceWorkSize>(buffer, size,
                                          [=](const LanguageLibrary& texts, Char(&work)[kDeviceWorkSize]) {
                                              load_device_text(texts, device, work);
                                          });
}

}  // namespace
}  // namespace vl::presentation

using namespace vl;

extern "C" BOOL VlCm_GetLocDevStatusString(char* buffer, uint32_t size) {
    return presentation::adapter_text(buffer, size);
}

extern "C" BOOL VlCm_GetLocDevStatusStringW(wchar_t* buffer, uint32_t size) {
    return presentation::adapter_text(buffer, size);
}

extern "C" BOOL VlCm_GetLocSvcStatusString(uint32_t server, char* buffer, uint32_t size) {
    return presentation::local_service_text(server, buffer, size);
}

extern "C" BOOL VlCm_GetLocSvcStatusStringW(uint32_t server, wchar_t* buffer, uint32_t size) {
    return presentation::local_service_text(server, buffer, size);
}

extern "C" BOOL VlCm_GetRmtDevStatusString(uint32_t device, char* buffer, uint32_t size) {
    return presentation::remote_device_text(device, buffer, size);
}

extern "C" BOOL VlCm_GetRmtDevStatusStringW(uint32_t device, wchar_t* buffer, uint32_t size) {
    return presentation::remote_device_text(device, buffer, size);
}

extern "C" BOOL VlCm_GetRmtSvcStatusString(uint32_t shortcut, char* buffer, uint32_t size) {
    return presentation::remote_service_text(shortcut, buffer, size);
}

extern "C" BOOL VlCm_GetRmtSvcStatusStringW(uint32_t shortcut, wchar_t* buffer, uint32_t size) {
    return presentation::remote_service_text(shortcut, buffer, size);
}
