#include "send_to_test.h"

#include "VlSim.h"

#include <shlguid.h>
#include <stdio.h>

#include <algorithm>

namespace sendto_test {
namespace {

// The shell's link object with its file side, for one use.
class OneLink {
public:
    OneLink() {
        joined_ = CoInitialize(nullptr);
        void* made = nullptr;
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
        link_ = static_cast<IShellLinkA*>(made);
        link_->QueryInterface(IID_IPersistFile, &made);
        file_ = static_cast<IPersistFile*>(made);
    }
    ~OneLink() {
        file_->Release();
        link_->Release();
        if (SUCCEEDED(joined_)) CoUninitialize();
    }
    OneLink(const OneLink&) = delete;
    OneLink& operator=(const OneLink&) = delete;

    IShellLinkA* operator->() const { return link_; }
    [[nodiscard]] IPersistFile* file() const { return file_; }

private:
    HRESULT joined_;
    IShellLinkA* link_ = nullptr;
    IPersistFile* file_ = nullptr;
};

template <typename Visit>
void visit(const std::wstring& folder, Visit visitor) {
    WIN32_FIND_DATAW entry;
    HANDLE listing = FindFirstFileW((folder + L"\\*").c_str(), &entry);
    if (listing == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = entry.cFileName;
        if (name != L"." && name != L"..") visitor(name, entry.dwFileAttributes);
    } while (FindNextFileW(listing, &entry));
    FindClose(listing);
}

void collect(const std::wstring& folder, const std::wstring& left_out, const std::string& prefix,
             Lines& names) {
    visit(folder, [&](const std::wstring& name, DWORD attributes) {
        const std::wstring path = folder + L"\\" + name;
        if (path == left_out) return;
        names.push_back(prefix + utf8(name));
        if (attributes & FILE_ATTRIBUTE_DIRECTORY) {
            collect(path, left_out, prefix + utf8(name) + "\\", names);
        }
    });
}

std::map<unsigned, std::wstring>& replaced_texts() {
    static std::map<unsigned, std::wstring> texts;
    return texts;
}

std::string ansi(const std::wstring& text) {
    char bytes[1024] = "";
    WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes;
}

}  // namespace

std::string utf8(const std::wstring& text) {
    char bytes[2048] = "";
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes;
}

std::wstring wide(const std::string& utf8_text) {
    wchar_t text[2048] = L"";
    MultiByteToWideChar(CP_UTF8, 0, utf8_text.c_str(), -1, text, 2048);
    return text;
}

Address address_of(const std::string& printed) {
    Address address{};
    for (size_t i = 0; i < address.size(); ++i) {
        address[5 - i] = static_cast<uint8_t>(std::stoul(printed.substr(3 * i, 2), nullptr, 16));
    }
    return address;
}

void rename_device(unsigned index, const std::string& name) {
    std::string json = "\"";
    for (const char c : name) {
        if (c == '"' || c == '\\') json += '\\';
        json += c;
    }
    EXPECT_EQ(VlSim_Set(("/devices/" + std::to_string(index) + "/name").c_str(), (json + '"').c_str()), 0u);
}

std::wstring text_of(unsigned id) {
    const auto replaced = replaced_texts().find(id);
    if (replaced != replaced_texts().end()) return replaced->second;
    HMODULE library = LoadLibraryA("Vl2Res.dll");
    wchar_t text[MAX_PATH] = L"";
    LoadStringW(library, id, text, MAX_PATH);
    FreeLibrary(library);
    return text;
}

std::ostream& operator<<(std::ostream& out, const Link& link) {
    return out << '"' << link.target << "\" \"" << link.arguments << "\" \"" << link.description << "\" \""
               << link.icon << "\" " << link.icon_index;
}

std::optional<Link> read_link(const std::wstring& path) {
    const OneLink object;
    if (object.file()->Load(path.c_str(), STGM_READ) != S_OK) return std::nullopt;
    char target[MAX_PATH] = "", arguments[MAX_PATH] = "", description[MAX_PATH] = "", icon[MAX_PATH] = "";
    Link link;
    object->GetPath(target, MAX_PATH, nullptr, SLGP_RAWPATH);
    object->GetArguments(arguments, MAX_PATH);
    object->GetDescription(description, MAX_PATH);
    object->GetIconLocation(icon, MAX_PATH, &link.icon_index);
    link.target = target;
    link.arguments = arguments;
    link.description = description;
    link.icon = icon;
    return link;
}

void write_link(const std::wstring& path, const Link& link) {
    const OneLink object;
    object->SetPath(link.target.c_str());
    object->SetArguments(link.arguments.c_str());
    object->SetDescription(link.description.c_str());
    object->SetIconLocation(link.icon.c_str(), link.icon_index);
    EXPECT_EQ(object.file()->Save(path.c_str(), TRUE), S_OK) << utf8(path);
}

std::string content_of(const std::wstring& path) {
    std::string bytes;
    FILE* const file = _wfopen(path.c_str(), L"rb");
    if (file == nullptr) return "(no such file)";
    char part[512];
    for (size_t read = 0; (read = fread(part, 1, sizeof part, file)) > 0;) bytes.append(part, read);
    fclose(file);
    return bytes;
}

void write_content(const std::wstring& path, const std::string& bytes) {
    FILE* const file = _wfopen(path.c_str(), L"wb");
    ASSERT_NE(file, nullptr) << utf8(path);
    fwrite(bytes.data(), 1, bytes.size(), file);
    fclose(file);
}

bool exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

void remove_tree(const std::wstring& folder) {
    visit(folder, [&](const std::wstring& name, DWORD attributes) {
        const std::wstring path = folder + L"\\" + name;
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (attributes & FILE_ATTRIBUTE_DIRECTORY) {
            remove_tree(path);
        } else {
            DeleteFileW(path.c_str());
        }
    });
    RemoveDirectoryW(folder.c_str());
}

Lines names_in(const std::wstring& folder) {
    Lines names;
    visit(folder, [&](const std::wstring& name, DWORD) { names.push_back(utf8(name)); });
    std::sort(names.begin(), names.end());
    return names;
}

SendToTest::SendToTest() {
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    root_ = std::wstring(folder) + L"send_to_test";
    remove_tree(root_);
    CreateDirectoryW(root_.c_str(), nullptr);
    use_menu(root_ + L"\\SendTo");
    shell_folder_.answer([this](HWND owner, int id, HANDLE token, DWORD flags, LPSTR path) {
        if (id != CSIDL_SENDTO) return shell_folder_.real(owner, id, token, flags, path);
        lstrcpynA(path, ansi(menu_).c_str(), MAX_PATH);
        return S_OK;
    });
    start_.answer([](HWND, LPCSTR, LPCSTR, LPCSTR, LPCSTR, INT) {
        return reinterpret_cast<HINSTANCE>(INT_PTR{42});  // more than 32: started
    });
    settings().common("General", "InstallDir", kInstallFolder);
}

SendToTest::~SendToTest() {
    remove_tree(root_);
    replaced_texts().clear();
}

// The first link object of a process makes the system keep a key open: it is no leak.
void SendToTest::SetUpTestSuite() { const OneLink warm_up; }

std::string SendToTest::system_folder() {
    char path[MAX_PATH] = "";
    SHGetFolderPathA(nullptr, CSIDL_SYSTEM, nullptr, SHGFP_TYPE_CURRENT, path);
    return path;
}

void SendToTest::use_menu(const std::wstring& path) {
    if (!menu_.empty()) RemoveDirectoryW(menu_.c_str());
    menu_ = path;
    CreateDirectoryW(path.c_str(), nullptr);
}

void SendToTest::replace_texts(const std::map<unsigned, std::wstring>& texts) { replaced_texts() = texts; }

void SendToTest::make_folder() const { CreateDirectoryW(folder().c_str(), nullptr); }

void SendToTest::add_link(const std::string& name, const std::string& printed_address) const {
    make_folder();
    write_link(in_folder(name), {std::string(kInstallFolder) + "\\VlSend2bt.exe",
                                 "-DEV_ADDR=" + printed_address, "a device", "C:\\icons.dll", 1});
}

void SendToTest::set_access(const std::string& name, WORD hour) const {
    const SYSTEMTIME day{2009, 3, 0, 2, hour, 0, 0, 0};
    FILETIME time;
    EXPECT_TRUE(SystemTimeToFileTime(&day, &time));
    HANDLE file = CreateFileW(in_folder(name).c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_TRUE(SetFileTime(file, nullptr, &time, nullptr)) << name;
    CloseHandle(file);
}

Lines SendToTest::device_links() const {
    Lines names = names_in(folder());
    const std::string generic = utf8(text_of(kGenericId)) + ".lnk";
    std::erase_if(names, [&](const std::string& name) { return name == "Desktop.ini" || name == generic; });
    return names;
}

Lines SendToTest::outside() const {
    Lines names;
    collect(root_, folder(), "", names);
    std::sort(names.begin(), names.end());
    return names;
}

void SendToTest::run_as_windows(DWORD major) {
    version_.answer([major](OSVERSIONINFOA* version) {
        version->dwMajorVersion = major;
        return TRUE;
    });
}

void SendToTest::add(const std::string& printed_address) {
    VlCm_SyncSend2btShc(address_of(printed_address).data(), TRUE);
}

void SendToTest::remove(const std::string& printed_address) {
    VlCm_SyncSend2btShc(address_of(printed_address).data(), FALSE);
}

}  // namespace sendto_test
