// MAP_VlSMSEditor.exe: takes the text message that is waiting for it and keeps it open.
#include "file_hash.h"
#include "hidden_window.h"
#include "protocol.h"
#include "text.h"

#include <memory>

using namespace programs;

namespace {

struct FreeRecord {
    void operator()(VlSmsRecord* record) const { Vlcm_SHFree(record); }
};

void take_message(const EventLog& log) {
    const std::unique_ptr<VlSmsRecord, FreeRecord> record(VlCm_GetSMSInfo());
    if (!record) {
        log.line("no message waiting");
        return;
    }
    log.line("message for device " + hex(record->device) + " sha256 " +
             sha256_of_bytes(record.get(), sizeof *record));
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    const HiddenWindow window(log, kEditorTitle);
    take_message(log);
    return window.run();
}
