// Whether a shortcut is the default one, enabled, connected.
#include "frame/frame.h"
#include "shortcut_record.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {
namespace {

// The default flags of the device's other shortcuts are left to the stack.
uint32_t make_default(BtHandle shortcut) {
    const auto record = new_record_of(shortcut, kShortcutMaskDefault);
    if (!record) return VLCM_OUT_OF_MEMORY;
    record->isDefault = 1;
    return Btsdk_SetShortCutProperty(record.get());
}

bool is_default(BtHandle shortcut) {
    ShortcutProperty record = record_of(shortcut, kShortcutMaskDefault);
    return read(record) && record.isDefault == 1;
}

// An enabled shortcut has an application parameter of exactly one byte, which is 1.
bool is_enabled(BtHandle shortcut) {
    const auto record = new_record_of(shortcut, kShortcutMaskParameter);
    const std::unique_ptr<uint8_t> state(new (std::nothrow) uint8_t(0));
    if (!record || !state) return false;
    record->parameterLength = 1;
    record->parameter = state.get();
    return read(*record) && record->parameterLength == 1 && *state == 1;
}

bool is_connected(BtHandle shortcut) {
    ShortcutProperty record = record_of(shortcut);
    if (read(record)) return record.connection != 0;
    trace_line("Fail to Btsdk_GetShortCutProperty\r\n");
    return false;
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" uint32_t VlCm_SetDefaultShortCut(uint32_t shortcut) {
    TraceScope scope("VlCm_SetDefaultShortCut ");  // trace readers look for the name with its blank
    return shortcuts::make_default(shortcut);
}

extern "C" BOOL VlCm_IsDefaultShortcut(uint32_t shortcut) {
    TraceScope scope("VlCm_IsDefaultShortcut", Module::kShell);
    return shortcut != 0 && shortcuts::is_default(shortcut);
}

extern "C" BOOL VlCm_IsShcEnabled(uint32_t shortcut) {
    TraceScope scope("VlCm_IsShcEnabling");
    return shortcuts::is_enabled(shortcut);
}

extern "C" BOOL VlCm_IsShortcutConnected(uint32_t shortcut) {
    TraceScope scope("VlCm_IsShortcutConnected");
    return shortcuts::is_connected(shortcut);
}
