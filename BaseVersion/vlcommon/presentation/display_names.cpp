// The names under which services and devices are shown.
#include "vlcm/display_names.h"
#include "frame/frame.h"
#include "frame/settings.h"
#include "language_library.h"
#include "shortcuts/shortcut_record.h"
#include "text/device_address.h"
#include "text/wide_text.h"
#include "vlcm/ports.h"

namespace vl::presentation {
namespace {

constexpr uint16_t kSerialPort = 0x1101;
constexpr uint32_t kPortFormatId = 5022;
constexpr size_t kNameSize = 100;

template <typename Char>
using Name = Char[kNameSize];

// In 32 bits: a size of 0 counts as the largest.
template <typename Char>
uint32_t hand_out(const Char* name, Char* buffer, uint32_t size) {
    const auto length = static_cast<uint32_t>(text::length_of(name));
    if (length > size - 1) return VLCM_BUFFER_TOO_SMALL;
    memcpy(buffer, name, (length + 1) * sizeof(Char));
    return VLCM_OK;
}

constexpr const char* port_opening(const char*) { return " ("; }
constexpr const wchar_t* port_opening(const wchar_t*) { return L" ("; }
constexpr const char* port_closing(const char*) { return ")"; }
constexpr const wchar_t* port_closing(const wchar_t*) { return L")"; }

template <typename Char>
void append_port(const LanguageLibrary& texts, int port, Name<Char>& name) {
    Char pattern[20] = {};
    Char suffix[kNameSize] = {};
    texts.load(kPortFormatId, pattern);
    text::format(suffix, pattern, port);
    text::append(name, port_opening(name));
    text::append(name, static_cast<const Char*>(suffix));
    text::append(name, port_closing(name));
}

void read_service_name(const char* section, const char* file, Name<char>& name) {
    settings::read_text(section, "Name", "", name, sizeof name, file);
}

void read_service_name(const char* section, const char* file, Name<wchar_t>& name) {
    char narrow[kNameSize] = {};
    read_service_name(section, file, narrow);
    text::local_to_wide(name, kNameSize, narrow);
}

// The name that the settings give to a serial service made on demand. Its sections begin at 2: 0 and
// 1 are the fixed services.
template <typename Char>
void take_dynamic_name(int port, Name<Char>& name) {
    char wanted[20];
    format_bounded(wanted, sizeof wanted, "COM%d", port);
    const PathBuffer file = settings::common_file();
    const int count = settings::read_number("LocalBluetooth", "SPPSvcNum", 2, file);
    for (int i = 2; i < count; ++i) {
        char section[32];
        char device[20] = {};
        format_bounded(section, sizeof section, "LocalSPPService%d", i);
        settings::read_text(section, "VirtualDevice", "", device, sizeof device, file.text());
        if (_stricmp(device, wanted) != 0) continue;
        read_service_name(section, file.text(), name);
        return;
    }
}

template <typename Char>
void add_local_port(const LanguageLibrary& texts, BtHandle server, Name<Char>& name) {
    const int port = VlCm_GetLocalSPPSvrComPort(server);
    if (port <= 0) return;
    if (VlCm_IsDynamicLocSppSvc(server)) {
        take_dynamic_name(port, name);
    } else {
        append_port(texts, port, name);
    }
}

template <typename Char>
void add_remote_port(const LanguageLibrary& texts, BtHandle shortcut, Name<Char>& name) {
    const int port = VlCm_GetComPortByShortcut(shortcut, kSerialPort);
    if (port > 0) append_port(texts, port, name);
}

// The class name, to which `add_port` adds for serial ports.
template <typename Char, typename AddPort>
uint32_t class_name(uint16_t service_class, AddPort add_port, Name<Char>& name) {
    const LanguageLibrary texts;
    if (!texts) return VLCM_RESOURCE_FAILURE;
    texts.load(VlCm_GetServiceClsNameStringID(service_class), name);
    if (service_class == kSerialPort) add_port(texts, name);
    return VLCM_OK;
}

template <typename Char>
uint32_t local_service_name(BtHandle server, Char* buffer, uint32_t size) {
    if (server == 0 || buffer == nullptr) return VLCM_INVALID_ARGUMENT;
    ServerAttributes attributes{};
    if (const uint32_t result = Btsdk_GetServerAttributes(server, &attributes)) return result;
    Name<Char> name = {};
    const auto add_port = [=](const LanguageLibrary& texts, Name<Char>& to) {
        add_local_port(texts, server, to);
    };
    const uint32_t result = class_name(attributes.serviceClass, add_port, name);
    return result == VLCM_OK ? hand_out<Char>(name, buffer, size) : result;
}

template <typename Char>
uint32_t remote_service_name(BtHandle shortcut, Char* buffer, uint32_t size) {
    if (shortcut == 0 || buffer == nullptr) return VLCM_INVALID_ARGUMENT;
    ShortcutProperty record = shortcuts::record_of(shortcut);
    if (const uint32_t result = Btsdk_GetShortCutProperty(&record)) return result;
    Name<Char> name = {};
    const auto add_port = [=](const LanguageLibrary& texts, Name<Char>& to) {
        add_remote_port(texts, shortcut, to);
    };
    const uint32_t result = class_name(record.serviceClass, add_port, name);
    return result == VLCM_OK ? hand_out<Char>(name, buffer, size) : result;
}

// A nameless device shows its address, byte 5 first.
uint32_t remote_device_name(const uint8_t* address, char* buffer, uint32_t size) {
    Name<char> name = {};
    if (const BtHandle device = Btsdk_GetRemoteDeviceHandle(address)) {
        uint32_t length = sizeof name;
        if (Btsdk_GetRemoteDeviceName(device, name, &length) != 0) name[0] = 0;
        name[sizeof name - 1] = 0;
    }
    if (name[0] == 0) {
        static_assert(sizeof name >= text::kPrintedAddressSize);
        text::print_device_address(address, name);
    }
    return hand_out<char>(name, buffer, size);
}

}  // namespace
}  // namespace vl::presentation

using namespace vl;

extern "C" uint32_t VlCm_GetLocSvcDisplayName(uint32_t server, char* buffer, uint32_t size) {
    return presentation::local_service_name(server, buffer, size);
}

extern "C" uint32_t VlCm_GetLocSvcDisplayNameW(uint32_t server, wchar_t* buffer, uint32_t size) {
    return presentation::local_service_name(server, buffer, size);
}

extern "C" uint32_t VlCm_GetRmtSvcDisplayName(uint32_t shortcut, char* buffer, uint32_t size) {
    return presentation::remote_service_name(shortcut, buffer, size);
}

extern "C" uint32_t VlCm_GetRmtSvcDisplayNameW(uint32_t shortcut, wchar_t* buffer, uint32_t size) {
    return presentation::remote_service_name(shortcut, buffer, size);
}

extern "C" uint32_t VlCm_GetRmtDevDisplayName(const uint8_t* address, char* buffer, uint32_t size) {
    if (address == nullptr || buffer == nullptr) return VLCM_INVALID_ARGUMENT;
    return presentation::remote_device_name(address, buffer, size);
}
