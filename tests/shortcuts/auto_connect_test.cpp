// The automatic default connection of a device, which the tray agent makes.
#include "VlCommon.h"
#include "scene.h"
#include "support/call_patch.h"

namespace {

using scene::Lines;
using support::CallPatch;

constexpr uint32_t kPhone = 1, kUnknown = 99;
constexpr char kSection[] = "11:22:33:44:55:66";  // byte 0 first
constexpr char kReversed[] = "66:55:44:33:22:11";
constexpr char kRelay[] = "Btsdk_PostMessageToCtrlCenter";

class DefaultConnection : public support::SuiteTest {
protected:
    // The tray agent is starting: it is not started a second time, nor waited for.
    DefaultConnection() : agent_(CreateMutexA(nullptr, FALSE, "Veltrin2_VLTray")) {
        scene::set(R"("devices": [{"handle": 1, "address": "66:55:44:33:22:11"}],
                      "shortcuts": [{"handle": 700, "device": 1, "class": "0x1101", "name": "My port"}])");
    }
    ~DefaultConnection() override { CloseHandle(agent_); }
    DefaultConnection(const DefaultConnection&) = delete;
    DefaultConnection& operator=(const DefaultConnection&) = delete;

    void connect_at_start(const char* section, const std::string& shortcut) {
        settings().set(support::SettingsFile::kRemoteDevices, section, "AutoConnectShc", shortcut);
    }
    static Lines posted() { return support::sdk_calls(kRelay); }

private:
    HANDLE agent_;
};

TEST_F(DefaultConnection, IsAskedOfTheTrayAgent) {
    connect_at_start(kSection, "My port");
    scene::forget_calls();
    VlCm_ConnectDefaultShcByDevhdl(kPhone);
    const std::string path = support::settings_path(support::SettingsFile::kRemoteDevices);
    const Lines calls = support::sdk_calls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0], "Btsdk_GetRemoteDeviceAddress(1, out) = 0");
    EXPECT_EQ(calls[1],
              "Btsdk_GetPrivateProfileString(\"11:22:33:44:55:66\", \"AutoConnectShc\", \"\", out, "
              "100, \"" +
                  path + "\") = 7");
    EXPECT_EQ(calls[2], "Btsdk_GetShortCutByName(\"My port\") = 700");
    EXPECT_TRUE(scene::starts_with(calls[3], "Btsdk_PostMessageToCtrlCenter(1225261571, 700)")) << calls[3];
    static_assert(1225261571 == 0x49080203);
    EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_PostMsg2Vltray", "<512 VlCm_PostMsg2Vltray"}));
}

TEST_F(DefaultConnection, WithoutAnEntryIsNotAskedFor) {
    VlCm_ConnectDefaultShcByDevhdl(kPhone);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_GetRemoteDeviceAddress", "Btsdk_GetPrivateProfileString"}));
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(DefaultConnection, HasASectionNamedByteZeroFirst) {
    connect_at_start(kReversed, "My port");
    VlCm_ConnectDefaultShcByDevhdl(kPhone);
    EXPECT_EQ(posted(), Lines{});
}

TEST_F(DefaultConnection, OfAnUnknownShortcutPostsNothing) {
    connect_at_start(kSection, "Other port");
    scene::forget_calls();
    VlCm_ConnectDefaultShcByDevhdl(kPhone);
    EXPECT_EQ(support::sdk_operations().back(), "Btsdk_GetShortCutByName");
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(DefaultConnection, OfALongNameIsCutAt99Bytes) {
    connect_at_start(kSection, std::string(120, 'n'));
    scene::forget_calls();
    VlCm_ConnectDefaultShcByDevhdl(kPhone);
    EXPECT_EQ(support::sdk_calls("Btsdk_GetShortCutByName"),
              Lines{"Btsdk_GetShortCutByName(\"" + std::string(99, 'n') + "\") = 0"});
}

TEST_F(DefaultConnection, OfADeviceWithoutAddressIsThatOfTheZeroAddress) {
    connect_at_start("00:00:00:00:00:00", "My port");
    scene::forget_calls();
    VlCm_ConnectDefaultShcByDevhdl(kUnknown);
    EXPECT_EQ(posted().size(), 1U);
}

TEST_F(DefaultConnection, TakesTheAddressWhateverTheAnswer) {
    connect_at_start("01:02:03:04:05:AF", "My port");
    CallPatch address("Btsdk_GetRemoteDeviceAddress", Btsdk_GetRemoteDeviceAddress);
    address.answer([](BtHandle, uint8_t* bytes) {
        for (const int byte : {1, 2, 3, 4, 5, 0xAF}) *bytes++ = static_cast<uint8_t>(byte);
        return scene::kStackCode;
    });
    scene::forget_calls();
    VlCm_ConnectDefaultShcByDevhdl(kPhone);
    EXPECT_EQ(posted().size(), 1U);
}

TEST_F(DefaultConnection, EachCallOfTheStackMayFail) {
    connect_at_start(kSection, "My port");
    scene::for_each_failing_call(scene::forget_calls, [](const std::string& failing) {
        VlCm_ConnectDefaultShcByDevhdl(kPhone);
        const bool reaches_the_agent = failing == "nothing" || scene::starts_with(failing, kRelay);
        EXPECT_EQ(posted().size(), reaches_the_agent ? 1U : 0U);
    });
}

}  // namespace
