#include "execution_module.h"

#include "frame/settings.h"

#include <windows.h>

#include <shellapi.h>

namespace vl::shell {

void start_execution_module(const char* word) {
    const PathBuffer folder = settings::install_path("\\");
    ShellExecuteA(nullptr, "open", "VlExecuteModule.exe", word, folder.text(), SW_SHOWNOACTIVATE);
}

}  // namespace vl::shell
