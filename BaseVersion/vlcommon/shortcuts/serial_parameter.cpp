#include "serial_parameter.h"

#include "shortcut_record.h"

namespace vl::shortcuts {

const SerialClass* serial_class(uint16_t service_class) {
    for (const SerialClass& row : kSerialClasses) {
        if (row.service_class == service_class) return &row;
    }
    return nullptr;
}

bool SerialParameter::read_length() {
    ShortcutProperty record = record_of(shortcut_, kShortcutMaskParameter);
    if (!read(record)) return false;
    service_class_ = record.serviceClass;
    length_ = record.parameterLength;
    return length_ != 0;
}

// The parameter may have changed since its length was asked: the shorter length holds.
bool SerialParameter::read_bytes() {
    bytes_.reset(new (std::nothrow) uint8_t[length_]());
    if (!bytes_) return false;
    ShortcutProperty record = record_of(shortcut_, kShortcutMaskParameter);
    record.parameterLength = length_;
    record.parameter = bytes_.get();
    if (!read(record)) return false;
    if (record.parameterLength < length_) length_ = record.parameterLength;
    return true;
}

int SerialParameter::port_at(size_t place) const { return place < length_ ? bytes_[place] : kNoPort; }

}  // namespace vl::shortcuts
