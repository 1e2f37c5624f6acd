// Where serial-type shortcuts keep their COM port.
#pragma once

#include "VlSDK.h"

#include <memory>

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
const SerialClass* serial_class(uint16_t service_class);

// A shortcut's application parameter, read by a call for its length and a call for its bytes.
class SerialParameter {
public:
    explicit SerialParameter(BtHandle shortcut) : shortcut_(shortcut) {}

    // Asks for the class and the length; false when the shortcut cannot be read or has no parameter.
    bool read_length();
    // Asks for the bytes; false without memory, too.
    bool read_bytes();

    [[nodiscard]] uint16_t service_class() const { return service_class_; }
    // The port at a place of the parameter; kNoPort behind its end.
    [[nodiscard]] int port_at(size_t place) const;

private:
    BtHandle shortcut_;
    uint16_t service_class_ = 0;
    uint16_t length_ = 0;
    std::unique_ptr<uint8_t[]> bytes_;
};

}  // namespace vl::shortcuts
