// Handing an item list to the program that opens a folder window on it.
#include "execution_module.h"
#include "frame/frame.h"
#include "process/handoff_channel.h"
#include "vlcm/shell_items.h"

#include <shlobj.h>

namespace vl::shell {
namespace {

constexpr handoff::Channel kItemList = {
    .section = "SHARE_MEM_FTPPIDL",
    .record_size = 0,
    .stride_64bit = 0,
    .sleep_rule = handoff::SleepRule::kWaitingAlone,
    .wake_ups = {},
    .creation_failed = "Error! Can not create memory file!!!!!!!!\r\n",
    .already_exists = "Error! A same name memory file already exists!!!!!!!!\r\n",
    .map_failed = "Error! Can not map view of the memory file!!!!!!!!\r\n",
    .open_failed = nullptr,
    .open_map_failed = nullptr,
    .reads_open_error = false,
};

void write_list(void* view, LPCITEMIDLIST list, uint32_t list_size) {
    const VlItemListHandOff head{handoff::kWaiting, list_size};
    memcpy(view, &head, sizeof head);
    memcpy(static_cast<unsigned char*>(view) + sizeof head, list, list_size);
}

void hand_over(LPCITEMIDLIST list) {
    const uint32_t list_size = ILGetSize(list);
    handoff::MappedSection made;
    const uint64_t size = uint64_t{list_size} + sizeof(VlItemListHandOff);
    if (handoff::create_section(kItemList, size, made) != VLCM_OK) return;
    write_list(made.view.get(), list, list_size);
    start_execution_module("QVN_VLEXECUTEMODULE_BROWSEFTPFOLDER");
    handoff::wait_until_taken(made.view.get(), kItemList.sleep_rule);
}

}  // namespace
}  // namespace vl::shell

using namespace vl;

extern "C" void VlCm_BrowseFolder(LPCITEMIDLIST list) {
    TraceScope scope("VlCm_BrowseFolder");
    if (list != nullptr) shell::hand_over(list);
}
