// Deleting remote devices, with a question and a refusal for those that are connected.
#include "frame/frame.h"
#include "frame/stack_state.h"
#include "presentation/language_library.h"
#include "text/wide_text.h"
#include "tray_requests.h"
#include "vlcm/display_names.h"
#include "vlcm/localctl.h"

namespace vl::localctl {
namespace {

constexpr uint32_t kQuestionCaptionId = 1213;
constexpr uint32_t kQuestionId = 1214;
constexpr uint32_t kRefusalCaptionId = 1215;
constexpr uint32_t kRefusalId = 1216;
constexpr size_t kWideSize = 260;

bool is_readable(const void* devices, uint32_t count) {
    const UINT_PTR bytes = UINT_PTR{count} * sizeof(BtHandle);
    return devices != nullptr && count != 0 && !IsBadReadPtr(devices, bytes);
}

// Devices of the stack's type 1 may go while they are connected.
bool is_held(BtHandle device) {
    constexpr uint32_t kDeletableType = 1;
    return Btsdk_GetRemoteDeviceType(device) != kDeletableType && Btsdk_IsDeviceConnected(device) == 1;
}

template <typename Char>
bool is_refused_by_user(HWND owner, const LanguageLibrary& texts) {
    Char caption[100] = {};
    Char question[260] = {};
    texts.load(kQuestionCaptionId, caption);
    texts.load(kQuestionId, question);
    return text::show_message(owner, question, caption, MB_YESNO | MB_ICONQUESTION) == IDNO;
}

// Loads a text as UTF-16; the plain form's texts come in the ANSI code page.
template <typename Char, size_t size>
void load_wide(const LanguageLibrary& texts, uint32_t id, wchar_t (&wide)[kWideSize]) {
    Char loaded[size] = {};
    texts.load(id, loaded);
    if constexpr (sizeof(Char) == sizeof(char)) {
        text::local_to_wide(wide, kWideSize, loaded);
    } else {
        memcpy(wide, loaded, sizeof loaded);
    }
}

template <typename Char>
void refuse(HWND owner, const LanguageLibrary& texts, BtHandle device) {
    uint8_t address[6] = {};
    char name[100] = {};
    if (Btsdk_GetRemoteDeviceAddress(device, address) != 0) return;
    if (VlCm_GetRmtDevDisplayName(address, name, sizeof name) != VLCM_OK) return;
    wchar_t caption[kWideSize] = {};
    wchar_t pattern[kWideSize] = {};
    wchar_t wide_name[kWideSize] = {};
    wchar_t message[kWideSize] = {};
    load_wide<Char, 100>(texts, kRefusalCaptionId, caption);
    load_wide<Char, 200>(texts, kRefusalId, pattern);
    text::utf8_to_wide(wide_name, kWideSize, name);
    text::format(message, pattern, static_cast<const wchar_t*>(wide_name));
    MessageBoxW(owner, message, caption, MB_ICONHAND);
}

// Posts a request for each device up to the first that is held, and gives its index; `count` when all
// were posted.
uint32_t post_until_held(const BtHandle* devices, uint32_t count) {
    for (uint32_t i = 0; i < count; ++i) {
        if (is_held(devices[i])) return i;
        trace_line("Delete device: 0x%08x\r\n", devices[i]);
        request_from_tray(kDeleteDevice, devices[i]);
    }
    return count;
}

BOOL fail(const char* line) {
    trace_line(line);
    return FALSE;
}

template <typename Char>
BOOL delete_devices(HWND owner, const BtHandle* devices, uint32_t count) {
    if (!is_readable(devices, count)) return fail("error!!! Invalid parameter.\r\n");
    if (!is_bluetooth_ready()) return fail("error!!! The bluetooth is not ready.\r\n");
    const LanguageLibrary texts;
    if (!texts) return fail("error!!! Can not load resource library.\r\n");
    uint32_t held = 0;
    if (!is_held(devices[0])) {
        if (is_refused_by_user<Char>(owner, texts)) return FALSE;
        held = post_until_held(devices, count);
        if (held == count) return TRUE;
    }
    refuse<Char>(owner, texts, devices[held]);
    return FALSE;
}

}  // namespace
}  // namespace vl::localctl

using namespace vl;

extern "C" BOOL VlCm_DeleteDevices(HWND owner, const unsigned int* devices, unsigned int count) {
    TraceScope scope("VlCm_DeleteDevices");
    return localctl::delete_devices<char>(owner, devices, count);
}

extern "C" BOOL VlCm_DeleteDevicesW(HWND owner, const unsigned int* devices, unsigned int count) {
    TraceScope scope("VlCm_DeleteDevicesW");
    return localctl::delete_devices<wchar_t>(owner, devices, count);
}
