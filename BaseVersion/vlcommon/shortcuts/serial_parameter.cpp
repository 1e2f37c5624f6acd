#include "serial_parameter.h"

#include "frame/trace.h"
#include "shortcut_record.h"

#include <string.h>

#include <new>

namespace vl::shortcuts {

const SerialClass* serial_class(uint16_t service_class) {
    for (const SerialClass& row : kSerialClasses) {
        if (row.service_class == service_class) return &row;
    }
    return nullptr;
}

uint8_t* ParameterRoom::take(size_t size) {
    const size_t wanted = size > kPortsRoom ? size : kPortsRoom;
    if (wanted > size_) {
        size_ = 0;
        bytes_.reset(new (std::nothrow) uint8_t[wanted]);
        if (!bytes_) return nullptr;
        size_ = wanted;
    }
    memset(bytes_.get(), 0, kPortsRoom);
    return bytes_.get();
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
    uint8_t* bytes = room_.take(length_);
    if (bytes == nullptr) return false;
    ShortcutProperty record = record_of(shortcut_, kShortcutMaskParameter);
    record.parameterLength = length_;
    record.parameter = bytes;
    if (!read(record)) return false;
    bytes_ = bytes;
    if (record.parameterLength < length_) length_ = record.parameterLength;
    return true;
}

int SerialParameter::port_at(size_t place) const { return place < length_ ? bytes_[place] : kNoPort; }

// The given class decides, not the record's.
int port_of_shortcut(BtHandle shortcut, uint16_t service_class, ParameterRoom& room) {
    TraceScope scope("VlCm_GetComPortByShortcut");
    const SerialClass* row = serial_class(service_class);
    if (row == nullptr) return kNoPort;
    SerialParameter parameter(shortcut, room);
    if (!parameter.read_length() || !parameter.read_bytes()) return kNoPort;
    return parameter.port_at(row->port_byte);
}

}  // namespace vl::shortcuts
