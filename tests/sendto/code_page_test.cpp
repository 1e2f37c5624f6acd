// Texts and paths of the ANSI code page in the Send-To menu. The process runs in code page 1252; another
// one stands in at the calls by which the library meets it.
#include "send_to_test.h"

#include <map>

using namespace sendto_test;

namespace {

std::string encoded(UINT code_page, const std::wstring& text) {
    char bytes[1024] = "";
    WideCharToMultiByte(code_page, 0, text.c_str(), -1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes;
}

// The library's texts in a language of this code page.
class LocalMenu : public SendToTest {
protected:
    LocalMenu(UINT code_page, const std::map<unsigned, std::wstring>& texts) {
        replace_texts(texts);
        load_.answer([=](HINSTANCE, UINT id, LPSTR buffer, int size) {
            const std::string text = encoded(code_page, texts.at(id));
            lstrcpynA(buffer, text.c_str(), size);
            return static_cast<int>(text.size());
        });
    }
    support::CallPatch<int(HINSTANCE, UINT, LPSTR, int)> load_{"LoadStringA", LoadStringA};
};

class GermanMenu : public LocalMenu {
protected:
    GermanMenu()
        : LocalMenu(1252, {{kFolderId, L"Bl\u00e4uezahn"},
                           {kGenericId, L"Anderes Ger\u00e4t"},
                           {kUnknownId, L"Unbekanntes Ger\u00e4t"}}) {
        EXPECT_EQ(GetACP(), 1252u);
        use_menu(root() + L"\\J\u00fcrgen");
    }
};

class ChineseMenu : public LocalMenu {
protected:
    ChineseMenu()
        : LocalMenu(936, {{kFolderId, L"\u84dd\u7259"},
                          {kGenericId, L"\u5176\u4ed6\u8bbe\u5907"},
                          {kUnknownId, L"\u672a\u77e5\u8bbe\u5907"}}) {
        use_menu(root() + L"\\\u7528\u6237");
        shell_folder_.answer([this](HWND owner, int id, HANDLE token, DWORD which, LPSTR path) {
            if (id != CSIDL_SENDTO) return shell_folder_.real(owner, id, token, which, path);
            lstrcpynA(path, encoded(936, menu()).c_str(), MAX_PATH);
            return S_OK;
        });
        widen_.answer([this](UINT page, DWORD flags, LPCCH bytes, int length, LPWSTR text, int size) {
            return widen_.real(page == CP_ACP ? 936 : page, flags, bytes, length, text, size);
        });
    }
    support::CallPatch<int(UINT, DWORD, LPCCH, int, LPWSTR, int)> widen_{"MultiByteToWideChar",
                                                                         MultiByteToWideChar};
};

// The texts of the language and the devices' own names, whatever the code page has of these.
void expect_names_in(const std::wstring& folder) {
    Lines expected{"Desktop.ini", utf8(text_of(kGenericId)) + ".lnk", utf8(text_of(kUnknownId)) + ".lnk",
                   "\xE7\x85\xA7\xE7\x9B\xB8\xE6\x9C\xBA.lnk"};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names_in(folder), expected);
}

}  // namespace

TEST_F(GermanMenu, NamesTheFolderAndItsLinks) {
    add(kNameless);
    add(kCamera);
    expect_names_in(folder());
    VlCm_SyncSend2btShcForMultiUser();
    expect_names_in(folder());
    remove(kNameless);
    remove(kCamera);
    EXPECT_EQ(device_links(), Lines{});
    EXPECT_EQ(outside(), Lines{utf8(L"J\u00fcrgen")});
}

TEST_F(ChineseMenu, NamesTheFolderAndItsLinks) {
    add(kNameless);
    add(kCamera);
    expect_names_in(folder());
    VlCm_SyncSend2btShcForMultiUser();
    expect_names_in(folder());
    remove(kNameless);
    remove(kCamera);
    EXPECT_EQ(device_links(), Lines{});
    EXPECT_EQ(outside(), Lines{utf8(L"\u7528\u6237")});
}

TEST_F(ChineseMenu, NamesTheNamespaceLinkSoThatItIsOrderedWhileItIsMissing) {
    add(kPhone);
    EXPECT_EQ(start_.count(), 1u);
    write_content(namespace_link(), "");
    add(kPhone);
    EXPECT_EQ(start_.count(), 1u);
}

TEST_F(ChineseMenu, HoldsTheNamespaceLink) {
    settings().common("General", "InstallDir", utf8(root()));
    write_link(root() + L"\\Bluetooth Devices.lnk", {system_folder() + "\\notepad.exe", "", "", "", 0});
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_TRUE(read_link(namespace_link()).has_value());
}

TEST_F(GermanMenu, LinksLeadToAnInstallationFolderOfTheCodePage) {
    const std::string install = encoded(1252, L"C:\\J\u00fcrgen");
    settings().common("General", "InstallDir", install);
    add(kPhone);
    EXPECT_EQ(read_link(in_folder("Lena's phone.lnk"))->target, install + "\\VlSend2bt.exe");
    EXPECT_EQ(read_link(generic_link())->description, install + "\\VlSend2bt.exe");
}

TEST_F(GermanMenu, HoldsTheSystemsEntryThatIsHidden) {
    const std::wstring entry = menu() + L"\\\u00dcbertragen.lnk";
    write_link(entry, {system_folder() + "\\fsquirt.exe", "", "", "", 0});
    add(kPhone);
    EXPECT_NE(GetFileAttributesW(entry.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
}
