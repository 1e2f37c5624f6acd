// Which services and devices are shown, against a transcription of its own.
#include "vlcm/visibility.h"

#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <string.h>

#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using support::CallPatch;
using support::for_each_row;
using support::SettingsFile;

const std::map<unsigned, std::string> kProfileKeys = {
    {0x1101, "BTSDK_CLS_SERIAL_PORT"},   {0x1103, "BTSDK_CLS_DIALUP_NET"},
    {0x1105, "BTSDK_CLS_OBEX_OBJ_PUSH"}, {0x1106, "BTSDK_CLS_OBEX_FILE_TRANS"},
    {0x1108, "BTSDK_CLS_HANDSFREE"},     {0x110B, "BTSDK_CLS_AUDIO_SINK"},
    {0x1111, "BTSDK_CLS_FAX"},           {0x1115, "BTSDK_CLS_PAN_PAN"},
    {0x1116, "BTSDK_CLS_PAN_PAN"},       {0x1117, "BTSDK_CLS_PAN_PAN"},
    {0x1118, "BTSDK_CLS_DIRECT_PRINT"},  {0x111B, "BTSDK_CLS_IMAG_RESPONDER"},
    {0x111E, "BTSDK_CLS_HANDSFREE"},     {0x111F, "BTSDK_CLS_HANDSFREE_AG"},
    {0x1124, "BTSDK_CLS_HID"},           {0x1126, "BTSDK_CLS_HCR_PRINT"},
    {0x2001, "BTSDK_CLS_PAN_PAN"},
};
const std::map<unsigned, std::string> kDeviceKeys = {
    {1, "BTSDK_DEVCLS_COMPUTER"}, {2, "BTSDK_DEVCLS_PHONE"},         {3, "BTSDK_DEVCLS_LAP"},
    {4, "BTSDK_DEVCLS_AUDIO"},    {5, "BTSDK_DEVCLS_PERIPHERAL"},    {6, "BTSDK_DEVCLS_IMAGE"},
    {7, "BTSDK_DEVCLS_WEARABLE"}, {31, "BTSDK_DEVCLS_UNCLASSIFIED"},
};
const std::set<unsigned> kShownLocal = {0x1101, 0x1105, 0x1106, 0x110B, 0x1111, 0x1115,
                                        0x1116, 0x1117, 0x1118, 0x111B, 0x111F};
const std::set<unsigned> kShownRemote = {0x1101, 0x1103, 0x1104, 0x1105, 0x1106, 0x1108,
                                         0x110B, 0x1110, 0x1111, 0x1115, 0x1116, 0x1117,
                                         0x111B, 0x111E, 0x1124, 0x1126, 0x112F, 0x1132};
constexpr uint16_t kDirectPrinting = 0x1118, kHandsFreeGateway = 0x111F, kHeadset = 0x1108;

std::string key_of(const std::map<unsigned, std::string>& keys, unsigned key) {
    const auto found = keys.find(key);
    return found == keys.end() ? "" : found->second;
}

// The stack's reads of the filters' settings, answered as a test wants.
class FilterReads {
public:
    FilterReads() {
        section_.answer([this](const char* section, char* text, uint32_t size, const char* path) {
            ++sections_;
            order_ += 's';
            section_name_ = section;
            path_ = path;
            zeroed_ = zeroed_ && size == 1300 && std::string(text, size) == std::string(size, '\0');
            return section_answer;
        });
        number_.answer([this](const char* section, const char* key, int32_t fallback, const char* path) {
            order_ += 'k';
            same_place_ = same_place_ && section_name_ == section && path_ == path && fallback == 0;
            key_ = key;
            return value;
        });
    }
    // Forgets what was read.
    void start() {
        sections_ = 0;
        order_.clear();
        key_.clear();
    }

    uint32_t section_answer = 0;  // of the next reads
    uint32_t value = 1;

    [[nodiscard]] size_t sections() const { return sections_; }
    [[nodiscard]] const std::string& order() const { return order_; }  // s: the section, k: a key
    [[nodiscard]] const std::string& key() const { return key_; }      // the last one, "" if none
    [[nodiscard]] const std::string& section_name() const { return section_name_; }
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] bool zeroed() const { return zeroed_; }          // all buffers, and of 1300 characters
    [[nodiscard]] bool same_place() const { return same_place_; }  // keys are of the section and file read

private:
    size_t sections_ = 0;
    std::string order_, key_, section_name_, path_;
    bool zeroed_ = true, same_place_ = true;
    CallPatch<uint32_t(const char*, char*, uint32_t, const char*)> section_{"Btsdk_GetPrivateProfileSection",
                                                                            Btsdk_GetPrivateProfileSection};
    CallPatch<uint32_t(const char*, const char*, int32_t, const char*)> number_{"Btsdk_GetPrivateProfileInt",
                                                                                Btsdk_GetPrivateProfileInt};
};

class Filter : public support::SuiteTest {
protected:
    Filter() { support::clear_sdk_log(); }
};

TEST_F(Filter, OfProfilesReadsTheKeyOfEveryClassThatHasOne) {
    FilterReads reads;
    for (unsigned service_class = 0; service_class <= 0xFFFF; ++service_class) {
        const std::string key = key_of(kProfileKeys, service_class);
        reads.start();
        const BOOL hidden = VlCm_ShouldFilterCurProfile(static_cast<uint16_t>(service_class));
        ASSERT_EQ(hidden, key.empty() ? 0 : 1) << std::hex << service_class;
        ASSERT_EQ(reads.key(), key) << std::hex << service_class;
        ASSERT_EQ(reads.order(), key.empty() ? "s" : "sk") << std::hex << service_class;
    }
    EXPECT_EQ(reads.section_name(), "UnSupportedProfile");
    EXPECT_EQ(reads.path(), support::settings_path(SettingsFile::kCommon));
    EXPECT_TRUE(reads.zeroed());
    EXPECT_TRUE(reads.same_place());
}

TEST_F(Filter, OfDevicesReadsTheKeyOfEveryMajorClassThatHasOne) {
    FilterReads reads;
    reads.section_answer = 1;
    std::mt19937 random(34);
    for (unsigned low = 0; low <= 0xFFFF; ++low) {
        const uint32_t device_class = low | static_cast<uint32_t>(random()) << 16;
        const std::string key = key_of(kDeviceKeys, (low >> 8) & 31);
        reads.start();
        ASSERT_EQ(VlCm_ShouldFilterCurDevCls(device_class), key.empty() ? 0 : 1) << std::hex << device_class;
        ASSERT_EQ(reads.key(), key) << std::hex << device_class;
        ASSERT_EQ(reads.order(), key.empty() ? "s" : "sk") << std::hex << device_class;
    }
    EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x000900), 0);
    EXPECT_EQ(reads.section_name(), "FilteredDevice");
    EXPECT_EQ(reads.path(), support::settings_path(SettingsFile::kCommon));
    EXPECT_TRUE(reads.zeroed());
    EXPECT_TRUE(reads.same_place());
}

// The two filters go on at opposite answers.
TEST_F(Filter, GoesOnByTheAnswerOfTheSectionRead) {
    FilterReads reads;
    for (const uint32_t answer : {0u, 1u, 2u, 1298u, 0x80000000u, 0xFFFFFFFFu}) {
        reads.section_answer = answer;
        reads.start();
        EXPECT_EQ(VlCm_ShouldFilterCurProfile(kHeadset), answer == 0 ? 1 : 0) << answer;
        EXPECT_EQ(reads.order(), answer == 0 ? "sk" : "s") << answer;
        reads.start();
        EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x0200), answer == 0 ? 0 : 1) << answer;
        EXPECT_EQ(reads.order(), answer == 0 ? "s" : "sk") << answer;
    }
}

TEST_F(Filter, HidesByEveryValueThatIsNot0) {
    FilterReads reads;
    for (const uint32_t value : {0u, 1u, 2u, 0x100u, 0x80000000u, 0xFFFFFFFFu}) {
        reads.value = value;
        reads.section_answer = 0;
        EXPECT_EQ(VlCm_ShouldFilterCurProfile(kHeadset), value == 0 ? 0 : 1) << value;
        reads.section_answer = 1;
        EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x0200), value == 0 ? 0 : 1) << value;
    }
}

TEST_F(Filter, OfProfilesHidesNothingWithAStackThatCountsTheSectionsCharacters) {
    settings().common("UnSupportedProfile", "BTSDK_CLS_HANDSFREE", "1");
    EXPECT_EQ(VlCm_ShouldFilterCurProfile(kHeadset), 0);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetPrivateProfileSection"});
    VlSim_Fail("Btsdk_GetPrivateProfileSection", 1, 0);
    EXPECT_EQ(VlCm_ShouldFilterCurProfile(kHeadset), 1);
    settings().common("UnSupportedProfile", "BTSDK_CLS_HANDSFREE", "0");
    VlSim_Fail("Btsdk_GetPrivateProfileSection", 1, 0);
    EXPECT_EQ(VlCm_ShouldFilterCurProfile(kHeadset), 0);
}

TEST_F(Filter, OfDevicesHidesByTheSettings) {
    EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x5A020C), 0);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetPrivateProfileSection"}) << "no section";
    settings().common("FilteredDevice", "BTSDK_DEVCLS_PHONE", "1");
    EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x5A020C), 1);
    EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x000300), 0);
    EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x000900), 0);
    settings().common("FilteredDevice", "BTSDK_DEVCLS_PHONE", "-1");
    EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x5A020C), 1);
    settings().common("FilteredDevice", "BTSDK_DEVCLS_PHONE", "0");
    EXPECT_EQ(VlCm_ShouldFilterCurDevCls(0x5A020C), 0);
}

TEST_F(Filter, OneKeyHidesSeveralProfiles) {
    struct Row {
        const char* label;
        std::set<unsigned> hidden;
    };
    const Row rows[] = {{"BTSDK_CLS_HANDSFREE", {0x1108, 0x111E}},
                        {"BTSDK_CLS_PAN_PAN", {0x1115, 0x1116, 0x1117, 0x2001}},
                        {"BTSDK_CLS_HANDSFREE_AG", {0x111F}}};
    VlSim_Fail("Btsdk_GetPrivateProfileSection", 0, 0);
    for_each_row(rows, [this](const Row& row) {
        settings().common("UnSupportedProfile", row.label, "1");
        for (const auto& [service_class, key] : kProfileKeys) {
            EXPECT_EQ(VlCm_ShouldFilterCurProfile(static_cast<uint16_t>(service_class)),
                      static_cast<BOOL>(row.hidden.count(service_class)))
                << std::hex << service_class;
        }
        settings().common("UnSupportedProfile", row.label, "0");
    });
}

class Shown : public Filter {
protected:
    // Nothing is hidden, the adapter presents itself as a computer, the phone functions are off.
    Shown() {
        reads.value = 0;
        VlSim_Set("/mobileActive", "0");
        support::clear_sdk_log();
    }
    static void present_as_headset() { VlSim_Set("/local/class", "\"0x240404\""); }
    // What was asked besides settings.
    static Lines operations() {
        Lines made = support::sdk_operations();
        support::clear_sdk_log();
        return made;
    }

    FilterReads reads;
};

TEST_F(Shown, LocalServicesAreTheListedOnes) {
    for (unsigned service_class = 0; service_class <= 0xFFFF; ++service_class) {
        reads.start();
        ASSERT_EQ(VlCm_ShouldShowThisLocalServer(static_cast<uint16_t>(service_class)),
                  static_cast<BOOL>(kShownLocal.count(service_class)))
            << std::hex << service_class;
        ASSERT_EQ(reads.sections(), 1u);
    }
    EXPECT_EQ(VlCm_ShouldShowThisLocalServer(kHeadset), 0);
    EXPECT_TRUE(operations().empty());
}

TEST_F(Shown, RemoteServicesAreTheListedOnes) {
    VlSim_SetLogging(0);
    for (unsigned service_class = 0; service_class <= 0xFFFF; ++service_class) {
        ASSERT_EQ(VlCm_ShouldShowThisRemoteService(static_cast<uint16_t>(service_class)),
                  static_cast<BOOL>(kShownRemote.count(service_class)))
            << std::hex << service_class;
    }
    present_as_headset();
    VlSim_Set("/mobileActive", "1");
    for (unsigned service_class = 0; service_class <= 0xFFFF; ++service_class) {
        const bool shown = kShownRemote.count(service_class) != 0 || service_class == kDirectPrinting ||
                           service_class == kHandsFreeGateway;
        ASSERT_EQ(VlCm_ShouldShowThisRemoteService(static_cast<uint16_t>(service_class)), shown ? 1 : 0)
            << std::hex << service_class;
    }
    VlSim_SetLogging(1);
}

TEST_F(Shown, NothingIsThatTheInstallationHides) {
    reads.value = 1;
    present_as_headset();
    VlSim_Set("/mobileActive", "1");
    support::clear_sdk_log();
    for (const auto& [service_class, key] : kProfileKeys) {
        EXPECT_EQ(VlCm_ShouldShowThisLocalServer(static_cast<uint16_t>(service_class)), 0);
        EXPECT_EQ(VlCm_ShouldShowThisRemoteService(static_cast<uint16_t>(service_class)), 0);
    }
    EXPECT_EQ(VlCm_ShouldShowThisRemoteService(0x1110), 1) << "it has no key";
    EXPECT_TRUE(operations().empty()) << "the filter comes first";
}

TEST_F(Shown, DirectPrintingIsWithThePhoneFunctionsOrTheSwitch) {
    struct Row {
        const char* label;
        const char* mobile;
        uint32_t print_switch;
        BOOL shown;
        const char* order;  // s: the filter's section, k: its key or the switch
        Lines asked;
    };
    const Lines undecided = {"Btsdk_IsMobileActive", "Btsdk_GetLocalDeviceClass"};
    const Row rows[] = {{"neither", "0", 0, 0, "skk", undecided},
                        {"phone functions", "1", 0, 1, "sk", {"Btsdk_IsMobileActive"}},
                        {"any other number", "256", 0, 1, "sk", {"Btsdk_IsMobileActive"}},
                        {"the switch", "0", 1, 1, "skk", {"Btsdk_IsMobileActive"}},
                        {"both", "1", 1, 1, "sk", {"Btsdk_IsMobileActive"}}};
    CallPatch number("Btsdk_GetPrivateProfileInt", Btsdk_GetPrivateProfileInt);
    for_each_row(rows, [&](const Row& row) {
        VlSim_Set("/mobileActive", row.mobile);
        number.answer([&](const char* section, const char* key, int32_t fallback, const char* path) {
            const bool is_switch = strcmp(key, "IsSupportBPPFunction") == 0;
            reads.value = is_switch ? row.print_switch : 0;
            return number.real(section, key, fallback, path);
        });
        support::clear_sdk_log();
        reads.start();
        EXPECT_EQ(VlCm_ShouldShowThisRemoteService(kDirectPrinting), row.shown);
        EXPECT_EQ(reads.order(), row.order);
        EXPECT_EQ(operations(), row.asked);
    });
}

TEST_F(Shown, TheHandsFreeGatewayIsForAHeadsetWithPhoneFunctions) {
    struct Row {
        const char* label;
        const char* local_class;
        const char* mobile;
        BOOL shown;
        Lines asked;
    };
    const Lines kind = {"Btsdk_GetLocalDeviceClass"};
    const Lines both = {"Btsdk_GetLocalDeviceClass", "Btsdk_IsMobileActive"};
    const Row rows[] = {{"a computer", "\"0x020104\"", "0", 0, kind},
                        {"a computer with phone functions", "\"0x020104\"", "1", 0, kind},
                        {"a printer with phone functions", "\"0x140680\"", "1", 0, kind},
                        {"a headset", "\"0x240404\"", "0", 0, both},
                        {"a headset with phone functions", "\"0x240404\"", "1", 1, both},
                        {"and with any other number", "\"0x240404\"", "65536", 1, both}};
    for_each_row(rows, [](const Row& row) {
        VlSim_Set("/local/class", row.local_class);
        VlSim_Set("/mobileActive", row.mobile);
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_ShouldShowThisRemoteService(kHandsFreeGateway), row.shown);
        EXPECT_EQ(operations(), row.asked);
    });
    VlSim_Fail("Btsdk_GetLocalDeviceClass", 1, 1);
    EXPECT_EQ(VlCm_ShouldShowThisRemoteService(kHandsFreeGateway), 0);
}

TEST_F(Shown, AServiceThatIsNotListedStillHasTheLocalKindRead) {
    EXPECT_EQ(VlCm_ShouldShowThisRemoteService(0x1112), 0);
    EXPECT_EQ(operations(), Lines{"Btsdk_GetLocalDeviceClass"});
    EXPECT_EQ(VlCm_ShouldShowThisRemoteService(kHeadset), 1);
    EXPECT_TRUE(operations().empty());
}

TEST_F(Shown, AHandleIsByTheClassInItsRecord) {
    EXPECT_EQ(VlCm_ShouldShowThisLocalServerEx(303), 1);
    EXPECT_EQ(VlCm_ShouldShowThisLocalServerEx(307), 0) << "an audio source";
    EXPECT_EQ(reads.sections(), 2u);
    EXPECT_EQ(operations(), (Lines{"Btsdk_GetServerAttributes", "Btsdk_GetServerAttributes"}));
    EXPECT_EQ(VlCm_ShouldShowThisRemoteServiceEx(101), 1);
    EXPECT_EQ(VlCm_ShouldShowThisRemoteServiceEx(105), 0) << "a headset gateway";
    EXPECT_EQ(operations(), (Lines{"Btsdk_GetRemoteServiceAttributes", "Btsdk_GetRemoteServiceAttributes",
                                   "Btsdk_GetLocalDeviceClass"}));
}

TEST_F(Shown, AHandleThatCannotBeReadIsNot) {
    for (const uint32_t handle : {0u, 999u}) {
        EXPECT_EQ(VlCm_ShouldShowThisLocalServerEx(handle), 0);
        EXPECT_EQ(VlCm_ShouldShowThisRemoteServiceEx(handle), 0);
    }
    VlSim_Fail("Btsdk_GetServerAttributes", 1, 1);
    EXPECT_EQ(VlCm_ShouldShowThisLocalServerEx(303), 0);
    VlSim_Fail("Btsdk_GetRemoteServiceAttributes", 1, 1);
    EXPECT_EQ(VlCm_ShouldShowThisRemoteServiceEx(101), 0);
    EXPECT_EQ(reads.sections(), 6u) << "class 0 is tested like any other";
    EXPECT_TRUE(reads.key().empty());
}

TEST_F(Shown, AHandlesRecordIsZeroedAndItsResultIsNotTested) {
    const auto fill = [](BtHandle handle, ServerAttributes* record) {
        const ServerAttributes zero{};
        EXPECT_EQ(handle, 42u);
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0);
        record->serviceClass = 0x1105;
        return 1U;
    };
    CallPatch local("Btsdk_GetServerAttributes", Btsdk_GetServerAttributes);
    CallPatch remote("Btsdk_GetRemoteServiceAttributes", Btsdk_GetRemoteServiceAttributes);
    local.answer(fill);
    remote.answer(fill);
    EXPECT_EQ(VlCm_ShouldShowThisLocalServerEx(42), 1);
    EXPECT_EQ(VlCm_ShouldShowThisRemoteServiceEx(42), 1);
    EXPECT_EQ(local.count(), 1u);
    EXPECT_EQ(remote.count(), 1u);
}

TEST_F(Shown, TakesServiceClassesAs16Bits) {
    using Wider = BOOL (*)(uint32_t);
    const auto wider = [](BOOL (*function)(uint16_t)) {
        return reinterpret_cast<Wider>(reinterpret_cast<void*>(function));
    };
    EXPECT_EQ(wider(VlCm_ShouldShowThisLocalServer)(0xABCD1105), 1);
    EXPECT_EQ(wider(VlCm_ShouldShowThisRemoteService)(0xABCD1105), 1);
    reads.value = 1;
    EXPECT_EQ(wider(VlCm_ShouldFilterCurProfile)(0xABCD1105), 1);
}

TEST_F(Shown, WritesNoLineAndOpensNoScopeOfItsOwn) {
    VlCm_ShouldFilterCurProfile(kHeadset);
    VlCm_ShouldFilterCurDevCls(0x0200);
    VlCm_ShouldShowThisLocalServerEx(303);
    VlCm_ShouldShowThisRemoteServiceEx(105);
    EXPECT_TRUE(support::trace_lines().empty());
    for (const std::string& scope : support::trace_scopes()) {
        EXPECT_EQ(scope, "512 VlCm_GetCommonSettingFilePath");
    }
}

}  // namespace
