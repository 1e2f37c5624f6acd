// Making and deleting a shortcut: the record that the stack gets, its name, every answer.
#include "VlCommon.h"
#include "scene.h"
#include "support/call_patch.h"

#include <string.h>

namespace {

using scene::Lines;
using support::CallPatch;

constexpr uint32_t kPhone = 1, kSerial = 10, kNameless = 11, kVoice = 12, kUnknown = 99;
constexpr uint32_t kUntouched = 0x12345678;
constexpr char kAddress[] = "66:55:44:33:22:11";  // stored as 11 22 33 44 55 66

class CreateShortCut : public support::SuiteTest {
protected:
    CreateShortCut() : create_("Btsdk_CreateShortCutEx", Btsdk_CreateShortCutEx) {
        create_.answer([this](ShortcutProperty* record) {
            made_ = *record;
            return create_.real(record);
        });
        set_scene();
    }
    static void set_scene() {
        scene::set(R"("devices": [{"handle": 1, "address": "66:55:44:33:22:11", "class": "0x5A020C",
            "services": [{"handle": 10, "class": "0x1101", "name": "Serial Port"},
                         {"handle": 11, "class": "0x1105"},
                         {"handle": 12, "class": "0x111E", "name": "Voice"}]}])");
    }
    static uint32_t create(uint32_t service, uint32_t device = kPhone) {
        uint32_t made = 0;
        return VlCm_CreateShortCut(device, service, &made);
    }
    static void call_service(const std::string& name) {
        VlSim_Set("/devices/0/services/0/name", ('"' + name + '"').c_str());
    }
    [[nodiscard]] std::string name() const { return {made_.name, strnlen(made_.name, sizeof made_.name)}; }
    [[nodiscard]] std::string service_name() const {
        return {made_.serviceName, strnlen(made_.serviceName, sizeof made_.serviceName)};
    }

    ShortcutProperty made_{};

private:
    CallPatch<uint32_t(ShortcutProperty*)> create_;
};

// What the language resource library says for a service of this class.
std::string class_name(uint16_t service_class) {
    char text[80] = {};
    const HMODULE library = VlCm_GetLangDepResLib(0);
    LoadStringA(library, VlCm_GetServiceClsNameStringID(service_class), text, sizeof text);
    FreeLibrary(library);
    return text;
}

TEST_F(CreateShortCut, HandsOverTheStatedFieldsAndNothingElse) {
    uint32_t made = 0;
    EXPECT_EQ(VlCm_CreateShortCut(kPhone, kSerial, &made), 0U);
    ShortcutProperty expected{};
    expected.device = kPhone;
    expected.service = kSerial;
    expected.deviceValid = 1;
    expected.stackFlag = 1;
    expected.serviceClass = 0x1101;
    expected.mask = 13;
    std::string("66:55:44:33:22:11 1101 Serial Port").copy(expected.name, sizeof expected.name);
    std::string("Serial Port").copy(expected.serviceName, sizeof expected.serviceName);
    expected.deviceClass = 0x5A020C;
    EXPECT_EQ(memcmp(&made_, &expected, 288), 0) << name();
    EXPECT_NE(made, 0U);
    EXPECT_EQ(Btsdk_GetShortCutByName(expected.name), made);
}

TEST_F(CreateShortCut, AsksEachThingOnceAndInOrder) {
    create(kSerial);
    EXPECT_EQ(
        support::sdk_calls(),
        (Lines{"Btsdk_IsBluetoothReady() = 1", "Btsdk_GetRemoteServiceAttributes(10, {mask 1}) = 0",
               "Btsdk_GetRemoteDeviceAddress(1, out) = 0", "Btsdk_GetRemoteDeviceClass(1, out) = 0",
               "Btsdk_CreateShortCutEx({device 1, service 10, class 4353, mask 13, name \"66:55:44:33:22"
               ":11 1101 Serial Port\", serviceName \"Serial Port\", deviceClass 5898764}) = 0"}));
    EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_CreateShortCut", "<512 VlCm_CreateShortCut"}));
}

TEST_F(CreateShortCut, NeedsNoPlaceForTheHandle) {
    EXPECT_EQ(VlCm_CreateShortCut(kPhone, kSerial, nullptr), 0U);
    EXPECT_EQ(name(), std::string(kAddress) + " 1101 Serial Port");
}

TEST_F(CreateShortCut, RefusesHandle0) {
    struct Row {
        const char* label;
        uint32_t device, service;
    };
    constexpr Row kRows[] = {{"device", 0, kSerial}, {"service", kPhone, 0}, {"both", 0, 0}};
    support::for_each_row(kRows, [](const Row& row) {
        scene::forget_calls();
        uint32_t made = kUntouched;
        EXPECT_EQ(VlCm_CreateShortCut(row.device, row.service, &made), 772U);
        EXPECT_EQ(made, kUntouched);
        EXPECT_TRUE(support::sdk_calls().empty());
        EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_CreateShortCut", "<512 VlCm_CreateShortCut"}));
    });
}

// The readiness answer has 8 bits; the stand-in fills the rest of the register with rubbish.
TEST_F(CreateShortCut, NeedsAReadinessOfExactly1) {
    for (const uint32_t answer : {0U, 2U, 3U, 0x81U, 0xFFU}) {
        set_scene();
        VlSim_Fail("Btsdk_IsBluetoothReady", 1, answer);
        EXPECT_EQ(create(kSerial), 771U) << answer;
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_IsBluetoothReady"});
    }
}

TEST_F(CreateShortCut, CutsTheNameAt70BytesEvenWithinACharacter) {
    struct Row {
        const char* label;
        std::string name, shown;
    };
    const std::string filler(68, 'n');
    const Row rows[] = {
        {"69 bytes", filler + "x", filler + "x"},
        {"70 bytes", filler + "xy", filler + "xy"},
        {"71 bytes", filler + "xyz", filler + "xy"},
        {"79 bytes", filler + "xyz12345678", filler + "xy"},
        {"within a character", filler + "x\xC3\xA9", filler + "x\xC3"},
        {"a percent sign", "100%s %n", "100%s %n"},
    };
    support::for_each_row(rows, [&](const Row& row) {
        call_service(row.name);
        EXPECT_EQ(create(kSerial), 0U);
        EXPECT_EQ(name(), std::string(kAddress) + " 1101 " + row.shown);
        EXPECT_EQ(service_name(), row.name);
    });
}

TEST_F(CreateShortCut, ANameWithoutTerminatorEndsWithItsField) {
    CallPatch attributes("Btsdk_GetRemoteServiceAttributes", Btsdk_GetRemoteServiceAttributes);
    attributes.answer([](BtHandle, ServerAttributes* found) {
        found->serviceClass = 0x1101;
        memset(found->name, 'z', sizeof found->name);
        found->extension = reinterpret_cast<void*>(~uintptr_t{0});  // what follows the name
        return 0U;
    });
    EXPECT_EQ(create(kSerial), 0U);
    EXPECT_EQ(service_name(), std::string(79, 'z'));
    EXPECT_EQ(name(), std::string(kAddress) + " 1101 " + std::string(70, 'z'));
    EXPECT_EQ(made_.deviceClass, 0x5A020CU);
}

TEST_F(CreateShortCut, ShowsTheClassInLowerCaseWithoutZeros) {
    struct Row {
        const char* label;
        const char* service_class;
        const char* middle;
    };
    constexpr Row kRows[] = {{"letters", "\"0xABEF\"", " abef "}, {"short", "5", " 5 "}};
    support::for_each_row(kRows, [this](const Row& row) {
        VlSim_Set("/devices/0/services/0/class", row.service_class);
        EXPECT_EQ(create(kSerial), 0U);
        EXPECT_EQ(name(), kAddress + std::string(row.middle) + "Serial Port");
    });
}

TEST_F(CreateShortCut, CallsANamelessServiceByItsClass) {
    CallPatch load("LoadLibraryA", LoadLibraryA);
    CallPatch text("LoadStringA", LoadStringA);
    CallPatch release("FreeLibrary", FreeLibrary);
    const std::string expected = class_name(0x1105);
    ASSERT_FALSE(expected.empty());
    const size_t loaded = load.count(), freed = release.count();
    EXPECT_EQ(create(kNameless), 0U);
    EXPECT_EQ(service_name(), expected);
    EXPECT_EQ(name(), std::string(kAddress) + " 1105 " + expected);
    ASSERT_EQ(text.count(), 1U);
    EXPECT_EQ(std::get<1>(text.calls()[0]), 1180U);
    EXPECT_EQ(std::get<3>(text.calls()[0]), 80);
    EXPECT_EQ(load.count() - loaded, 1U);
    EXPECT_EQ(release.count() - freed, 1U);
}

TEST_F(CreateShortCut, LoadsNoTextForANamedService) {
    CallPatch load("LoadLibraryA", LoadLibraryA);
    CallPatch text("LoadStringA", LoadStringA);
    create(kVoice);
    EXPECT_EQ(load.count() + text.count(), 0U);
}

TEST_F(CreateShortCut, CutsAClassNameAt80AndThenAt70) {
    CallPatch text("LoadStringA", LoadStringA);
    text.answer([](HINSTANCE, UINT, LPSTR buffer, int size) {
        memset(buffer, 'c', static_cast<size_t>(size) - 1);
        buffer[size - 1] = 0;
        return size - 1;
    });
    EXPECT_EQ(create(kNameless), 0U);
    EXPECT_EQ(service_name(), std::string(79, 'c'));
    EXPECT_EQ(name(), std::string(kAddress) + " 1105 " + std::string(70, 'c'));
}

TEST_F(CreateShortCut, NeedsTheLibraryForANamelessService) {
    CallPatch load("LoadLibraryA", LoadLibraryA);
    load.fail_from(1, nullptr, ERROR_MOD_NOT_FOUND);
    uint32_t made = kUntouched;
    EXPECT_EQ(VlCm_CreateShortCut(kPhone, kNameless, &made), 770U);
    EXPECT_EQ(made, kUntouched);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetRemoteServiceAttributes"}));
    EXPECT_EQ(create(kSerial), 0U);
}

TEST_F(CreateShortCut, GoesOnWithoutAClassName) {
    CallPatch text("LoadStringA", LoadStringA);
    text.fail_nth(1, 0, ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(create(kNameless), 0U);
    EXPECT_EQ(service_name(), "");
    EXPECT_EQ(name(), std::string(kAddress) + " 1105 ");
}

TEST_F(CreateShortCut, HandsOnTheCodeOfTheStepThatFails) {
    struct Row {
        const char* label;
        size_t calls;  // of the stack, this one included
    };
    constexpr Row kRows[] = {{"Btsdk_GetRemoteServiceAttributes", 2},
                             {"Btsdk_GetRemoteDeviceAddress", 3},
                             {"Btsdk_CreateShortCutEx", 5}};
    support::for_each_row(kRows, [](const Row& row) {
        set_scene();
        VlSim_Fail(row.label, 1, scene::kStackCode);
        uint32_t made = kUntouched;
        EXPECT_EQ(VlCm_CreateShortCut(kPhone, kSerial, &made), scene::kStackCode);
        EXPECT_EQ(made, kUntouched);
        EXPECT_EQ(support::sdk_calls().size(), row.calls);
        VlSim_ClearFaults();
        EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 0U);
    });
}

TEST_F(CreateShortCut, DoesNotLookAtTheAnswerAboutTheDeviceClass) {
    VlSim_Fail("Btsdk_GetRemoteDeviceClass", 1, scene::kStackCode);
    EXPECT_EQ(create(kSerial), 0U);
    EXPECT_EQ(made_.deviceClass, 0U);
    CallPatch device_class("Btsdk_GetRemoteDeviceClass", Btsdk_GetRemoteDeviceClass);
    device_class.answer([](BtHandle, uint32_t* found) {
        *found = 0x204;
        return scene::kStackCode;
    });
    EXPECT_EQ(create(kSerial), 0U);
    EXPECT_EQ(made_.deviceClass, 0x204U);
}

TEST_F(CreateShortCut, AnUnknownHandleIsTheStacksToRefuse) {
    EXPECT_EQ(create(kUnknown), 0x0401U);
    EXPECT_EQ(create(kSerial, kUnknown), 0x0401U);
}

class DeleteShortCut : public support::SuiteTest {
protected:
    DeleteShortCut() {
        scene::set(R"("shortcuts": [{"handle": 7, "device": 1, "class": "0x1101"}, {"handle": 8}])");
    }
};

const Lines kDeleteScope = {">512 VlCm_DeleteShortCut", "<512 VlCm_DeleteShortCut"};

TEST_F(DeleteShortCut, ReadsItAndDeletesIt) {
    EXPECT_EQ(VlCm_DeleteShortCut(7), 0U);
    EXPECT_EQ(support::sdk_calls(),
              (Lines{"Btsdk_IsBluetoothReady() = 1", "Btsdk_GetShortCutProperty({shortcut 7}) = 0",
                     "Btsdk_DeleteShortCut(7) = 0"}));
    EXPECT_EQ(support::trace_log(), kDeleteScope);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 1U);
}

TEST_F(DeleteShortCut, RefusesHandle0) {
    EXPECT_EQ(VlCm_DeleteShortCut(0), 772U);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(support::trace_log(), kDeleteScope);
}

TEST_F(DeleteShortCut, NeedsAReadinessOfExactly1) {
    for (const uint32_t answer : {0U, 2U, 0x81U}) {
        support::clear_sdk_log();
        VlSim_Fail("Btsdk_IsBluetoothReady", 1, answer);
        EXPECT_EQ(VlCm_DeleteShortCut(7), 771U);
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_IsBluetoothReady"});
    }
}

TEST_F(DeleteShortCut, HandsOnTheStacksCode) {
    EXPECT_EQ(VlCm_DeleteShortCut(kUnknown), 0x0401U);
    EXPECT_EQ(VlSim_CallCount("Btsdk_DeleteShortCut"), 0U);
    VlSim_Fail("Btsdk_DeleteShortCut", 1, scene::kStackCode);
    EXPECT_EQ(VlCm_DeleteShortCut(7), scene::kStackCode);
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, scene::kStackCode);
    EXPECT_EQ(VlCm_DeleteShortCut(7), scene::kStackCode);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 2U);
}

}  // namespace
