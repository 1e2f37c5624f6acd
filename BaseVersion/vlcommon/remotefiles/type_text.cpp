// What kind of file a remote file is, as the shell names it.
#include "text/wide_text.h"
#include "vlcm/base.h"
#include "vlcm/remote_files.h"

#include <shellapi.h>
#include <wchar.h>

namespace vl::remotefiles {
namespace {

constexpr size_t kTypeBytes = 80;  // whatever room the caller gives

void query_type(const char* name, uint32_t attributes, SHFILEINFOW& info) {
    wchar_t wide_name[VLCM_PATH_SIZE];
    text::utf8_to_wide_cut(wide_name, name);
    const bool folder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const DWORD kind = folder ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
    if (SHGetFileInfoW(wide_name, kind, &info, sizeof info, SHGFI_TYPENAME | SHGFI_USEFILEATTRIBUTES) == 0) {
        info.szTypeName[0] = 0;
    }
}

uint32_t write_type(const char* name, uint32_t attributes, char* buffer, uint32_t size) {
    SHFILEINFOW info{};
    query_type(name, attributes, info);
    const size_t length = wcslen(info.szTypeName);
    if (length >= size) return 0;
    text::wide_to_utf8_cut(buffer, kTypeBytes, info.szTypeName);
    return static_cast<uint32_t>(length);
}

}  // namespace
}  // namespace vl::remotefiles

using namespace vl;

extern "C" uint32_t VlCm_GetFTPFileDescription(const char* name, uint32_t attributes, char* buffer,
                                               uint32_t bufferSize) {
    if (name == nullptr || buffer == nullptr || bufferSize == 0) return 0;
    return remotefiles::write_type(name, attributes, buffer, bufferSize);
}
