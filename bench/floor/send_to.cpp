#include "VlSDK.h"
#include "floor.h"

#include <shlguid.h>
#include <shlobj.h>
#include <stdio.h>

namespace {

struct Link {
    IShellLinkA* object = nullptr;
    IPersistFile* file = nullptr;
};

Link make_link() {
    void* made = nullptr;
    CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
    Link link{static_cast<IShellLinkA*>(made), nullptr};
    link.object->QueryInterface(IID_IPersistFile, &made);
    link.file = static_cast<IPersistFile*>(made);
    return link;
}

void free_link(const Link& link) {
    link.file->Release();
    link.object->Release();
}

Link load_link(const char* folder, const char* name) {
    char path[2 * MAX_PATH];
    wchar_t wide[MAX_PATH];
    snprintf(path, sizeof path, "%s\\%s", folder, name);
    MultiByteToWideChar(CP_ACP, 0, path, -1, wide, MAX_PATH);
    const Link link = make_link();
    link.file->Load(wide, STGM_READ);
    return link;
}

template <typename Visit>
void visit_links(const char* folder, Visit visit) {
    char pattern[2 * MAX_PATH];
    snprintf(pattern, sizeof pattern, "%s\\*.lnk", folder);
    WIN32_FIND_DATAA entry;
    HANDLE listing = FindFirstFileA(pattern, &entry);
    if (listing == INVALID_HANDLE_VALUE) return;
    do {
        const Link link = load_link(folder, entry.cFileName);
        visit(link.object);
        free_link(link);
    } while (FindNextFileA(listing, &entry));
    FindClose(listing);
}

void write_generic_link(const char* folder, const char* name, const char* system) {
    char windows[MAX_PATH], install[MAX_PATH], text[2 * MAX_PATH];
    wchar_t path[MAX_PATH];
    SHGetFolderPathA(nullptr, CSIDL_WINDOWS, nullptr, SHGFP_TYPE_DEFAULT, windows);
    snprintf(text, sizeof text, "%s\\SysWOW64\\vlcs.ini", windows);
    Btsdk_GetPrivateProfileString("General", "InstallDir", "", install, sizeof install, text);
    const Link link = make_link();
    snprintf(text, sizeof text, "%s\\VlSend2bt.exe", install);
    link.object->SetPath(text);
    link.object->SetDescription(text);
    link.object->SetArguments("");
    snprintf(text, sizeof text, "%s\\vlshell.dll", system);
    link.object->SetIconLocation(text, 0);
    snprintf(text, sizeof text, "%s\\%s.lnk", folder, name);
    MultiByteToWideChar(CP_ACP, 0, text, -1, path, MAX_PATH);
    link.file->Save(path, TRUE);
    free_link(link);
}

void put_folder_right(const char* folder) {
    char path[2 * MAX_PATH];
    CreateDirectoryA(folder, nullptr);
    SetFileAttributesA(folder, GetFileAttributesA(folder) | FILE_ATTRIBUTE_READONLY);
    snprintf(path, sizeof path, "%s\\Desktop.ini", folder);
    GetFileAttributesA(path);
    snprintf(path, sizeof path, "%s.lnk", folder);
    GetFileAttributesA(path);
}

}  // namespace

extern "C" uint32_t Floor_SyncSendTo() {
    if (Btsdk_IsBluetoothReady() != 1) return 0;
    CoInitialize(nullptr);
    char menu[MAX_PATH], system[MAX_PATH], name[50], generic[63], folder[2 * MAX_PATH];
    HMODULE texts = LoadLibraryA("Vl2Res.dll");
    LoadStringA(texts, 667, name, sizeof name);
    LoadStringA(texts, 2503, generic, sizeof generic);
    FreeLibrary(texts);
    SHGetFolderPathA(nullptr, CSIDL_SENDTO, nullptr, SHGFP_TYPE_DEFAULT, menu);
    SHGetFolderPathA(nullptr, CSIDL_SYSTEM, nullptr, SHGFP_TYPE_CURRENT, system);
    visit_links(menu, [](IShellLinkA* link) {
        char target[MAX_PATH] = "";
        link->GetPath(target, MAX_PATH, nullptr, SLGP_RAWPATH);
    });
    snprintf(folder, sizeof folder, "%s\\%s", menu, name);
    put_folder_right(folder);
    write_generic_link(folder, generic, system);
    uint32_t devices = 0;
    visit_links(folder, [&](IShellLinkA* link) {
        char arguments[MAX_PATH] = "";
        link->GetArguments(arguments, MAX_PATH);
        if (arguments[0] != 0) ++devices;
    });
    CoUninitialize();
    return devices;
}
