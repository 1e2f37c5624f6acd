#include "library_texts.h"

#include "VlCommon.h"
#include "frame/unique.h"

namespace programs {
namespace {

constexpr uint32_t kTextSize = 260;

std::wstring status_text(BOOL (*query)(uint32_t, wchar_t*, uint32_t), uint32_t handle) {
    wchar_t text[kTextSize] = L"";
    return query(handle, text, kTextSize) ? text : std::wstring();
}

std::wstring name_text(uint32_t (*query)(uint32_t, wchar_t*, uint32_t), uint32_t handle) {
    wchar_t text[kTextSize] = L"";
    return query(handle, text, kTextSize) == VLCM_OK ? text : std::wstring();
}

}  // namespace

std::wstring library_text(unsigned int id) {
    const vl::UniqueModule library(VlCm_GetLangDepResLib(0));
    wchar_t text[kTextSize] = L"";
    return library && LoadStringW(library.get(), id, text, kTextSize) > 0 ? text : std::wstring();
}

std::wstring adapter_status() {
    wchar_t text[kTextSize] = L"";
    return VlCm_GetLocDevStatusStringW(text, kTextSize) ? text : std::wstring();
}

std::wstring device_kind(uint32_t device_class) {
    wchar_t text[kTextSize] = L"";
    return VlCm_GetDevTypeStrByDevClsW(device_class, text, kTextSize) ? text : std::wstring();
}

std::wstring device_status(BtHandle device) { return status_text(VlCm_GetRmtDevStatusStringW, device); }
std::wstring server_name(BtHandle server) { return name_text(VlCm_GetLocSvcDisplayNameW, server); }
std::wstring server_status(BtHandle server) { return status_text(VlCm_GetLocSvcStatusStringW, server); }
std::wstring shortcut_name(BtHandle shortcut) { return name_text(VlCm_GetRmtSvcDisplayNameW, shortcut); }
std::wstring shortcut_status(BtHandle shortcut) { return status_text(VlCm_GetRmtSvcStatusStringW, shortcut); }

}  // namespace programs
