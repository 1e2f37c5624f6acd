#include "printer_file.h"

#include "frame/frame.h"
#include "frame/settings.h"
#include "vlcm/printers.h"
#include "vlcm/settings.h"

namespace vl::printers {

PathBuffer printer_file() {
    PathBuffer path;
    if (VlCm_IsX64Platform()) {
        GetWindowsDirectoryA(path.data(), PathBuffer::size());
        path.append("\\").append("SysWow64");
    } else {
        GetSystemDirectoryA(path.data(), PathBuffer::size());
    }
    path.append("\\").append("VLPRINT.INI");
    return path;
}

AddressText address_text(const uint8_t* address) {
    AddressText key;
    text::print_device_address(address, key.text);
    return key;
}

PortDevice port_device(const char* port, ProfileCalls calls) {
    const PathBuffer file = printer_file();
    PortDevice device{};
    if (calls == ProfileCalls::kStack) {
        settings::read_text(port, "BD_ADDR", "", device.text, sizeof device.text, file.text());
    } else {
        GetPrivateProfileStringA(port, "BD_ADDR", "", device.text, sizeof device.text, file.text());
    }
    return device;
}

bool is_bluetooth_port(const char* port, ProfileCalls calls) {
    TraceScope scope("hlp_IsBTPort");
    const bool found = port != nullptr && port_device(port, calls).text[0] != 0;
    trace_line("bool=%x\r\n", static_cast<unsigned>(found));
    return found;
}

}  // namespace vl::printers

using namespace vl::printers;

extern "C" BOOL VlCm_IsBTPort(const char* port) { return is_bluetooth_port(port, ProfileCalls::kStack); }

extern "C" BOOL VlCm_IsBTPortNew(const char* port) { return is_bluetooth_port(port, ProfileCalls::kWindows); }
