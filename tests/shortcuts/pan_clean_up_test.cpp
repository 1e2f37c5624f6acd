// After a shortcut to a network role was made: the device's shortcuts to roles that it no longer offers go.
#include "VlCommon.h"
#include "scene.h"
#include "support/call_patch.h"

namespace {

using scene::Lines;
using support::CallPatch;

// Device 1 offers what a test says and has the shortcuts 101, 102, 103 to the roles 0x1117, 0x1116, 0x1115.
// The services of device 2 are those that shortcuts are made to: 21, 22, 23 of the same roles, 24 of none.
constexpr uint16_t kRoles[] = {0x1117, 0x1116, 0x1115};
constexpr uint32_t kOtherService = 24;

std::string service_of(uint16_t service_class) {
    return "{\"class\": " + std::to_string(service_class) + ", \"name\": \"s\"}";
}

std::string shortcut_of(size_t role) {
    return "{\"device\": 1, \"handle\": " + std::to_string(101 + role) +
           ", \"class\": " + std::to_string(kRoles[role]) + "}";
}

void set_scene(const std::vector<uint16_t>& offered, const std::vector<size_t>& existing = {0, 1, 2}) {
    Lines services, shortcuts;
    for (const uint16_t each : offered) services.push_back(service_of(each));
    for (const size_t role : existing) shortcuts.push_back(shortcut_of(role));
    scene::set("\"devices\": [{\"handle\": 1, " + scene::list("services", services) +
               R"(}, {"handle": 2, "services": [{"handle": 21, "class": "0x1117", "name": "GN"},
                   {"handle": 22, "class": "0x1116", "name": "NAP"},
                   {"handle": 23, "class": "0x1115", "name": "PANU"},
                   {"handle": 24, "class": "0x1118", "name": "Other"}]}], )" +
               scene::list("shortcuts", shortcuts));
}

uint32_t service_of_role(size_t role) { return static_cast<uint32_t>(21 + role); }

uint32_t create(uint32_t service) { return VlCm_CreateShortCut(1, service, nullptr); }

std::vector<uint16_t> roles_of(unsigned bits) {
    std::vector<uint16_t> roles = {0x1101};
    for (size_t i = 0; i < 3; ++i) {
        if ((bits >> i) & 1) roles.push_back(kRoles[i]);
    }
    return roles;
}

// What is asked and deleted after the walk.
Lines expected_deletions(size_t made, unsigned offered) {
    Lines calls;
    for (size_t i = 0; i < 3; ++i) {
        if (i == made || ((offered >> i) & 1) != 0) continue;
        calls.push_back("Btsdk_GetShortCutByDeviceHandle(1, " + std::to_string(kRoles[i]) + ", out, 1) = 1");
        calls.push_back("Btsdk_DeleteShortCut(" + std::to_string(101 + i) + ") = 0");
    }
    return calls;
}

Lines calls_after_the_walk() {
    Lines calls = support::sdk_calls();
    const auto end = std::find_if(calls.begin(), calls.end(), [](const std::string& call) {
        return scene::starts_with(call, "Btsdk_EndEnumRemoteService");
    });
    return end == calls.end() ? Lines{"no walk"} : Lines(end + 1, calls.end());
}

class OtherPanShortcuts : public support::SuiteTest {};

TEST_F(OtherPanShortcuts, OfRolesNoLongerOfferedGoInAFixedOrder) {
    for (size_t made = 0; made < 3; ++made) {
        for (unsigned offered = 0; offered < 8; ++offered) {
            SCOPED_TRACE(std::to_string(made) + " made, offered " + std::to_string(offered));
            set_scene(roles_of(offered));
            EXPECT_EQ(create(service_of_role(made)), 0U);
            EXPECT_EQ(calls_after_the_walk(), expected_deletions(made, offered));
            scene::expect_each_walk_ended();
        }
    }
}

TEST_F(OtherPanShortcuts, StayWhenAnotherServiceGetsAShortcut) {
    set_scene({0x1101});
    EXPECT_EQ(create(kOtherService), 0U);
    EXPECT_EQ(support::sdk_operations().back(), "Btsdk_CreateShortCutEx");
    EXPECT_EQ(support::trace_scopes(), Lines{"512 VlCm_CreateShortCut"});
}

TEST_F(OtherPanShortcuts, StayWhenNoneWasMade) {
    set_scene({0x1101});
    VlSim_Fail("Btsdk_CreateShortCutEx", 1, scene::kStackCode);
    EXPECT_EQ(create(service_of_role(0)), scene::kStackCode);
    EXPECT_EQ(support::sdk_operations().back(), "Btsdk_CreateShortCutEx");
}

TEST_F(OtherPanShortcuts, ARoleThatIsListedOftenLeavesRoomForTheOthers) {
    set_scene({0x1117, 0x1117, 0x1117, 0x1117, 0x1116, 0x1115});
    EXPECT_EQ(create(service_of_role(0)), 0U);
    EXPECT_EQ(calls_after_the_walk(), Lines{});
}

TEST_F(OtherPanShortcuts, StayWhenTheServicesCannotBeWalked) {
    set_scene({0x1101});
    VlSim_Fail("Btsdk_StartEnumRemoteService", 1, 0);
    uint32_t made = 0;
    EXPECT_EQ(VlCm_CreateShortCut(1, service_of_role(0), &made), 0U);
    EXPECT_NE(made, 0U);
    EXPECT_EQ(support::sdk_operations().back(), "Btsdk_StartEnumRemoteService");
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 4U);
    EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_CreateShortCut", ">512 DeleteOtherPANShc",
                                           "<512 DeleteOtherPANShc", "<512 VlCm_CreateShortCut"}));
}

TEST_F(OtherPanShortcuts, AreDeletedOnlyWhenOneWasCounted) {
    for (const uint32_t counted : {0U, 2U, 0xFFFFFFFFU}) {
        set_scene({0x1101});
        CallPatch list("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
        list.answer([counted](BtHandle, uint16_t, BtHandle* shortcuts, uint32_t) {
            *shortcuts = 101;
            return counted;
        });
        EXPECT_EQ(create(service_of_role(2)), 0U);
        EXPECT_EQ(list.count(), 2U);
        EXPECT_EQ(VlSim_CallCount("Btsdk_DeleteShortCut"), 0U) << counted;
    }
}

TEST_F(OtherPanShortcuts, ThatAreNotThereAreAskedFor) {
    set_scene({0x1101}, {2});
    EXPECT_EQ(create(service_of_role(0)), 0U);
    EXPECT_EQ(calls_after_the_walk(), (Lines{"Btsdk_GetShortCutByDeviceHandle(1, 4374, out, 1) = 0",
                                             "Btsdk_GetShortCutByDeviceHandle(1, 4373, out, 1) = 1",
                                             "Btsdk_DeleteShortCut(103) = 0"}));
}

TEST_F(OtherPanShortcuts, GoBeforeTheNewHandleIsTold) {
    set_scene({0x1101});
    uint32_t made = 0;
    uint32_t seen = 1;
    CallPatch remove("Btsdk_DeleteShortCut", Btsdk_DeleteShortCut);
    remove.answer([&](BtHandle shortcut) {
        seen = made;
        return remove.real(shortcut);
    });
    EXPECT_EQ(VlCm_CreateShortCut(1, service_of_role(1), &made), 0U);
    EXPECT_EQ(remove.count(), 2U);
    EXPECT_EQ(seen, 0U);
    EXPECT_NE(made, 0U);
}

TEST_F(OtherPanShortcuts, DoNotChangeTheAnswerWhenTheyCannotBeDeleted) {
    set_scene({0x1101});
    VlSim_Fail("Btsdk_DeleteShortCut", 0, scene::kStackCode);
    EXPECT_EQ(create(service_of_role(0)), 0U);
    EXPECT_EQ(VlSim_CallCount("Btsdk_DeleteShortCut"), 2U);
}

TEST_F(OtherPanShortcuts, EachCallOfTheStackMayFail) {
    scene::for_each_failing_call(
        [] {
            set_scene({0x1101, 0x1116});
        },
        [](const std::string& failing) {
            const uint32_t answer = create(service_of_role(0));
            if (failing == "Btsdk_IsBluetoothReady 1") {
                EXPECT_EQ(answer, 771U);
            } else if (scene::starts_with(failing, "Btsdk_GetRemoteServiceAttr") ||
                       scene::starts_with(failing, "Btsdk_GetRemoteDeviceAddr") ||
                       scene::starts_with(failing, "Btsdk_CreateShortCutEx")) {
                EXPECT_EQ(answer, scene::kStackCode);
            } else {
                EXPECT_EQ(answer, 0U);
            }
        });
}

}  // namespace
