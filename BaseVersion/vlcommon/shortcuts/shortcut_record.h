// Shortcut records of the stack.
#pragma once

#include "VlSDK.h"

#include <memory>
#include <new>

namespace vl::shortcuts {

// A record that asks for `shortcut`.
inline ShortcutProperty record_of(BtHandle shortcut, uint16_t mask = kShortcutMaskPlain) {
    ShortcutProperty record{};
    record.shortcut = shortcut;
    record.mask = mask;
    return record;
}

// The same on the heap; null when there is no memory.
inline std::unique_ptr<ShortcutProperty> new_record_of(BtHandle shortcut,
                                                       uint16_t mask = kShortcutMaskPlain) {
    return std::unique_ptr<ShortcutProperty>(new (std::nothrow) ShortcutProperty(record_of(shortcut, mask)));
}

inline bool read(ShortcutProperty& record) { return Btsdk_GetShortCutProperty(&record) == 0; }

// The device that a read record belongs to; 0 when the stack does not know its address.
inline BtHandle device_of(const ShortcutProperty& record) {
    return record.deviceValid == 1 ? record.device : Btsdk_GetRemoteDeviceHandle(record.address);
}

}  // namespace vl::shortcuts
