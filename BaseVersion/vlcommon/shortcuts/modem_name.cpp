// The modem that the system has attached to a COM port.
#include "frame/frame.h"
#include "vlcm/ports.h"

#include <memory>
#include <new>

namespace vl::shortcuts {
namespace {

constexpr char kModemClass[] =
    "SYSTEM\\CurrentControlSet\\Control\\Class\\{4D36E96D-E325-11CE-BFC1-08002BE10318}";

using WorkBuffer = std::unique_ptr<char[]>;

WorkBuffer new_work_buffer() { return WorkBuffer(new (std::nothrow) char[kPathSize]()); }

struct WorkBuffers {
    WorkBuffer path = new_work_buffer();
    WorkBuffer value = new_work_buffer();
    WorkBuffer subkey = new_work_buffer();

    explicit operator bool() const { return path && value && subkey; }
};

// A value that cannot be read is empty.
bool read_value(HKEY key, const char* name, char* value) {
    value[0] = 0;
    if (key != nullptr && Btsdk_RegQueryStringValue(key, name, value, kPathSize) == 0) return true;
    value[0] = 0;
    return false;
}

// Leaves the modem's name in the value buffer when the subkey's modem is attached to the port.
bool is_attached(WorkBuffers& work, const char* port_name) {
    format_bounded(work.path.get(), kPathSize, "%s\\%s", kModemClass, work.subkey.get());
    UniqueSdkRegistryKey modem;
    if (Btsdk_RegOpenKey(HKEY_LOCAL_MACHINE, work.path.get(), modem.receive()) != 0) (void)modem.release();
    read_value(modem.get(), "AttachedTo", work.value.get());
    trace_line("Attached to %s \r\n", work.value.get());
    return _stricmp(work.value.get(), port_name) == 0 &&
           read_value(modem.get(), "FriendlyName", work.value.get());
}

bool find_modem(WorkBuffers& work, const char* port_name) {
    UniqueSdkRegistryKey modems;
    if (Btsdk_RegOpenKey(HKEY_LOCAL_MACHINE, kModemClass, modems.receive()) != 0) {
        (void)modems.release();
        return false;
    }
    for (uint32_t i = 0; Btsdk_RegEnumKey(modems.get(), i, work.subkey.get(), kPathSize) == 0; ++i) {
        if (is_attached(work, port_name)) return true;
    }
    return false;
}

// Room for exactly the name and its terminator is refused: callers count on one byte more.
bool hand_out(const char* modem, char* buffer, uint16_t& size) {
    const auto needed = static_cast<uint16_t>(bounded_length(modem, kPathSize - 1) + 1);
    trace_line("Modem is %s \r\n", modem);
    const bool fits = needed < size;
    if (fits) {
        memcpy(buffer, modem, needed);
    } else {
        trace_line(" buffer too small \r\n");
    }
    size = needed;
    return fits;
}

bool name_of_modem(int port, char* buffer, uint16_t& size) {
    WorkBuffers work;
    if (!work) return false;
    char port_name[8];
    format_bounded(port_name, sizeof port_name, "COM%d", port);
    trace_line("ComName is %s,\r\n", port_name);
    return find_modem(work, port_name) && hand_out(work.value.get(), buffer, size);
}

bool valid(int port, const char* buffer, const uint16_t* size) {
    constexpr int kLastPort = 256;
    return port >= 1 && port <= kLastPort && buffer != nullptr && size != nullptr;
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" BOOL VlCm_FindModemNameByComPort(int port, char* buffer, uint16_t* size) {
    TraceScope scope("VlCm_MatchModemNameByComPort");  // the older name, which trace readers look for
    if (shortcuts::valid(port, buffer, size)) return shortcuts::name_of_modem(port, buffer, *size);
    trace_line("Invalid input \r\n");
    return FALSE;
}
