#include "serial_parameter.h"

#include "frame/trace.h"

namespace vl::shortcuts {

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
