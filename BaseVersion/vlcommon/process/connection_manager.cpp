// The connection manager, started with one number as its argument.
#include "frame/frame.h"
#include "frame/settings.h"
#include "program.h"
#include "vlcm/companions.h"

namespace vl::process {
namespace {

void open_connection_manager(uint32_t value) {
    // Only the folder is bounded: the file name and the argument always fit behind it.
    char command[kPathSize + sizeof "\\VlMgr.exe 0x00000000"];
    format_bounded(command, sizeof command, "%s\\VlMgr.exe 0x%08x", settings::install_path("").text(), value);
    Program manager = start_command_line(command);
    // Required: both handles stay open for the rest of the caller's life.
    (void)manager.process.release();
    (void)manager.thread.release();
}

}  // namespace
}  // namespace vl::process

extern "C" void VlCm_OpenConnectMgrDlg(uint32_t value) { vl::process::open_connection_manager(value); }
