// Adding a device to the Send-To folder and taking it out.
#include "send_to_test.h"
#include "watched_link.h"

#include "support/sdk_log.h"

#include "VlSDK.h"
#include "VlSim.h"

using namespace sendto_test;

namespace {

class SendToSync : public SendToTest {
protected:
    // "a.lnk" and on, of devices that the stack does not know; accessed in this order.
    void add_strangers(unsigned count) const {
        for (unsigned i = 0; i < count; ++i) {
            const std::string name = stranger(i);
            add_link(name, "00:00:00:00:00:0" + std::to_string(i));
            set_access(name, static_cast<WORD>(i + 1));
        }
    }
    static std::string stranger(unsigned i) { return std::string(1, static_cast<char>('a' + i)) + ".lnk"; }
    static Lines strangers(unsigned count) {
        Lines names;
        for (unsigned i = 0; i < count; ++i) names.push_back(stranger(i));
        return names;
    }
    static Lines with(Lines names, const std::string& name) {
        names.push_back(name);
        std::sort(names.begin(), names.end());
        return names;
    }
    static Lines without(Lines names, const std::string& name) {
        std::erase(names, name);
        return names;
    }
    // Links that point at no device: never counted, never deleted.
    [[nodiscard]] Lines add_foreign() const {
        make_folder();
        const std::string program = std::string(kInstallFolder) + "\\VlSend2bt.exe";
        const struct {
            const char* name;
            const char* arguments;
        } rows[] = {
            {"f arguments.lnk", "0123456789A4:C1:38:2D:5E:01"},
            {"f case.lnk", "-dev_addr=A4:C1:38:2D:5E:01"},
            {"f none.lnk", ""},
            {"f prefix.lnk", "-DEV_ADDR"},
            {"f space.lnk", " -DEV_ADDR=A4:C1:38:2D:5E:01"},
        };
        Lines names;
        for (const auto& row : rows) {
            write_link(in_folder(row.name), {program, row.arguments, "", "", 0});
            names.emplace_back(row.name);
        }
        write_content(in_folder("f text.lnk"), "-DEV_ADDR=A4:C1:38:2D:5E:01");
        write_content(in_folder("f empty.lnk"), "");
        CreateDirectoryW(in_folder("f folder.lnk").c_str(), nullptr);
        write_link(in_folder("f other kind.url"), {program, "-DEV_ADDR=A4:C1:38:2D:5E:01", "", "", 0});
        for (const char* name : {"f text.lnk", "f empty.lnk", "f folder.lnk", "f other kind.url"}) {
            names.emplace_back(name);
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    support::CallPatch<BOOL(LPCWSTR)> delete_{"DeleteFileW", DeleteFileW};
};

constexpr char kPhoneLink[] = "Lena's phone.lnk";

}  // namespace

TEST_F(SendToSync, SixthDeviceTakesThePlaceOfTheOneAccessedLongestAgo) {
    for (unsigned oldest = 0; oldest < 5; ++oldest) {
        remove_tree(folder());
        add_strangers(5);
        set_access(stranger(oldest), 0);
        add(kPhone);
        EXPECT_EQ(device_links(), with(without(strangers(5), stranger(oldest)), kPhoneLink));
    }
}

TEST_F(SendToSync, RoomIsMadeAtExactlyFive) {
    for (const unsigned count : {0U, 1U, 4U, 6U, 7U}) {
        remove_tree(folder());
        add_strangers(count);
        add(kPhone);
        EXPECT_EQ(device_links(), with(strangers(count), kPhoneLink)) << count;
    }
}

TEST_F(SendToSync, OfLinksAccessedTogetherTheFirstListedGoes) {
    add_strangers(5);
    for (unsigned i = 0; i < 5; ++i) set_access(stranger(i), 1);
    std::string first;
    support::CallPatch<HANDLE(LPCWSTR, LPWIN32_FIND_DATAW)> list("FindFirstFileW", FindFirstFileW);
    support::CallPatch<BOOL(HANDLE, LPWIN32_FIND_DATAW)> next("FindNextFileW", FindNextFileW);
    const auto note = [&](const WIN32_FIND_DATAW* entry) {
        const std::string name = utf8(entry->cFileName);
        if (first.empty() && name.size() == 5) first = name;
    };
    list.answer([&](LPCWSTR pattern, LPWIN32_FIND_DATAW entry) {
        HANDLE listing = list.real(pattern, entry);
        if (listing != INVALID_HANDLE_VALUE) note(entry);
        return listing;
    });
    next.answer([&](HANDLE listing, LPWIN32_FIND_DATAW entry) {
        const BOOL more = next.real(listing, entry);
        if (more) note(entry);
        return more;
    });
    add(kPhone);
    EXPECT_EQ(device_links(), with(without(strangers(5), first), kPhoneLink));
}

TEST_F(SendToSync, AccessTimeIsThatOfTheListingBeforeTheLinkIsRead) {
    add_strangers(5);
    support::CallPatch<HRESULT(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)> create("CoCreateInstance",
                                                                                    CoCreateInstance);
    const auto set_all = [&](bool rising) {
        for (unsigned i = 0; i < 5; ++i) set_access(stranger(i), static_cast<WORD>(rising ? i : 20 - i));
    };
    support::CallPatch<HANDLE(LPCWSTR, LPWIN32_FIND_DATAW)> list("FindFirstFileW", FindFirstFileW);
    list.answer([&](LPCWSTR pattern, LPWIN32_FIND_DATAW entry) {
        if (list.count() == 1) set_all(true);
        return list.real(pattern, entry);
    });
    create.answer([&](REFCLSID id, LPUNKNOWN outer, DWORD context, REFIID interface_id, LPVOID* object) {
        if (list.count() == 1 && delete_.count() == 0) set_all(false);  // as reading might do
        return create.real(id, outer, context, interface_id, object);
    });
    add(kPhone);
    EXPECT_EQ(device_links(), with(without(strangers(5), stranger(0)), kPhoneLink));
}

TEST_F(SendToSync, AddingADeviceThatIsThereDeletesNoOther) {
    add_strangers(4);
    add_link("z old name.lnk", kPhone);
    add(kPhone);
    EXPECT_EQ(device_links(), with(strangers(4), kPhoneLink));
    EXPECT_EQ(delete_.count(), 1u);
    add(kPhone);
    EXPECT_EQ(delete_.count(), 1u);
}

TEST_F(SendToSync, RemovingDeletesTheDevicesLinkAlone) {
    add_strangers(5);
    add_link("my phone.lnk", kPhone);
    remove(kPhone);
    EXPECT_EQ(device_links(), strangers(5));
    remove(kPhone);
    EXPECT_EQ(device_links(), strangers(5));
    EXPECT_EQ(delete_.count(), 1u);
}

TEST_F(SendToSync, AnyNumberButZeroAdds) {
    for (const int number : {1, 2, -1, 256}) {
        VlCm_SyncSend2btShc(address_of(kPhone).data(), number);
        EXPECT_EQ(device_links(), Lines{kPhoneLink}) << number;
        remove(kPhone);
        EXPECT_EQ(device_links(), Lines{}) << number;
    }
}

TEST_F(SendToSync, FirstLinkOfTheDeviceEndsTheSearch) {
    add_link("one.lnk", kPhone);
    add_link("two.lnk", kPhone);
    LinkWatch watch;
    remove(kPhone);
    EXPECT_EQ(device_links().size(), 1u);
    EXPECT_EQ(watch.count("GetArguments"), 1u);
    remove(kPhone);
    EXPECT_EQ(device_links(), Lines{});
}

TEST_F(SendToSync, EveryByteOfTheAddressCounts) {
    const Address phone = address_of(kPhone);
    add_link("a.lnk", kPhone);
    for (size_t i = 0; i < phone.size(); ++i) {
        Address other = phone;
        other[i] ^= 1;
        VlCm_SyncSend2btShc(other.data(), FALSE);
        EXPECT_EQ(device_links(), Lines{"a.lnk"}) << i;
    }
}

TEST_F(SendToSync, ForeignFilesAreNeitherCountedNorDeleted) {
    const Lines foreign = add_foreign();
    add_strangers(4);
    for (const std::string& name : foreign) {
        if (name.find("folder") == std::string::npos) set_access(name, 0);
    }
    add(kPhone);  // the fifth device
    Lines expected = foreign;
    for (const std::string& name : with(strangers(4), kPhoneLink)) expected = with(expected, name);
    EXPECT_EQ(device_links(), expected);
    set_access("a.lnk", 0);
    add(kKeyboard);  // the sixth
    EXPECT_EQ(device_links(), with(without(expected, "a.lnk"), "Keyboard K380.lnk"));
    remove(kPhone);
    EXPECT_TRUE(exists(in_folder("f case.lnk")));
    VlCm_SyncSend2btShcForMultiUser();
    EXPECT_EQ(device_links(), with(foreign, "Keyboard K380.lnk"));
}

TEST_F(SendToSync, DeviceThatTheStackForgotIsTakenOutWithoutAsking) {
    add_link("gone.lnk", kStranger);
    remove(kStranger);
    EXPECT_EQ(device_links(), Lines{});
    EXPECT_EQ(VlSim_CallCount("Btsdk_GetRemoteDeviceHandle"), 0u);
    EXPECT_EQ(VlSim_CallCount("Btsdk_GetRemoteDeviceProperty"), 0u);
}

TEST_F(SendToSync, DeviceThatTheStackDoesNotKnowIsNotAdded) {
    add_strangers(5);
    add(kStranger);
    EXPECT_EQ(device_links(), strangers(5));
    EXPECT_EQ(VlSim_CallCount("Btsdk_GetRemoteDeviceProperty"), 0u);
    VlSim_Fail("Btsdk_GetRemoteDeviceHandle", 1, 0);
    add(kPhone);
    EXPECT_EQ(device_links(), strangers(5));
}

TEST_F(SendToSync, DeviceWhosePropertiesCannotBeReadIsNotAdded) {
    add_strangers(5);
    VlSim_Fail("Btsdk_GetRemoteDeviceProperty", 1, 5);
    add(kPhone);
    EXPECT_EQ(device_links(), strangers(5));
    add_link("z old name.lnk", kPhone);
    VlSim_Fail("Btsdk_GetRemoteDeviceProperty", 1, 5);
    add(kPhone);
    EXPECT_EQ(device_links(), with(strangers(5), "z old name.lnk"));
}

TEST_F(SendToSync, StackIsAskedBeforeAnythingIsDeleted) {
    add_strangers(5);
    delete_.answer([this](LPCWSTR path) {
        const Lines asked = support::sdk_operations();
        EXPECT_TRUE(support::has_in_order(asked, {"Btsdk_IsBluetoothReady", "Btsdk_GetRemoteDeviceHandle",
                                                  "Btsdk_GetRemoteDeviceProperty"}));
        return delete_.real(path);
    });
    add(kPhone);
    EXPECT_EQ(delete_.count(), 1u);
}

TEST_F(SendToSync, LinkThatCannotBeDeletedStays) {
    add_strangers(5);
    delete_.fail_from(1, FALSE, ERROR_ACCESS_DENIED);
    add(kPhone);
    EXPECT_EQ(device_links(), with(strangers(5), kPhoneLink));
    remove(kPhone);
    EXPECT_EQ(device_links(), with(strangers(5), kPhoneLink));
}

TEST_F(SendToSync, LinkThatCannotBeReadIsNotCounted) {
    const struct {
        const char* label;
        const char* method;
        size_t nth;
    } rows[] = {
        {"no object", "create", 2},
        {"no file side", "QueryInterface", 2},
        {"not loaded", "Load", 1},
        {"no arguments", "GetArguments", 1},
    };
    support::for_each_row(rows, [&](const auto& row) {
        remove_tree(folder());
        add_strangers(5);
        LinkWatch watch;
        watch.fail(row.method, row.nth, E_FAIL);
        add(kPhone);  // four were seen
        EXPECT_EQ(device_links(), with(strangers(5), kPhoneLink));
        remove_tree(folder());
        add_link("a.lnk", kPhone);
        watch.fail(row.method, row.nth, E_FAIL);
        remove(kPhone);
        EXPECT_EQ(device_links(), Lines{"a.lnk"});
    });
}

TEST_F(SendToSync, FolderThatCannotBeListedCountsAsEmpty) {
    add_strangers(5);
    support::CallPatch<HANDLE(LPCWSTR, LPWIN32_FIND_DATAW)> list("FindFirstFileW", FindFirstFileW);
    list.fail_nth(1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    add(kPhone);
    EXPECT_EQ(device_links(), with(strangers(5), kPhoneLink));
    list.fail_nth(list.count() + 1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    remove(kPhone);
    EXPECT_EQ(device_links(), with(strangers(5), kPhoneLink));
}

TEST_F(SendToSync, NameThatCannotBeCheckedIsLeftAlone) {
    add_link("a.lnk", kPhone);
    support::CallPatch<decltype(GetFullPathNameW)> whole("GetFullPathNameW", GetFullPathNameW);
    remove(kStranger);
    const size_t calls = whole.count();
    for (size_t nth = 1; nth <= calls; ++nth) {
        whole.fail_nth(whole.count() + nth, DWORD{0}, ERROR_NOT_ENOUGH_MEMORY);
        remove(kStranger);
        EXPECT_EQ(device_links(), Lines{"a.lnk"}) << nth;
    }
    EXPECT_EQ(outside(), Lines{"SendTo"});
}
