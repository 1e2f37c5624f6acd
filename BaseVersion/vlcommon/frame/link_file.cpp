#include "link_file.h"

#include <shlguid.h>

namespace vl {

LinkFile::LinkFile() {
    void* made = nullptr;
    const HRESULT result =
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
    if (SUCCEEDED(result)) link_.reset(static_cast<IShellLinkA*>(made));
}

HRESULT LinkFile::load(const wchar_t* path) const {
    void* found = nullptr;
    const HRESULT result = link_.get()->QueryInterface(IID_IPersistFile, &found);
    if (FAILED(result)) return result;
    const UniqueInterface<IPersistFile> file(static_cast<IPersistFile*>(found));
    return file.get()->Load(path, STGM_READ);
}

}  // namespace vl
