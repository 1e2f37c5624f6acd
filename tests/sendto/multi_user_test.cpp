// The pass that compares all links of a user with the devices that the stack knows.
#include "send_to_test.h"
#include "watched_link.h"

#include "support/sdk_log.h"

#include "VlSDK.h"
#include "VlSim.h"

using namespace sendto_test;

namespace {

class MultiUser : public SendToTest {
protected:
    static void pass() { VlCm_SyncSend2btShcForMultiUser(); }
    static uint32_t walks() { return VlSim_CallCount("Btsdk_StartEnumRemoteDevice"); }
};

}  // namespace

TEST_F(MultiUser, RenamesKnownOnesAndDeletesOthers) {
    add_link("old name.lnk", kPhone);
    add_link("Keyboard K380.lnk", kKeyboard);
    add_link("stranger.lnk", kStranger);
    pass();
    EXPECT_EQ(device_links(), (Lines{"Keyboard K380.lnk", "Lena's phone.lnk"}));
    EXPECT_EQ(read_link(in_folder("Lena's phone.lnk"))->description, "Lena's phone");
    EXPECT_EQ(read_link(in_folder("Keyboard K380.lnk"))->description, "a device");  // as it was
}

TEST_F(MultiUser, HoldsForAnyNumberOfLinks) {
    for (int i = 0; i < 40; ++i) add_link("s" + std::to_string(i) + ".lnk", kStranger);
    add_link("old name.lnk", kPhone);
    pass();
    EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});
    EXPECT_EQ(walks(), 41u);
}

TEST_F(MultiUser, KeepsTheNameOfANamelessDevice) {
    add_link("my mouse.lnk", kNameless);
    pass();
    EXPECT_EQ(device_links(), Lines{"my mouse.lnk"});
}

TEST_F(MultiUser, DeletesAllWhenTheWalkCannotStart) {
    add_link("Lena's phone.lnk", kPhone);
    add_link("stranger.lnk", kStranger);
    VlSim_Fail("Btsdk_StartEnumRemoteDevice", 0, 0);
    pass();
    EXPECT_EQ(device_links(), Lines{});
    EXPECT_EQ(walks(), 2u);
    EXPECT_EQ(VlSim_CallCount("Btsdk_EndEnumRemoteDevice"), 0u);
}

TEST_F(MultiUser, DeletesTheOneWhoseWalkCannotStart) {
    add_link("Lena's phone.lnk", kPhone);
    add_link("Keyboard K380.lnk", kKeyboard);
    VlSim_Fail("Btsdk_StartEnumRemoteDevice", 1, 0);
    pass();
    EXPECT_EQ(device_links().size(), 1u);
}

TEST_F(MultiUser, DeletesWhatAWalkThatBreaksOffDoesNotReach) {
    add_link("Keyboard K380.lnk", kKeyboard);  // the fourth device
    VlSim_Fail("Btsdk_EnumRemoteDevice", 3, 0);
    pass();
    EXPECT_EQ(device_links(), Lines{});
    EXPECT_EQ(VlSim_CallCount("Btsdk_EndEnumRemoteDevice"), 1u);
}

TEST_F(MultiUser, WalksOverAllDevicesAndStopsAtTheLinksOne) {
    add_link("Keyboard K380.lnk", kKeyboard);
    pass();
    EXPECT_EQ(support::sdk_calls("Btsdk_StartEnumRemoteDevice").size(), 1u);
    EXPECT_NE(support::sdk_calls("Btsdk_StartEnumRemoteDevice")[0].find("(0, 0)"), std::string::npos);
    EXPECT_EQ(VlSim_CallCount("Btsdk_EnumRemoteDevice"), 4u);
    EXPECT_EQ(VlSim_CallCount("Btsdk_EndEnumRemoteDevice"), 1u);
}

TEST_F(MultiUser, LinksWithoutADeviceAreNotLookedUp) {
    make_folder();
    write_content(in_folder("text.lnk"), "-DEV_ADDR=A4:C1:38:2D:5E:01");
    write_link(in_folder("other.lnk"), {"C:\\x.exe", "-X", "", "", 0});
    pass();
    EXPECT_EQ(walks(), 0u);
    EXPECT_EQ(device_links(), (Lines{"other.lnk", "text.lnk"}));
    EXPECT_TRUE(exists(generic_link()));
}

TEST_F(MultiUser, EachNameIsTreatedOnceThoughRenamesMakeNewOnes) {
    add_link("a.lnk", kPhone);
    add_link("b.lnk", kKeyboard);
    add_link("c.lnk", kCamera);
    pass();
    EXPECT_EQ(walks(), 3u);
    EXPECT_EQ(device_links().size(), 3u);
}

TEST_F(MultiUser, SecondLinkOfADeviceIsNumbered) {
    add_link("a.lnk", kPhone);
    add_link("b.lnk", kPhone);
    pass();
    EXPECT_EQ(device_links(), (Lines{"Lena's phone(1).lnk", "Lena's phone.lnk"}));
}

TEST_F(MultiUser, MakesTheFolder) {
    pass();
    EXPECT_TRUE(exists(in_folder("Desktop.ini")));
    EXPECT_TRUE(exists(generic_link()));
    EXPECT_EQ(start_.count(), 1u);
    EXPECT_EQ(walks(), 0u);
}

TEST_F(MultiUser, NameThatNoFileBearsDeletesTheLink) {
    add_link("a.lnk", kPhone);
    rename_device(0, "..\\x");
    pass();
    EXPECT_EQ(device_links(), Lines{});
    EXPECT_EQ(outside(), Lines{"SendTo"});
}

TEST_F(MultiUser, WithoutMemoryNoLinkIsTouched) {
    add_link("a.lnk", kPhone);
    add_link("b.lnk", kStranger);
    blocks().fail_from(1);
    pass();
    blocks().fail_nth(0);
    EXPECT_EQ(device_links(), (Lines{"a.lnk", "b.lnk"}));
    EXPECT_EQ(walks(), 0u);
}

TEST_F(MultiUser, FolderThatChangesWhileItIsListedIsSafe) {
    add_link("a.lnk", kPhone);
    add_link("b.lnk", kStranger);
    support::CallPatch<HANDLE(LPCWSTR, LPWIN32_FIND_DATAW)> list("FindFirstFileW", FindFirstFileW);
    list.answer([&](LPCWSTR pattern, LPWIN32_FIND_DATAW entry) {
        if (list.count() == 2) {  // after the count
            for (int i = 0; i < 20; ++i) add_link("late" + std::to_string(i) + ".lnk", kStranger);
        }
        return list.real(pattern, entry);
    });
    pass();
    EXPECT_EQ(walks(), 3u);  // as many as there were, the link without a device among them
    remove_tree(folder());
    add_link("a.lnk", kPhone);
    list.answer([&](LPCWSTR pattern, LPWIN32_FIND_DATAW entry) {
        if (list.count() % 2 == 0) DeleteFileW(in_folder("a.lnk").c_str());
        return list.real(pattern, entry);
    });
    pass();
    EXPECT_EQ(device_links(), Lines{});
}

TEST_F(MultiUser, EachFailingReadLeavesTheLink) {
    const struct {
        const char* label;
        const char* method;
        size_t nth;
    } rows[] = {
        {"no object", "create", 3},
        {"no file side", "QueryInterface", 3},
        {"not loaded", "Load", 2},
        {"no arguments", "GetArguments", 2},
    };
    support::for_each_row(rows, [&](const auto& row) {
        remove_tree(folder());
        add_link("a.lnk", kStranger);
        pass();
        add_link("a.lnk", kStranger);
        LinkWatch watch;
        watch.fail(row.method, 0, E_FAIL);
        pass();
        EXPECT_EQ(device_links(), Lines{"a.lnk"});
    });
}

TEST_F(MultiUser, ListingsThatCannotBeOpenedTouchNothing) {
    for (const unsigned nth : {1U, 2U}) {
        add_link("a.lnk", kStranger);
        support::CallPatch<HANDLE(LPCWSTR, LPWIN32_FIND_DATAW)> list("FindFirstFileW", FindFirstFileW);
        list.fail_nth(nth, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
        pass();
        EXPECT_EQ(device_links(), Lines{"a.lnk"}) << nth;
    }
}
