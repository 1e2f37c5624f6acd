#include "link_file.h"

#include <shlguid.h>
#include <shlobj.h>

namespace vl {
namespace {

using PersistFile = UniqueInterface<IPersistFile>;

HRESULT file_of(IShellLinkA* link, PersistFile& file) {
    void* found = nullptr;
    const HRESULT result = link->QueryInterface(IID_IPersistFile, &found);
    if (SUCCEEDED(result)) file.reset(static_cast<IPersistFile*>(found));
    return result;
}

}  // namespace

LinkFile::LinkFile() {
    void* made = nullptr;
    result_ = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
    if (SUCCEEDED(result_)) link_.reset(static_cast<IShellLinkA*>(made));
}

HRESULT LinkFile::load(const wchar_t* path) const {
    PersistFile file;
    const HRESULT result = file_of(link_.get(), file);
    return SUCCEEDED(result) ? file.get()->Load(path, STGM_READ) : result;
}

void LinkFile::read_arguments(char (&arguments)[kPathSize]) const {
    memset(arguments, 0, sizeof arguments);
    if (FAILED(link_.get()->GetArguments(arguments, static_cast<int>(kPathSize)))) arguments[0] = 0;
    arguments[kPathSize - 1] = 0;
}

void LinkFile::read_target(char (&path)[kPathSize]) const {
    memset(path, 0, sizeof path);
    if (FAILED(link_.get()->GetPath(path, static_cast<int>(kPathSize), nullptr, SLGP_RAWPATH))) path[0] = 0;
    path[kPathSize - 1] = 0;
}

HRESULT LinkFile::save(const wchar_t* path) const {
    PersistFile file;
    const HRESULT result = file_of(link_.get(), file);
    return SUCCEEDED(result) ? file.get()->Save(path, TRUE) : result;
}

}  // namespace vl
