// The scenario, as the control interface loads and changes it.
#include "stack_test.h"

#include <cstring>
#include <filesystem>
#include <fstream>

namespace vlsim_test {
namespace {

class Scenario : public StackTest {};

TEST_F(Scenario, ThatIsNoneChangesNothing) {
    const std::string before = state_value("");
    struct Row {
        const char* label;
        const char* json;
    };
    constexpr Row kRows[] = {
        {"no JSON", "{"},
        {"no object", "[]"},
        {"list is none", R"({"devices": {}})"},
        {"item is no object", R"({"devices": [1]})"},
        {"handle twice", R"({"devices": [{"handle": 1}, {"handle": 1}]})"},
        {"handle of none", R"({"servers": [{"handle": 0}]})"},
        {"address too short", R"({"devices": [{"address": "11:22:33:44:55"}]})"},
        {"address of other letters", R"({"devices": [{"address": "11:22:33:44:55:GG"}]})"},
        {"class too large", R"({"servers": [{"class": 65536}]})"},
        {"negative number", R"({"servers": [{"status": -1}]})"},
        {"number with a tail", R"({"servers": [{"status": "12x"}]})"},
        {"flag is no flag", R"({"ready": 1})"},
        {"text is no text", R"({"servers": [{"name": 1}]})"},
        {"half a byte", R"({"servers": [{"extension": "0"}]})"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.label);
        EXPECT_NE(VlSim_LoadScenario(row.json), 0u);
        EXPECT_EQ(state_value(""), before);
    }
    EXPECT_NE(VlSim_LoadScenario(nullptr), 0u);
    EXPECT_NE(VlSim_LoadScenarioFile("no such file"), 0u);
    EXPECT_NE(VlSim_Patch("{"), 0u);
    EXPECT_NE(VlSim_Set("no pointer", "1"), 0u);
    EXPECT_EQ(state_value(""), before);
}

TEST_F(Scenario, OfNothingIsAStackThatIsNotReady) {
    ASSERT_EQ(VlSim_LoadScenario("{}"), 0u);
    EXPECT_EQ(Btsdk_IsBluetoothReady(), 0);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 0u);
    EXPECT_TRUE(walk_devices().empty());
}

TEST_F(Scenario, ComesFromAFileWithANameInAnyScript) {
    const std::filesystem::path path = std::filesystem::path(home_folder()) / u8"сцена.json";
    std::ofstream(path) << R"({"devices": [{"name": "one"}]})";
    const std::u8string name = path.u8string();
    EXPECT_EQ(VlSim_LoadScenarioFile(reinterpret_cast<const char*>(name.c_str())), 0u);
    EXPECT_EQ(walk_devices().size(), 1u);
}

TEST_F(Scenario, GivesHandlesThatWereNeverUsed) {
    ASSERT_EQ(VlSim_LoadScenario(R"({"devices": [{"handle": 7}, {"services": [{}]}], "servers": [{}]})"), 0u);
    const auto devices = walk_devices();
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[1].handle, 8u);
    EXPECT_EQ(walk_services(8)[0].handle, 9u);
    EXPECT_EQ(walk_servers()[0].handle, 10u);
    EXPECT_EQ(state_value("/nextHandle"), "11");
    ASSERT_EQ(VlSim_Patch(R"({"servers": [{}]})"), 0u);
    EXPECT_EQ(walk_servers()[0].handle, 11u);
}

TEST_F(Scenario, IsPatchedSetAndRead) {
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 0, "adFunction": null})"), 0u);
    EXPECT_EQ(state_value("/mobileActive"), "0");
    EXPECT_EQ(state_value("/adFunction"), "");
    EXPECT_EQ(Btsdk_IsSupportADFunction(), 0u);
    ASSERT_EQ(VlSim_Set("/devices/0/name", R"("Телефон")"), 0u);
    EXPECT_EQ(state_value("/devices/0/name"), "\"Телефон\"");
    EXPECT_EQ(VlSim_Get("/none/0", nullptr, 0), 0u);
    EXPECT_EQ(VlSim_Get("no pointer", nullptr, 0), 0u);
    char text[4] = {};
    EXPECT_EQ(VlSim_Get("/ready", text, sizeof text), 4u);
    EXPECT_STREQ(text, "tru");
}

TEST_F(Scenario, NumbersMayBeWrittenInHexadecimal) {
    ASSERT_EQ(VlSim_LoadScenario(R"({"mobileActive": "0x10", "adFunction": 17})"), 0u);
    EXPECT_EQ(Btsdk_IsMobileActive(), 16u);
    EXPECT_EQ(Btsdk_IsSupportADFunction(), 17u);
}

TEST_F(Scenario, InboxIsAFolderNamedByTheAddress) {
    char path[MAX_PATH] = {};
    const uint32_t length = VlSim_GetInboxFolder(1, path, sizeof path);
    EXPECT_EQ(length, std::strlen(path));
    EXPECT_EQ(std::string(path), home_folder() + "\\inbox\\A4-C1-38-2D-5E-01");
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_EQ(VlSim_GetInboxFolder(9999, path, sizeof path), 0u);
}

TEST_F(Scenario, ResetBringsTheNeighbourhoodBack) {
    VlSim_LoadScenario("{}");
    VlSim_Fail("Btsdk_IsMobileActive", 0, 5);
    void* const block = Btsdk_MallocMemory(1);
    Btsdk_EndEnumConnection(1);
    VlSim_SetLogging(0);
    ASSERT_EQ(VlSim_Reset(), 0u);
    EXPECT_EQ(VlSim_CallCount(nullptr), 0u);
    EXPECT_EQ(VlSim_MisuseCount(), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0u);
    EXPECT_EQ(Btsdk_IsMobileActive(), 1u);
    EXPECT_EQ(VlSim_CallCount("Btsdk_IsMobileActive"), 1u);
    EXPECT_GE(walk_devices().size(), 8u);
    Btsdk_FreeMemory(block);  // taken before: no misuse
    EXPECT_EQ(VlSim_MisuseCount(), 0u);
}

}  // namespace
}  // namespace vlsim_test
