// One remote file's record on its way to the tray agent, which shows the file's property sheet.
#include "frame/stack_state.h"
#include "process/handoff_channel.h"
#include "process/tray_agent.h"
#include "vlcm/companions.h"
#include "vlcm/remote_files.h"

#include <stddef.h>

namespace vl::remotefiles {
namespace {

struct PropertySection {
    uint32_t state;
    uint32_t total_size;  // bytes of the section; 0: it holds no record
    VlRemoteFileRecord record;
};
static_assert(sizeof(PropertySection) == 876);
static_assert(offsetof(PropertySection, record) == 8);

constexpr handoff::Channel kRemoteFile = {
    .section = "SHARE_MEM_FTPFILEDATA",
    .record_size = sizeof(VlRemoteFileRecord),
    .stride_64bit = sizeof(VlRemoteFileRecord),
    .sleep_rule = handoff::SleepRule::kWaitingAlone,
    .wake_ups = {},
    .creation_failed = nullptr,
    .already_exists = nullptr,
    .map_failed = nullptr,
    .open_failed = nullptr,
    .open_map_failed = nullptr,
    .reads_open_error = false,
};

constexpr uint16_t kShowPropertyLow = 0x0205;
constexpr uint16_t kShowPropertyHigh = 0x4306;

void write_section(void* view, const VlRemoteFileRecord& record) {
    *static_cast<PropertySection*>(view) = {handoff::kWaiting, sizeof(PropertySection), record};
}

uint32_t hand_over(const VlRemoteFileRecord& record, uint32_t parameter) {
    if (!is_bluetooth_ready()) return VLCM_STACK_NOT_READY;
    process::bring_tray_to_front();
    handoff::MappedSection made;
    const uint32_t status = handoff::create_section(kRemoteFile, sizeof(PropertySection), made);
    if (status != VLCM_OK) return status;
    write_section(made.view.get(), record);
    VlCm_PostMsg2Vltray(kShowPropertyLow, kShowPropertyHigh, static_cast<LPARAM>(parameter));
    handoff::wait_until_taken(made.view.get(), kRemoteFile.sleep_rule);
    return VLCM_OK;
}

// The section comes from any program: nothing in it is trusted.
VlRemoteFileRecord* take() {
    handoff::MappedSection opened;
    if (!handoff::open_section(kRemoteFile, opened)) return nullptr;
    const handoff::UntrustedView view(opened.view.get());
    if (view.size() == 0) return nullptr;
    view.mark_taken();
    if (view.word(offsetof(PropertySection, total_size)) == 0) return nullptr;
    auto record = static_cast<VlRemoteFileRecord*>(Btsdk_MallocMemory(sizeof(VlRemoteFileRecord)));
    if (record != nullptr) view.copy(offsetof(PropertySection, record), record, sizeof *record);
    return record;
}

}  // namespace
}  // namespace vl::remotefiles

using namespace vl;

extern "C" uint32_t VlCm_ShowFTPFileProperty(const VlRemoteFileRecord* record, uint32_t parameter) {
    return record == nullptr ? uint32_t{VLCM_NULL_OUTPUT} : remotefiles::hand_over(*record, parameter);
}

extern "C" VlRemoteFileRecord* VlCm_GetFTPFileData() { return remotefiles::take(); }
