// The service class that a handle of the stack stands for.
#include "frame/frame.h"
#include "shortcut_record.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {
namespace {

template <typename Record>
std::unique_ptr<Record> new_record() {
    return std::unique_ptr<Record>(new (std::nothrow) Record());
}

// Asks the stack for a record and hands on its code; the class is stored on success only.
template <typename Record, typename Query>
uint32_t class_from(std::unique_ptr<Record> record, Query query, uint16_t& service_class) {
    if (!record) return VLCM_OUT_OF_MEMORY;
    const uint32_t result = query(record.get());
    if (result == 0) service_class = record->serviceClass;
    return result;
}

uint32_t class_of(BtHandle handle, uint16_t kind, uint16_t& service_class) {
    switch (kind) {
        case VLCM_HANDLE_CONNECTION:
            return class_from(
                new_record<ConnectionProperty>(),
                [=](ConnectionProperty* record) { return Btsdk_GetConnectionProperty(handle, record); },
                service_class);
        case VLCM_HANDLE_SHORTCUT:
            return class_from(new_record_of(handle), Btsdk_GetShortCutProperty, service_class);
        case VLCM_HANDLE_REMOTE_SERVICE:
            return class_from(
                new_record<ServerAttributes>(),
                [=](ServerAttributes* record) { return Btsdk_GetRemoteServiceAttributes(handle, record); },
                service_class);
        case VLCM_HANDLE_LOCAL_SERVER:
            return class_from(
                new_record<ServerAttributes>(),
                [=](ServerAttributes* record) { return Btsdk_GetServerAttributes(handle, record); },
                service_class);
        default:
            return VLCM_INVALID_ARGUMENT;
    }
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" uint32_t VlCm_GetServiceClass(uint32_t handle, uint16_t kind, uint16_t* serviceClass) {
    TraceScope scope("VlCm_GetServiceClass");
    if (serviceClass == nullptr) return VLCM_NULL_OUTPUT;
    return shortcuts::class_of(handle, kind, *serviceClass);
}
