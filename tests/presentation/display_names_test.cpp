// The names of services and devices.
#include "vlcm/display_names.h"

#include "language_library_use.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "twin.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <string.h>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using support::CallPatch;
using support::for_each_row;

// The default neighbourhood: serial server A at port 5, a server without a port; the laptop's serial
// port shortcut at port 9, the phone's dial-up shortcut at port 7, its file transfer.
constexpr uint32_t kSerialServer = 301, kPushServer = 303, kSerialShortcut = 207, kDialUpShortcut = 203,
                   kTransferShortcut = 202, kUnknownHandle = 999;
constexpr UINT kSerialName = 1154, kDialUpName = 1156, kPushName = 1180, kTransferName = 1181,
               kUnknownName = 1153, kPortFormat = 5022;
constexpr uint32_t kEnough = 300;

template <typename Char>
class ServiceName : public support::SuiteTest {
protected:
    using String = std::basic_string<Char>;

    ServiceName() { support::clear_sdk_log(); }

    static auto local(uint32_t server) {
        return [=](Char* buffer, uint32_t size) {
            return form_of<Char>(VlCm_GetLocSvcDisplayName, VlCm_GetLocSvcDisplayNameW)(server, buffer, size);
        };
    }
    static auto remote(uint32_t shortcut) {
        return [=](Char* buffer, uint32_t size) {
            return form_of<Char>(VlCm_GetRmtSvcDisplayName, VlCm_GetRmtSvcDisplayNameW)(shortcut, buffer,
                                                                                        size);
        };
    }
    template <typename Call>
    static Outcome<Char> outcome(Call call, uint32_t size = kEnough) {
        return outcome_of<Char>(call, size, size);
    }
    // The name that a call is expected to give.
    template <typename Call>
    static String name(Call call) {
        const auto found = outcome(call);
        EXPECT_EQ(found.result, 0u);
        EXPECT_TRUE(found.rest_untouched);
        return found.text;
    }
    // The class name, and the port as the library's format shows it.
    static String with_port(UINT class_name, int port) {
        char shown[40];
        snprintf(shown, sizeof shown, " (COM%d)", port);
        return resource_text<Char>(class_name) + ascii<Char>(shown);
    }
    // The serial server's port is that of the first fixed service, so that it was not made on demand.
    void fix_server() { settings().common("LocalSPPService0", "VirtualDevice", "COM5"); }
    void dynamic_section(int index, const char* port, const std::string& name) {
        const std::string section = "LocalSPPService" + std::to_string(index);
        settings().common(section.c_str(), "VirtualDevice", port);
        if (!name.empty()) settings().common(section.c_str(), "Name", name);
    }
};
TYPED_TEST_SUITE(ServiceName, TwinForms, TwinFormName);

// What was read from the sections of serial services once their number was known: `3 Name`.
Lines section_reads() {
    Lines reads;
    bool counted = false;
    for (const std::string& call : support::sdk_calls()) {
        counted = counted || call.find("\"SPPSvcNum\"") != std::string::npos;
        const std::string opening = "Btsdk_GetPrivateProfileString(\"LocalSPPService";
        if (!counted || call.compare(0, opening.size(), opening) != 0) continue;
        std::string read = call.substr(opening.size(), call.find("\", \"\"") - opening.size());
        read.replace(read.find("\", \""), 4, " ");
        reads.push_back(read);
    }
    return reads;
}

TYPED_TEST(ServiceName, NeedsAHandleAndABuffer) {
    const LanguageLibraryUse library;
    for (const auto& result : {this->outcome(this->local(0)), this->outcome(this->remote(0))}) {
        EXPECT_EQ(result.result, 772u);
        EXPECT_TRUE(result.untouched);
    }
    EXPECT_EQ(this->local(kPushServer)(nullptr, 100), 772u);
    EXPECT_EQ(this->remote(kTransferShortcut)(nullptr, 100), 772u);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(library.tries(), 0u);
}

TYPED_TEST(ServiceName, HandsOnTheStacksCodeBeforeAnythingIsLoaded) {
    const LanguageLibraryUse library;
    for (const uint32_t code : {1u, 770u, 0x0401u, 0xFFFFFFFFu}) {
        VlSim_Fail("Btsdk_GetServerAttributes", 1, code);
        const auto local = this->outcome(this->local(kPushServer));
        EXPECT_EQ(local.result, code);
        EXPECT_TRUE(local.untouched);
        VlSim_Fail("Btsdk_GetShortCutProperty", 1, code);
        const auto remote = this->outcome(this->remote(kTransferShortcut));
        EXPECT_EQ(remote.result, code);
        EXPECT_TRUE(remote.untouched);
    }
    EXPECT_EQ(this->outcome(this->local(kUnknownHandle)).result, 0x0401u);
    EXPECT_EQ(this->outcome(this->remote(kUnknownHandle)).result, 0x0401u);
    EXPECT_EQ(library.tries(), 0u);
}

TYPED_TEST(ServiceName, NeedsTheLanguageLibraryOnceTheServiceIsRead) {
    LanguageLibraryUse library;
    library.fail();
    for (const auto& result :
         {this->outcome(this->local(kSerialServer)), this->outcome(this->remote(kSerialShortcut))}) {
        EXPECT_EQ(result.result, 770u);
        EXPECT_TRUE(result.untouched);
    }
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_GetServerAttributes", "Btsdk_GetShortCutProperty"}));
    EXPECT_EQ(library.tries(), 2u);
    EXPECT_EQ(library.frees(), 0u);
    EXPECT_TRUE(support::trace_log().empty());
}

TYPED_TEST(ServiceName, IsTheNameOfTheClass) {
    struct Row {
        const char* label;
        UINT service_class, name;
    };
    const Row rows[] = {{"push", 0x1105, kPushName},         {"dial-up", 0x1103, kDialUpName},
                        {"transfer", 0x1106, kTransferName}, {"unknown", 0x1234, kUnknownName},
                        {"none", 0, kUnknownName},           {"highest", 0xFFFF, kUnknownName}};
    for_each_row(rows, [this](const Row& row) {
        VlSim_Set("/servers/2/class", std::to_string(row.service_class).c_str());
        VlSim_Set("/shortcuts/1/class", std::to_string(row.service_class).c_str());
        support::clear_sdk_log();
        EXPECT_EQ(this->name(this->local(kPushServer)), resource_text<TypeParam>(row.name));
        EXPECT_EQ(this->name(this->remote(kTransferShortcut)), resource_text<TypeParam>(row.name));
        EXPECT_EQ(support::sdk_operations(),
                  (Lines{"Btsdk_GetServerAttributes", "Btsdk_GetShortCutProperty"}));
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TYPED_TEST(ServiceName, OfASerialPortShowsItsComPort) {
    this->fix_server();
    EXPECT_EQ(this->name(this->local(kSerialServer)), this->with_port(kSerialName, 5));
    EXPECT_EQ(this->name(this->remote(kSerialShortcut)), this->with_port(kSerialName, 9));
    EXPECT_TRUE(section_reads().empty());
    EXPECT_EQ(this->name(this->remote(kDialUpShortcut)), resource_text<TypeParam>(kDialUpName))
        << "port 7 of a dial-up shortcut is not shown";
    EXPECT_EQ(support::trace_scopes(),
              (Lines{"512 VlCm_IsDynamicLocSppSvc", "512 VlCm_GetComPortByShortcut"}));
}

TYPED_TEST(ServiceName, TakesThePortsFormFromTheLanguageLibrary) {
    this->fix_server();
    StringLoads<TypeParam> strings;
    strings.set(kSerialName, ascii<TypeParam>("Serie"));
    strings.set(kPortFormat, ascii<TypeParam>("<port %d>"));
    EXPECT_EQ(this->name(this->local(kSerialServer)), ascii<TypeParam>("Serie (<port 5>)"));
    EXPECT_EQ(this->name(this->remote(kSerialShortcut)), ascii<TypeParam>("Serie (<port 9>)"));
    const std::vector<std::pair<UINT, int>> each = {
        {kSerialName, 100}, {kPortFormat, 20}, {kSerialName, 100}, {kPortFormat, 20}};
    EXPECT_EQ(strings.loads(), each);
}

TYPED_TEST(ServiceName, CutsTextsToItsWorkBuffers) {
    this->fix_server();
    StringLoads<TypeParam> strings;
    strings.set(kPortFormat, ascii<TypeParam>("0123456789012345678901234"));
    EXPECT_EQ(this->name(this->remote(kSerialShortcut)),
              resource_text<TypeParam>(kSerialName) + ascii<TypeParam>(" (0123456789012345678)"));
    for (const size_t length : {94u, 97u, 98u, 99u, 100u, 150u}) {
        const auto longest = ascii<TypeParam>(std::string(length, 'n'));
        strings.set(kSerialName, longest);
        const auto expected =
            (longest.substr(0, 99) + ascii<TypeParam>(" (0123456789012345678)")).substr(0, 99);
        EXPECT_EQ(this->name(this->local(kSerialServer)), expected) << length;
        EXPECT_EQ(this->name(this->remote(kSerialShortcut)), expected) << length;
    }
}

TYPED_TEST(ServiceName, GoesOnWithoutAMissingText) {
    this->fix_server();
    StringLoads<TypeParam> strings;
    strings.remove(kPortFormat);
    EXPECT_EQ(this->name(this->local(kSerialServer)),
              resource_text<TypeParam>(kSerialName) + ascii<TypeParam>(" ()"));
    strings.remove(kSerialName);
    EXPECT_EQ(this->name(this->remote(kSerialShortcut)), ascii<TypeParam>(" ()"));
    strings.remove(kPushName);
    const auto empty = this->outcome(this->local(kPushServer), 1);
    EXPECT_EQ(empty.result, 0u);
    EXPECT_FALSE(empty.untouched) << "the terminator";
    EXPECT_TRUE(empty.text.empty());
}

TYPED_TEST(ServiceName, ShowsNoPortThatIsNotGreaterThan0) {
    this->fix_server();
    const auto plain = resource_text<TypeParam>(kSerialName);
    VlSim_Set("/servers/0/port", "0");
    EXPECT_EQ(this->name(this->local(kSerialServer)), plain);
    VlSim_Fail("Btsdk_GetServerAttributes", 2, 1);
    EXPECT_EQ(this->name(this->local(kSerialServer)), plain) << "port -1";
    VlSim_Set("/shortcuts/6/port", "0");
    EXPECT_EQ(this->name(this->remote(kSerialShortcut)), plain);
    VlSim_Fail("Btsdk_GetShortCutProperty", 2, 1);
    EXPECT_EQ(this->name(this->remote(kSerialShortcut)), plain) << "port -1";
    EXPECT_TRUE(section_reads().empty());
    EXPECT_EQ(support::trace_scopes(),
              (Lines{"512 VlCm_GetComPortByShortcut", "512 VlCm_GetComPortByShortcut"}))
        << "nobody asks whether a server without a port was made on demand";
}

TYPED_TEST(ServiceName, OfAServiceMadeOnDemandIsInTheSettings) {
    struct Row {
        const char* label;
        const char* count;  // null: no entry
        Lines reads;
        const char* name;  // null: the class name alone
    };
    const Row rows[] = {
        {"no count", nullptr, {}, nullptr},
        {"two", "2", {}, nullptr},
        {"three", "3", {"2 VirtualDevice"}, nullptr},
        {"four", "4", {"2 VirtualDevice", "3 VirtualDevice", "3 Name"}, "Third"},
        {"five: the first match wins", "5", {"2 VirtualDevice", "3 VirtualDevice", "3 Name"}, "Third"},
        {"none", "0", {}, nullptr},
        {"negative", "-1", {}, nullptr},
        {"lowest", "-2147483648", {}, nullptr},
    };
    this->dynamic_section(2, "COM50", "Second");
    this->dynamic_section(3, "cOm5", "Third");
    this->dynamic_section(4, "COM5", "Fourth");
    for_each_row(rows, [this](const Row& row) {
        if (row.count) this->settings().common("LocalBluetooth", "SPPSvcNum", row.count);
        support::clear_sdk_log();
        EXPECT_EQ(this->name(this->local(kSerialServer)),
                  row.name ? ascii<TypeParam>(row.name) : resource_text<TypeParam>(kSerialName));
        EXPECT_EQ(section_reads(), row.reads);
        EXPECT_TRUE(support::has_line(support::sdk_operations(), "Btsdk_GetPrivateProfileInt"));
    });
}

TYPED_TEST(ServiceName, OfAServiceMadeOnDemandIsNeverThatOfAFixedOne) {
    this->settings().common("LocalBluetooth", "SPPSvcNum", "3");
    this->dynamic_section(0, "com5", "Zero");  // in small letters: no fixed service's port
    this->dynamic_section(1, "com5", "One");
    EXPECT_EQ(this->name(this->local(kSerialServer)), resource_text<TypeParam>(kSerialName));
    EXPECT_EQ(section_reads(), Lines{"2 VirtualDevice"});
}

TYPED_TEST(ServiceName, OfAServiceMadeOnDemandWithoutANameIsEmpty) {
    this->settings().common("LocalBluetooth", "SPPSvcNum", "5");
    this->dynamic_section(2, "COM5", "");
    this->dynamic_section(3, "COM5", "Next");
    const auto found = this->outcome(this->local(kSerialServer), 1);
    EXPECT_EQ(found.result, 0u);
    EXPECT_FALSE(found.untouched);
    EXPECT_EQ(section_reads(), (Lines{"2 VirtualDevice", "2 Name"}));
}

TYPED_TEST(ServiceName, OfAServiceMadeOnDemandIsCutTo99Bytes) {
    this->settings().common("LocalBluetooth", "SPPSvcNum", "3");
    for (const size_t length : {98u, 99u, 100u, 200u}) {
        this->dynamic_section(2, "COM5", std::string(length, 'd'));
        EXPECT_EQ(this->name(this->local(kSerialServer)).size(), std::min<size_t>(length, 99));
    }
    bool limits = true;
    for (const std::string& call : support::sdk_calls("Btsdk_GetPrivateProfileString")) {
        const bool of_name = call.find("\"Name\"") != std::string::npos;
        limits = limits && call.find(of_name ? ", out, 100, " : ", out, 20, ") != std::string::npos;
    }
    EXPECT_TRUE(limits) << "port names 20, names 100";
}

TYPED_TEST(ServiceName, OfAServiceMadeOnDemandIsInTheAnsiCodePage) {
    ASSERT_NE(GetACP(), static_cast<UINT>(CP_UTF8));
    this->settings().common("LocalBluetooth", "SPPSvcNum", "3");
    const std::string name =
        "Stra\xDF"
        "e n\xE9"
        "e";
    this->dynamic_section(2, "COM5", name);
    wchar_t wide[100] = {};
    MultiByteToWideChar(CP_ACP, 0, name.c_str(), -1, wide, 100);
    EXPECT_EQ(this->name(this->local(kSerialServer)), (form_of<TypeParam>(name, std::wstring(wide))));
}

TYPED_TEST(ServiceName, ASettingThatCannotBeReadIsEmpty) {
    this->settings().common("LocalBluetooth", "SPPSvcNum", "4");
    this->dynamic_section(2, "COM5", "Second");
    VlSim_Fail("Btsdk_GetPrivateProfileString", 3, 0);  // behind those of the two fixed services
    EXPECT_EQ(this->name(this->local(kSerialServer)), resource_text<TypeParam>(kSerialName));
    VlSim_Fail("Btsdk_GetPrivateProfileString", 4, 0);
    EXPECT_TRUE(this->name(this->local(kSerialServer)).empty());
}

TYPED_TEST(ServiceName, FitsWithItsTerminatorOrLeavesTheBuffer) {
    this->fix_server();
    const auto length = static_cast<uint32_t>(this->with_port(kSerialName, 5).size());
    for (const bool is_local : {true, false}) {
        const auto ask = [&](TypeParam* buffer, uint32_t size) {
            return is_local ? this->local(kSerialServer)(buffer, size)
                            : this->remote(kSerialShortcut)(buffer, size);
        };
        for (uint32_t size = 1; size <= length; ++size) {
            const auto refused = this->outcome(ask, size);
            EXPECT_EQ(refused.result, 775u) << size;
            EXPECT_TRUE(refused.untouched) << size;
        }
        for (const uint32_t size : {length + 1, length + 2}) {
            const auto fits = this->outcome(ask, size);
            EXPECT_EQ(fits.result, 0u);
            EXPECT_EQ(fits.text.size(), length);
        }
        // Sizes are unsigned; 0 wraps to the largest.
        for (const uint32_t size : {0u, 0x80000000u, 0xFFFFFFFFu}) {
            const auto fits = outcome_of<TypeParam>(ask, size, length + 1);
            EXPECT_EQ(fits.result, 0u) << size;
            EXPECT_EQ(fits.text.size(), length) << size;
        }
    }
}

TYPED_TEST(ServiceName, FreesTheLanguageLibraryOnEveryPath) {
    const LanguageLibraryUse library;
    size_t calls = 0;
    const auto expect_freed = [&] {
        ++calls;
        EXPECT_EQ(library.loads(), calls);
        EXPECT_EQ(library.frees(), calls);
    };
    for (const uint32_t size : {1u, kEnough}) {
        for (const uint32_t server : {kSerialServer, kPushServer}) {
            this->outcome(this->local(server), size);
            expect_freed();
        }
        for (const uint32_t shortcut : {kSerialShortcut, kTransferShortcut}) {
            this->outcome(this->remote(shortcut), size);
            expect_freed();
        }
    }
}

TYPED_TEST(ServiceName, GoesOnWhenThereIsNoMemoryForThePort) {
    this->blocks().fail_from(1);
    EXPECT_EQ(this->name(this->remote(kSerialShortcut)), resource_text<TypeParam>(kSerialName));
    this->blocks().fail_nth(0);
}

class DeviceName : public support::SuiteTest {
protected:
    static constexpr uint8_t kPhone[6] = {0x01, 0x5E, 0x2D, 0x38, 0xC1, 0xA4};
    static constexpr uint8_t kStranger[6] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66};

    static Outcome<char> ask(const uint8_t* address, uint32_t size = kEnough) {
        support::clear_sdk_log();
        return outcome_of<char>(
            [=](char* buffer, uint32_t room) { return VlCm_GetRmtDevDisplayName(address, buffer, room); },
            size, size != 0 ? size : kEnough);
    }
    static std::string name(const uint8_t* address = kPhone) {
        const auto found = ask(address);
        EXPECT_EQ(found.result, 0u);
        return found.text;
    }
    static void call_it(const std::string& name) {
        VlSim_Set("/devices/0/name", ("\"" + name + "\"").c_str());
    }
};

TEST_F(DeviceName, NeedsAnAddressAndABuffer) {
    EXPECT_EQ(ask(nullptr).result, 772u);
    EXPECT_TRUE(ask(nullptr).untouched);
    EXPECT_EQ(VlCm_GetRmtDevDisplayName(kPhone, nullptr, 100), 772u);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(DeviceName, IsTheStacksNameInUtf8) {
    const LanguageLibraryUse library;
    EXPECT_EQ(name(), "Lena's phone");
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_GetRemoteDeviceHandle", "Btsdk_GetRemoteDeviceName"}));
    call_it("\xE3\x83\x97\xE3\x83\xAA B\xC3\xBCro");
    EXPECT_EQ(name(), "\xE3\x83\x97\xE3\x83\xAA B\xC3\xBCro");
    EXPECT_EQ(library.tries(), 0u);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(DeviceName, IsTheAddressFromTheLastByteOnWhenThereIsNone) {
    EXPECT_EQ(name(kStranger), "66:55:44:33:22:11");
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetRemoteDeviceHandle"});
    call_it("");
    EXPECT_EQ(name(), "A4:C1:38:2D:5E:01");
    call_it("Phone");
    VlSim_Fail("Btsdk_GetRemoteDeviceName", 1, 1);
    EXPECT_EQ(name(), "A4:C1:38:2D:5E:01");
    VlSim_Fail("Btsdk_GetRemoteDeviceHandle", 1, 0);
    EXPECT_EQ(name(), "A4:C1:38:2D:5E:01");
}

TEST_F(DeviceName, IsNotWhatAFailedCallLeft) {
    CallPatch read("Btsdk_GetRemoteDeviceName", Btsdk_GetRemoteDeviceName);
    read.answer([](BtHandle, char* text, uint32_t*) {
        strcpy(text, "half");
        return 1U;
    });
    EXPECT_EQ(name(), "A4:C1:38:2D:5E:01");
}

TEST_F(DeviceName, HasABufferOf100Bytes) {
    for (const size_t length : {1u, 98u, 99u, 100u, 101u, 200u}) {
        call_it(std::string(length, 'n'));
        EXPECT_EQ(name(), std::string(std::min<size_t>(length, 99), 'n')) << length;
    }
    CallPatch read("Btsdk_GetRemoteDeviceName", Btsdk_GetRemoteDeviceName);
    read.answer([](BtHandle device, char* text, uint32_t* length) {
        EXPECT_EQ(device, 1u);
        EXPECT_EQ(*length, 100u);
        EXPECT_EQ(std::string(text, 100), std::string(100, '\0'));
        memset(text, 'f', 100);
        return 0U;
    });
    EXPECT_EQ(name(), std::string(99, 'f')) << "a name that fills its buffer loses its last byte";
}

TEST_F(DeviceName, FitsWithItsTerminatorOrLeavesTheBuffer) {
    for (const uint8_t* address : {kPhone, kStranger}) {
        const auto length = static_cast<uint32_t>(name(address).size());
        for (const uint32_t size : {1u, length - 1, length}) {
            EXPECT_EQ(ask(address, size).result, 775u) << size;
            EXPECT_TRUE(ask(address, size).untouched) << size;
        }
        EXPECT_EQ(ask(address, length + 1).result, 0u);
        EXPECT_EQ(ask(address, length + 1).text.size(), length);
        EXPECT_EQ(ask(address, 0).result, 0u) << "0 wraps to the largest size";
        EXPECT_EQ(ask(address, 0).text.size(), length);
    }
}

}  // namespace
