// Which of a device's shortcuts to use for networking, and whether it is connected for it.
#include "VlCommon.h"
#include "scene.h"
#include "support/import_patch.h"

namespace {

using scene::Lines;

constexpr uint32_t kPhone = 1;
constexpr uint32_t kAccessPoint = 100, kGroup = 101, kUser = 102;
constexpr const char* kRoles[] = {"0x1116", "0x1117", "0x1115"};  // of the shortcuts 100, 101, 102

std::string shortcut(int handle, const std::string& service_class) {
    return "{\"device\": 1, \"handle\": " + std::to_string(handle) + ", \"class\": \"" + service_class +
           "\"}";
}

std::string server(int handle, const char* service_class, int status) {
    return "{\"handle\": " + std::to_string(handle) + ", \"class\": \"" + service_class +
           "\", \"status\": " + std::to_string(status) + "}";
}

std::string connection(uint32_t role, uint32_t device, const std::string& service_class) {
    return "{\"role\": " + std::to_string(role) + ", \"device\": " + std::to_string(device) +
           ", \"class\": \"" + service_class + "\"}";
}

// The phone has the shortcuts of the bits that are set.
Lines shortcuts_of(unsigned bits) {
    Lines shortcuts;
    for (int i = 0; i < 3; ++i) {
        if ((bits >> i) & 1) shortcuts.push_back(shortcut(100 + i, kRoles[i]));
    }
    return shortcuts;
}

void set_scene(const Lines& servers, const Lines& shortcuts, const Lines& connections = {}) {
    scene::set("\"devices\": [{\"handle\": 1}], " + scene::list("servers", servers) + ", " +
               scene::list("shortcuts", shortcuts) + ", " + scene::list("connections", connections));
}

uint32_t first_of(std::initializer_list<uint32_t> order, unsigned bits) {
    for (const uint32_t handle : order) {
        if ((bits >> (handle - 100)) & 1) return handle;
    }
    return 0;
}

uint32_t best(bool serving, unsigned bits) {
    return serving ? first_of({kUser, kAccessPoint, kGroup}, bits)
                   : first_of({kAccessPoint, kGroup, kUser}, bits);
}

class NetworkShortcut : public support::SuiteTest {};

TEST_F(NetworkShortcut, IsChosenByWhetherThisComputerServes) {
    struct Row {
        const char* label;
        Lines servers, connections;
        bool serving;
        const char* status;
    };
    const std::string client = connection(2, 7, "0x1115");
    const Row rows[] = {
        {"no server", {server(30, "0x1101", 3)}, {client}, false, "0"},
        {"status 0", {server(30, "0x1116", 0)}, {client}, false, "0"},
        {"idle without a client", {server(30, "0x1116", 1)}, {}, false, "1"},
        {"idle with a client", {server(30, "0x1116", 1)}, {client}, true, "1"},
        {"stopped", {server(30, "0x1116", 2)}, {client}, false, "2"},
        {"in use", {server(30, "0x1116", 3)}, {}, true, "3"},
        {"status 4", {server(30, "0x1116", 4)}, {client}, false, "4"},
        {"group network in use", {server(30, "0x1117", 3)}, {}, true, "3"},
        {"the user role is no server", {server(30, "0x1115", 3)}, {}, false, "0"},
        {"the first one counts", {server(30, "0x1117", 2), server(31, "0x1116", 3)}, {}, false, "2"},
        {"a server before it", {server(30, "0x1101", 2), server(31, "0x1116", 3)}, {}, true, "3"},
    };
    support::for_each_row(rows, [](const Row& row) {
        for (unsigned bits = 0; bits < 8; ++bits) {
            set_scene(row.servers, shortcuts_of(bits), row.connections);
            EXPECT_EQ(VlCm_GetCurrPanShc(kPhone), best(row.serving, bits)) << bits;
            EXPECT_EQ(support::trace_lines().at(0),
                      "Local GN(NAP)' status is " + std::string(row.status) + "\r\n");
            scene::expect_each_walk_ended();
        }
    });
}

TEST_F(NetworkShortcut, TakesExactlyAUserWithRole2ForAClient) {
    for (const std::string service_class : {"0x1115", "0x1116", "0x1117", "0x111E", "0x1101"}) {
        for (uint32_t role = 0; role < 4; ++role) {
            set_scene({server(30, "0x1117", 1)}, shortcuts_of(7),
                      {connection(role | 0xFFFFFFF0, 7, service_class)});
            const bool serving = role == 2 && service_class == "0x1115";
            EXPECT_EQ(VlCm_GetCurrPanShc(kPhone), serving ? kUser : kAccessPoint) << service_class << role;
        }
    }
}

TEST_F(NetworkShortcut, AsksForTheClientsOnlyWhenItsServerIsIdle) {
    for (const int status : {0, 2, 3, 4}) {
        set_scene({server(30, "0x1116", status)}, shortcuts_of(7), {connection(2, 7, "0x1115")});
        VlCm_GetCurrPanShc(kPhone);
        EXPECT_EQ(VlSim_CallCount("Btsdk_StartEnumConnection"), 0U) << status;
    }
}

TEST_F(NetworkShortcut, AsksStepByStep) {
    set_scene({server(30, "0x1101", 2), server(31, "0x1116", 1), server(32, "0x1117", 1)}, shortcuts_of(3),
              {connection(2, 7, "0x1115"), connection(2, 7, "0x1115")});
    EXPECT_EQ(VlCm_GetCurrPanShc(kPhone), kAccessPoint);
    EXPECT_EQ(
        support::sdk_operations(),
        (Lines{"Btsdk_StartEnumLocalServer", "Btsdk_EnumLocalServer", "Btsdk_EnumLocalServer",
               "Btsdk_GetServerStatus", "Btsdk_EndEnumLocalServer", "Btsdk_StartEnumConnection",
               "Btsdk_EnumConnection", "Btsdk_EndEnumConnection", "Btsdk_GetShortCutByDeviceHandle",
               "Btsdk_GetShortCutByDeviceHandle", "Btsdk_GetShortCutProperty", "Btsdk_GetShortCutProperty"}));
    EXPECT_EQ(support::sdk_calls("Btsdk_GetShortCutByDeviceHandle"),
              (Lines{"Btsdk_GetShortCutByDeviceHandle(1, 0, null, 0) = 2",
                     "Btsdk_GetShortCutByDeviceHandle(1, 0, out, 2) = 2"}));
}

TEST_F(NetworkShortcut, OfSeveralOfARoleIsTheLastOne) {
    for (const std::string role : kRoles) {
        set_scene({}, {shortcut(200, role), shortcut(201, role), shortcut(202, "0x1101")});
        EXPECT_EQ(VlCm_GetCurrPanShc(kPhone), 201U) << role;
    }
}

TEST_F(NetworkShortcut, OfAnotherDeviceDoesNotCount) {
    set_scene({}, {R"({"device": 2, "handle": 100, "class": "0x1116"})"});
    EXPECT_EQ(VlCm_GetCurrPanShc(kPhone), 0U);
    EXPECT_EQ(VlSim_CallCount("Btsdk_GetShortCutByDeviceHandle"), 1U);
}

TEST_F(NetworkShortcut, IsTracedWithTheFormatsAsTheyAre) {
    set_scene({}, shortcuts_of(7));
    VlCm_GetCurrPanShc(kPhone);
    EXPECT_EQ(support::trace_formats(),
              (Lines{"Local GN(NAP)' status is %ld\r\n", "remote NAP svc cls is %l\r\n",
                     "remote GN svc cls is %l\r\n", "remote PANU svc cls is %l\r\n"}));
    Lines entries = support::trace_log();
    for (std::string& entry : entries) {
        if (entry[0] == '=') entry = "=";
    }
    const Lines asked = {">512 VlCm_GetServiceClass", "<512 VlCm_GetServiceClass", "="};
    Lines expected = {">512 VlCm_GetCurrPanShc", "="};
    for (int i = 0; i < 3; ++i) expected.insert(expected.end(), asked.begin(), asked.end());
    expected.emplace_back("<512 VlCm_GetCurrPanShc");
    EXPECT_EQ(entries, expected);
}

// The lines' argument, which the incomplete conversion does not show.
struct TracedLine {
    unsigned long module;
    std::string format;
    uint32_t argument;
};
std::vector<TracedLine>& traced() {
    static std::vector<TracedLine> lines;
    return lines;
}
void take_line(unsigned long module, const char* format, uint32_t argument) {
    traced().push_back({module, format, argument});
}

TEST_F(NetworkShortcut, IsTracedWithItsClass) {
    set_scene({server(30, "0x1116", 3)}, shortcuts_of(7));
    traced().clear();
    const support::ImportPatch patch(support::library_under_test(), "VlTrace_UserDef", take_line);
    ASSERT_GT(patch.slots(), 0U);
    VlCm_GetCurrPanShc(kPhone);
    constexpr uint32_t kArguments[] = {3, 0x1116, 0x1117, 0x1115};
    ASSERT_EQ(traced().size(), std::size(kArguments));
    for (size_t i = 0; i < std::size(kArguments); ++i) {
        EXPECT_EQ(traced()[i].module, 512U);
        EXPECT_EQ(traced()[i].argument, kArguments[i]) << traced()[i].format;
    }
}

TEST_F(NetworkShortcut, NeedsMemory) {
    struct Row {
        const char* label;
        size_t nth;
        uint32_t answer;
    };
    constexpr Row kRows[] = {{"none fails", 0, kAccessPoint},
                             {"the list", 1, 0},
                             {"the first class", 2, kGroup},
                             {"the second class", 3, kAccessPoint},
                             {"the third class", 4, kAccessPoint}};
    support::for_each_row(kRows, [this](const Row& row) {
        set_scene({}, shortcuts_of(7));
        blocks().fail_nth(row.nth);
        EXPECT_EQ(VlCm_GetCurrPanShc(kPhone), row.answer);
        blocks().fail_nth(0);
    });
}

TEST_F(NetworkShortcut, EachCallOfTheStackMayFail) {
    const auto prepare = [] {
        set_scene({server(30, "0x1116", 1)}, shortcuts_of(7), {connection(2, 7, "0x1115")});
    };
    scene::for_each_failing_call(prepare, [](const std::string& failing) {
        const uint32_t answer = VlCm_GetCurrPanShc(kPhone);
        if (scene::starts_with(failing, "Btsdk_GetShortCutByDeviceHandle")) {
            EXPECT_EQ(answer, 0U);
        } else if (failing == "nothing" || failing == "Btsdk_GetShortCutProperty 1" ||
                   failing == "Btsdk_GetShortCutProperty 2") {
            EXPECT_EQ(answer, kUser);
        } else {
            EXPECT_EQ(answer, kAccessPoint);  // not serving, or no user role
        }
    });
}

TEST_F(NetworkShortcut, AStatusThatCannotBeReadIs0) {
    set_scene({server(30, "0x1116", 3)}, shortcuts_of(7));
    VlSim_Fail("Btsdk_GetServerStatus", 1, scene::kStackCode);
    EXPECT_EQ(VlCm_GetCurrPanShc(kPhone), kAccessPoint);
    EXPECT_EQ(support::trace_lines().at(0), "Local GN(NAP)' status is 0\r\n");
}

const Lines kConnectingScope = {">512 VlCm_IsConnectingPANOnThisDevice",
                                "<512 VlCm_IsConnectingPANOnThisDevice"};

// Callers read the whole result register.
uint64_t connecting(uint32_t device) {
    using Whole = uint64_t (*)(uint32_t);
    static const auto function = reinterpret_cast<Whole>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("VlCommon.dll"), "VlCm_IsConnectingPANOnThisDevice")));
    return function(device);
}

class NetworkConnection : public support::SuiteTest {};

TEST_F(NetworkConnection, IsOneOfTheDeviceInAnyRole) {
    for (const std::string service_class : {"0x1115", "0x1116", "0x1117", "0x1114", "0x1118", "0x110B"}) {
        const bool network =
            service_class == "0x1115" || service_class == "0x1116" || service_class == "0x1117";
        for (uint32_t role = 0; role < 4; ++role) {
            set_scene({}, {}, {connection(role, 1, service_class)});
            EXPECT_EQ(connecting(1), network ? 1U : 0U) << service_class;
            EXPECT_EQ(connecting(2), 0U) << service_class;
            scene::expect_each_walk_ended();
        }
    }
}

TEST_F(NetworkConnection, EndsTheWalkAtTheFirst) {
    set_scene({}, {},
              {connection(1, 2, "0x1116"), connection(1, 1, "0x1101"), connection(1, 1, "0x1116"),
               connection(1, 1, "0x1116")});
    EXPECT_EQ(connecting(1), 1U);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_StartEnumConnection", "Btsdk_EnumConnection", "Btsdk_EnumConnection",
                     "Btsdk_EnumConnection", "Btsdk_EndEnumConnection"}));
    EXPECT_EQ(support::trace_log(), kConnectingScope);
}

TEST_F(NetworkConnection, OfDevice0IsLookedForLikeAnyOther) {
    set_scene({}, {}, {connection(1, 0, "0x1116")});
    EXPECT_EQ(connecting(0), 1U);
}

TEST_F(NetworkConnection, ThatCannotBeWalkedIsTraced) {
    set_scene({}, {}, {connection(1, 1, "0x1116")});
    VlSim_Fail("Btsdk_StartEnumConnection", 1, 0);
    EXPECT_EQ(connecting(1), 0U);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_StartEnumConnection"});
    EXPECT_EQ(support::trace_log(),
              (Lines{kConnectingScope[0], "=512 Can not enum connection Handle\r\n", kConnectingScope[1]}));
}

TEST_F(NetworkConnection, IsNotSeenWhenAStepOfTheWalkFails) {
    set_scene({}, {}, {connection(1, 1, "0x1101"), connection(1, 1, "0x1116")});
    VlSim_Fail("Btsdk_EnumConnection", 2, 0);
    EXPECT_EQ(connecting(1), 0U);
    scene::expect_each_walk_ended();
    EXPECT_EQ(support::trace_log(), kConnectingScope);
}

}  // namespace
