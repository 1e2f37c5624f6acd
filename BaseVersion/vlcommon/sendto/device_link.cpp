#include "device_link.h"

#include "link_writer.h"
#include "menu.h"
#include "text/device_address.h"
#include "text/wide_text.h"
#include "vlcm/catalogue.h"

namespace vl::sendto {
namespace {

// The stack's UTF-8 name, which need not be terminated.
struct DeviceName {
    explicit DeviceName(const RemoteDeviceProperty& device) { memcpy(utf8, device.name, sizeof device.name); }
    char utf8[sizeof RemoteDeviceProperty::name + 1] = {};
};

WidePath file_base(const DeviceName& name) {
    if (name.utf8[0] != 0) {
        wchar_t text[kPathSize];
        text::utf8_to_wide(text, kPathSize, name.utf8);
        return WidePath(text);
    }
    constexpr uint32_t kUnknownDevice = 1101;
    char unknown[kPathSize] = {};
    LanguageLibrary().load(kUnknownDevice, unknown);
    return wide(unknown);
}

bool is_taken(const WidePath& folder, const WidePath& name) {
    bool taken = false;
    visit_links(folder, [&](const WIN32_FIND_DATAW& entry) {
        taken = wcscmp(entry.cFileName, name.text()) == 0;
        return !taken;
    });
    return taken;
}

// "Name.lnk", "Name(1).lnk", ...: the first that no file has. Upper and lower case make different names.
WidePath free_name(const WidePath& folder, const WidePath& base) {
    WidePath name = WidePath(base).append(L".lnk");
    for (int number = 1; name && is_taken(folder, name); ++number) {
        wchar_t ending[24] = {};
        _snwprintf(ending, sizeof ending / sizeof *ending - 1, L"(%d).lnk", number);
        name = WidePath(base).append(ending);
    }
    return name;
}

void write_new_link(const WidePath& path, const DeviceName& name, const RemoteDeviceProperty& device) {
    char arguments[kDeviceArgumentLength + text::kPrintedAddressSize];
    copy_bounded(arguments, sizeof arguments, kDeviceArgument);
    text::print_device_address(device.address, arguments + kDeviceArgumentLength);
    const PathBuffer program = send_program();
    write_link(path, {program.text(), arguments, name.utf8, VlCm_GetDeviceIconIndex(device.deviceClass)});
}

bool is_current(const WidePath& existing, const WidePath& base) {
    return wcscmp(existing.text(), WidePath(base).append(L".lnk").text()) == 0;
}

}  // namespace

bool read_device(const WidePath& path, uint8_t* address) {
    const LinkFile link;
    if (!link || !path) return false;
    link.load(path.text());
    char arguments[kPathSize];
    link.read_arguments(arguments);
    if (strncmp(arguments, kDeviceArgument, kDeviceArgumentLength) != 0) return false;
    text::read_device_address(arguments + kDeviceArgumentLength, address);
    return true;
}

void write_device_link(const WidePath& folder, const WidePath& existing, const RemoteDeviceProperty& device) {
    const DeviceName name(device);
    if (existing && name.utf8[0] == 0) return;
    const WidePath base = file_base(name);
    if (existing) {
        if (is_current(existing, base)) return;
        delete_link(folder, existing);
    }
    if (!base) return;
    const WidePath path = file_in(folder, free_name(folder, base).text());
    if (path) write_new_link(path, name, device);
}

void delete_link(const WidePath& folder, const WidePath& name) {
    const WidePath path = file_in(folder, name.text());
    if (path) DeleteFileW(path.text());
}

}  // namespace vl::sendto
