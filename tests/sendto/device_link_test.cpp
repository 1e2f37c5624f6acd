// The link of one device: what it holds, its name, and when it is written anew.
#include "send_to_test.h"
#include "watched_link.h"

#include "support/sdk_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <string.h>

using namespace sendto_test;

namespace {

const std::string kProgram = std::string(kInstallFolder) + "\\VlSend2bt.exe";

// A name that the stack's text of a device cannot hold: the record of the first device bears these bytes.
std::string raw_name;
uint32_t property_with_raw_name(BtHandle device, RemoteDeviceProperty* property) {
    const uint32_t result = Btsdk_GetRemoteDeviceProperty(device, property);
    memset(property->name, 0, sizeof property->name);
    memcpy(property->name, raw_name.data(), raw_name.size());
    return result;
}

class DeviceLink : public SendToTest {
protected:
    static void use_raw_name(const std::string& name) {
        ASSERT_LE(name.size(), sizeof RemoteDeviceProperty::name);
        raw_name = name;
        VlSim_Hook("Btsdk_GetRemoteDeviceProperty", reinterpret_cast<void*>(property_with_raw_name));
    }
    [[nodiscard]] std::string unknown() const { return utf8(text_of(kUnknownId)); }
};

}  // namespace

TEST_F(DeviceLink, HoldsProgramAddressNameAndIcon) {
    const std::string icons = system_folder() + "\\VlLangInDepRes.dll";
    const struct {
        const char* label;
        const char* address;
        Link expected;
    } rows[] = {
        {"Lena's phone", kPhone, {kProgram, "-DEV_ADDR=A4:C1:38:2D:5E:01", "Lena's phone", icons, 20}},
        {"Keyboard K380", kKeyboard, {kProgram, "-DEV_ADDR=34:88:5D:44:0C:04", "Keyboard K380", icons, 50}},
        {"Hallway access point",
         kAccessPoint,
         {kProgram, "-DEV_ADDR=00:1A:7D:DA:71:06", "Hallway access point", icons, 30}},
    };
    for (const DWORD windows : {5U, 6U}) {
        run_as_windows(windows);
        support::for_each_row(rows, [&](const auto& row) {
            remove(row.address);
            add(row.address);
            const std::optional<Link> made = read_link(in_folder(std::string(row.label) + ".lnk"));
            EXPECT_EQ(made, row.expected);
        });
    }
}

TEST_F(DeviceLink, IconIsTheOneOfTheDeviceClass) {
    const struct {
        const char* label;
        const char* value;
        int index;
    } rows[] = {
        {"computer", "\"0x000100\"", 5},
        {"loudspeaker", "\"0x240414\"", 183},
        {"service bits", "\"0xFFE500\"", 45},
        {"unknown", "\"0x001FFC\"", 0},
    };
    support::for_each_row(rows, [&](const auto& row) {
        ASSERT_EQ(VlSim_Set("/devices/0/class", row.value), 0u);
        remove(kPhone);
        add(kPhone);
        EXPECT_EQ(read_link(in_folder("Lena's phone.lnk"))->icon_index, row.index);
    });
}

TEST_F(DeviceLink, IsToldToTheShellInThisOrder) {
    add(kPhone);
    LinkWatch watch;
    add(kKeyboard);
    const Lines& calls = watch.calls();
    const Lines expected{"create",
                         "SetPath " + kProgram,
                         "SetDescription Keyboard K380",
                         "SetArguments -DEV_ADDR=34:88:5D:44:0C:04",
                         "SetIconLocation " + system_folder() + "\\VlLangInDepRes.dll, 50",
                         "QueryInterface file",
                         "Save Keyboard K380.lnk, 1"};
    ASSERT_GE(calls.size(), expected.size());
    EXPECT_EQ(Lines(calls.end() - static_cast<ptrdiff_t>(expected.size()), calls.end()), expected);
}

TEST_F(DeviceLink, BearsTheNameInEveryScript) {
    const struct {
        const char* label;
        const char* address;
        const char* file;
    } rows[] = {
        {"German", kHeadset,
         "B\xC3\xBCro Headset Gr\xC3\xB6\xC3\x9F"
         "e L.lnk"},
        {"Japanese", kPrinter,
         "\xE3\x83\x97\xE3\x83\xAA\xE3\x83\xB3\xE3\x82\xBF\xE3\x83\xBC 3\xE9\x9A\x8E.lnk"},
        {"Russian", kLaptop,
         "\xD0\x9D\xD0\xBE\xD1\x83\xD1\x82\xD0\xB1\xD1\x83\xD0\xBA "
         "\xD0\x9C\xD0\xB0\xD1\x80\xD0\xB8\xD0\xBD\xD1\x8B.lnk"},
        {"Chinese", kCamera, "\xE7\x85\xA7\xE7\x9B\xB8\xE6\x9C\xBA.lnk"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        remove_tree(folder());
        add(row.address);
        EXPECT_EQ(device_links(), Lines{row.file});
        const std::string name = row.file;
        LinkWatch watch;
        add(row.address);                              // it is current
        EXPECT_EQ(watch.count("SetDescription"), 1u);  // the link without a device
        remove(row.address);
        EXPECT_EQ(device_links(), Lines{});
    });
}

TEST_F(DeviceLink, DescriptionIsTheNameAsTheStackHasIt) {
    LinkWatch watch;
    add(kCamera);
    EXPECT_TRUE(support::has_line(watch.calls(), "SetDescription \xE7\x85\xA7\xE7\x9B\xB8\xE6\x9C\xBA"));
}

TEST_F(DeviceLink, NamelessDeviceBearsTheTextForIt) {
    LinkWatch watch;
    add(kNameless);
    EXPECT_EQ(device_links(), Lines{unknown() + ".lnk"});
    EXPECT_EQ(read_link(in_folder(unknown() + ".lnk"))->description, "");
    EXPECT_TRUE(support::has_line(watch.calls(), "SetArguments -DEV_ADDR=7C:2F:80:55:E1:0A"));
}

TEST_F(DeviceLink, TextForNamelessOnesIsLoadedIntoAWholePathsRoom) {
    support::CallPatch<int(HINSTANCE, UINT, LPSTR, int)> text("LoadStringA", LoadStringA);
    add(kNameless);
    const auto [library, id, buffer, size] = text.calls().back();
    EXPECT_EQ(id, kUnknownId);
    EXPECT_EQ(size, 260);
}

TEST_F(DeviceLink, NamelessDeviceWithoutATextForItGetsNone) {
    support::CallPatch<int(HINSTANCE, UINT, LPSTR, int)> text("LoadStringA", LoadStringA);
    text.answer([&](HINSTANCE library, UINT id, LPSTR buffer, int size) {
        if (id != kUnknownId) return text.real(library, id, buffer, size);
        if (library != nullptr) return 0;
        return static_cast<int>(strlen(lstrcpynA(buffer, "The program's own", size)));
    });
    add(kNameless);
    EXPECT_EQ(device_links(), Lines{});
    support::CallPatch<HMODULE(LPCSTR)> load("LoadLibraryA", LoadLibraryA);
    load.fail_nth(2, nullptr, ERROR_MOD_NOT_FOUND);  // the folder's own load is the first
    add(kNameless);
    EXPECT_EQ(load.count(), 2u);
    EXPECT_EQ(device_links(), Lines{});
}

TEST_F(DeviceLink, IsRenamedWhenTheDevicesNameChanged) {
    add_link("Old name.lnk", kPhone);
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});
    EXPECT_EQ(read_link(in_folder("Lena's phone.lnk"))->description, "Lena's phone");
    rename_device(0, "New name");
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{"New name.lnk"});
}

TEST_F(DeviceLink, IsNotWrittenAgainUnderTheSameName) {
    add_link("Lena's phone.lnk", kPhone);
    const std::string before = content_of(in_folder("Lena's phone.lnk"));
    add(kPhone);
    EXPECT_EQ(content_of(in_folder("Lena's phone.lnk")), before);
    EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});
}

TEST_F(DeviceLink, NameIsComparedWithItsLetterCase) {
    add_link("LENA'S PHONE.lnk", kPhone);
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});
    EXPECT_EQ(read_link(in_folder("Lena's phone.lnk"))->description, "Lena's phone");
}

TEST_F(DeviceLink, KeepsItsNameWhenTheDeviceHasNone) {
    add_link("Old name.lnk", kNameless);
    add(kNameless);
    EXPECT_EQ(device_links(), Lines{"Old name.lnk"});
}

TEST_F(DeviceLink, BearsTheFirstFreeNumberedName) {
    const struct {
        const char* label;
        Lines taken;
        const char* expected;
    } rows[] = {
        {"none", {}, "Lena's phone.lnk"},
        {"the name", {"Lena's phone.lnk"}, "Lena's phone(1).lnk"},
        {"two", {"Lena's phone.lnk", "Lena's phone(1).lnk"}, "Lena's phone(2).lnk"},
        {"a gap", {"Lena's phone.lnk", "Lena's phone(2).lnk"}, "Lena's phone(1).lnk"},
        {"only the first", {"Lena's phone(1).lnk"}, "Lena's phone.lnk"},
        {"three", {"Lena's phone.lnk", "Lena's phone(1).lnk", "Lena's phone(2).lnk"}, "Lena's phone(3).lnk"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        remove_tree(folder());
        for (const std::string& name : row.taken) add_link(name, kStranger);
        add(kPhone);
        Lines expected = row.taken;
        expected.emplace_back(row.expected);
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(device_links(), expected);
        EXPECT_EQ(read_link(in_folder(row.expected))->arguments, std::string("-DEV_ADDR=") + kPhone);
    });
}

TEST_F(DeviceLink, NamesOfForeignFilesAreTakenToo) {
    make_folder();
    write_content(in_folder("Lena's phone.lnk"), "no link");
    CreateDirectoryW(in_folder("Lena's phone(1).lnk").c_str(), nullptr);
    add(kPhone);
    EXPECT_TRUE(read_link(in_folder("Lena's phone(2).lnk")).has_value());
    EXPECT_EQ(content_of(in_folder("Lena's phone.lnk")), "no link");
}

TEST_F(DeviceLink, NumberedOneIsReplacedByANumberedOne) {
    add_link("Lena's phone.lnk", kStranger);
    add_link("Lena's phone(1).lnk", kPhone);
    add(kPhone);  // "(1)" is not the device's name: deleted, and written again
    EXPECT_EQ(device_links(), (Lines{"Lena's phone(1).lnk", "Lena's phone.lnk"}));
    EXPECT_EQ(read_link(in_folder("Lena's phone(1).lnk"))->description, "Lena's phone");
}

TEST_F(DeviceLink, SecondOfTwoDevicesOfOneNameIsNumbered) {
    rename_device(1, "Lena's phone");
    add(kPhone);
    add(kHeadset);
    EXPECT_EQ(device_links(), (Lines{"Lena's phone(1).lnk", "Lena's phone.lnk"}));
}

TEST_F(DeviceLink, NameThatNoFileBearsGetsNone) {
    CreateDirectoryW((root() + L"\\elsewhere").c_str(), nullptr);
    write_content(root() + L"\\elsewhere\\victim.lnk", "somebody's");
    write_content(menu() + L"\\x.lnk", "somebody's");
    const Lines before = outside();
    for (const char* name :
         {"..\\x", "../x", "..\\..\\elsewhere\\victim", "a\\b", "a/b", "a:b", "C:\\x", "\\x", "a?b", "a*b",
          "a\"b", "a<b", "a>b", "a|b", "a\tb", "\\\\server\\share\\x", "\\\\?\\C:\\x"}) {
        use_raw_name(name);
        add(kPhone);
        EXPECT_EQ(device_links(), Lines{}) << name;
        EXPECT_EQ(outside(), before) << name;
        EXPECT_EQ(content_of(menu() + L"\\x.lnk"), "somebody's") << name;
        EXPECT_EQ(content_of(root() + L"\\elsewhere\\victim.lnk"), "somebody's") << name;
    }
}

TEST_F(DeviceLink, NameOfAWindowsDeviceGetsNone) {
    for (const char* name : {"NUL", "con", "COM1", "LPT1", "AUX.phone"}) {
        use_raw_name(name);
        LinkWatch watch;
        add(kPhone);
        EXPECT_EQ(device_links(), Lines{}) << name;
        EXPECT_EQ(watch.count("Save"), 1u) << name;  // the link without a device
    }
}

TEST_F(DeviceLink, NamesThatOnlyLookDangerousAreOrdinary) {
    const struct {
        const char* label;
        const char* file;
    } rows[] = {
        {"..", "...lnk"},           {".", "..lnk"},
        {"x.lnk", "x.lnk.lnk"},     {"a %s %d %n", "a %s %d %n.lnk"},
        {"COM12", "COM12.lnk"},     {"(1)", "(1).lnk"},
        {"Desktop", "Desktop.lnk"}, {" x ", " x .lnk"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        use_raw_name(row.label);
        remove_tree(folder());
        add(kPhone);
        EXPECT_EQ(device_links(), Lines{row.file});
        remove(kPhone);
        EXPECT_EQ(device_links(), Lines{});
    });
}

TEST_F(DeviceLink, OldOneIsDeletedBeforeANameThatNoFileBears) {
    add_link("Old name.lnk", kPhone);
    use_raw_name("..\\x");
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{});
    EXPECT_EQ(outside(), Lines{"SendTo"});
}

TEST_F(DeviceLink, NameThatFillsItsFieldIsTakenWhole) {
    use_raw_name(std::string(66, 'n'));
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{std::string(66, 'n') + ".lnk"});
}

TEST_F(DeviceLink, NameCutWithinACharacterIsCurrentOnTheNextPassToo) {
    use_raw_name(std::string(64, 'n') + "\xE7\x85");
    add(kPhone);
    const Lines links = device_links();
    ASSERT_EQ(links.size(), 1u);
    LinkWatch watch;
    add(kPhone);
    EXPECT_EQ(device_links(), links);
    EXPECT_EQ(watch.count("Save"), 1u);  // the link without a device
}

TEST_F(DeviceLink, PathThatDoesNotFitGetsNone) {
    std::wstring deep = root();
    while (deep.size() + 41 < 220)
        CreateDirectoryW((deep += L"\\" + std::wstring(40, L'd')).c_str(), nullptr);
    deep += L"\\" + std::wstring(220 - deep.size() - 1, L'e');
    use_menu(deep);
    const size_t room = 259 - folder().size() - strlen("\\.lnk");
    ASSERT_LT(room, 60u);
    use_raw_name(std::string(room + 1, 'n'));
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{});
    use_raw_name(std::string(room, 'n'));
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{std::string(room, 'n') + ".lnk"});
    remove(kPhone);
    EXPECT_EQ(device_links(), Lines{});
}

TEST_F(DeviceLink, EachFailingCallOfTheShellLeavesTheRestAsItIs) {
    const struct {
        const char* label;
        const char* method;
        size_t nth;
        bool written;
    } rows[] = {
        {"no object", "create", 4, false},  // one link is made without a device, two are read
        {"target", "SetPath", 2, true},
        {"description", "SetDescription", 2, true},
        {"arguments", "SetArguments", 2, true},
        {"icon", "SetIconLocation", 2, true},
        {"no file side", "QueryInterface", 4, false},
        {"not saved", "Save", 2, false},
    };
    support::for_each_row(rows, [&](const auto& row) {
        remove_tree(folder());
        add_link("Another.lnk", kHeadset);
        LinkWatch watch;
        watch.fail(row.method, row.nth, E_OUTOFMEMORY);
        add(kPhone);
        EXPECT_EQ(device_links().size(), row.written ? 2u : 1u);
        EXPECT_EQ(watch.live(), 0);
    });
}
