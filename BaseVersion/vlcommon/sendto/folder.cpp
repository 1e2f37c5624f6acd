#include "folder.h"

#include "link_writer.h"
#include "menu.h"
#include "shell/execution_module.h"
#include "system_entry.h"
#include "vlcm/catalogue.h"
#include "vlcm/settings.h"

namespace vl::sendto {
namespace {

constexpr DWORD kHiddenAndSystem = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

bool exists(const WidePath& path) { return GetFileAttributesW(path.text()) != INVALID_FILE_ATTRIBUTES; }

// The shell reads a folder's settings file only when the folder bears one of these attributes.
void make_folder(const WidePath& folder) {
    CreateDirectoryW(folder.text(), nullptr);
    const DWORD attributes = GetFileAttributesW(folder.text());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return;
    const DWORD from_vista_on = VlCm_IsWindowsVistaAbove() ? kHiddenAndSystem : 0;
    SetFileAttributesW(folder.text(), attributes | FILE_ATTRIBUTE_READONLY | from_vista_on);
}

// A file that exists is the user's: it is not touched.
void make_settings_file(const WidePath& folder) {
    const WidePath path = file_in(folder, L"Desktop.ini");
    if (!path || exists(path)) return;
    const PathBuffer icons = system_file("\\vlshell.dll");
    if (icons.text()[0] == 0) return;
    UniqueFile file(
        CreateFileW(path.text(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return;
    char text[2 * kPathSize];
    format_bounded(text, sizeof text,
                   "[.ShellClassInfo]\r\n"
                   "InfoTip=bluetooth send folder\r\n"
                   "IconFile=%s\r\n"
                   "IconIndex=0\r\n"
                   "ConfirmFileOp=0",
                   icons.text());
    DWORD written = 0;
    WriteFile(file.get(), text, static_cast<DWORD>(strlen(text)), &written, nullptr);
    file.reset();
    SetFileAttributesW(path.text(), kHiddenAndSystem);
}

// The link that names no device: the send program then asks for one.
void write_generic_link(const WidePath& folder, const LanguageLibrary& texts) {
    constexpr uint32_t kNameId = 2503;
    constexpr uint32_t kIcon = 250;
    char name[63] = {};
    texts.load(kNameId, name);
    if (name[0] == 0) return;
    const WidePath path = file_in(folder, wide(name).append(L".lnk").text());
    if (!path) return;
    const PathBuffer program = send_program();
    write_link(path, {program.text(), nullptr, program.text(), VlCm_GetIconIndexByID(kIcon)});
}

// The link to the shell namespace is made by a process of its own: the namespace's extension would stay
// in this one.
void order_namespace_link(const WidePath& link) {
    if (!VlCm_IsWindowsVistaAbove() || !link || exists(link)) return;
    shell::start_execution_module("QVN_VLEXECUTEMODULE_CREATESEND2BTLINK");
}

}  // namespace

WidePath prepare_folder() {
    const LanguageLibrary texts;
    if (!texts) return {};
    const FolderName name(texts);
    const PathBuffer menu = menu_folder();
    const WidePath wide_menu = wide(menu.text());
    const WidePath folder = send_folder(wide_menu, name);
    if (!folder) return {};
    hide_system_entry(menu.text());
    make_folder(folder);
    make_settings_file(folder);
    write_generic_link(folder, texts);
    order_namespace_link(namespace_link(wide_menu, name));
    return folder;
}

}  // namespace vl::sendto
