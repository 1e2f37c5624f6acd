// Virtual COM ports.
#include "VlSDK.h"
#include "edits.h"
#include "operation.h"
#include "results.h"
#include "state.h"

namespace vlsim {
namespace {

uint32_t serial_of(int32_t port) {
    const State state;
    const Port* const found = state->find_port(port);
    return found ? found->serial : 0;
}

int32_t port_of(uint32_t serial) {
    const State state;
    for (const Port& port : state->ports) {
        if (port.serial == serial) return port.number;
    }
    return 0;
}

uint32_t plug_out(uint32_t serial, uint32_t /*flag*/) {
    const int32_t port = port_of(serial);
    if (port == 0) return kUnknownHandle;
    return clear_port_flag(port, "plugged") ? kDone : kNotStored;
}

uint32_t deinit(uint8_t port) { return clear_port_flag(port, "open") ? kDone : kUnknownHandle; }

}  // namespace
}  // namespace vlsim

using vlsim::call;

uint32_t Btsdk_CommNumToSerialNum(int32_t port) {
    return call<"Btsdk_CommNumToSerialNum">(vlsim::serial_of, port);
}

uint32_t Btsdk_PlugOutVComm(uint32_t serial, uint32_t flag) {
    return call<"Btsdk_PlugOutVComm">(vlsim::plug_out, serial, flag);
}

uint32_t Btsdk_DeinitCommObj(uint8_t port) { return call<"Btsdk_DeinitCommObj">(vlsim::deinit, port); }
