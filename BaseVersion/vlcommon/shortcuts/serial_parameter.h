// Where serial-type shortcuts keep their COM port.
#pragma once

#include "shortcut_record.h"

#include <string.h>

#include <memory>
#include <new>

namespace vl::shortcuts {

inline constexpr uint16_t kSerialPort = 0x1101;
inline constexpr int kNoPort = -1;

// Whether a port that was found is the wanted one; no port is nobody's.
inline bool is_port(int found, int wanted) { return found != kNoPort && found == wanted; }

struct SerialClass {
    uint16_t service_class;
    uint8_t port_byte;  // place of the port in the application parameter
};

// In the order in which the use of a port is looked for.
inline constexpr SerialClass kSerialClasses[] = {
    {kSerialPort, 5},  // serial port
    {0x1103, 9},       // dial-up networking
    {0x1126, 5},       // hard-copy print
    {0x1127, 5},       // hard-copy scan
    {0x1111, 9},       // fax
};

// The class's row; null when it is not of the serial type.
inline const SerialClass* serial_class(uint16_t service_class) {
    for (const SerialClass& row : kSerialClasses) {
        if (row.service_class == service_class) return &row;
    }
    return nullptr;
}

// Room for one parameter at a time. A walk over many shortcuts keeps it, so that it costs one
// allocation and not one per shortcut.
class ParameterRoom {
public:
    // Bytes until the next call, zeroed where ports stand; null without memory.
    uint8_t* take(size_t size);

private:
    static constexpr size_t kPortsRoom = 16;  // no port stands behind it

    std::unique_ptr<uint8_t[]> bytes_;
    size_t size_ = 0;
};

// A shortcut's application parameter, read by a call for its length and a call for its bytes. Inline: in a
// walk over thousands, calls between files would show beside the stack's operations.
class SerialParameter {
public:
    SerialParameter(BtHandle shortcut, ParameterRoom& room) : shortcut_(shortcut), room_(room) {}

    // Asks for the class and the length; false when the shortcut cannot be read or has no parameter.
    bool read_length();
    // Asks for the bytes; false without memory, too.
    bool read_bytes();

    [[nodiscard]] uint16_t service_class() const { return service_class_; }
    // The port at a place of the parameter; kNoPort behind its end.
    [[nodiscard]] int port_at(size_t place) const { return place < length_ ? bytes_[place] : kNoPort; }

private:
    BtHandle shortcut_;
    ParameterRoom& room_;
    uint16_t service_class_ = 0;
    uint16_t length_ = 0;
    const uint8_t* bytes_ = nullptr;
};

inline uint8_t* ParameterRoom::take(size_t size) {
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

inline bool SerialParameter::read_length() {
    ShortcutProperty record = record_of(shortcut_, kShortcutMaskParameter);
    if (!read(record)) return false;
    service_class_ = record.serviceClass;
    length_ = record.parameterLength;
    return length_ != 0;
}

// The parameter may have changed since its length was asked: the shorter length holds.
inline bool SerialParameter::read_bytes() {
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

// The port of a shortcut of a serial-type class, under the scope of VlCm_GetComPortByShortcut: a walk
// shows in the trace as so many calls of it.
int port_of_shortcut(BtHandle shortcut, uint16_t service_class, ParameterRoom& room);

}  // namespace vl::shortcuts
