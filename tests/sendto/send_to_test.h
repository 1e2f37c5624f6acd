// What the tests of the Send-To menu share: a menu of their own, and the shell's view of its links.
#pragma once

#include "support/call_patch.h"
#include "support/suite_test.h"

#include "vlcm/send_to.h"

#include <shellapi.h>
#include <shlobj.h>

#include <array>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace sendto_test {

using Lines = std::vector<std::string>;

[[nodiscard]] std::string utf8(const std::wstring& text);
[[nodiscard]] std::wstring wide(const std::string& utf8_text);

// A device's address: 6 bytes, as the stack stores it, of its printed form.
using Address = std::array<uint8_t, 6>;
[[nodiscard]] Address address_of(const std::string& printed);

// Devices of the built-in neighbourhood.
inline constexpr char kPhone[] = "A4:C1:38:2D:5E:01", kHeadset[] = "5C:F3:70:8B:21:02",
                      kPrinter[] = "00:80:77:3E:90:03", kKeyboard[] = "34:88:5D:44:0C:04",
                      kLaptop[] = "F8:59:71:6A:B2:05", kAccessPoint[] = "00:1A:7D:DA:71:06",
                      kCamera[] = "AC:9E:17:F0:33:07", kNameless[] = "7C:2F:80:55:E1:0A",
                      kStranger[] = "11:22:33:44:55:66";  // the stack does not know it
void rename_device(unsigned index, const std::string& name);

// A text of the language library.
[[nodiscard]] std::wstring text_of(unsigned id);
inline constexpr unsigned kFolderId = 667, kGenericId = 2503, kUnknownId = 1101;

inline constexpr char kInstallFolder[] = "C:\\suite here";

// What a link file holds, as the shell's own object tells it.
struct Link {
    std::string target, arguments, description, icon;
    int icon_index = 0;
    bool operator==(const Link&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Link& link);
[[nodiscard]] std::optional<Link> read_link(const std::wstring& path);
void write_link(const std::wstring& path, const Link& link);

[[nodiscard]] std::string content_of(const std::wstring& path);
void write_content(const std::wstring& path, const std::string& bytes);
[[nodiscard]] bool exists(const std::wstring& path);
void remove_tree(const std::wstring& folder);
// The names in a folder as UTF-8, sorted.
[[nodiscard]] Lines names_in(const std::wstring& folder);

class SendToTest : public support::SuiteTest {
public:
    ~SendToTest() override;

protected:
    SendToTest();
    static void SetUpTestSuite();

    // The user's Send-To folder: the library is told so. Gone at the end, with everything around it.
    [[nodiscard]] const std::wstring& menu() const { return menu_; }
    // The suite's folder in it.
    [[nodiscard]] std::wstring folder() const { return menu_ + L"\\" + text_of(kFolderId); }
    [[nodiscard]] std::wstring namespace_link() const { return folder() + L".lnk"; }
    // Its link that names no device.
    [[nodiscard]] std::wstring generic_link() const {
        return folder() + L"\\" + text_of(kGenericId) + L".lnk";
    }
    [[nodiscard]] std::wstring in_folder(const std::string& name) const {
        return folder() + L"\\" + wide(name);
    }
    [[nodiscard]] static std::string system_folder();
    // Moves the menu elsewhere below the test's root.
    void use_menu(const std::wstring& path);
    // What text_of() gives in this test.
    static void replace_texts(const std::map<unsigned, std::wstring>& texts);
    [[nodiscard]] const std::wstring& root() const { return root_; }

    void make_folder() const;
    // The link of a device in the suite's folder, as the library would write it.
    void add_link(const std::string& name, const std::string& printed_address) const;
    // Sets when a file of the suite's folder was accessed last: `hour` of a day long ago.
    void set_access(const std::string& name, WORD hour) const;

    // The names in the suite's folder without those that are always there.
    [[nodiscard]] Lines device_links() const;
    // Everything below the test's root, but for the suite's folder.
    [[nodiscard]] Lines outside() const;

    void run_as_windows(DWORD major);
    static void add(const std::string& printed_address);
    static void remove(const std::string& printed_address);

    support::CallPatch<HRESULT(HWND, int, HANDLE, DWORD, LPSTR)> shell_folder_{"SHGetFolderPathA",
                                                                               SHGetFolderPathA};
    support::CallPatch<HINSTANCE(HWND, LPCSTR, LPCSTR, LPCSTR, LPCSTR, INT)> start_{"ShellExecuteA",
                                                                                    ShellExecuteA};
    support::CallPatch<BOOL(OSVERSIONINFOA*)> version_{"GetVersionExA", GetVersionExA};

private:
    std::wstring root_, menu_;
};

}  // namespace sendto_test
