#include "remote_file.h"

#include "frame/bounded_text.h"
#include "text.h"

#include <string.h>

namespace programs {
namespace {

constexpr uint32_t kTextSize = 512;

std::string type_of(const RemoteFile& file) {
    char text[kTextSize] = "";
    VlCm_GetFTPFileDescription(file.name, file.attributes, text, kTextSize);
    return text;
}

std::string size_of(const RemoteFile& file, BOOL detail) {
    char text[kTextSize] = "";
    VlCm_GetFTPFileSizeString(file.size_low, file.size_high, text, kTextSize, detail);
    return text;
}

std::string time_of(const RemoteFile& file) {
    if (file.time.dwLowDateTime == 0 && file.time.dwHighDateTime == 0) return {};
    wchar_t text[kTextSize] = L"";
    VlCm_GetFTPFileTimeStringW(&file.time, text, kTextSize);
    return utf8(text);
}

}  // namespace

RemoteFile remote_file(const std::string& name, uint32_t attributes, uint64_t size) {
    RemoteFile file{};
    vl::copy_bounded(file.name, sizeof file.name, name.c_str());
    file.attributes = attributes;
    file.size_low = static_cast<uint32_t>(size);
    file.size_high = static_cast<uint32_t>(size >> 32);
    return file;
}

VlRemoteFileRecord record_of(const RemoteFile& file) {
    VlRemoteFileRecord record;
    memcpy(&record, &file, sizeof record);
    return record;
}

RemoteFile file_of(const VlRemoteFileRecord& record) {
    RemoteFile file;
    memcpy(&file, &record, sizeof file);
    file.name[sizeof file.name - 1] = 0;
    return file;
}

RemoteFileTexts texts_of(const RemoteFile& file) {
    char icon_file[VLCM_PATH_SIZE] = "";
    int32_t icon_index = 0;
    const HRESULT icon = VlCm_GetFTPFileDefaultIcon(file.name, file.attributes, icon_file, &icon_index);
    return {type_of(file),
            size_of(file, FALSE),
            size_of(file, TRUE),
            time_of(file),
            icon,
            utf8(wide_from_ansi(icon_file)),
            icon_index};
}

}  // namespace programs
