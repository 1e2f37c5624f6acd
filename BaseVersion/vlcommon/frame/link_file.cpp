#include "link_file.h"

#include <shlguid.h>

namespace vl {

LinkFile::LinkFile() {
    void* made = nullptr;
    const HRESULT result =
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
    if (SUCCEEDED(result)) link_.reset(static_cast<IShellLinkA*>(made));
}

void LinkFile::load(const wchar_t* path) const {
    void* found = nullptr;
    if (FAILED(link_.get()->QueryInterface(IID_IPersistFile, &found))) return;
    const UniqueInterface<IPersistFile> file(static_cast<IPersistFile*>(found));
    file.get()->Load(path, STGM_READ);
}

}  // namespace vl
