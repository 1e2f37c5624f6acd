// Whether an A2DP connection may be made now.
#include "VlCommon.h"
#include "scene.h"

namespace {

using scene::Lines;

constexpr uint32_t kHeadphones = 1, kSpeaker = 2, kPhone = 3;

std::string connection(uint32_t device, uint32_t role = 0, uint32_t service_class = 0x1105) {
    return "{\"device\": " + std::to_string(device) + ", \"role\": " + std::to_string(role) +
           ", \"class\": " + std::to_string(service_class) + "}";
}

// Devices 1 and 2 are audio devices, 3 is a phone, 9 is not known.
void set_scene(const Lines& connections) {
    scene::set(R"("devices": [{"handle": 1, "class": "0x240404"}, {"handle": 2, "class": "0x00FFE4FF"},
                  {"handle": 3, "class": "0x5A020C"}], )" +
               scene::list("connections", connections));
}

class A2dpPermission : public support::SuiteTest {
protected:
    void one_device_only(const std::string& value = "0") {
        settings().common("VlConfig", "IsSupportMultiAudioConnected", value);
    }
    void both_directions(const std::string& value = "1") {
        settings().common("VLConfig", "IsSupportBothA2dpSinkSource", value);
    }
};

TEST_F(A2dpPermission, IsRefusedByExactlyTheLinksOfTheTable) {
    struct Row {
        uint32_t service_class, role;
    };
    constexpr Row kRefusing[] = {{0x110A, 2}, {0x110B, 1}, {0x111E, 1},
                                 {0x111F, 2}, {0x1108, 1}, {0x1112, 2}};
    for (const uint32_t service_class : {0x110AU, 0x110BU, 0x110CU, 0x110DU, 0x110EU, 0x111EU, 0x111FU,
                                         0x1108U, 0x1112U, 0x1115U, 0x1116U, 0x1117U, 0x1101U, 0U}) {
        for (uint32_t role = 0; role < 4; ++role) {
            const bool refuses = std::any_of(std::begin(kRefusing), std::end(kRefusing), [=](const Row& row) {
                return row.service_class == service_class && row.role == role;
            });
            // The other bits of the word do not count; the device does not matter.
            set_scene({connection(kHeadphones, role | 0x8000FFF4, service_class)});
            EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), refuses ? TRUE : FALSE)
                << std::hex << service_class << " " << role;
            scene::expect_each_walk_ended();
        }
    }
}

TEST_F(A2dpPermission, AsksTheSettingsAndWalksOnce) {
    set_scene({connection(kSpeaker, 2, 0x111E), connection(kSpeaker, 1, 0x111E), connection(kSpeaker)});
    EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), TRUE);
    const std::string path = support::settings_path(support::SettingsFile::kCommon);
    EXPECT_EQ(support::sdk_calls("Btsdk_GetPrivateProfileInt"),
              (Lines{"Btsdk_GetPrivateProfileInt(\"VlConfig\", \"IsSupportMultiAudioConnected\", 1, \"" +
                         path + "\") = 1",
                     "Btsdk_GetPrivateProfileInt(\"VLConfig\", \"IsSupportBothA2dpSinkSource\", 0, \"" +
                         path + "\") = 0"}));
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_GetPrivateProfileInt", "Btsdk_GetPrivateProfileInt", "Btsdk_StartEnumConnection",
                     "Btsdk_EnumConnection", "Btsdk_EnumConnection", "Btsdk_EndEnumConnection"}));
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(A2dpPermission, IsGivenWithoutConnections) {
    set_scene({});
    EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), FALSE);
    EXPECT_EQ(VlSim_CallCount("Btsdk_EnumConnection"), 0U);
    one_device_only();
    EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), FALSE);
}

TEST_F(A2dpPermission, IsGivenBesideAnotherAudioDeviceUnlessTheSettingIs0) {
    struct Row {
        const char* label;
        std::string value;
        BOOL answer;
    };
    const Row rows[] = {{"0", "0", TRUE}, {"1", "1", FALSE}, {"2", "2", FALSE}, {"-1", "-1", FALSE}};
    set_scene({connection(kSpeaker)});
    EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), FALSE);
    support::for_each_row(rows, [this](const Row& row) {
        one_device_only(row.value);
        EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), row.answer);
    });
}

TEST_F(A2dpPermission, ForOneDeviceOnlyLooksForAnotherAudioDevice) {
    struct Row {
        const char* label;
        Lines connections;
        BOOL answer;
    };
    const Row rows[] = {
        {"another", {connection(kSpeaker)}, TRUE},
        {"the same", {connection(kHeadphones)}, FALSE},
        {"no audio device", {connection(kPhone)}, FALSE},
        {"an unknown one", {connection(9)}, FALSE},
        {"another behind all these",
         {connection(9), connection(kHeadphones), connection(kPhone), connection(kSpeaker)},
         TRUE},
    };
    one_device_only();
    support::for_each_row(rows, [](const Row& row) {
        set_scene(row.connections);
        EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), row.answer);
        EXPECT_EQ(VlSim_CallCount("Btsdk_StartEnumConnection"), row.answer ? 1U : 2U);
        EXPECT_EQ(VlSim_CallCount("Btsdk_GetRemoteDeviceClass"), row.connections.size());
        scene::expect_each_walk_ended();
    });
}

// The major class is five bits wide; 4 is audio and video.
TEST_F(A2dpPermission, KnowsAnAudioDeviceByItsMajorClass) {
    one_device_only();
    for (uint32_t major = 0; major < 32; ++major) {
        set_scene({connection(kSpeaker)});
        VlSim_Set("/devices/1/class", std::to_string(0xFFE0FF | (major << 8)).c_str());
        EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), major == 4 ? TRUE : FALSE) << major;
    }
}

TEST_F(A2dpPermission, IsNotRefusedByLinksWhenBothDirectionsAreSupported) {
    struct Row {
        const char* label;
        std::string value;
        BOOL answer;
    };
    const Row rows[] = {{"1", "1", FALSE}, {"0", "0", TRUE}, {"2", "2", TRUE}, {"-1", "-1", TRUE}};
    support::for_each_row(rows, [this](const Row& row) {
        both_directions(row.value);
        set_scene({connection(kPhone, 1, 0x111E)});
        EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), row.answer);
        EXPECT_EQ(VlSim_CallCount("Btsdk_StartEnumConnection"), row.answer ? 1U : 0U);
    });
}

TEST_F(A2dpPermission, IsRefusedBesideAnotherDeviceAlsoWithBothDirections) {
    one_device_only();
    both_directions();
    set_scene({connection(kSpeaker)});
    EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), TRUE);
    EXPECT_EQ(VlSim_CallCount("Btsdk_GetPrivateProfileInt"), 1U);
}

// The first rule's walk may fail to start: the second rule is asked all the same.
TEST_F(A2dpPermission, EachCallOfTheStackMayFail) {
    one_device_only();
    scene::for_each_failing_call(
        [] {
            set_scene({connection(kHeadphones), connection(kPhone, 1, 0x111E)});
        },
        [](const std::string& failing) {
            const bool second_walk = failing == "Btsdk_StartEnumConnection 2" ||
                                     failing == "Btsdk_EnumConnection 4" ||
                                     failing == "Btsdk_EnumConnection 5";
            EXPECT_EQ(VlCm_IsA2DPConnectionForbid(kHeadphones), second_walk ? FALSE : TRUE);
        });
}

}  // namespace
