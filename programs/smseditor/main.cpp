// MAP_VlSMSEditor.exe: takes the text message that is waiting for it and keeps it open. While it is open the
// tray agent uses the phone's connection, if there is one.
#include "file_hash.h"
#include "frame/stack_walk.h"
#include "hidden_window.h"
#include "protocol.h"
#include "text.h"
#include "text_message.h"

#include <memory>

using namespace programs;

namespace {

struct FreeRecord {
    void operator()(VlSmsRecord* record) const { VlCm_DestroyMobileSMSInfo(record); }
};
using TakenRecord = std::unique_ptr<VlSmsRecord, FreeRecord>;

// The fingerprint tells that the whole record came; number and text are shown when they are texts.
void show(const EventLog& log, const VlSmsRecord& record) {
    log.line("message for device " + hex(record.device) + " sha256 " +
             sha256_of_bytes(&record, sizeof record));
    const TextMessage message = from_record(record);
    if (is_utf8(message.number) && is_utf8(message.text))
        log.line("to " + message.number + ": " + message.text);
}

// Asks the agent to use the phone's connection, and to end it with the object.
class PhoneUse {
public:
    PhoneUse(const EventLog& log, BtHandle phone)
        : connection_(vl::find_connection([phone](BtHandle, const ConnectionProperty& property) {
                          return property.device == phone;
                      }).handle) {
        log.line(VlCm_UseMobileConnection(connection_) ? "uses connection " + hex(connection_)
                                                       : "the phone is not connected");
    }
    // An agent that has ended is not started only to be told.
    ~PhoneUse() {
        if (FindWindowA(nullptr, kTrayTitle) != nullptr) VlCm_DisconnectMobilePhone(connection_);
    }
    PhoneUse(const PhoneUse&) = delete;
    PhoneUse& operator=(const PhoneUse&) = delete;

private:
    BtHandle connection_;
};

int run_with(const EventLog& log, const HiddenWindow& window, TakenRecord record) {
    show(log, *record);
    const PhoneUse use(log, record->device);
    return window.run();
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    const HiddenWindow window(log, kEditorTitle);
    if (TakenRecord record{VlCm_GetSMSInfo()}) return run_with(log, window, std::move(record));
    log.line("no message waiting");
    return window.run();
}
