// What the main window shows, read from its lists across processes.
#include "veltrin_window.h"

#include "VlSim.h"
#include "protocol.h"
#include "text.h"

#include <commctrl.h>

#include <filesystem>

using namespace programs;
using namespace suite;

namespace {

class VeltrinLists : public VeltrinWindow {};

const Row kPhoneRow = {L"Test Phone", L"Smartphone", L"Not connected, paired", L"00:11:22:33:44:55"};
const Row kPrinterRow = {L"Büro プリンター", L"Printer", L"Not connected", L"66:77:88:99:AA:BB"};
const Row kHeadsetRow = {L"Headset", L"Headset", L"Connected", L"0A:0B:0C:0D:0E:0F"};
const Row kNamelessRow = {L"01:02:03:04:05:06", L"Unknown kind of device", L"Not connected",
                          L"01:02:03:04:05:06"};

// A copy of the program with what it needs, but for one module.
class Installation {
public:
    Installation(const std::wstring& folder, const wchar_t* without) : folder_(folder + L"\\suite") {
        std::filesystem::create_directories(folder_);
        for (const wchar_t* file : {L"Veltrin.exe", L"VlCommon.dll", L"VlSDK.dll", L"VlTrace.dll",
                                    L"VlMobileSDK.dll", L"Vl2Res.dll", L"vlLangInDepRes.dll"}) {
            if (wcscmp(file, without) == 0) continue;
            std::filesystem::copy_file(wide(support::bin_folder()) + file, folder_ + L"\\" + file);
        }
    }
    [[nodiscard]] std::string program() const { return utf8(folder_ + L"\\Veltrin.exe"); }
    // Away from the folder of the built modules, where the missing one would be found.
    [[nodiscard]] support::ChildOptions options() const { return {.folder = utf8(folder_)}; }

private:
    std::wstring folder_;
};

}  // namespace

TEST_F(VeltrinLists, ShowDevicesWithKindStatusAndAddress) {
    open();
    EXPECT_EQ(devices().rows(), (std::vector<Row>{kPhoneRow, kPrinterRow, kHeadsetRow, kNamelessRow}));
    EXPECT_EQ(devices().chosen(), kPhone);
    EXPECT_EQ(counted(), L"4 devices");
}

TEST_F(VeltrinLists, ShowTheServicesOfTheChosenDevice) {
    open();
    EXPECT_EQ(services().rows(),
              (std::vector<Row>{
                  {L"Object Push", L"Not connected", L"Send files and contacts to the device"},
                  {L"File Transfer", L"Not connected", L"Browse the files of the device"},
                  {L"Message Access", L"Not connected", L"Read and send messages through the device"}}));
    EXPECT_EQ(text_of_window(child(IDW_SERVICES_TITLE)), L"Services of Test Phone");
    press(IDW_DEVICES, VK_DOWN);
    EXPECT_EQ(devices().chosen(), kPrinter);
    EXPECT_EQ(services().column(0), (Row{L"Serial Port (COM9)", L"Basic Printing"}));
    EXPECT_EQ(text_of_window(child(IDW_SERVICES_TITLE)), L"Services of Büro プリンター");
}

TEST_F(VeltrinLists, ShowAConnectedServiceWithoutAShortcut) {
    open();
    devices().choose(kHeadset);
    EXPECT_EQ(services().rows(),
              (std::vector<Row>{{L"Headset", L"Connected", L"Use the device as a headset"}}));
}

TEST_F(VeltrinLists, ShowNoServicesOfADeviceThatHasNone) {
    open();
    devices().choose(kNameless);
    EXPECT_EQ(services().count(), 0);
    EXPECT_EQ(services().chosen(), -1);
}

TEST_F(VeltrinLists, ShowTheAdapter) {
    open();
    EXPECT_EQ(text_of_window(child(IDW_ADAPTER_STATUS)), L"Bluetooth adapter: Connected");
    EXPECT_EQ(text_of_window(child(IDW_ADAPTER_KIND)), L"Other devices see it as: Desktop computer");
    EXPECT_NE(SendMessageW(child(IDW_ADAPTER_ICON), STM_GETICON, 0, 0), 0);
    ASSERT_EQ(VlSim_Patch(R"({"connections": null, "local": {"class": "0x140680"}})"), 0u);
    press(IDW_DEVICES, VK_F5);
    EXPECT_EQ(text_of_window(child(IDW_ADAPTER_STATUS)), L"Bluetooth adapter: Not connected");
    EXPECT_EQ(text_of_window(child(IDW_ADAPTER_KIND)), L"Other devices see it as: Printer");
}

TEST_F(VeltrinLists, LeaveOutWhatTheInstallationHides) {
    settings().common("FilteredDevice", "BTSDK_DEVCLS_PHONE", "1");
    open();
    EXPECT_EQ(devices().rows(), (std::vector<Row>{kPrinterRow, kHeadsetRow, kNamelessRow}));
    EXPECT_EQ(counted(), L"3 devices");
}

TEST_F(VeltrinLists, HaveIconsOfTheirOwnForKindAndState) {
    open();
    const int phone = devices().icon(kPhone), printer = devices().icon(kPrinter);
    EXPECT_GE(phone, 0);
    EXPECT_GE(printer, 0);
    EXPECT_NE(phone, printer);
    EXPECT_NE(services().icon(0), services().icon(1));
    ASSERT_EQ(VlSim_Set("/devices/0/connected", "true"), 0u);
    press(IDW_DEVICES, VK_F5);
    EXPECT_NE(devices().icon(kPhone), phone);
    EXPECT_EQ(devices().icon(kPrinter), printer);
}

TEST_F(VeltrinLists, AreReadAnewByF5) {
    open();
    ASSERT_EQ(VlSim_Set("/devices/0/name", "\"Another name\""), 0u);
    ASSERT_EQ(VlSim_Set("/devices/0/connected", "true"), 0u);
    EXPECT_EQ(devices().rows().front(), kPhoneRow);
    press(IDW_SERVICES, VK_F5);
    EXPECT_EQ(devices().rows().front(),
              (Row{L"Another name", L"Smartphone", L"Connected, paired", L"00:11:22:33:44:55"}));
    EXPECT_EQ(text_of_window(child(IDW_SERVICES_TITLE)), L"Services of Another name");
}

TEST_F(VeltrinLists, AreReadAnewWhenTheAgentIsToldSomething) {
    run_agent();
    open();
    EXPECT_TRUE(logs(L"VlTray",
                     "registered window " + hex(reinterpret_cast<UINT_PTR>(window()), 1) + ", 1 registered"));
    ASSERT_EQ(VlSim_Set("/devices/0/name", "\"Another name\""), 0u);
    VlCm_PostMsg2Vltray(0x0005, 0x0001, 9);
    EXPECT_TRUE(logged("message 0x8049 wParam 0x10005 lParam 0x9"));
    drain();
    EXPECT_EQ(devices().rows().front().front(), L"Another name");
}

TEST_F(VeltrinLists, FindAnAgentThatComesLater) {
    open();
    run_agent();
    press(IDW_DEVICES, VK_F5);
    EXPECT_TRUE(logs(L"VlTray",
                     "registered window " + hex(reinterpret_cast<UINT_PTR>(window()), 1) + ", 1 registered"));
}

TEST_F(VeltrinLists, TellTheAgentWhenTheWindowCloses) {
    run_agent();
    open();
    const std::string line =
        "unregistered window " + hex(reinterpret_cast<UINT_PTR>(window()), 1) + ", 0 registered";
    PostMessageW(window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program().wait(), 0u);
    EXPECT_TRUE(logs(L"VlTray", line));
}

TEST_F(VeltrinLists, KeepWhatIsChosenWhereverItMoves) {
    open();
    devices().choose(kPrinter);
    services().choose(1);
    ASSERT_EQ(VlSim_Patch(R"({"devices": [
        {"handle": 1003, "name": "Headset", "address": "0A:0B:0C:0D:0E:0F", "class": "0x240404"},
        {"handle": 1005, "name": "New", "address": "0A:0B:0C:0D:0E:10", "class": "0x240404"},
        {"handle": 1002, "name": "Printer", "address": "66:77:88:99:AA:BB", "class": "0x040680",
         "services": [{"handle": 21, "class": "0x1118"}, {"handle": 20, "class": "0x1101"}]}]})"),
              0u);
    press(IDW_DEVICES, VK_F5);
    EXPECT_EQ(devices().column(0), (Row{L"Headset", L"New", L"Printer"}));
    EXPECT_EQ(devices().chosen(), 2);
    EXPECT_EQ(services().column(0), (Row{L"Basic Printing", L"Serial Port (COM9)"}));
    EXPECT_EQ(services().chosen(), 0);
}

TEST_F(VeltrinLists, ChooseTheNextDeviceWhenTheChosenOneIsGone) {
    open();
    devices().choose(kHeadset);
    ASSERT_EQ(VlSim_Patch(R"({"devices": [
        {"handle": 1002, "name": "A", "address": "66:77:88:99:AA:BB", "class": "0x040680"},
        {"handle": 1004, "name": "B", "address": "01:02:03:04:05:06", "class": "0x000704",
         "services": [{"handle": 40, "class": "0x1124"}]}]})"),
              0u);
    press(IDW_DEVICES, VK_F5);
    EXPECT_EQ(devices().chosen(), 1);
    EXPECT_EQ(text_of_window(child(IDW_SERVICES_TITLE)), L"Services of B");
    EXPECT_EQ(services().column(0), (Row{L"Human Interface Device"}));
}

TEST_F(VeltrinLists, ShowNothingOfADeviceThatWentWhileItWasShown) {
    open();
    ASSERT_EQ(VlSim_Patch(R"({"devices": []})"), 0u);
    press(IDW_DEVICES, VK_DOWN);  // the row is still there, the device is not
    EXPECT_EQ(devices().chosen(), kPrinter);
    EXPECT_EQ(services().count(), 0);
}

TEST_F(VeltrinLists, AreEmptyWhenAllDevicesAreGone) {
    open();
    ASSERT_EQ(VlSim_Patch(R"({"devices": []})"), 0u);
    press(IDW_DEVICES, VK_F5);
    EXPECT_EQ(devices().count(), 0);
    EXPECT_EQ(services().count(), 0);
    EXPECT_EQ(text_of_window(child(IDW_SERVICES_TITLE)), L"Services");
}

TEST_F(VeltrinLists, AreEmptyInAnEmptyNeighbourhood) {
    ASSERT_EQ(VlSim_Patch(R"({"devices": [], "shortcuts": [], "connections": []})"), 0u);
    open();
    EXPECT_EQ(devices().count(), 0);
    EXPECT_EQ(services().count(), 0);
    EXPECT_EQ(counted(), L"No devices");
    EXPECT_EQ(text_of_window(child(IDW_SERVICES_TITLE)), L"Services");
    press(IDW_DEVICES, VK_DOWN);
    command(IDC_CONNECT);
    drain();
    EXPECT_EQ(told(), L"Choose a device first.");
    ASSERT_EQ(VlSim_Patch(R"({"devices": [{"handle": 1, "name": "First", "class": "0x5A020C"}]})"), 0u);
    press(IDW_DEVICES, VK_F5);
    EXPECT_EQ(devices().chosen(), 0);
    EXPECT_EQ(counted(), L"1 device");
}

TEST_F(VeltrinLists, TellThatBluetoothIsOff) {
    ASSERT_EQ(VlSim_Patch(R"({"ready": false})"), 0u);
    open();
    EXPECT_EQ(text_of_window(child(IDW_ADAPTER_STATUS)), L"Bluetooth adapter: Not available");
    EXPECT_EQ(devices().count(), 4);
    EXPECT_EQ(devices().column(2), Row(4, L"Not connected"));
    EXPECT_EQ(services().column(1), Row(3, L"Not available"));
}

TEST_F(VeltrinLists, CallServicesByTheirClassWithoutTheLibraryOfTexts) {
    const Installation copy(work_folder(), L"Vl2Res.dll");
    open(copy.program(), copy.options());
    EXPECT_EQ(devices().column(0),
              (Row{L"Test Phone", L"Büro プリンター", L"Headset", L"01:02:03:04:05:06"}));
    EXPECT_EQ(devices().column(2), Row(4, L""));
    EXPECT_EQ(services().column(0), (Row{L"0x1105", L"0x1106", L"0x1132"}));
    EXPECT_EQ(services().column(2), Row(3, L""));
    EXPECT_EQ(told(), L"The library of texts is missing; names of services are class numbers.");
    EXPECT_GE(devices().icon(kPhone), 0);
}

TEST_F(VeltrinLists, HaveTextsOnlyWithoutTheLibraryOfIcons) {
    const Installation copy(work_folder(), L"vlLangInDepRes.dll");
    open(copy.program(), copy.options());
    EXPECT_EQ(devices().rows().front(), kPhoneRow);
    EXPECT_EQ(devices().icon(kPhone), I_IMAGENONE);
    EXPECT_EQ(services().icon(0), I_IMAGENONE);
}
