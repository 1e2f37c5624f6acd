#include "settings.h"

#include "frame.h"
#include "vlcm/settings.h"

#include <shlobj.h>

namespace vl::settings {
namespace {

constexpr DWORD kDefaultFolder = 1;  // SHGFP_TYPE_DEFAULT

// Appends to a caller's path buffer, which holds VLCM_PATH_SIZE bytes whatever size was told.
void append_path(char* path, const char* text) { append_bounded(path, kPathSize, text); }

// A file beside the common settings file. The 64-bit library shares that folder with the suite's
// 32-bit components, whose system folder it is. The folder query is not tested: what it left stays.
void path_in_system_folder(char* path, const char* backslash_and_name) {
    SHGetFolderPathA(nullptr, CSIDL_WINDOWS, nullptr, kDefaultFolder, path);
    const size_t length = bounded_length(path, kPathSize);
    if (length >= 1 && length < kPathSize) {
        append_path(path, path[length - 1] == '\\' ? "SysWOW64" : "\\SysWOW64");
    }
    append_path(path, backslash_and_name);
}

// Leaves an empty file behind the first time; an existing one is not touched.
void make_file(const char* path) {
    UniqueFile made(CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void path_in_personal_folder(char* path) {
    SHGetFolderPathA(nullptr, CSIDL_LOCAL_APPDATA, nullptr, kDefaultFolder, path);
    append_path(path, "\\veltrin\\");
    if (bounded_length(path, kPathSize) == kPathSize) return;  // no text, so no name to make
    CreateDirectoryA(path, nullptr);
    append_path(path, "vlps.ini");
    make_file(path);
}

// A folder from section "General" of the common settings file, without one closing backslash.
void read_folder(const char* key, char* folder, unsigned int size) {
    const PathBuffer file = common_file();
    read_text("General", key, "", folder, size, file.text());
    const size_t length = bounded_length(folder, size);
    if (length >= 1 && length < kPathSize && folder[length - 1] == '\\') folder[length - 1] = 0;
}

bool usable(const char* buffer, unsigned int size) { return buffer != nullptr && size != 0; }

void path_in_install_folder(char* path, unsigned int size, const char* backslash_and_name) {
    VlCm_GetInstallDir(path, size);
    if (usable(path, size)) append_path(path, backslash_and_name);
}

}  // namespace

PathBuffer common_file() {
    PathBuffer path;
    VlCm_GetCommonSettingFilePath(path.data(), PathBuffer::size());
    return path;
}

PathBuffer personal_file() {
    PathBuffer path;
    VlCm_GetPersonalSettingFilePath(path.data(), PathBuffer::size());
    return path;
}

PathBuffer install_path(const char* rest) {
    PathBuffer path;
    VlCm_GetInstallDir(path.data(), PathBuffer::size());
    path.append(rest);
    return path;
}

uint32_t read_text(const char* section, const char* key, const char* fallback, char* text, uint32_t size,
                   const char* file) {
    const uint32_t length = Btsdk_GetPrivateProfileString(section, key, fallback, text, size, file);
    if (length == 0) text[0] = 0;
    return length;
}

int read_number(const char* section, const char* key, int fallback, const PathBuffer& file) {
    return static_cast<int>(Btsdk_GetPrivateProfileInt(section, key, fallback, file.text()));
}

}  // namespace vl::settings

using namespace vl;

extern "C" void VlCm_GetInstallDir(char* path, unsigned int size) {
    TraceScope scope("VlCm_GetInstallDir");
    if (settings::usable(path, size)) settings::read_folder("InstallDir", path, size);
}

extern "C" void VlCm_GetCOMServiceDir(char* path, unsigned int size) {
    TraceScope scope("VlCm_GetCOMServiceDir");
    if (settings::usable(path, size)) settings::read_folder("COMServiceDir", path, size);
}

extern "C" void VlCm_GetCommonSettingFilePath(char* path, unsigned int size) {
    if (settings::usable(path, size)) settings::path_in_system_folder(path, "\\vlcs.ini");
}

extern "C" void VlCm_GetPersonalSettingFilePath(char* path, unsigned int size) {
    if (settings::usable(path, size)) settings::path_in_personal_folder(path);
}

extern "C" void VlCm_GetRmoteDeviniPath(char* path, unsigned int size) {
    if (settings::usable(path, size)) settings::path_in_system_folder(path, "\\REMOTEDEVICE.ini");
}

extern "C" void VlCm_GetShortCutPath(char* path, unsigned int size) {
    if (settings::usable(path, size)) settings::path_in_system_folder(path, "\\SHORTCUT.ini");
}

extern "C" void VlCm_GetQVNProviderPath(char* path, unsigned int size) {
    TraceScope scope("VlCm_GetQVNProviderPath");
    settings::path_in_install_folder(path, size, "\\QVNProvider.ini");
}

extern "C" void VlCm_GetQVNMobilePath(char* path, unsigned int size) {
    TraceScope scope("VlCm_GetQVNMobilePath");
    settings::path_in_install_folder(path, size, "\\QVNMobile.ini");
}
