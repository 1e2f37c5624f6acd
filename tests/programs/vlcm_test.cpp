// vlcm.exe as a script runs it: what it tells is compared with what the library answers here.
#include "command_line.h"

#include "VlCommon.h"
#include "VlSim.h"
#include "devices.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

constexpr uint32_t kTextSize = 260;

// The same in the neighbourhood that the simulated stack has by itself.
class Neighbourhood : public CommandLine {
protected:
    Neighbourhood() { EXPECT_EQ(VlSim_Reset(), 0u); }
};

std::string status(BOOL (*query)(uint32_t, wchar_t*, uint32_t), uint32_t handle) {
    wchar_t text[kTextSize] = L"";
    EXPECT_TRUE(query(handle, text, kTextSize));
    return utf8(text);
}

std::string name(uint32_t (*query)(uint32_t, wchar_t*, uint32_t), uint32_t handle) {
    wchar_t text[kTextSize] = L"";
    EXPECT_EQ(query(handle, text, kTextSize), 0u);
    return utf8(text);
}

uint16_t class_in(const Json& facts) {
    return static_cast<uint16_t>(std::stoul(facts.at("class").get<std::string>(), nullptr, 16));
}

void expect_server(const Json& facts) {
    const uint32_t handle = facts.at("handle");
    EXPECT_EQ(facts.at("name"), name(VlCm_GetLocSvcDisplayNameW, handle));
    EXPECT_EQ(facts.at("status"), status(VlCm_GetLocSvcStatusStringW, handle));
    EXPECT_EQ(facts.at("icon"), VlCm_GetLocSvcIconIDEx(handle, class_in(facts)));
    EXPECT_EQ(facts.at("shown"), VlCm_ShouldShowThisLocalServerEx(handle) != FALSE);
}

void expect_device(const Json& facts, const Device& device) {
    const auto& [handle, property] = device;
    char shown_name[kTextSize] = "";
    EXPECT_EQ(VlCm_GetRmtDevDisplayName(property.address, shown_name, kTextSize), 0u);
    wchar_t kind[kTextSize] = L"";
    EXPECT_TRUE(VlCm_GetDevTypeStrByDevClsW(property.deviceClass, kind, kTextSize));
    EXPECT_EQ(facts.at("handle"), handle);
    EXPECT_EQ(facts.at("address"), address_text(property.address));
    EXPECT_EQ(facts.at("name"), shown_name);
    EXPECT_EQ(facts.at("class"), hex(property.deviceClass, 6));
    EXPECT_EQ(facts.at("kind"), utf8(kind));
    EXPECT_EQ(facts.at("status"), status(VlCm_GetRmtDevStatusStringW, handle));
    EXPECT_EQ(facts.at("icon"), VlCm_GetRmtDevIconIDEx(handle, property.deviceClass));
    EXPECT_EQ(facts.at("shown"), VlCm_ShouldFilterCurDevCls(property.deviceClass) == FALSE);
}

void expect_services(const Json& list, BtHandle device) {
    const std::vector<Service> services = services_of(device);
    ASSERT_EQ(list.size(), services.size());
    for (size_t i = 0; i < services.size(); ++i) {
        const auto& [handle, service_class] = services[i];
        EXPECT_EQ(list[i].at("handle"), handle);
        EXPECT_EQ(class_in(list[i]), service_class);
        EXPECT_EQ(list[i].at("icon"), VlCm_GetRmtSvcIconIDEx(handle, service_class, FALSE));
        EXPECT_EQ(list[i].at("shown"), VlCm_ShouldShowThisRemoteServiceEx(handle) != FALSE);
        EXPECT_EQ(list[i].at("installed"), VlCm_IsInstalledService(device, handle) != FALSE);
    }
}

void expect_shortcut(const Json& facts) {
    const uint32_t handle = facts.at("handle");
    uint16_t service_class = 0;
    EXPECT_EQ(VlCm_GetServiceClass(handle, VLCM_HANDLE_SHORTCUT, &service_class), 0u);
    EXPECT_EQ(class_in(facts), service_class);
    EXPECT_EQ(facts.at("name"), name(VlCm_GetRmtSvcDisplayNameW, handle));
    EXPECT_EQ(facts.at("status"), status(VlCm_GetRmtSvcStatusStringW, handle));
    EXPECT_EQ(facts.at("icon"), VlCm_GetRmtSvcIconIDEx(handle, service_class, TRUE));
    EXPECT_EQ(facts.at("shown"), VlCm_ShouldShowThisRemoteService(service_class) != FALSE);
    EXPECT_EQ(facts.at("default"), VlCm_IsDefaultShortcut(handle) != FALSE);
    EXPECT_EQ(facts.at("enabled"), VlCm_IsShcEnabled(handle) != FALSE);
    EXPECT_EQ(facts.at("connected"), VlCm_IsShortcutConnected(handle) != FALSE);
}

void expect_shortcuts(const Json& list, BtHandle device) {
    EXPECT_EQ(list.size(), Btsdk_GetShortCutByDeviceHandle(device, 0, nullptr, 0));
    for (const Json& each : list) expect_shortcut(each);
}

const Json* row_of(const Json& rows, const char* member, const Json& value) {
    for (const Json& row : rows) {
        if (row.at(member) == value) return &row;
    }
    return nullptr;
}

// A COM port's shortcuts, by the library.
std::vector<BtHandle> shortcuts_of_port(int port) {
    BtHandle handles[16] = {};
    uint32_t count = 16;
    if (!VlCm_GetShortcutsByComPort(handles, port, &count)) count = 0;
    return {handles, handles + count};
}

}  // namespace

TEST_F(Neighbourhood, IsShownWithEverythingInIt) {
    const Json facts = ask({"show", "--all"});
    wchar_t adapter[kTextSize] = L"";
    EXPECT_TRUE(VlCm_GetLocDevStatusStringW(adapter, kTextSize));
    EXPECT_EQ(facts.at("adapter").at("status"), utf8(adapter));
    EXPECT_EQ(facts.at("adapter").at("icon"), VlCm_GetLocDevIconIDEx());
    EXPECT_EQ(facts.at("adapter").at("kind"), "desktop computer");
    ASSERT_EQ(facts.at("services").size(), local_servers().size());
    for (const Json& server : facts.at("services")) expect_server(server);
    const std::vector<Device> devices = all_devices();
    ASSERT_EQ(facts.at("devices").size(), devices.size());
    for (size_t i = 0; i < devices.size(); ++i) {
        const Json& device = facts.at("devices")[i];
        expect_device(device, devices[i]);
        expect_services(device.at("services"), devices[i].handle);
        expect_shortcuts(device.at("shortcuts"), devices[i].handle);
    }
}

TEST_F(Neighbourhood, LeavesOutWhatTheUserInterfaceHides) {
    settings().common("FilteredDevice", "BTSDK_DEVCLS_PHONE", "1");
    settings().common("UnSupportedProfile", "BTSDK_CLS_OBEX_OBJ_PUSH", "1");
    size_t devices = 0;
    for (const Device& device : all_devices()) {
        devices += VlCm_ShouldFilterCurDevCls(device.property.deviceClass) ? 0 : 1;
    }
    size_t servers = 0;
    for (const Service& server : local_servers()) {
        servers += VlCm_ShouldShowThisLocalServerEx(server.handle) ? 1 : 0;
    }
    const Json facts = ask({"show"});
    EXPECT_EQ(facts.at("devices").size(), devices);
    EXPECT_EQ(facts.at("services").size(), servers);
    EXPECT_LT(servers, local_servers().size());
    for (const Json& device : facts.at("devices")) {
        for (const Json& service : device.at("services")) EXPECT_EQ(service.at("shown"), true);
        for (const Json& shortcut : device.at("shortcuts")) EXPECT_EQ(shortcut.at("shown"), true);
    }
}

TEST_F(Neighbourhood, IsToldForPeopleInUtf8) {
    const Outcome told = run({"show"});
    EXPECT_EQ(told.exit_code, kYes);
    const char* const kParts[] = {"A4:C1:38:2D:5E:01", "Lena's phone", "B\xC3\xBCro Headset"};
    for (const char* part : kParts) EXPECT_NE(told.output.find(part), std::string::npos) << part;
    EXPECT_EQ(told.output.find("(hidden)"), std::string::npos);
    EXPECT_NE(run({"show", "--all"}).output.find("(hidden)"), std::string::npos);
}

TEST_F(Neighbourhood, FindsADeviceByAddressInAnyCaseAndByName) {
    const Device first = all_devices().front();
    for (const char* given : {"A4:C1:38:2D:5E:01", "a4:c1:38:2d:5e:01", "Lena's phone"}) {
        const Json facts = ask({"device", given});
        expect_device(facts, first);
        expect_services(facts.at("services"), first.handle);
        expect_shortcuts(facts.at("shortcuts"), first.handle);
        EXPECT_EQ(facts.at("type"), VlCm_GetRemoteDeviceTypeByDevHandle(first.handle));
        EXPECT_EQ(facts.at("connections"), VlCm_GetConnectionNumByDevHdl(first.handle));
        EXPECT_EQ(facts.at("mobile"), true);
        EXPECT_EQ(facts.at("default"), VlCm_IsDefaultDevice(first.handle) != FALSE);
        EXPECT_EQ(facts.at("added"), VlCm_IsAddedDevice(first.handle) != FALSE);
        EXPECT_EQ(facts.at("offersDefaultConnection"), VlCm_ShouldShowDefaultConn(first.handle) != FALSE);
    }
}

TEST_F(Neighbourhood, NamesTheKnownDevicesWhenOneIsUnknown) {
    for (const char* command : {"device", "connectable"}) {
        const Outcome answer = run({command, "nobody"});
        EXPECT_EQ(answer.exit_code, kNo);
        EXPECT_NE(answer.output.find("no device \"nobody\""), std::string::npos) << answer.output;
        EXPECT_NE(answer.output.find("A4:C1:38:2D:5E:01  Lena's phone"), std::string::npos);
    }
}

TEST_F(Neighbourhood, TellsWhoTakesAComPort) {
    settings().common("VComm enum info", "SerialNum1", "51");
    settings().common("VComm enum info", "SerialNum2", "401");
    const Json facts = ask({"ports"});
    EXPECT_EQ(facts.at("free"), VlCm_GetPluginAndNotUsedComport());
    EXPECT_EQ(facts.at("free"), 40);
    for (int port = 1; port <= 256; ++port) {
        const Json* row = row_of(facts.at("used"), "port", port);
        ASSERT_EQ(row != nullptr, VlCm_IsComportBeenUsed(port) != FALSE) << port;
        if (!row) continue;
        std::vector<BtHandle> named;
        for (const Json& shortcut : row->at("shortcuts")) named.push_back(shortcut.at("handle"));
        EXPECT_EQ(named, shortcuts_of_port(port)) << port;
        for (const Json& shortcut : row->at("shortcuts")) expect_shortcut(shortcut);
        for (const Json& server : row->at("servers")) {
            expect_server(server);
            EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(server.at("handle")), port);
            EXPECT_EQ(server.at("dynamic"), VlCm_IsDynamicLocSppSvc(server.at("handle")) != FALSE);
        }
    }
    EXPECT_EQ(row_of(facts.at("used"), "port", 5)->at("servers").size(), 1u);
    EXPECT_NE(run({"ports"}).output.find("next free port: COM40"), std::string::npos);
}

TEST_F(Neighbourhood, NamesTheModemOfAComPortThatIsTaken) {
    const char key[] =
        "SYSTEM\\CurrentControlSet\\Control\\Class\\{4D36E96D-E325-11CE-BFC1-08002BE10318}\\0001";
    support::RegistryScope registry;
    registry.set(HKEY_LOCAL_MACHINE, key, "AttachedTo", "COM5");
    registry.set(HKEY_LOCAL_MACHINE, key, "FriendlyName", "Ger\xE4tetreiber");
    const Json used = ask({"ports"}, kNo).at("used");
    for (const Json& row : used) {
        const Json expected = row.at("port") == 5 ? Json("Ger\xC3\xA4tetreiber") : Json(nullptr);
        EXPECT_EQ(row.at("modem"), expected) << row.at("port");
    }
    ASSERT_NE(row_of(used, "port", 5), nullptr);
    EXPECT_NE(run({"ports"}).output.find("  modem     Ger"), std::string::npos);
}

TEST_F(Neighbourhood, AnswersNoWhenNoPortIsFree) {
    EXPECT_EQ(ask({"ports"}, kNo).at("free"), nullptr);
    EXPECT_NE(run({"ports"}).output.find("no free port"), std::string::npos);
}

TEST_F(Neighbourhood, TellsWhatADeviceIsConnectedWith) {
    for (const Device& device : all_devices()) {
        const uint32_t audio = VlCm_GetCurrHFHSShc(device.handle);
        const uint32_t network = VlCm_GetCurrPanShc(device.handle);
        const DWORD expected = audio != 0 || network != 0 ? kYes : kNo;
        const Json facts = ask({"connectable", address_text(device.property.address)}, expected);
        EXPECT_EQ(facts.at("audio").is_null() ? 0 : facts.at("audio").at("handle").get<uint32_t>(), audio);
        EXPECT_EQ(facts.at("network").is_null() ? 0 : facts.at("network").at("handle").get<uint32_t>(),
                  network);
        EXPECT_EQ(facts.at("networkConnected"), VlCm_IsConnectingPANOnThisDevice(device.handle) != 0);
        EXPECT_EQ(facts.at("a2dp").at("forbidden"), VlCm_IsA2DPConnectionForbid(device.handle) != FALSE);
    }
}

TEST_F(Neighbourhood, TellsTheRuleThatForbidsA2dp) {
    constexpr const char* kSpeaker = "88:C6:26:11:95:09";
    constexpr const char* kHeadset = "5C:F3:70:8B:21:02";
    const struct {
        const char* label;
        const char* several;
        const char* both;
        const char* device;
        Json rule;
    } rows[] = {
        {"an audio link is up", "1", "0", kSpeaker, "an audio link is up"},
        {"another device comes first", "0", "0", kSpeaker, "another audio device is connected"},
        {"another device alone", "0", "1", kSpeaker, "another audio device is connected"},
        {"the connected device itself", "0", "1", kHeadset, nullptr},
        {"the connected device's own link", "0", "0", kHeadset, "an audio link is up"},
        {"both settings allow", "1", "1", kSpeaker, nullptr},
    };
    support::for_each_row(rows, [&](const auto& row) {
        settings().common("VlConfig", "IsSupportMultiAudioConnected", row.several);
        settings().common("VLConfig", "IsSupportBothA2dpSinkSource", row.both);
        const BtHandle device = find_device(row.device);
        ASSERT_NE(device, 0u);
        const bool connectable = VlCm_GetCurrHFHSShc(device) != 0 || VlCm_GetCurrPanShc(device) != 0;
        const Json facts = ask({"connectable", row.device}, connectable ? kYes : kNo);
        EXPECT_EQ(facts.at("a2dp").at("rule"), row.rule);
        EXPECT_EQ(facts.at("a2dp").at("forbidden"), !row.rule.is_null());
    });
}

TEST_F(CommandLine, ListsTheClassesThatTheLibraryKnows) {
    const Json facts = ask({"catalogue"});
    EXPECT_EQ(facts.at("serviceCount"), VlCm_GetSvcIconInfoCount());
    EXPECT_EQ(facts.at("devices").size(), VlCm_GetDeviceIconInfoCount());
    EXPECT_EQ(facts.at("services").size(), 45u);  // three rows have nothing that tells them from unknown ones
    for (const Json& row : facts.at("services")) {
        EXPECT_EQ(row.at("icon"), VlCm_GetSvcIconID(class_in(row)));
        EXPECT_EQ(row.at("index"), VlCm_GetSvcIconIndex(class_in(row)));
        EXPECT_EQ(row.at("localDescription").is_null(), VlCm_GetLocSvcDesStrID(class_in(row)) == 0);
        EXPECT_EQ(row.at("remoteDescription").is_null(), VlCm_GetRmtSvcDesStrID(class_in(row)) == 0);
        EXPECT_EQ(row.at("shownHere"), VlCm_ShouldShowThisLocalServer(class_in(row)) != FALSE);
        EXPECT_EQ(row.at("shownThere"), VlCm_ShouldShowThisRemoteService(class_in(row)) != FALSE);
    }
    for (const Json& row : facts.at("devices")) {
        EXPECT_EQ(row.at("icon"), VlCm_GetDeviceIconID(class_in(row)));
        EXPECT_EQ(row.at("index"), VlCm_GetDeviceIconIndex(class_in(row)));
    }
    for (const Json& row : facts.at("lowEnergyServices")) {
        EXPECT_EQ(row.at("icon"), VlCm_GetLESvcIconID(class_in(row)));
    }
    ASSERT_NE(row_of(facts.at("services"), "class", "0x1105"), nullptr);
    EXPECT_EQ(row_of(facts.at("services"), "class", "0x1105")->at("name"), "Object Push");
    EXPECT_EQ(row_of(facts.at("devices"), "class", "0x00020c")->at("name"), "Smartphone");
}

TEST_F(CommandLine, TellsEveryPath) {
    const struct {
        const char* label;
        void (*query)(char*, unsigned int);
    } rows[] = {
        {"installation folder", VlCm_GetInstallDir},
        {"COM service folder", VlCm_GetCOMServiceDir},
        {"common settings", VlCm_GetCommonSettingFilePath},
        {"personal settings", VlCm_GetPersonalSettingFilePath},
        {"remote devices", VlCm_GetRmoteDeviniPath},
        {"shortcuts", VlCm_GetShortCutPath},
        {"provider data", VlCm_GetQVNProviderPath},
        {"mobile data", VlCm_GetQVNMobilePath},
    };
    settings().common("General", "COMServiceDir", "C:\\com");
    const Json paths = ask({"settings"}).at("paths");
    EXPECT_EQ(paths.size(), std::size(rows));
    support::for_each_row(rows, [&](const auto& row) {
        char path[VLCM_PATH_SIZE] = "";
        row.query(path, sizeof path);
        const Json* told = row_of(paths, "name", row.label);
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(told->at("path"), utf8(wide_from_ansi(path)));
    });
}

TEST_F(CommandLine, TellsEverySwitchAndItsKey) {
    const struct {
        const char* label;
        int (*query)();
        const char* section;
        const char* key;
        const char* value;
    } rows[] = {
        {"edition", VlCm_GetCustomVersion, "General", "VlCustomVersion", "7"},
        {"UART devices", VlCm_SupportUartDeviceFlag, "VLConfig", "NeedSupportUARTDevice", "5"},
        {"dialer window", VlCm_ShouldShowDialerUI, "vlconfig", "IsSupportDialerFunction", "1"},
        {"basic printing", VlCm_IsSupportBPPFunction, "VlConfig", "IsSupportBPPFunction", "1"},
        {"dial-up through a phone", VlCm_IsMobileDUNActive, "VLConfig", "NeedSupportMobileDUNFunc", "1"},
        {"extended information", VlCm_IsSupportADFunction, "IsSupportADFunction", "Flag", "0"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        const Json before = ask({"settings"});
        const Json* told = row_of(before.at("switches"), "name", row.label);
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(told->at("value"), row.query());
        EXPECT_EQ(told->at("keys")[0].at("text"), nullptr);
        const bool personal = told->at("keys")[0].at("file") == "personal settings";
        settings().set(personal ? support::SettingsFile::kPersonal : support::SettingsFile::kCommon,
                       row.section, row.key, row.value);
        const Json after = ask({"settings"});
        told = row_of(after.at("switches"), "name", row.label);
        EXPECT_EQ(told->at("value"), row.query());
        EXPECT_EQ(told->at("keys")[0].at("text"), row.value);
        EXPECT_EQ(told->at("from"), std::string("[") + row.section + "] " + row.key);
    });
}

TEST_F(CommandLine, SendsAFileThroughTheTrayAgent) {
    const std::string file = utf8(make_file(L"a b.txt", "four words of text"));
    const AgentProcess agent;
    const Json facts = ask({"send", kPhoneName, file, "--via", "ftp"});
    EXPECT_EQ(facts.at("via"), "file transfer");
    ASSERT_EQ(facts.at("files").size(), 1u);
    const Json expected = {{"file", file}, {"status", 0}, {"meaning", "handed over"}};
    EXPECT_EQ(facts.at("files")[0], expected);
    EXPECT_TRUE(logs(L"VlTray", "file transfer: took 1 record"));
    close_programs();
    EXPECT_EQ(content_of(inbox() + L"\\a b.txt"), "four words of text");
}

TEST_F(CommandLine, StartsTheAgentAndSendsSeveralFilesOneByOne) {
    const std::string first = utf8(make_file(L"a.txt", "a"));
    const std::string second = utf8(make_file(L"b.txt", "b"));
    const Outcome sent = run({"send", "00:11:22:33:44:55", first, second});
    EXPECT_EQ(sent.exit_code, kYes) << sent.output;
    EXPECT_TRUE(logs(L"VlTray", "object push: took 1 record", 2));
    close_programs();
    EXPECT_EQ(names_in(inbox()), (std::vector<std::wstring>{L"a.txt", L"b.txt"}));
}

TEST_F(CommandLine, SendsNothingWhenAFileIsMissing) {
    const std::string file = utf8(make_file(L"a.txt", "a"));
    const Outcome sent = run({"send", kPhoneName, file, file + ".gone"});
    EXPECT_EQ(sent.exit_code, kNo);
    EXPECT_NE(sent.output.find("no file"), std::string::npos) << sent.output;
    EXPECT_TRUE(names_in(inbox()).empty());
    EXPECT_EQ(process_of_window(kTrayTitle), 0u);
}

TEST_F(CommandLine, SaysWhenTheAgentCannotBeStarted) {
    settings().common("General", "InstallDir", "C:\\elsewhere");
    const Outcome sent = run({"send", kPhoneName, utf8(make_file(L"a.txt", "a"))});
    EXPECT_EQ(sent.exit_code, kNo);
    EXPECT_NE(sent.output.find("the tray agent did not start"), std::string::npos) << sent.output;
}

TEST_F(CommandLine, RefusesASendWhileTheStackIsNotReady) {
    const AgentProcess agent;
    ASSERT_EQ(VlSim_Patch(R"({"ready": false})"), 0u);
    const Json facts = ask({"send", kPhoneName, utf8(make_file(L"a.txt", "a"))}, kNo);
    EXPECT_EQ(facts.at("files")[0].at("status"), VLCM_STACK_NOT_READY);
    EXPECT_EQ(facts.at("files")[0].at("meaning"), "Bluetooth is not ready");
}

TEST_F(CommandLine, RefusesWrongUsage) {
    const struct {
        const char* label;
        std::vector<std::string> arguments;
    } rows[] = {
        {"no sub-command", {}},
        {"unknown sub-command", {"frobnicate"}},
        {"unknown option", {"show", "--loud"}},
        {"device without address", {"device"}},
        {"connectable without address", {"connectable"}},
        {"send without file", {"send", kPhoneName}},
        {"unknown way", {"send", kPhoneName, "a.txt", "--via", "pigeon"}},
        {"too many words", {"ports", "5"}},
    };
    support::for_each_row(rows, [&](const auto& row) {
        const Outcome refused = run(row.arguments);
        EXPECT_EQ(refused.exit_code, kUsage);
        EXPECT_NE(refused.output.find("--help"), std::string::npos) << refused.output;
    });
}

TEST_F(CommandLine, HelpsWithExamplesAndExitCodes) {
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.exit_code, kYes);
    for (const char* part : {"Examples:", "Exit codes:", "show", "device", "ports", "catalogue",
                             "connectable", "send", "settings"}) {
        EXPECT_NE(help.output.find(part), std::string::npos) << part;
    }
}
