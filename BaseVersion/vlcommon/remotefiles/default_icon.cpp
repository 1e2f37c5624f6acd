// The icon of a remote file: where this computer's file associations say it is.
#include "frame/frame.h"
#include "text/wide_text.h"
#include "vlcm/remote_files.h"

#include <shellapi.h>
#include <shlwapi.h>
#include <wchar.h>

namespace vl::remotefiles {
namespace {

constexpr char kGenericIconFile[] = "shell32.dll";
constexpr int32_t kUnknownIcon = 0;
constexpr int32_t kProgramIcon = 2;

constexpr size_t kKeySize = 2 * kPathSize;  // a name of 259 bytes and what surrounds it
constexpr char kClassIdFolder[] = "SOFTWARE\\Classes\\CLSID\\";
constexpr char kIconKey[] = "\\DefaultIcon";

// Where an icon is; both parts are the caller's.
struct IconLocation {
    char* file;  // VLCM_PATH_SIZE bytes
    int32_t* index;

    void set(const char* icon_file, int32_t icon_index) const {
        copy_bounded(file, kPathSize, icon_file);
        *index = icon_index;
    }
};

// The default value of the key `before` `name` `after`; false when key or text cannot be read.
bool read_default(HKEY root, const char* before, const char* name, const char* after, PathBuffer& value) {
    char path[kKeySize] = {};
    for (const char* part : {before, name, after}) append_bounded(path, sizeof path, part);
    UniqueSdkRegistryKey key;
    if (Btsdk_RegOpenKey(root, path, key.receive()) != ERROR_SUCCESS) return false;
    return Btsdk_RegQueryStringValue(key.get(), nullptr, value.data(), PathBuffer::size()) == ERROR_SUCCESS;
}

// A class whose icon is each file itself has none for a file that is elsewhere.
bool is_file_itself(const PathBuffer& location) { return strcmp(location.text(), "\"%1\"") == 0; }

bool icon_of_class_id(const PathBuffer& class_name, PathBuffer& location) {
    PathBuffer class_id;
    return read_default(HKEY_CLASSES_ROOT, "", class_name.text(), "\\CLSID", class_id) &&
           read_default(HKEY_LOCAL_MACHINE, kClassIdFolder, class_id.text(), kIconKey, location);
}

bool icon_of_extension(const char* extension, PathBuffer& location) {
    PathBuffer class_name;
    if (!read_default(HKEY_CLASSES_ROOT, "", extension, "", class_name)) return false;
    if (read_default(HKEY_CLASSES_ROOT, "", class_name.text(), kIconKey, location) &&
        !is_file_itself(location)) {
        return true;
    }
    return icon_of_class_id(class_name, location);
}

// "file,index", or a file alone. No second byte of a character is a comma in any code page.
void split_location(PathBuffer& location, const IconLocation& icon) {
    char* comma = strrchr(location.data(), ',');
    int32_t index = 0;
    if (comma != nullptr) {
        index = StrToIntA(comma + 1);
        *comma = 0;
    }
    icon.set(location.text(), index);
}

void folder_icon(const wchar_t* name, uint32_t attributes, const IconLocation& icon) {
    constexpr UINT kWanted = SHGFI_ICONLOCATION | SHGFI_USEFILEATTRIBUTES;
    SHFILEINFOW info{};
    if (SHGetFileInfoW(name, attributes, &info, sizeof info, kWanted) == 0) {
        info.szDisplayName[0] = 0;
        info.iIcon = 0;
    }
    text::wide_to_local_cut(icon.file, kPathSize, info.szDisplayName);
    *icon.index = info.iIcon;
}

// Programs in these two spellings alone have an icon of their own here.
bool is_program(const char* extension) {
    return strcmp(extension, ".exe") == 0 || strcmp(extension, ".EXE") == 0;
}

HRESULT file_icon(const wchar_t* name, const IconLocation& icon) {
    icon.set(kGenericIconFile, kUnknownIcon);
    const wchar_t* dot = wcsrchr(name, L'.');
    if (dot == nullptr) return S_OK;
    char extension[kPathSize];
    text::wide_to_local_cut(extension, sizeof extension, dot);
    if (is_program(extension)) {
        *icon.index = kProgramIcon;
        return S_OK;
    }
    PathBuffer location;
    if (!icon_of_extension(extension, location)) return E_FAIL;
    split_location(location, icon);
    return S_OK;
}

HRESULT default_icon(const char* name, uint32_t attributes, const IconLocation& icon) {
    wchar_t wide_name[kPathSize];
    text::utf8_to_wide_cut(wide_name, name);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return file_icon(wide_name, icon);
    folder_icon(wide_name, attributes, icon);
    return S_OK;
}

}  // namespace
}  // namespace vl::remotefiles

using namespace vl;

extern "C" HRESULT VlCm_GetFTPFileDefaultIcon(const char* name, uint32_t attributes, char* iconFile,
                                              int32_t* iconIndex) {
    if (name == nullptr || iconFile == nullptr || iconIndex == nullptr) return E_INVALIDARG;
    return remotefiles::default_icon(name, attributes, {iconFile, iconIndex});
}
