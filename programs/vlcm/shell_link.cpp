#include "shell_link.h"

#include <shlguid.h>

namespace programs {

vl::UniqueInterface<IShellLinkW> load_link(const std::wstring& path) {
    void* made = nullptr;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &made)))
        return {};
    vl::UniqueInterface<IShellLinkW> link(static_cast<IShellLinkW*>(made));
    void* found = nullptr;
    if (FAILED(link.get()->QueryInterface(IID_IPersistFile, &found))) return {};
    const vl::UniqueInterface<IPersistFile> file(static_cast<IPersistFile*>(found));
    return SUCCEEDED(file.get()->Load(path.c_str(), STGM_READ)) ? std::move(link)
                                                                : vl::UniqueInterface<IShellLinkW>();
}

}  // namespace programs
